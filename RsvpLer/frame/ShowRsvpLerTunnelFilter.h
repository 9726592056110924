#pragma once

#include "RsvpLer/Export.h"
#include "RsvpLer/state/Lookups.h"
#include "brindle/String.h"

namespace Rsvp::Cli {

// Which tunnels a command concerns: those of one exact name, case included, or all when the name is empty.
struct ShowRsvpLerTunnelFilter {
   Brindle::String tunnelName;

   // Depends on the key alone.
   RSVP_LER_EXPORT bool match(RsvpLerTunnelSpecId const& tunnelSpecId,
                              Handle<RsvpLerStatehubStatus> const& rsvpLerStatus) const;
   // Whether there is a restriction.
   explicit operator bool() const noexcept { return !tunnelName.empty(); }

   static bool isEq(ShowRsvpLerTunnelFilter const& a, ShowRsvpLerTunnelFilter const& b) noexcept { return a == b; }
   friend bool operator==(ShowRsvpLerTunnelFilter const&, ShowRsvpLerTunnelFilter const&) noexcept = default;
};

} // namespace Rsvp::Cli
