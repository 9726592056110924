#include "tests/support/Router.h"

#include <gtest/gtest.h>

using namespace Tests;
using namespace Rsvp;

namespace {

void size(Cli::ShowRsvpLerTunnel& command, RsvpLerSubTunnelConfigId const& id) {
   command.setSubTunnelSummaryHeaderColSizes(id.tunnelSpecId, id, command.bwSamplingStatusColl(),
                                             command.subTunnelIndexMap());
}

std::string row(Router const& router, Cli::ShowRsvpLerTunnel& command, RsvpLerSubTunnelConfigId const& id,
                RsvpLerLspGroupId const& group = {}, std::uint32_t lspCount = 0, bool mbb = false,
                std::uint32_t format = textFormat) {
   auto const coll = router.status->subTunnelStatusCollTable.get()->subTunnelStatusColl(id.tunnelSpecId);
   return rendered(format, [&](auto* renderer) {
      command.renderSubTunnelSummary(renderer, id.tunnelSpecId, id, group, coll ? coll->find(id) : nullptr,
                                     command.bwSamplingStatusColl(), command.subTunnelIndexMap(), lspCount, mbb);
   });
}

std::string header(Cli::ShowRsvpLerTunnel& command, std::string_view name, std::uint32_t format = textFormat) {
   return rendered(format, [&](auto* renderer) { command.renderSubTunnelSummaryHeader(renderer, tunnelId(name)); });
}

void addSample(Router& router, RsvpLerSubTunnelConfigId const& id, std::uint64_t bandwidth) {
   router.bwSamplingStatus(id.tunnelSpecId,
                           [&](auto& samples) { samples.subTunnelBwSamplingStatus.insert(id, {bandwidth}); });
}

} // namespace

TEST(SubTunnelSummary, headingWithStartWidths) {
   Router router;
   auto const command = router.tunnelCommand();
   EXPECT_EQ(header(*command, "tun1"), "\n"
                                       "Tunnel: tun1\n"
                                       "Sub Tunnel Session ID Index Active Path Reserved BW Sampled BW LSPs State\n"
                                       "---------- ---------- ----- ----------- ----------- ---------- ---- -----\n");
   EXPECT_EQ(header(*command, "tun1", jsonFormat), "");
   EXPECT_EQ(header(*command, "tun1", 3), "");
}

TEST(SubTunnelSummary, headingFollowsEachWidth) {
   Router router;
   auto const command = router.tunnelCommand();
   command->subTunnelIdWidth = 11;
   command->sessionIdWidth = 12;
   command->indexWidth = 6;
   command->bwWidth = 13;
   command->sampledBwWidth = 11;
   command->stateWidth = 8;
   EXPECT_EQ(header(*command, "t"),
             "\n"
             "Tunnel: t\n"
             " Sub Tunnel   Session ID  Index Active Path   Reserved BW  Sampled BW LSPs State\n"
             "----------- ------------ ------ ----------- ------------- ----------- ---- --------\n");
}

TEST(SubTunnelSummary, rowOfASubTunnel) {
   Router router;
   auto const id = subTunnelId("tun1", 10);
   router.subTunnelStatus(id, [](auto& status) {
      status.state = RsvpLerTunnelState::up;
      status.currentBandwidth = 125000;
      status.sessionCliId = 12;
   });
   router.subTunnelIndex(id, 3);
   addSample(router, id, 62500);
   router.autoBwConfig(tunnelId("tun1"), [](auto& config) { config.enabled = true; });
   auto const command = router.tunnelCommand();
   EXPECT_EQ(row(router, *command, id, groupId("tun1", 0, 1, 10), 2, true),
             "        10         12     3 primary       1.00 Mbps 500.00 Kbps    2 up (MBB)\n");
   EXPECT_EQ(row(router, *command, id, groupId("tun1", 1, 1, 10), 1),
             "        10         12     3 secondary     1.00 Mbps 500.00 Kbps    1 up\n");
   EXPECT_EQ(row(router, *command, id, {}, 1, false, jsonFormat), "");
}

TEST(SubTunnelSummary, withoutAutomaticBandwidthASampleIsMeasuredAndNotShown) {
   Router router;
   auto const id = subTunnelId("tun1", 1);
   router.subTunnelStatus(id, [](auto& status) { status.state = RsvpLerTunnelState::down; });
   addSample(router, id, 62500);
   auto const command = router.tunnelCommand();
   size(*command, id);
   EXPECT_EQ(command->sampledBwWidth, 11);
   EXPECT_EQ(row(router, *command, id), "         1          -     - unknown           0 bps           -    0 down\n");
}

TEST(SubTunnelSummary, rowWithoutStatus) {
   Router router;
   auto const command = router.tunnelCommand();
   EXPECT_EQ(row(router, *command, subTunnelId("tun1", 1)),
             "         1          -     - unknown           0 bps          -    0 unknown\n");
}

TEST(SubTunnelSummary, sessionNumbers) {
   struct {
      std::uint32_t number;
      char const* cell;
   } const rows[] = {{0, "         0"}, {999999, "    999999"}, {1000000, "         -"}, {1000001, "   1000001"}};
   for (auto const& test : rows) {
      Router router;
      auto const id = subTunnelId("t", 1);
      router.subTunnelStatus(id, [&](auto& status) { status.sessionCliId = test.number; });
      auto const command = router.tunnelCommand();
      EXPECT_EQ(row(router, *command, id),
                std::string("         1 ") + test.cell + "     - unknown           0 bps          -    0 unknown\n");
   }
}

TEST(SubTunnelSummary, theSampleNeverTakesTheFlagOfTheTable) {
   Router router;
   auto const id = subTunnelId("t", 1);
   router.subTunnelStatus(id, [](auto& status) {
      status.state = RsvpLerTunnelState::up;
      status.currentBandwidth = 1;
   });
   addSample(router, id, 1);
   router.autoBwConfig(tunnelId("t"), [](auto& config) { config.enabled = true; });
   auto const command = router.tunnelCommand();
   command->bw1000 = true;
   EXPECT_EQ(row(router, *command, id), "         1          -     - unknown       0.01 Kbps      8 bps    0 up\n");
}

TEST(SubTunnelSummary, sizingRaisesEachWidth) {
   Router router;
   auto const id = subTunnelId("t", 4294967295);
   router.subTunnelStatus(id, [](auto& status) {
      status.state = RsvpLerTunnelState::unknown;
      status.activeMbbTunnelConfigId = mbbId("t", 1, 4294967295);
      status.pendingMbbTunnelConfigId = mbbId("t", 2, 4294967295);
      status.sessionCliId = 4294967295;
      status.currentBandwidth = 126;
   });
   router.subTunnelIndex(id, 1234567890);
   addSample(router, id, 124999999); // 999.999992 Mbps, which rounds to 1.00 Gbps
   auto const command = router.tunnelCommand();
   size(*command, id);
   EXPECT_EQ(command->subTunnelIdWidth, 10);
   EXPECT_EQ(command->sessionIdWidth, 10);
   EXPECT_EQ(command->indexWidth, 10);
   EXPECT_TRUE(command->bw1000);
   EXPECT_EQ(command->bwWidth, 11);
   EXPECT_EQ(command->sampledBwWidth, 10);
   EXPECT_EQ(command->stateWidth, 13);
}

// Widths that were written from outside are where the sizing begins.
TEST(SubTunnelSummary, sizingMeasuresTheTexts) {
   Router router;
   auto const id = subTunnelId("t", 4321);
   router.subTunnelStatus(id, [](auto& status) {
      status.state = RsvpLerTunnelState::up;
      status.sessionCliId = 123;
      status.currentBandwidth = 10;
   });
   router.subTunnelIndex(id, 42);
   addSample(router, id, 1);
   auto const command = router.tunnelCommand();
   for (auto* width : {&command->subTunnelIdWidth, &command->sessionIdWidth, &command->indexWidth, &command->bwWidth,
                       &command->sampledBwWidth, &command->stateWidth})
      *width = 0;
   size(*command, id);
   EXPECT_EQ(command->subTunnelIdWidth, 4);
   EXPECT_EQ(command->sessionIdWidth, 3);
   EXPECT_EQ(command->indexWidth, 2);
   EXPECT_EQ(command->bwWidth, 6);        // 80 bps
   EXPECT_EQ(command->sampledBwWidth, 5); // 8 bps
   EXPECT_EQ(command->stateWidth, 2);
}

TEST(SubTunnelSummary, aSessionThatIsNoneCountsItsSevenDigits) {
   Router router;
   auto const id = subTunnelId("t", 1);
   auto const command = router.tunnelCommand();
   command->sessionIdWidth = 0; // only a write from outside makes it that narrow
   size(*command, id);
   EXPECT_EQ(command->sessionIdWidth, 7);
}

TEST(SubTunnelSummary, sizingRunsWithoutTables) {
   Router router;
   router.status = nullptr;
   auto const command = router.tunnelCommand();
   size(*command, subTunnelId("t", 1));
   EXPECT_EQ(command->stateWidth, 7);
}
