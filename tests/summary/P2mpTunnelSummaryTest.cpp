#include "tests/support/Router.h"

#include <gtest/gtest.h>

using namespace Tests;
using namespace Rsvp;

namespace {

std::string row(Router const& router, Cli::ShowRsvpLerTunnel& command, RsvpLerTunnelSpecId const& id,
                std::uint32_t lspCount = 0, bool mbb = false, std::uint32_t format = textFormat) {
   return rendered(format, [&](auto* renderer) {
      command.renderP2mpTunnelSummary(renderer, id, router.status->superTunnelStatusColl.get()->find(id),
                                      command.tunnelIndexMap(), lspCount, mbb);
   });
}

std::string header(Cli::ShowRsvpLerTunnel& command, std::uint32_t format = textFormat) {
   return rendered(format, [&](auto* renderer) { command.renderP2mpTunnelSummaryHeader(renderer); });
}

// A P2MP tunnel that is up, with that many leaves, the first of which are up.
void addTree(Router& router, std::string_view name, unsigned leaves, unsigned leavesUp) {
   router.superTunnelStatus(tunnelId(name), [&](auto& status) {
      status.isP2mp = true;
      status.sessionId = {1, address("0.0.0.42"), 8, address("10.0.0.1")};
      status.state = RsvpLerTunnelState::up;
      for (unsigned i = 0; i < leaves; ++i)
         status.subLspState.insert({Lattice::IpAddr(10, 0, 1, static_cast<std::uint8_t>(i))},
                                   i < leavesUp ? RsvpLspState::up : RsvpLspState::down);
   });
}

} // namespace

TEST(P2mpTunnelSummary, headingWithStartWidths) {
   Router router;
   auto const command = router.tunnelCommand();
   EXPECT_EQ(header(*command), "\n"
                               "P2MP\n"
                               "Tunnel Name P2MP ID Index Reserved BW LSPs State Leaves\n"
                               "----------- ------- ----- ----------- ---- ----- ------\n");
   EXPECT_EQ(header(*command, jsonFormat), "");
   EXPECT_EQ(header(*command, 0), "");
}

TEST(P2mpTunnelSummary, headingFollowsEachWidth) {
   Router router;
   auto const command = router.tunnelCommand();
   command->p2mpTunnelNameWidth = 13;
   command->p2mpIdWidth = 9;
   command->p2mpIndexWidth = 6;
   command->p2mpBwWidth = 12;
   command->p2mpStateWidth = 8;
   command->p2mpLeavesWidth = 10;
   EXPECT_EQ(header(*command), "\n"
                               "P2MP\n"
                               "Tunnel Name     P2MP ID  Index  Reserved BW LSPs State    Leaves\n"
                               "------------- --------- ------ ------------ ---- -------- ----------\n");
}

TEST(P2mpTunnelSummary, rowOfATree) {
   Router router;
   addTree(router, "tree1", 12, 3);
   router.tunnelIndex(tunnelId("tree1"), 8);
   auto const command = router.tunnelCommand();
   EXPECT_EQ(row(router, *command, tunnelId("tree1"), 1), "tree1            42     8       0 bps    1 up    3/12 up\n");
   EXPECT_EQ(row(router, *command, tunnelId("tree1"), 1, false, jsonFormat), "");
}

TEST(P2mpTunnelSummary, rowOfATreeWithoutStatus) {
   Router router;
   auto const command = router.tunnelCommand();
   // The state is longer than its column: no sizing pass ran for this row.
   EXPECT_EQ(row(router, *command, tunnelId("tree1")), "tree1             ?     -       0 bps    0 unknown 0/0 up\n");
}

TEST(P2mpTunnelSummary, theIdOfTheSession) {
   struct {
      std::uint8_t type;
      char const* address;
      char const* cell;
   } const rows[] = {
         {1, "0.0.0.0", "      0"},  {1, "255.255.255.255", "4294967295"}, {1, "2001:db8::1", "      0"},
         {0, "0.0.0.42", "      ?"}, {2, "0.0.0.42", "      ?"},
   };
   for (auto const& test : rows) {
      Router router;
      router.superTunnelStatus(tunnelId("t"), [&](auto& status) {
         status.sessionId.type = test.type;
         status.sessionId.address = address(test.address);
         status.state = RsvpLerTunnelState::down;
      });
      auto const command = router.tunnelCommand();
      EXPECT_EQ(row(router, *command, tunnelId("t")),
                std::string("t           ") + test.cell + "     -       0 bps    0 down  0/0 up\n");
   }
}

TEST(P2mpTunnelSummary, onlyLeavesOfValueOneAreUp) {
   Router router;
   router.superTunnelStatus(tunnelId("t"), [](auto& status) {
      status.state = RsvpLerTunnelState::up;
      status.subLspState.insert({address("10.0.0.1")}, RsvpLspState::unknown);
      status.subLspState.insert({address("10.0.0.2")}, RsvpLspState::up);
      status.subLspState.insert({address("10.0.0.3")}, RsvpLspState::down);
   });
   auto const command = router.tunnelCommand();
   EXPECT_EQ(row(router, *command, tunnelId("t")), "t                 ?     -       0 bps    0 up    1/3 up\n");
}

TEST(P2mpTunnelSummary, theStateIsPadded) {
   Router router;
   addTree(router, "t", 1, 1);
   auto const command = router.tunnelCommand();
   command->p2mpStateWidth = 8;
   EXPECT_EQ(row(router, *command, tunnelId("t"), 2, true),
             "t                42     -       0 bps    2 up (MBB) 1/1 up\n");
   EXPECT_EQ(row(router, *command, tunnelId("t"), 2), "t                42     -       0 bps    2 up       1/1 up\n");
   // Longer than the column: no padding, and none below zero.
   command->p2mpStateWidth = 5;
   EXPECT_EQ(row(router, *command, tunnelId("t"), 2, true),
             "t                42     -       0 bps    2 up (MBB) 1/1 up\n");
}

TEST(P2mpTunnelSummary, aNameOverTheWidthIsCut) {
   Router router;
   addTree(router, "a-name-of-18-bytes", 0, 0);
   auto const command = router.tunnelCommand();
   EXPECT_EQ(row(router, *command, tunnelId("a-name-of-18-bytes")),
             "a-name-o...      42     -       0 bps    0 up    0/0 up\n");
}

TEST(P2mpTunnelSummary, sizingRaisesEachWidth) {
   Router router;
   addTree(router, std::string(41, 'n'), 100, 0);
   auto const id = tunnelId(std::string(41, 'n'));
   router.superTunnelStatus(id, [](auto& status) {
      status.sessionId = {1, address("255.0.0.0"), 0, {}};
      status.currentBandwidth = 126;
      for (unsigned i = 0; i < 100; ++i)
         status.subLspState.insert({Lattice::IpAddr(10, 0, 1, static_cast<std::uint8_t>(i))}, RsvpLspState::up);
   });
   router.tunnelIndex(id, 1234567);
   auto const command = router.tunnelCommand();
   command->setP2mpTunnelSummaryHeaderColSizes(id);
   EXPECT_EQ(command->p2mpTunnelNameWidth, 40);
   EXPECT_EQ(command->p2mpIdWidth, 10);
   EXPECT_EQ(command->p2mpIndexWidth, 7);
   EXPECT_TRUE(command->p2mpBw1000);
   EXPECT_EQ(command->p2mpBwWidth, 11);
   EXPECT_EQ(command->p2mpStateWidth, 7);
   EXPECT_EQ(command->p2mpLeavesWidth, 10);
   // The P2P table's widths are its own.
   EXPECT_EQ(command->tunnelNameWidth, 11);
   EXPECT_FALSE(command->bw1000);
}

// Widths that were written from outside are where the sizing begins.
TEST(P2mpTunnelSummary, sizingMeasuresTheTexts) {
   Router router;
   addTree(router, "t10", 3, 1);
   router.tunnelIndex(tunnelId("t10"), 4321);
   auto const command = router.tunnelCommand();
   for (auto* width : {&command->p2mpTunnelNameWidth, &command->p2mpIdWidth, &command->p2mpIndexWidth,
                       &command->p2mpBwWidth, &command->p2mpStateWidth, &command->p2mpLeavesWidth})
      *width = 0;
   command->setP2mpTunnelSummaryHeaderColSizes(tunnelId("t10"));
   EXPECT_EQ(command->p2mpTunnelNameWidth, 3);
   EXPECT_EQ(command->p2mpIdWidth, 2); // 42
   EXPECT_EQ(command->p2mpIndexWidth, 4);
   EXPECT_EQ(command->p2mpBwWidth, 5); // 0 bps
   EXPECT_EQ(command->p2mpStateWidth, 2);
   EXPECT_EQ(command->p2mpLeavesWidth, 6); // 1/3 up
}

TEST(P2mpTunnelSummary, leafColumnByTheDigitsOfTheTotal) {
   struct {
      unsigned leaves;
      std::size_t width;
   } const rows[] = {{0, 6}, {9, 6}, {10, 8}, {99, 8}, {100, 10}};
   for (auto const& test : rows) {
      Router router;
      addTree(router, "t", test.leaves, 0);
      auto const command = router.tunnelCommand();
      command->setP2mpTunnelSummaryHeaderColSizes(tunnelId("t"));
      EXPECT_EQ(command->p2mpLeavesWidth, test.width) << test.leaves;
   }
}

TEST(P2mpTunnelSummary, sizingSeesAReplacement) {
   Router router;
   addTree(router, "t", 1, 1);
   router.subTunnelStatus(subTunnelId("t"), [](auto& status) {
      status.activeMbbTunnelConfigId = mbbId("t", 1);
      status.pendingMbbTunnelConfigId = mbbId("t", 2);
   });
   auto const command = router.tunnelCommand();
   command->setP2mpTunnelSummaryHeaderColSizes(tunnelId("t"));
   EXPECT_EQ(command->p2mpStateWidth, 8);
}

TEST(P2mpTunnelSummary, sizingNeedsItsTables) {
   using Take = void (*)(Router&);
   Take const takes[] = {
         [](Router& router) { router.fathomStatus->superTunnelConfigColl.set({}); },
         [](Router& router) { router.status->superTunnelStatusColl.set({}); },
         [](Router& router) { router.status->subTunnelStatusCollTable.set({}); },
         [](Router& router) { router.status = nullptr; },
   };
   for (Take const take : takes) {
      Router router;
      take(router);
      auto const command = router.tunnelCommand();
      command->setP2mpTunnelSummaryHeaderColSizes(tunnelId("a-name-of-18-bytes"));
      EXPECT_EQ(command->p2mpTunnelNameWidth, 11);
   }
}
