#include "RsvpLer/detail/TunnelSections.h"

#include "RsvpLer/detail/Bandwidth.h"
#include "RsvpLer/detail/TunnelAttributes.h"

namespace Rsvp::Cli {

TunnelPass tunnelPass(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view,
                      ShowTunnelVariant variant) {
   return {.command = command,
           .renderer = renderer,
           .view = view,
           .variant = variant,
           .notSplit = !view.superTunnelStatus || !view.superTunnelStatus->split,
           .lspIds = getLspIdsForSuperTunnel(view.tunnelSpecId, command.subTunnelStatusCollTable(),
                                             command.lspGroupStatusCollTable(), command.lspRequestStatusCollTable())};
}

void renderTunnelNameHeading(TunnelPass& pass, bool) {
   renderTunnelNameHeading(pass.renderer, pass.view.tunnelSpecId);
}

void renderTunnelSrc(TunnelPass& pass, bool showText) {
   renderTunnelSrc(pass.renderer, pass.view.superTunnelConfig, showText);
}

void renderTunnelDst(TunnelPass& pass, bool showText) {
   renderTunnelDst(pass.renderer, pass.view.superTunnelConfig, showText);
}

void renderTunnelConfigSource(TunnelPass& pass, bool showText) {
   renderTunnelConfigSource(pass.renderer, pass.view.tunnelSpecId, showText);
}

void renderTunnelProfileId(TunnelPass& pass, bool showText) {
   renderTunnelProfileId(pass.renderer, pass.view.tunnelSpec, pass.view.superTunnelConfig, showText);
}

void renderTunnelColorAndMetric(TunnelPass& pass, bool showText) {
   renderTunnelColorAndMetric(pass.renderer, pass.view.superTunnelConfig, pass.view.superTunnelStatus, showText);
}

void renderTunnelState(TunnelPass& pass, bool showText) {
   renderTunnelState(pass.renderer, pass.view.superTunnelStatus, pass.view.mbb, showText);
}

void renderTunnelSplitTunnel(TunnelPass& pass, bool) {
   renderTunnelSplitTunnel(pass.renderer, pass.view.superTunnelConfig);
}

void renderTunnelBandwidth(TunnelPass& pass, bool showText) {
   pass.command.renderTunnelBandwidth(pass.renderer, pass.view.tunnelSpecId, pass.view.superTunnelStatus,
                                      pass.view.autoBwConfig, pass.view.subTunnelStatusColl, showText);
}

void renderTunnelBandwidthDetails(TunnelPass& pass, bool showText) {
   pass.command.renderTunnelBandwidthDetails(pass.renderer, pass.view.tunnelSpecId, pass.view.superTunnelConfig,
                                             pass.view.superTunnelStatus, pass.view.autoBwConfig,
                                             pass.view.subTunnelStatusColl, showText);
}

void renderTunnelBandwidthParams(TunnelPass& pass, bool showText) {
   renderTunnelBandwidthParams(pass.renderer, pass.view.tunnelSpecId, pass.view.autoBwConfig, pass.view.autoBwStats,
                               pass.view.bwSamplingStatusColl, showText);
}

void renderTunnelPriorities(TunnelPass& pass, bool showText) {
   renderTunnelPriorities(pass.renderer, pass.view.superTunnelConfig, showText);
}

void renderTunnelMtuInformation(TunnelPass& pass, bool showText) {
   pass.command.renderTunnelMtuInformation(pass.renderer, pass.view.activeMbbTunnelConfigId,
                                           pass.view.pendingMbbTunnelConfigId, showText);
}

void renderTunnelFrrMode(TunnelPass& pass, bool showText) {
   renderTunnelFrrMode(pass.renderer, pass.view.superTunnelConfig, showText);
}

void renderTunnelOptimization(TunnelPass& pass, bool showText) {
   renderTunnelOptimization(pass.renderer, pass.view.superTunnelConfig, showText);
}

void renderTunnelIndex(TunnelPass& pass, bool showText) {
   renderTunnelIndex(pass.renderer, pass.view.tunnelSpecId, pass.view.tunnelIndexMap, showText);
}

void renderTunnelLspCount(TunnelPass& pass, bool showText) {
   renderTunnelLspCount(pass.renderer, static_cast<std::uint32_t>(pass.lspIds.size()), showText);
}

void renderLspIds(TunnelPass& pass, bool showText) {
   renderLspIds(pass.renderer, pass.lspIds, showText);
}

void renderTunnelHistory(TunnelPass& pass, bool) {
   auto const sessionType =
         pass.view.superTunnelConfig ? pass.view.superTunnelConfig->sessionType : RsvpSessionType::p2p;
   bool const detail = pass.variant == ShowTunnelVariant::showTunnelHistoryDetailP2p ||
                       pass.variant == ShowTunnelVariant::showTunnelHistoryDetailP2mp;
   Brindle::String heading = "   History:";
   if (!detail)
      heading.assign("Tunnel ").append(pass.view.tunnelSpecId.name.view());
   pass.command.renderTunnelHistory(pass.renderer, pass.view.tunnelSpecId, pass.view.tunnelIndexMap, sessionType,
                                    heading, detail ? "      " : "");
}

} // namespace Rsvp::Cli
