#include "tests/host/LoadedState.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

// Every table and field of it is loaded and read back from the table.

namespace {

using namespace Rsvp;
using namespace Host::Test;
using Host::RouterState;

RsvpLerTunnelSpecId const tunnel{"tun1", RsvpLerTunnelSource::cli};
RsvpLerSubTunnelConfigId const subTunnel{tunnel, 2};
RsvpLerMbbTunnelConfigId const instance{subTunnel, 3};
RsvpLerLspGroupId const group{instance, 1};
RsvpLerLspRequestConfigId const lspRequest{group, 5};

// As they stand in the documents.
std::string const tunnelKey = R"({"name":"tun1","source":"cli"})";
std::string const subTunnelKey = R"({"name":"tun1","source":"cli","subTunnelId":2})";
std::string const instanceKey = R"({"name":"tun1","source":"cli","subTunnelId":2,"epoch":3})";
std::string const groupKey = R"({"name":"tun1","source":"cli","subTunnelId":2,"epoch":3,"groupId":1})";
std::string const requestKey = R"({"name":"tun1","source":"cli","subTunnelId":2,"epoch":3,"groupId":1,"configId":5})";

std::string fathomTable(std::string const& table, std::string const& rows) {
   return R"({"rsvpLerFathomStatus":{")" + table + "\":[" + rows + "]}}";
}

TEST(LoadTables, superTunnelConfig) {
   RouterState const state = load(fathomTable("superTunnelConfigColl", R"({"tunnelSpecId":)" + tunnelKey + R"(,
      "sessionType": "p2mp", "source": "10.0.0.1", "destination": ["10.0.0.9", "::1", "10.0.0.8", "10.0.0.9"],
      "aliasTeps": ["10.0.0.19", "10.0.0.11"], "metric": 11, "metricFromIgp": true,
      "primaryPathSpecId": {"name": "north", "source": "mvpn"}, "secondaryPathSpecId": {"name": "south", "source": 4},
      "configuredBandwidth": 18446744073709551615, "splitBwEnabled": true, "quantum": 12, "minBandwidth": 13,
      "maxBandwidth": 14, "reductionDelay": 15.5, "subTunnelMinimum": 16, "subTunnelLimit": 17, "subTunnelInitial": 18,
      "signalBandwidth": true, "setupPriority": 7, "holdPriority": 6, "frrMode": "nodeProtection",
      "ldpTunneling": true, "ldpTunnelingUcmp": true, "igpShortcut": true, "optimizationInterval": 19,
      "profileState": "wrongType"}, {"tunnelSpecId": {}})"));
   auto const coll = state.rsvpLerFathomStatus->superTunnelConfigColl.get();
   ASSERT_EQ(coll->size(), 2u);
   auto const config = coll->superTunnelConfig(tunnel);
   ASSERT_TRUE(config);
   EXPECT_EQ(config->tunnelSpecId, tunnel);
   EXPECT_EQ(config->sessionType, RsvpSessionType::p2mp);
   EXPECT_EQ(config->source, address("10.0.0.1"));
   EXPECT_EQ(texts(config->destination), (Texts{"10.0.0.8", "10.0.0.9", "::1"}));
   EXPECT_EQ(texts(config->aliasTeps), (Texts{"10.0.0.11", "10.0.0.19"}));
   EXPECT_EQ(config->metric, 11u);
   EXPECT_TRUE(config->metricFromIgp);
   EXPECT_EQ(config->primaryPathSpecId, RsvpLerPathSpecId("north", RsvpLerTunnelSource::mvpn));
   EXPECT_EQ(config->secondaryPathSpecId, RsvpLerPathSpecId("south", RsvpLerTunnelSource::defaultSource));
   EXPECT_EQ(config->configuredBandwidth, 18446744073709551615u);
   EXPECT_TRUE(config->splitBwEnabled);
   EXPECT_EQ(config->quantum, 12u);
   EXPECT_EQ(config->minBandwidth, 13u);
   EXPECT_EQ(config->maxBandwidth, 14u);
   EXPECT_EQ(config->reductionDelay.seconds(), 15.5);
   EXPECT_EQ(config->subTunnelMinimum, 16u);
   EXPECT_EQ(config->subTunnelLimit, 17u);
   EXPECT_EQ(config->subTunnelInitial, 18u);
   EXPECT_TRUE(config->signalBandwidth);
   EXPECT_EQ(config->setupPriority, 7);
   EXPECT_EQ(config->holdPriority, 6);
   EXPECT_EQ(config->frrMode, Cli::FrrMode::nodeProtection);
   EXPECT_TRUE(config->ldpTunneling);
   EXPECT_TRUE(config->ldpTunnelingUcmp);
   EXPECT_TRUE(config->igpShortcut);
   EXPECT_EQ(config->optimizationInterval, 19u);
   EXPECT_EQ(config->profileState, RsvpLerTunnelProfileState::wrongType);

   auto const empty = coll->superTunnelConfig({});
   ASSERT_TRUE(empty);
   EXPECT_EQ(empty->tunnelSpecId, RsvpLerTunnelSpecId());
   EXPECT_EQ(empty->sessionType, RsvpSessionType::p2p);
   EXPECT_EQ(empty->source, Lattice::IpGenAddr());
   EXPECT_TRUE(empty->destination.empty());
   EXPECT_EQ(empty->reductionDelay.seconds(), 0);
   EXPECT_FALSE(empty->signalBandwidth);
}

TEST(LoadTables, superTunnelStatus) {
   RouterState const state = load(statusTable("superTunnelStatusColl", R"({"tunnelSpecId":)" + tunnelKey + R"(,
      "isP2mp": true, "sessionId": {"type": 1, "address": "10.0.0.9", "id": 65535, "extendedAddress": "10.0.0.1"},
      "state": "down", "color": 4294967295, "currentBandwidth": 125000, "split": true, "igpMetric": 20,
      "subLspState": {"10.0.0.9": "down", "10.0.0.8": "up", "::1": 0}},
      {"tunnelSpecId": {"name": "other"}, "color": null})"));
   auto const coll = state.rsvpLerStatus->superTunnelStatusColl.get();
   auto const status = coll->superTunnelStatus(tunnel);
   ASSERT_TRUE(status);
   EXPECT_EQ(status->tunnelSpecId, tunnel);
   EXPECT_TRUE(status->isP2mp);
   EXPECT_EQ(status->sessionId.type, 1);
   EXPECT_EQ(status->sessionId.address, address("10.0.0.9"));
   EXPECT_EQ(status->sessionId.id, 65535);
   EXPECT_EQ(status->sessionId.extendedAddress, address("10.0.0.1"));
   EXPECT_EQ(status->state, RsvpLerTunnelState::down);
   EXPECT_EQ(status->color, Cask::TristateU32(4294967295));
   EXPECT_EQ(status->currentBandwidth, 125000u);
   EXPECT_TRUE(status->split);
   EXPECT_EQ(status->igpMetric, 20u);
   ASSERT_EQ(status->subLspState.size(), 3u);
   EXPECT_EQ(status->subLspState.begin()->key.stringValue(), "10.0.0.8");
   EXPECT_EQ(*status->subLspState.valueOf({address("10.0.0.8")}), RsvpLspState::up);
   EXPECT_EQ(*status->subLspState.valueOf({address("10.0.0.9")}), RsvpLspState::down);
   EXPECT_EQ(*status->subLspState.valueOf({address("::1")}), RsvpLspState::unknown);

   auto const other = coll->superTunnelStatus({"other", RsvpLerTunnelSource::unknown});
   ASSERT_TRUE(other);
   EXPECT_FALSE(other->isP2mp);
   EXPECT_EQ(other->sessionId, RsvpSessionId());
   EXPECT_FALSE(other->color.isSet());
}

TEST(LoadTables, tunnelSpecAndPathSpec) {
   RouterState const state = load(R"({"rsvpLerStatus": {
      "pathSpecConfigColl": [{"pathSpecId": {"name": "north", "source": "cli"}, "pathSpecType": "dynamic"}],
      "tunnelSpecColl": [{"tunnelSpecId":)" +
                                  tunnelKey + R"(, "primaryPathSpecId": {"name": "north", "source": "cli"},
         "secondaryPathSpecId": {"name": "south", "source": "mvpn"}, "profile": {"name": "gold", "source": "frrBypass"}}]}})");
   auto const path = state.rsvpLerStatus->pathSpecConfigColl.get()->pathSpecConfig({"north", RsvpLerTunnelSource::cli});
   ASSERT_TRUE(path);
   EXPECT_EQ(path->pathSpecType, RsvpLerPathSpecType::dynamicPath);
   auto const spec = state.rsvpLerStatus->tunnelSpecColl.get()->tunnelSpec(tunnel);
   ASSERT_TRUE(spec);
   EXPECT_EQ(spec->primaryPathSpecId, RsvpLerPathSpecId("north", RsvpLerTunnelSource::cli));
   EXPECT_EQ(spec->secondaryPathSpecId, RsvpLerPathSpecId("south", RsvpLerTunnelSource::mvpn));
   EXPECT_EQ(spec->profile, RsvpLerTunnelProfileId("gold", RsvpLerTunnelSource::frrBypass));
}

TEST(LoadTables, indexMaps) {
   RouterState const state = load(R"({"rsvpLerStatus": {
      "tunnelIndexMap": [{"tunnelSpecId":)" +
                                  tunnelKey + R"(, "tunnelIndex": 7}, {"tunnelSpecId": {}}],
      "subTunnelIndexMap": [{"subTunnelConfigId":)" +
                                  subTunnelKey + R"(, "tunnelIndex": 4294967295}]}})");
   auto const tunnels = state.rsvpLerStatus->tunnelIndexMap.get();
   EXPECT_EQ(tunnels->tunnelIndexForTunnelSpecId(tunnel), Vane::Optional<std::uint32_t>(7));
   EXPECT_EQ(tunnels->tunnelIndexForTunnelSpecId({}), Vane::Optional<std::uint32_t>(0));
   EXPECT_FALSE(tunnels->tunnelIndexForTunnelSpecId({"tun1", RsvpLerTunnelSource::mvpn}).hasValue());
   EXPECT_EQ(state.rsvpLerStatus->subTunnelIndexMap.get()->tunnelIndexForSubTunnelConfigId(subTunnel),
             Vane::Optional<std::uint32_t>(4294967295));
}

TEST(LoadTables, subTunnels) {
   RouterState const state = load(R"({"rsvpLerStatus": {
      "subTunnelConfigCollTable": [{"tunnelSpecId":)" +
                                  tunnelKey + R"(, "subTunnelConfigColl": [
         {"subTunnelConfigId":)" + subTunnelKey +
                                  R"(, "primaryPathSpecId": {"name": "north"},
          "secondaryPathSpecId": {"name": "south"}, "secondaryPreSignaled": true}]}],
      "subTunnelStatusCollTable": [{"subTunnelStatusColl": [
         {"subTunnelConfigId":)" + subTunnelKey +
                                  R"(, "state": "up", "activeMbbTunnelConfigId":)" + instanceKey + R"(,
          "pendingMbbTunnelConfigId": {"epoch": 4}, "currentBandwidth": 125000, "sessionCliId": 12},
         {"subTunnelConfigId": {}}], "tunnelSpecId":)" +
                                  tunnelKey + "}]}}");
   auto const config =
         state.rsvpLerStatus->subTunnelConfigCollTable.get()->subTunnelConfigColl(tunnel)->subTunnelConfig(subTunnel);
   ASSERT_TRUE(config);
   EXPECT_EQ(config->subTunnelConfigId, subTunnel);
   EXPECT_EQ(config->primaryPathSpecId.name.view(), "north");
   EXPECT_EQ(config->secondaryPathSpecId.name.view(), "south");
   EXPECT_TRUE(config->secondaryPreSignaled);
   auto const coll = state.rsvpLerStatus->subTunnelStatusCollTable.get()->subTunnelStatusColl(tunnel);
   auto const status = coll->subTunnelStatus(subTunnel);
   ASSERT_TRUE(status);
   EXPECT_EQ(status->subTunnelConfigId, subTunnel);
   EXPECT_EQ(status->state, RsvpLerTunnelState::up);
   EXPECT_EQ(status->activeMbbTunnelConfigId, instance);
   EXPECT_EQ(status->pendingMbbTunnelConfigId, (RsvpLerMbbTunnelConfigId{{}, 4}));
   EXPECT_EQ(status->currentBandwidth, 125000u);
   EXPECT_EQ(status->sessionCliId, 12u);
   EXPECT_EQ(coll->subTunnelStatus({})->sessionCliId, 1000000u);
}

TEST(LoadTables, instances) {
   RouterState const state = load(R"({"rsvpLerStatus": {
      "mbbTunnelConfigCollTable": [{"subTunnelConfigId":)" +
                                  subTunnelKey + R"(, "mbbTunnelConfigColl": [
         {"mbbTunnelConfigId":)" + instanceKey +
                                  R"(, "requestedBandwidth": 125000}]}],
      "mbbTunnelStatusCollTable": [{"subTunnelConfigId":)" +
                                  subTunnelKey + R"(, "mbbTunnelStatusColl": [
         {"mbbTunnelConfigId":)" + instanceKey +
                                  R"(, "activeLspGroupId":)" + groupKey + "}]}]}}");
   auto const config =
         state.rsvpLerStatus->mbbTunnelConfigCollTable.get()->mbbTunnelConfigColl(subTunnel)->mbbTunnelConfig(instance);
   ASSERT_TRUE(config);
   EXPECT_EQ(config->mbbTunnelConfigId, instance);
   EXPECT_EQ(config->requestedBandwidth, 125000u);
   auto const status =
         state.rsvpLerStatus->mbbTunnelStatusCollTable.get()->mbbTunnelStatusColl(subTunnel)->mbbTunnelStatus(instance);
   ASSERT_TRUE(status);
   EXPECT_EQ(status->mbbTunnelConfigId, instance);
   EXPECT_EQ(status->activeLspGroupId, group);
}

TEST(LoadTables, lspGroups) {
   RouterState const state = load(statusTable("lspGroupStatusCollTable",
                                              R"({"mbbTunnelConfigId":)" + instanceKey + R"(,
      "lspGroupStatusColl": [
         {"lspGroupId":)" + groupKey + R"(, "isP2mp": true, "lspGroupState": "up",
          "nextHop": [{"address": "10.1.1.3", "intfId": "eth2"},
                      {"address": "10.1.1.2", "intfId": "eth1", "intfMtu": 1500}],
          "activeLspRequestConfigId":)" + requestKey +
                                                    R"(, "pendingLspRequestConfigId": {"configId": 6}, "pathMtu": 1499},
         {"lspGroupId": {"name": "tun1"}}]})"));
   auto const coll = state.rsvpLerStatus->lspGroupStatusCollTable.get()->lspGroupStatusColl(instance);
   ASSERT_EQ(coll->size(), 2u);
   auto const status = coll->find(group);
   ASSERT_TRUE(status);
   EXPECT_EQ(status->lspGroupId, group);
   EXPECT_TRUE(status->isP2mp);
   EXPECT_EQ(status->lspGroupState, RsvpLerLspGroupState::up);
   ASSERT_EQ(status->nextHop.size(), 2u);
   EXPECT_EQ(status->nextHop.begin()->key, address("10.1.1.2"));
   EXPECT_EQ(status->nextHop.begin()->value.intfId.stringValue(), "eth1");
   EXPECT_EQ(status->nextHop.begin()->value.intfMtu, Vane::Optional<std::uint32_t>(1500));
   EXPECT_EQ(status->nextHop.valueOf(address("10.1.1.3"))->intfId.stringValue(), "eth2");
   EXPECT_FALSE(status->nextHop.valueOf(address("10.1.1.3"))->intfMtu.hasValue());
   EXPECT_EQ(status->activeLspRequestConfigId, lspRequest);
   EXPECT_EQ(status->pendingLspRequestConfigId, (RsvpLerLspRequestConfigId{{}, 6}));
   EXPECT_EQ(status->pathMtu, Vane::Optional<std::uint32_t>(1499));
   EXPECT_FALSE(coll->find({{{{"tun1", RsvpLerTunnelSource::unknown}, 0}, 0}, 0})->pathMtu.hasValue());
}

TEST(LoadTables, lspRequests) {
   RouterState const state = load(R"({"rsvpLerStatus": {
      "lspRequestConfigCollTable": [{"lspGroupId":)" +
                                  groupKey + R"(, "lspRequestConfigColl": [
         {"lspRequestConfigId":)" +
                                  requestKey + R"(, "sessionType": 200, "bandwidth": 125000,
          "tree": {"paths": {"10.0.0.9": {"version": 1, "hops": ["10.1.1.2", "10.0.0.9", "10.1.1.2"]}, "10.0.0.8": {}}}},
         {"lspRequestConfigId": {}, "tree": null}, {"lspRequestConfigId": {"configId": 1}, "tree": {}}]}],
      "lspRequestStatusCollTable": [{"lspGroupId":)" +
                                  groupKey + R"(, "lspRequestStatusColl": [
         {"lspRequestConfigId":)" +
                                  requestKey + R"(, "lspState": "unverified", "lspId": 65535,
          "errors": [{"code": 24, "value": 65535, "node": "10.0.0.3"}, {"code": 1}, {"code": 24, "value": 65535, "node": "10.0.0.3"}],
          "subLspState": {"::1": "up"}}, {"lspRequestConfigId": {}}]}]}})");
   auto const configs = state.rsvpLerStatus->lspRequestConfigCollTable.get()->lspRequestConfigColl(group);
   auto const config = configs->lspRequestConfig(lspRequest);
   ASSERT_TRUE(config);
   EXPECT_EQ(config->lspRequestConfigId, lspRequest);
   EXPECT_EQ(config->sessionType, RsvpSessionType{200});
   EXPECT_EQ(config->bandwidth, 125000u);
   ASSERT_EQ(config->tree->paths.size(), 2u);
   EXPECT_EQ(config->tree->p2pPath().hops.size(), 0u);
   auto const* const path = config->tree->paths.valueOf({address("10.0.0.9")});
   EXPECT_EQ(path->version, 1u);
   EXPECT_EQ(texts(path->hops), (Texts{"10.1.1.2", "10.0.0.9", "10.1.1.2"}));
   EXPECT_FALSE(configs->lspRequestConfig({})->tree);
   ASSERT_TRUE(configs->lspRequestConfig({{}, 1})->tree);
   EXPECT_TRUE(configs->lspRequestConfig({{}, 1})->tree->paths.empty());

   auto const statuses = state.rsvpLerStatus->lspRequestStatusCollTable.get()->lspRequestStatusColl(group);
   auto const status = statuses->lspRequestStatus(lspRequest);
   ASSERT_TRUE(status);
   EXPECT_EQ(status->lspRequestConfigId, lspRequest);
   EXPECT_EQ(status->lspState, RsvpLerLspState::unverified);
   EXPECT_EQ(status->lspId, Vane::Optional<std::uint16_t>(65535));
   EXPECT_EQ(status->errors.size(), 2u);
   EXPECT_TRUE(status->errors.contains({24, 65535, address("10.0.0.3")}));
   EXPECT_TRUE(status->errors.contains({1, 0, {}}));
   EXPECT_EQ(*status->subLspState.valueOf({address("::1")}), RsvpLspState::up);
   EXPECT_FALSE(statuses->lspRequestStatus({})->lspId.hasValue());
}

TEST(LoadTables, cspfPathKeys) {
   RouterState const state = load(statusTable("cspfPathKeyMapping", R"({"lspGroupId":)" + groupKey + R"(,
      "kind": 255, "pathId": 5, "treeId": 6})"));
   auto const key = state.rsvpLerStatus->cspfPathKeyMapping.get()->pathKeyForLspGroupId(group);
   ASSERT_TRUE(key);
   EXPECT_EQ(key->kind, 255);
   EXPECT_EQ(key->pathId, 5u);
   EXPECT_EQ(key->treeId, 6u);
}

TEST(LoadTables, automaticBandwidth) {
   RouterState const state = load(R"({"rsvpLerStatus": {
      "autoBwStats": [{"tunnelSpecId":)" +
                                  tunnelKey + R"(, "nextAdjustmentTime": 86500.5, "subTunnelBwSamplingStats": [
         {"subTunnelConfigId":)" + subTunnelKey +
                                  R"(, "nextAdjustmentTime": 86520.5}, {"subTunnelConfigId": {}}]},
         {"tunnelSpecId": {}}],
      "bwSamplingStatusColl": [{"tunnelSpecId":)" +
                                  tunnelKey + R"(, "lastSampledBandwidth": 1, "subTunnelBwSamplingStatus": [
         {"subTunnelConfigId":)" + subTunnelKey +
                                  R"(, "lastSampledBandwidth": 2}]}]},
      "rsvpLerFathomStatus": {"autoBwConfig": [{"tunnelSpecId":)" +
                                  tunnelKey + R"(, "enabled": true,
         "adjustmentPeriod": 300.5, "minBandwidth": 3, "maxBandwidth": 4}]}})");
   auto const stats = state.rsvpLerStatus->autoBwStats.get()->bwSamplingStat(tunnel);
   ASSERT_TRUE(stats);
   EXPECT_EQ(stats->nextAdjustmentTime.value().seconds(), 86500.5);
   ASSERT_EQ(stats->subTunnelBwSamplingStats.size(), 2u);
   EXPECT_EQ(stats->subTunnelBwSamplingStats.valueOf(subTunnel)->nextAdjustmentTime.value().seconds(), 86520.5);
   EXPECT_FALSE(stats->subTunnelBwSamplingStats.valueOf({})->nextAdjustmentTime.hasValue());
   EXPECT_FALSE(state.rsvpLerStatus->autoBwStats.get()->bwSamplingStat({})->nextAdjustmentTime.hasValue());
   auto const samples = state.rsvpLerStatus->bwSamplingStatusColl.get()->bwSamplingStatus(tunnel);
   ASSERT_TRUE(samples);
   EXPECT_EQ(samples->lastSampledBandwidth, 1u);
   EXPECT_EQ(samples->subTunnelBwSamplingStatus.valueOf(subTunnel)->lastSampledBandwidth, 2u);
   auto const config = state.rsvpLerFathomStatus->autoBwConfig.get()->safeLookup(tunnel);
   EXPECT_EQ(config.tunnelSpecId, tunnel);
   EXPECT_TRUE(config.enabled);
   EXPECT_EQ(config.adjustmentPeriod.seconds(), 300.5);
   EXPECT_EQ(config.minBandwidth, 3u);
   EXPECT_EQ(config.maxBandwidth, 4u);
}

} // namespace
