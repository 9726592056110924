#include "host/synth/Random.h"
#include "host/synth/Tables.h"

#include <algorithm>

// One tunnel's rows in the tables of LSP groups and LSP requests.

namespace Host::Synth {
namespace {

// One LSP group of a sub-tunnel, with the requests it holds: number 1, and while it is replaced number 2.
struct Group {
   SubTunnel const& subTunnel;
   KeyText instance;
   KeyText key;
   std::uint32_t id;
   bool pendingInstance;

   bool down() const noexcept { return subTunnel.health == Health::down || (subTunnel.primaryDown() && id == 0); }
   bool replaced() const noexcept { return subTunnel.health == Health::newRequest && id == 0; }
   std::uint64_t bandwidth() const noexcept { return pendingInstance ? subTunnel.nextBandwidth : subTunnel.bandwidth; }
   // The version of the path of a request, 1 or 2.
   std::uint32_t version(std::uint32_t request) const noexcept {
      return (id == 0 ? subTunnel.replacements : 0) + request + (pendingInstance ? 1 : 0);
   }
   std::uint32_t lspId(std::uint32_t request) const noexcept {
      if (id != 0) {
         return 2;
      }
      return pendingInstance || request == 2 ? subTunnel.nextLspId() : subTunnel.primaryLspId();
   }
};

// Calls use(group) for each group of the tunnel, those of an instance one after the other.
template<class Use>
void forEachGroup(SynthTunnel const& tunnel, Use use) {
   if (tunnel.configuredOnly) {
      return;
   }
   for (SubTunnel const& subTunnel : tunnel) {
      KeyText const key = tunnel.key.subTunnel(subTunnel.id);
      KeyText const active = key.instance(subTunnel.epoch());
      use(Group{subTunnel, active, active.group(0), 0, false});
      if (subTunnel.secondaryGroup) {
         use(Group{subTunnel, active, active.group(1), 1, false});
      }
      if (subTunnel.health == Health::newInstance) {
         KeyText const pending = key.instance(subTunnel.epoch() + 1);
         use(Group{subTunnel, pending, pending.group(0), 0, true});
      }
   }
}

void writeGroupMembers(Sink& sink, SynthTunnel const& tunnel, Group const& group) {
   std::string_view const state = group.down() ? "\"down\"" : group.pendingInstance ? "\"establishing\"" : "\"up\"";
   sink.put("{\"lspGroupId\":", group.key, ",\"isP2mp\":", tunnel.p2mp(), ",\"lspGroupState\":", state);
   if (!group.down()) {
      Path const path = tunnel.path(group.subTunnel, group.id, group.version(1));
      sink.put(",\"nextHop\":[{\"address\":", path.hops[0], ",\"intfId\":\"eth", group.id + 1, "\",\"intfMtu\":9000}]");
   }
   sink.put(",\"activeLspRequestConfigId\":", group.key.request(1));
   if (group.replaced()) {
      sink.put(",\"pendingLspRequestConfigId\":", group.key.request(2));
   }
   if (!group.down() && !group.pendingInstance) {
      sink.put(",\"pathMtu\":", group.subTunnel.draw % 10 == 0 ? 1500u : 9000u);
   }
   sink.put("}");
}

// {"10.1.2.1":{"version":1,"hops":[...]},...}: one path, or one for each leaf of the tree.
void writePaths(Sink& sink, SynthTunnel const& tunnel, Group const& group, std::uint32_t request) {
   std::uint32_t const version = group.version(request);
   Commas commas;
   if (!tunnel.p2mp()) {
      sink.put("{", edgeLoopback(tunnel.destination), ":{\"version\":", version, ",\"hops\":");
      writeHops(sink, tunnel.path(group.subTunnel, group.id, version));
      sink.put("}}");
      return;
   }
   sink.put("{");
   for (std::uint32_t i = 0; i < tunnel.leafCount; i++) {
      Leaf const& leaf = tunnel.leaves[i];
      if (!leaf.removing) {
         sink.put(commas.next(), edgeLoopback(leaf.edge), ":{\"version\":", version);
         if (!leaf.withoutPath) {
            sink.put(",\"hops\":");
            writeHops(sink, leafPath(tunnel.headEnd, leaf.edge));
         }
         sink.put("}");
      }
   }
   sink.put("}");
}

void writeRequestConfig(Sink& sink, SynthTunnel const& tunnel, Group const& group, std::uint32_t request) {
   sink.put("{\"lspRequestConfigId\":", group.key.request(request),
            ",\"sessionType\":", tunnel.p2mp() ? std::string_view("\"p2mp\"") : "\"p2p\"",
            ",\"bandwidth\":", group.bandwidth(), ",\"tree\":{\"paths\":");
   writePaths(sink, tunnel, group, request);
   sink.put("}}");
}

// One to three errors, from different routers of the path that failed.
void writeErrors(Sink& sink, SynthTunnel const& tunnel, Group const& group) {
   struct Code {
      std::uint32_t code;
      std::uint32_t value;
   };
   constexpr Code codes[] = {{1, 2}, {12, 0}, {24, 5}, {24, 2}, {25, 3}};
   Path const path = tunnel.p2mp() ? leafPath(tunnel.headEnd, tunnel.leaves[0].edge)
                                   : tunnel.path(group.subTunnel, group.id, group.version(1));
   Random random(group.subTunnel.draw + group.id);
   std::uint32_t const count = std::min(1 + random.below(3), path.coreCount);
   Commas commas;
   sink.put(",\"errors\":[");
   for (std::uint32_t i = 0; i < count; i++) {
      Code const& code = codes[random.below(5)];
      sink.put(commas.next(), "{\"code\":", code.code, ",\"value\":", code.value,
               ",\"node\":", coreLoopback(path.cores[i]), "}");
   }
   sink.put("]");
}

void writeRequestStatus(Sink& sink, SynthTunnel const& tunnel, Group const& group, std::uint32_t request) {
   bool const establishing = group.pendingInstance || request == 2;
   std::string_view const state = group.down() ? "\"down\"" : establishing ? "\"unverified\"" : "\"up\"";
   sink.put("{\"lspRequestConfigId\":", group.key.request(request), ",\"lspState\":", state,
            ",\"lspId\":", group.lspId(request));
   if (group.down() || (group.subTunnel.draw % 50 == 0 && request == 1)) {
      writeErrors(sink, tunnel, group);
   }
   if (tunnel.p2mp()) {
      writeSubLspState(sink, tunnel);
   }
   sink.put("}");
}

// The rows of both tables of requests: one a group, with one member, a list of what `writeRequest` writes.
template<class WriteRequest>
void writeRequests(Rows& rows, SynthTunnel const& tunnel, std::string_view member, WriteRequest writeRequest) {
   forEachGroup(tunnel, [&](Group const& group) {
      Sink& sink = rows.next();
      sink.put("{\"lspGroupId\":", group.key, ",\"", member, "\":[");
      writeRequest(sink, tunnel, group, 1);
      if (group.replaced()) {
         sink.put(",");
         writeRequest(sink, tunnel, group, 2);
      }
      sink.put("]}");
   });
}

} // namespace

void writeHops(Sink& sink, Path const& path) {
   Commas commas;
   sink.put("[");
   for (Ipv4 const hop : path) {
      sink.put(commas.next(), hop);
   }
   sink.put("]");
}

void writeLspGroupStatuses(Rows& rows, SynthTunnel const& tunnel) {
   Sink* row = nullptr;
   forEachGroup(tunnel, [&](Group const& group) {
      if (group.id == 0) {
         if (row != nullptr) {
            row->put("]}");
         }
         row = &rows.next();
         row->put("{\"mbbTunnelConfigId\":", group.instance, ",\"lspGroupStatusColl\":[");
      } else {
         row->put(",");
      }
      writeGroupMembers(*row, tunnel, group);
   });
   if (row != nullptr) {
      row->put("]}");
   }
}

void writeLspRequestConfigs(Rows& rows, SynthTunnel const& tunnel) {
   writeRequests(rows, tunnel, "lspRequestConfigColl", writeRequestConfig);
}

void writeLspRequestStatuses(Rows& rows, SynthTunnel const& tunnel) {
   writeRequests(rows, tunnel, "lspRequestStatusColl", writeRequestStatus);
}

void writeCspfPathKeys(Rows& rows, SynthTunnel const& tunnel) {
   std::uint32_t number = tunnel.index * 32;
   forEachGroup(tunnel, [&](Group const& group) {
      rows.next().put("{\"lspGroupId\":", group.key,
                      tunnel.p2mp() ? std::string_view(",\"kind\":2,\"treeId\":") : ",\"kind\":1,\"pathId\":", number++,
                      "}");
   });
}

} // namespace Host::Synth
