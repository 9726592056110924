#include "RsvpLer/summary/SummaryTable.h"
#include "RsvpLer/text/RsvpShowUtils.h"
#include "bench/Figures.h"
#include "bench/Listing.h"
#include "bench/Measure.h"
#include "bench/Text.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <cstdio>
#include <vector>

// A million rows of the summary table of P2P tunnels from plain texts and numbers, in columns whose widths are known
// at run time only.

namespace Bench {

namespace {

struct RowValues {
   std::string name;
   std::string destination;
   std::uint32_t color;
   std::uint32_t index;
   char const* path;
   std::string bandwidth;
   std::uint32_t lsps;
   char const* state;
};

struct Widths {
   std::uint8_t name = 11;
   std::uint8_t destination = 15;
   std::uint8_t color = 5;
   std::uint8_t index = 7;
   std::uint8_t path = 11;
   std::uint8_t bandwidth = 11;
   std::uint8_t lsps = 4;
};

constexpr std::size_t rowCount = 1'000'000;
constexpr std::size_t differentRows = 10'000;

std::vector<RowValues> makeRows() {
   std::vector<RowValues> rows;
   for (std::uint32_t i = 0; i < differentRows; ++i) {
      auto const octet = [&](std::uint32_t shift) { return static_cast<std::uint8_t>(i * 2654435761u >> shift); };
      Lattice::IpGenAddr const address(Lattice::IpAddr(10, octet(16), octet(8), octet(24)));
      rows.push_back({"pe1-pe" + std::to_string(i % 1000) + "-" + std::to_string(i / 1000), address.stringValue(),
                      100 * (1 + i % 9), 1 + i * 97, i % 5 == 0 ? "secondary" : "primary",
                      Rsvp::RsvpShowUtils::humanReadableBandwidth(i * std::uint64_t{1234567}, true), 1 + i % 3,
                      i % 7 == 0 ? "down" : "up"});
   }
   return rows;
}

std::size_t widestName(std::vector<RowValues> const& rows) {
   std::size_t widest = 0;
   for (RowValues const& row : rows)
      widest = std::max(widest, row.name.size());
   return widest;
}

// The calls of a row of the view.
void addRow(scrivo::RendererV2& renderer, Widths const& widths, RowValues const& row) {
   using namespace Rsvp::Cli;
   addName(&renderer, widths.name, row.name);
   addLeft(&renderer, widths.destination + 1u, row.destination);
   addRight(&renderer, widths.color, row.color);
   renderer.writeChar(' ');
   addIndex(&renderer, widths.index, row.index);
   renderer.writeChar(' ');
   addLeft(&renderer, widths.path + 1u, row.path);
   renderer.addFrillRight(widths.bandwidth, row.bandwidth, ' ');
   renderer.writeChar(' ');
   addRight(&renderer, widths.lsps, row.lsps);
   renderer.writeChar(' ');
   renderer.addFrill(std::string_view(row.state));
   renderer.eol();
}

int printRow(char* at, std::size_t size, Widths const& widths, RowValues const& row) {
   return std::snprintf(at, size, "%-*s %-*s %*u %*u %-*s %*s %*u %s\n", widths.name, row.name.c_str(),
                        widths.destination, row.destination.c_str(), widths.color, row.color, widths.index, row.index,
                        widths.path, row.path, widths.bandwidth, row.bandwidth.c_str(), widths.lsps, row.lsps,
                        row.state);
}

std::size_t formatRow(char* at, Widths const& widths, RowValues const& row) {
   char* const end =
         fmt::format_to(at, "{:<{}} {:<{}} {:>{}} {:>{}} {:<{}} {:>{}} {:>{}} {}\n", row.name, widths.name,
                        row.destination, widths.destination, row.color, widths.color, row.index, widths.index, row.path,
                        widths.path, row.bandwidth, widths.bandwidth, row.lsps, widths.lsps, row.state);
   return static_cast<std::size_t>(end - at);
}

} // namespace

Rows textRows() {
   std::vector<RowValues> const rows = makeRows();
   Widths widths;
   widths.name = static_cast<std::uint8_t>(widestName(rows));
   char line[256];
   for (RowValues const& row : rows) {
      std::string const ours =
            Tests::rendered(Tests::textFormat, [&](scrivo::RendererV2* renderer) { addRow(*renderer, widths, row); });
      require(ours == std::string(line, static_cast<std::size_t>(printRow(line, sizeof line, widths, row))),
              "snprintf writes another row");
      require(ours == std::string(line, formatRow(line, widths, row)), "fmt writes another row");
   }

   DroppedBuffer dropped;
   std::vector<double> const seconds = measure({
         {"renderer",
          [&] {
             scrivo::RendererV2 renderer(scrivo::OutputFormat_t::text, &dropped, true);
             for (std::size_t i = 0; i < rowCount; ++i)
                addRow(renderer, widths, rows[i % differentRows]);
          }},
         {"snprintf",
          [&] {
             for (std::size_t i = 0; i < rowCount; ++i)
                benchmark::DoNotOptimize(printRow(line, sizeof line, widths, rows[i % differentRows]));
          }},
         {"fmt",
          [&] {
             for (std::size_t i = 0; i < rowCount; ++i)
                benchmark::DoNotOptimize(formatRow(line, widths, rows[i % differentRows]));
          }},
   });
   return {
         {"Text rows: snprintf's time over the renderer's", seconds[1] / seconds[0], true, 4,
          nanoseconds(seconds[0] / rowCount) + " a row"},
         {"Text rows: fmt's time over the renderer's (no mark)", seconds[2] / seconds[0], true, 1,
          nanoseconds(seconds[2] / rowCount) + " a row"},
   };
}

} // namespace Bench
