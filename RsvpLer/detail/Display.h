#pragma once

#include "RsvpLer/RsvpLerCliCapi.h"

// The display functions. None prints by itself: each is one column of its family's table of sections
// (P2pDisplay.cpp, P2mpDisplay.cpp, SubTunnelDisplay.cpp), walked from top to bottom.

namespace Rsvp::Cli {

void renderShowTunnelP2p(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view);
void renderShowTunnelDetailP2p(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view);
void renderShowTunnelLspP2p(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view);
void renderShowTunnelSummaryP2p(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view);
void renderShowTunnelSubTunnelSummaryP2p(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer,
                                         TunnelView const& view);
void renderShowTunnelHistoryP2p(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view);
void renderShowTunnelHistoryDetailP2p(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view);

void renderShowTunnelP2mp(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view);
void renderShowTunnelDetailP2mp(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view);
void renderShowTunnelLspP2mp(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view);
void renderShowTunnelSummaryP2mp(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view);
void renderShowTunnelHistoryP2mp(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view);
void renderShowTunnelHistoryDetailP2mp(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer,
                                       TunnelView const& view);

void renderShowSubTunnel(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, SubTunnelView const& view);
void renderShowSubTunnelDetail(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, SubTunnelView const& view);
void renderShowSubTunnelLsp(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, SubTunnelView const& view);
void renderShowSubTunnelSummary(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, SubTunnelView const& view);
void renderShowTunnelSubTunnelSummary(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer,
                                      SubTunnelView const& view);
void renderShowSubTunnelHistory(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, SubTunnelView const& view);
void renderShowSubTunnelHistoryDetail(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer,
                                      SubTunnelView const& view);

} // namespace Rsvp::Cli
