#include "tests/support/Router.h"

#include <gtest/gtest.h>

using namespace Tests;
using namespace Rsvp;

namespace {

// A row as the display of an unsplit tunnel asks for it, from the records of the router.
std::string row(Router const& router, Cli::ShowRsvpLerTunnel& command, RsvpLerTunnelSpecId const& id,
                std::uint32_t lspCount = 0, RsvpLerLspGroupId const& group = {}, bool notSplit = true, bool mbb = false,
                std::uint32_t format = textFormat) {
   return rendered(format, [&](auto* renderer) {
      command.renderP2pTunnelSummary(renderer, id, router.fathomStatus->superTunnelConfigColl.get()->find(id),
                                     router.status->superTunnelStatusColl.get()->find(id), command.tunnelIndexMap(),
                                     group, lspCount, notSplit, mbb);
   });
}

std::string header(Cli::ShowRsvpLerTunnel& command, std::uint32_t format = textFormat) {
   return rendered(format, [&](auto* renderer) { command.renderP2pTunnelSummaryHeader(renderer); });
}

void addTunnel(Router& router, std::string_view name, std::uint64_t bandwidth = 0) {
   router.superTunnelConfig(tunnelId(name), [](auto& config) { config.destination.insert(address("10.0.0.9")); });
   router.superTunnelStatus(tunnelId(name), [&](auto& status) {
      status.state = RsvpLerTunnelState::up;
      status.currentBandwidth = bandwidth;
   });
}

} // namespace

TEST(P2pTunnelSummary, headingWithStartWidths) {
   Router router;
   auto const command = router.tunnelCommand();
   EXPECT_EQ(header(*command), "P2P\n"
                               "Tunnel Name Destination Color Index Active Path Reserved BW LSPs State\n"
                               "----------- ----------- ----- ----- ----------- ----------- ---- -----\n");
   EXPECT_EQ(header(*command, jsonFormat), "");
   EXPECT_EQ(header(*command, 3), "");
}

TEST(P2pTunnelSummary, headingFollowsEachWidth) {
   Router router;
   auto const command = router.tunnelCommand();
   command->tunnelNameWidth = 12;
   command->dstWidth = 13;
   command->colorWidth = 6;
   command->indexWidth = 7;
   command->bwWidth = 14;
   command->stateWidth = 8;
   EXPECT_EQ(header(*command), "P2P\n"
                               "Tunnel Name  Destination    Color   Index Active Path    Reserved BW LSPs State\n"
                               "------------ ------------- ------ ------- ----------- -------------- ---- --------\n");
}

TEST(P2pTunnelSummary, rowOfATunnelWithEverything) {
   Router router;
   auto const id = tunnelId("tun1");
   router.superTunnelConfig(id, [](auto& config) {
      // The first of the set is the lowest address.
      config.destination.insert(address("10.0.0.19"));
      config.destination.insert(address("10.0.0.9"));
   });
   router.superTunnelStatus(id, [](auto& status) {
      status.state = RsvpLerTunnelState::up;
      status.color = 100;
      status.currentBandwidth = 125000;
   });
   router.tunnelIndex(id, 7);
   auto const command = router.tunnelCommand();
   EXPECT_EQ(row(router, *command, id, 2, groupId("tun1", 0)),
             "tun1        10.0.0.9      100     7 primary       1.00 Mbps    2 up\n");
   EXPECT_EQ(row(router, *command, id, 2, groupId("tun1", 1), true, true),
             "tun1        10.0.0.9      100     7 secondary     1.00 Mbps    2 up (MBB)\n");
   EXPECT_EQ(row(router, *command, id, 2, groupId("tun1", 1), false),
             "tun1        10.0.0.9      100     7 split         1.00 Mbps    2 up\n");
   EXPECT_EQ(row(router, *command, id, 2, {}, true, false, jsonFormat), "");
}

TEST(P2pTunnelSummary, rowOfATunnelWithoutRecords) {
   Router router;
   auto const command = router.tunnelCommand();
   EXPECT_EQ(row(router, *command, tunnelId("tun1")),
             "tun1        ::              -     - unknown           0 bps    0 unknown\n");
}

TEST(P2pTunnelSummary, cellsAtTheirBounds) {
   Router router;
   auto const id = tunnelId("t");
   router.superTunnelStatus(id, [](auto& status) {
      status.state = RsvpLerTunnelState::down;
      status.color = 0;
   });
   router.tunnelIndex(id, 0);
   auto const command = router.tunnelCommand();
   // A colour of 0 that is set is a number; an index of 0 is none; five digits push the row one place out.
   EXPECT_EQ(row(router, *command, id, 12345),
             "t           ::              0     - unknown           0 bps 12345 down\n");
}

TEST(P2pTunnelSummary, namesAroundTheWidths) {
   struct {
      std::size_t length;
      std::size_t width;
      char const* cell;
   } const rows[] = {
         {10, 11, "nnnnnnnnnn  "},
         {11, 11, "nnnnnnnnnnn "},
         {12, 12, "nnnnnnnnnnnn "},
         {39, 39, "nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn "},
         {40, 40, "nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn "},
         {41, 40, "nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn... "},
         {100, 40, "nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn... "},
   };
   for (auto const& test : rows) {
      Router router;
      auto const id = tunnelId(std::string(test.length, 'n'));
      auto const command = router.tunnelCommand();
      command->setP2pTunnelSummaryHeaderColSizes(id);
      EXPECT_EQ(command->tunnelNameWidth, test.width) << test.length;
      EXPECT_EQ(row(router, *command, id),
                std::string(test.cell) + "::              -     - unknown           0 bps    0 unknown\n")
            << test.length;
   }
}

TEST(P2pTunnelSummary, aNameIsCutToTheWidthThatTheTableHas) {
   Router router;
   auto const command = router.tunnelCommand();
   std::string const rest = "::              -     - unknown           0 bps    0 unknown\n";
   EXPECT_EQ(row(router, *command, tunnelId("twelve-bytes")), "twelve-b... " + rest);
   // A width below 3 can only have been written from outside; nothing of the name is left then.
   command->tunnelNameWidth = 2;
   EXPECT_EQ(row(router, *command, tunnelId("abc")), "... " + rest);
   command->tunnelNameWidth = 3;
   EXPECT_EQ(row(router, *command, tunnelId("abcd")), "... " + rest);
   command->tunnelNameWidth = 4;
   EXPECT_EQ(row(router, *command, tunnelId("abcde")), "a... " + rest);
}

TEST(P2pTunnelSummary, sizingRaisesEachWidth) {
   Router router;
   auto const id = tunnelId("a-name-of-18-bytes");
   router.superTunnelConfig(id, [](auto& config) { config.destination.insert(address("100.100.100.100")); });
   router.superTunnelStatus(id, [](auto& status) {
      status.state = RsvpLerTunnelState::unknown;
      status.color = 1234567;
      status.currentBandwidth = 124875000000; // 999.00 Gbps
   });
   router.tunnelIndex(id, 123456);
   auto const command = router.tunnelCommand();
   command->setP2pTunnelSummaryHeaderColSizes(id);
   EXPECT_EQ(command->tunnelNameWidth, 18);
   EXPECT_EQ(command->dstWidth, 15);
   EXPECT_EQ(command->colorWidth, 7);
   EXPECT_EQ(command->indexWidth, 6);
   EXPECT_EQ(command->bwWidth, 11); // the heading is as long as "999.00 Gbps"
   EXPECT_TRUE(command->bw1000);
   EXPECT_EQ(command->stateWidth, 7);
   // The other tables' widths are their own.
   EXPECT_EQ(command->p2mpTunnelNameWidth, 11);
   EXPECT_EQ(command->p2mpStateWidth, 5);
}

// Widths that were written from outside are where the sizing begins.
TEST(P2pTunnelSummary, sizingMeasuresTheTexts) {
   Router router;
   addTunnel(router, "t10");
   router.superTunnelStatus(tunnelId("t10"), [](auto& status) {
      status.state = RsvpLerTunnelState::up;
      status.currentBandwidth = 10;
      status.color = 4321;
   });
   router.tunnelIndex(tunnelId("t10"), 42);
   auto const command = router.tunnelCommand();
   for (auto* width : {&command->tunnelNameWidth, &command->dstWidth, &command->colorWidth, &command->indexWidth,
                       &command->bwWidth, &command->stateWidth})
      *width = 0;
   command->setP2pTunnelSummaryHeaderColSizes(tunnelId("t10"));
   EXPECT_EQ(command->tunnelNameWidth, 3);
   EXPECT_EQ(command->dstWidth, 8); // 10.0.0.9
   EXPECT_EQ(command->colorWidth, 4);
   EXPECT_EQ(command->indexWidth, 2);
   EXPECT_EQ(command->bwWidth, 6); // 80 bps
   EXPECT_EQ(command->stateWidth, 2);
}

TEST(P2pTunnelSummary, widthsNeverShrink) {
   Router router;
   addTunnel(router, "long-tunnel-name", 1000);
   addTunnel(router, "t");
   auto const command = router.tunnelCommand();
   command->setP2pTunnelSummaryHeaderColSizes(tunnelId("long-tunnel-name"));
   command->setP2pTunnelSummaryHeaderColSizes(tunnelId("t"));
   EXPECT_EQ(command->tunnelNameWidth, 16);
   EXPECT_TRUE(command->bw1000);
}

TEST(P2pTunnelSummary, theFlagTurnsAboveAThousandAndIsMeasuredAsItStands) {
   Router router;
   addTunnel(router, "t125", 125); // 1000 bits per second
   addTunnel(router, "t126", 126); // 1008
   auto const command = router.tunnelCommand();
   command->setP2pTunnelSummaryHeaderColSizes(tunnelId("t125"));
   EXPECT_FALSE(command->bw1000);
   command->setP2pTunnelSummaryHeaderColSizes(tunnelId("t126"));
   EXPECT_TRUE(command->bw1000);

   // Measured with the flag false, written with it true.
   addTunnel(router, "t900", 112); // 896 bits per second
   EXPECT_EQ(row(router, *command, tunnelId("t900")),
             "t900        10.0.0.9        -     - unknown       0.90 Kbps    0 up\n");
}

TEST(P2pTunnelSummary, aReplacementAtEitherLevelWidensTheState) {
   struct {
      char const* name;
      bool pendingInstance;
      bool activeRequest;
      bool pendingRequest;
      std::size_t width;
   } const rows[] = {
         {"none", false, true, false, 5},      {"instance", true, false, false, 8},
         {"request", false, true, true, 8},    {"pending request alone", false, false, true, 5},
         {"both levels", true, true, true, 8},
   };
   for (auto const& test : rows) {
      Router router;
      addTunnel(router, "t");
      router.subTunnelStatus(subTunnelId("t"), [&](auto& status) {
         status.activeMbbTunnelConfigId = mbbId("t", 1);
         if (test.pendingInstance)
            status.pendingMbbTunnelConfigId = mbbId("t", 2);
      });
      router.mbbTunnelStatus(mbbId("t", 1), groupId("t"));
      router.lspGroupStatus(groupId("t"), [&](auto& group) {
         if (test.activeRequest)
            group.activeLspRequestConfigId = requestId("t", 1);
         if (test.pendingRequest)
            group.pendingLspRequestConfigId = requestId("t", 2);
      });
      auto const command = router.tunnelCommand();
      command->setP2pTunnelSummaryHeaderColSizes(tunnelId("t"));
      EXPECT_EQ(command->stateWidth, test.width) << test.name;
   }
}

TEST(P2pTunnelSummary, sizingNeedsItsTables) {
   using Take = void (*)(Router&);
   Take const takes[] = {
         [](Router& router) { router.fathomStatus->superTunnelConfigColl.set({}); },
         [](Router& router) { router.status->superTunnelStatusColl.set({}); },
         [](Router& router) { router.status->subTunnelStatusCollTable.set({}); },
         [](Router& router) { router.status = nullptr; },
         [](Router& router) { router.fathomStatus = nullptr; },
   };
   for (Take const take : takes) {
      Router router;
      addTunnel(router, "a-name-of-18-bytes");
      take(router);
      auto const command = router.tunnelCommand();
      command->setP2pTunnelSummaryHeaderColSizes(tunnelId("a-name-of-18-bytes"));
      EXPECT_EQ(command->tunnelNameWidth, 11);
   }
   // The index map is not among them.
   Router router;
   router.status->tunnelIndexMap.set({});
   auto const command = router.tunnelCommand();
   command->setP2pTunnelSummaryHeaderColSizes(tunnelId("a-name-of-18-bytes"));
   EXPECT_EQ(command->tunnelNameWidth, 18);
}

TEST(P2pTunnelSummary, aStateWithoutAWordEndsTheProcess) {
   Router router;
   router.superTunnelStatus(tunnelId("t"), [](auto& status) { status.state = static_cast<RsvpLerTunnelState>(3); });
   auto const command = router.tunnelCommand();
   EXPECT_DEATH(command->setP2pTunnelSummaryHeaderColSizes(tunnelId("t")), "This should be unreachable");
}
