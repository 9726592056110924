#include "tests/support/Router.h"

#include <gtest/gtest.h>

using namespace Rsvp;
using namespace Tests;

namespace {

// A tunnel "t" with one record of each kind at the end of every chain.
struct Chains {
   Chains() {
      router.subTunnelConfig(subTunnelId("t"), [](auto&) {});
      router.subTunnelStatus(subTunnelId("t"), [](auto& record) { record.activeMbbTunnelConfigId = mbbId("t"); });
      router.mbbTunnelConfig(mbbId("t"), 7);
      router.mbbTunnelStatus(mbbId("t"), groupId("t"));
      router.lspGroupStatus(groupId("t"), [](auto& record) { record.activeLspRequestConfigId = requestId("t"); });
      router.lspRequestConfig(requestId("t"), [](auto&) {});
      router.lspRequestStatus(requestId("t"), [](auto&) {});
   }

   Router router;
};

using Take = void (*)(Router&);

} // namespace

TEST(Lookups, everyChainFindsItsRecord) {
   Chains chains;
   auto const command = chains.router.tunnelCommand();
   EXPECT_EQ(command->getMbbTunnelConfig(mbbId("t"))->requestedBandwidth, 7u);
   EXPECT_EQ(command->getMbbTunnelStatus(mbbId("t"))->activeLspGroupId, groupId("t"));
   EXPECT_EQ(command->getLspGroupStatus(groupId("t"))->lspGroupId, groupId("t"));
   EXPECT_EQ(command->getLspRequestConfig(requestId("t"))->lspRequestConfigId, requestId("t"));
   EXPECT_EQ(command->getLspRequestStatus(requestId("t"))->lspRequestConfigId, requestId("t"));
   EXPECT_EQ(command->getSubTunnelStatus(tunnelId("t"), subTunnelId("t"))->subTunnelConfigId, subTunnelId("t"));
   EXPECT_EQ(findSubTunnelConfig(chains.router.status, subTunnelId("t"))->subTunnelConfigId, subTunnelId("t"));
   EXPECT_EQ(chains.router.statusCommand()->getLspRequestStatus(requestId("t"))->lspRequestConfigId, requestId("t"));
}

TEST(Lookups, aMissingLinkGivesAnEmptyHandle) {
   // What is taken away, and which of the five lookups then find nothing.
   struct {
      char const* name;
      Take take;
      bool mbbConfig, mbbStatus, group, requestConfig, requestStatus;
   } const rows[] = {
         {"nothing", [](Router&) {}, true, true, true, true, true},
         {"the root", [](Router& r) { r.status = nullptr; }, false, false, false, false, false},
         {"mbb config table", [](Router& r) { r.status->mbbTunnelConfigCollTable.set({}); }, false, true, true, true,
          true},
         {"mbb config collection", [](Router& r) { r.status->mbbTunnelConfigCollTable.get()->clear(); }, false, true,
          true, true, true},
         {"mbb config record",
          [](Router& r) { r.status->mbbTunnelConfigCollTable.get()->find(subTunnelId("t"))->clear(); }, false, true,
          true, true, true},
         // A group can't be seen without the status of its instance.
         {"mbb status table", [](Router& r) { r.status->mbbTunnelStatusCollTable.set({}); }, true, false, false, true,
          true},
         {"mbb status collection", [](Router& r) { r.status->mbbTunnelStatusCollTable.get()->clear(); }, true, false,
          false, true, true},
         {"mbb status record",
          [](Router& r) { r.status->mbbTunnelStatusCollTable.get()->find(subTunnelId("t"))->clear(); }, true, false,
          false, true, true},
         {"group table", [](Router& r) { r.status->lspGroupStatusCollTable.set({}); }, true, true, false, true, true},
         {"group collection", [](Router& r) { r.status->lspGroupStatusCollTable.get()->clear(); }, true, true, false,
          true, true},
         {"group record", [](Router& r) { r.status->lspGroupStatusCollTable.get()->find(mbbId("t"))->clear(); }, true,
          true, false, true, true},
         {"request config table", [](Router& r) { r.status->lspRequestConfigCollTable.set({}); }, true, true, true,
          false, true},
         {"request config collection", [](Router& r) { r.status->lspRequestConfigCollTable.get()->clear(); }, true,
          true, true, false, true},
         {"request config record",
          [](Router& r) { r.status->lspRequestConfigCollTable.get()->find(groupId("t"))->clear(); }, true, true, true,
          false, true},
         {"request status table", [](Router& r) { r.status->lspRequestStatusCollTable.set({}); }, true, true, true,
          true, false},
         {"request status collection", [](Router& r) { r.status->lspRequestStatusCollTable.get()->clear(); }, true,
          true, true, true, false},
         {"request status record",
          [](Router& r) { r.status->lspRequestStatusCollTable.get()->find(groupId("t"))->clear(); }, true, true, true,
          true, false},
   };
   for (auto const& test : rows) {
      Chains chains;
      test.take(chains.router);
      auto const command = chains.router.tunnelCommand();
      EXPECT_EQ(bool(command->getMbbTunnelConfig(mbbId("t"))), test.mbbConfig) << test.name;
      EXPECT_EQ(bool(command->getMbbTunnelStatus(mbbId("t"))), test.mbbStatus) << test.name;
      EXPECT_EQ(bool(command->getLspGroupStatus(groupId("t"))), test.group) << test.name;
      EXPECT_EQ(bool(command->getLspRequestConfig(requestId("t"))), test.requestConfig) << test.name;
      EXPECT_EQ(bool(command->getLspRequestStatus(requestId("t"))), test.requestStatus) << test.name;
      EXPECT_EQ(bool(chains.router.statusCommand()->getLspRequestStatus(requestId("t"))), test.requestStatus)
            << test.name;
   }
}

TEST(Lookups, aGroupByItsNumberIsTheActiveInstancesFirst) {
   // Which instances have a status, which of them the group, and whose is found: 0 none, 1 active, 2 pending.
   struct {
      bool activeStatus, pendingStatus, activeGroup, pendingGroup;
      std::uint32_t foundEpoch;
   } const rows[] = {
         {true, true, true, true, 1},   {true, true, false, true, 2},  {true, true, true, false, 1},
         {true, true, false, false, 0}, {false, true, true, true, 2},  {true, false, true, true, 1},
         {true, false, false, true, 0}, {false, false, true, true, 0},
   };
   for (auto const& test : rows) {
      Router router;
      for (std::uint32_t epoch : {1u, 2u}) {
         if (epoch == 1 ? test.activeStatus : test.pendingStatus)
            router.mbbTunnelStatus(mbbId("t", epoch), {});
         if (epoch == 1 ? test.activeGroup : test.pendingGroup)
            router.lspGroupStatus(groupId("t", 1, epoch), [](auto&) {});
      }
      auto const found = router.tunnelCommand()->getLspGroupStatusByGroupId(mbbId("t", 1), mbbId("t", 2), 1);
      EXPECT_EQ(found ? found->lspGroupId.mbbTunnelConfigId.epoch : 0, test.foundEpoch);
      // The other number isn't there at all.
      EXPECT_FALSE(router.tunnelCommand()->getLspGroupStatusByGroupId(mbbId("t", 1), mbbId("t", 2), 0));
   }
}

TEST(Lookups, aGroupByItsNumberWithADefaultActiveInstance) {
   Chains chains;
   auto const command = chains.router.tunnelCommand();
   EXPECT_EQ(command->getLspGroupStatusByGroupId({}, mbbId("t"), 0)->lspGroupId, groupId("t"));
}

TEST(Lookups, currentInstancesOfASubTunnel) {
   Chains chains;
   Router& router = chains.router;
   auto const command = router.tunnelCommand();
   auto const current = [&] {
      return command->getCurrentInstances(command->getNonSplitSubTunnelStatus(tunnelId("t")));
   };

   EXPECT_EQ(current().activeMbbTunnelConfigId, mbbId("t"));
   EXPECT_EQ(current().activeMbbTunnelStatus->mbbTunnelConfigId, mbbId("t"));
   EXPECT_EQ(current().lspGroupId, groupId("t"));
   EXPECT_FALSE(current().mbb);

   router.lspGroupStatus(groupId("t"), [](auto& group) {
      group.activeLspRequestConfigId = requestId("t", 1);
      group.pendingLspRequestConfigId = requestId("t", 2);
   });
   EXPECT_TRUE(current().mbb);

   // The group the instance names has gone: its requests don't count.
   router.mbbTunnelStatus(mbbId("t"), groupId("t", 1));
   EXPECT_FALSE(current().mbb);
   EXPECT_EQ(current().lspGroupId, groupId("t", 1));

   router.subTunnelStatus(subTunnelId("t"), [](auto& status) {
      status.activeMbbTunnelConfigId = mbbId("t", 8);
      status.pendingMbbTunnelConfigId = mbbId("t", 9);
   });
   EXPECT_TRUE(current().mbb);
   EXPECT_FALSE(current().activeMbbTunnelStatus);
   EXPECT_EQ(current().lspGroupId, RsvpLerLspGroupId());

   Cli::CurrentInstances const none = command->getCurrentInstances({});
   EXPECT_FALSE(none.activeMbbTunnelConfigId || none.pendingMbbTunnelConfigId || none.mbb);
}

TEST(Lookups, requestedPathSpecifications) {
   Router router;
   router.tunnelSpec(tunnelId("t"), [](auto& spec) {
      spec.primaryPathSpecId = pathSpecId("north");
      spec.secondaryPathSpecId = pathSpecId("south");
   });
   auto const command = router.tunnelCommand();
   EXPECT_EQ(command->getRequestedPathSpecId(tunnelId("t"), true), pathSpecId("north"));
   EXPECT_EQ(command->getRequestedPathSpecId(tunnelId("t"), false), pathSpecId("south"));
   EXPECT_EQ(command->getRequestedPathSpecId(tunnelId("u"), true), RsvpLerPathSpecId());
   router.status->tunnelSpecColl.set({});
   EXPECT_EQ(command->getRequestedPathSpecId(tunnelId("t"), true), RsvpLerPathSpecId());
}

TEST(Lookups, subTunnelConfig) {
   Chains chains;
   auto const id = subTunnelId("t");
   EXPECT_TRUE(findSubTunnelConfig(chains.router.status, id));
   EXPECT_FALSE(findSubTunnelConfig({}, id));
   chains.router.status->subTunnelConfigCollTable.get()->find(tunnelId("t"))->clear();
   EXPECT_FALSE(findSubTunnelConfig(chains.router.status, id));
   chains.router.status->subTunnelConfigCollTable.get()->clear();
   EXPECT_FALSE(findSubTunnelConfig(chains.router.status, id));
   chains.router.status->subTunnelConfigCollTable.set({});
   EXPECT_FALSE(findSubTunnelConfig(chains.router.status, id));
}

TEST(Lookups, automaticBandwidth) {
   Router router;
   router.autoBwConfig(tunnelId("t"), [](auto& config) { config.enabled = true; });
   auto const configs = router.fathomStatus->autoBwConfig.get();
   EXPECT_TRUE(findAutoBwConfig(configs, tunnelId("t")).enabled);
   EXPECT_FALSE(findAutoBwConfig(configs, tunnelId("u")).enabled);
   EXPECT_FALSE(findAutoBwConfig({}, tunnelId("t")).enabled);
   // A damaged slot reads as the default, and each read of it is reported once.
   configs->markDamaged(tunnelId("t"), "checksum");
   EXPECT_FALSE(findAutoBwConfig(configs, tunnelId("t")).enabled);
   EXPECT_EQ(configs->corruptionCount(), 1u);
   EXPECT_EQ(configs->lastCorruption(), "checksum");
}
