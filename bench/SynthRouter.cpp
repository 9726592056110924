#include "bench/SynthRouter.h"

#include "host/synth/Random.h"
#include "host/synth/SynthTunnel.h"
#include "host/synth/Tables.h"
#include "vane/System.h"

#include <string>
#include <vector>

namespace Bench {

namespace {

using namespace Host::Synth;
using namespace Rsvp;

Lattice::IpGenAddr toAddress(Ipv4 ip) {
   auto const octet = [&](unsigned shift) { return static_cast<std::uint8_t>(ip.bits >> shift); };
   return Lattice::IpAddr(octet(24), octet(16), octet(8), octet(0));
}

Fathom::Vector<Lattice::IpGenAddr> toHops(Path const& path) {
   std::vector<Lattice::IpGenAddr> hops;
   for (Ipv4 const hop : path)
      hops.push_back(toAddress(hop));
   return Fathom::Vector<Lattice::IpGenAddr>(std::move(hops));
}

// One group of an instance, with the requests it holds.
struct Group {
   SubTunnel const& subTunnel;
   RsvpLerLspGroupId id;
   bool pendingInstance;

   bool down() const {
      return subTunnel.health == Health::down || (subTunnel.health == Health::onSecondary && id.groupId == 0);
   }
   bool replaced() const { return subTunnel.health == Health::newRequest && id.groupId == 0; }
   std::uint32_t requests() const { return replaced() ? 2 : 1; }
};

class Builder {
public:
   Builder(Tests::Router& router, std::uint64_t tunnels) : router_(router) {
      for (std::uint64_t number = 0; number < tunnels; ++number)
         names_.push_back(nameOf(SynthTunnel(0, number)));
   }

   // The rows of one table.
   template<class AddRows>
   void table(AddRows addRows) {
      for (std::uint64_t number = 0; number < names_.size(); ++number) {
         SynthTunnel const tunnel(0, number);
         id_ = {names_[number],
                tunnel.key.text().ends_with("\"mvpn\"") ? RsvpLerTunnelSource::mvpn : RsvpLerTunnelSource::cli};
         addRows(tunnel);
      }
   }
   template<class AddRows>
   void statusTable(AddRows addRows) {
      table([&](SynthTunnel const& tunnel) {
         if (!tunnel.configuredOnly)
            addRows(tunnel);
      });
   }
   template<class AddRow>
   void groupTable(AddRow addRow) {
      statusTable([&](SynthTunnel const& tunnel) {
         for (SubTunnel const& sub : tunnel) {
            RsvpLerMbbTunnelConfigId const active = instance(sub, 0);
            addRow(tunnel, Group{sub, {active, 0}, false});
            if (sub.secondaryGroup)
               addRow(tunnel, Group{sub, {active, 1}, false});
            if (sub.health == Health::newInstance)
               addRow(tunnel, Group{sub, {instance(sub, 1), 0}, true});
         }
      });
   }

   void tunnelTables();
   void subTunnelTables();
   void groupTables();
   void configTables();

private:
   static Fathom::String nameOf(SynthTunnel const& tunnel) {
      // {"name":"pe12-pe340-7","source":...
      std::string_view const text = tunnel.key.text().substr(9);
      return Fathom::String(text.substr(0, text.find('"')));
   }
   RsvpLerSubTunnelConfigId subTunnel(SubTunnel const& sub) const { return {id_, sub.id}; }
   RsvpLerMbbTunnelConfigId instance(SubTunnel const& sub, std::uint32_t later) const {
      return {subTunnel(sub), sub.epoch() + later};
   }
   RsvpLerPathSpecId const& pathSpec(bool explicitPath, std::uint64_t draw) const {
      return pathSpecs_[explicitPath ? 1 + draw % pathSpecCount : 0];
   }
   template<class Record>
   void setPathSpecs(Record& record, SynthTunnel const& tunnel) const {
      record.primaryPathSpecId = pathSpec(tunnel.explicitPath, tunnel.draw);
      if (tunnel.hasSecondary)
         record.secondaryPathSpecId = pathSpec(!tunnel.explicitPath, tunnel.draw >> 16);
   }
   void setConfig(RsvpLerSuperTunnelConfig& config, SynthTunnel const& tunnel) const;
   static void setLeaves(Vane::FlatMap<RsvpDstId, RsvpLspState>& leaves, SynthTunnel const& tunnel);
   Brindle::Ptr<RsvpLerTree const> tree(SynthTunnel const& tunnel, Group const& group, std::uint32_t request) const;

   Tests::Router& router_;
   std::vector<Fathom::String> names_;
   std::vector<RsvpLerPathSpecId> pathSpecs_;
   RsvpLerTunnelSpecId id_; // of the tunnel whose rows are being added
};

void Builder::setConfig(RsvpLerSuperTunnelConfig& config, SynthTunnel const& tunnel) const {
   Random random(tunnel.draw + 1);
   config.sessionType = tunnel.p2mp() ? RsvpSessionType::p2mp : RsvpSessionType::p2p;
   config.source = toAddress(edgeLoopback(tunnel.headEnd));
   config.destination.insert(toAddress(edgeLoopback(tunnel.destination)));
   if (!tunnel.p2mp() && random.oneIn(10))
      config.aliasTeps.insert(toAddress({edgeLoopback(tunnel.destination).bits + 1}));
   config.metric = 1 + random.below(100);
   config.metricFromIgp = tunnel.metricFromIgp;
   setPathSpecs(config, tunnel);
   config.configuredBandwidth = tunnel.bandwidth;
   config.signalBandwidth = true;
   config.splitBwEnabled = tunnel.split();
   config.quantum = random.oneIn(2) ? 100 * megabit : 0;
   config.minBandwidth = 10 * megabit;
   config.maxBandwidth = 1000 * megabit;
   config.reductionDelay = Brindle::Duration(600);
   config.subTunnelLimit = 16;
   config.setupPriority = static_cast<std::uint8_t>(random.below(8));
   config.frrMode = static_cast<Cli::FrrMode>(random.below(3));
   config.ldpTunneling = random.oneIn(2);
   config.optimizationInterval = 3600;
   if (tunnel.profile)
      config.profileState = RsvpLerTunnelProfileState::applied;
}

void Builder::setLeaves(Vane::FlatMap<RsvpDstId, RsvpLspState>& leaves, SynthTunnel const& tunnel) {
   for (std::uint32_t i = 0; i < tunnel.leafCount; ++i) {
      Leaf const& leaf = tunnel.leaves[i];
      if (!leaf.withoutPath)
         leaves.insert({toAddress(edgeLoopback(leaf.edge))}, leaf.up ? RsvpLspState::up : RsvpLspState::down);
   }
}

void Builder::tunnelTables() {
   router_.cliConfig->mtuSignalingEnabled = true;
   pathSpecs_.push_back({"dynamic", RsvpLerTunnelSource::defaultSource});
   router_.pathSpecConfig(pathSpecs_[0], RsvpLerPathSpecType::dynamicPath);
   for (std::uint32_t i = 1; i <= pathSpecCount; ++i) {
      pathSpecs_.push_back(Tests::pathSpecId("via-" + std::to_string(i)));
      router_.pathSpecConfig(pathSpecs_[i], RsvpLerPathSpecType::explicitPath);
   }
   table([&](SynthTunnel const& tunnel) {
      router_.tunnelSpec(id_, [&](RsvpLerTunnelSpec& spec) {
         setPathSpecs(spec, tunnel);
         if (tunnel.profile)
            spec.profile = {Fathom::String("profile-" + std::to_string(1 + tunnel.draw % 9)), RsvpLerTunnelSource::cli};
      });
   });
   statusTable([&](SynthTunnel const& tunnel) {
      if (!tunnel.autoBandwidth)
         return;
      auto const next = Brindle::Duration(static_cast<double>(uptimeMilliseconds + tunnel.draw % 300000) / 1000);
      router_.bwSamplingStats(id_, [&](RsvpLerBwSamplingStats& stats) {
         stats.nextAdjustmentTime = next;
         for (SubTunnel const& sub : tunnel)
            stats.subTunnelBwSamplingStats.insert(subTunnel(sub), {next});
      });
   });
   statusTable([&](SynthTunnel const& tunnel) {
      if (!tunnel.autoBandwidth)
         return;
      router_.bwSamplingStatus(id_, [&](RsvpLerBwSamplingStatus& status) {
         status.lastSampledBandwidth = tunnel.bandwidth / 2;
         for (SubTunnel const& sub : tunnel)
            status.subTunnelBwSamplingStatus.insert(subTunnel(sub), {sub.heldBandwidth() / 2});
      });
   });
   statusTable([&](SynthTunnel const& tunnel) { router_.tunnelIndex(id_, tunnel.index); });
   statusTable([&](SynthTunnel const& tunnel) {
      for (SubTunnel const& sub : tunnel) {
         if (tunnel.split())
            router_.subTunnelIndex(subTunnel(sub), sub.index);
      }
   });
   statusTable([&](SynthTunnel const& tunnel) {
      router_.superTunnelStatus(id_, [&](RsvpLerSuperTunnelStatus& status) {
         status.isP2mp = tunnel.p2mp();
         status.sessionId.type = tunnel.p2mp() ? 1 : 0;
         status.sessionId.address = toAddress(tunnel.p2mp() ? Ipv4{tunnel.index} : edgeLoopback(tunnel.destination));
         status.state = tunnel.up ? RsvpLerTunnelState::up : RsvpLerTunnelState::down;
         if (tunnel.colored)
            status.color = static_cast<std::uint32_t>(100 * (1 + tunnel.draw % 9));
         status.currentBandwidth = tunnel.bandwidth;
         status.split = tunnel.split();
         status.igpMetric = static_cast<std::uint32_t>(10 + tunnel.draw % 1000);
         setLeaves(status.subLspState, tunnel);
      });
   });
}

void Builder::subTunnelTables() {
   statusTable([&](SynthTunnel const& tunnel) {
      for (SubTunnel const& sub : tunnel) {
         router_.subTunnelConfig(subTunnel(sub), [&](RsvpLerSubTunnelConfig& config) {
            setPathSpecs(config, tunnel);
            config.secondaryPreSignaled = tunnel.preSignaled;
         });
      }
   });
   statusTable([&](SynthTunnel const& tunnel) {
      for (SubTunnel const& sub : tunnel) {
         router_.subTunnelStatus(subTunnel(sub), [&](RsvpLerSubTunnelStatus& status) {
            status.state = sub.up() ? RsvpLerTunnelState::up : RsvpLerTunnelState::down;
            status.activeMbbTunnelConfigId = instance(sub, 0);
            if (sub.health == Health::newInstance)
               status.pendingMbbTunnelConfigId = instance(sub, 1);
            status.currentBandwidth = sub.heldBandwidth();
            if (!tunnel.p2mp())
               status.sessionCliId = sub.index;
         });
      }
   });
   statusTable([&](SynthTunnel const& tunnel) {
      for (SubTunnel const& sub : tunnel) {
         router_.mbbTunnelConfig(instance(sub, 0), sub.bandwidth);
         if (sub.health == Health::newInstance)
            router_.mbbTunnelConfig(instance(sub, 1), sub.nextBandwidth);
      }
   });
   statusTable([&](SynthTunnel const& tunnel) {
      for (SubTunnel const& sub : tunnel) {
         std::uint8_t const inUse = sub.health == Health::onSecondary ? 1 : 0;
         router_.mbbTunnelStatus(instance(sub, 0),
                                 sub.up() ? RsvpLerLspGroupId{instance(sub, 0), inUse} : RsvpLerLspGroupId());
         if (sub.health == Health::newInstance)
            router_.mbbTunnelStatus(instance(sub, 1), {});
      }
   });
}

Brindle::Ptr<RsvpLerTree const> Builder::tree(SynthTunnel const& tunnel, Group const& group,
                                              std::uint32_t request) const {
   auto tree = Brindle::makeNode<RsvpLerTree>();
   auto const add = [&](std::uint32_t edge, Fathom::Vector<Lattice::IpGenAddr> hops) {
      RsvpPathWithVersion path(1);
      path.hops = std::move(hops);
      tree->paths.insert({toAddress(edgeLoopback(edge))}, std::move(path));
   };
   if (!tunnel.p2mp())
      add(tunnel.destination, toHops(tunnel.path(group.subTunnel, group.id.groupId, request)));
   for (std::uint32_t i = 0; i < tunnel.leafCount; ++i) {
      Leaf const& leaf = tunnel.leaves[i];
      if (!leaf.removing)
         add(leaf.edge,
             leaf.withoutPath ? Fathom::Vector<Lattice::IpGenAddr>() : toHops(leafPath(tunnel.headEnd, leaf.edge)));
   }
   return tree;
}

void Builder::groupTables() {
   groupTable([&](SynthTunnel const& tunnel, Group const& group) {
      router_.lspGroupStatus(group.id, [&](RsvpLerLspGroupStatus& status) {
         status.isP2mp = tunnel.p2mp();
         status.lspGroupState = group.down() ? RsvpLerLspGroupState::down : RsvpLerLspGroupState::up;
         Path const path = tunnel.path(group.subTunnel, group.id.groupId, 1);
         if (!group.down())
            status.nextHop.insert(toAddress(path.hops[0]), {Lattice::IntfId("eth1"), 9000});
         status.activeLspRequestConfigId = {group.id, 1};
         if (group.replaced())
            status.pendingLspRequestConfigId = {group.id, 2};
         if (!group.down() && !group.pendingInstance)
            status.pathMtu = group.subTunnel.draw % 10 == 0 ? 1500 : 9000;
      });
   });
   groupTable([&](SynthTunnel const& tunnel, Group const& group) {
      for (std::uint32_t request = 1; request <= group.requests(); ++request) {
         router_.lspRequestConfig({group.id, request}, [&](RsvpLerLspRequestConfig& config) {
            config.sessionType = tunnel.p2mp() ? RsvpSessionType::p2mp : RsvpSessionType::p2p;
            config.tree = tree(tunnel, group, request);
            config.bandwidth = group.pendingInstance ? group.subTunnel.nextBandwidth : group.subTunnel.bandwidth;
         });
      }
   });
   groupTable([&](SynthTunnel const& tunnel, Group const& group) {
      for (std::uint32_t request = 1; request <= group.requests(); ++request) {
         router_.lspRequestStatus({group.id, request}, [&](RsvpLerLspRequestStatus& status) {
            status.lspState = group.down() ? RsvpLerLspState::down : RsvpLerLspState::up;
            status.lspId = static_cast<std::uint16_t>(group.id.groupId == 1 ? 2 : group.subTunnel.primaryLspId());
            if (group.down() || group.subTunnel.draw % 50 == 0)
               status.errors.set({24, 5, toAddress(coreLoopback(group.subTunnel.draw % coreRouterCount))}, {});
            if (tunnel.p2mp())
               setLeaves(status.subLspState, tunnel);
         });
      }
   });
   std::uint32_t number = 0;
   groupTable([&](SynthTunnel const& tunnel, Group const& group) {
      router_.cspfPathKey(group.id, [&](RsvpLerCspfPathKey& key) {
         key.kind = tunnel.p2mp() ? RsvpLerCspfPathKey::kindTree : RsvpLerCspfPathKey::kindPath;
         (tunnel.p2mp() ? key.treeId : key.pathId) = ++number;
      });
   });
}

void Builder::configTables() {
   table([&](SynthTunnel const& tunnel) {
      router_.superTunnelConfig(id_, [&](RsvpLerSuperTunnelConfig& config) { setConfig(config, tunnel); });
   });
   table([&](SynthTunnel const& tunnel) {
      if (!tunnel.autoBandwidth)
         return;
      router_.autoBwConfig(id_, [](RsvpLerTunnelAutoBwConfig& config) {
         config.enabled = true;
         config.adjustmentPeriod = Brindle::Duration(300);
         config.minBandwidth = 10 * megabit;
         config.maxBandwidth = 1000 * megabit;
      });
   });
}

} // namespace

std::unique_ptr<Tests::Router> synthRouter(std::uint64_t tunnels) {
   Vane::System::fixClocks(Brindle::Duration(static_cast<double>(uptimeMilliseconds) / 1000),
                           Brindle::Duration(static_cast<double>(utcMilliseconds) / 1000));
   auto router = std::make_unique<Tests::Router>();
   Builder builder(*router, tunnels);
   builder.tunnelTables();
   builder.subTunnelTables();
   builder.groupTables();
   builder.configTables();
   return router;
}

} // namespace Bench
