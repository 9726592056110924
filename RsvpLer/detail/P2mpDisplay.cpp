#include "RsvpLer/detail/Display.h"
#include "RsvpLer/detail/TunnelAttributes.h"
#include "RsvpLer/detail/TunnelSections.h"
#include "RsvpLer/frame/Trace.h"

// The views of P2MP tunnels.

namespace Rsvp::Cli {

namespace {

void renderTunnelP2mpId(TunnelPass& pass, bool showText) {
   Cli::renderTunnelP2mpId(pass.renderer, pass.view.superTunnelStatus, showText);
}

void renderP2mpActivePathType(TunnelPass& pass, bool) {
   Cli::renderP2mpActivePathType(pass.renderer);
}

RsvpLerPathSpecId treeSpecId(TunnelPass const& pass) {
   return pass.view.superTunnelConfig ? pass.view.superTunnelConfig->primaryPathSpecId : RsvpLerPathSpecId();
}

void renderP2mpLspGroup(TunnelPass& pass, bool showText) {
   pass.command.renderP2mpLspGroup(pass.renderer, treeSpecId(pass), pass.view.activeMbbTunnelStatus,
                                   pass.view.pendingMbbTunnelStatus, showText);
}

void renderDetailedP2mpLspGroup(TunnelPass& pass, bool showText) {
   pass.command.renderDetailedP2mpLspGroup(pass.renderer, treeSpecId(pass), pass.view.activeMbbTunnelStatus,
                                           pass.view.pendingMbbTunnelStatus, showText);
}

void renderP2mpLsps(TunnelPass& pass, bool) {
   pass.command.renderP2mpLsps(pass.renderer, pass.view.activeMbbTunnelConfigId, pass.view.pendingMbbTunnelConfigId);
}

void renderP2mpTunnelSummary(TunnelPass& pass, bool) {
   pass.command.renderP2mpTunnelSummary(pass.renderer, pass.view.tunnelSpecId, pass.view.superTunnelStatus,
                                        pass.view.tunnelIndexMap, static_cast<std::uint32_t>(pass.lspIds.size()),
                                        pass.view.mbb);
}

using enum Cell;

// The destination never has a line: the leaves take its place. The LSP view is meant not to show the profile nor the
// color, unlike that of P2P tunnels.
// clang-format off
constexpr P2mpSection sections[] = {
   //                                                           History-
   //                             P2mp Detail Lsp Summary History Detail
   {renderTunnelNameHeading,      {yes,  yes,  yes,  dash,  dash,  yes}},
   {renderTunnelSrc,              {T,    T,    T,    F,     F,     T}},
   {renderTunnelDst,              {F,    F,    F,    F,     F,     F}},
   {renderTunnelP2mpId,           {T,    T,    T,    F,     dash,  T}},
   {renderTunnelConfigSource,     {F,    T,    F,    F,     dash,  T}},
   {renderTunnelProfileId,        {T,    T,    F,    F,     dash,  T}},
   {renderTunnelColorAndMetric,   {T,    T,    F,    F,     F,     T}},
   {renderTunnelState,            {T,    T,    T,    F,     F,     T}},
   {renderTunnelSplitTunnel,      {yes,  yes,  yes,  yes,   yes,   yes}},
   {renderTunnelBandwidth,        {T,    T,    T,    F,     F,     T}},
   {renderTunnelBandwidthDetails, {T,    T,    T,    F,     dash,  T}},
   {renderTunnelBandwidthParams,  {F,    T,    F,    F,     dash,  T}},
   {renderTunnelPriorities,       {F,    T,    F,    F,     dash,  T}},
   {renderTunnelMtuInformation,   {F,    T,    F,    F,     dash,  T}},
   {renderTunnelFrrMode,          {F,    T,    F,    F,     dash,  T}},
   {renderTunnelOptimization,     {F,    T,    F,    F,     dash,  T}},
   {renderTunnelIndex,            {F,    T,    F,    F,     dash,  T}},
   {renderTunnelLspCount,         {T,    T,    T,    F,     F,     T}},
   {renderLspIds,                 {F,    T,    F,    F,     dash,  T}},
   {renderP2mpActivePathType,     {yes,  yes,  yes,  yes,   yes,   yes}},
   {renderP2mpLspGroup,           {T,    dash, dash, dash,  dash,  dash}},
   {renderDetailedP2mpLspGroup,   {dash, T,    F,    F,     dash,  T}},
   {renderP2mpLsps,               {dash, dash, yes,  dash,  dash,  dash}},
   {renderP2mpTunnelSummary,      {dash, dash, dash, yes,   dash,  dash}},
   {renderTunnelHistory,          {dash, dash, dash, dash,  yes,   yes}},
};
// clang-format on

void display(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view,
             ShowTunnelVariant variant) {
   TunnelPass pass = tunnelPass(command, renderer, view, variant);
   auto const column = static_cast<std::size_t>(variant) - static_cast<std::size_t>(ShowTunnelVariant::showTunnelP2mp);
   renderColumn(p2mpSections(), column, pass);
}

} // namespace

std::span<P2mpSection const> p2mpSections() noexcept {
   return sections;
}

void renderShowTunnelP2mp(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view) {
   RSVP_LER_TRACE(view.tunnelSpecId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelP2mp);
}

void renderShowTunnelDetailP2mp(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view) {
   RSVP_LER_TRACE(view.tunnelSpecId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelDetailP2mp);
}

void renderShowTunnelLspP2mp(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view) {
   RSVP_LER_TRACE(view.tunnelSpecId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelLspP2mp);
}

void renderShowTunnelSummaryP2mp(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view) {
   RSVP_LER_TRACE(view.tunnelSpecId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelSummaryP2mp);
}

void renderShowTunnelHistoryP2mp(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view) {
   RSVP_LER_TRACE(view.tunnelSpecId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelHistoryP2mp);
}

void renderShowTunnelHistoryDetailP2mp(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer,
                                       TunnelView const& view) {
   RSVP_LER_TRACE(view.tunnelSpecId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelHistoryDetailP2mp);
}

} // namespace Rsvp::Cli
