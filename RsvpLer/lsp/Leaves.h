#pragma once

#include "RsvpLer/state/Lookups.h"

#include <vector>

namespace Rsvp::Cli {

// The leaves that the tree has a path to together with those that the signalling knows, each once, in the order of
// their addresses. Neither handle may be empty.
std::vector<RsvpDstId> getOrderedLeaves(Handle<RsvpLerTree> const& tree, Handle<RsvpLerLspRequestStatus> const& status);

} // namespace Rsvp::Cli
