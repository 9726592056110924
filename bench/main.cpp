#include "bench/Figures.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

// Measures the figures that are named on the command line, all of them without a name, and prints the table.

namespace Bench {

void require(bool condition, std::string const& what) {
   if (!condition)
      throw std::runtime_error(what);
}

namespace {

struct Figure {
   std::string_view name;
   Rows (*measure)();
};

constexpr Figure figures[] = {
      {"json-writer", jsonWriter},   {"text-rows", textRows},    {"natural-order", naturalOrder},
      {"lookup", oneLookup},         {"whole-view", wholeViews}, {"growth", growth},
      {"allocation", allocation},    {"loading", loading},       {"under-writer", underWriter},
      {"long-listing", longListing},
};

void checkNames(std::span<char* const> names) {
   std::string known;
   for (Figure const& figure : figures)
      known.append(" ").append(figure.name);
   for (std::string_view const name : names)
      require(std::ranges::count(figures, name, &Figure::name) == 1,
              "there is no figure " + std::string(name) + "; the figures are" + known);
}

bool isChosen(Figure const& figure, std::span<char* const> names) {
   return names.empty() || std::ranges::count(names, figure.name) != 0;
}

void print(Row const& row) {
   bool const met = row.atLeast ? row.measured >= row.wanted : row.measured <= row.wanted;
   std::printf("| %-58s | %8.2f | at %-5s %6.4g | %-3s | %s |\n", row.figure.c_str(), row.measured,
               row.atLeast ? "least" : "most", row.wanted, met ? "yes" : "no", row.note.c_str());
   std::fflush(stdout);
}

void run(std::span<char* const> names) {
   checkNames(names);
   std::printf("| %-58s | %8s | %-15s | %-3s | Behind it |\n", "Figure", "Measured", "Wanted", "Met");
   std::printf("|---|---:|---|---|---|\n");
   for (Figure const& figure : figures) {
      if (!isChosen(figure, names))
         continue;
      for (Row const& row : figure.measure())
         print(row);
   }
}

} // namespace

} // namespace Bench

int main(int argc, char** argv) {
   char program[] = "ler_bench";
   char interleaving[] = "--benchmark_enable_random_interleaving=true";
   char* options[] = {program, interleaving, nullptr};
   int optionCount = 2;
   benchmark::Initialize(&optionCount, options);
   try {
      Bench::run(std::span(argv + 1, argv + argc));
   } catch (std::exception const& failure) {
      std::fprintf(stderr, "ler_bench: %s\n", failure.what());
      return 1;
   }
   return 0;
}
