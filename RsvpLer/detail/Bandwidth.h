#pragma once

#include "RsvpLer/state/Lookups.h"

// The bandwidth sections that need no command object; the others are members of ShowRsvpLerTunnel. Records hold bytes
// per second, the views show bits per second. An empty handle reads as an empty table.

namespace scrivo {
class RendererV2;
}

namespace Rsvp::Cli {

// The settings, schedule and last sample of a tunnel's automatic bandwidth; nothing when that is off. The text tells
// the next adjustment as the seconds from now on, JSON as a moment in UTC.
void renderTunnelBandwidthParams(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                                 Handle<RsvpLerAutoBwConfig> const& autoBwConfig,
                                 Handle<RsvpLerAutoBwStats> const& autoBwStats,
                                 Handle<RsvpLerBwSamplingStatusColl> const& bwSamplingStatusColl, bool showText);

// What the sub-tunnel holds now; 0 with an empty handle.
void renderSubTunnelBandwidth(scrivo::RendererV2* renderer, Handle<RsvpLerSubTunnelStatus> const& subTunnelStatus,
                              bool showText);

} // namespace Rsvp::Cli
