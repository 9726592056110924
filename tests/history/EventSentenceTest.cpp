#include "tests/history/Events.h"

#include <gtest/gtest.h>

using namespace Tests;
using namespace Rsvp;

namespace {

using TunnelState = RsvpLerTunnelState;
using LspState = RsvpLerLspState;
constexpr bool tunnelLog = false;
constexpr bool subTunnelLog = true;
constexpr auto otherSession = static_cast<RsvpSessionType>(2);
OptionalLspId const none;
RsvpErrorWithNode const noRoute{24, 5, address("10.0.0.3")};

LerTunnelStateHistoryData unsplit(TunnelState state, std::uint8_t groupId) {
   return {state, groupId, 0, false};
}
LerTunnelStateHistoryData split(TunnelState state, std::uint16_t count, std::uint8_t groupId = 0) {
   return {state, groupId, count, true};
}

struct Row {
   EventFields event;
   bool isSubTunnel;
   RsvpSessionType sessionType;
   char const* sentence;
};

// Each sentence as the text line and as the JSON member: the two are the same.
void expectSentences(std::initializer_list<Row> rows) {
   for (Row const& row : rows) {
      RsvpLerTunnelHistoryEntry const event = entry(row.event);
      EXPECT_EQ(entryAnswer(textFormat, event, row.isSubTunnel, row.sessionType),
                "Wed 2023-04-05 06:07:08.000 " + std::string(row.sentence) + "\n");
      EXPECT_EQ(entryAnswer(jsonFormat, event, row.isSubTunnel, row.sessionType),
                R"({"timestamp":1680674828.000000,"event":")" + std::string(row.sentence) + "\"}");
   }
}

} // namespace

TEST(EventSentence, theAlternativesStandInTheirOrder) {
   LerTunnelHistoryData const alternatives[] = {LerUnknownHistoryData(),
                                                LerAgentRestartHistoryData(),
                                                LerCreationHistoryData(),
                                                LerTunnelStateHistoryData(),
                                                LerBandwidthHistoryData(),
                                                LerBandwidthConfigHistoryData(),
                                                LerLspAddHistoryData(),
                                                LerLspDelHistoryData(),
                                                LerLspInUseHistoryData(),
                                                LerLspNoLongerInUseHistoryData(),
                                                LerLspStateHistoryData(),
                                                LerLspErrorHistoryData(),
                                                LerCspfQueryHistoryData(),
                                                LerCspfReplyHistoryData(),
                                                LerP2mpDestinationAddedHistoryData(),
                                                LerP2mpDestinationRemovedHistoryData(),
                                                LerP2mpLeafStateHistoryData()};
   ASSERT_EQ(std::size(alternatives), 17u);
   ASSERT_EQ(std::variant_size_v<LerTunnelHistoryData>, 17u);
   for (std::size_t i = 0; i < std::size(alternatives); ++i)
      EXPECT_EQ(alternatives[i].index(), i);
   EXPECT_EQ(LerTunnelHistoryData().index(), 0u);
}

TEST(EventSentence, anUnknownEventHasNoLineAndAnEmptySentence) {
   for (RsvpSessionType const sessionType : {p2p, p2mp, otherSession}) {
      RsvpLerTunnelHistoryEntry const event = entry({.data = LerUnknownHistoryData()});
      EXPECT_EQ(entryAnswer(textFormat, event, tunnelLog, sessionType, "      "), "");
      EXPECT_EQ(entryAnswer(jsonFormat, event, tunnelLog, sessionType, "      "),
                R"({"timestamp":1680674828.000000,"event":""})");
   }
}

TEST(EventSentence, restartAndCreation) {
   char const* const restart = "=== RsvpTunnel agent restarted; history logging resumed ===";
   expectSentences({
         {{.data = LerAgentRestartHistoryData()}, tunnelLog, p2p, restart},
         {{.data = LerAgentRestartHistoryData()}, tunnelLog, p2mp, restart},
         {{.data = LerAgentRestartHistoryData()}, subTunnelLog, p2p, restart},
         {{.data = LerCreationHistoryData()}, tunnelLog, p2p, "Tunnel created"},
         {{.data = LerCreationHistoryData()}, tunnelLog, p2mp, "Tunnel created"},
         {{.data = LerCreationHistoryData()}, subTunnelLog, p2p, "Sub tunnel created"},
   });
}

TEST(EventSentence, stateOfATunnelThatIsNotSplit) {
   expectSentences({
         {{.data = unsplit(TunnelState::unknown, 0)}, tunnelLog, p2p, "State change: unknown"},
         {{.data = unsplit(TunnelState::down, 0)}, tunnelLog, p2p, "State change: down"},
         {{.data = unsplit(TunnelState::down, 1)}, tunnelLog, p2p, "State change: down"},
         {{.data = unsplit(TunnelState::up, 0)}, tunnelLog, p2p, "State change: up using primary path"},
         {{.data = unsplit(TunnelState::up, 1)}, tunnelLog, p2p, "State change: up using secondary path"},
         {{.data = unsplit(TunnelState::up, 1)}, subTunnelLog, p2p, "State change: up using secondary path"},
         // The number of sub-tunnels stands in the record and isn't looked at.
         {{.data = LerTunnelStateHistoryData{TunnelState::up, 0, 7, false}},
          tunnelLog,
          p2p,
          "State change: up using primary path"},
         // A P2MP tunnel has no path words, so no group is wrong for it; nor has a tunnel that isn't up.
         {{.data = unsplit(TunnelState::up, 0)}, tunnelLog, p2mp, "State change: up"},
         {{.data = unsplit(TunnelState::up, 1)}, tunnelLog, p2mp, "State change: up"},
         {{.data = unsplit(TunnelState::up, 2)}, tunnelLog, p2mp, "State change: up"},
         {{.data = unsplit(TunnelState::up, 2)}, tunnelLog, otherSession, "State change: up"},
         {{.data = unsplit(TunnelState::down, 2)}, tunnelLog, p2p, "State change: down"},
         {{.data = unsplit(TunnelState::unknown, 255)}, tunnelLog, p2p, "State change: unknown"},
   });
}

TEST(EventSentence, stateOfASplitTunnel) {
   expectSentences({
         {{.data = split(TunnelState::unknown, 3)}, tunnelLog, p2p, "State change: unknown"},
         {{.data = split(TunnelState::down, 3)}, tunnelLog, p2p, "State change: down"},
         {{.data = split(TunnelState::up, 0)}, tunnelLog, p2p, "State change: up using 0 sub tunnels"},
         {{.data = split(TunnelState::up, 1)}, tunnelLog, p2p, "State change: up using 1 sub tunnel"},
         {{.data = split(TunnelState::up, 2)}, tunnelLog, p2p, "State change: up using 2 sub tunnels"},
         {{.data = split(TunnelState::up, 65535)}, tunnelLog, p2p, "State change: up using 65535 sub tunnels"},
         // The kind of session and the group make no difference.
         {{.data = split(TunnelState::up, 1)}, tunnelLog, p2mp, "State change: up using 1 sub tunnel"},
         {{.data = split(TunnelState::up, 2, 9)}, tunnelLog, p2p, "State change: up using 2 sub tunnels"},
   });
}

TEST(EventSentence, bandwidthsAreShownInBits) {
   expectSentences({
         {{.data = LerBandwidthHistoryData{0}}, tunnelLog, p2p, "Bandwidth change: 0 bps"},
         {{.data = LerBandwidthHistoryData{124}}, tunnelLog, p2p, "Bandwidth change: 992 bps"},
         {{.data = LerBandwidthHistoryData{125}}, tunnelLog, p2mp, "Bandwidth change: 1.00 Kbps"},
         {{.data = LerBandwidthHistoryData{125000}}, subTunnelLog, p2p, "Bandwidth change: 1.00 Mbps"},
         // Times 8 modulo 2^64.
         {{.data = LerBandwidthHistoryData{2305843009213693951}}, tunnelLog, p2p, "Bandwidth change: 18.45 Ebps"},
         {{.data = LerBandwidthHistoryData{2305843009213693953}}, tunnelLog, p2p, "Bandwidth change: 8 bps"},
         {{.data = LerBandwidthConfigHistoryData{125000, true}}, tunnelLog, p2p, "Auto bandwidth change: 1.00 Mbps"},
         {{.data = LerBandwidthConfigHistoryData{1, true}}, tunnelLog, p2mp, "Auto bandwidth change: 8 bps"},
         {{.data = LerBandwidthConfigHistoryData{125000, false}},
          tunnelLog,
          p2p,
          "Bandwidth configuration change: 1.00 Mbps"},
         {{.data = LerBandwidthConfigHistoryData{0, false}}, tunnelLog, p2mp, "Bandwidth configuration change: 0 bps"},
   });
}

TEST(EventSentence, lspIds) {
   expectSentences({
         {{.data = LerLspAddHistoryData{3, none}}, tunnelLog, p2p, "LSP ID 3 added"},
         {{.data = LerLspAddHistoryData{3, 2}}, tunnelLog, p2p, "LSP ID 3 added (MBB, replacing LSP ID 2)"},
         {{.data = LerLspAddHistoryData{3, 0}}, tunnelLog, p2mp, "LSP ID 3 added (MBB, replacing LSP ID 0)"},
         {{.data = LerLspAddHistoryData{none, none}}, tunnelLog, p2p, "LSP ID 0 added"},
         {{.data = LerLspAddHistoryData{none, 65535}}, tunnelLog, p2p, "LSP ID 0 added (MBB, replacing LSP ID 65535)"},
         {{.data = LerLspDelHistoryData{65535}}, tunnelLog, p2p, "LSP ID 65535 removed"},
         {{.data = LerLspDelHistoryData{none}}, tunnelLog, p2mp, "LSP ID 0 removed"},
         {{.data = LerLspInUseHistoryData{3, none}}, tunnelLog, p2p, "LSP ID 3 in use"},
         {{.data = LerLspInUseHistoryData{3, 2}}, tunnelLog, p2p, "LSP ID 3 in use, replaced LSP ID 2"},
         {{.data = LerLspInUseHistoryData{3, 0}}, tunnelLog, p2mp, "LSP ID 3 in use, replaced LSP ID 0"},
         {{.data = LerLspInUseHistoryData{none, 2}}, tunnelLog, p2p, "LSP ID 0 in use, replaced LSP ID 2"},
         {{.data = LerLspInUseHistoryData{none, none}}, tunnelLog, p2p, "LSP ID 0 in use"},
         {{.data = LerLspNoLongerInUseHistoryData{3}}, tunnelLog, p2p, "LSP ID 3 no longer in use"},
         {{.data = LerLspNoLongerInUseHistoryData{none}}, tunnelLog, p2mp, "LSP ID 0 no longer in use"},
   });
}

TEST(EventSentence, statesAndErrorsOfAnLsp) {
   expectSentences({
         {{.data = LerLspStateHistoryData{3, LspState::unknown}}, tunnelLog, p2p, "LSP ID 3 state change: unknown"},
         {{.data = LerLspStateHistoryData{3, LspState::establishing}},
          tunnelLog,
          p2p,
          "LSP ID 3 state change: establishing"},
         {{.data = LerLspStateHistoryData{3, LspState::unverified}},
          tunnelLog,
          p2p,
          "LSP ID 3 state change: establishing (waiting for self-ping)"},
         {{.data = LerLspStateHistoryData{3, LspState::up}}, tunnelLog, p2p, "LSP ID 3 state change: up"},
         {{.data = LerLspStateHistoryData{3, LspState::upVerified}}, tunnelLog, p2p, "LSP ID 3 state change: up"},
         {{.data = LerLspStateHistoryData{3, LspState::down}}, tunnelLog, p2mp, "LSP ID 3 state change: down"},
         {{.data = LerLspStateHistoryData{none, LspState::down}}, tunnelLog, p2p, "LSP ID 0 state change: down"},
         {{.data = LerLspErrorHistoryData{3, noRoute}},
          tunnelLog,
          p2p,
          "LSP ID 3 error: Routing problem: no route available toward destination (24/5) from 10.0.0.3"},
         {{.data = LerLspErrorHistoryData{none, {12, 4, address("2001:db8::1")}}},
          tunnelLog,
          p2mp,
          "LSP ID 0 error: Service preempted (12/4) from 2001:db8::1"},
         {{.data = LerLspErrorHistoryData{3, {4000000000, 65535, {}}}},
          tunnelLog,
          p2p,
          "LSP ID 3 error: Unknown error (4000000000/65535) from ::"},
   });
}

TEST(EventSentence, cspfQueries) {
   expectSentences({
         {{.data = LerCspfQueryHistoryData{0, 0}}, tunnelLog, p2p, "CSPF query on primary path"},
         {{.data = LerCspfQueryHistoryData{1, 1}}, tunnelLog, p2p, "CSPF query on secondary path"},
         {{.data = LerCspfQueryHistoryData{2, 255}}, tunnelLog, p2p, "CSPF query on secondary path (2 times)"},
         {{.data = LerCspfQueryHistoryData{4294967295, 0}},
          subTunnelLog,
          p2p,
          "CSPF query on primary path (4294967295 times)"},
         {{.data = LerCspfQueryHistoryData{0, 0}}, tunnelLog, p2mp, "CSPF query"},
         {{.data = LerCspfQueryHistoryData{1, 1}}, tunnelLog, p2mp, "CSPF query"},
         {{.data = LerCspfQueryHistoryData{2, 1}}, tunnelLog, p2mp, "CSPF query (2 times)"},
         {{.data = LerCspfQueryHistoryData{2, 1}}, tunnelLog, otherSession, "CSPF query (2 times)"},
   });
}

TEST(EventSentence, cspfRepliesWithoutAPath) {
   auto const reply = [](std::uint32_t count, std::uint8_t groupId) {
      return LerCspfReplyHistoryData{count, 9, groupId, address("10.0.0.1"), RsvpLerP2mpPathChangeType::added};
   };
   expectSentences({
         {{.data = reply(0, 0)}, tunnelLog, p2p, "CSPF reply for primary path, path not found"},
         {{.data = reply(1, 1)}, tunnelLog, p2p, "CSPF reply for secondary path, path not found"},
         {{.data = reply(2, 0)}, tunnelLog, p2p, "CSPF reply for primary path, path not found (2 times)"},
         {{.data = reply(4, 255)}, subTunnelLog, p2p, "CSPF reply for secondary path, path not found (4 times)"},
         // The path words don't look at the kind of session.
         {{.data = reply(1, 1)}, tunnelLog, otherSession, "CSPF reply for secondary path, path not found"},
   });
}

TEST(EventSentence, destinationsAndLeaves) {
   auto const leaf = [](std::string_view destination, RsvpLspState state) {
      return LerP2mpLeafStateHistoryData{address(destination), state};
   };
   expectSentences({
         {{.data = LerP2mpDestinationAddedHistoryData{address("10.0.0.9")}},
          tunnelLog,
          p2mp,
          "Destination added: 10.0.0.9"},
         {{.data = LerP2mpDestinationAddedHistoryData{address("2001:db8::9")}},
          tunnelLog,
          p2mp,
          "Destination added: 2001:db8::9"},
         {{.data = LerP2mpDestinationAddedHistoryData{}}, tunnelLog, p2p, "Destination added: ::"},
         {{.data = LerP2mpDestinationRemovedHistoryData{address("255.255.255.255")}},
          tunnelLog,
          p2mp,
          "Destination removed: 255.255.255.255"},
         {{.data = LerP2mpDestinationRemovedHistoryData{address("::1")}}, tunnelLog, p2mp, "Destination removed: ::1"},
         {{.data = leaf("10.0.0.9", RsvpLspState::unknown)}, tunnelLog, p2mp, "Leaf 10.0.0.9 state changed: unknown"},
         {{.data = leaf("10.0.0.9", RsvpLspState::up)}, tunnelLog, p2mp, "Leaf 10.0.0.9 state changed: up"},
         {{.data = leaf("2001:db8::9", RsvpLspState::down)}, tunnelLog, p2mp, "Leaf 2001:db8::9 state changed: down"},
   });
}

TEST(EventSentenceDeathTest, valuesWithoutAWordEndTheProcess) {
   struct {
      LerTunnelHistoryData data;
      RsvpSessionType sessionType;
      char const* assertion;
   } const rows[] = {
         {unsplit(TunnelState::up, 2), p2p, "groupId == 1"},
         {unsplit(TunnelState::up, 255), p2p, "groupId == 1"},
         {unsplit(static_cast<TunnelState>(3), 0), p2p, "This should be unreachable"},
         {unsplit(static_cast<TunnelState>(3), 0), p2mp, "This should be unreachable"},
         {split(static_cast<TunnelState>(255), 1), p2p, "This should be unreachable"},
         {LerLspStateHistoryData{3, static_cast<LspState>(6)}, p2p, "This should be unreachable"},
         {LerP2mpLeafStateHistoryData{{}, static_cast<RsvpLspState>(3)}, p2mp, "This should be unreachable"},
   };
   for (auto const& row : rows) {
      RsvpLerTunnelHistoryEntry const event = entry({.data = row.data});
      EXPECT_DEATH(entryAnswer(textFormat, event, tunnelLog, row.sessionType), row.assertion);
      EXPECT_DEATH(entryAnswer(jsonFormat, event, tunnelLog, row.sessionType), row.assertion);
   }
}
