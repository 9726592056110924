#pragma once

#include "RsvpLer/RsvpLerCliCapi.h"

#include <cstdint>

namespace Rsvp::Cli {

// The counts of the status view, each named by its JSON key. A tunnel or sub-tunnel is up by its own state, an LSP by
// its group's, a sub-LSP (the part of a P2MP LSP that serves one leaf) by the signalling's.
struct LerCounts {
   std::uint32_t tunnelCount = 0;
   std::uint32_t tunnelUpCount = 0;
   std::uint32_t p2mpTunnelCount = 0;
   std::uint32_t p2mpTunnelUpCount = 0;
   std::uint32_t tunnelSecondaryEnabledCount = 0;
   std::uint32_t tunnelSecondaryInUseCount = 0;
   std::uint32_t splitBwTunnelCount = 0;
   std::uint32_t subTunnelCount = 0;
   std::uint32_t subTunnelUpCount = 0;
   std::uint32_t subTunnelSecondaryInUseCount = 0;
   std::uint32_t lspCount = 0;   // by requests: a group that is being replaced counts two
   std::uint32_t lspUpCount = 0; // by groups: a group counts once, however many requests it has
   std::uint32_t p2mpLspCount = 0;
   std::uint32_t p2mpLspUpCount = 0;
   std::uint32_t p2mpSubLspCount = 0;
   std::uint32_t p2mpSubLspUpCount = 0;
};

// Walks over the tables of the command object. A missing table leaves its counts at 0.
LerCounts countLer(ShowRsvpLer const& command);

} // namespace Rsvp::Cli
