#include "host/state/StateSummary.h"
#include "tests/host/LoadedState.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

// What is loaded beside the plain tables: the small records, histories, defaults, and what is left out.

namespace {

using namespace Rsvp;
using namespace Host::Test;
using Host::RouterState;

TEST(LoadState, smallRecords) {
   RouterState const state = load(R"({
      "clock": {"currentTime": 86400.5, "utcTime": 1700000000.25},
      "rsvpCliConfig": {"mtuSignalingEnabled": true},
      "rsvpLerCliConfig": {"localIntf": "lo1"},
      "rsvpLerConfig": {"localIntf": "lo0", "localIntfIp": "10.0.0.1", "optimizationInterval": 3600},
      "tallyFeatureConfigDir": {"feature": {"47": 1, "0": 4294967295, "4294967295": 0}}})");
   ASSERT_TRUE(state.clock);
   EXPECT_EQ(state.clock->currentTime.seconds(), 86400.5);
   EXPECT_EQ(state.clock->utcTime.seconds(), 1700000000.25);
   EXPECT_TRUE(state.rsvpCliConfig->mtuSignalingEnabled);
   EXPECT_EQ(state.rsvpLerCliConfig->localIntf.stringValue(), "lo1");
   EXPECT_EQ(state.rsvpLerConfig->localIntf.stringValue(), "lo0");
   EXPECT_EQ(state.rsvpLerConfig->localIntfIp, Lattice::IpAddr(10, 0, 0, 1));
   EXPECT_EQ(state.rsvpLerConfig->optimizationInterval, 3600u);
   auto const& features = state.tallyFeatureConfigDir->feature;
   EXPECT_EQ(features.size(), 3u);
   EXPECT_EQ(features.find(Tallies::FeatureId::rsvpLerAutoBw), Ambit::Tally::ConfigState::inForce);
   EXPECT_EQ(features.find(Tallies::FeatureId{0}), Ambit::Tally::ConfigState{4294967295});
   EXPECT_FALSE(state.rsvpLerStatus);
   EXPECT_FALSE(state.rsvpLerFathomStatus);
}

TEST(LoadState, emptyRecordsHaveTheirDefaults) {
   RouterState const state =
         load(R"({"clock":{},"rsvpCliConfig":{},"rsvpLerCliConfig":{},"rsvpLerConfig":{},"tallyFeatureConfigDir":{}})");
   ASSERT_TRUE(state.clock);
   EXPECT_EQ(state.clock->currentTime.seconds(), 0);
   EXPECT_EQ(state.clock->utcTime.seconds(), 0);
   EXPECT_FALSE(state.rsvpCliConfig->mtuSignalingEnabled);
   EXPECT_EQ(state.rsvpLerCliConfig->localIntf, Lattice::IntfId());
   EXPECT_EQ(state.rsvpLerConfig->localIntf, Lattice::IntfId());
   EXPECT_EQ(state.rsvpLerConfig->localIntfIp, Lattice::IpAddr());
   EXPECT_EQ(state.rsvpLerConfig->optimizationInterval, 0u);
   EXPECT_TRUE(state.tallyFeatureConfigDir->feature.empty());
}

TEST(LoadState, historyEvents) {
   std::vector<std::pair<std::string, LerTunnelHistoryData>> const events{
         {R"({})", LerUnknownHistoryData{}},
         {R"({"kind":"unknown"})", LerUnknownHistoryData{}},
         {R"({"kind":"agentRestart"})", LerAgentRestartHistoryData{}},
         {R"({"kind":"creation"})", LerCreationHistoryData{}},
         {R"({"kind":"tunnelState","state":"up","groupId":1,"subTunnelCount":3,"splitBw":true})",
          LerTunnelStateHistoryData{RsvpLerTunnelState::up, 1, 3, true}},
         {R"({"kind":"bandwidth","bandwidth":18446744073709551615})", LerBandwidthHistoryData{18446744073709551615u}},
         {R"({"bandwidth":9,"autoBw":true,"kind":"bandwidthConfig"})", LerBandwidthConfigHistoryData{9, true}},
         {R"({"kind":"lspAdd","lspId":1,"replacedLspId":2})", LerLspAddHistoryData{{1}, {2}}},
         {R"({"kind":"lspAdd","lspId":null})", LerLspAddHistoryData{}},
         {R"({"kind":"lspDel","lspId":3})", LerLspDelHistoryData{{3}}},
         {R"({"kind":"lspInUse","lspId":4,"replacedLspId":0})", LerLspInUseHistoryData{{4}, {0}}},
         {R"({"kind":"lspNoLongerInUse","lspId":5})", LerLspNoLongerInUseHistoryData{{5}}},
         {R"({"kind":"lspState","lspId":6,"state":"up"})", LerLspStateHistoryData{{6}, RsvpLerLspState::up}},
         {R"({"kind":"lspError","lspId":7,"error":{"code":24,"value":5,"node":"10.0.0.3"}})",
          LerLspErrorHistoryData{{7}, {24, 5, address("10.0.0.3")}}},
         {R"({"kind":"cspfQuery","count":8,"groupId":255})", LerCspfQueryHistoryData{8, 255}},
         {R"({"kind":"cspfReply","count":9,"totalLeaves":10,"groupId":11,"destination":"::1","changeType":"notFound"})",
          LerCspfReplyHistoryData{9, 10, 11, address("::1"), RsvpLerP2mpPathChangeType::notFound}},
         {R"({"kind":"p2mpDestinationAdded","destination":"10.0.0.9"})",
          LerP2mpDestinationAddedHistoryData{address("10.0.0.9")}},
         {R"({"kind":"p2mpDestinationRemoved","destination":"10.0.0.9"})",
          LerP2mpDestinationRemovedHistoryData{address("10.0.0.9")}},
         {R"({"state":"up","destination":"10.0.0.9","kind":"p2mpLeafState"})",
          LerP2mpLeafStateHistoryData{address("10.0.0.9"), RsvpLspState::up}},
   };
   std::string entries;
   for (std::size_t i = 0; i < events.size(); ++i)
      entries.append(i == 0 ? "" : ",")
            .append(R"({"entryIndex":)" + std::to_string(i) + R"(,"timestamp":)" + std::to_string(i))
            .append(R"(.5,"event":)" + events[i].first + R"(,"hops":["10.1.1.2","10.0.0.9"]})");
   // The index of the log behind its entries.
   RouterState const state =
         load(R"({"rsvpLerFathomStatus":{"rsvpLerTunnelHistory":[{"lastEntryIndex":4294967295,"entries":[)" + entries +
              R"(],"tunnelIndex":7}],"rsvpLerSubTunnelHistory":[{"tunnelIndex":3,"entries":[{"entryIndex":100000}]},
            {"tunnelIndex":4,"lastEntryIndex":9},{"tunnelIndex":5,"entries":[]}]}})");
   auto const log = state.rsvpLerFathomStatus->rsvpLerTunnelHistory.get()->tunnelHistory(7);
   ASSERT_TRUE(log);
   EXPECT_EQ(log->lastEntryIndex, 4294967295u);
   EXPECT_EQ(log->entries.size(), events.size());
   for (std::uint32_t i = 0; i < events.size(); ++i) {
      auto const entry = log->entries.safeLookup({7, i});
      EXPECT_EQ(entry.key, (RsvpLerTunnelHistoryKey{7, i}));
      EXPECT_EQ(entry.timestamp.seconds(), i + 0.5);
      EXPECT_EQ(entry.data, events[i].second) << events[i].first;
      EXPECT_EQ(texts(entry.hops), (Texts{"10.1.1.2", "10.0.0.9"}));
   }
   auto const subLogs = state.rsvpLerFathomStatus->rsvpLerSubTunnelHistory.get();
   ASSERT_TRUE(subLogs->subTunnelHistory(3));
   EXPECT_EQ(subLogs->subTunnelHistory(3)->lastEntryIndex, 0u);
   EXPECT_TRUE(subLogs->subTunnelHistory(3)->entries.contains({3, 100000}));
   EXPECT_EQ(subLogs->subTunnelHistory(3)->entries.safeLookup({3, 100000}).key, (RsvpLerTunnelHistoryKey{3, 100000}));
   EXPECT_FALSE(subLogs->subTunnelHistory(4));
   ASSERT_TRUE(subLogs->subTunnelHistory(5));
   EXPECT_EQ(subLogs->subTunnelHistory(5)->entries.size(), 0u);
}

TEST(LoadState, missingAndEmptyTables) {
   RouterState const none = load("{}");
   EXPECT_FALSE(none.clock);
   EXPECT_FALSE(none.rsvpCliConfig);
   EXPECT_FALSE(none.rsvpLerCliConfig);
   EXPECT_FALSE(none.rsvpLerConfig);
   EXPECT_FALSE(none.rsvpLerStatus);
   EXPECT_FALSE(none.rsvpLerFathomStatus);
   ASSERT_TRUE(none.tallyFeatureConfigDir);
   EXPECT_TRUE(none.tallyFeatureConfigDir->feature.empty());
   EXPECT_TRUE(load(R"({"tallyFeatureConfigDir":null})").tallyFeatureConfigDir);

   RouterState const roots = load(R"({"rsvpLerStatus":{"autoBwStats":null},"rsvpLerFathomStatus":{}})");
   EXPECT_FALSE(roots.rsvpLerStatus->tunnelIndexMap.get());
   EXPECT_FALSE(roots.rsvpLerStatus->autoBwStats.get());
   EXPECT_FALSE(roots.rsvpLerFathomStatus->superTunnelConfigColl.get());
   EXPECT_FALSE(roots.rsvpLerFathomStatus->autoBwConfig.get());
   // The two that the show commands take for granted.
   ASSERT_TRUE(roots.rsvpLerFathomStatus->rsvpLerTunnelHistory.get());
   EXPECT_TRUE(roots.rsvpLerFathomStatus->rsvpLerTunnelHistory.get()->empty());
   ASSERT_TRUE(roots.rsvpLerFathomStatus->rsvpLerSubTunnelHistory.get());
   EXPECT_TRUE(roots.rsvpLerFathomStatus->rsvpLerSubTunnelHistory.get()->empty());

   RouterState const empty = load(R"({"rsvpLerStatus":{"tunnelIndexMap":[],"subTunnelStatusCollTable":[
      {"tunnelSpecId":{"name":"a"}},{"tunnelSpecId":{"name":"b"},"subTunnelStatusColl":null},
      {"tunnelSpecId":{"name":"c"},"subTunnelStatusColl":[]}]}})");
   ASSERT_TRUE(empty.rsvpLerStatus->tunnelIndexMap.get());
   EXPECT_TRUE(empty.rsvpLerStatus->tunnelIndexMap.get()->empty());
   auto const table = empty.rsvpLerStatus->subTunnelStatusCollTable.get();
   EXPECT_EQ(table->size(), 1u);
   EXPECT_FALSE(table->subTunnelStatusColl({"a", RsvpLerTunnelSource::unknown}));
   EXPECT_FALSE(table->subTunnelStatusColl({"b", RsvpLerTunnelSource::unknown}));
   ASSERT_TRUE(table->subTunnelStatusColl({"c", RsvpLerTunnelSource::unknown}));
}

TEST(LoadState, namesAreExact) {
   RouterState const state = load(statusTable("tunnelIndexMap", R"(
      {"tunnelSpecId": {"name": "\u0061\"\\\/\b\f\n\r\t\u0000\u00e4\ud83d\ude00"}, "tunnelIndex": 1},
      {"tunnelSpecId": {"name": "gr)"
                                                                "\xc3\xbc"
                                                                R"(n"}, "tunnelIndex": 2},
      {"tunnelSpecId": {"source": "cli"}, "tunnelIndex": 3})"));
   auto const map = state.rsvpLerStatus->tunnelIndexMap.get();
   auto const indexOf = [&](std::string_view name, RsvpLerTunnelSource source) {
      return map->tunnelIndexForTunnelSpecId({Fathom::String(name), source}).valueOr(0);
   };
   using namespace std::string_view_literals;
   EXPECT_EQ(indexOf("a\"\\/\b\f\n\r\t\0\xc3\xa4\xf0\x9f\x98\x80"sv, RsvpLerTunnelSource::unknown), 1u);
   EXPECT_EQ(indexOf("gr\xc3\xbcn", RsvpLerTunnelSource::unknown), 2u);
   EXPECT_EQ(indexOf("", RsvpLerTunnelSource::cli), 3u);
}

TEST(LoadState, equalNamesAreOneString) {
   RouterState const state =
         load(R"({"rsvpLerStatus":{"tunnelIndexMap":[{"tunnelSpecId":{"name":"a"}},{"tunnelSpecId":{"name":"b"}}],
      "subTunnelIndexMap":[{"subTunnelConfigId":{"name":"\u0061"}}]}})");
   char const* ofTunnel = nullptr;
   state.rsvpLerStatus->tunnelIndexMap.get()->walk([&](RsvpLerTunnelSpecId const& id, std::uint32_t) {
      if (id.name.view() == "a")
         ofTunnel = id.name.c_str();
   });
   state.rsvpLerStatus->subTunnelIndexMap.get()->walk(
         [&](RsvpLerSubTunnelConfigId const& id, std::uint32_t) { EXPECT_EQ(id.tunnelSpecId.name.c_str(), ofTunnel); });
   ASSERT_NE(ofTunnel, nullptr);
}

TEST(LoadState, warningNamesTheMissingTables) {
   using Names = std::vector<std::string_view>;
   Names const all{"superTunnelConfigColl",
                   "superTunnelStatusColl",
                   "subTunnelStatusCollTable",
                   "tunnelSpecColl",
                   "bwSamplingStatusColl",
                   "tunnelIndexMap",
                   "autoBwConfig",
                   "autoBwStats"};
   EXPECT_EQ(Host::missingTables(load("{}")), all);
   EXPECT_EQ(Host::missingTables(load(R"({"rsvpLerStatus":{},"rsvpLerFathomStatus":{}})")), all);
   // One after the other left out, the others empty.
   for (std::string_view const left : all) {
      std::string status;
      std::string fathom;
      for (std::string_view const name : all) {
         std::string& root = name == "superTunnelConfigColl" || name == "autoBwConfig" ? fathom : status;
         if (name != left)
            root.append(root.empty() ? "\"" : ",\"").append(name).append("\":[]");
      }
      EXPECT_EQ(
            Host::missingTables(load("{\"rsvpLerStatus\":{" + status + "},\"rsvpLerFathomStatus\":{" + fathom + "}}")),
            Names{left});
   }
}

TEST(LoadState, aLongMapInTheWorstOrder) {
   std::string leaves;
   for (int i = 60000; i > 0; --i)
      leaves.append(leaves.empty() ? "\"::" : ",\"::")
            .append(std::to_string(i / 6000) + ":" + std::to_string(i % 6000))
            .append("\":1");
   RouterState const state =
         load(statusTable("superTunnelStatusColl", "{\"tunnelSpecId\":{},\"subLspState\":{" + leaves + "}}"));
   auto const status = state.rsvpLerStatus->superTunnelStatusColl.get()->superTunnelStatus({});
   EXPECT_EQ(status->subLspState.size(), 60000u);
   EXPECT_EQ(status->subLspState.begin()->key.stringValue(), "::1");
}

TEST(LoadState, summary) {
   EXPECT_EQ(Host::summaryText(load("{}")), "0 tunnels (0 P2P, 0 P2MP; 0 up, 0 down, 0 other), 0 sub-tunnels, "
                                            "0 LSP groups, 0 LSPs, 0 events");
   EXPECT_EQ(Host::summaryText(load(R"({"clock": {"utcTime": 1700000000.75},
      "rsvpLerStatus": {
         "superTunnelStatusColl": [{"tunnelSpecId": {"name": "a"}, "state": "up"}, {"tunnelSpecId": {"name": "b"}, "state": "down"},
            {"tunnelSpecId": {"name": "c"}}, {"tunnelSpecId": {"name": "not configured"}, "state": "up"}],
         "subTunnelStatusCollTable": [{"tunnelSpecId": {}, "subTunnelStatusColl": [{"subTunnelConfigId": {}}]}],
         "lspGroupStatusCollTable": [
            {"mbbTunnelConfigId": {}, "lspGroupStatusColl": [{"lspGroupId": {}}, {"lspGroupId": {"groupId": 1}}]},
            {"mbbTunnelConfigId": {"epoch": 1}, "lspGroupStatusColl": [{"lspGroupId": {}}]}],
         "lspRequestStatusCollTable": [{"lspGroupId": {}, "lspRequestStatusColl": [{"lspRequestConfigId": {}}]}]},
      "rsvpLerFathomStatus": {
         "superTunnelConfigColl": [{"tunnelSpecId": {"name": "a"}}, {"tunnelSpecId": {"name": "b"}, "sessionType": 9},
            {"tunnelSpecId": {"name": "c"}}, {"tunnelSpecId": {"name": "d"}}],
         "rsvpLerTunnelHistory": [{"tunnelIndex": 0, "entries": [{"entryIndex": 0}, {"entryIndex": 1}]}],
         "rsvpLerSubTunnelHistory": [{"tunnelIndex": 0, "entries": [{"entryIndex": 0}]}]}})")),
             "4 tunnels (3 P2P, 1 P2MP; 1 up, 1 down, 2 other), 1 sub-tunnel, 3 LSP groups, 1 LSP, 3 events, "
             "taken at 2023-11-14 22:13:20 UTC");
   EXPECT_EQ(
         Host::summaryText(load(
               R"({"clock":{"utcTime":1e300},"rsvpLerFathomStatus":{"superTunnelConfigColl":[{"tunnelSpecId":{}}]}})")),
         "1 tunnel (1 P2P, 0 P2MP; 0 up, 0 down, 1 other), 0 sub-tunnels, 0 LSP groups, 0 LSPs, 0 events");
}

} // namespace
