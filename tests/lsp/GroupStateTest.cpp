#include "tests/lsp/LspState.h"

#include <gtest/gtest.h>

#include <csignal>

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

// One group and what surrounds it.
struct StateRow {
   char const* name;
   unsigned state;
   bool inActiveSlot; // it is the group in use of its instance
   bool pendingRequest;
   bool pendingInstance; // the other instance has such a group too
   char const* text;
   char const* json;
};

StateRow const stateRows[] = {
      {"unknown", 0, true, false, false, "      State: unknown\n", R"("state":"unknown","mbb":false,"inUse":false)"},
      {"establishing", 1, true, false, false, "      State: establishing\n",
       R"("state":"establishing","mbb":false,"inUse":false)"},
      {"up", 2, true, false, false, "      State: up, in use\n", R"("state":"up","mbb":false,"inUse":true)"},
      {"up and verified", 3, true, false, false, "      State: up, in use\n",
       R"("state":"up","mbb":false,"inUse":true)"},
      {"down", 4, true, false, false, "      State: down\n", R"("state":"down","mbb":false,"inUse":false)"},
      {"up, another in use", 2, false, false, false, "      State: up\n", R"("state":"up","mbb":false,"inUse":false)"},
      {"up and verified, another in use", 3, false, false, false, "      State: up\n",
       R"("state":"up","mbb":false,"inUse":false)"},
      {"replaced within the group", 2, true, true, false, "      State: up, in use, re-establishing\n",
       R"("state":"up","mbb":true,"inUse":true)"},
      {"replaced between the instances", 3, true, false, true, "      State: up, in use, re-establishing\n",
       R"("state":"up","mbb":true,"inUse":true)"},
      {"replaced at both levels", 2, true, true, true, "      State: up, in use, re-establishing\n",
       R"("state":"up","mbb":true,"inUse":true)"},
      {"down and replaced", 4, true, true, false, "      State: down, re-establishing\n",
       R"("state":"down","mbb":true,"inUse":false)"},
      {"not in use and replaced", 2, false, false, true, "      State: up, re-establishing\n",
       R"("state":"up","mbb":true,"inUse":false)"},
};

// The groups of that number: the one of the row in instance 1, and maybe one in instance 2.
Router routerOf(StateRow const& row, std::uint8_t group) {
   Router router = twoPathRouter();
   router.mbbTunnelStatus(mbbId("t", 1), row.inActiveSlot ? groupId("t", group, 1) : groupId("t", 7, 1));
   router.lspGroupStatus(groupId("t", group, 1), [&](auto& record) {
      record.lspGroupState = static_cast<RsvpLerLspGroupState>(row.state);
      record.activeLspRequestConfigId = requestId("t", 1, group, 1);
      if (row.pendingRequest)
         record.pendingLspRequestConfigId = requestId("t", 2, group, 1);
   });
   if (row.pendingInstance) {
      router.mbbTunnelStatus(mbbId("t", 2), groupId("t", group, 2));
      addGroup(router, requestId("t", 1, group, 2));
   }
   return router;
}

Shown shownPathState(Router const& router, std::uint8_t group, bool coldStandbyCandidate, bool text) {
   return shown(router, [&](auto const& command, auto* renderer) {
      auto const found = command.getLspGroupStatusByGroupId(mbbId("t", 1), mbbId("t", 2), group);
      auto const instance = command.getMbbTunnelStatus(mbbId("t", 1));
      command.renderLspGroupState(renderer, found, mbbId("t", 1), mbbId("t", 2), instance->activeLspGroupId, group,
                                  coldStandbyCandidate, group == 0, text);
   });
}

Shown shownTreeState(Router const& router, bool text) {
   return shown(router, [&](auto const& command, auto* renderer) {
      command.renderP2mpTreeState(renderer, command.getMbbTunnelStatus(mbbId("t", 1)),
                                  command.getMbbTunnelStatus(mbbId("t", 2)),
                                  command.getLspGroupStatusByGroupId(mbbId("t", 1), mbbId("t", 2), 0), text);
   });
}

TEST(GroupState, OfAPrimaryPath) {
   for (auto const& row : stateRows) {
      SCOPED_TRACE(row.name);
      Router const router = routerOf(row, 0);
      EXPECT_EQ(shownPathState(router, 0, false, true), (Shown{row.text, row.json}));
      EXPECT_EQ(shownPathState(router, 0, false, false), (Shown{"", row.json}));
   }
}

// A cold standby path that has a group after all shows its real state.
TEST(GroupState, OfASecondaryPath) {
   for (auto const& row : stateRows) {
      SCOPED_TRACE(row.name);
      Router const router = routerOf(row, 1);
      std::string const preSignaled = std::string(R"("preSignaled":true,)") + row.json;
      EXPECT_EQ(shownPathState(router, 1, false, true), (Shown{row.text, preSignaled}));
      EXPECT_EQ(shownPathState(router, 1, false, false), (Shown{"", preSignaled}));
      std::string const coldStandby = std::string(R"("preSignaled":false,)") + row.json;
      EXPECT_EQ(shownPathState(router, 1, true, true), (Shown{row.text, coldStandby}));
      EXPECT_EQ(shownPathState(router, 1, true, false), (Shown{"", coldStandby}));
   }
}

TEST(GroupState, WithoutAGroup) {
   Router const router = twoPathRouter();
   std::string const cold = R"("preSignaled":false,"state":"coldStandby","mbb":false,"inUse":false)";
   EXPECT_EQ(shownPathState(router, 1, true, true), (Shown{"      State: cold standby\n", cold}));
   EXPECT_EQ(shownPathState(router, 1, true, false), (Shown{"", cold}));
   std::string const unknown = R"("state":"unknown","mbb":false,"inUse":false)";
   EXPECT_EQ(shownPathState(router, 0, false, true), (Shown{"      State: unknown\n", unknown}));
   EXPECT_EQ(shownTreeState(router, true), (Shown{"      State: unknown\n", unknown}));
   EXPECT_EQ(shownTreeState(router, false), (Shown{"", unknown}));
}

TEST(GroupState, OfATree) {
   for (auto const& row : stateRows) {
      SCOPED_TRACE(row.name);
      // Group 7, the one in use where the row's isn't, doesn't exist, and then nothing is replaced between the
      // instances.
      if (row.pendingInstance && !row.inActiveSlot)
         continue;
      Router const router = routerOf(row, 0);
      EXPECT_EQ(shownTreeState(router, true), (Shown{row.text, row.json}));
      EXPECT_EQ(shownTreeState(router, false), (Shown{"", row.json}));
   }
}

// The instances' groups of a path are those of its number, those of a tree the ones in use.
TEST(GroupState, TreesAndPathsFindTheInstancesGroupsDifferently) {
   struct Row {
      bool active; // the group in use of the active instance exists
      bool pending;
      char const* treeText;
      char const* treeMbb;
   };
   Row const rows[] = {
         {false, false, "      State: up\n", "false"},
         {true, false, "      State: up\n", "false"},
         {false, true, "      State: up\n", "false"},
         {true, true, "      State: up, re-establishing\n", "true"},
   };
   for (auto const& row : rows) {
      SCOPED_TRACE(testing::Message() << row.active << row.pending);
      Router router = twoPathRouter();
      router.mbbTunnelStatus(mbbId("t", 1), groupId("t", 1, 1));
      router.mbbTunnelStatus(mbbId("t", 2), groupId("t", 1, 2));
      addGroup(router, requestId("t", 1, 0, 1));
      addGroup(router, requestId("t", 1, 0, 2));
      if (row.active)
         addGroup(router, requestId("t", 1, 1, 1));
      if (row.pending)
         addGroup(router, requestId("t", 1, 1, 2));
      EXPECT_EQ(shownPathState(router, 0, false, true),
                (Shown{"      State: up, re-establishing\n", R"("state":"up","mbb":true,"inUse":false)"}));
      EXPECT_EQ(shownTreeState(router, true),
                (Shown{row.treeText, std::string(R"("state":"up","mbb":)") + row.treeMbb + R"(,"inUse":false)"}));
   }
}

// An instance that replaces itself counts as being replaced: both its groups are there.
TEST(GroupState, OfAnInstanceThatIsActiveAndPending) {
   Router router = twoPathRouter();
   addGroup(router, requestId("t", 1));
   Shown const expected{"      State: up, in use, re-establishing\n", R"("state":"up","mbb":true,"inUse":true)"};
   EXPECT_EQ(shown(router,
                   [](auto const& command, auto* renderer) {
                      command.renderLspGroupState(renderer, command.getLspGroupStatus(groupId("t")), mbbId("t", 1),
                                                  mbbId("t", 1), groupId("t"), 0, false, true, true);
                   }),
             expected);
   EXPECT_EQ(shown(router,
                   [](auto const& command, auto* renderer) {
                      auto const instance = command.getMbbTunnelStatus(mbbId("t", 1));
                      command.renderP2mpTreeState(renderer, instance, instance, command.getLspGroupStatus(groupId("t")),
                                                  true);
                   }),
             expected);
}

TEST(GroupState, OfATreeNeedsTheActiveInstance) {
   Router router = twoPathRouter();
   addGroup(router, requestId("t", 1));
   auto const pending = router.tunnelCommand()->getMbbTunnelStatus(mbbId("t", 1));
   EXPECT_EQ(shown(router,
                   [&](auto const& command, auto* renderer) {
                      command.renderP2mpTreeState(renderer, nullptr, pending, command.getLspGroupStatus(groupId("t")),
                                                  true);
                   }),
             (Shown{"", ""}));
}

// A group that is in use in the pending instance isn't in use.
TEST(GroupState, OfThePendingInstance) {
   Router router = twoPathRouter();
   router.mbbTunnelStatus(mbbId("t", 2), groupId("t", 0, 2));
   addGroup(router, requestId("t", 1, 0, 2));
   Shown const up{"      State: up\n", R"("state":"up","mbb":false,"inUse":false)"};
   EXPECT_EQ(shownPathState(router, 0, false, true), up);
   EXPECT_EQ(shownTreeState(router, true), up);
}

TEST(GroupStateDeathTest, OutOfRange) {
   Router const router = routerOf({"", 5, true, false, false, "", ""}, 0);
   EXPECT_EXIT(shownPathState(router, 0, false, true), testing::KilledBySignal(SIGABRT), "This should be unreachable");
   EXPECT_EXIT(shownTreeState(router, false), testing::KilledBySignal(SIGABRT), "This should be unreachable");
}

} // namespace
