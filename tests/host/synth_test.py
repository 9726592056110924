#!/usr/bin/env python3
"""Checks that synthetic states fit together: synth_test.py path/to/lershow

The state is read by a JSON reader that is not ours, and its tables are held against each other.
"""

import subprocess
import sys
import unittest

from state_tables import State, flat

SEEDS = (1, 999, 2**64 - 1)
CORES, UPLINK_STEP = 64, 19


def synth(tunnels, seed):
    command = [LERSHOW, "state", "synth", "--tunnels", str(tunnels), "--seed", str(seed)]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def uplink_core(edge, uplink):
    return (edge * 7 + uplink * UPLINK_STEP) % CORES


def routers(hops):
    """The routers that the hops enter: ("core", n) and last ("edge", n). Fails where two are not linked."""
    passed, before = [], None
    for hop in hops:
        _, b, c, d = map(int, hop.split("."))
        if b >= 192:
            edge, uplink, end = (b - 192) * 256 + c, d // 4, d % 4
            here = ("core", uplink_core(edge, uplink)) if end == 1 else ("edge", edge)
            other = ("edge", edge) if end == 1 else ("core", uplink_core(edge, uplink))
        elif b >= 128:
            lower, upper = b - 128, c
            assert lower < upper < CORES, hop
            here, other = (("core", lower), ("core", upper)) if d == 1 else (("core", upper), ("core", lower))
        else:
            assert before == ("edge", b * 256 + c) and hop == hops[-1], "%s does not end %s" % (hop, hops)
            return passed
        assert before in (None, other), "no link leads to %s in %s" % (hop, hops)
        assert here not in passed, hops
        passed.append(here)
        before = here
    raise AssertionError("a path without a loopback at its end: %s" % hops)


class SynthTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.states = [State(synth(600, seed)) for seed in SEEDS]

    def test_few_tunnels(self):
        for seed in range(40):
            self.assertEqual(len(State(synth(0, seed)).configs), 0)
            self.assertEqual(len(State(synth(1, seed)).configs), 1)

    def test_the_loader_takes_it(self):
        for seed in SEEDS:
            for tunnels in (0, 1, 600):
                check = subprocess.run([LERSHOW, "state", "check", "-"], input=synth(tunnels, seed),
                                       capture_output=True, text=True)
                self.assertEqual((check.returncode, check.stderr), (0, ""))
                self.assertRegex(check.stdout, "^standard input: %d tunnels?[ ,]" % tunnels)

    def test_a_tunnel_depends_on_its_number_alone(self):
        small, large = State(synth(50, 3)), State(synth(120, 3))
        for root in ("status", "fathom"):
            for table, rows in getattr(small, root).items():
                self.assertEqual(rows, getattr(large, root)[table][:len(rows)], table)

    def test_mixture(self):
        for s in self.states:
            self.assertEqual(len(s.configs), 600)
            p2mp = sum(row["isP2mp"] for row in s.states.values())
            split = sum(row["split"] for row in s.states.values())
            self.assertTrue(15 <= p2mp <= 50, p2mp)
            self.assertTrue(35 <= split <= 90, split)
            self.assertTrue(70 <= len(s.auto) <= 160, len(s.auto))
            self.assertEqual({row["state"] for row in s.states.values()}, {"up", "down"})
            self.assertTrue(any("pendingMbbTunnelConfigId" in row for row in s.sub_states.values()))
            self.assertTrue(any("pendingLspRequestConfigId" in row for row in s.groups.values()))
            self.assertTrue(any("errors" in row for row in s.lsps.values()))
            self.assertTrue(any("aliasTeps" in row for row in s.configs.values()))
            self.assertTrue(set(s.configs) - set(s.states), "configured only")
            two_paths = sum("secondaryPathSpecId" in row for row in s.configs.values())
            self.assertGreater(two_paths, 300)

    def test_keys_lead_to_records(self):
        for s in self.states:
            self.assertEqual(set(s.specs), set(s.configs))
            self.assertEqual(set(s.indexes), set(s.states))
            self.assertEqual({key[:2] for key in s.sub_states}, set(s.states))
            self.assertEqual(set(s.sub_configs), set(s.sub_states))
            self.assertEqual(set(s.sub_indexes), {key for key in s.sub_states if key[2]})
            self.assertEqual(set(s.logs), {row["tunnelIndex"] for row in s.indexes.values()})
            self.assertEqual(set(s.sub_logs), {row["tunnelIndex"] for row in s.sub_indexes.values()})
            instances = {flat(row[role]) for row in s.sub_states.values()
                         for role in ("activeMbbTunnelConfigId", "pendingMbbTunnelConfigId") if role in row}
            self.assertEqual(set(s.mbb_configs), instances)
            self.assertEqual(set(s.mbb_states), instances)
            self.assertEqual({key[:4] for key in s.groups}, instances)
            requests = {flat(row[role]) for row in s.groups.values()
                        for role in ("activeLspRequestConfigId", "pendingLspRequestConfigId") if role in row}
            self.assertEqual(set(s.requests), requests)
            self.assertEqual(set(s.lsps), requests)
            self.assertEqual(set(s.cspf), set(s.groups))
            for config in list(s.configs.values()) + list(s.sub_configs.values()):
                for role in ("primaryPathSpecId", "secondaryPathSpecId"):
                    self.assertTrue(role not in config or flat(config[role]) in s.paths)

    def test_unique_numbers(self):
        for s in self.states:
            for rows, field in ((s.cspf, "pathId"), (s.cspf, "treeId"), (s.sub_states, "sessionCliId")):
                numbers = [row[field] for row in rows.values() if field in row]
                self.assertEqual(len(numbers), len(set(numbers)), field)

    def test_states_and_bandwidths_agree(self):
        for s in self.states:
            for key, status in s.states.items():
                subs = {k: row for k, row in s.sub_states.items() if k[:2] == key}
                self.assertEqual(set(k[2] for k in subs),
                                 set(range(1, len(subs) + 1)) if status["split"] else {0})
                self.assertTrue(2 <= len(subs) <= 6 if status["split"] else len(subs) == 1)
                self.assertEqual(status["currentBandwidth"], sum(row["currentBandwidth"] for row in subs.values()))
                self.assertEqual(status["state"] == "up", any(row["state"] == "up" for row in subs.values()))
            for key, status in s.sub_states.items():
                instance = flat(status["activeMbbTunnelConfigId"])
                in_use = s.mbb_states[instance].get("activeLspGroupId")
                self.assertEqual(status["state"] == "up", in_use is not None)
                held = s.mbb_configs[instance]["requestedBandwidth"]
                self.assertEqual(status["currentBandwidth"], held if in_use else 0)
                if in_use:
                    self.assertEqual(s.groups[flat(in_use)]["lspGroupState"], "up")
            for key, request in s.requests.items():
                self.assertEqual(request["bandwidth"], s.mbb_configs[key[:4]]["requestedBandwidth"])

    def test_paths_follow_links(self):
        for s in self.states:
            lengths = set()
            for key, request in s.requests.items():
                entered = {}
                for leaf, path in request["tree"]["paths"].items():
                    self.assertIn(leaf, s.configs[key[:2]]["destination"])
                    hops = path.get("hops")
                    if hops:
                        self.assertEqual(hops[-1], leaf)
                        for router, hop in zip(routers(hops), hops):
                            self.assertEqual(entered.setdefault(router, hop), hop, "a tree with a loop")
                        if request["sessionType"] == "p2p":
                            lengths.add(len(hops))
                group = s.groups[key[:5]]
                first = {path["hops"][0] for path in request["tree"]["paths"].values() if path.get("hops")}
                for hop in group.get("nextHop", []):
                    self.assertEqual(first, {hop["address"]})
            self.assertEqual(lengths, {3, 4, 5, 6, 7})

    def test_leaves(self):
        for s in self.states:
            kinds = set()
            for key, status in s.states.items():
                if not status["isP2mp"]:
                    continue
                config = s.configs[key]
                self.assertTrue(1 <= len(config["destination"]) <= 12)
                for request, lsp in s.lsps.items():
                    if request[:2] == key:
                        self.assertEqual(lsp["subLspState"], status["subLspState"])
                        paths = s.requests[request]["tree"]["paths"]
                        self.assertEqual(set(paths), set(config["destination"]))
                        kinds |= {"removing" for leaf in lsp["subLspState"] if leaf not in paths}
                        kinds |= {"no path" for path in paths.values() if "hops" not in path}
                        kinds |= set(lsp["subLspState"].values())
            self.assertEqual(kinds, {"up", "down", "removing", "no path"})

    def test_logs(self):
        for s in self.states:
            lengths, wrapped = [], False
            for key, log in s.all_logs():
                p2mp = len(key) == 2 and s.states[key]["isP2mp"]
                capacity = 1000 if p2mp else 100
                slots = [entry["entryIndex"] for entry in log["entries"]]
                self.assertEqual(slots, [(slots[0] + i) % capacity for i in range(len(slots))])
                self.assertLessEqual(len(slots), capacity)
                self.assertEqual(log["lastEntryIndex"], slots[-1])
                wrapped = wrapped or slots[0] > slots[-1]
                times = [entry["timestamp"] for entry in log["entries"]]
                self.assertEqual(times, sorted(times))
                self.assertLess(times[-1], s.now)
                lengths.append(len(slots))
                for entry in log["entries"]:
                    if "hops" in entry:
                        routers(entry["hops"])
                status = s.sub_states[key] if len(key) == 3 else s.states[key]
                last = [e["event"]["state"] for e in log["entries"] if e["event"]["kind"] == "tunnelState"][-1]
                self.assertEqual(last, status["state"], key)
            self.assertTrue(wrapped, "a full ring")
            usual = sum(5 <= length <= 30 for length in lengths)
            self.assertGreater(usual, len(lengths) * 3 // 4)

    def test_logs_name_the_lsps_there_are(self):
        for s in self.states:
            for key, log in s.all_logs():
                if len(key) == 2 and s.states[key]["split"]:
                    continue
                events = [entry["event"] for entry in log["entries"]]
                if len(events) == 100:
                    continue # a full ring has lost its beginning
                added = {event["lspId"] for event in events if event["kind"] == "lspAdd"}
                removed = {event["lspId"] for event in events if event["kind"] == "lspDel"}
                lsps = {lsp["lspId"]: lsp["lspState"] for k, lsp in s.lsps.items() if k[:len(key)] == key}
                self.assertEqual(added - removed, set(lsps), key)
                for lsp, state in lsps.items():
                    said = [e["state"] for e in events if e["kind"] == "lspState" and e["lspId"] == lsp]
                    self.assertEqual(said[-1], state, (key, lsp))

    def test_event_kinds(self):
        for s in self.states:
            kinds = {entry["event"]["kind"] for _, entry in s.events()}
            self.assertEqual(kinds, {
                "creation", "tunnelState", "bandwidth", "bandwidthConfig", "lspAdd", "lspDel", "lspInUse",
                "lspNoLongerInUse", "lspState", "lspError", "cspfQuery", "cspfReply", "p2mpDestinationAdded",
                "p2mpDestinationRemoved", "p2mpLeafState"})
            changes = {entry["event"].get("changeType") for _, entry in s.events()}
            self.assertEqual(changes, {None, "none", "new", "changed", "removed", "notFound"})


if __name__ == "__main__":
    LERSHOW = sys.argv.pop(1)
    unittest.main()
