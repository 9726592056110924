"""Finds display functions that don't start with a probe, and probes with other arguments than those agreed.

A display function is, in the rooms below,
  - a member of a command object that takes parameters: those without any are the accessors of its tables;
  - a free function that renders, looks something up, sizes a column or counts, which its first word tells.
What stands in an unnamed namespace is a part of the function that calls it, but for the routines that INNER names.
Functions that only hand a pass on to a section aren't display functions, nor is the walk that NOT_DISPLAYED names; helpers
in text/ and output/ don't know what they work for.
"""

import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
ROOMS = ("detail", "frame", "history", "lsp", "status", "summary")
COMMANDS = ("ShowRsvpLerTunnel", "ShowRsvpLer")
VERBS = re.compile("(render|get|set|aggregate|count|start|end)[A-Z]")
NOT_DISPLAYED = {"renderColumn": "calls the display functions of a column"}
INNER = ("renderLspPathSpec", "renderP2mpLspPathSpec")

TUNNEL = "tunnelSpecId"
SUB_TUNNEL = "subTunnelConfigId"
BOTH_INSTANCES = "activeMbbTunnelConfigId, pendingMbbTunnelConfigId"
GROUP = BOTH_INSTANCES + ', ", groupId=", groupId'

# What each probe traces, by the names of its function; a function that isn't named traces nothing.
ARGUMENTS = {
    '"format=", format': "render",
    "view." + TUNNEL: "renderShowTunnelP2p renderShowTunnelDetailP2p renderShowTunnelLspP2p renderShowTunnelSummaryP2p "
                      "renderShowTunnelSubTunnelSummaryP2p renderShowTunnelHistoryP2p renderShowTunnelHistoryDetailP2p "
                      "renderShowTunnelP2mp renderShowTunnelDetailP2mp renderShowTunnelLspP2mp "
                      "renderShowTunnelSummaryP2mp renderShowTunnelHistoryP2mp renderShowTunnelHistoryDetailP2mp",
    "view." + SUB_TUNNEL: "renderShowSubTunnel renderShowSubTunnelDetail renderShowSubTunnelLsp "
                          "renderShowSubTunnelSummary renderShowTunnelSubTunnelSummary renderShowSubTunnelHistory "
                          "renderShowSubTunnelHistoryDetail",
    TUNNEL: "renderTunnel getLspIdsForSuperTunnel renderTunnelHistory renderSubTunnelSummaryHeader "
            "renderTunnelNameHeading renderTunnelConfigSource renderTunnelIndex renderTunnelBandwidth "
            "renderTunnelBandwidthDetails renderTunnelBandwidthParams setP2pTunnelSummaryHeaderColSizes "
            "setP2mpTunnelSummaryHeaderColSizes renderP2pTunnelSummary renderP2mpTunnelSummary "
            "renderSubTunnelsForTunnel renderMissingPathSpecConfig getRequestedPathSpecId getNonSplitSubTunnelStatus",
    SUB_TUNNEL: "renderSubTunnelId renderSubTunnelIndex renderSubTunnelBwNextAdjustment "
                "renderSubTunnelSampledBandwidth setSubTunnelSummaryHeaderColSizes renderSubTunnel "
                "renderSubTunnelSummary renderSubTunnelHistory getSubTunnelStatus",
    "mbbTunnelConfigId": "getLspIdsForTunnel renderLspsForTunnel renderTreeSpecNameNoPathSpecConfig "
                         "getMbbTunnelConfig getMbbTunnelStatus",
    BOTH_INSTANCES: "renderPaths renderDetailedPaths renderTunnelMtuInformation renderP2mpLspGroupTreeErrors "
                    "renderLsps renderP2mpLsps",
    GROUP: "renderLspGroup renderDetailedLspGroup renderLspGroupState renderLspGroupErrors getLspGroupStatusByGroupId",
    "lspGroupId": "renderLspGroupCspfPathKey renderLspGroupCspfTreeId renderActivePathType "
                  "renderSubTunnelActivePathType getLspGroupStatus",
    "Skein::Hex(lspGroupId)": "aggregateLspGroupErrors",
    "lspRequestConfigId": "aggregateLspErrors renderLeaves renderTreeLeaves renderDetailedLeaves "
                          "renderDetailedTreeLeaves renderLsp getLspIdForLspRequest getLspRequestConfig "
                          "getLspRequestStatus",
    "pathSpecId": "renderDetailedP2mpLspGroup renderP2mpLspGroup renderLspGroupPathSpec renderTreeSpecName",
}
EXPECTED = {name: arguments for arguments, names in ARGUMENTS.items() for name in names.split()}


class Function:
    """A definition outside every class; `head` is its text up to the brace, `first` its first statement."""

    def __init__(self, head, first, unnamed):
        self.unnamed = unnamed
        self.head = " ".join(head.split())
        self.first = first.strip()
        scope, _, self.name = re.search(r"([\w:~]+|operator\W+?)\(", self.head).group(1).rpartition("::")
        self.parameters = self.head[self.head.index("(") + 1:self.head.rindex(")")]
        self.command = scope if scope in COMMANDS else None

    def is_display_function(self):
        if self.name in NOT_DISPLAYED:
            return False
        if self.unnamed:
            return self.name in INNER
        if self.command:
            return self.parameters != "" and self.name != self.command and not self.name.endswith("Is")
        return VERBS.match(self.name) is not None and not re.match(r"(Sub)?TunnelPass\b", self.parameters)

    def fault(self):
        """What is wrong with its beginning, or nothing."""
        probe = re.fullmatch(r"RSVP_LER_TRACE\((.*)\);", self.first)
        if probe is None:
            return f"{self.name} doesn't start with RSVP_LER_TRACE({EXPECTED.get(self.name, '')});"
        if probe.group(1) != EXPECTED.get(self.name, ""):
            return f"{self.name} traces ({probe.group(1)}) instead of ({EXPECTED.get(self.name, '')})"
        return None


def functions(text):
    """The functions that a formatted source defines."""
    unnamed = False
    head = ""
    lines = text.splitlines()
    for line, following in zip(lines, lines[1:] + [""]):
        if line == "namespace {" or line == "} // namespace":
            unnamed = line == "namespace {"
        elif head == "" and re.match(r"(\s|[}#/]|$|namespace|template)", line):
            continue
        else:
            head += line + "\n"
            if line.endswith(("{", ";", "}")) or line.endswith(")};"):
                if line.endswith("{") and "(" in head and "=" not in head.split("(")[0]:
                    yield Function(head[:-2], following, unnamed)
                head = ""


def display_functions():
    for room in ROOMS:
        for path in sorted((ROOT / "RsvpLer" / room).glob("*.*")):
            for function in functions(path.read_text()):
                if function.is_display_function():
                    yield path, function


class Probes(unittest.TestCase):
    def test_every_display_function_starts_with_its_probe(self):
        faults = [f"{path.relative_to(ROOT)}: {function.fault()}" for path, function in display_functions()
                  if function.fault()]
        self.assertEqual(faults, [])

    def test_the_table_names_functions_that_there_are(self):
        self.assertEqual(sorted({*EXPECTED, *INNER} - {function.name for _, function in display_functions()}), [])

    def test_one_display_function_for_each_section_is_found(self):
        # What the headers declare with a renderer, and what the search above must therefore come by.
        declared = set()
        for room in ("", *ROOMS):
            for path in (ROOT / "RsvpLer" / room).glob("*.h"):
                text = " ".join(path.read_text().split())
                declared |= set(re.findall(r"[ *&](render\w+)\( ?(?:ShowRsvpLerTunnel& command, )?scrivo::RendererV2\*",
                                           text))
        self.assertGreater(len(declared), 90)
        self.assertEqual(sorted(declared - {function.name for _, function in display_functions()}), [])


class Finding(unittest.TestCase):
    """That the search finds what it is for."""

    @staticmethod
    def faults(text):
        return [function.fault() for function in functions(text) if function.is_display_function()]

    def test_a_member_without_a_probe(self):
        self.assertEqual(self.faults("void ShowRsvpLerTunnel::renderLsps(\n      int a) const {\n   work(a);\n}\n"),
                         [f"renderLsps doesn't start with RSVP_LER_TRACE({BOTH_INSTANCES});"])

    def test_a_section_without_a_probe(self):
        self.assertEqual(self.faults("void renderTunnelSrc(scrivo::RendererV2* renderer, bool showText) {\n}\n"),
                         ["renderTunnelSrc doesn't start with RSVP_LER_TRACE();"])

    def test_a_probe_that_is_not_first(self):
        self.assertEqual(self.faults("int getThing(int a) {\n   work(a);\n   RSVP_LER_TRACE();\n}\n"),
                         ["getThing doesn't start with RSVP_LER_TRACE();"])

    def test_other_arguments(self):
        self.assertEqual(self.faults("void ShowRsvpLer::render(int format) {\n   RSVP_LER_TRACE(format);\n}\n"),
                         ['render traces (format) instead of ("format=", format)'])

    def test_an_inner_routine_without_a_probe(self):
        self.assertEqual(self.faults("namespace {\n\nvoid renderLspPathSpec(int a) {\n   work(a);\n}\n\n} // namespace\n"),
                         ["renderLspPathSpec doesn't start with RSVP_LER_TRACE();"])

    def test_a_right_one(self):
        self.assertEqual(self.faults("void ShowRsvpLer::render(int f) {\n   RSVP_LER_TRACE(\"format=\", format);\n}\n"),
                         [None])

    def test_what_is_none(self):
        self.assertEqual(self.faults("Coll ShowRsvpLer::superTunnelConfigColl() const {\n   return a;\n}\n"
                                     "ShowRsvpLer::ShowRsvpLer(int a_)\n      : a(a_) {\n}\n"
                                     "namespace {\n\nvoid renderPart(int a) {\n}\n\n} // namespace\n"
                                     "void renderThing(TunnelPass& pass, bool) {\n   work();\n}\n"), [])


if __name__ == "__main__":
    unittest.main()
