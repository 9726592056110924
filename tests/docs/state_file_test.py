#!/usr/bin/env python3
"""Holds the reference of the state file against the loader:  state_file_test.py LERSHOW [unittest options]

Each place that the page describes is asked for a member that isn't there, upon which the loader names all that are; each
member is given a wrong value, upon which the loader names what it takes, and null. A default is that of the page when the
sample network shows the same with the member left out and with the default written out.
"""

import copy
import functools
import json
import os
import re
import subprocess
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
PAGE = (ROOT / "docs/state-file.md").read_text()
SAMPLE = json.loads((ROOT / "host/sample/sample.json").read_text())
LERSHOW = os.path.abspath(sys.argv.pop(1))

WORDS = r"`(\w+)`"
ADDRESS = "10.0.0.9"
# What the loader says that it expects in the place of the text "x", and the default, by the type.
TYPES = {
    "U8": ("a whole number from 0 to 255", 0),
    "U16": ("a whole number from 0 to 65535", 0),
    "U32": ("a whole number from 0 to 4294967295", 0),
    "U64": ("a whole number from 0 to 18446744073709551615", 0),
    "0 or 1": ("a whole number from 0 to 1", 0),
    "bool": ("true or false", False),
    "seconds": ("a finite number", 0.0),
    "text": ("a string", ""),
    "address": ("an IPv4 or IPv6 address", ""),
    "IPv4 address": ("an IPv4 address", ""),
    "object": ("an object", {}),
}
TYPES |= {name: ("an object", {}) for name in ("path specification", "profile", "tunnel", "sub-tunnel", "instance", "group",
                                               "request")}


def tables(page):
    """The rows of each table, by the heading above it."""
    found = {}
    for section in re.split(r"^#+ ", page, flags=re.MULTILINE)[1:]:
        heading, _, body = section.partition("\n")
        rows = [[cell.strip() for cell in line.strip("|").split(" | ")] for line in body.splitlines()
                if line.startswith("| ")]
        found[heading] = [row for row in rows if row[0] not in ("Member", "Kind")]
    return found


TABLES = tables(PAGE)
PLACES = {heading.strip("`"): rows for heading, rows in TABLES.items() if heading.startswith("`")}
PLACES[""] = TABLES["The document"]


def enumerations():
    for row in TABLES["Values"]:
        if len(row) == 3 and " to " in row[1] and not row[0].startswith("U"):
            words = re.sub(r" \([^)]*\)", "", row[2].split(";")[0])
            yield row[0], f"a whole number from {row[1]} or one of the words {words}"


TYPES |= {name: (expected, 0) for name, expected in enumerations()}


def expectation(type_text):
    """What the loader expects for a type as the page writes it, and the default of that type."""
    name = type_text.removeprefix("**key**, ").removesuffix(" or null")
    if re.match(r"object with|map of", name):
        return "an object", {}
    return ("an array", []) if re.match(r"rows|list of|set of", name) else TYPES[name]


def document(place, value):
    """A document in which only the value stands at the place."""
    for step in reversed(re.findall(r"\w+|\[\]|\{\}", place)):
        value = [value] if step == "[]" else {ADDRESS: value} if step == "{}" else {step: value}
    return value


def check(state):
    """What the loader says against a state; empty when it loads it."""
    done = subprocess.run([LERSHOW, "state", "check", "-"], input=json.dumps(state).encode(), capture_output=True,
                          timeout=60)
    return "" if done.returncode == 0 else done.stderr.decode().split(": expected ", 1)[1].rstrip("\n")


def expected_members(names):
    start = "one of the members " if len(names) > 1 else "only the member "
    return f'{start}{", ".join(names)}, found "?"'


def events():
    """The types of the members of each kind of event."""
    return {row[0].strip("`"): dict(re.findall(WORDS + r" \(([^)]+)\)", row[1])) for row in TABLES["Events"]}


class StateFileTest(unittest.TestCase):
    def check_type(self, place, name, type_text, other=None):
        expected, _ = expectation(type_text)
        wrong = 0 if type_text == "text" else "x"
        said = check(document(place, {**(other or {}), name: wrong}))
        self.assertEqual(said, f"{expected}, found {json.dumps(wrong)}")
        accepts_null = "found null" not in check(document(place, {**(other or {}), name: None}))
        self.assertEqual(accepts_null, type_text.endswith(" or null"), "null")

    def test_the_page_describes_many_places(self):
        self.assertGreater(len(PLACES), 30)

    def test_members(self):
        for place, rows in PLACES.items():
            with self.subTest(place):
                names = [row[0].strip("`") for row in rows]
                self.assertEqual(check(document(place, {"?": 0})), expected_members(names))

    def test_types(self):
        for place, rows in PLACES.items():
            for row in rows:
                with self.subTest(f"{place}: {row[0]}"):
                    self.check_type(place, row[0].strip("`"), row[1])

    def test_keys(self):
        for place, rows in PLACES.items():
            keys = [row[0].strip("`") for row in rows if "**key**" in row[1]]
            if not keys:
                continue
            with self.subTest(place):
                self.assertEqual(check(document(place, {})), f"the member {keys[0]}, found an object without it")
            with self.subTest(f"{place} twice"):
                value = 0 if "U32" in rows[0][1] else ADDRESS if "address" in rows[0][1] else {}
                state = json.dumps(document(place, {keys[0]: value}))
                row = json.dumps({keys[0]: value})
                self.assertIn("a key that stands once", check(json.loads(state.replace(row, f"{row}, {row}"))))

    def test_members_of_keys(self):
        names = []
        for row in TABLES["Values"]:
            if len(row) != 2:
                continue
            own = dict(re.findall(WORDS + r" \(([^)]+)\)", row[1]))
            if not own:
                continue
            names += own
            place = {"tunnel, path specification, profile": "rsvpLerStatus.tunnelSpecColl[].profile",
                     "sub-tunnel": "rsvpLerStatus.subTunnelIndexMap[].subTunnelConfigId",
                     "instance": "rsvpLerStatus.subTunnelStatusCollTable[].subTunnelStatusColl[].activeMbbTunnelConfigId",
                     "group": "rsvpLerStatus.cspfPathKeyMapping[].lspGroupId",
                     "request": "rsvpLerStatus.lspRequestConfigCollTable[].lspRequestConfigColl[].lspRequestConfigId"}[row[0]]
            with self.subTest(row[0]):
                self.assertEqual(check(document(place, {"?": 0})), expected_members(names))
                for name, type_text in own.items():
                    self.check_type(place, name, type_text)
        self.assertEqual(len(names), 6)

    def test_events(self):
        place = "rsvpLerFathomStatus.rsvpLerTunnelHistory[].entries[].event"
        self.assertEqual(check(document(place, {"kind": "?"})), f'one of the words {", ".join(events())}, found "?"')
        for kind, members in events().items():
            with self.subTest(kind):
                self.assertEqual(check(document(place, {"kind": kind, "?": 0})), expected_members(["kind", *members]))
            for name, type_text in members.items():
                with self.subTest(f"{kind}: {name}"):
                    self.check_type(place, name, type_text, {"kind": kind})

    def test_logs_of_sub_tunnels_have_the_same_rows(self):
        for place in PLACES:
            if place.startswith("rsvpLerFathomStatus.rsvpLerTunnelHistory"):
                other = place.replace("TunnelHistory", "SubTunnelHistory")
                self.assertEqual(check(document(other, {"?": 0})), check(document(place, {"?": 0})))


@functools.lru_cache(maxsize=2)
def views(state_text):
    commands = ["tunnel --detail", "tunnel --detail --json", "tunnel --lsp --json", "tunnel --history --json",
                "tunnel --summary --sub-tunnel", "status --json"]
    return [subprocess.run([LERSHOW, *command.split(), "--state", "-"], input=state_text.encode(), capture_output=True,
                           check=True, timeout=60).stdout for command in commands]


def objects_at(state, place):
    """All objects of the state at the place."""
    found = [state]
    for step in re.findall(r"\w+|\[\]|\{\}", place):
        if step == "[]":
            found = [row for rows in found for row in rows]
        elif step == "{}":
            found = [item for items in found for item in items.values()]
        else:
            found = [item[step] for item in found if item.get(step) is not None]
    return found


class DefaultsTest(unittest.TestCase):
    def test_defaults(self):
        compared = 0
        for place, rows in PLACES.items():
            for name, type_text, meaning in [(row[0].strip("`"), row[1], row[2]) for row in rows]:
                if "**key**" in type_text or place == "" or " null" in type_text or type_text == "rows":
                    continue
                stated = re.match(r"default (\d+)", meaning)
                default = int(stated.group(1)) if stated else expectation(type_text)[1]
                left_out, written = copy.deepcopy(SAMPLE), copy.deepcopy(SAMPLE)
                for item in objects_at(left_out, place):
                    item.pop(name, None)
                for item in objects_at(written, place):
                    item[name] = default
                with self.subTest(f"{place}: {name}"):
                    self.assertNotEqual(objects_at(SAMPLE, place), [], "the sample has no such object")
                    self.assertEqual(views(json.dumps(left_out)), views(json.dumps(written)))
                    compared += 1
        self.assertGreater(compared, 60)


if __name__ == "__main__":
    unittest.main()
