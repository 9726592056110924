#include "RsvpLer/lsp/LspIds.h"

#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/RendererV2.h"

#include <algorithm>
#include <string_view>

// The ids of the LSPs of a tunnel, those without an id first.
//
//    LSP IDs: ?, 2, 7                           "lspIds":[2,7]

namespace Rsvp::Cli {

namespace {

void appendLspId(LspIds& lspIds, RsvpLerLspRequestConfigId const& lspRequestConfigId,
                 Handle<RsvpLerLspRequestStatusCollTable> const& lspRequestStatusCollTable) {
   if (lspRequestConfigId)
      lspIds.push_back(getLspIdForLspRequest(lspRequestConfigId, lspRequestStatusCollTable));
}

} // namespace

Vane::Optional<std::uint16_t>
getLspIdForLspRequest(RsvpLerLspRequestConfigId const& lspRequestConfigId,
                      Handle<RsvpLerLspRequestStatusCollTable> const& lspRequestStatusCollTable) {
   RSVP_LER_TRACE(lspRequestConfigId);
   if (!lspRequestConfigId || !lspRequestStatusCollTable)
      return {};
   Vane::Pin const pin;
   auto const* const statuses = lspRequestStatusCollTable->peek(lspRequestConfigId.lspGroupId);
   auto const* const status = statuses != nullptr ? statuses->peek(lspRequestConfigId) : nullptr;
   return status != nullptr ? status->lspId : Vane::Optional<std::uint16_t>();
}

LspIds getLspIdsForTunnel(RsvpLerMbbTunnelConfigId const& mbbTunnelConfigId,
                          Handle<RsvpLerLspGroupStatusCollTable> const& lspGroupStatusCollTable,
                          Handle<RsvpLerLspRequestStatusCollTable> const& lspRequestStatusCollTable) {
   RSVP_LER_TRACE(mbbTunnelConfigId);
   LspIds lspIds;
   auto const groups =
         lspGroupStatusCollTable ? lspGroupStatusCollTable->lspGroupStatusColl(mbbTunnelConfigId) : nullptr;
   if (!groups)
      return lspIds;
   Vane::orderedWalk(*groups, [&](RsvpLerLspGroupId const&, Handle<RsvpLerLspGroupStatus> const& group) {
      appendLspId(lspIds, group->activeLspRequestConfigId, lspRequestStatusCollTable);
      appendLspId(lspIds, group->pendingLspRequestConfigId, lspRequestStatusCollTable);
   });
   return lspIds;
}

void appendLspIdsOfInstances(LspIds& lspIds, RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                             RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId,
                             Handle<RsvpLerLspGroupStatusCollTable> const& lspGroupStatusCollTable,
                             Handle<RsvpLerLspRequestStatusCollTable> const& lspRequestStatusCollTable) {
   for (RsvpLerMbbTunnelConfigId const* instance : {&activeMbbTunnelConfigId, &pendingMbbTunnelConfigId}) {
      for (auto const& lspId : getLspIdsForTunnel(*instance, lspGroupStatusCollTable, lspRequestStatusCollTable))
         lspIds.push_back(lspId);
   }
}

LspIds getLspIdsForSuperTunnel(RsvpLerTunnelSpecId const& tunnelSpecId,
                               Handle<RsvpLerSubTunnelStatusCollTable> const& subTunnelStatusCollTable,
                               Handle<RsvpLerLspGroupStatusCollTable> const& lspGroupStatusCollTable,
                               Handle<RsvpLerLspRequestStatusCollTable> const& lspRequestStatusCollTable) {
   RSVP_LER_TRACE(tunnelSpecId);
   LspIds lspIds;
   auto const subTunnels =
         subTunnelStatusCollTable ? subTunnelStatusCollTable->subTunnelStatusColl(tunnelSpecId) : nullptr;
   if (!subTunnels)
      return lspIds;
   subTunnels->walk([&](RsvpLerSubTunnelConfigId const&, Handle<RsvpLerSubTunnelStatus> const& subTunnel) {
      appendLspIdsOfInstances(lspIds, subTunnel->activeMbbTunnelConfigId, subTunnel->pendingMbbTunnelConfigId,
                              lspGroupStatusCollTable, lspRequestStatusCollTable);
   });
   return lspIds;
}

void renderLspIds(scrivo::RendererV2* renderer, LspIds& lspIds, bool text) {
   RSVP_LER_TRACE();
   std::sort(lspIds.begin(), lspIds.end());
   renderer->startJsonList("lspIds");
   if (text)
      renderer->addFrill("   LSP IDs:");
   std::string_view separator = " ";
   for (auto const& lspId : lspIds) {
      if (lspId.hasValue())
         renderer->addJsonKeyValuePair("", lspId.value());
      if (text && lspId.hasValue())
         renderer->addText(separator, lspId.value());
      else if (text)
         renderer->addText(separator, "?");
      separator = ", ";
   }
   if (text)
      renderer->eol();
   renderer->endJsonList();
}

} // namespace Rsvp::Cli
