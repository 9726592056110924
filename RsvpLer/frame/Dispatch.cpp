#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/detail/Display.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/RendererV2.h"
#include "brindle/Assert.h"

#include <utility>

// From one tunnel of a listing to the display function of its variant.

namespace Rsvp::Cli {

namespace {

void display(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view,
             ShowTunnelVariant variant) {
   switch (variant) {
   case ShowTunnelVariant::showTunnelP2p:
      return renderShowTunnelP2p(command, renderer, view);
   case ShowTunnelVariant::showTunnelDetailP2p:
      return renderShowTunnelDetailP2p(command, renderer, view);
   case ShowTunnelVariant::showTunnelLspP2p:
      return renderShowTunnelLspP2p(command, renderer, view);
   case ShowTunnelVariant::showTunnelSummaryP2p:
      return renderShowTunnelSummaryP2p(command, renderer, view);
   case ShowTunnelVariant::showTunnelSubTunnelSummaryP2p:
      return renderShowTunnelSubTunnelSummaryP2p(command, renderer, view);
   case ShowTunnelVariant::showTunnelHistoryP2p:
      return renderShowTunnelHistoryP2p(command, renderer, view);
   case ShowTunnelVariant::showTunnelHistoryDetailP2p:
      return renderShowTunnelHistoryDetailP2p(command, renderer, view);
   case ShowTunnelVariant::showTunnelP2mp:
      return renderShowTunnelP2mp(command, renderer, view);
   case ShowTunnelVariant::showTunnelDetailP2mp:
      return renderShowTunnelDetailP2mp(command, renderer, view);
   case ShowTunnelVariant::showTunnelLspP2mp:
      return renderShowTunnelLspP2mp(command, renderer, view);
   case ShowTunnelVariant::showTunnelSummaryP2mp:
      return renderShowTunnelSummaryP2mp(command, renderer, view);
   case ShowTunnelVariant::showTunnelHistoryP2mp:
      return renderShowTunnelHistoryP2mp(command, renderer, view);
   case ShowTunnelVariant::showTunnelHistoryDetailP2mp:
      return renderShowTunnelHistoryDetailP2mp(command, renderer, view);
   }
   BRINDLE_UNREACHABLE();
}

} // namespace

ShowTunnelVariant ShowRsvpLerTunnel::getShowTunnelVariantEnum(RsvpSessionType sessionType, bool summary,
                                                              bool lspDetails, bool detail, bool history,
                                                              bool subTunnel) const {
   RSVP_LER_TRACE();
   using enum ShowTunnelVariant;
   bool const p2p = sessionType == RsvpSessionType::p2p;
   bool const noTable = !summary && !lspDetails;
   if (noTable && !history)
      return detail ? (p2p ? showTunnelDetailP2p : showTunnelDetailP2mp) : (p2p ? showTunnelP2p : showTunnelP2mp);
   if (noTable)
      return detail ? (p2p ? showTunnelHistoryDetailP2p : showTunnelHistoryDetailP2mp)
                    : (p2p ? showTunnelHistoryP2p : showTunnelHistoryP2mp);
   // From here on one of summary and lspDetails is set, and nothing goes with either.
   BRINDLE_ASSERT_TEXT(summary != lspDetails && !detail && !history, "One show command should be enabled");
   if (lspDetails)
      return p2p ? showTunnelLspP2p : showTunnelLspP2mp;
   if (!p2p)
      return showTunnelSummaryP2mp;
   return subTunnel ? showTunnelSubTunnelSummaryP2p : showTunnelSummaryP2p;
}

void ShowRsvpLerTunnel::renderTunnel(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                                     bool summary, bool lspDetails, bool detail, bool history, bool subTunnel) {
   RSVP_LER_TRACE(tunnelSpecId);
   auto const configs = superTunnelConfigColl();
   auto const statuses = superTunnelStatusColl();
   auto const subTunnelStatuses = subTunnelStatusCollTable();
   auto const specs = tunnelSpecColl();
   TunnelView view;
   view.bwSamplingStatusColl = bwSamplingStatusColl();
   view.tunnelIndexMap = tunnelIndexMap();
   view.autoBwConfig = autoBwConfig();
   view.autoBwStats = autoBwStats();
   if (!configs || !statuses || !subTunnelStatuses || !specs || !view.bwSamplingStatusColl || !view.tunnelIndexMap ||
       !view.autoBwConfig || !view.autoBwStats)
      return;

   view.tunnelSpecId = tunnelSpecId;
   view.superTunnelConfig = configs->superTunnelConfig(tunnelSpecId);
   view.superTunnelStatus = statuses->superTunnelStatus(tunnelSpecId);
   if (subTunnel && (!view.superTunnelStatus || !view.superTunnelStatus->split))
      return;
   view.subTunnelStatusColl = subTunnelStatuses->subTunnelStatusColl(tunnelSpecId);
   view.tunnelSpec = specs->tunnelSpec(tunnelSpecId);
   if (view.subTunnelStatusColl)
      view.subTunnelStatus = view.subTunnelStatusColl->subTunnelStatus(
            RsvpLerSubTunnelConfigId::makeNonSplitSubTunnelConfigId(tunnelSpecId));

   CurrentInstances current = getCurrentInstances(view.subTunnelStatus);
   view.activeMbbTunnelConfigId = std::move(current.activeMbbTunnelConfigId);
   view.pendingMbbTunnelConfigId = std::move(current.pendingMbbTunnelConfigId);
   view.lspGroupId = std::move(current.lspGroupId);
   view.activeMbbTunnelStatus = std::move(current.activeMbbTunnelStatus);
   view.mbb = current.mbb;
   // Only P2MP variants look at the pending instance's status; it takes no part in `mbb`.
   if (view.subTunnelStatus)
      view.pendingMbbTunnelStatus = getMbbTunnelStatus(view.pendingMbbTunnelConfigId);

   // A tunnel without configuration is shown through the P2P variants.
   RsvpSessionType const sessionType =
         view.superTunnelConfig ? view.superTunnelConfig->sessionType : RsvpSessionType::p2p;
   ShowTunnelVariant const variant =
         getShowTunnelVariantEnum(sessionType, summary, lspDetails, detail, history, subTunnel);
   renderer->startJsonDict(tunnelSpecId.name);
   display(*this, renderer, view, variant);
   renderer->endJsonDict();
}

} // namespace Rsvp::Cli
