#pragma once

#include "RsvpLer/detail/Composition.h"

// The sections that P2P and P2MP tunnels have in common, each with the arguments that a pass holds for it. A section
// that has no flag doesn't look at `showText`.

namespace Rsvp::Cli {

void renderTunnelNameHeading(TunnelPass& pass, bool showText);
void renderTunnelSrc(TunnelPass& pass, bool showText);
void renderTunnelDst(TunnelPass& pass, bool showText);
void renderTunnelConfigSource(TunnelPass& pass, bool showText);
void renderTunnelProfileId(TunnelPass& pass, bool showText);
void renderTunnelColorAndMetric(TunnelPass& pass, bool showText);
void renderTunnelState(TunnelPass& pass, bool showText);
void renderTunnelSplitTunnel(TunnelPass& pass, bool showText);
void renderTunnelBandwidth(TunnelPass& pass, bool showText);
void renderTunnelBandwidthDetails(TunnelPass& pass, bool showText);
void renderTunnelBandwidthParams(TunnelPass& pass, bool showText);
void renderTunnelPriorities(TunnelPass& pass, bool showText);
void renderTunnelMtuInformation(TunnelPass& pass, bool showText);
void renderTunnelFrrMode(TunnelPass& pass, bool showText);
void renderTunnelOptimization(TunnelPass& pass, bool showText);
void renderTunnelIndex(TunnelPass& pass, bool showText);
void renderTunnelLspCount(TunnelPass& pass, bool showText);
void renderLspIds(TunnelPass& pass, bool showText);
// The plain history variants have no name heading of their own: the heading of the log takes its place.
void renderTunnelHistory(TunnelPass& pass, bool showText);

} // namespace Rsvp::Cli
