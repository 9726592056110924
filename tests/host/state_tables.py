"""The tables of a state file, as the tests of whole states hold them against each other."""

import json

LSP_STATE_NUMBERS = {"unknown": 0, "establishing": 1, "unverified": 2, "up": 3, "down": 5}
GROUP_STATE_NUMBERS = {"unknown": 0, "establishing": 1, "up": 2, "down": 4}


def number(value, words):
    return value if isinstance(value, int) else words[value]


def flat(key):
    return tuple(key.values())


class State:
    """The tables of the file as dictionaries by flat key."""

    def __init__(self, text):
        self.file = json.loads(text, object_pairs_hook=self.members)
        self.status, self.fathom = self.file["rsvpLerStatus"], self.file["rsvpLerFathomStatus"]
        self.now = self.file["clock"]["utcTime"]
        self.paths = self.table(self.status["pathSpecConfigColl"], "pathSpecId")
        self.configs = self.table(self.fathom["superTunnelConfigColl"], "tunnelSpecId")
        self.specs = self.table(self.status["tunnelSpecColl"], "tunnelSpecId")
        self.states = self.table(self.status["superTunnelStatusColl"], "tunnelSpecId")
        self.indexes = self.table(self.status["tunnelIndexMap"], "tunnelSpecId")
        self.sub_indexes = self.table(self.status["subTunnelIndexMap"], "subTunnelConfigId")
        self.sub_configs = self.inner("subTunnelConfigCollTable", "subTunnelConfigColl", "tunnelSpecId",
                                      "subTunnelConfigId")
        self.sub_states = self.inner("subTunnelStatusCollTable", "subTunnelStatusColl", "tunnelSpecId",
                                     "subTunnelConfigId")
        self.mbb_configs = self.inner("mbbTunnelConfigCollTable", "mbbTunnelConfigColl", "subTunnelConfigId",
                                      "mbbTunnelConfigId")
        self.mbb_states = self.inner("mbbTunnelStatusCollTable", "mbbTunnelStatusColl", "subTunnelConfigId",
                                     "mbbTunnelConfigId")
        self.groups = self.inner("lspGroupStatusCollTable", "lspGroupStatusColl", "mbbTunnelConfigId", "lspGroupId")
        self.requests = self.inner("lspRequestConfigCollTable", "lspRequestConfigColl", "lspGroupId",
                                   "lspRequestConfigId")
        self.lsps = self.inner("lspRequestStatusCollTable", "lspRequestStatusColl", "lspGroupId", "lspRequestConfigId")
        self.cspf = self.table(self.status["cspfPathKeyMapping"], "lspGroupId")
        self.auto = self.table(self.fathom["autoBwConfig"], "tunnelSpecId")
        self.auto_stats = self.table(self.status["autoBwStats"], "tunnelSpecId")
        self.samples = self.table(self.status["bwSamplingStatusColl"], "tunnelSpecId")
        self.logs = {row["tunnelIndex"]: row for row in self.fathom["rsvpLerTunnelHistory"]}
        self.sub_logs = {row["tunnelIndex"]: row for row in self.fathom["rsvpLerSubTunnelHistory"]}

    @staticmethod
    def members(pairs):
        names = [name for name, _ in pairs]
        assert len(names) == len(set(names)), "a member stands twice: %s" % names
        return dict(pairs)

    @staticmethod
    def table(rows, key):
        result = {flat(row[key]): row for row in rows}
        assert len(result) == len(rows), "a key stands twice by %s" % key
        return result

    def inner(self, outer, collection, outer_key, key):
        rows = []
        self.table(self.status[outer], outer_key)
        for entry in self.status[outer]:
            for row in entry[collection]:
                assert flat(row[key])[:-1] == flat(entry[outer_key]), "%s stands under the wrong parent" % row[key]
                rows.append(row)
        return self.table(rows, key)

    def all_logs(self):
        """Pairs of an owner, a tunnel's key or a sub-tunnel's, and its entries."""
        for key, row in self.indexes.items():
            yield key, self.logs[row["tunnelIndex"]]
        for key, row in self.sub_indexes.items():
            yield key, self.sub_logs[row["tunnelIndex"]]

    def events(self):
        for key, log in self.all_logs():
            for entry in log["entries"]:
                yield key, entry
