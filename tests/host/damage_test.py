#!/usr/bin/env python3
"""Checks that damaged synthetic states load, and hold everything that a state can hold.

damage_test.py path/to/lershow STATES

What occurs in some state alone is looked for only among 80 states and more.
"""

import collections
import json
import re
import subprocess
import sys
import unittest

RATES = (0.02, 0.1, 0.3, 0.6)


def synth(*options):
    return subprocess.run([LERSHOW, "state", "synth", *options], check=True, capture_output=True, text=True).stdout


def damaged(seed, rate):
    return synth("--tunnels", "24", "--seed", str(seed), "--damage", str(rate))


def check(text):
    result = subprocess.run([LERSHOW, "state", "check", "-"], input=text, capture_output=True, text=True)
    return result.returncode, result.stderr


def objects(value, path=()):
    """Pairs of the names that lead to an object, and the object."""
    if isinstance(value, dict):
        # An event has the members of its kind.
        shape = path + (value["kind"],) if path[-1:] == ("event",) else path
        yield shape, value
        by_leaf = path[-1:] == ("paths",)
        for name, inside in value.items():
            yield from objects(inside, path + ("*" if by_leaf else name,))
    elif isinstance(value, list):
        for inside in value:
            yield from objects(inside, path)


class DamageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.texts = [damaged(seed, RATES[seed % len(RATES)]) for seed in range(STATES)]
        cls.states = [json.loads(text) for text in cls.texts]

    def test_every_state_loads(self):
        for seed, text in enumerate(self.texts):
            status, messages = check(text)
            self.assertEqual(status, 0, "seed %d: %s" % (seed, messages))
            self.assertRegex(messages, "^(lershow: standard input: warning: no tunnel can be shown without .*\n)?$")

    def test_the_same_arguments_give_the_same_state(self):
        self.assertEqual(damaged(7, 0.3), damaged(7, 0.3))
        self.assertNotEqual(damaged(7, 0.3), damaged(8, 0.3))

    def test_no_damage(self):
        self.assertEqual(synth("--tunnels", "5", "--damage", "0"), synth("--tunnels", "5"))
        little = json.loads(synth("--tunnels", "5", "--damage", "1e-9"))
        self.assertEqual(little, json.loads(synth("--tunnels", "5")))

    def test_refused_rates(self):
        for rate in ("", "-0.1", "1.01", "nan", "inf", "1%", "0.5x"):
            result = subprocess.run([LERSHOW, "state", "synth", "--tunnels", "1", "--damage=" + rate],
                                    capture_output=True, text=True)
            self.assertEqual((result.returncode, result.stdout), (2, ""), rate)
            self.assertIn("--damage", result.stderr)

    def test_every_member_that_the_loader_knows_occurs(self):
        """What the loader knows is what it says when it meets a member that it doesn't know."""
        if STATES < 80:
            self.skipTest("too few states")
        seen, sample = collections.defaultdict(set), {}
        for state in self.states:
            for path, found in objects(state):
                seen[path] |= set(found)
                sample.setdefault(path, (state, found))
        by_address = [path for path in seen if path[-1:] in (("subLspState",), ("paths",))]
        asked = 0
        for path in set(seen) - set(by_address):
            # The order of the members of a key isn't damaged, and features are numbers.
            if path[-1:] == ("feature",):
                continue
            state, found = sample[path]
            found["?"] = 0
            status, message = check(json.dumps(state))
            del found["?"]
            self.assertEqual(status, 1, path)
            if "expected no member" in message:
                known = set()
            else:
                known = set(re.search("expected (?:one of the members|only the member) (.*), found", message).group(1)
                            .split(", "))
            self.assertEqual(seen[path], known, path)
            asked += 1
        self.assertGreater(asked, 50)

    def test_every_kind_of_row_and_every_table_goes_missing(self):
        if STATES < 80:
            self.skipTest("too few states")
        whole = json.loads(synth("--tunnels", "24", "--seed", "3"))
        missing = set()
        for state in self.states:
            for root in ("rsvpLerStatus", "rsvpLerFathomStatus"):
                for table in whole[root]:
                    if table not in state.get(root, {}):
                        missing.add(table)
            missing |= {root for root in whole if root not in state}
        expected = set(whole) | set(whole["rsvpLerStatus"]) | set(whole["rsvpLerFathomStatus"])
        self.assertEqual(expected - missing, set())

    def test_damage_grows_with_the_rate(self):
        def rows(rate):
            state = json.loads(damaged(11, rate))
            return sum(1 for path, _ in objects(state))
        self.assertGreater(rows(0.01), rows(0.2))
        self.assertGreater(rows(0.2), rows(0.9))


if __name__ == "__main__":
    LERSHOW = sys.argv.pop(1)
    STATES = int(sys.argv.pop(1))
    unittest.main()
