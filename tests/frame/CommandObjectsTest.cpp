#include "tests/support/Router.h"

#include <gtest/gtest.h>

using namespace Rsvp;
using namespace Tests;

TEST(CommandObjects, factoriesTakeEmptyHandles) {
   auto const tunnels = Cli::showRsvpLerTunnelFactory({}, {}, {}, {});
   ASSERT_TRUE(tunnels);
   EXPECT_EQ(tunnels->userCount(), 1u);
   auto const status = Cli::showRsvpLerFactory({}, {}, {}, {}, {});
   ASSERT_TRUE(status);
   EXPECT_EQ(status->userCount(), 1u);
   EXPECT_FALSE(tunnels->pathSpecConfigColl());
   EXPECT_FALSE(tunnels->superTunnelConfigColl());
   EXPECT_FALSE(tunnels->getMbbTunnelConfig({}));
   EXPECT_FALSE(status->superTunnelStatusColl());
   EXPECT_FALSE(status->getLspRequestStatus({}));
}

TEST(CommandObjects, bothFormsOfAFactoryKeepTheirHandles) {
   Router const router;
   auto const free = router.tunnelCommand();
   auto const ofClass = Cli::ShowRsvpLerTunnel::ShowRsvpLerTunnelIs(router.cliConfig, router.lerCliConfig,
                                                                    router.status, router.fathomStatus);
   for (auto const& command : {free, ofClass}) {
      EXPECT_EQ(command->rsvpCliConfig, router.cliConfig);
      EXPECT_EQ(command->rsvpLerCliConfig, router.lerCliConfig);
      EXPECT_EQ(command->rsvpLerStatus, router.status);
      EXPECT_EQ(command->rsvpLerFathomStatus, router.fathomStatus);
   }
   auto const freeStatus = router.statusCommand();
   auto const statusOfClass = Cli::ShowRsvpLer::ShowRsvpLerIs(router.lerConfig, router.lerCliConfig, router.status,
                                                              router.fathomStatus, router.featureConfigDir);
   for (auto const& command : {freeStatus, statusOfClass}) {
      EXPECT_EQ(command->rsvpLerConfig, router.lerConfig);
      EXPECT_EQ(command->rsvpLerCliConfig, router.lerCliConfig);
      EXPECT_EQ(command->rsvpLerStatus, router.status);
      EXPECT_EQ(command->rsvpLerFathomStatus, router.fathomStatus);
      EXPECT_EQ(command->tallyFeatureConfigDir, router.featureConfigDir);
   }
}

TEST(CommandObjects, aHandleKeepsItsRecordAliveAndNoLonger) {
   Router router;
   EXPECT_EQ(router.status->userCount(), 1u);
   auto command = router.tunnelCommand();
   EXPECT_EQ(router.status->userCount(), 2u);
   command = nullptr;
   EXPECT_EQ(router.status->userCount(), 1u);
}

TEST(CommandObjects, widthsStartAtTheirHeadings) {
   auto const command = Router().tunnelCommand();
   EXPECT_EQ(command->tunnelNameWidth, 11);
   EXPECT_EQ(command->tunnelNameMaxWidth, 40);
   EXPECT_EQ(command->dstWidth, 11);
   EXPECT_EQ(command->colorWidth, 5);
   EXPECT_EQ(command->indexWidth, 5);
   EXPECT_EQ(command->activePathWidth, 11u);
   EXPECT_EQ(command->bwWidth, 11);
   EXPECT_FALSE(command->bw1000);
   EXPECT_EQ(command->sampledBwWidth, 10);
   EXPECT_EQ(command->lspCountWidth, 4u);
   EXPECT_EQ(command->stateWidth, 5);
   EXPECT_EQ(command->p2mpTunnelNameWidth, 11);
   EXPECT_EQ(command->p2mpIdWidth, 7);
   EXPECT_EQ(command->p2mpIndexWidth, 5);
   EXPECT_EQ(command->p2mpBwWidth, 11);
   EXPECT_FALSE(command->p2mpBw1000);
   EXPECT_EQ(command->p2mpLspCountWidth, 4u);
   EXPECT_EQ(command->p2mpStateWidth, 5);
   EXPECT_EQ(command->p2mpLeavesWidth, 6);
   EXPECT_EQ(command->subTunnelIdWidth, 10);
   EXPECT_EQ(command->sessionIdWidth, 10);
}

TEST(CommandObjects, accessorsReadTheirFieldAtEachCall) {
   Router const router;
   auto const tunnels = router.tunnelCommand();
   EXPECT_EQ(tunnels->pathSpecConfigColl(), router.status->pathSpecConfigColl.get());
   EXPECT_EQ(tunnels->tunnelSpecColl(), router.status->tunnelSpecColl.get());
   EXPECT_EQ(tunnels->superTunnelConfigColl(), router.fathomStatus->superTunnelConfigColl.get());
   EXPECT_EQ(tunnels->superTunnelStatusColl(), router.status->superTunnelStatusColl.get());
   EXPECT_EQ(tunnels->subTunnelConfigCollTable(), router.status->subTunnelConfigCollTable.get());
   EXPECT_EQ(tunnels->subTunnelStatusCollTable(), router.status->subTunnelStatusCollTable.get());
   EXPECT_EQ(tunnels->mbbTunnelConfigCollTable(), router.status->mbbTunnelConfigCollTable.get());
   EXPECT_EQ(tunnels->mbbTunnelStatusCollTable(), router.status->mbbTunnelStatusCollTable.get());
   EXPECT_EQ(tunnels->tunnelIndexMap(), router.status->tunnelIndexMap.get());
   EXPECT_EQ(tunnels->subTunnelIndexMap(), router.status->subTunnelIndexMap.get());
   EXPECT_EQ(tunnels->lspGroupStatusCollTable(), router.status->lspGroupStatusCollTable.get());
   EXPECT_EQ(tunnels->lspRequestConfigCollTable(), router.status->lspRequestConfigCollTable.get());
   EXPECT_EQ(tunnels->lspRequestStatusCollTable(), router.status->lspRequestStatusCollTable.get());
   EXPECT_EQ(tunnels->bwSamplingStatusColl(), router.status->bwSamplingStatusColl.get());
   EXPECT_EQ(tunnels->autoBwStats(), router.status->autoBwStats.get());
   EXPECT_EQ(tunnels->autoBwConfig(), router.fathomStatus->autoBwConfig.get());
   EXPECT_EQ(tunnels->rsvpLerTunnelHistory(), router.fathomStatus->rsvpLerTunnelHistory.get());
   EXPECT_EQ(tunnels->rsvpLerSubTunnelHistory(), router.fathomStatus->rsvpLerSubTunnelHistory.get());
   EXPECT_EQ(tunnels->cspfPathKeyMapping(), router.status->cspfPathKeyMapping.get());

   auto const status = router.statusCommand();
   EXPECT_EQ(status->superTunnelConfigColl(), router.fathomStatus->superTunnelConfigColl.get());
   EXPECT_EQ(status->superTunnelStatusColl(), router.status->superTunnelStatusColl.get());
   EXPECT_EQ(status->subTunnelConfigCollTable(), router.status->subTunnelConfigCollTable.get());
   EXPECT_EQ(status->subTunnelStatusCollTable(), router.status->subTunnelStatusCollTable.get());
   EXPECT_EQ(status->mbbTunnelStatusCollTable(), router.status->mbbTunnelStatusCollTable.get());
   EXPECT_EQ(status->lspGroupStatusCollTable(), router.status->lspGroupStatusCollTable.get());
   EXPECT_EQ(status->lspRequestStatusCollTable(), router.status->lspRequestStatusCollTable.get());

   router.status->pathSpecConfigColl.set({});
   EXPECT_FALSE(tunnels->pathSpecConfigColl());
}

TEST(CommandObjects, followingAnEmptyHandleEndsTheProcess) {
   auto const command = Cli::showRsvpLerTunnelFactory({}, {}, {}, {});
   EXPECT_DEATH(command->pathSpecConfigColl()->size(), "an empty handle was followed");
}
