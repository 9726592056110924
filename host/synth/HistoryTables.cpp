#include "host/synth/EventLog.h"

// The logs of P2P tunnels and of sub-tunnels. They end where the records of the other tables stand: the last LSP named
// is the last one that there is, and the last state is the tunnel's.

namespace Host::Synth {
namespace {

void compute(EventLog& log, Path const& path, std::uint32_t group, std::uint32_t count) {
   log.event("\"kind\":\"cspfQuery\",\"count\":", count, ",\"groupId\":", group);
   log.wait(25);
   log.eventWithHops(path, "\"kind\":\"cspfReply\",\"count\":", count, ",\"groupId\":", group);
   log.wait(1);
}

void tunnelUp(EventLog& log, std::uint32_t group) {
   log.event("\"kind\":\"tunnelState\",\"state\":\"up\",\"groupId\":", group);
}

void comeUp(EventLog& log, std::uint32_t lspId) {
   log.wait(12);
   log.lspState(lspId, "establishing");
   log.wait(140);
   log.lspState(lspId, "up");
   log.wait(2);
}

void firstPath(EventLog& log, SynthTunnel const& tunnel, SubTunnel const& subTunnel) {
   log.event("\"kind\":\"creation\"");
   log.wait(1);
   log.event("\"kind\":\"bandwidthConfig\",\"bandwidth\":", subTunnel.bandwidth, ",\"autoBw\":", tunnel.autoBandwidth);
   log.wait(8);
   compute(log, tunnel.path(subTunnel, 0, 1), 0, 1);
   log.event("\"kind\":\"lspAdd\",\"lspId\":1");
   comeUp(log, 1);
   log.event("\"kind\":\"lspInUse\",\"lspId\":1");
   log.event("\"kind\":\"bandwidth\",\"bandwidth\":", subTunnel.bandwidth);
   tunnelUp(log, 0);
}

void secondaryPath(EventLog& log, SynthTunnel const& tunnel, SubTunnel const& subTunnel) {
   log.wait(90);
   compute(log, tunnel.path(subTunnel, 1, 1), 1, 1);
   log.event("\"kind\":\"lspAdd\",\"lspId\":2");
   comeUp(log, 2);
}

// The replacement number `number`, from 1 on, up to its last step or only to its beginning.
void replacement(EventLog& log, SynthTunnel const& tunnel, SubTunnel const& subTunnel, std::uint32_t number,
                 bool whole) {
   std::uint32_t const lspId = lspIdAfter(number);
   std::uint32_t const replaced = lspIdAfter(number - 1);
   compute(log, tunnel.path(subTunnel, 0, 1 + number), 0, 1 + number);
   log.event("\"kind\":\"lspAdd\",\"lspId\":", lspId, ",\"replacedLspId\":", replaced);
   if (!whole) {
      log.wait(12);
      log.lspState(lspId, "unverified");
      return;
   }
   comeUp(log, lspId);
   log.event("\"kind\":\"lspInUse\",\"lspId\":", lspId, ",\"replacedLspId\":", replaced);
   log.event("\"kind\":\"lspNoLongerInUse\",\"lspId\":", replaced);
   log.wait(60000);
   log.event("\"kind\":\"lspDel\",\"lspId\":", replaced);
}

void primaryFails(EventLog& log, SynthTunnel const& tunnel, SubTunnel const& subTunnel) {
   Path const path = tunnel.path(subTunnel, 0, subTunnel.epoch());
   log.lspError(subTunnel.primaryLspId(), 24, 5, coreLoopback(path.cores[0]));
   log.lspState(subTunnel.primaryLspId(), "down");
   if (subTunnel.health == Health::onSecondary) {
      log.event("\"kind\":\"lspInUse\",\"lspId\":2,\"replacedLspId\":", subTunnel.primaryLspId());
      tunnelUp(log, 1);
   } else {
      if (subTunnel.secondaryGroup) {
         log.lspState(2, "down");
      }
      log.event("\"kind\":\"tunnelState\",\"state\":\"down\"");
   }
}

void writeLife(EventLog& log, SynthTunnel const& tunnel, SubTunnel const& subTunnel, std::uint64_t span) {
   std::uint64_t const pause = span / (subTunnel.replacements + 2);
   firstPath(log, tunnel, subTunnel);
   if (subTunnel.secondaryGroup) {
      secondaryPath(log, tunnel, subTunnel);
   }
   for (std::uint32_t number = 1; number <= subTunnel.replacements; number++) {
      log.wait(pause);
      replacement(log, tunnel, subTunnel, number, true);
   }
   log.wait(pause);
   if (subTunnel.primaryDown()) {
      primaryFails(log, tunnel, subTunnel);
   } else if (subTunnel.health != Health::steady) {
      replacement(log, tunnel, subTunnel, subTunnel.replacements + 1, false);
   }
}

// A full ring of 100 events, the last of which can stand in any slot.
void writeFlapping(Rows& rows, SynthTunnel const& tunnel) {
   SubTunnel const& subTunnel = tunnel.subTunnels[0];
   EventLog log(rows, tunnel.index, static_cast<std::uint32_t>(tunnel.draw % 100), 100,
                {utcMilliseconds - logAge(subTunnel.draw)});
   Ipv4 const node = coreLoopback(tunnel.path(subTunnel, 0, 1).cores[0]);
   for (int i = 0; i < 20; i++) {
      log.lspError(1, 24, 5, node);
      log.lspState(1, "down");
      log.event("\"kind\":\"tunnelState\",\"state\":\"down\"");
      log.wait(20000);
      log.lspState(1, "up");
      tunnelUp(log, 0);
      log.wait(120000);
   }
}

// The tunnel's own log tells of its sub-tunnels only how many there are.
void writeSplit(Rows& rows, SynthTunnel const& tunnel) {
   std::uint64_t const span = logAge(tunnel.draw);
   std::uint32_t inUse = 0;
   std::uint64_t wanted = 0;
   for (SubTunnel const& subTunnel : tunnel) {
      inUse += subTunnel.up() ? 1 : 0;
      wanted += subTunnel.bandwidth;
   }
   EventLog log(rows, tunnel.index, 0, 100, {utcMilliseconds - span});
   log.event("\"kind\":\"creation\"");
   log.wait(1);
   log.event("\"kind\":\"bandwidthConfig\",\"bandwidth\":", wanted, ",\"autoBw\":", tunnel.autoBandwidth);
   for (std::uint32_t count = 1; count <= inUse; count++) {
      log.wait(count == 1 ? 200 : span / 8);
      log.event("\"kind\":\"tunnelState\",\"state\":\"up\",\"subTunnelCount\":", count, ",\"splitBw\":true");
   }
   if (inUse == 0) {
      log.event("\"kind\":\"tunnelState\",\"state\":\"down\",\"splitBw\":true");
   }
   log.event("\"kind\":\"bandwidth\",\"bandwidth\":", tunnel.bandwidth);
}

} // namespace

void writeTunnelHistory(Rows& rows, SynthTunnel const& tunnel) {
   if (tunnel.configuredOnly) {
      return;
   }
   if (tunnel.p2mp()) {
      writeP2mpHistory(rows, tunnel);
   } else if (tunnel.split()) {
      writeSplit(rows, tunnel);
   } else if (tunnel.flapping) {
      writeFlapping(rows, tunnel);
   } else {
      std::uint64_t const span = logAge(tunnel.draw);
      EventLog log(rows, tunnel.index, 0, 100, {utcMilliseconds - span});
      writeLife(log, tunnel, tunnel.subTunnels[0], span);
   }
}

void writeSubTunnelHistories(Rows& rows, SynthTunnel const& tunnel) {
   if (!tunnel.split() || tunnel.configuredOnly) {
      return;
   }
   for (SubTunnel const& subTunnel : tunnel) {
      std::uint64_t const span = logAge(subTunnel.draw);
      EventLog log(rows, subTunnel.index, 0, 100, {utcMilliseconds - span});
      writeLife(log, tunnel, subTunnel, span);
   }
}

} // namespace Host::Synth
