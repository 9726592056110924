#include "host/synth/Tables.h"

// One tunnel's rows in the tables of tunnels, sub-tunnels and instances.

namespace Host::Synth {
namespace {

constexpr std::string_view stateWord(bool up) noexcept {
   return up ? "\"up\"" : "\"down\"";
}

// A sample below what is held, by the seed alone.
std::uint64_t sampled(SubTunnel const& subTunnel) noexcept {
   return subTunnel.heldBandwidth() / 100 * (50 + subTunnel.draw % 50);
}

Milliseconds nextAdjustment(SubTunnel const& subTunnel) noexcept {
   return {uptimeMilliseconds + 1 + subTunnel.draw % 300000};
}

// Session number 1000000 means none.
std::uint64_t sessionNumber(SubTunnel const& subTunnel) noexcept {
   return subTunnel.index < 1000000 ? subTunnel.index : subTunnel.index + 1ull;
}

void writeInstanceIds(Sink& sink, SynthTunnel const& tunnel, SubTunnel const& subTunnel) {
   KeyText const key = tunnel.key.subTunnel(subTunnel.id);
   sink.put(",\"activeMbbTunnelConfigId\":", key.instance(subTunnel.epoch()));
   if (subTunnel.health == Health::newInstance) {
      sink.put(",\"pendingMbbTunnelConfigId\":", key.instance(subTunnel.epoch() + 1));
   }
}

} // namespace

void writeAutoBwStats(Rows& rows, SynthTunnel const& tunnel) {
   if (!tunnel.autoBandwidth || tunnel.configuredOnly) {
      return;
   }
   Sink& sink = rows.next();
   sink.put("{\"tunnelSpecId\":", tunnel.key, ",\"nextAdjustmentTime\":", nextAdjustment(tunnel.subTunnels[0]));
   if (tunnel.split()) {
      Commas commas;
      sink.put(",\"subTunnelBwSamplingStats\":[");
      for (SubTunnel const& subTunnel : tunnel) {
         sink.put(commas.next(), "{\"subTunnelConfigId\":", tunnel.key.subTunnel(subTunnel.id),
                  ",\"nextAdjustmentTime\":", nextAdjustment(subTunnel), "}");
      }
      sink.put("]");
   }
   sink.put("}");
}

void writeBwSamplingStatus(Rows& rows, SynthTunnel const& tunnel) {
   if (!tunnel.autoBandwidth || tunnel.configuredOnly) {
      return;
   }
   Sink& sink = rows.next();
   std::uint64_t sum = 0;
   for (SubTunnel const& subTunnel : tunnel) {
      sum += sampled(subTunnel);
   }
   sink.put("{\"tunnelSpecId\":", tunnel.key, ",\"lastSampledBandwidth\":", sum);
   if (tunnel.split()) {
      Commas commas;
      sink.put(",\"subTunnelBwSamplingStatus\":[");
      for (SubTunnel const& subTunnel : tunnel) {
         sink.put(commas.next(), "{\"subTunnelConfigId\":", tunnel.key.subTunnel(subTunnel.id),
                  ",\"lastSampledBandwidth\":", sampled(subTunnel), "}");
      }
      sink.put("]");
   }
   sink.put("}");
}

void writeTunnelIndex(Rows& rows, SynthTunnel const& tunnel) {
   if (!tunnel.configuredOnly) {
      rows.next().put("{\"tunnelSpecId\":", tunnel.key, ",\"tunnelIndex\":", tunnel.index, "}");
   }
}

void writeSubTunnelIndexes(Rows& rows, SynthTunnel const& tunnel) {
   if (!tunnel.split() || tunnel.configuredOnly) {
      return;
   }
   for (SubTunnel const& subTunnel : tunnel) {
      rows.next().put("{\"subTunnelConfigId\":", tunnel.key.subTunnel(subTunnel.id),
                      ",\"tunnelIndex\":", subTunnel.index, "}");
   }
}

void writeSubLspState(Sink& sink, SynthTunnel const& tunnel) {
   Commas commas;
   sink.put(",\"subLspState\":{");
   for (std::uint32_t i = 0; i < tunnel.leafCount; i++) {
      Leaf const& leaf = tunnel.leaves[i];
      if (!leaf.withoutPath) {
         sink.put(commas.next(), edgeLoopback(leaf.edge), ":", stateWord(leaf.up));
      }
   }
   sink.put("}");
}

void writeSuperTunnelStatus(Rows& rows, SynthTunnel const& tunnel) {
   if (tunnel.configuredOnly) {
      return;
   }
   Sink& sink = rows.next();
   // The address of a P2MP session is the number of the tree.
   Ipv4 const address = tunnel.p2mp() ? Ipv4{tunnel.index} : edgeLoopback(tunnel.destination);
   sink.put("{\"tunnelSpecId\":", tunnel.key, ",\"isP2mp\":", tunnel.p2mp(),
            ",\"sessionId\":{\"type\":", tunnel.p2mp() ? 1u : 0u, ",\"address\":", address,
            ",\"id\":", 1 + (tunnel.index - 1) % 65535, ",\"extendedAddress\":", edgeLoopback(tunnel.headEnd), "}");
   sink.put(",\"state\":", stateWord(tunnel.up));
   if (tunnel.colored) {
      sink.put(",\"color\":", 100 * (1 + tunnel.draw % 9));
   }
   sink.put(",\"currentBandwidth\":", tunnel.bandwidth, ",\"split\":", tunnel.split(),
            ",\"igpMetric\":", 10 + tunnel.draw % 1000);
   if (tunnel.p2mp()) {
      writeSubLspState(sink, tunnel);
   }
   sink.put("}");
}

void writeSubTunnelStatuses(Rows& rows, SynthTunnel const& tunnel) {
   if (tunnel.configuredOnly) {
      return;
   }
   Sink& sink = rows.next();
   Commas commas;
   sink.put("{\"tunnelSpecId\":", tunnel.key, ",\"subTunnelStatusColl\":[");
   for (SubTunnel const& subTunnel : tunnel) {
      sink.put(commas.next(), "{\"subTunnelConfigId\":", tunnel.key.subTunnel(subTunnel.id),
               ",\"state\":", stateWord(subTunnel.up()));
      writeInstanceIds(sink, tunnel, subTunnel);
      sink.put(",\"currentBandwidth\":", subTunnel.heldBandwidth());
      if (!tunnel.p2mp()) {
         sink.put(",\"sessionCliId\":", sessionNumber(subTunnel));
      }
      sink.put("}");
   }
   sink.put("]}");
}

void writeMbbTunnelConfigs(Rows& rows, SynthTunnel const& tunnel) {
   if (tunnel.configuredOnly) {
      return;
   }
   for (SubTunnel const& subTunnel : tunnel) {
      KeyText const key = tunnel.key.subTunnel(subTunnel.id);
      Sink& sink = rows.next();
      sink.put("{\"subTunnelConfigId\":", key,
               ",\"mbbTunnelConfigColl\":[{\"mbbTunnelConfigId\":", key.instance(subTunnel.epoch()),
               ",\"requestedBandwidth\":", subTunnel.bandwidth, "}");
      if (subTunnel.health == Health::newInstance) {
         sink.put(",{\"mbbTunnelConfigId\":", key.instance(subTunnel.epoch() + 1),
                  ",\"requestedBandwidth\":", subTunnel.nextBandwidth, "}");
      }
      sink.put("]}");
   }
}

void writeMbbTunnelStatuses(Rows& rows, SynthTunnel const& tunnel) {
   if (tunnel.configuredOnly) {
      return;
   }
   for (SubTunnel const& subTunnel : tunnel) {
      KeyText const key = tunnel.key.subTunnel(subTunnel.id);
      KeyText const active = key.instance(subTunnel.epoch());
      Sink& sink = rows.next();
      sink.put("{\"subTunnelConfigId\":", key, ",\"mbbTunnelStatusColl\":[{\"mbbTunnelConfigId\":", active);
      if (subTunnel.up()) {
         sink.put(",\"activeLspGroupId\":", active.group(subTunnel.health == Health::onSecondary ? 1 : 0));
      }
      sink.put("}");
      if (subTunnel.health == Health::newInstance) {
         sink.put(",{\"mbbTunnelConfigId\":", key.instance(subTunnel.epoch() + 1), "}");
      }
      sink.put("]}");
   }
}

} // namespace Host::Synth
