"""The schemas of the JSON that lershow prints, and what of them a document uses."""

import json
from pathlib import Path

from jsonschema import Draft202012Validator

ROOT = Path(__file__).resolve().parents[2]
DIRECTORY = ROOT / "docs/schema"
NAMES = ("tunnel", "status")
# What may stand below a schema and is none itself, or applies no member to a value.
SCHEMA_MAPS = ("properties", "$defs", "dependentSchemas")
SCHEMA_LISTS = ("anyOf", "allOf")
SCHEMAS = ("items", "additionalProperties", "propertyNames", "not", "if", "then", "else")


def file_of(name):
    return DIRECTORY / f"{name}.schema.json"


class Schema:
    def __init__(self, name):
        self.document = json.loads(file_of(name).read_text())
        self.validator = Draft202012Validator(self.document)

    def subschemas(self, schema=None, pointer=""):
        """Every schema in the document with its JSON pointer."""
        schema = self.document if schema is None else schema
        if isinstance(schema, bool):
            return
        yield pointer, schema
        for keyword in SCHEMA_MAPS:
            for key, below in schema.get(keyword, {}).items():
                yield from self.subschemas(below, f"{pointer}/{keyword}/{key}")
        for keyword in SCHEMA_LISTS:
            for number, below in enumerate(schema.get(keyword, [])):
                yield from self.subschemas(below, f"{pointer}/{keyword}/{number}")
        for keyword in SCHEMAS:
            if keyword in schema:
                yield from self.subschemas(schema[keyword], f"{pointer}/{keyword}")

    def members(self):
        """The pointers of all members that the schema names, but for those that an if only looks at."""
        return {pointer for pointer, _ in self.subschemas() if pointer.split("/")[-2:-1] == ["properties"]
                and "/if/" not in pointer}

    def resolve(self, schema, pointer):
        """The schemas that hold for a place: the one itself, then what its reference and that one's refer to."""
        found = [(schema, pointer)]
        while "$ref" in schema:
            pointer = schema["$ref"].removeprefix("#")
            schema = self.document
            for step in pointer.split("/")[1:]:
                schema = schema[step]
            found.append((schema, pointer))
        return found

    def errors(self, document):
        """What is wrong with a document, one line a fault."""
        return [f"{'/'.join(map(str, error.absolute_path))}: {error.message[:300]}"
                for error in self.validator.iter_errors(document)]

    def uses(self, value, schema=None, pointer=""):
        """The pointers of the members that a valid document has, and of the enumerations' values that occur in it."""
        used = set()
        for schema, pointer in self.resolve(self.document if schema is None else schema, pointer):
            for number, choice in enumerate(schema.get("anyOf", [])):
                if self.validator.evolve(schema=choice).is_valid(value):
                    used |= self.uses(value, choice, f"{pointer}/anyOf/{number}")
            if "enum" in schema:
                used.add(f"{pointer}/enum/{value}")
            if isinstance(value, list) and "items" in schema:
                for item in value:
                    used |= self.uses(item, schema["items"], f"{pointer}/items")
            if isinstance(value, dict):
                for key, below in value.items():
                    if key in schema.get("properties", {}):
                        member = f"{pointer}/properties/{key}"
                        used |= {member} | self.uses(below, schema["properties"][key], member)
                    elif isinstance(schema.get("additionalProperties"), dict):
                        used |= self.uses(below, schema["additionalProperties"], f"{pointer}/additionalProperties")
        return used
