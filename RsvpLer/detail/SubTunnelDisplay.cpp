#include "RsvpLer/detail/Bandwidth.h"
#include "RsvpLer/detail/Composition.h"
#include "RsvpLer/detail/Display.h"
#include "RsvpLer/detail/TunnelAttributes.h"
#include "RsvpLer/frame/Trace.h"

// The views of the sub-tunnels of a split tunnel.

namespace Rsvp::Cli {

namespace {

void renderSubTunnelId(SubTunnelPass& pass, bool) {
   Cli::renderSubTunnelId(pass.renderer, pass.view.subTunnelConfigId);
}

void renderSubTunnelBandwidth(SubTunnelPass& pass, bool showText) {
   Cli::renderSubTunnelBandwidth(pass.renderer, pass.view.subTunnelStatus, showText);
}

void renderSubTunnelBwNextAdjustment(SubTunnelPass& pass, bool showText) {
   pass.command.renderSubTunnelBwNextAdjustment(pass.renderer, pass.view.tunnelSpecId, pass.view.subTunnelConfigId,
                                                pass.view.autoBwStats, showText);
}

void renderSubTunnelSampledBandwidth(SubTunnelPass& pass, bool showText) {
   pass.command.renderSubTunnelSampledBandwidth(pass.renderer, pass.view.tunnelSpecId, pass.view.subTunnelConfigId,
                                                pass.view.bwSamplingStatusColl, showText);
}

void renderSubTunnelSessionId(SubTunnelPass& pass, bool showText) {
   Cli::renderSubTunnelSessionId(pass.renderer, pass.view.subTunnelStatus, showText);
}

void renderSubTunnelIndex(SubTunnelPass& pass, bool showText) {
   Cli::renderSubTunnelIndex(pass.renderer, pass.view.subTunnelConfigId, pass.view.subTunnelIndexMap, showText);
}

void renderSubTunnelState(SubTunnelPass& pass, bool showText) {
   Cli::renderSubTunnelState(pass.renderer, pass.view.subTunnelStatus, pass.view.mbb, showText);
}

void renderSubTunnelLspCount(SubTunnelPass& pass, bool showText) {
   Cli::renderSubTunnelLspCount(pass.renderer, static_cast<std::uint32_t>(pass.lspIds.size()), showText);
}

void renderLspIds(SubTunnelPass& pass, bool showText) {
   Cli::renderLspIds(pass.renderer, pass.lspIds, showText);
}

void renderSubTunnelActivePathType(SubTunnelPass& pass, bool showText) {
   Cli::renderSubTunnelActivePathType(pass.renderer, pass.view.lspGroupId, showText);
}

void renderPaths(SubTunnelPass& pass, bool) {
   pass.command.renderPaths(pass.renderer, pass.view.activeMbbTunnelConfigId, pass.view.pendingMbbTunnelConfigId);
}

void renderDetailedPaths(SubTunnelPass& pass, bool showText) {
   pass.command.renderDetailedPaths(pass.renderer, pass.view.activeMbbTunnelConfigId,
                                    pass.view.pendingMbbTunnelConfigId, showText);
}

void renderLsps(SubTunnelPass& pass, bool) {
   pass.command.renderLsps(pass.renderer, pass.view.activeMbbTunnelConfigId, pass.view.pendingMbbTunnelConfigId);
}

void renderSubTunnelSummary(SubTunnelPass& pass, bool) {
   pass.command.renderSubTunnelSummary(pass.renderer, pass.view.tunnelSpecId, pass.view.subTunnelConfigId,
                                       pass.view.lspGroupId, pass.view.subTunnelStatus, pass.view.bwSamplingStatusColl,
                                       pass.view.subTunnelIndexMap, static_cast<std::uint32_t>(pass.lspIds.size()),
                                       pass.view.mbb);
}

void renderHistory(SubTunnelPass& pass, Brindle::String const& heading, Brindle::String const& indent) {
   pass.command.renderSubTunnelHistory(pass.renderer, pass.view.subTunnelConfigId, pass.view.subTunnelIndexMap, heading,
                                       indent);
}

void renderSubTunnelHistory(SubTunnelPass& pass, bool) {
   if (pass.variant == ShowTunnelVariant::showTunnelHistoryDetailP2p)
      renderHistory(pass, "   History:", "      ");
   else
      renderHistory(pass, "Sub tunnel " + pass.view.subTunnelConfigId.subTunnelName(), "");
}

using enum Cell;

// The summary column writes no text at all: the row of the table is the tunnel's.
// clang-format off
constexpr SubTunnelSection sections[] = {
   //                                                                Tunnel-
   //                                Sub-                            SubTunnel-      History-
   //                                Tunnel Detail Lsp Summary Summary History Detail
   {renderSubTunnelId,               {yes,  yes,  yes,  dash,  dash,  dash,  yes}},
   {renderSubTunnelBandwidth,        {T,    T,    T,    F,     F,     F,     T}},
   {renderSubTunnelBwNextAdjustment, {F,    T,    F,    F,     F,     dash,  T}},
   {renderSubTunnelSampledBandwidth, {F,    T,    F,    F,     F,     dash,  T}},
   {renderSubTunnelSessionId,        {T,    T,    T,    F,     F,     dash,  T}},
   {renderSubTunnelIndex,            {F,    T,    F,    F,     F,     dash,  T}},
   {renderSubTunnelState,            {T,    T,    T,    F,     F,     F,     T}},
   {renderSubTunnelLspCount,         {T,    T,    T,    F,     F,     F,     T}},
   {renderLspIds,                    {F,    T,    F,    F,     F,     dash,  T}},
   {renderSubTunnelActivePathType,   {T,    T,    T,    F,     F,     F,     T}},
   {renderPaths,                     {yes,  dash, dash, dash,  dash,  dash,  dash}},
   {renderDetailedPaths,             {dash, T,    F,    F,     F,     dash,  T}},
   {renderLsps,                      {dash, dash, yes,  dash,  dash,  dash,  dash}},
   {renderSubTunnelSummary,          {dash, dash, dash, dash,  yes,   dash,  dash}},
   {renderSubTunnelHistory,          {dash, dash, dash, dash,  dash,  yes,   yes}},
};
// clang-format on

LspIds lspIdsOfBothInstances(ShowRsvpLerTunnel const& command, SubTunnelView const& view) {
   LspIds lspIds;
   appendLspIdsOfInstances(lspIds, view.activeMbbTunnelConfigId, view.pendingMbbTunnelConfigId,
                           command.lspGroupStatusCollTable(), command.lspRequestStatusCollTable());
   return lspIds;
}

void display(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, SubTunnelView const& view,
             ShowTunnelVariant variant) {
   SubTunnelPass pass{command, renderer, view, variant, lspIdsOfBothInstances(command, view)};
   auto const column = static_cast<std::size_t>(variant) - static_cast<std::size_t>(ShowTunnelVariant::showTunnelP2p);
   renderColumn(subTunnelSections(), column, pass);
}

} // namespace

std::span<SubTunnelSection const> subTunnelSections() noexcept {
   return sections;
}

void renderShowSubTunnel(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, SubTunnelView const& view) {
   RSVP_LER_TRACE(view.subTunnelConfigId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelP2p);
}

void renderShowSubTunnelDetail(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, SubTunnelView const& view) {
   RSVP_LER_TRACE(view.subTunnelConfigId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelDetailP2p);
}

void renderShowSubTunnelLsp(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, SubTunnelView const& view) {
   RSVP_LER_TRACE(view.subTunnelConfigId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelLspP2p);
}

void renderShowSubTunnelSummary(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, SubTunnelView const& view) {
   RSVP_LER_TRACE(view.subTunnelConfigId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelSummaryP2p);
}

void renderShowTunnelSubTunnelSummary(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer,
                                      SubTunnelView const& view) {
   RSVP_LER_TRACE(view.subTunnelConfigId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelSubTunnelSummaryP2p);
}

void renderShowSubTunnelHistory(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, SubTunnelView const& view) {
   RSVP_LER_TRACE(view.subTunnelConfigId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelHistoryP2p);
}

void renderShowSubTunnelHistoryDetail(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer,
                                      SubTunnelView const& view) {
   RSVP_LER_TRACE(view.subTunnelConfigId);
   display(command, renderer, view, ShowTunnelVariant::showTunnelHistoryDetailP2p);
}

} // namespace Rsvp::Cli
