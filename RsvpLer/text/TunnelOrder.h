#pragma once

#include "RsvpLer/state/Keys.h"

#include <vector>

namespace Rsvp::Cli {

// Whether `left` is listed before `right`: by name in natural order (text/NaturalOrder.h), names that are
// equivalent but not equal in byte order, tunnels of one name by the number of their source. A total order,
// so a listing doesn't depend on the order of the table it was taken from.
bool isListedBefore(RsvpLerTunnelSpecId const& left, RsvpLerTunnelSpecId const& right) noexcept;

// Sorts the tunnels into the order of a listing.
void sortTunnels(std::vector<RsvpLerTunnelSpecId>& tunnels);

} // namespace Rsvp::Cli
