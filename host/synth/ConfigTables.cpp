#include "host/synth/Random.h"
#include "host/synth/Tables.h"

// One tunnel's rows in the tables of what was configured.

namespace Host::Synth {
namespace {

void writePathSpecId(Sink& sink, std::string_view member, bool explicitPath, std::uint64_t draw) {
   if (explicitPath) {
      auto const number = static_cast<std::uint32_t>(1 + draw % pathSpecCount);
      sink.put(",\"", member, "\":{\"name\":\"via-", number, "\",\"source\":\"cli\"}");
   } else {
      sink.put(",\"", member, "\":{\"name\":\"dynamic\",\"source\":\"default\"}");
   }
}

void writeDestinations(Sink& sink, SynthTunnel const& tunnel) {
   Commas commas;
   sink.put(",\"destination\":[");
   if (!tunnel.p2mp()) {
      sink.put(edgeLoopback(tunnel.destination));
   }
   for (std::uint32_t i = 0; i < tunnel.leafCount; i++) {
      if (!tunnel.leaves[i].removing) {
         sink.put(commas.next(), edgeLoopback(tunnel.leaves[i].edge));
      }
   }
   sink.put("]");
}

void writeBandwidthConfig(Sink& sink, SynthTunnel const& tunnel, Random& random) {
   std::uint64_t wanted = 0;
   for (SubTunnel const& subTunnel : tunnel) {
      wanted += subTunnel.health == Health::newInstance ? subTunnel.nextBandwidth : subTunnel.bandwidth;
   }
   sink.put(",\"configuredBandwidth\":", tunnel.autoBandwidth ? 0 : wanted, ",\"signalBandwidth\":true");
   if (tunnel.split()) {
      bool const fixedQuantum = random.oneIn(2);
      sink.put(",\"splitBwEnabled\":true,\"quantum\":", fixedQuantum ? 100 * megabit : 0,
               ",\"minBandwidth\":", 10 * megabit, ",\"maxBandwidth\":", 1000 * megabit, ",\"reductionDelay\":600.0");
      sink.put(",\"subTunnelMinimum\":2,\"subTunnelLimit\":16,\"subTunnelInitial\":", tunnel.subTunnelCount);
   }
}

// The members ldpTunneling and so on, and how the profile resolved.
void writeUses(Sink& sink, SynthTunnel const& tunnel, Random& random) {
   constexpr std::string_view frrModes[] = {"none", "linkProtection", "nodeProtection"};
   // One draw a call: the order in which a call's arguments are worked out is the compiler's choice.
   std::uint32_t const setup = random.below(8);
   sink.put(",\"setupPriority\":", setup);
   sink.put(",\"holdPriority\":", random.below(setup + 1));
   sink.put(",\"frrMode\":\"", frrModes[random.below(3)], "\"");
   sink.put(",\"ldpTunneling\":", random.oneIn(2));
   sink.put(",\"ldpTunnelingUcmp\":", random.oneIn(10));
   sink.put(",\"igpShortcut\":", random.oneIn(2));
   sink.put(",\"optimizationInterval\":", random.oneIn(3) ? 0u : 3600u);
   if (tunnel.profile) {
      sink.put(",\"profileState\":",
               random.oneIn(20) ? std::string_view("\"notFound\"") : std::string_view("\"applied\""));
   }
}

} // namespace

void writePathSpecIds(Sink& sink, SynthTunnel const& tunnel) {
   writePathSpecId(sink, "primaryPathSpecId", tunnel.explicitPath, tunnel.draw);
   if (tunnel.hasSecondary) {
      writePathSpecId(sink, "secondaryPathSpecId", !tunnel.explicitPath, tunnel.draw >> 16);
   }
}

void writeSuperTunnelConfig(Rows& rows, SynthTunnel const& tunnel) {
   Sink& sink = rows.next();
   Random random(tunnel.draw + 1);
   sink.put("{\"tunnelSpecId\":", tunnel.key,
            ",\"sessionType\":", tunnel.p2mp() ? std::string_view("\"p2mp\"") : "\"p2p\"",
            ",\"source\":", edgeLoopback(tunnel.headEnd));
   writeDestinations(sink, tunnel);
   if (!tunnel.p2mp() && random.oneIn(10)) {
      sink.put(",\"aliasTeps\":[", Ipv4{edgeLoopback(tunnel.destination).bits + 2}, ",",
               Ipv4{edgeLoopback(tunnel.destination).bits + 1}, "]");
   }
   sink.put(",\"metric\":", 1 + random.below(100), ",\"metricFromIgp\":", tunnel.metricFromIgp);
   writePathSpecIds(sink, tunnel);
   writeBandwidthConfig(sink, tunnel, random);
   writeUses(sink, tunnel, random);
   sink.put("}");
}

void writeTunnelSpec(Rows& rows, SynthTunnel const& tunnel) {
   Sink& sink = rows.next();
   sink.put("{\"tunnelSpecId\":", tunnel.key);
   writePathSpecIds(sink, tunnel);
   if (tunnel.profile) {
      sink.put(",\"profile\":{\"name\":\"profile-", 1 + tunnel.draw % 9, "\",\"source\":\"cli\"}");
   }
   sink.put("}");
}

void writeAutoBwConfig(Rows& rows, SynthTunnel const& tunnel) {
   if (tunnel.autoBandwidth) {
      rows.next().put("{\"tunnelSpecId\":", tunnel.key,
                      ",\"enabled\":true,\"adjustmentPeriod\":300.0,\"minBandwidth\":", 10 * megabit,
                      ",\"maxBandwidth\":", 1000 * megabit, "}");
   }
}

void writeSubTunnelConfigs(Rows& rows, SynthTunnel const& tunnel) {
   if (tunnel.configuredOnly) {
      return;
   }
   Sink& sink = rows.next();
   Commas commas;
   sink.put("{\"tunnelSpecId\":", tunnel.key, ",\"subTunnelConfigColl\":[");
   for (SubTunnel const& subTunnel : tunnel) {
      sink.put(commas.next(), "{\"subTunnelConfigId\":", tunnel.key.subTunnel(subTunnel.id));
      writePathSpecIds(sink, tunnel);
      sink.put(",\"secondaryPreSignaled\":", tunnel.preSignaled, "}");
   }
   sink.put("]}");
}

} // namespace Host::Synth
