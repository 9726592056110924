#include "RsvpLer/text/TunnelOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

using namespace std::string_literals;
using Rsvp::RsvpLerTunnelSource;
using Rsvp::RsvpLerTunnelSpecId;
using Rsvp::Cli::isListedBefore;
using Rsvp::Cli::sortTunnels;

namespace {

RsvpLerTunnelSpecId tunnel(std::string const& name, int source = 1) {
   return RsvpLerTunnelSpecId(Fathom::String(name), static_cast<RsvpLerTunnelSource>(source));
}

// In the order of a listing, each of them strictly before the next.
std::vector<RsvpLerTunnelSpecId> listing() {
   return {
         tunnel(""),
         tunnel("\xc3\xa4"),
         tunnel(" lead"),
         tunnel("1"),
         tunnel("10"),
         tunnel("_"),
         tunnel("ABC"),
         tunnel("AbC"),
         tunnel("abc"),
         tunnel("abc\0"s),
         tunnel("abc "),
         tunnel("b  c"),
         tunnel("b c"),
         tunnel("lead"),
         tunnel("rel1.05"),
         tunnel("rel1.10"),
         tunnel("rel1.5"),
         tunnel("rel1.50"),
         tunnel("rel1.9"),
         tunnel("tunnel02", 1),
         tunnel("tunnel02", 3),
         tunnel("tunnel2", 0),
         tunnel("tunnel2", 1),
         tunnel("tunnel2", 2),
         tunnel("tunnel2", 4),
         tunnel("tunnel2", 200),
         tunnel("tunnel10", 0),
         tunnel("tunnel10", 1),
   };
}

TEST(TunnelOrder, isTheSameForEveryPairOfAListing) {
   std::vector<RsvpLerTunnelSpecId> const tunnels = listing();
   for (std::size_t i = 0; i < tunnels.size(); ++i)
      for (std::size_t j = 0; j < tunnels.size(); ++j)
         EXPECT_EQ(isListedBefore(tunnels[i], tunnels[j]), i < j) << tunnels[i] << ' ' << tunnels[j];
}

struct OrderRow {
   RsvpLerTunnelSpecId first;
   RsvpLerTunnelSpecId second;
};

TEST(TunnelOrder, goesByNameThenBytesThenSource) {
   OrderRow const rows[] = {
         {tunnel("tunnel2", 4), tunnel("tunnel10", 1)}, // the name goes before the source
         {tunnel("t", 1), tunnel("t", 4)},
         {tunnel("t", 4), tunnel("t", 255)},
         {tunnel("T", 4), tunnel("t", 1)}, // equivalent names: by byte, still before the source
         {tunnel("t007", 4), tunnel("t7", 1)},
         {tunnel("t  x", 4), tunnel("t x", 1)},
   };
   for (OrderRow const& row : rows) {
      EXPECT_TRUE(isListedBefore(row.first, row.second)) << row.first << ' ' << row.second;
      EXPECT_FALSE(isListedBefore(row.second, row.first)) << row.second << ' ' << row.first;
   }
}

TEST(TunnelOrder, sortGivesTheListingWhateverTheTableGave) {
   std::vector<RsvpLerTunnelSpecId> const expected = listing();
   std::mt19937 engine(7);
   for (int i = 0; i < 200; ++i) {
      std::vector<RsvpLerTunnelSpecId> tunnels = expected;
      std::shuffle(tunnels.begin(), tunnels.end(), engine);
      sortTunnels(tunnels);
      EXPECT_EQ(tunnels, expected);
   }
}

// Names with a long beginning in common, some of them equivalent, of several sources.
TEST(TunnelOrder, sortAgreesWithTheComparison) {
   std::mt19937 engine(11);
   auto const below = [&](unsigned limit) { return std::uniform_int_distribution<unsigned>(0, limit - 1)(engine); };
   for (int round = 0; round < 200; ++round) {
      std::string const prefix = round % 2 == 0 ? "router-with-a-long-name-" : "";
      std::vector<RsvpLerTunnelSpecId> tunnels;
      for (unsigned i = below(60); i > 0; --i) {
         std::string name = prefix;
         for (unsigned length = below(6); length > 0; --length)
            name += "0019aA.  -"[below(10)];
         tunnels.push_back(tunnel(name, static_cast<int>(below(4))));
      }
      std::vector<RsvpLerTunnelSpecId> expected = tunnels;
      std::stable_sort(expected.begin(), expected.end(), isListedBefore);
      sortTunnels(tunnels);
      EXPECT_EQ(tunnels, expected);
   }
}

TEST(TunnelOrder, sortKeepsEqualTunnelsAndTakesNone) {
   std::vector<RsvpLerTunnelSpecId> none;
   sortTunnels(none);
   EXPECT_TRUE(none.empty());

   std::vector<RsvpLerTunnelSpecId> twice = {tunnel("b"), tunnel("a"), tunnel("b")};
   sortTunnels(twice);
   EXPECT_EQ(twice, (std::vector{tunnel("a"), tunnel("b"), tunnel("b")}));
}

} // namespace
