#include "RsvpLer/frame/ShowRsvpLerTunnelFilter.h"

namespace Rsvp::Cli {

bool ShowRsvpLerTunnelFilter::match(RsvpLerTunnelSpecId const& tunnelSpecId,
                                    Handle<RsvpLerStatehubStatus> const&) const {
   return tunnelName.empty() || tunnelSpecId.name.view() == tunnelName;
}

} // namespace Rsvp::Cli
