#include "host/synth/EventLog.h"

// The log of a P2MP tunnel. A reply of the path computation is one event for each leaf, all of the same time.

namespace Host::Synth {
namespace {

template<class Use>
void forEachLeaf(SynthTunnel const& tunnel, Use use) {
   for (std::uint32_t i = 0; i < tunnel.leafCount; i++) {
      use(tunnel.leaves[i]);
   }
}

void query(EventLog& log, std::uint32_t count) {
   log.event("\"kind\":\"cspfQuery\",\"count\":", count);
   log.wait(30);
}

void reply(EventLog& log, SynthTunnel const& tunnel, Leaf const& leaf, std::uint32_t count,
           std::string_view changeType) {
   Ipv4 const address = edgeLoopback(leaf.edge);
   std::uint32_t const found = tunnel.leafCount - (tunnel.leaves[0].withoutPath ? 1 : 0);
   if (changeType == "new" || changeType == "changed") {
      log.eventWithHops(leafPath(tunnel.headEnd, leaf.edge), "\"kind\":\"cspfReply\",\"count\":", count,
                        ",\"totalLeaves\":", found, ",\"destination\":", address, ",\"changeType\":\"", changeType,
                        "\"");
   } else {
      log.event("\"kind\":\"cspfReply\",\"count\":", count, ",\"totalLeaves\":", found, ",\"destination\":", address,
                ",\"changeType\":\"", changeType, "\"");
   }
}

void leafState(EventLog& log, Leaf const& leaf, std::string_view state) {
   log.event("\"kind\":\"p2mpLeafState\",\"destination\":", edgeLoopback(leaf.edge), ",\"state\":\"", state, "\"");
}

void firstTree(EventLog& log, SynthTunnel const& tunnel) {
   log.event("\"kind\":\"creation\"");
   forEachLeaf(tunnel, [&](Leaf const& leaf) {
      log.event("\"kind\":\"p2mpDestinationAdded\",\"destination\":", edgeLoopback(leaf.edge));
   });
   query(log, 1);
   forEachLeaf(tunnel, [&](Leaf const& leaf) { reply(log, tunnel, leaf, 1, leaf.withoutPath ? "notFound" : "new"); });
   log.event("\"kind\":\"lspAdd\",\"lspId\":1");
   log.wait(10);
   log.lspState(1, "establishing");
   forEachLeaf(tunnel, [&](Leaf const& leaf) {
      if (!leaf.withoutPath) {
         log.wait(20);
         leafState(log, leaf, "up");
      }
   });
   log.lspState(1, "up");
   log.event("\"kind\":\"lspInUse\",\"lspId\":1");
   log.event("\"kind\":\"bandwidth\",\"bandwidth\":", tunnel.subTunnels[0].bandwidth);
   log.event("\"kind\":\"tunnelState\",\"state\":\"up\"");
}

// The tree is computed again, many times without a change and then with one.
void replacement(EventLog& log, SynthTunnel const& tunnel, std::uint32_t number, bool whole) {
   std::uint32_t const lspId = lspIdAfter(number);
   std::uint32_t const replaced = lspIdAfter(number - 1);
   std::uint32_t const count = 2 + static_cast<std::uint32_t>(tunnel.draw % 300);
   query(log, count);
   forEachLeaf(tunnel, [&](Leaf const& leaf) { reply(log, tunnel, leaf, count, "none"); });
   log.wait(60000);
   query(log, 1);
   reply(log, tunnel, tunnel.leaves[tunnel.leafCount / 2], 1, "changed");
   log.event("\"kind\":\"lspAdd\",\"lspId\":", lspId, ",\"replacedLspId\":", replaced);
   log.wait(10);
   log.lspState(lspId, whole ? "establishing" : "unverified");
   if (whole) {
      log.wait(200);
      log.lspState(lspId, "up");
      log.event("\"kind\":\"lspInUse\",\"lspId\":", lspId, ",\"replacedLspId\":", replaced);
      log.event("\"kind\":\"lspNoLongerInUse\",\"lspId\":", replaced);
      log.event("\"kind\":\"lspDel\",\"lspId\":", replaced);
   }
}

void removeLeaf(EventLog& log, SynthTunnel const& tunnel, Leaf const& leaf) {
   log.event("\"kind\":\"p2mpDestinationRemoved\",\"destination\":", edgeLoopback(leaf.edge));
   query(log, 1);
   reply(log, tunnel, leaf, 1, "removed");
}

} // namespace

void writeP2mpHistory(Rows& rows, SynthTunnel const& tunnel) {
   SubTunnel const& carrier = tunnel.subTunnels[0];
   std::uint64_t const span = logAge(tunnel.draw);
   std::uint64_t const pause = span / (carrier.replacements + 2);
   EventLog log(rows, tunnel.index, 0, 1000, {utcMilliseconds - span});
   firstTree(log, tunnel);
   for (std::uint32_t number = 1; number <= carrier.replacements; number++) {
      log.wait(pause);
      replacement(log, tunnel, number, true);
   }
   log.wait(pause);
   if (carrier.health == Health::newInstance || carrier.health == Health::newRequest) {
      replacement(log, tunnel, carrier.replacements + 1, false);
   }
   if (carrier.health == Health::down) {
      log.lspError(carrier.primaryLspId(), 24, 5,
                   coreLoopback(leafPath(tunnel.headEnd, tunnel.leaves[0].edge).cores[0]));
      log.lspState(carrier.primaryLspId(), "down");
      log.event("\"kind\":\"tunnelState\",\"state\":\"down\"");
   }
   forEachLeaf(tunnel, [&](Leaf const& leaf) {
      if (!leaf.up && !leaf.withoutPath) {
         leafState(log, leaf, "down");
      }
   });
   if (tunnel.leaves[tunnel.leafCount - 1].removing) {
      removeLeaf(log, tunnel, tunnel.leaves[tunnel.leafCount - 1]);
   }
}

} // namespace Host::Synth
