#include "RsvpLer/status/LerStatus.h"

#include "tests/support/Answer.h"
#include "tests/support/Router.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <string>

using namespace Rsvp;
using namespace Tests;

namespace {

std::string statusAnswer(Router const& router, std::uint32_t format) {
   return answerOf([&](std::uint32_t socket) { router.statusCommand()->render(socket, format); });
}

Cli::LerCounts counts(Router const& router) {
   return Cli::countLer(*router.statusCommand());
}

// A group of tunnel "t" with the given state; its instance has it as the active one when `active`.
void addGroup(Router& router, RsvpLerLspGroupId const& id, RsvpLerLspGroupState state, bool active,
              bool isP2mp = false) {
   router.lspGroupStatus(id, [&](auto& group) {
      group.lspGroupState = state;
      group.isP2mp = isP2mp;
   });
   router.mbbTunnelStatus(id.mbbTunnelConfigId, active ? id : RsvpLerLspGroupId());
}

constexpr char const* emptyText = "Local interface: \n"
                                  "IP address: 0.0.0.0\n"
                                  "Auto bandwidth: unsupported\n"
                                  "Periodic optimization: disabled\n"
                                  "\n"
                                  "P2P\n"
                                  "   Number of tunnels: 0\n"
                                  "      Operational: 0\n"
                                  "   Secondary path enabled: 0\n"
                                  "   Secondary path in use: 0\n"
                                  "   Number of LSPs: 0\n"
                                  "      Operational: 0\n"
                                  "\n"
                                  "P2MP\n"
                                  "   Number of tunnels: 0\n"
                                  "      Operational: 0\n"
                                  "   Number of LSPs: 0\n"
                                  "      Operational: 0\n"
                                  "   Number of sub-LSPs: 0\n"
                                  "      Operational: 0\n";

constexpr char const* emptyJson =
      "{\"localIntf\":\"\",\"localIntfConfigured\":false,\"localIntfIp\":\"0.0.0.0\",\"autoBwSupported\":false,"
      "\"tunnelCount\":0,\"tunnelUpCount\":0,\"p2mpTunnelCount\":0,\"p2mpTunnelUpCount\":0,"
      "\"tunnelSecondaryEnabledCount\":0,\"tunnelSecondaryInUseCount\":0,\"optimizationInterval\":0,\"lspCount\":0,"
      "\"lspUpCount\":0,\"p2mpLspCount\":0,\"p2mpLspUpCount\":0,\"p2mpSubLspCount\":0,\"p2mpSubLspUpCount\":0}\n";

} // namespace

TEST(LerStatus, emptyTables) {
   Router const router;
   EXPECT_EQ(statusAnswer(router, textFormat), emptyText);
   EXPECT_EQ(statusAnswer(router, jsonFormat), emptyJson);
   EXPECT_EQ(statusAnswer(router, 0), "");
   EXPECT_EQ(statusAnswer(router, 3), "");
}

TEST(LerStatus, emptyHandles) {
   Router router;
   router.lerConfig = nullptr;
   router.lerCliConfig = nullptr;
   router.status = nullptr;
   router.fathomStatus = nullptr;
   EXPECT_EQ(statusAnswer(router, textFormat), emptyText);
   EXPECT_EQ(statusAnswer(router, jsonFormat), emptyJson);
   // An operator's choice of interface shows in JSON even when no configuration has taken it up.
   router.lerCliConfig = Brindle::makeNode<RsvpLerCliConfig>();
   router.lerCliConfig->localIntf = Lattice::IntfId("lo1");
   EXPECT_EQ(statusAnswer(router, textFormat), emptyText);
   EXPECT_THAT(statusAnswer(router, jsonFormat),
               testing::StartsWith("{\"localIntf\":\"\",\"localIntfConfigured\":true,\"localIntfIp\":\"0.0.0.0\","));
}

TEST(LerStatus, aClientThatHasGoneEndsTheCommandWithOneLine) {
   Router const router;
   for (std::uint32_t const format : {textFormat, jsonFormat}) {
      int ends[2];
      ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
      close(ends[1]);
      testing::internal::CaptureStdout();
      router.statusCommand()->render(static_cast<std::uint32_t>(ends[0]), format);
      EXPECT_EQ(testing::internal::GetCapturedStdout(), "exiting client gone\n");
      close(ends[0]);
   }
}

TEST(LerStatus, aMissingDirectoryEndsTheProcess) {
   Router router;
   router.featureConfigDir = nullptr;
   EXPECT_DEATH(router.statusCommand()->render(1, textFormat), "tallyFeatureConfigDir");
}

TEST(LerStatus, interfaceLine) {
   struct {
      char const* interface;
      char const* configured;
      char const* line;
   } const rows[] = {
         {"lo0", "lo0", "Local interface: lo0 (configured)\n"},
         {"lo0", "other", "Local interface: lo0 (configured)\n"},
         {"lo0", "", "Local interface: lo0 (automatically chosen)\n"},
         {"", "lo0", "Local interface: \n"},
   };
   for (auto const& test : rows) {
      Router router;
      router.lerConfig->localIntf = Lattice::IntfId(test.interface);
      router.lerCliConfig->localIntf = Lattice::IntfId(test.configured);
      std::string const answer = statusAnswer(router, textFormat);
      EXPECT_EQ(answer.substr(0, answer.find('\n') + 1), test.line);
   }
}

TEST(LerStatus, factsInBothFormats) {
   Router router;
   router.lerConfig->localIntf = Lattice::IntfId("a\"b");
   router.lerConfig->localIntfIp = Lattice::IpAddr(10, 0, 0, 255);
   router.lerConfig->optimizationInterval = 4294967295;
   router.featureConfigDir->feature.set(Tallies::FeatureId::rsvpLerAutoBw, Ambit::Tally::ConfigState::inForce);
   EXPECT_THAT(statusAnswer(router, textFormat),
               testing::StartsWith("Local interface: a\"b (automatically chosen)\n"
                                   "IP address: 10.0.0.255\n"
                                   "Auto bandwidth: supported\n"
                                   "Periodic optimization: enabled, interval: 4294967295 seconds\n"
                                   "\n"
                                   "P2P\n"));
   EXPECT_THAT(statusAnswer(router, jsonFormat),
               testing::StartsWith("{\"localIntf\":\"a\\\"b\",\"localIntfConfigured\":false,\"localIntfIp\":\"10.0.0."
                                   "255\",\"autoBwSupported\":true,\"tunnelCount\":0,"));
}

TEST(LerStatus, automaticBandwidthIsSupportedByOneFeatureInOneState) {
   struct {
      std::uint32_t feature;
      std::uint32_t state;
      bool supported;
   } const rows[] = {{47, 1, true}, {47, 0, false}, {47, 2, false}, {46, 1, false}, {48, 1, false}};
   for (auto const& test : rows) {
      Router router;
      router.featureConfigDir->feature.set(static_cast<Tallies::FeatureId>(test.feature),
                                           static_cast<Ambit::Tally::ConfigState>(test.state));
      EXPECT_EQ(statusAnswer(router, jsonFormat).find("\"autoBwSupported\":true") != std::string::npos, test.supported)
            << test.feature << ' ' << test.state;
   }
}

TEST(LerStatus, configuredTunnels) {
   Router router;
   router.superTunnelConfig(tunnelId("plain"));
   router.superTunnelConfig(tunnelId("secondary"),
                            [](auto& config) { config.secondaryPathSpecId = pathSpecId("south"); });
   // A specification that has a source alone isn't the blank one.
   router.superTunnelConfig(tunnelId("source-alone"), [](auto& config) {
      config.secondaryPathSpecId = {"", RsvpLerTunnelSource::cli};
   });
   router.superTunnelConfig(tunnelId("split"), [](auto& config) { config.splitBwEnabled = true; });
   // Of a P2MP tunnel neither counts, and any session type but 0 is P2MP here.
   for (unsigned type : {1u, 2u, 255u})
      router.superTunnelConfig(tunnelId("tree" + std::to_string(type)), [&](auto& config) {
         config.sessionType = static_cast<RsvpSessionType>(type);
         config.secondaryPathSpecId = pathSpecId("south");
         config.splitBwEnabled = true;
      });
   auto const result = counts(router);
   EXPECT_EQ(result.tunnelCount, 4u);
   EXPECT_EQ(result.tunnelSecondaryEnabledCount, 2u);
   EXPECT_EQ(result.splitBwTunnelCount, 1u);
   EXPECT_EQ(result.p2mpTunnelCount, 3u);
}

TEST(LerStatus, tunnelsUpByTheirStateAlone) {
   Router router;
   for (unsigned state : {0u, 1u, 2u})
      for (bool isP2mp : {false, true})
         for (int i = 0; i <= isP2mp; ++i)
            router.superTunnelStatus(tunnelId(std::to_string(state) + (isP2mp ? "m" : "p") + std::to_string(i)),
                                     [&](auto& status) {
                                        status.state = static_cast<RsvpLerTunnelState>(state);
                                        status.isP2mp = isP2mp;
                                     });
   EXPECT_EQ(counts(router).tunnelUpCount, 1u);
   EXPECT_EQ(counts(router).p2mpTunnelUpCount, 2u);
}

TEST(LerStatus, subTunnelsAreTheSplitKeys) {
   Router router;
   for (std::uint32_t number : {0u, 1u, 2u, 10u}) {
      router.subTunnelConfig(subTunnelId("t", number), [](auto&) {});
      router.subTunnelStatus(subTunnelId("t", number), [&](auto& status) {
         status.state = number == 2 ? RsvpLerTunnelState::down : RsvpLerTunnelState::up;
      });
   }
   EXPECT_EQ(counts(router).subTunnelCount, 3u);
   EXPECT_EQ(counts(router).subTunnelUpCount, 2u);
}

TEST(LerStatus, requestsCountLspsAndGroupsCountWhatIsUp) {
   struct {
      RsvpLerLspGroupState state;
      bool active, pending;
      std::uint32_t lspCount, lspUpCount;
   } const rows[] = {
         {RsvpLerLspGroupState::up, true, true, 2, 1},
         {RsvpLerLspGroupState::upVerified, true, false, 1, 1},
         {RsvpLerLspGroupState::up, false, false, 0, 1},
         {RsvpLerLspGroupState::down, true, true, 2, 0},
         {RsvpLerLspGroupState::establishing, false, true, 1, 0},
         {RsvpLerLspGroupState::unknown, true, false, 1, 0},
   };
   for (auto const& test : rows)
      for (bool isP2mp : {false, true}) {
         Router router;
         router.mbbTunnelStatus(mbbId("t"), {});
         router.lspGroupStatus(groupId("t"), [&](auto& group) {
            group.lspGroupState = test.state;
            group.isP2mp = isP2mp;
            if (test.active)
               group.activeLspRequestConfigId = requestId("t", 1);
            if (test.pending)
               group.pendingLspRequestConfigId = requestId("t", 2);
         });
         auto const result = counts(router);
         EXPECT_EQ(isP2mp ? result.p2mpLspCount : result.lspCount, test.lspCount);
         EXPECT_EQ(isP2mp ? result.p2mpLspUpCount : result.lspUpCount, test.lspUpCount);
         EXPECT_EQ(isP2mp ? result.lspCount + result.lspUpCount : result.p2mpLspCount + result.p2mpLspUpCount, 0u);
      }
}

TEST(LerStatus, subLspsOfBothRequests) {
   Router router;
   router.mbbTunnelStatus(mbbId("t"), {});
   router.lspGroupStatus(groupId("t"), [](auto& group) {
      group.isP2mp = true;
      group.activeLspRequestConfigId = requestId("t", 1);
      group.pendingLspRequestConfigId = requestId("t", 2);
   });
   router.lspRequestStatus(requestId("t", 1), [](auto& status) {
      status.subLspState.insert({address("10.0.0.1")}, RsvpLspState::up);
      status.subLspState.insert({address("10.0.0.2")}, RsvpLspState::down);
      status.subLspState.insert({address("10.0.0.3")}, RsvpLspState::unknown);
   });
   // The other request has no status: an LSP, without sub-LSPs.
   EXPECT_EQ(counts(router).p2mpLspCount, 2u);
   EXPECT_EQ(counts(router).p2mpSubLspCount, 3u);
   EXPECT_EQ(counts(router).p2mpSubLspUpCount, 1u);
   router.lspRequestStatus(requestId("t", 2),
                           [](auto& status) { status.subLspState.insert({address("10.0.0.1")}, RsvpLspState::up); });
   EXPECT_EQ(counts(router).p2mpSubLspCount, 4u);
   EXPECT_EQ(counts(router).p2mpSubLspUpCount, 2u);
   // The leaves of a request whose group isn't P2MP don't count.
   router.lspGroupStatus(groupId("t"), [](auto& group) { group.activeLspRequestConfigId = requestId("t", 1); });
   EXPECT_EQ(counts(router).p2mpSubLspCount, 0u);
   EXPECT_EQ(counts(router).lspCount, 1u);
}

TEST(LerStatus, secondaryPathsInUse) {
   struct {
      std::uint8_t group;
      RsvpLerLspGroupState state;
      bool active, isP2mp;
      std::uint32_t inUse;
   } const rows[] = {
         {1, RsvpLerLspGroupState::up, true, false, 1},  {1, RsvpLerLspGroupState::upVerified, true, false, 1},
         {2, RsvpLerLspGroupState::up, true, false, 1},  {0, RsvpLerLspGroupState::up, true, false, 0},
         {1, RsvpLerLspGroupState::up, false, false, 0}, {1, RsvpLerLspGroupState::down, true, false, 0},
         {1, RsvpLerLspGroupState::up, true, true, 1},
   };
   for (auto const& test : rows)
      for (std::uint32_t subTunnel : {0u, 3u}) {
         Router router;
         addGroup(router, groupId("t", test.group, 1, subTunnel), test.state, test.active, test.isP2mp);
         auto const result = counts(router);
         EXPECT_EQ(result.tunnelSecondaryInUseCount, subTunnel == 0 ? test.inUse : 0);
         EXPECT_EQ(result.subTunnelSecondaryInUseCount, subTunnel == 0 ? 0 : test.inUse);
      }
}

// The keys have to be equal as a whole, not only where most of them differ.
TEST(LerStatus, aSecondaryPathOfAnotherInstanceIsNotInUse) {
   RsvpLerLspGroupId const group = groupId("t", 1);
   for (auto const& other : {groupId("u", 1), groupId("t", 1, 2), groupId("t", 1, 1, 3)}) {
      Router router;
      addGroup(router, group, RsvpLerLspGroupState::up, false);
      router.mbbTunnelStatus(group.mbbTunnelConfigId, other);
      EXPECT_EQ(counts(router).tunnelSecondaryInUseCount, 0u) << other;
      router.mbbTunnelStatus(group.mbbTunnelConfigId, group);
      EXPECT_EQ(counts(router).tunnelSecondaryInUseCount, 1u) << other;
   }
}

// Records that lie far from each other are looked up many at a time: none is lost at the end of a batch.
TEST(LerStatus, eachOfManyGroupsCounts) {
   for (std::uint32_t const tunnels : {1u, 31u, 32u, 33u, 64u, 65u, 100u}) {
      Router router;
      for (std::uint32_t i = 0; i < tunnels; ++i) {
         std::string const name = "t" + std::to_string(i);
         router.mbbTunnelStatus(mbbId(name), groupId(name, 1));
         router.lspGroupStatus(groupId(name, 1), [&](auto& group) {
            group.isP2mp = true;
            group.lspGroupState = RsvpLerLspGroupState::up;
            group.activeLspRequestConfigId = requestId(name, 1, 1);
         });
         router.lspRequestStatus(requestId(name, 1, 1), [](auto& status) {
            status.subLspState.insert({address("10.0.0.1")}, RsvpLspState::up);
            status.subLspState.insert({address("10.0.0.2")}, RsvpLspState::down);
         });
      }
      EXPECT_EQ(counts(router).tunnelSecondaryInUseCount, tunnels);
      EXPECT_EQ(counts(router).p2mpSubLspCount, 2 * tunnels);
      EXPECT_EQ(counts(router).p2mpSubLspUpCount, tunnels);
   }
}

// Keys that share their name, as those of a state file do, are looked for beside each other first.
TEST(LerStatus, secondaryPathsInUseInWhateverOrderTheRecordsCame) {
   auto const group = [tunnel = tunnelId("t")](std::uint32_t subTunnel) {
      return RsvpLerLspGroupId{{{tunnel, subTunnel}, 1}, 1};
   };
   for (bool const reversed : {false, true}) {
      Router router;
      for (std::uint32_t i = 1; i <= 100; ++i)
         router.mbbTunnelStatus(group(i).mbbTunnelConfigId, i % 2 == 0 ? group(i) : RsvpLerLspGroupId());
      for (std::uint32_t i = 1; i <= 100; ++i)
         router.lspGroupStatus(group(reversed ? 101 - i : i),
                               [](auto& status) { status.lspGroupState = RsvpLerLspGroupState::up; });
      EXPECT_EQ(counts(router).subTunnelSecondaryInUseCount, 50u);
      auto const instances = router.status->mbbTunnelStatusCollTable.get();
      instances->erase(group(40).mbbTunnelConfigId.subTunnelConfigId);
      instances->set(group(60).mbbTunnelConfigId.subTunnelConfigId, {});
      EXPECT_EQ(counts(router).subTunnelSecondaryInUseCount, 48u);
   }
}

TEST(LerStatus, lspsNeedTheTableOfInstances) {
   Router router;
   addGroup(router, groupId("t", 1), RsvpLerLspGroupState::up, true);
   router.lspGroupStatus(groupId("u", 1), [](auto& group) {
      group.lspGroupState = RsvpLerLspGroupState::up;
      group.activeLspRequestConfigId = requestId("u", 1, 1);
   });
   // The groups of "u" count although its instance has no entry; only the one in use isn't known.
   EXPECT_EQ(counts(router).lspUpCount, 2u);
   EXPECT_EQ(counts(router).lspCount, 1u);
   EXPECT_EQ(counts(router).tunnelSecondaryInUseCount, 1u);
   router.status->mbbTunnelStatusCollTable.set({});
   EXPECT_EQ(counts(router).lspUpCount, 0u);
   EXPECT_EQ(counts(router).lspCount, 0u);
   EXPECT_EQ(counts(router).tunnelSecondaryInUseCount, 0u);
}

TEST(LerStatus, theSubTunnelLinesHangOnSplitTunnelsAlone) {
   Router router;
   router.subTunnelConfig(subTunnelId("t", 1), [](auto&) {});
   EXPECT_EQ(statusAnswer(router, textFormat), emptyText);
   router.superTunnelConfig(tunnelId("t"), [](auto& config) { config.splitBwEnabled = true; });
   EXPECT_THAT(statusAnswer(router, textFormat), testing::HasSubstr("\n   Secondary path in use: 0\n"
                                                                    "   Number of split bandwidth enabled tunnels: 1\n"
                                                                    "   Number of sub tunnels: 1\n"
                                                                    "      Operational: 0\n"
                                                                    "   Secondary path in use: 0\n"
                                                                    "   Number of LSPs: 0\n"));
}
