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

namespace {

void startErrorList(scrivo::RendererV2* renderer, scrivo::JsonKey key, bool empty, bool text) {
   if (text && !empty)
      renderer->addFrill("      Errors:\n");
   renderer->startJsonList(key);
}

} // namespace

void renderErrorList(ShowRsvpLerTunnel const& command, scrivo::RendererV2* renderer, scrivo::JsonKey key,
                     RsvpErrors const& errors, bool text) {
   RSVP_LER_TRACE();
   startErrorList(renderer, key, errors.empty(), text);
   Vane::orderedWalk(
         errors, [&](RsvpErrorWithNode const& error, Vane::NoValue) { command.renderError(renderer, error, text); });
   renderer->endJsonList();
}

namespace {

// Shows what the group of that number has met in both instances. The set stands on the stack and has room for some
// errors there: it allocates nothing as long as there are no more.
void renderGroupErrors(ShowRsvpLerTunnel const& command, scrivo::RendererV2* renderer, scrivo::JsonKey key,
                       RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                       RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId, std::uint8_t groupId, bool text) {
   RsvpErrorWithNodeOrderedSet set;
   auto const aggregatedErrors = Brindle::Ptr<RsvpErrorWithNodeOrderedSet>::share(&set);
   command.aggregateLspGroupErrors({activeMbbTunnelConfigId, groupId}, aggregatedErrors);
   command.aggregateLspGroupErrors({pendingMbbTunnelConfigId, groupId}, aggregatedErrors);
   startErrorList(renderer, key, set.errors().empty(), text);
   for (RsvpErrorWithNode const& error : set.errors())
      command.renderError(renderer, error, text);
   renderer->endJsonList();
}

} // namespace

void ShowRsvpLerTunnel::renderLspGroupErrors(scrivo::RendererV2* renderer,
                                             RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                                             RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId,
                                             std::uint8_t groupId, bool text) const {
   RSVP_LER_TRACE(activeMbbTunnelConfigId, pendingMbbTunnelConfigId, ", groupId=", groupId);
   renderGroupErrors(*this, renderer, "pathErrors", activeMbbTunnelConfigId, pendingMbbTunnelConfigId, groupId, text);
}

void ShowRsvpLerTunnel::renderP2mpLspGroupTreeErrors(scrivo::RendererV2* renderer,
                                                     RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                                                     RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId,
                                                     bool text) const {
   RSVP_LER_TRACE(activeMbbTunnelConfigId, pendingMbbTunnelConfigId);
   renderGroupErrors(*this, renderer, "treeErrors", activeMbbTunnelConfigId, pendingMbbTunnelConfigId, 0, text);
}

} // namespace Rsvp::Cli
