#include "RsvpLer/detail/Display.h"
#include "RsvpLer/detail/TunnelAttributes.h"
#include "RsvpLer/detail/TunnelSections.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/RendererV2.h"

// The views of P2P tunnels.

namespace Rsvp::Cli {

namespace {

void renderTunnelTeps(TunnelPass& pass, bool showText) {
   Cli::renderTunnelTeps(pass.renderer, pass.view.superTunnelConfig, showText);
}

void renderTunnelSplitAttrs(TunnelPass& pass, bool showText) {
   Cli::renderTunnelSplitAttrs(pass.renderer, pass.view.superTunnelConfig, showText);
}

void renderTunnelSessionCliId(TunnelPass& pass, bool showText) {
   Cli::renderTunnelSessionCliId(pass.renderer, pass.view.subTunnelStatus, showText);
}

void renderTunnelLdpTunneling(TunnelPass& pass, bool showText) {
   Cli::renderTunnelLdpTunneling(pass.renderer, pass.view.superTunnelConfig, showText);
}

void renderTunnelIgpShortcut(TunnelPass& pass, bool showText) {
   Cli::renderTunnelIgpShortcut(pass.renderer, pass.view.superTunnelConfig, showText);
}

void renderActivePathType(TunnelPass& pass, bool showText) {
   Cli::renderActivePathType(pass.renderer, pass.view.lspGroupId, pass.notSplit, showText);
}

void renderPaths(TunnelPass& pass, bool) {
   pass.command.renderPaths(pass.renderer, pass.view.activeMbbTunnelConfigId, pass.view.pendingMbbTunnelConfigId);
}

void renderDetailedPaths(TunnelPass& pass, bool showText) {
   pass.command.renderDetailedPaths(pass.renderer, pass.view.activeMbbTunnelConfigId,
                                    pass.view.pendingMbbTunnelConfigId, showText);
}

void renderLsps(TunnelPass& pass, bool) {
   pass.command.renderLsps(pass.renderer, pass.view.activeMbbTunnelConfigId, pass.view.pendingMbbTunnelConfigId);
}

void renderP2pTunnelSummary(TunnelPass& pass, bool) {
   pass.command.renderP2pTunnelSummary(pass.renderer, pass.view.tunnelSpecId, pass.view.superTunnelConfig,
                                       pass.view.superTunnelStatus, pass.view.tunnelIndexMap, pass.view.lspGroupId,
                                       static_cast<std::uint32_t>(pass.lspIds.size()), pass.notSplit, pass.view.mbb);
}

void renderSubTunnels(TunnelPass& pass, bool) {
   pass.renderer->startJsonDict("subTunnels");
   pass.command.renderSubTunnelsForTunnel(pass.renderer, pass.view.tunnelSpecId, pass.view.superTunnelStatus,
                                          pass.view.subTunnelStatusColl, pass.variant);
   pass.renderer->endJsonDict();
}

bool notSplit(TunnelPass const& pass) {
   return pass.notSplit;
}

using enum Cell;

// clang-format off
constexpr P2pSection sections[] = {
   //                                                      Sub-
   //                                                      Tunnel-        History-
   //                             P2p Detail Lsp  Summary  Summary History Detail
   {renderTunnelNameHeading,      {yes,  yes,  yes,  dash,  dash,  dash,  yes}},
   {renderTunnelSrc,              {T,    T,    T,    F,     F,     F,     T}},
   {renderTunnelDst,              {T,    T,    T,    F,     F,     F,     T}},
   {renderTunnelConfigSource,     {F,    T,    F,    F,     F,     dash,  T}},
   {renderTunnelProfileId,        {T,    T,    T,    F,     F,     dash,  T}},
   {renderTunnelTeps,             {F,    T,    F,    F,     F,     dash,  T}},
   {renderTunnelColorAndMetric,   {T,    T,    T,    F,     F,     F,     T}},
   {renderTunnelState,            {T,    T,    T,    F,     F,     F,     T}},
   {renderTunnelSplitTunnel,      {yes,  yes,  yes,  yes,   yes,   yes,   yes}},
   {renderTunnelSplitAttrs,       {T,    T,    T,    F,     F,     dash,  T}},
   {renderTunnelBandwidth,        {T,    T,    T,    F,     F,     F,     T}},
   {renderTunnelBandwidthDetails, {T,    T,    T,    F,     F,     dash,  T}},
   {renderTunnelBandwidthParams,  {F,    T,    F,    F,     F,     dash,  T}},
   {renderTunnelPriorities,       {F,    T,    F,    F,     F,     dash,  T}},
   {renderTunnelMtuInformation,   {F,    T,    F,    F,     F,     dash,  T}},
   {renderTunnelFrrMode,          {F,    T,    F,    F,     F,     dash,  T}},
   {renderTunnelOptimization,     {F,    T,    F,    F,     F,     dash,  T}},
   {renderTunnelSessionCliId,     {T,    T,    T,    F,     F,     dash,  T}},
   {renderTunnelIndex,            {F,    T,    F,    F,     F,     dash,  T}},
   {renderTunnelLspCount,         {T,    T,    T,    F,     F,     F,     T}},
   {renderLspIds,                 {F,    T,    F,    F,     F,     dash,  T},    notSplit},
   {renderTunnelLdpTunneling,     {F,    T,    F,    F,     F,     dash,  T}},
   {renderTunnelIgpShortcut,      {F,    T,    F,    F,     F,     dash,  T}},
   {renderActivePathType,         {T,    T,    T,    F,     F,     F,     T}},
   {renderPaths,                  {yes,  dash, dash, dash,  dash,  dash,  dash}, notSplit},
   {renderDetailedPaths,          {dash, T,    F,    F,     F,     dash,  T},    notSplit},
   {renderLsps,                   {dash, dash, yes,  dash,  dash,  dash,  dash}, notSplit},
   {renderP2pTunnelSummary,       {dash, dash, dash, yes,   dash,  dash,  dash}},
   {renderTunnelHistory,          {dash, dash, dash, dash,  dash,  yes,   yes}},
   {renderSubTunnels,             {yes,  yes,  yes,  yes,   yes,   yes,   yes}},
};
// clang-format on

void display(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view,
             ShowTunnelVariant variant) {
   TunnelPass pass = tunnelPass(command, renderer, view, variant);
   auto const column = static_cast<std::size_t>(variant) - static_cast<std::size_t>(ShowTunnelVariant::showTunnelP2p);
   renderColumn(p2pSections(), column, pass);
}

} // namespace

std::span<P2pSection const> p2pSections() noexcept {
   return sections;
}

void renderShowTunnelP2p(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view) {
   RSVP_LER_TRACE(view.tunnelSpecId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelP2p);
}

void renderShowTunnelDetailP2p(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view) {
   RSVP_LER_TRACE(view.tunnelSpecId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelDetailP2p);
}

void renderShowTunnelLspP2p(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view) {
   RSVP_LER_TRACE(view.tunnelSpecId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelLspP2p);
}

void renderShowTunnelSummaryP2p(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view) {
   RSVP_LER_TRACE(view.tunnelSpecId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelSummaryP2p);
}

void renderShowTunnelSubTunnelSummaryP2p(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer,
                                         TunnelView const& view) {
   RSVP_LER_TRACE(view.tunnelSpecId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelSubTunnelSummaryP2p);
}

void renderShowTunnelHistoryP2p(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view) {
   RSVP_LER_TRACE(view.tunnelSpecId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelHistoryP2p);
}

void renderShowTunnelHistoryDetailP2p(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer,
                                      TunnelView const& view) {
   RSVP_LER_TRACE(view.tunnelSpecId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelHistoryDetailP2p);
}

} // namespace Rsvp::Cli
