#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/summary/SummaryTable.h"
#include "RsvpLer/text/EnumText.h"
#include "RsvpLer/text/Rates.h"
#include "RsvpLer/text/RsvpShowUtils.h"

// The table of P2MP tunnels. It exists in text only, and begins with an empty line that parts it from the P2P table.
//
//
//    P2MP
//    Tunnel Name P2MP ID Index Reserved BW LSPs State Leaves
//    ----------- ------- ----- ----------- ---- ----- ------
//    tree1            42     8   1.00 Mbps    1 up    3/4 up

namespace Rsvp::Cli {

namespace {

struct P2mpCells {
   Vane::Optional<std::uint32_t> p2mpId; // absent when the session isn't a P2MP one
   std::uint32_t index = 0;
   std::uint64_t bandwidth = 0; // bits per second
   std::uint32_t leafCount = 0;
   StateCell state;
};

P2mpCells gatherCells(RsvpLerTunnelSpecId const& tunnelSpecId, Handle<RsvpLerSuperTunnelStatus> const& status,
                      Handle<RsvpLerTunnelIndexMap> const& indexMap, bool mbb) {
   P2mpCells cells;
   if (indexMap)
      cells.index = indexMap->tunnelIndexForTunnelSpecId(tunnelSpecId).valueOr(0);
   auto state = RsvpLerTunnelState::unknown;
   if (status) {
      if (status->sessionId.type == 1)
         cells.p2mpId = status->sessionId.p2mpId();
      cells.bandwidth = bitsPerSecond(status->currentBandwidth);
      cells.leafCount = static_cast<std::uint32_t>(status->subLspState.size());
      state = status->state;
   }
   cells.state = {tunnelStateToString(state), mbb};
   return cells;
}

std::uint32_t countLeavesUp(Handle<RsvpLerSuperTunnelStatus> const& status) {
   std::uint32_t upCount = 0;
   if (status)
      for (auto const& [leaf, state] : status->subLspState)
         upCount += state == RsvpLspState::up;
   return upCount;
}

} // namespace

void ShowRsvpLerTunnel::setP2mpTunnelSummaryHeaderColSizes(RsvpLerTunnelSpecId const& tunnelSpecId) {
   RSVP_LER_TRACE(tunnelSpecId);
   auto const statuses = superTunnelStatusColl();
   if (!superTunnelConfigColl() || !statuses || !subTunnelStatusCollTable())
      return;
   auto const current = getCurrentInstances(getNonSplitSubTunnelStatus(tunnelSpecId));
   P2mpCells const cells =
         gatherCells(tunnelSpecId, statuses->superTunnelStatus(tunnelSpecId), tunnelIndexMap(), current.mbb);
   raiseNameWidth(p2mpTunnelNameWidth, tunnelSpecId.name);
   raiseWidth(p2mpIdWidth, digitCount(cells.p2mpId.valueOr(0)));
   raiseWidth(p2mpIndexWidth, digitCount(cells.index));
   raiseBwWidth(p2mpBwWidth, p2mpBw1000, cells.bandwidth);
   raiseWidth(p2mpStateWidth, cells.state.size());
   // A text such as "12/12 up", both of whose numbers have as many digits as the total.
   raiseWidth(p2mpLeavesWidth, 2 * digitCount(cells.leafCount) + 4);
}

void ShowRsvpLerTunnel::renderP2mpTunnelSummaryHeader(scrivo::RendererV2* renderer) const {
   RSVP_LER_TRACE();
   if (!renderer->isText())
      return;
   renderer->addFrill("\nP2MP\n");

   // The name has no gap of its own here: it comes from the wider column of the P2MP id.
   addLeft(renderer, p2mpTunnelNameWidth, "Tunnel Name");
   addRight(renderer, p2mpIdWidth + 1u, "P2MP ID");
   addRight(renderer, p2mpIndexWidth + 1u, "Index");
   renderer->writeChar(' ');
   addRight(renderer, p2mpBwWidth, "Reserved BW");
   renderer->writeChar(' ');
   addRight(renderer, p2mpLspCountWidth, "LSPs");
   renderer->writeChar(' ');
   addLeft(renderer, p2mpStateWidth + 1u, "State");
   renderer->addFrill("Leaves\n");

   addRule(renderer, p2mpTunnelNameWidth);
   addRule(renderer, p2mpIdWidth);
   addRule(renderer, p2mpIndexWidth);
   addRule(renderer, p2mpBwWidth);
   addRule(renderer, p2mpLspCountWidth);
   addRule(renderer, p2mpStateWidth);
   addLastRule(renderer, p2mpLeavesWidth);
   renderer->eol();
}

void ShowRsvpLerTunnel::renderP2mpTunnelSummary(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                                                Handle<RsvpLerSuperTunnelStatus> const& superTunnelStatus,
                                                Handle<RsvpLerTunnelIndexMap> const& indexMap, std::uint32_t lspCount,
                                                bool mbb) const {
   RSVP_LER_TRACE(tunnelSpecId);
   if (!renderer->isText())
      return;
   P2mpCells const cells = gatherCells(tunnelSpecId, superTunnelStatus, indexMap, mbb);
   addName(renderer, p2mpTunnelNameWidth, tunnelSpecId.name);
   if (cells.p2mpId.hasValue())
      addRight(renderer, p2mpIdWidth, cells.p2mpId.value());
   else
      addRight(renderer, p2mpIdWidth, "?");
   renderer->writeChar(' ');
   addIndex(renderer, p2mpIndexWidth, cells.index);
   renderer->writeChar(' ');
   renderer->addFrillRight(p2mpBwWidth, RsvpShowUtils::bandwidthText(cells.bandwidth, p2mpBw1000).view(), ' ');
   renderer->writeChar(' ');
   addRight(renderer, p2mpLspCountWidth, lspCount);
   renderer->writeChar(' ');
   cells.state.render(renderer);
   // A row may come without a sizing pass (sub-tunnel summary of a split P2MP tunnel), so the state may be the wider.
   addLeft(renderer, p2mpStateWidth - std::min<std::size_t>(p2mpStateWidth, cells.state.size()), "");
   renderer->addText(" ", countLeavesUp(superTunnelStatus));
   renderer->addText("/", cells.leafCount);
   renderer->addFrill(" up");
   renderer->eol();
}

} // namespace Rsvp::Cli
