#include "RsvpLer/text/TunnelOrder.h"

#include "RsvpLer/text/NaturalOrder.h"

#include <algorithm>
#include <string_view>

namespace Rsvp::Cli {

namespace {

bool isNaturallyBefore(std::string_view left, std::string_view right) noexcept {
   return SI::natural::_compare<char, char const*>(left.data(), left.data() + left.size(), right.data(),
                                                   right.data() + right.size());
}

} // namespace

bool isListedBefore(RsvpLerTunnelSpecId const& left, RsvpLerTunnelSpecId const& right) noexcept {
   if (left.name == right.name)
      return left.source < right.source;
   if (isNaturallyBefore(left.name, right.name))
      return true;
   if (isNaturallyBefore(right.name, left.name))
      return false;
   return left.name < right.name;
}

void sortTunnels(std::vector<RsvpLerTunnelSpecId>& tunnels) {
   // Names come from outside: a merge sort stays inside its memory even if the comparison were ever no order.
   std::stable_sort(tunnels.begin(), tunnels.end(), isListedBefore);
}

} // namespace Rsvp::Cli
