#pragma once

#include "RsvpLer/state/Lookups.h"

#include <cstdint>

// The attributes of a tunnel or sub-tunnel. Each routine owns one and writes its line, its JSON members, or both, into
// the dictionary that the caller has open. The members are written whatever `showText` says; the line, only when it is
// true. Any handle may be empty and then reads as the defaults of its record: false, 0, empty, the default address.

namespace scrivo {
class RendererV2;
}

namespace Rsvp::Cli {

// ---- Identity (TunnelIdentity.cpp).

// "Tunnel tun1" and "Sub tunnel 2". Text only, in every view that calls them.
void renderTunnelNameHeading(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId);
void renderSubTunnelId(scrivo::RendererV2* renderer, RsvpLerSubTunnelConfigId const& subTunnelConfigId);

void renderTunnelSrc(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config, bool showText);
// The lowest destination. Of session type 1, which has no single one, the member holds the default address and there is
// no line at all.
void renderTunnelDst(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config, bool showText);
// Where the tunnel came from, as its key tells it.
void renderTunnelConfigSource(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId, bool showText);
// The profile that was asked for and what became of it; nothing when none was asked for.
void renderTunnelProfileId(scrivo::RendererV2* renderer, Handle<RsvpLerTunnelSpec> const& tunnelSpec,
                           Handle<RsvpLerSuperTunnelConfig> const& config, bool showText);
// The additional endpoints in ascending order; nothing when there are none.
void renderTunnelTeps(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config, bool showText);
// Without a P2MP session there is no member, and "?" in the line.
void renderTunnelP2mpId(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelStatus> const& status, bool showText);
// The index of the tunnel's log, 0 included; nothing when the map is empty or has no entry.
void renderTunnelIndex(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                       Handle<RsvpLerTunnelIndexMap> const& tunnelIndexMap, bool showText);
// The same for a sub-tunnel, but here an index of 0 counts as none.
void renderSubTunnelIndex(scrivo::RendererV2* renderer, RsvpLerSubTunnelConfigId const& subTunnelConfigId,
                          Handle<RsvpLerSubTunnelIndexMap> const& subTunnelIndexMap, bool showText);
// The session number; nothing when there is none.
void renderTunnelSessionCliId(scrivo::RendererV2* renderer, Handle<RsvpLerSubTunnelStatus> const& status,
                              bool showText);
void renderSubTunnelSessionId(scrivo::RendererV2* renderer, Handle<RsvpLerSubTunnelStatus> const& status,
                              bool showText);

// ---- State (TunnelState.cpp).

// The metric is the IGP's when the configuration leaves it to the IGP, else the configured one. A color that isn't set
// has no member, and "-" in the line.
void renderTunnelColorAndMetric(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config,
                                Handle<RsvpLerSuperTunnelStatus> const& status, bool showText);
// `mbb` tells that a replacement runs beside the active instance or LSP.
void renderTunnelState(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelStatus> const& status, bool mbb,
                       bool showText);
void renderSubTunnelState(scrivo::RendererV2* renderer, Handle<RsvpLerSubTunnelStatus> const& status, bool mbb,
                          bool showText);
void renderTunnelStateCommon(scrivo::RendererV2* renderer, char const* state, bool mbb, bool showText);
// The number of LSPs, those without an id included.
void renderTunnelLspCount(scrivo::RendererV2* renderer, std::uint32_t lspCount, bool showText);
void renderSubTunnelLspCount(scrivo::RendererV2* renderer, std::uint32_t lspCount, bool showText);
// "split", or the path that the group in use stands for. The default group reads "unknown" and has no line.
void renderActivePathType(scrivo::RendererV2* renderer, RsvpLerLspGroupId const& lspGroupId, bool notSplit,
                          bool showText);
void renderSubTunnelActivePathType(scrivo::RendererV2* renderer, RsvpLerLspGroupId const& lspGroupId, bool showText);
// JSON only: a P2MP tunnel is never on a secondary path.
void renderP2mpActivePathType(scrivo::RendererV2* renderer);

// ---- Options (TunnelOptions.cpp).

// Two lines, which stand at six blanks though they have no heading.
void renderTunnelPriorities(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config,
                            bool showText);
void renderTunnelFrrMode(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config, bool showText);
void renderTunnelOptimization(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config,
                              bool showText);
// The two flags are independent of each other: "disabled, UCMP enabled" is a state.
void renderTunnelLdpTunneling(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config,
                              bool showText);
void renderTunnelIgpShortcut(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config,
                             bool showText);

// ---- Split (TunnelSplit.cpp).

// JSON only: whether the tunnel may split its bandwidth.
void renderTunnelSplitTunnel(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config);
// How it splits; nothing when it may not.
void renderTunnelSplitAttrs(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config,
                            bool showText);

} // namespace Rsvp::Cli
