#include "tests/detail/RichState.h"

using namespace Rsvp;

namespace Tests {

namespace {

// An instance with one group that has an active and a pending request; the ids of the LSPs are `lspId` and `lspId` + 1.
void addInstance(Router& router, RsvpLerMbbTunnelConfigId const& id, std::uint8_t group, std::uint16_t lspId) {
   RsvpLerLspGroupId const groupKey{id, group};
   router.mbbTunnelConfig(id, 250000);
   router.mbbTunnelStatus(id, {id, 0});
   router.lspGroupStatus(groupKey, [&](RsvpLerLspGroupStatus& status) {
      status.lspGroupState = RsvpLerLspGroupState::up;
      status.activeLspRequestConfigId = {groupKey, 1};
      status.pendingLspRequestConfigId = {groupKey, 2};
      status.pathMtu = 1500;
      status.nextHop.insert(address("10.1.1.2"), {Lattice::IntfId("eth1"), 9000});
   });
   router.cspfPathKey(groupKey, [](RsvpLerCspfPathKey& key) {
      key.kind = RsvpLerCspfPathKey::kindPath;
      key.pathId = 5;
   });
   for (std::uint32_t config : {1u, 2u}) {
      router.lspRequestConfig({groupKey, config}, [&](RsvpLerLspRequestConfig& record) {
         auto tree = Brindle::makeNode<RsvpLerTree>();
         RsvpPathWithVersion path(1);
         path.hops = hops({"10.1.1.2", "10.0.0.9"});
         tree->paths.insert(RsvpDstId{address("10.0.0.9")}, path);
         record.tree = tree;
         record.bandwidth = 125000;
      });
      router.lspRequestStatus({groupKey, config}, [&](RsvpLerLspRequestStatus& record) {
         record.lspState = RsvpLerLspState::up;
         record.lspId = static_cast<std::uint16_t>(lspId + config - 1);
      });
   }
}

void addSubTunnel(Router& router, RsvpLerSubTunnelConfigId const& id, std::uint16_t firstLspId) {
   router.subTunnelConfig(id, [](RsvpLerSubTunnelConfig& config) {
      config.primaryPathSpecId = pathSpecId("via-north");
      config.secondaryPathSpecId = pathSpecId("via-south");
   });
   router.subTunnelStatus(id, [&](RsvpLerSubTunnelStatus& status) {
      status.state = RsvpLerTunnelState::up;
      status.activeMbbTunnelConfigId = {id, 1};
      status.pendingMbbTunnelConfigId = {id, 2};
      status.currentBandwidth = 62500;
      status.sessionCliId = 12;
   });
   addInstance(router, {id, 1}, 0, firstLspId);
   addInstance(router, {id, 2}, 1, static_cast<std::uint16_t>(firstLspId + 2));
}

void addLog(RsvpLerTunnelHistoryEntryColl& log, std::uint32_t index) {
   RsvpLerTunnelHistoryEntry entry;
   entry.key = {index, 0};
   entry.timestamp = Brindle::Duration(1700000000.25);
   entry.data = LerCreationHistoryData();
   log.entries.set(entry.key, entry);
}

void editConfig(RsvpLerSuperTunnelConfig& config) {
   config.source = address("10.0.0.1");
   config.destination.insert(address("10.0.0.9"));
   config.aliasTeps.insert(address("10.0.0.19"));
   config.metric = 10;
   config.primaryPathSpecId = pathSpecId("via-north");
   config.signalBandwidth = true;
   config.splitBwEnabled = true;
   config.optimizationInterval = 60;
   config.frrMode = Cli::FrrMode::linkProtection;
   config.profileState = RsvpLerTunnelProfileState::notFound;
}

// What P2P and P2MP tunnels have in common.
void addTunnel(Router& router, RsvpLerTunnelSpecId const& id, std::uint32_t index) {
   router.superTunnelConfig(id, editConfig);
   router.superTunnelStatus(id, [](RsvpLerSuperTunnelStatus& status) {
      status.state = RsvpLerTunnelState::up;
      status.color = 100;
      status.currentBandwidth = 125000;
      status.sessionId = {1, address("10.0.0.77"), 1, {}};
      status.subLspState.insert(RsvpDstId{address("10.0.0.9")}, RsvpLspState::up);
   });
   router.tunnelSpec(id, [](RsvpLerTunnelSpec& spec) { spec.profile = {"gold", RsvpLerTunnelSource::cli}; });
   router.autoBwConfig(id, [](RsvpLerTunnelAutoBwConfig& config) {
      config.enabled = true;
      config.adjustmentPeriod = Brindle::Duration(300);
   });
   router.tunnelIndex(id, index);
   addLog(*router.tunnelLog(index), index);
}

Cli::TunnelView gather(Router const& router, Cli::ShowRsvpLerTunnel const& command, RsvpLerTunnelSpecId const& id) {
   RsvpLerSubTunnelConfigId const own{id, 0};
   Cli::TunnelView view;
   view.tunnelSpecId = id;
   view.activeMbbTunnelConfigId = {own, 1};
   view.pendingMbbTunnelConfigId = {own, 2};
   view.lspGroupId = {{own, 1}, 0};
   view.autoBwConfig = router.fathomStatus->autoBwConfig.get();
   view.autoBwStats = router.status->autoBwStats.get();
   view.bwSamplingStatusColl = router.status->bwSamplingStatusColl.get();
   view.tunnelIndexMap = router.status->tunnelIndexMap.get();
   view.superTunnelConfig = router.fathomStatus->superTunnelConfigColl.get()->superTunnelConfig(id);
   view.superTunnelStatus = router.status->superTunnelStatusColl.get()->superTunnelStatus(id);
   view.subTunnelStatusColl = router.status->subTunnelStatusCollTable.get()->subTunnelStatusColl(id);
   view.subTunnelStatus = view.subTunnelStatusColl->subTunnelStatus(own);
   view.activeMbbTunnelStatus = command.getMbbTunnelStatus({own, 1});
   view.pendingMbbTunnelStatus = command.getMbbTunnelStatus({own, 2});
   view.tunnelSpec = router.status->tunnelSpecColl.get()->tunnelSpec(id);
   view.mbb = true;
   return view;
}

} // namespace

RichState::RichState() {
   RsvpLerSubTunnelConfigId const second = subTunnelId("tun1", 2);
   router.cliConfig->mtuSignalingEnabled = true;
   router.pathSpecConfig(pathSpecId("via-north"), RsvpLerPathSpecType::explicitPath);
   router.pathSpecConfig(pathSpecId("via-south"), RsvpLerPathSpecType::dynamicPath);
   addTunnel(router, tunnelId("tun1"), 7);
   addSubTunnel(router, subTunnelId("tun1"), 30);
   addSubTunnel(router, second, 40);
   router.subTunnelIndex(second, 3);
   addLog(*router.subTunnelLog(3), 3);
   addTunnel(router, tunnelId("tree1"), 8);
   addSubTunnel(router, subTunnelId("tree1"), 50);
   router.superTunnelConfig(tunnelId("tree1"), [](RsvpLerSuperTunnelConfig& config) {
      editConfig(config);
      config.sessionType = RsvpSessionType::p2mp;
   });

   command = router.tunnelCommand();
   p2p = gather(router, *command, tunnelId("tun1"));
   p2mp = gather(router, *command, tunnelId("tree1"));
   subTunnel.tunnelSpecId = tunnelId("tun1");
   subTunnel.subTunnelConfigId = second;
   subTunnel.autoBwStats = router.status->autoBwStats.get();
   subTunnel.bwSamplingStatusColl = router.status->bwSamplingStatusColl.get();
   subTunnel.subTunnelIndexMap = router.status->subTunnelIndexMap.get();
   subTunnel.subTunnelStatus = p2p.subTunnelStatusColl->subTunnelStatus(second);
   subTunnel.activeMbbTunnelConfigId = {second, 1};
   subTunnel.pendingMbbTunnelConfigId = {second, 2};
   subTunnel.lspGroupId = {{second, 1}, 0};
   subTunnel.mbb = true;
}

} // namespace Tests
