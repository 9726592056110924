#!/usr/bin/env python3
"""Checks that the built-in sample network fits together: sample_test.py path/to/sample.json

Every path follows links, every key leads to a record or is listed here as meant to lead nowhere, the numbers of different
tables agree, the logs end where the records stand, and every value that a view can show occurs somewhere.
"""

import sys
import unittest

from sample_network import HERE, INGRESS, INTERFACES, LINKS, LOOPBACKS, igp_metrics, loopback
from state_tables import GROUP_STATE_NUMBERS, LSP_STATE_NUMBERS, State, flat, number

# What is meant to be missing.
WITHOUT_STATUS = {("den-snv-new", "cli")}
WITHOUT_LOG = {("den-snv-new", "cli")}
NOT_CONFIGURED_PATHS = {("sea-backup", "cli")}
WITHOUT_INTERFACE_MTU = {("video-east", "eth1")}
WITHOUT_SESSION = {("bypass-den-ksc", "frrBypass"), ("mvpn-65000-7", "mvpn"), ("video-east", "cli")}

EVENT_KINDS = {
    "unknown", "agentRestart", "creation", "tunnelState", "bandwidth", "bandwidthConfig", "lspAdd", "lspDel", "lspInUse",
    "lspNoLongerInUse", "lspState", "lspError", "cspfQuery", "cspfReply", "p2mpDestinationAdded",
    "p2mpDestinationRemoved", "p2mpLeafState"}


class SampleTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with open(FILE, encoding="utf-8") as file:
            cls.text = file.read()
        cls.sample = State(cls.text)

    def walk(self, hops):
        """The routers that the hops pass, Denver first."""
        routers, links = [HERE], []
        for hop in hops[:-1]:
            link, owner, other = INGRESS[hop]
            self.assertEqual(other, routers[-1], "no link leads from %s to %s" % (routers[-1], hop))
            routers.append(owner)
            links.append(link)
        self.assertEqual(LOOPBACKS[hops[-1]], routers[-1])
        self.assertEqual(len(routers), len(set(routers)), "a path that passes a router twice: %s" % hops)
        return routers, links

    def test_layout(self):
        self.assertTrue(self.text.endswith("}\n"))
        self.assertLessEqual(max(map(len, self.text.splitlines())), 120)

    def test_every_path_follows_links(self):
        count = 0
        for key, request in self.sample.requests.items():
            tree = request.get("tree", {"paths": {}})
            for leaf, path in tree["paths"].items():
                if path.get("hops"):
                    self.assertEqual(path["hops"][-1], leaf)
                    self.walk(path["hops"])
                    count += 1
        for key, entry in self.sample.events():
            if "hops" in entry:
                self.assertEqual(entry["event"]["kind"], "cspfReply")
                self.walk(entry["hops"])
                destination = entry["event"].get("destination", self.sample.configs[key[:2]]["destination"][0])
                self.assertEqual(entry["hops"][-1], destination)
                count += 1
        self.assertGreater(count, 40)

    def test_router(self):
        self.assertEqual(self.sample.file["rsvpLerConfig"]["localIntfIp"], loopback(HERE))
        for config in self.sample.configs.values():
            self.assertEqual(config["source"], loopback(HERE))
            for address in config["destination"]:
                self.assertIn(address, LOOPBACKS)

    def test_tunnels_have_their_records(self):
        s = self.sample
        with_status = set(s.configs) - WITHOUT_STATUS
        self.assertEqual(set(s.specs), set(s.configs))
        self.assertEqual(set(s.states), with_status)
        self.assertEqual(set(s.indexes), set(s.configs) - WITHOUT_LOG)
        self.assertEqual({key[:2] for key in s.sub_configs}, with_status)
        self.assertEqual(set(s.sub_states), set(s.sub_configs))
        self.assertEqual(set(s.logs), {row["tunnelIndex"] for row in s.indexes.values()})
        self.assertEqual(len(s.logs), len(s.indexes))
        self.assertEqual(set(s.sub_logs), {row["tunnelIndex"] for row in s.sub_indexes.values()})
        self.assertEqual(set(s.sub_indexes), {key for key in s.sub_configs if key[2] != 0})
        for key, status in s.states.items():
            config = s.configs[key]
            p2mp = config["sessionType"] == "p2mp"
            self.assertEqual(status["isP2mp"], p2mp)
            self.assertEqual(status["sessionId"]["type"], 1 if p2mp else 0)
            self.assertEqual(status["sessionId"]["extendedAddress"], loopback(HERE))
            ids = {sub[2] for sub in s.sub_configs if sub[:2] == key}
            self.assertEqual(ids, {1, 2, 10} if status["split"] else {0})
            self.assertLessEqual(status["split"], config.get("splitBwEnabled", False))
            if not p2mp:
                self.assertEqual(status["sessionId"]["address"], config["destination"][0])
                self.assertEqual(status["igpMetric"], igp_metrics()[LOOPBACKS[config["destination"][0]]])
        numbers = [status["sessionId"]["id"] for status in s.states.values()]
        self.assertEqual(len(numbers), len(set(numbers)))
        sessions = [sub["sessionCliId"] for sub in s.sub_states.values() if "sessionCliId" in sub]
        self.assertEqual(len(sessions), len(set(sessions)))
        self.assertEqual({key[:2] for key, sub in s.sub_states.items() if "sessionCliId" not in sub}, WITHOUT_SESSION)

    def test_path_specifications(self):
        s = self.sample
        missing = set()
        for key, spec in s.specs.items():
            for role in ("primaryPathSpecId", "secondaryPathSpecId"):
                wanted = spec.get(role)
                resolved = wanted if wanted and flat(wanted) in s.paths else None
                if wanted and not resolved:
                    missing.add(flat(wanted))
                self.assertEqual(s.configs[key].get(role), resolved)
                for sub, config in s.sub_configs.items():
                    if sub[:2] == key:
                        self.assertEqual(config.get(role), resolved)
        self.assertEqual(missing, NOT_CONFIGURED_PATHS)
        used = {flat(spec[role]) for spec in s.specs.values() for role in spec if role.endswith("PathSpecId")}
        self.assertEqual(set(s.paths), used - missing)

    def test_profiles(self):
        for key, spec in self.sample.specs.items():
            state = self.sample.configs[key].get("profileState", "notSpecified")
            self.assertEqual("profile" in spec, state != "notSpecified", key)

    def test_instances(self):
        s = self.sample
        expected = set()
        for sub, status in s.sub_states.items():
            for role in ("activeMbbTunnelConfigId", "pendingMbbTunnelConfigId"):
                if role in status:
                    self.assertEqual(flat(status[role])[:3], sub)
                    expected.add(flat(status[role]))
        self.assertEqual(set(s.mbb_configs), expected)
        self.assertEqual(set(s.mbb_states), expected)
        self.assertEqual({key[:4] for key in s.groups}, expected)

    def test_groups_and_requests(self):
        s = self.sample
        expected = set()
        for key, group in s.groups.items():
            p2mp = s.configs[key[:2]]["sessionType"] == "p2mp"
            self.assertEqual(group["isP2mp"], p2mp)
            for role in ("activeLspRequestConfigId", "pendingLspRequestConfigId"):
                if role in group:
                    self.assertEqual(flat(group[role])[:5], key)
                    expected.add(flat(group[role]))
            self.assertEqual(s.cspf[key]["kind"], 2 if p2mp else 1)
            role = "secondaryPathSpecId" if key[4] else "primaryPathSpecId"
            self.assertIn(role, s.sub_configs[key[:3]])
        self.assertEqual(set(s.cspf), set(s.groups))
        self.assertEqual(set(s.requests), expected)
        self.assertEqual(set(s.lsps), expected)
        for key, request in s.requests.items():
            self.assertEqual(request["sessionType"], s.configs[key[:2]]["sessionType"])
            self.assertEqual(request["bandwidth"], s.mbb_configs[key[:4]]["requestedBandwidth"])
        ids = [(key[:2], lsp["lspId"]) for key, lsp in s.lsps.items() if "lspId" in lsp]
        self.assertEqual(len(ids), len(set(ids)))
        computed = [row.get("pathId", row.get("treeId")) for row in s.cspf.values()]
        self.assertEqual(len(computed), len(set(computed)))

    def test_states_agree(self):
        s = self.sample
        for key, group in s.groups.items():
            state = number(group["lspGroupState"], GROUP_STATE_NUMBERS)
            active = number(s.lsps[flat(group["activeLspRequestConfigId"])]["lspState"], LSP_STATE_NUMBERS)
            self.assertEqual(state, {0: 0, 1: 1, 2: 1, 3: 2, 4: 3, 5: 4}[active], key)
            in_use = s.mbb_states[key[:4]].get("activeLspGroupId")
            if in_use:
                self.assertIn(number(s.groups[flat(in_use)]["lspGroupState"], GROUP_STATE_NUMBERS), (2, 3))
        for sub, status in s.sub_states.items():
            instance = s.mbb_states[flat(status["activeMbbTunnelConfigId"])]
            self.assertEqual(status["state"] == "up", "activeLspGroupId" in instance)
        for key, status in s.states.items():
            states = {sub["state"] for k, sub in s.sub_states.items() if k[:2] == key}
            self.assertEqual(status["state"], "up" if "up" in states else states.pop())

    def test_bandwidths_agree(self):
        s = self.sample
        for sub, status in s.sub_states.items():
            held = s.mbb_configs[flat(status["activeMbbTunnelConfigId"])]["requestedBandwidth"]
            self.assertEqual(status["currentBandwidth"], held if status["state"] == "up" else 0)
        for key, status in s.states.items():
            subs = [sub["currentBandwidth"] for k, sub in s.sub_states.items() if k[:2] == key]
            self.assertEqual(status["currentBandwidth"], sum(subs))
            config = s.configs[key]
            asked = sum(s.mbb_configs[flat(sub.get("pendingMbbTunnelConfigId", sub["activeMbbTunnelConfigId"]))]
                        ["requestedBandwidth"] for k, sub in s.sub_states.items() if k[:2] == key)
            if key not in s.auto:
                self.assertEqual(asked, config.get("configuredBandwidth", 0) if config.get("signalBandwidth") else 0)
        self.assertEqual(set(s.auto), set(s.auto_stats))
        self.assertEqual(set(s.auto), set(s.samples))
        for key, sampling in s.samples.items():
            subs = {flat(row["subTunnelConfigId"]): row["lastSampledBandwidth"]
                    for row in sampling.get("subTunnelBwSamplingStatus", [])}
            timers = {flat(row["subTunnelConfigId"]) for row in
                      s.auto_stats[key].get("subTunnelBwSamplingStats", [])}
            expected = {k for k in s.sub_states if k[:2] == key and k[2] != 0}
            self.assertEqual(set(subs), expected)
            self.assertEqual(timers, expected)
            if subs:
                self.assertEqual(sampling["lastSampledBandwidth"], sum(subs.values()))
            ahead = s.auto_stats[key]["nextAdjustmentTime"] - s.file["clock"]["currentTime"]
            self.assertTrue(0 < ahead <= s.auto[key]["adjustmentPeriod"])

    def test_mtus_and_next_hops(self):
        s = self.sample
        self.assertTrue(s.file["rsvpCliConfig"]["mtuSignalingEnabled"])
        without = set()
        for key, group in s.groups.items():
            paths = [path["hops"] for path in
                     s.requests[flat(group["activeLspRequestConfigId"])].get("tree", {"paths": {}})["paths"].values()
                     if path.get("hops")]
            up = number(group["lspGroupState"], GROUP_STATE_NUMBERS) in (2, 3)
            self.assertEqual("pathMtu" in group, up)
            if up:
                links = [link for hops in paths for link in self.walk(hops)[1]]
                self.assertEqual(group["pathMtu"], min(LINKS[link][3] for link in links), key)
            for hop in group.get("nextHop", []):
                link, owner, other = INGRESS[hop["address"]]
                self.assertEqual(other, HERE)
                self.assertEqual(hop["intfId"], INTERFACES[owner])
                if "intfMtu" not in hop:
                    without.add((key[0], hop["intfId"]))
                else:
                    self.assertEqual(hop["intfMtu"], LINKS[link][3])
            if "nextHop" in group:
                first = {self.walk(hops)[0][1] for hops in paths}
                self.assertEqual({INGRESS[hop["address"]][1] for hop in group["nextHop"]}, first)
        self.assertEqual(without, WITHOUT_INTERFACE_MTU)

    def test_errors_come_from_routers_of_the_network(self):
        for key, lsp in self.sample.lsps.items():
            rows = [(error["code"], error["value"], error["node"]) for error in lsp.get("errors", [])]
            self.assertEqual(rows, sorted(rows))
            hops = [path["hops"] for path in
                    self.sample.requests[key].get("tree", {"paths": {}})["paths"].values() if path.get("hops")]
            passed = {loopback(router) for path in hops for router in self.walk(path)[0][1:]}
            for _, _, node in rows:
                self.assertIn(node, passed if passed else LOOPBACKS)

    def test_addresses_of_events_are_routers(self):
        for key, entry in self.sample.events():
            for address in (entry["event"].get("destination"), entry["event"].get("error", {}).get("node")):
                self.assertTrue(address is None or address in LOOPBACKS, (key, address))

    def test_priorities(self):
        for key, config in self.sample.configs.items():
            self.assertTrue(0 <= config["holdPriority"] <= config["setupPriority"] <= 7, key)

    def test_leaves(self):
        s = self.sample
        for key, status in s.states.items():
            if not status["isP2mp"]:
                continue
            group = s.groups[key + (0, 1, 0)]
            active = flat(group["activeLspRequestConfigId"])
            self.assertEqual(status["subLspState"], s.lsps[active]["subLspState"])
            for role in ("activeLspRequestConfigId", "pendingLspRequestConfigId"):
                if role in group:
                    request = flat(group[role])
                    for leaf in s.requests[request]["tree"]["paths"]:
                        self.assertIn(leaf, s.configs[key]["destination"])
                        self.assertIn(leaf, s.lsps[request]["subLspState"])

    def test_logs(self):
        s = self.sample
        for key, log in s.all_logs():
            slots = [entry["entryIndex"] for entry in log["entries"]]
            self.assertEqual(slots, list(range(len(slots))))
            self.assertEqual(log["lastEntryIndex"], slots[-1])
            times = [entry["timestamp"] for entry in log["entries"]]
            self.assertEqual(times, sorted(times), key)
            self.assertLess(times[-1], s.now)
            self.assertEqual(log["entries"][0]["event"]["kind"], "creation")

    def test_logs_end_where_the_records_stand(self):
        s = self.sample
        for key, log in s.all_logs():
            status = s.sub_states[key] if len(key) == 3 else s.states[key]
            split = status.get("split", False)
            events = [entry["event"] for entry in log["entries"]]
            last = [event for event in events if event["kind"] == "tunnelState"][-1]
            self.assertEqual(last["state"], status["state"], key)
            self.assertEqual(last.get("splitBw", False), split)
            if split:
                self.assertEqual(last["subTunnelCount"], sum(1 for k in s.sub_states if k[:2] == key))
            elif status["state"] == "up":
                sub = s.sub_states[key if len(key) == 3 else key + (0,)]
                in_use = s.mbb_states[flat(sub["activeMbbTunnelConfigId"])]["activeLspGroupId"]
                self.assertEqual(last.get("groupId", 0), in_use["groupId"])
            rates = [event["bandwidth"] for event in events if event["kind"] == "bandwidth"]
            if status["state"] == "up" and status["currentBandwidth"]:
                self.assertEqual(rates[-1], status["currentBandwidth"])
            lsps = {lsp["lspId"]: number(lsp["lspState"], LSP_STATE_NUMBERS) for k, lsp in s.lsps.items()
                    if k[:len(key)] == key and "lspId" in lsp} if not split else {}
            added = {event["lspId"] for event in events if event["kind"] == "lspAdd"}
            removed = {event["lspId"] for event in events if event["kind"] == "lspDel"}
            if status["state"] != "unknown":
                self.assertEqual(added - removed, set(lsps), key)
            for lsp, state in lsps.items():
                said = [event["state"] for event in events if event["kind"] == "lspState" and event["lspId"] == lsp]
                self.assertEqual(number(said[-1], LSP_STATE_NUMBERS), state, (key, lsp))
            told = [event["error"] for event in events if event["kind"] == "lspError"]
            for lsp in [] if split else [row for k, row in s.lsps.items() if k[:len(key)] == key]:
                for error in lsp.get("errors", []):
                    self.assertIn(error, told, key)

    def test_every_kind_of_event(self):
        self.assertEqual({entry["event"]["kind"] for _, entry in self.sample.events()}, EVENT_KINDS)

    def test_reply_groups(self):
        changes, counted = set(), False
        for key, entry in self.sample.events():
            event = entry["event"]
            if event["kind"] == "cspfReply" and "changeType" in event:
                changes.add(event["changeType"])
                self.assertEqual("hops" in entry, event["changeType"] in ("new", "changed"))
                counted = counted or (event["changeType"] == "none" and event["count"] > 1)
        self.assertEqual(changes, {"none", "new", "changed", "removed", "notFound"})
        self.assertTrue(counted)

    def values(self, table, field, default=None):
        return {row.get(field, default) for row in table.values()}

    def test_every_value_of_interest(self):
        s = self.sample
        self.assertEqual(self.values(s.states, "state"), {"unknown", "down", "up"})
        self.assertEqual(self.values(s.groups, "lspGroupState"), {"unknown", "establishing", "up", 3, "down"})
        self.assertEqual(self.values(s.lsps, "lspState"), {"unknown", "establishing", "unverified", "up", 4, "down"})
        self.assertEqual(self.values(s.paths, "pathSpecType"), {"explicit", "dynamic"})
        self.assertEqual(self.values(s.configs, "frrMode", "none"), {"none", "linkProtection", "nodeProtection"})
        self.assertEqual(self.values(s.configs, "profileState", "notSpecified"),
                         {"notSpecified", "notFound", "wrongType", "applied"})
        self.assertEqual(self.values(s.configs, "metricFromIgp", False), {True, False})
        self.assertEqual(self.values(s.configs, "signalBandwidth", False), {True, False})
        self.assertEqual(self.values(s.cspf, "kind"), {1, 2})
        self.assertEqual({key[1] for key in s.configs}, {"cli", "mvpn", "frrBypass"})
        self.assertTrue({None, 0, 100} <= self.values(s.states, "color"))
        leaves = {state for lsp in s.lsps.values() for state in lsp.get("subLspState", {}).values()}
        self.assertEqual(leaves, {"unknown", "up", "down"})
        standby = [(sub.get("secondaryPreSignaled"), key) for key, sub in s.sub_configs.items()
                   if "secondaryPathSpecId" in sub]
        self.assertEqual({pre for pre, _ in standby}, {True, False})
        groups = {key[:3] for key in s.groups if key[4] == 1}
        self.assertEqual({(pre, key in groups) for pre, key in standby}, {(True, True), (False, True), (False, False)})
        in_use = {flat(row["activeLspGroupId"])[4] for row in s.mbb_states.values() if "activeLspGroupId" in row}
        self.assertEqual(in_use, {0, 1})
        self.assertTrue(any("pendingMbbTunnelConfigId" in row for row in s.sub_states.values()))
        self.assertTrue(any("pendingLspRequestConfigId" in row for row in s.groups.values()))
        self.assertTrue(any("lspId" not in row for row in s.lsps.values()))
        self.assertTrue(any("tree" not in row for row in s.requests.values()))
        self.assertTrue(any(row.get("aliasTeps") for row in s.configs.values()))

    def test_leaf_kinds(self):
        key = ("video-east", "cli", 0, 1, 0, 1)
        paths, states = self.sample.requests[key]["tree"]["paths"], self.sample.lsps[key]["subLspState"]
        self.assertTrue(any(leaf not in paths for leaf in states), "a leaf that is being removed")
        self.assertTrue(any(not path.get("hops") for path in paths.values()), "a leaf without a path")
        self.assertTrue(any(":" in leaf for leaf in paths), "an IPv6 leaf")
        self.assertIn("down", {states[leaf] for leaf in paths})
        self.assertIn("up", {states[leaf] for leaf in paths})

    def test_names_for_the_natural_order(self):
        names = [name for name, _ in self.sample.configs]
        self.assertIn("den-nyc-2", names)
        self.assertIn("den-nyc-10", names)
        self.assertEqual(len(names), 13)


if __name__ == "__main__":
    FILE = sys.argv.pop(1)
    unittest.main()
