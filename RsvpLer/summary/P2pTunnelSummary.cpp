#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/summary/SummaryTable.h"
#include "RsvpLer/text/EnumText.h"
#include "RsvpLer/text/Rates.h"
#include "RsvpLer/text/RsvpShowUtils.h"

// The table of P2P tunnels. It exists in text only.
//
//    P2P
//    Tunnel Name Destination Color Index Active Path Reserved BW LSPs State
//    ----------- ----------- ----- ----- ----------- ----------- ---- --------
//    tun1        10.0.0.9      100     7 primary       1.00 Mbps    2 up (MBB)

namespace Rsvp::Cli {

namespace {

struct P2pCells {
   Lattice::IpGenAddr destination;
   Cask::TristateU32 color;
   std::uint32_t index = 0;
   std::uint64_t bandwidth = 0; // bits per second
   StateCell state;
};

P2pCells gatherCells(RsvpLerTunnelSpecId const& tunnelSpecId, Handle<RsvpLerSuperTunnelConfig> const& config,
                     Handle<RsvpLerSuperTunnelStatus> const& status, Handle<RsvpLerTunnelIndexMap> const& indexMap,
                     bool mbb) {
   P2pCells cells;
   if (config && !config->destination.empty())
      cells.destination = *config->destination.begin();
   if (indexMap)
      cells.index = indexMap->tunnelIndexForTunnelSpecId(tunnelSpecId).valueOr(0);
   auto state = RsvpLerTunnelState::unknown;
   if (status) {
      cells.color = status->color;
      cells.bandwidth = bitsPerSecond(status->currentBandwidth);
      state = status->state;
   }
   cells.state = {tunnelStateToString(state), mbb};
   return cells;
}

char const* activePathWord(RsvpLerLspGroupId const& lspGroupId, bool notSplit) {
   return notSplit ? getSubTunnelActivePathType(lspGroupId) : "split";
}

void addDestination(scrivo::RendererV2* renderer, std::uint64_t width, Lattice::IpGenAddr const& destination) {
   char text[Lattice::IpGenAddr::textSize];
   addLeft(renderer, width, {text, destination.printToBuffer(text, sizeof text)});
}

} // namespace

void ShowRsvpLerTunnel::setP2pTunnelSummaryHeaderColSizes(RsvpLerTunnelSpecId const& tunnelSpecId) {
   RSVP_LER_TRACE(tunnelSpecId);
   auto const configs = superTunnelConfigColl();
   auto const statuses = superTunnelStatusColl();
   auto const subTunnelStatuses = subTunnelStatusCollTable();
   if (!configs || !statuses || !subTunnelStatuses)
      return;
   auto const current = getCurrentInstances(getNonSplitSubTunnelStatus(tunnelSpecId));
   P2pCells const cells = gatherCells(tunnelSpecId, configs->superTunnelConfig(tunnelSpecId),
                                      statuses->superTunnelStatus(tunnelSpecId), tunnelIndexMap(), current.mbb);
   raiseNameWidth(tunnelNameWidth, tunnelSpecId.name);
   raiseWidth(dstWidth, cells.destination.printToBuffer(nullptr, 0));
   if (cells.color.isSet())
      raiseWidth(colorWidth, digitCount(cells.color.value()));
   raiseWidth(indexWidth, digitCount(cells.index));
   raiseBwWidth(bwWidth, bw1000, cells.bandwidth);
   raiseWidth(stateWidth, cells.state.size());
}

void ShowRsvpLerTunnel::renderP2pTunnelSummaryHeader(scrivo::RendererV2* renderer) const {
   RSVP_LER_TRACE();
   if (!renderer->isText())
      return;
   renderer->addFrill("P2P\n");

   addLeft(renderer, tunnelNameWidth + 1u, "Tunnel Name");
   addLeft(renderer, dstWidth + 1u, "Destination");
   addRight(renderer, colorWidth, "Color");
   renderer->writeChar(' ');
   addRight(renderer, indexWidth, "Index");
   renderer->writeChar(' ');
   addLeft(renderer, activePathWidth + 1, "Active Path");
   addRight(renderer, bwWidth, "Reserved BW");
   renderer->writeChar(' ');
   addRight(renderer, lspCountWidth, "LSPs");
   renderer->addFrill(" State\n");

   addRule(renderer, tunnelNameWidth);
   addRule(renderer, dstWidth);
   addRule(renderer, colorWidth);
   addRule(renderer, indexWidth);
   addRule(renderer, activePathWidth);
   addRule(renderer, bwWidth);
   addRule(renderer, lspCountWidth);
   addLastRule(renderer, stateWidth);
   renderer->eol();
}

void ShowRsvpLerTunnel::renderP2pTunnelSummary(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                                               Handle<RsvpLerSuperTunnelConfig> const& superTunnelConfig,
                                               Handle<RsvpLerSuperTunnelStatus> const& superTunnelStatus,
                                               Handle<RsvpLerTunnelIndexMap> const& indexMap,
                                               RsvpLerLspGroupId const& lspGroupId, std::uint32_t lspCount,
                                               bool notSplit, bool mbb) const {
   RSVP_LER_TRACE(tunnelSpecId);
   if (!renderer->isText())
      return;
   P2pCells const cells = gatherCells(tunnelSpecId, superTunnelConfig, superTunnelStatus, indexMap, mbb);
   addName(renderer, tunnelNameWidth, tunnelSpecId.name);
   addDestination(renderer, dstWidth + 1u, cells.destination);
   if (cells.color.isSet())
      addRight(renderer, colorWidth, cells.color.value());
   else
      addRight(renderer, colorWidth, "-");
   renderer->writeChar(' ');
   addIndex(renderer, indexWidth, cells.index);
   renderer->writeChar(' ');
   addLeft(renderer, activePathWidth + 1, activePathWord(lspGroupId, notSplit));
   renderer->addFrillRight(bwWidth, RsvpShowUtils::bandwidthText(cells.bandwidth, bw1000).view(), ' ');
   renderer->writeChar(' ');
   addRight(renderer, lspCountWidth, lspCount);
   renderer->writeChar(' ');
   cells.state.render(renderer);
   renderer->eol();
}

} // namespace Rsvp::Cli
