#include "bench/Figures.h"
#include "bench/Listing.h"
#include "bench/Measure.h"
#include "bench/Peers.h"
#include "bench/PlainDocument.h"
#include "bench/SynthRouter.h"
#include "bench/Text.h"
#include "vane/Epoch.h"
#include "vane/System.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <thread>

// Whole listings into a dropped buffer.

namespace Bench {

namespace {

using Command = Rsvp::Cli::ShowRsvpLerTunnel;
constexpr Tests::Flags plain{};
constexpr Tests::Flags summary{.summary = true};
constexpr Tests::Flags detail{.detail = true};

template<class Body>
void forEachTunnel(ListedTunnels const& tunnels, Body const& body) {
   TunnelValues values{};
   for (auto const* ids : {&tunnels.p2p, &tunnels.p2mp}) {
      for (Rsvp::RsvpLerTunnelSpecId const& id : *ids)
         body(id, values);
   }
}

// The lookups and fields of the plain and the detailed view. Each row of the summary needs some of them twice.
void touch(Command const& command, ListedTunnels const& tunnels) {
   Vane::Pin const pin;
   forEachTunnel(tunnels, [&](Rsvp::RsvpLerTunnelSpecId const& id, TunnelValues& values) {
      gather(command, id, values);
      benchmark::DoNotOptimize(&values);
      benchmark::ClobberMemory();
   });
}

// The same sections into a tree of json-c for each tunnel.
template<class Take>
void writeTrees(Command const& command, ListedTunnels const& tunnels, Take const& take) {
   Vane::Pin const pin;
   forEachTunnel(tunnels, [&](Rsvp::RsvpLerTunnelSpecId const& id, TunnelValues& values) {
      gather(command, id, values);
      JsonCPeer peer;
      peer.startJsonDict();
      writeTunnel(peer, values);
      peer.endJsonDict();
      take(peer.text());
   });
}

void requireSameDocument(Command& command, ListedTunnels const& tunnels) {
   std::string expected = "{\"tunnels\":{";
   writeTrees(command, tunnels, [&](std::string_view tunnel) {
      if (expected.back() != '{')
         expected += ',';
      expected += tunnel.substr(1, tunnel.size() - 2);
   });
   expected += "}}\n";
   require(Tests::tunnelAnswer(command, Tests::jsonFormat) == expected, "the floor gathers other values");
   require(Tests::tunnelAnswer(command, Tests::jsonFormat, detail) == expected, "the detailed view shows other values");
}

// The listing of the benchmark writes what the command writes.
void requireSameListing(Command& command, std::uint32_t format, Tests::Flags const& flags) {
   std::string const ours =
         Tests::rendered(format, [&](scrivo::RendererV2* renderer) { list(command, *renderer, flags); });
   require(ours == Tests::tunnelAnswer(command, format, flags), "the listing differs from that of the command");
}

void listPinned(Command& command, std::uint32_t format, Tests::Flags const& flags) {
   Vane::Pin const pin;
   listDropped(command, format, flags);
}

std::string perTunnel(double seconds, double tunnels) {
   return nanoseconds(seconds / tunnels) + " a tunnel";
}

} // namespace

Rows wholeViews() {
   constexpr double count = 100'000;
   auto const router = synthRouter(static_cast<std::uint64_t>(count));
   auto const command = router->tunnelCommand();
   ListedTunnels const tunnels = listedTunnels(*command);
   requireSameDocument(*command, tunnels);
   for (Tests::Flags const& flags : {plain, summary, detail})
      requireSameListing(*command, Tests::textFormat, flags);
   requireSameListing(*command, Tests::jsonFormat, plain);

   std::vector<double> const seconds = measure(
         {
               {"floor", [&] { touch(*command, tunnels); }},
               {"json", [&] { listPinned(*command, Tests::jsonFormat, plain); }},
               {"summary", [&] { listPinned(*command, Tests::textFormat, summary); }},
               {"detail", [&] { listPinned(*command, Tests::textFormat, detail); }},
         },
         5);
   double const trees = measure(
         {{"trees",
           [&] { writeTrees(*command, tunnels, [](std::string_view tunnel) { benchmark::DoNotOptimize(tunnel); }); }}},
         2)[0];
   double const floor = seconds[0];
   return {
         {"Whole view, JSON plain: time over the floor's", seconds[1] / floor, false, 2,
          perTunnel(seconds[1], count) + ", floor " + perTunnel(floor, count)},
         {"Whole view, JSON plain: time of json-c trees over its", trees / seconds[1], true, 8,
          perTunnel(trees, count)},
         {"Whole view, text summary: time over the floor's", seconds[2] / floor, false, 2,
          perTunnel(seconds[2], count)},
         {"Whole view, text detail: time over the floor's", seconds[3] / floor, false, 2, perTunnel(seconds[3], count)},
   };
}

Rows growth() {
   std::string note;
   double atTenThousand = 0;
   double atMillion = 0;
   for (std::uint64_t const tunnels : {1'000, 10'000, 100'000, 1'000'000}) {
      auto const router = synthRouter(tunnels);
      auto const command = router->tunnelCommand();
      double const seconds =
            measure({{"json", [&] { listPinned(*command, Tests::jsonFormat, plain); }}}, tunnels > 100'000 ? 3 : 7)[0];
      double const each = seconds / static_cast<double>(tunnels);
      note += (note.empty() ? "" : ", ") + nanoseconds(each);
      (tunnels == 10'000 ? atTenThousand : atMillion) = each;
   }
   return {{"Growth: time a tunnel at 1,000,000 over that at 10,000", atMillion / atTenThousand, false, 2.5,
            "1,000 to 1,000,000: " + note}};
}

Rows allocation() {
   constexpr std::uint64_t tunnels = 10'000;
   auto const router = synthRouter(tunnels);
   auto const command = router->tunnelCommand();
   listPinned(*command, Tests::jsonFormat, plain);
   std::size_t const before = allocationCount();
   listPinned(*command, Tests::jsonFormat, plain);
   auto const allocations = static_cast<double>(allocationCount() - before);
   return {{"Allocation: for each tunnel of a JSON plain listing", allocations / tunnels, false, 0.1,
            shown(allocations, "of 10,000 tunnels")}};
}

Rows underWriter() {
   constexpr std::uint64_t tunnels = 10'000;
   auto const router = synthRouter(tunnels);
   auto const command = router->tunnelCommand();
   Vane::System::releaseClocks();
   std::vector<Rsvp::RsvpLerTunnelSpecId> const ids = listedTunnels(*command).p2p;
   auto const statuses = router->status->superTunnelStatusColl.get();
   std::string const answer = Tests::tunnelAnswer(*command, Tests::jsonFormat);

   std::atomic<bool> stop = false;
   std::atomic<std::uint64_t> changes = 0;
   auto const change = [&] {
      for (std::size_t i = 0; !stop; i = (i + 1) % ids.size()) {
         auto record = Brindle::makeNode<Rsvp::RsvpLerSuperTunnelStatus>();
         if (auto const former = statuses->superTunnelStatus(ids[i])) {
            record->tunnelSpecId = former->tunnelSpecId;
            record->sessionId = former->sessionId;
            record->state = former->state;
            record->color = former->color;
            record->currentBandwidth = former->currentBandwidth;
            record->split = former->split;
            record->igpMetric = former->igpMetric;
            statuses->set(ids[i], std::move(record));
         }
         ++changes;
      }
   };
   double atRest = 0;
   double underChange = 0;
   for (int round = 0; round < 5; ++round) {
      auto const listing = [&] { return measure({{"json", [&] { listDropped(*command, 2, plain); }}}, 3)[0]; };
      double const quiet = listing();
      stop = false;
      std::thread writer(change);
      double const busy = listing();
      stop = true;
      writer.join();
      atRest = round == 0 ? quiet : std::min(atRest, quiet);
      underChange = round == 0 ? busy : std::min(underChange, busy);
   }
   return {{"Under a writer: time over that without one", underChange / atRest, false, 1.5,
            milliseconds(underChange) + ", " + shown(static_cast<double>(changes.load()), "changes")}};
}

} // namespace Bench
