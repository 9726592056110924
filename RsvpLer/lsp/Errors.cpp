#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/lsp/ErrorList.h"
#include "RsvpLer/lsp/GroupRecord.h"
#include "RsvpLer/output/Lines.h"

// The errors of a path, a tree or an LSP. The text has the words, JSON the numbers.
//
//       Errors:
//          Routing problem: bad strict node (24/2) from 10.0.0.3
//
//    "pathErrors":[{"code":24,"value":2,"node":"10.0.0.3"}]

namespace Rsvp::Cli {

void ShowRsvpLerTunnel::aggregateLspErrors(RsvpLerLspRequestConfigId const& lspRequestConfigId,
                                           Brindle::Ptr<RsvpErrorWithNodeOrderedSet> const& aggregatedErrors) const {
   RSVP_LER_TRACE(lspRequestConfigId);
   auto const status = getLspRequestStatus(lspRequestConfigId);
   if (!status)
      return;
   Vane::orderedWalk(status->errors,
                     [&](RsvpErrorWithNode const& error, Vane::NoValue) { aggregatedErrors->errorIs(error, true); });
}

void ShowRsvpLerTunnel::aggregateLspGroupErrors(
      RsvpLerLspGroupId const& lspGroupId, Brindle::Ptr<RsvpErrorWithNodeOrderedSet> const& aggregatedErrors) const {
   RSVP_LER_TRACE(Skein::Hex(lspGroupId));
   auto const group = findGroupRecord(lspGroupStatusCollTable(), lspGroupId);
   if (!group)
      return;
   aggregateLspErrors(group->activeLspRequestConfigId, aggregatedErrors);
   aggregateLspErrors(group->pendingLspRequestConfigId, aggregatedErrors);
}

void ShowRsvpLerTunnel::renderError(scrivo::RendererV2* renderer, RsvpErrorWithNode const& error, bool text) const {
   RSVP_LER_TRACE();
   // Only the text format needs the sentence, which has to be put together first.
   if (text && renderer->isText())
      addLine(renderer, text, "         ", error.errorStr(false, false));
   renderer->startJsonDict();
   renderer->addJsonKeyValuePair("code", error.errorCode);
   renderer->addJsonKeyValuePair("value", error.errorValue);
   renderer->addJsonKeyValuePair("node", error.node);
   renderer->endJsonDict();
}

void renderErrorList(ShowRsvpLerTunnel const& command, scrivo::RendererV2* renderer, scrivo::JsonKey key,
                     RsvpErrors const& errors, bool text) {
   RSVP_LER_TRACE();
   if (text && !errors.empty())
      renderer->addFrill("      Errors:\n");
   renderer->startJsonList(key);
   Vane::orderedWalk(
         errors, [&](RsvpErrorWithNode const& error, Vane::NoValue) { command.renderError(renderer, error, text); });
   renderer->endJsonList();
}

namespace {

// What the group of that number has met in both instances.
Brindle::Ptr<RsvpErrorWithNodeOrderedSet> gatherGroupErrors(ShowRsvpLerTunnel const& command,
                                                            RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                                                            RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId,
                                                            std::uint8_t groupId) {
   auto aggregatedErrors = Brindle::makeNode<RsvpErrorWithNodeOrderedSet>();
   command.aggregateLspGroupErrors({activeMbbTunnelConfigId, groupId}, aggregatedErrors);
   command.aggregateLspGroupErrors({pendingMbbTunnelConfigId, groupId}, aggregatedErrors);
   return aggregatedErrors;
}

} // namespace

void ShowRsvpLerTunnel::renderLspGroupErrors(scrivo::RendererV2* renderer,
                                             RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                                             RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId,
                                             std::uint8_t groupId, bool text) const {
   RSVP_LER_TRACE(activeMbbTunnelConfigId, pendingMbbTunnelConfigId, ", groupId=", groupId);
   auto const aggregatedErrors = gatherGroupErrors(*this, activeMbbTunnelConfigId, pendingMbbTunnelConfigId, groupId);
   renderErrorList(*this, renderer, "pathErrors", aggregatedErrors->errors(), text);
}

void ShowRsvpLerTunnel::renderP2mpLspGroupTreeErrors(scrivo::RendererV2* renderer,
                                                     RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                                                     RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId,
                                                     bool text) const {
   RSVP_LER_TRACE(activeMbbTunnelConfigId, pendingMbbTunnelConfigId);
   auto const aggregatedErrors = gatherGroupErrors(*this, activeMbbTunnelConfigId, pendingMbbTunnelConfigId, 0);
   renderErrorList(*this, renderer, "treeErrors", aggregatedErrors->errors(), text);
}

} // namespace Rsvp::Cli
