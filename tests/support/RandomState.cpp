#include "tests/support/RandomState.h"

using namespace Rsvp;

namespace Tests {

namespace {

constexpr std::string_view tunnelNames[] = {
      "tun1", "tun10", "", "a \"quoted\" \\ name", "t\xc3\xbcnnel", "a-name-of-more-than-forty-characters-all-in-all",
};
constexpr char const* addresses[] = {"10.0.0.1", "10.0.0.2", "10.0.0.10", "10.1.1.2", "2001:db8::1", ""};
constexpr std::string_view pathSpecs[] = {"north", "south", "gone"};

LerTunnelHistoryData anyEvent(Random& random, Lattice::IpGenAddr const& destination) {
   auto const lspId = static_cast<std::uint16_t>(random.below(3));
   switch (random.below(7)) {
   case 0:
      return LerCreationHistoryData{};
   case 1:
      return LerTunnelStateHistoryData{static_cast<RsvpLerTunnelState>(random.below(3)),
                                       static_cast<std::uint8_t>(random.below(2)),
                                       static_cast<std::uint16_t>(random.below(3)), random.below(2) == 0};
   case 2:
      return LerBandwidthHistoryData{random.below(1000000)};
   case 3:
      return LerLspAddHistoryData{lspId, random.below(2) == 0 ? OptionalLspId() : OptionalLspId(lspId)};
   case 4:
      return LerP2mpLeafStateHistoryData{destination, static_cast<RsvpLspState>(random.below(3))};
   case 5:
      return LerUnknownHistoryData{};
   default:
      return LerCspfReplyHistoryData{random.below(3), static_cast<std::uint16_t>(random.below(3)),
                                     static_cast<std::uint8_t>(random.below(2)), destination,
                                     static_cast<RsvpLerP2mpPathChangeType>(random.below(5))};
   }
}

} // namespace

RandomState::RandomState(std::uint32_t seed) : random_(seed) {
   router.cliConfig->mtuSignalingEnabled = chance(70);
   router.pathSpecConfig(pathSpecId("north"), anyOf<RsvpLerPathSpecType>(3));
   router.pathSpecConfig(pathSpecId("south"), anyOf<RsvpLerPathSpecType>(3));
   std::uint32_t number = 0;
   for (std::string_view const name : tunnelNames) {
      tunnels.push_back(tunnelId(name, anyOf<RsvpLerTunnelSource>(5)));
      addTunnel(tunnels.back(), ++number);
   }
   if (chance(10))
      router.status->pathSpecConfigColl.set(nullptr);
   if (chance(10))
      router.status->cspfPathKeyMapping.set(nullptr);
   if (chance(10))
      router.status->subTunnelIndexMap.set(nullptr);
   if (chance(10))
      router.status->lspRequestStatusCollTable.set(nullptr);
}

std::uint64_t RandomState::bandwidth() {
   switch (random_.below(4)) {
   case 0:
      return 0;
   case 1:
      return random_.below(200);
   case 2:
      return random_.below(2000000000);
   default:
      return ~std::uint64_t{random_.below(1000)};
   }
}

Brindle::Duration RandomState::duration() {
   return Brindle::Duration(static_cast<double>(random_.below(2000000)) / 4 - 1000);
}

Lattice::IpGenAddr RandomState::anyAddress() {
   return address(addresses[random_.below(std::size(addresses))]);
}

RsvpLerPathSpecId RandomState::anyPathSpec() {
   return chance(20) ? RsvpLerPathSpecId() : pathSpecId(pathSpecs[random_.below(std::size(pathSpecs))]);
}

void RandomState::addTunnel(RsvpLerTunnelSpecId const& id, std::uint32_t number) {
   // One in ten is of a type that has no name, but counts as P2MP.
   auto const sessionType = static_cast<RsvpSessionType>(chance(10) ? 2 : random_.below(2));
   bool const p2mp = sessionType != RsvpSessionType::p2p;
   bool const split = chance(40);
   if (chance(90))
      addConfig(id, sessionType);
   if (chance(90))
      addStatus(id, sessionType, split);
   if (chance(80))
      router.tunnelSpec(id, [&](RsvpLerTunnelSpec& spec) {
         spec.primaryPathSpecId = anyPathSpec();
         spec.secondaryPathSpecId = anyPathSpec();
         if (chance(50))
            spec.profile = {"gold", RsvpLerTunnelSource::cli};
      });
   addAutoBw(id);
   if (chance(80)) {
      router.tunnelIndex(id, number);
      if (chance(90))
         addLog(*router.tunnelLog(number), number, p2mp ? p2mpHistoryCapacity : p2pHistoryCapacity);
   }
   if (chance(90))
      addSubTunnel({id, 0}, p2mp, number);
   if (split)
      for (std::uint32_t subTunnel : {10u, 2u, 1u})
         if (chance(70))
            addSubTunnel({id, subTunnel}, p2mp, 100 * number + subTunnel);
}

void RandomState::addConfig(RsvpLerTunnelSpecId const& id, RsvpSessionType sessionType) {
   router.superTunnelConfig(id, [&](RsvpLerSuperTunnelConfig& config) {
      config.sessionType = sessionType;
      config.source = anyAddress();
      for (std::uint32_t i = random_.below(3); i > 0; --i)
         config.destination.insert(anyAddress());
      for (std::uint32_t i = random_.below(4); i > 0; --i)
         config.aliasTeps.insert(anyAddress());
      config.metric = random_.below(100);
      config.metricFromIgp = chance(50);
      config.primaryPathSpecId = anyPathSpec();
      config.configuredBandwidth = bandwidth();
      config.signalBandwidth = chance(50);
      config.splitBwEnabled = chance(50);
      config.quantum = bandwidth();
      config.minBandwidth = bandwidth();
      config.maxBandwidth = bandwidth();
      config.reductionDelay = duration();
      config.subTunnelLimit = random_.below(9);
      config.setupPriority = static_cast<std::uint8_t>(random_.below(8));
      config.frrMode = anyOf<Cli::FrrMode>(3);
      config.ldpTunneling = chance(50);
      config.ldpTunnelingUcmp = chance(50);
      config.igpShortcut = chance(50);
      config.optimizationInterval = random_.below(2) * random_.below(10000);
      config.profileState = anyOf<RsvpLerTunnelProfileState>(4);
   });
}

void RandomState::addStatus(RsvpLerTunnelSpecId const& id, RsvpSessionType sessionType, bool split) {
   router.superTunnelStatus(id, [&](RsvpLerSuperTunnelStatus& status) {
      status.isP2mp = sessionType != RsvpSessionType::p2p;
      status.sessionId = {static_cast<std::uint8_t>(random_.below(2)), anyAddress(), 1, anyAddress()};
      status.state = anyOf<RsvpLerTunnelState>(3);
      if (chance(50))
         status.color = random_.below(1000);
      status.currentBandwidth = bandwidth();
      status.split = split;
      status.igpMetric = random_.below(100);
      for (std::uint32_t i = random_.below(4); i > 0; --i)
         status.subLspState.insert(RsvpDstId{anyAddress()}, anyOf<RsvpLspState>(3));
   });
}

void RandomState::addAutoBw(RsvpLerTunnelSpecId const& id) {
   if (chance(60))
      router.autoBwConfig(id, [&](RsvpLerTunnelAutoBwConfig& config) {
         config.enabled = chance(80);
         config.adjustmentPeriod = duration();
         config.minBandwidth = bandwidth();
         config.maxBandwidth = bandwidth();
      });
   if (chance(5))
      router.fathomStatus->autoBwConfig.get()->markDamaged(id, "bad checksum");
   auto const moment = [&] {
      return chance(50) ? Vane::Optional<Brindle::Duration>(duration()) : Vane::Optional<Brindle::Duration>();
   };
   if (chance(60))
      router.bwSamplingStats(id, [&](RsvpLerBwSamplingStats& stats) {
         stats.nextAdjustmentTime = moment();
         stats.subTunnelBwSamplingStats.insert({id, 1}, {moment()});
      });
   if (chance(60))
      router.bwSamplingStatus(id, [&](RsvpLerBwSamplingStatus& status) {
         status.lastSampledBandwidth = bandwidth();
         status.subTunnelBwSamplingStatus.insert({id, 2}, {bandwidth()});
      });
}

void RandomState::addSubTunnel(RsvpLerSubTunnelConfigId const& id, bool p2mp, std::uint32_t logIndex) {
   if (chance(80))
      router.subTunnelConfig(id, [&](RsvpLerSubTunnelConfig& config) {
         config.primaryPathSpecId = anyPathSpec();
         config.secondaryPathSpecId = anyPathSpec();
         config.secondaryPreSignaled = chance(50);
      });
   bool const active = chance(85);
   bool const pending = chance(40);
   router.subTunnelStatus(id, [&](RsvpLerSubTunnelStatus& status) {
      status.state = anyOf<RsvpLerTunnelState>(3);
      if (active)
         status.activeMbbTunnelConfigId = {id, 1};
      if (pending)
         status.pendingMbbTunnelConfigId = {id, 2};
      status.currentBandwidth = bandwidth();
      if (chance(70))
         status.sessionCliId = random_.below(100);
   });
   if (active)
      addInstance({id, 1}, p2mp);
   if (pending)
      addInstance({id, 2}, p2mp);
   if (id.isSplit() && chance(70)) {
      router.subTunnelIndex(id, logIndex);
      addLog(*router.subTunnelLog(logIndex), logIndex, p2pHistoryCapacity);
   }
}

void RandomState::addInstance(RsvpLerMbbTunnelConfigId const& id, bool p2mp) {
   if (chance(80))
      router.mbbTunnelConfig(id, bandwidth());
   if (chance(85))
      router.mbbTunnelStatus(id, chance(90) ? RsvpLerLspGroupId{id, static_cast<std::uint8_t>(random_.below(2))}
                                            : RsvpLerLspGroupId());
   addGroup({id, 0}, p2mp);
   if (!p2mp && chance(60))
      addGroup({id, 1}, p2mp);
}

void RandomState::addGroup(RsvpLerLspGroupId const& id, bool p2mp) {
   bool const active = chance(90);
   bool const pending = chance(30);
   if (chance(90))
      router.lspGroupStatus(id, [&](RsvpLerLspGroupStatus& group) {
         group.isP2mp = p2mp;
         group.lspGroupState = anyOf<RsvpLerLspGroupState>(5);
         for (std::uint32_t i = random_.below(3); i > 0; --i)
            group.nextHop.insert(anyAddress(), {Lattice::IntfId(chance(80) ? "eth1" : ""),
                                                chance(70) ? Vane::Optional<std::uint32_t>(1500 + random_.below(2))
                                                           : Vane::Optional<std::uint32_t>()});
         if (active)
            group.activeLspRequestConfigId = {id, 1};
         if (pending)
            group.pendingLspRequestConfigId = {id, 2};
         if (chance(60))
            group.pathMtu = 1500;
      });
   if (chance(60))
      router.cspfPathKey(id, [&](RsvpLerCspfPathKey& key) {
         key.kind = static_cast<std::uint8_t>(random_.below(3));
         key.pathId = random_.below(100);
         key.treeId = random_.below(100);
      });
   if (active)
      addRequest({id, 1}, p2mp);
   if (pending)
      addRequest({id, 2}, p2mp);
}

void RandomState::addRequest(RsvpLerLspRequestConfigId const& id, bool p2mp) {
   if (chance(90))
      router.lspRequestConfig(id, [&](RsvpLerLspRequestConfig& config) {
         config.sessionType = p2mp ? RsvpSessionType::p2mp : RsvpSessionType::p2p;
         config.bandwidth = bandwidth();
         if (chance(20))
            return;
         auto const tree = Brindle::makeNode<RsvpLerTree>();
         for (std::uint32_t leaves = random_.below(4); leaves > 0; --leaves) {
            RsvpPathWithVersion path(1);
            path.hops =
                  Fathom::Vector<Lattice::IpGenAddr>(std::vector<Lattice::IpGenAddr>(random_.below(5), anyAddress()));
            tree->paths.insert(RsvpDstId{anyAddress()}, path);
         }
         config.tree = tree;
      });
   if (chance(90))
      router.lspRequestStatus(id, [&](RsvpLerLspRequestStatus& status) {
         status.lspState = anyOf<RsvpLerLspState>(6);
         if (chance(70))
            status.lspId = static_cast<std::uint16_t>(random_.below(100));
         for (std::uint32_t i = random_.below(3); i > 0; --i)
            status.subLspState.insert(RsvpDstId{anyAddress()}, anyOf<RsvpLspState>(3));
         for (std::uint32_t i = random_.below(3); i > 0; --i)
            status.errors.set({24, static_cast<std::uint16_t>(random_.below(8)), anyAddress()}, {});
      });
}

void RandomState::addLog(RsvpLerTunnelHistoryEntryColl& log, std::uint32_t index, std::uint32_t capacity) {
   log.lastEntryIndex = random_.below(capacity);
   for (std::uint32_t i = random_.below(20); i > 0; --i) {
      RsvpLerTunnelHistoryEntry entry;
      entry.key = {index, random_.below(capacity)};
      entry.timestamp = Brindle::Duration(1700000000 + random_.below(3));
      entry.data = anyEvent(random_, anyAddress());
      if (chance(50))
         entry.hops = hops({"10.1.1.2", "10.0.0.9"});
      log.entries.set(entry.key, entry);
   }
}

} // namespace Tests
