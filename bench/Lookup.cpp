#include "bench/Figures.h"
#include "bench/Listing.h"
#include "bench/Measure.h"
#include "bench/SynthRouter.h"
#include "bench/Text.h"
#include "vane/Epoch.h"

#include <absl/container/flat_hash_map.h>
#include <benchmark/benchmark.h>

// The status of an LSP request, at 100,000 tunnels in the order of a listing, each lookup waiting for the one before.

namespace Bench {

namespace {

using namespace Rsvp;
using Requests = std::vector<RsvpLerLspRequestConfigId>;

struct KeyHash {
   std::size_t operator()(RsvpLerLspRequestConfigId const& key) const {
      return absl::Hash<std::uint32_t>()(key.hash(0));
   }
};
using Peer = absl::flat_hash_map<RsvpLerLspRequestConfigId, Handle<RsvpLerLspRequestStatus>, KeyHash>;

// The active request of each tunnel that isn't split and has one.
Requests activeRequests(Cli::ShowRsvpLerTunnel const& command) {
   ListedTunnels const tunnels = listedTunnels(command);
   Requests requests;
   for (auto const* ids : {&tunnels.p2p, &tunnels.p2mp}) {
      for (RsvpLerTunnelSpecId const& id : *ids) {
         auto const current = command.getCurrentInstances(command.getNonSplitSubTunnelStatus(id));
         auto const group = command.getLspGroupStatus(current.lspGroupId);
         if (group && group->activeLspRequestConfigId)
            requests.push_back(group->activeLspRequestConfigId);
      }
   }
   return requests;
}

// The next index is counted up by what the record just found holds. The compiler doesn't know that this is 1: of
// a comparison it would make a branch, which the processor foretells, and the lookups would overlap.
template<class Find>
std::size_t walk(Requests const& requests, Find const& find) {
   std::size_t at = 0;
   while (at < requests.size()) {
      std::size_t step = find(requests[at])->lspId.hasValue();
      benchmark::DoNotOptimize(step);
      at += step;
   }
   return at;
}

} // namespace

Rows oneLookup() {
   auto const router = synthRouter(100'000);
   auto const command = router->tunnelCommand();
   Requests const requests = activeRequests(*command);
   Peer peer;
   for (RsvpLerLspRequestConfigId const& request : requests)
      peer.emplace(request, command->getLspRequestStatus(request));
   auto const findOurs = [&](RsvpLerLspRequestConfigId const& id) { return command->getLspRequestStatus(id); };
   auto const findPeer = [&](RsvpLerLspRequestConfigId const& id) { return peer.find(id)->second; };
   for (RsvpLerLspRequestConfigId const& request : requests) {
      require(findOurs(request) && findOurs(request) == findPeer(request), "the two maps differ");
      require(findOurs(request)->lspId.hasValue(), "a request has no LSP id: the walk would stand still");
   }

   std::vector<double> const seconds = measure({
         {"table",
          [&] {
             Vane::Pin const pin;
             benchmark::DoNotOptimize(walk(requests, findOurs));
          }},
         {"absl", [&] { benchmark::DoNotOptimize(walk(requests, findPeer)); }},
   });
   auto const count = static_cast<double>(requests.size());
   return {{"One lookup: time over absl::flat_hash_map's", seconds[0] / seconds[1], false, 1.5,
            nanoseconds(seconds[0] / count) + " against " + nanoseconds(seconds[1] / count)}};
}

} // namespace Bench
