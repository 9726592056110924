#include "bench/Figures.h"
#include "bench/Measure.h"
#include "bench/Text.h"
#include "host/state/LoadState.h"
#include "host/synth/Synth.h"

#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <cstdio>
#include <optional>

// A state file of 50,000 tunnels: the whole load of its text, and the bare parse. The parser keeps its memory, and what
// it takes to free the state is told apart from the load.

namespace Bench {

namespace {

std::string synthText(std::uint64_t tunnels) {
   char* bytes = nullptr;
   std::size_t size = 0;
   std::FILE* const file = open_memstream(&bytes, &size);
   require(file != nullptr && Host::writeSynth(file, {tunnels, 0}) == 0, "no state file could be written");
   std::fclose(file);
   std::string text(bytes, size);
   std::free(bytes);
   return text;
}

} // namespace

Rows loading() {
   constexpr std::uint64_t tunnels = 50'000;
   Host::StateText const text(synthText(tunnels));
   require(Host::loadState("synthetic", text).rsvpLerFathomStatus->superTunnelConfigColl.get()->size() == tunnels,
           "a tunnel is missing after the load");
   simdjson::dom::parser parser;
   auto const parse = [&] { return parser.parse(text.view().data(), text.view().size(), false).error(); };
   require(parse() == simdjson::SUCCESS, "simdjson doesn't take the state file");

   std::optional<Host::RouterState> loaded;
   auto const load = [&] { loaded = Host::loadState("synthetic", text); };
   auto const drop = [&] { loaded.reset(); };
   std::vector<double> const seconds = measure(
         {
               {"load", load, drop},
               {"load and drop",
                [&] {
                   load();
                   drop();
                }},
               {"simdjson", [&] { benchmark::DoNotOptimize(parse()); }},
         },
         5);
   return {{"Loading: time over simdjson's bare parse", seconds[0] / seconds[2], false, 5,
            milliseconds(seconds[0]) + " for " + shown(static_cast<double>(text.view().size()) / 1e6, "MB") + ", " +
                  milliseconds(seconds[1] - seconds[0]) + " more to free the state"}};
}

} // namespace Bench
