"""The JSON that lershow prints follows its schemas, and the schemas say no more than that.

usage: schema_test.py PATH_OF_LERSHOW [STATES]; STATES generated states are shown, 500 without the number.
"""

import json
import os
import re
import subprocess
import sys
import unittest

from jsonschema import Draft202012Validator

from schemas import NAMES, ROOT, Schema, file_of

STATES = int(sys.argv.pop()) if len(sys.argv) > 2 else 500
LERSHOW = os.path.abspath(sys.argv.pop())

SCHEMAS = {name: Schema(name) for name in NAMES}
TUNNEL_VIEWS = [["tunnel", *view, *more] for more in ([], ["--sub-tunnel"])
                for view in ([], ["--summary"], ["--lsp"], ["--detail"], ["--history"], ["--history", "--detail"])]
EXACT = 2**53  # whole numbers up to it are kept by every JSON reader


def lershow(*words, text=None):
    done = subprocess.run([LERSHOW, *words], input=text, stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=60)
    if done.returncode != 0:
        raise AssertionError(f"{words}: exit status {done.returncode}\n{done.stderr.decode()}")
    return done.stdout


def golden_documents(name):
    """The file and the text of every golden view that a schema is for."""
    for path in sorted((ROOT / "tests/golden").glob(f"*/{name}*.json")):
        yield path.relative_to(ROOT), path.read_text()


def generated_documents(states):
    """The words and the JSON of two views of each of so many generated states, every view in its turn."""
    for seed in range(states):
        words = ["state", "synth", "--tunnels", str(1 + seed % 5), "--seed", str(seed)]
        if seed % 4:
            words += ["--damage", f"0.{seed % 4}"]
        state = lershow(*words)
        for view in (["status"] if seed % 10 == 0 else TUNNEL_VIEWS[(seed + 6) % 12], TUNNEL_VIEWS[seed % 12]):
            yield (*words, *view), lershow(*view, "--json", "--state", "-", text=state).decode()


class SchemaFile(unittest.TestCase):
    def subschemas(self):
        for name, schema in SCHEMAS.items():
            for pointer, subschema in schema.subschemas():
                yield name, schema, pointer, subschema

    def described(self, schema, member):
        """The description that holds for a member, and all keywords that do."""
        chain = [below for below, _ in schema.resolve(*member)]
        merged = {}
        for below in chain:
            merged = below | merged
        return merged.get("description", ""), merged

    def members(self):
        for name, schema, pointer, subschema in self.subschemas():
            if "/if" not in pointer:
                for key, member in subschema.get("properties", {}).items():
                    place = f"{pointer}/properties/{key}"
                    yield f"{name}{place}", key, subschema, *self.described(schema, (member, place))

    def test_is_a_schema(self):
        for schema in SCHEMAS.values():
            Draft202012Validator.check_schema(schema.document)

    def test_is_what_the_program_prints(self):
        for name in NAMES:
            self.assertEqual(lershow("schema", name), file_of(name).read_bytes())

    def test_every_object_is_closed(self):
        closed = 0
        for name, _, pointer, subschema in self.subschemas():
            # What stands below these only asks something of an object that is described elsewhere.
            asks = re.search("/(if|then|else|dependentSchemas)(/|$)", pointer)
            if subschema.get("type") == "object" and not asks:
                closed += 1
                self.assertIn("additionalProperties", subschema, f"{name}{pointer}")
                if "properties" in subschema:
                    self.assertIs(subschema["additionalProperties"], False, f"{name}{pointer}")
        self.assertGreater(closed, 15)

    def test_every_member_is_described(self):
        for place, _, _, description, _ in self.members():
            self.assertRegex(description, r"^[A-Z].*\.$", place)

    def test_a_member_is_required_unless_its_description_says_when_it_is_absent(self):
        for place, key, subschema, description, _ in self.members():
            self.assertEqual(key in subschema["required"], "Absent" not in description, place)

    def test_numbers_have_their_unit_and_their_range(self):
        for place, key, _, description, merged in self.members():
            if merged.get("type") == "integer":
                large = merged["maximum"] > EXACT
                self.assertEqual(large, "2^53" in description, place)
                self.assertEqual(large, "bits per second" in description, place)
                self.assertEqual(key.endswith(("Mtu")), "bytes" in description, place)
            elif merged.get("type") == "number":
                self.assertRegex(description, "[Ss]econds .*2\\^53", place)


class Golden(unittest.TestCase):
    def test_every_view_follows_the_schema(self):
        for name, schema in SCHEMAS.items():
            for file, text in golden_documents(name):
                self.assertEqual(schema.errors(json.loads(text)), [], file)

    def test_every_member_and_value_occurs(self):
        for name, schema in SCHEMAS.items():
            used = set().union(*(schema.uses(json.loads(text)) for _, text in golden_documents(name)))
            self.assertEqual(sorted(schema.members() - used), [], "no golden view of tests/golden shows them")
            values = {f"{pointer}/enum/{value}" for pointer, subschema in schema.subschemas() if "/if/" not in pointer
                      for value in subschema.get("enum", [])}
            self.assertEqual(sorted(values - used), [], "no golden view of tests/golden shows them")


def spoilt(value, put):
    """Calls put with each way to spoil a place of a document: another type everywhere, and a member more in each object."""
    put(7 if isinstance(value, str) else "text")
    if isinstance(value, dict):
        put(value | {"surprise": None})
        for key, below in value.items():
            spoilt(below, lambda other: put(value | {key: other}))
    elif isinstance(value, list):
        for number, below in enumerate(value):
            spoilt(below, lambda other: put([*value[:number], other, *value[number + 1:]]))


class WrongDocuments(unittest.TestCase):
    FILES = {"tunnel": ("rare-members/tunnel-lsp.json", "history-p2mp/tunnel-history.json", "tunnel-plain/tunnel.json"),
             "status": ("status-counts/status.json",)}

    def test_nothing_else_is_accepted_at_any_place(self):
        for name, files in self.FILES.items():
            schema = SCHEMAS[name]
            for file in files:
                refused = []
                document = json.loads((ROOT / "tests/golden" / file).read_text())
                spoilt(document, lambda other: refused.append(other) if not schema.validator.is_valid(other)
                       else self.fail(f"{file}: accepted {json.dumps(other)}"))
                self.assertGreater(len(refused), 20)

    def test_a_member_that_must_be_there(self):
        document = json.loads((ROOT / "tests/golden/tunnel-plain/tunnel.json").read_text())
        (tunnel,) = document["tunnels"].values()
        optional = {"sessionId", "tunnelIndex", "primaryPath"}
        self.assertLess({"sessionId", "tunnelIndex"}, set(tunnel))
        for key in tunnel:
            less = {"tunnels": {"tun1": {other: value for other, value in tunnel.items() if other != key}}}
            self.assertEqual(SCHEMAS["tunnel"].validator.is_valid(less), key in optional, key)

    def test_members_that_exclude_each_other(self):
        document = json.loads((ROOT / "tests/golden/tunnel-plain/tunnel.json").read_text())
        (tunnel,) = document["tunnels"].values()
        for change in ({"activePathType": "split"}, {"autoBandwidth": True}, {"splitTunnel": True}, {"p2mpId": 1},
                       {"currentBandwidth": 2**64}, {"currentBandwidth": -8}, {"source": "somewhere"}, {"state": "UP"}):
            self.assertFalse(SCHEMAS["tunnel"].validator.is_valid({"tunnels": {"tun1": tunnel | change}}), change)


class Generated(unittest.TestCase):
    def test_every_view_follows_the_schema(self):
        for words, text in generated_documents(STATES):
            name = "status" if "status" in words else "tunnel"
            self.assertEqual(SCHEMAS[name].errors(json.loads(text)), [], words)


if __name__ == "__main__":
    unittest.main()
