#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/detail/Display.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/RendererV2.h"
#include "brindle/Assert.h"
#include "vane/ShortVector.h"

#include <algorithm>

// The sub-tunnels of a split tunnel, under the tunnel. What each shows is in SubTunnelDisplay.cpp.
//
//    Sub tunnel 1                                         "1":{"currentBandwidth":1000000,...},
//       Bandwidth: 1.00 Mbps
//       ...
//    Sub tunnel 2                                         "2":{...}
//       ...

namespace Rsvp::Cli {

namespace {

void display(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, SubTunnelView const& view,
             ShowTunnelVariant variant) {
   switch (variant) {
   case ShowTunnelVariant::showTunnelP2p:
      return renderShowSubTunnel(command, renderer, view);
   case ShowTunnelVariant::showTunnelDetailP2p:
      return renderShowSubTunnelDetail(command, renderer, view);
   case ShowTunnelVariant::showTunnelLspP2p:
      return renderShowSubTunnelLsp(command, renderer, view);
   case ShowTunnelVariant::showTunnelSummaryP2p:
      return renderShowSubTunnelSummary(command, renderer, view);
   case ShowTunnelVariant::showTunnelSubTunnelSummaryP2p:
      return renderShowTunnelSubTunnelSummary(command, renderer, view);
   case ShowTunnelVariant::showTunnelHistoryP2p:
      return renderShowSubTunnelHistory(command, renderer, view);
   case ShowTunnelVariant::showTunnelHistoryDetailP2p:
      return renderShowSubTunnelHistoryDetail(command, renderer, view);
   case ShowTunnelVariant::showTunnelP2mp:
   case ShowTunnelVariant::showTunnelDetailP2mp:
   case ShowTunnelVariant::showTunnelLspP2mp:
   case ShowTunnelVariant::showTunnelSummaryP2mp:
   case ShowTunnelVariant::showTunnelHistoryP2mp:
   case ShowTunnelVariant::showTunnelHistoryDetailP2mp:
      break;
   }
   BRINDLE_ASSERT_TEXT(false, "Only P2P variants are supported");
}

using SubTunnelIds = Vane::ShortVector<RsvpLerSubTunnelConfigId, 16>;

// Copied out before anything is rendered, so that a change of the table can't disturb the listing.
SubTunnelIds listedSubTunnels(RsvpLerSubTunnelStatusColl const& subTunnelStatusColl) {
   SubTunnelIds ids;
   subTunnelStatusColl.walk([&](RsvpLerSubTunnelConfigId const& id, Handle<RsvpLerSubTunnelStatus> const&) {
      if (id.isSplit())
         ids.push_back(id);
   });
   std::ranges::sort(ids);
   return ids;
}

} // namespace

void ShowRsvpLerTunnel::renderSubTunnelsForTunnel(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                                                  Handle<RsvpLerSuperTunnelStatus> const& superTunnelStatus,
                                                  Handle<RsvpLerSubTunnelStatusColl> const& subTunnelStatusColl,
                                                  ShowTunnelVariant variant) {
   RSVP_LER_TRACE(tunnelSpecId);
   auto const samplingColl = bwSamplingStatusColl();
   auto const stats = autoBwStats();
   auto const indexMap = subTunnelIndexMap();
   if (!subTunnelStatusColl || !superTunnelStatus || !samplingColl || !stats)
      return;
   auto const ids = listedSubTunnels(*subTunnelStatusColl);
   if (variant == ShowTunnelVariant::showTunnelSubTunnelSummaryP2p && renderer->isText()) {
      for (auto const& id : ids)
         setSubTunnelSummaryHeaderColSizes(tunnelSpecId, id, samplingColl, indexMap);
      renderSubTunnelSummaryHeader(renderer, tunnelSpecId);
   }
   for (auto const& id : ids)
      renderSubTunnel(renderer, tunnelSpecId, id, stats, samplingColl, indexMap, variant);
}

void ShowRsvpLerTunnel::renderSubTunnel(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                                        RsvpLerSubTunnelConfigId const& subTunnelConfigId,
                                        Handle<RsvpLerAutoBwStats> const& stats,
                                        Handle<RsvpLerBwSamplingStatusColl> const& samplingColl,
                                        Handle<RsvpLerSubTunnelIndexMap> const& indexMap, ShowTunnelVariant variant) {
   RSVP_LER_TRACE(subTunnelConfigId);
   BRINDLE_ASSERT(subTunnelConfigId.isSplit());
   SubTunnelView view;
   view.tunnelSpecId = tunnelSpecId;
   view.subTunnelConfigId = subTunnelConfigId;
   view.autoBwStats = stats;
   view.bwSamplingStatusColl = samplingColl;
   view.subTunnelIndexMap = indexMap;
   // Looked up anew: the collection that the listing walked may no longer be the one in the table.
   view.subTunnelStatus = getSubTunnelStatus(tunnelSpecId, subTunnelConfigId);
   CurrentInstances const current = getCurrentInstances(view.subTunnelStatus);
   view.activeMbbTunnelConfigId = current.activeMbbTunnelConfigId;
   view.pendingMbbTunnelConfigId = current.pendingMbbTunnelConfigId;
   view.lspGroupId = current.lspGroupId;
   view.mbb = current.mbb;

   renderer->startJsonDict(subTunnelConfigId.subTunnelName());
   display(*this, renderer, view, variant);
   renderer->endJsonDict();
}

} // namespace Rsvp::Cli
