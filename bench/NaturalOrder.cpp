#include "RsvpLer/text/NaturalOrder.h"

#include "RsvpLer/text/TunnelOrder.h"
#include "bench/Figures.h"
#include "bench/Measure.h"
#include "bench/Text.h"

#include <algorithm>
#include <random>

// 100,000 shuffled names of tunnels: the sort of a listing, and a sort that copies both names for each comparison.

namespace Bench {

namespace {

using Tunnels = std::vector<Rsvp::RsvpLerTunnelSpecId>;

bool isBefore(std::string const& left, std::string const& right) {
   return SI::natural::_compare<char, char const*>(left.data(), left.data() + left.size(), right.data(),
                                                   right.data() + right.size());
}

bool copyingOrder(Rsvp::RsvpLerTunnelSpecId const& left, Rsvp::RsvpLerTunnelSpecId const& right) {
   std::string const leftName(left.name.view());
   std::string const rightName(right.name.view());
   if (leftName == rightName)
      return left.source < right.source;
   return isBefore(leftName, rightName);
}

Tunnels shuffledTunnels(std::size_t count) {
   Tunnels tunnels;
   for (std::size_t i = 0; i < count; ++i) {
      std::string const name = "pe1-pe" + std::to_string(1 + i % 999) + "-" + std::to_string(1 + i / 999);
      tunnels.push_back({Fathom::String(name), Rsvp::RsvpLerTunnelSource::cli});
   }
   std::shuffle(tunnels.begin(), tunnels.end(), std::mt19937(1));
   return tunnels;
}

} // namespace

Rows naturalOrder() {
   Tunnels const shuffled = shuffledTunnels(100'000);
   Tunnels sorted = shuffled;
   Tunnels copied = shuffled;
   Rsvp::Cli::sortTunnels(sorted);
   std::sort(copied.begin(), copied.end(), copyingOrder);
   require(sorted == copied, "the two sorts differ");

   Tunnels work;
   std::vector<double> const seconds = measure({
         {"module",
          [&] {
             work = shuffled;
             Rsvp::Cli::sortTunnels(work);
          }},
         {"copying",
          [&] {
             work = shuffled;
             std::sort(work.begin(), work.end(), copyingOrder);
          }},
   });
   return {{"Natural order: the copying sort's time over the module's", seconds[1] / seconds[0], true, 5,
            milliseconds(seconds[0])}};
}

} // namespace Bench
