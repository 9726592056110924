#include "bench/Figures.h"
#include "bench/Listing.h"
#include "bench/Measure.h"
#include "bench/Peers.h"
#include "bench/PlainDocument.h"
#include "bench/SynthRouter.h"
#include "bench/Text.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory_resource>
#include <string_view>
#include <vector>

// One document of 20,000 tunnels from plain values, by each writer.

namespace Bench {

namespace {

// The values of all tunnels, in memory in the order in which they are written: what is measured is how they are
// written, and not how long they take to come from wherever the records lie.
class Document {
public:
   explicit Document(Rsvp::Cli::ShowRsvpLerTunnel const& command) {
      ListedTunnels const tunnels = listedTunnels(command);
      tunnels_.reserve(tunnels.p2p.size() + tunnels.p2mp.size());
      for (auto const* ids : {&tunnels.p2p, &tunnels.p2mp}) {
         for (Rsvp::RsvpLerTunnelSpecId const& id : *ids) {
            TunnelValues values;
            gather(command, id, values);
            tunnels_.push_back(values);
            keepTexts(tunnels_.back());
         }
      }
   }
   auto begin() const noexcept { return tunnels_.begin(); }
   auto end() const noexcept { return tunnels_.end(); }

private:
   // Those of the records; the words of the vocabulary stand side by side anyway.
   void keepTexts(TunnelValues& values) {
      keep(values.name);
      keep(values.profile);
      keepTexts(values.own);
      for (SubTunnelValues& subTunnel : values.subTunnels)
         keepTexts(subTunnel);
   }
   void keepTexts(SubTunnelValues& values) {
      for (PathValues* path : {&values.primary, &values.secondary}) {
         keep(path->specName);
         keep(path->intfName);
      }
   }
   void keep(std::string_view& text) {
      if (text.empty())
         return;
      auto* const copy = static_cast<char*>(texts_.allocate(text.size(), 1));
      std::memcpy(copy, text.data(), text.size());
      text = {copy, text.size()};
   }

   std::vector<TunnelValues> tunnels_;
   std::pmr::monotonic_buffer_resource texts_;
};

template<class Out>
void writeTunnels(Out& out, Document const& document) {
   out.startJsonDict("tunnels");
   for (TunnelValues const& values : document)
      writeTunnel(out, values);
   out.endJsonDict();
}

template<class Peer>
void writePeer(Peer& peer, Document const& document) {
   peer.startJsonDict();
   writeTunnels(peer, document);
   peer.endJsonDict();
}

void writeRenderer(scrivo::PrintBuffer& buffer, Document const& document) {
   scrivo::RendererV2 renderer(scrivo::OutputFormat_t::json, &buffer, true);
   renderer.writeChar('{');
   writeTunnels(renderer, document);
   renderer.writeChar('}');
}

std::string rendererText(Document const& document) {
   Tests::MemoryBuffer buffer;
   writeRenderer(buffer, document);
   return std::string(buffer.text());
}

} // namespace

Rows jsonWriter() {
   auto const router = synthRouter(20'000);
   auto const command = router->tunnelCommand();
   Document const document(*command);
   std::string const text = rendererText(document);

   RapidJsonPeer rapid;
   FmtPeer formatted;
   writePeer(rapid, document);
   writePeer(formatted, document);
   require(rapid.text() == text, "RapidJSON writes another document");
   require(formatted.text() == text, "fmt writes another document");
   {
      JsonCPeer jsonC;
      NlohmannPeer nlohmann;
      writePeer(jsonC, document);
      writePeer(nlohmann, document);
      require(jsonC.text() == text, "json-c writes another document");
      require(nlohmann::json::parse(nlohmann.text()) == nlohmann::json::parse(text),
              "nlohmann writes another document");
   }

   std::string copy(text.size(), '\0');
   DroppedBuffer dropped;
   std::vector<double> const seconds = measure({
         {"renderer", [&] { writeRenderer(dropped, document); }},
         {"rapidjson",
          [&] {
             rapid.clear();
             writePeer(rapid, document);
          }},
         {"fmt",
          [&] {
             formatted.clear();
             writePeer(formatted, document);
          }},
         {"memcpy",
          [&] {
             std::memcpy(copy.data(), text.data(), text.size());
             benchmark::ClobberMemory();
          }},
   });
   std::vector<double> const trees = measure(
         {
               {"jsonc",
                [&] {
                   JsonCPeer peer;
                   writePeer(peer, document);
                   benchmark::DoNotOptimize(peer.text());
                }},
               {"nlohmann",
                [&] {
                   NlohmannPeer peer;
                   writePeer(peer, document);
                   benchmark::DoNotOptimize(peer.text());
                }},
         },
         3);
   double const ours = seconds[0];
   std::string const rate = shown(static_cast<double>(text.size()) / ours / 1e6, "MB/s") + ", " +
                            shown(static_cast<double>(text.size()) / 1e6, "MB");
   return {
         {"JSON writer: throughput over RapidJSON's", seconds[1] / ours, true, 3, rate},
         {"JSON writer: throughput over json-c's", trees[0] / ours, true, 40, milliseconds(trees[0])},
         {"JSON writer: time over memcpy's", ours / seconds[3], false, 3.3, milliseconds(seconds[3])},
         {"JSON writer: throughput over fmt's (no mark)", seconds[2] / ours, true, 1, milliseconds(seconds[2])},
         {"JSON writer: throughput over nlohmann's (no mark)", trees[1] / ours, true, 1, milliseconds(trees[1])},
   };
}

} // namespace Bench
