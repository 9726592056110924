#!/usr/bin/env python3
"""Holds the members that docs/views.md describes against JSON of all views:  views_test.py LERSHOW [unittest options]

The JSON is that of the sample network, of a damaged synthetic one and of the golden views. A member that isn't on the page, or isn't in any JSON, fails,
and so does "never" for one that is missing somewhere, or another word for one that never is.
"""

import json
import os
import re
import subprocess
import sys
import unittest
from collections import Counter
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
LERSHOW = os.path.abspath(sys.argv.pop(1))

# The table of what stands under a member: of the object or objects in it, or of those under names of their own.
INNER = {"autoBandwidthParams": "`autoBandwidthParams`", "splitTunnelParams": "`splitTunnelParams`", "primaryPath": "Path",
         "secondaryPaths": "Path", "primaryTree": "Tree", "lsps": "LSP", "p2mpLsps": "LSP", "pathErrors": "Error",
         "treeErrors": "Error", "lspErrors": "Error", "tunnelHistory": "Log", "subTunnelHistory": "Log", "history": "Event"}
NAMED = {"subTunnels": "Sub-tunnel", "treeLeaves": "Leaf", "tree": "Changed leaf"}


def rows(page, heading):
    body = page.split(f"### {heading}\n", 1)[1].split("\n#", 1)[0]
    return {re.match(r"`(\w+)`", row[0]).group(1): row for row in
            ([cell.strip() for cell in line.strip("|").split("|")] for line in body.splitlines() if line.startswith("| `"))}


PAGE = (ROOT / "docs/views.md").read_text().split("## Members\n", 1)[1]
TABLES = {heading: rows(PAGE, heading) for heading in re.findall(r"^### (.*)$", PAGE, re.MULTILINE)}
COMMON = TABLES.pop("Tunnel")
for half in ("P2P tunnel", "P2MP tunnel"):
    TABLES[half] = {**COMMON, **TABLES[half]}


def run(*arguments, text=b""):
    return subprocess.run([LERSHOW, *arguments], input=text, capture_output=True, check=True, timeout=60).stdout


SAMPLE = run("state", "sample")
DAMAGED = run("state", "synth", "--tunnels", "500", "--damage", "0.1")


def show(*arguments, state=SAMPLE):
    return json.loads(run(*arguments, "--json", "--state", "-", text=state))


def documents():
    """All JSON, and whether it is that of --history alone."""
    for state in SAMPLE, DAMAGED:
        for views in [], ["--lsp"], ["--history", "--detail"], ["--history"]:
            yield show("tunnel", *views, state=state), views == ["--history"]
        yield show("status", state=state), False
    for path in sorted((ROOT / "tests/golden").glob("*/*.json")):
        if path.name != "state.json":
            yield json.loads(path.read_text()), bool(re.match(r"tunnel-history(?!-detail)", path.name))


class Census:
    """How many objects of each table there are, and how often each has each member."""

    def __init__(self, brief):
        self.objects = Counter()
        self.members = Counter()
        self.brief = brief

    def count(self, table, item):
        self.objects[table] += 1
        for name, value in item.items():
            self.members[table, name] += 1
            if name in INNER:
                for inner in value if isinstance(value, list) else [value]:
                    self.count(INNER[name], inner)
            elif name in NAMED:
                for inner in value.values():
                    self.count(NAMED[name], inner)


def census():
    full, brief = Census(False), Census(True)
    for document, is_brief in documents():
        counts = brief if is_brief else full
        if "tunnels" not in document:
            counts.count("Status view", document)
        for tunnel in document.get("tunnels", {}).values():
            counts.count("P2P tunnel" if "subTunnels" in tunnel else "P2MP tunnel", tunnel)
    return full, brief


class ViewsTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.full, cls.brief = census()

    def test_every_kind_of_object_occurs(self):
        self.assertEqual(set(self.full.objects), set(TABLES))

    def test_members(self):
        for table, members in TABLES.items():
            found = {name for of, name in [*self.full.members, *self.brief.members] if of == table}
            with self.subTest(table):
                self.assertEqual(found, set(members))

    def test_what_is_never_absent(self):
        for table, members in TABLES.items():
            for name, row in members.items():
                with self.subTest(f"{table}: {name}"):
                    always = self.full.members[table, name] == self.full.objects[table]
                    self.assertEqual(always, row[3] == "never")

    def test_what_the_log_view_has(self):
        for table in "P2P tunnel", "P2MP tunnel", "Sub-tunnel":
            marked = {name for name, row in TABLES[table].items() if row[0].endswith("**H**")}
            with self.subTest(table):
                self.assertEqual({name for of, name in self.brief.members if of == table}, marked)

    def test_the_plain_view_has_the_json_of_detail_and_summary(self):
        plain = show("tunnel")
        self.assertEqual(show("tunnel", "--detail"), plain)
        self.assertEqual(show("tunnel", "--summary"), plain)


if __name__ == "__main__":
    unittest.main()
