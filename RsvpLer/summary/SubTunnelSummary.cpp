#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/summary/SummaryTable.h"
#include "RsvpLer/text/EnumText.h"
#include "RsvpLer/text/Rates.h"
#include "RsvpLer/text/RsvpShowUtils.h"

// The table of the sub-tunnels of one split tunnel. It exists in text only, and begins with an empty line that parts it
// from the table of the tunnel before.
//
//
//    Tunnel: tun1
//    Sub Tunnel Session ID Index Active Path Reserved BW  Sampled BW LSPs State
//    ---------- ---------- ----- ----------- ----------- ----------- ---- -----
//             1         12     3 primary       1.00 Mbps 500.00 Kbps    1 up

namespace Rsvp::Cli {

namespace {

struct SubTunnelCells {
   std::uint32_t sessionCliId = RsvpLerSubTunnelStatus::noSessionCliId;
   std::uint32_t index = 0;
   std::uint64_t bandwidth = 0; // bits per second
   std::uint64_t sampled = 0;   // bits per second
   StateCell state;
};

std::uint64_t lastSampledBandwidth(Handle<RsvpLerBwSamplingStatusColl> const& coll,
                                   RsvpLerTunnelSpecId const& tunnelSpecId,
                                   RsvpLerSubTunnelConfigId const& subTunnelConfigId) {
   auto const tunnel = coll ? coll->bwSamplingStatus(tunnelSpecId) : nullptr;
   auto const* subTunnel = tunnel ? tunnel->subTunnelBwSamplingStatus.valueOf(subTunnelConfigId) : nullptr;
   return subTunnel != nullptr ? bitsPerSecond(subTunnel->lastSampledBandwidth) : 0;
}

SubTunnelCells gatherCells(RsvpLerTunnelSpecId const& tunnelSpecId, RsvpLerSubTunnelConfigId const& subTunnelConfigId,
                           Handle<RsvpLerSubTunnelStatus> const& status,
                           Handle<RsvpLerBwSamplingStatusColl> const& samples,
                           Handle<RsvpLerSubTunnelIndexMap> const& indexMap, bool mbb) {
   SubTunnelCells cells;
   if (indexMap)
      cells.index = indexMap->tunnelIndexForSubTunnelConfigId(subTunnelConfigId).valueOr(0);
   cells.sampled = lastSampledBandwidth(samples, tunnelSpecId, subTunnelConfigId);
   auto state = RsvpLerTunnelState::unknown;
   if (status) {
      cells.sessionCliId = status->sessionCliId;
      cells.bandwidth = bitsPerSecond(status->currentBandwidth);
      state = status->state;
   }
   cells.state = {tunnelStateToString(state), mbb};
   return cells;
}

} // namespace

void ShowRsvpLerTunnel::setSubTunnelSummaryHeaderColSizes(RsvpLerTunnelSpecId const& tunnelSpecId,
                                                          RsvpLerSubTunnelConfigId const& subTunnelConfigId,
                                                          Handle<RsvpLerBwSamplingStatusColl> const& samples,
                                                          Handle<RsvpLerSubTunnelIndexMap> const& indexMap) {
   RSVP_LER_TRACE(subTunnelConfigId);
   auto const status = getSubTunnelStatus(tunnelSpecId, subTunnelConfigId);
   SubTunnelCells const cells =
         gatherCells(tunnelSpecId, subTunnelConfigId, status, samples, indexMap, getCurrentInstances(status).mbb);
   raiseWidth(subTunnelIdWidth, digitCount(subTunnelConfigId.subTunnelId));
   raiseWidth(sessionIdWidth, digitCount(cells.sessionCliId));
   raiseWidth(indexWidth, digitCount(cells.index));
   raiseBwWidth(bwWidth, bw1000, cells.bandwidth);
   // This column never takes the flag of the table.
   raiseWidth(sampledBwWidth, RsvpShowUtils::bandwidthText(cells.sampled, false).size());
   raiseWidth(stateWidth, cells.state.size());
}

void ShowRsvpLerTunnel::renderSubTunnelSummaryHeader(scrivo::RendererV2* renderer,
                                                     RsvpLerTunnelSpecId const& tunnelSpecId) const {
   RSVP_LER_TRACE(tunnelSpecId);
   if (!renderer->isText())
      return;
   renderer->eol();
   renderer->addText("Tunnel: ", tunnelSpecId.name);
   renderer->eol();

   addRight(renderer, subTunnelIdWidth, "Sub Tunnel");
   renderer->writeChar(' ');
   addRight(renderer, sessionIdWidth, "Session ID");
   renderer->writeChar(' ');
   addRight(renderer, indexWidth, "Index");
   renderer->writeChar(' ');
   addLeft(renderer, activePathWidth + 1, "Active Path");
   addRight(renderer, bwWidth, "Reserved BW");
   renderer->writeChar(' ');
   addRight(renderer, sampledBwWidth, "Sampled BW");
   renderer->writeChar(' ');
   addRight(renderer, lspCountWidth, "LSPs");
   renderer->addFrill(" State\n");

   addRule(renderer, subTunnelIdWidth);
   addRule(renderer, sessionIdWidth);
   addRule(renderer, indexWidth);
   addRule(renderer, activePathWidth);
   addRule(renderer, bwWidth);
   addRule(renderer, sampledBwWidth);
   addRule(renderer, lspCountWidth);
   addLastRule(renderer, stateWidth);
   renderer->eol();
}

void ShowRsvpLerTunnel::renderSubTunnelSummary(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                                               RsvpLerSubTunnelConfigId const& subTunnelConfigId,
                                               RsvpLerLspGroupId const& lspGroupId,
                                               Handle<RsvpLerSubTunnelStatus> const& subTunnelStatus,
                                               Handle<RsvpLerBwSamplingStatusColl> const& samples,
                                               Handle<RsvpLerSubTunnelIndexMap> const& indexMap, std::uint32_t lspCount,
                                               bool mbb) const {
   RSVP_LER_TRACE(subTunnelConfigId);
   if (!renderer->isText())
      return;
   SubTunnelCells const cells = gatherCells(tunnelSpecId, subTunnelConfigId, subTunnelStatus, samples, indexMap, mbb);
   addRight(renderer, subTunnelIdWidth, subTunnelConfigId.subTunnelId);
   renderer->writeChar(' ');
   if (cells.sessionCliId == RsvpLerSubTunnelStatus::noSessionCliId)
      addRight(renderer, sessionIdWidth, "-");
   else
      addRight(renderer, sessionIdWidth, cells.sessionCliId);
   renderer->writeChar(' ');
   addIndex(renderer, indexWidth, cells.index);
   renderer->writeChar(' ');
   addLeft(renderer, activePathWidth + 1, getSubTunnelActivePathType(lspGroupId));
   renderer->addFrillRight(bwWidth, RsvpShowUtils::bandwidthText(cells.bandwidth, bw1000).view(), ' ');
   renderer->writeChar(' ');
   // A sample is measured for the width whether or not it is shown.
   if (findAutoBwConfig(autoBwConfig(), tunnelSpecId).enabled)
      renderer->addFrillRight(sampledBwWidth, RsvpShowUtils::bandwidthText(cells.sampled, false).view(), ' ');
   else
      addRight(renderer, sampledBwWidth, "-");
   renderer->writeChar(' ');
   addRight(renderer, lspCountWidth, lspCount);
   renderer->writeChar(' ');
   cells.state.render(renderer);
   renderer->eol();
}

} // namespace Rsvp::Cli
