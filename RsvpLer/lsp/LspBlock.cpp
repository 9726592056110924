#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/lsp/ErrorList.h"
#include "RsvpLer/lsp/GroupRecord.h"
#include "RsvpLer/lsp/PathHops.h"
#include "RsvpLer/output/Lines.h"
#include "RsvpLer/text/EnumText.h"
#include "RsvpLer/text/Rates.h"
#include "RsvpLer/text/RsvpShowUtils.h"

#include <optional>

// One LSP.
//
//    LSP 3:                                                   {"lspId":3,
//       Path specification: via-north, primary                 "pathSpecName":"via-north","pathType":"primary",
//       CSPF Path ID: 5                                        "cspfPathKeyId":5,
//       Bandwidth: 1.00 Mbps                                   "bandwidth":1000000,
//       State: up, in use                                      "state":"up","inUse":true,
//       Errors:                                                "lspErrors":[{...}],
//          ...
//       Path (explicit):                                       "pathSpecType":"explicit",
//          10.1.1.2                                            "hops":["10.1.1.2"]}
//
// A P2MP one has no path type, a CSPF tree id, and at its end its leaves.

namespace Rsvp::Cli {

namespace {

struct LspFacts {
   RsvpLerLspRequestConfigId requestId;
   RsvpLerPathSpecId pathSpecId;
   Handle<RsvpLerPathSpecConfig> pathSpecConfig; // may be empty
   Handle<RsvpLerLspRequestConfig> config;
   Handle<RsvpLerLspRequestStatus> status; // may be empty
   RsvpLerLspState state = RsvpLerLspState::unknown;
   bool inUse = false;

   bool isPrimary() const { return requestId.lspGroupId.groupId == 0; }
   bool isP2mp() const { return config->sessionType != RsvpSessionType::p2p; }
};

// Nothing when a record is missing without which the LSP isn't shown. `inUse` tells whether the LSP is the one that its
// instance uses.
std::optional<LspFacts> gatherLsp(ShowRsvpLerTunnel const& command, RsvpLerLspRequestConfigId const& requestId,
                                  bool inUse) {
   auto const& lspGroupId = requestId.lspGroupId;
   auto const subTunnelConfig =
         findSubTunnelConfig(command.rsvpLerStatus, lspGroupId.mbbTunnelConfigId.subTunnelConfigId);
   auto const statusTable = command.lspRequestStatusCollTable();
   auto const statuses = statusTable ? statusTable->lspRequestStatusColl(lspGroupId) : nullptr;
   LspFacts facts;
   facts.config = command.getLspRequestConfig(requestId);
   if (!subTunnelConfig || !findGroupRecord(command.lspGroupStatusCollTable(), lspGroupId) || !facts.config ||
       !statuses)
      return std::nullopt;

   facts.requestId = requestId;
   facts.pathSpecId = facts.isPrimary() ? subTunnelConfig->primaryPathSpecId : subTunnelConfig->secondaryPathSpecId;
   auto const pathSpecs = command.pathSpecConfigColl();
   facts.pathSpecConfig = pathSpecs ? pathSpecs->pathSpecConfig(facts.pathSpecId) : nullptr;
   facts.status = statuses->lspRequestStatus(requestId);
   if (facts.status)
      facts.state = facts.status->lspState;
   facts.inUse = inUse && (facts.state == RsvpLerLspState::up || facts.state == RsvpLerLspState::upVerified);
   return facts;
}

void renderLspIdHeading(scrivo::RendererV2* renderer, LspFacts const& facts) {
   auto const lspId = facts.status ? facts.status->lspId : Vane::Optional<std::uint16_t>();
   if (lspId.hasValue())
      renderer->addText("   LSP ", lspId.value());
   else
      renderer->addFrill("   LSP ?");
   renderer->addFrill(":\n");
   renderer->addJsonKeyValuePair("lspId", lspId.valueOr(0));
}

void renderLspPathSpec(scrivo::RendererV2* renderer, LspFacts const& facts) {
   RSVP_LER_TRACE();
   char const* const pathType = facts.isPrimary() ? "primary" : "secondary";
   renderer->addText("      Path specification: ", facts.pathSpecId.name);
   addLine(renderer, true, ", ", pathType);
   renderer->addJsonKeyValuePair("pathSpecName", facts.pathSpecId.name);
   renderer->addJsonKeyValuePair("pathType", pathType);
}

void renderP2mpLspPathSpec(scrivo::RendererV2* renderer, LspFacts const& facts) {
   RSVP_LER_TRACE();
   addLine(renderer, true, "      Path specification: ", facts.pathSpecId.name);
   renderer->addJsonKeyValuePair("pathSpecName", facts.pathSpecId.name);
}

void renderBandwidthAndState(scrivo::RendererV2* renderer, LspFacts const& facts) {
   std::uint64_t const bandwidth = bitsPerSecond(facts.config->bandwidth);
   addLine(renderer, true, "      Bandwidth: ", RsvpShowUtils::bandwidthText(bandwidth, false).view());
   renderer->addJsonKeyValuePair("bandwidth", bandwidth);
   renderer->addText("      State: ", lerLspStateToString(facts.state, false));
   renderer->addFrill(facts.inUse ? ", in use\n" : "\n");
   renderer->addJsonKeyValuePair("state", lerLspStateToString(facts.state, true));
   renderer->addJsonKeyValuePair("inUse", facts.inUse);
}

void renderLspErrors(ShowRsvpLerTunnel const& command, scrivo::RendererV2* renderer, LspFacts const& facts) {
   RsvpErrors const none;
   renderErrorList(command, renderer, "lspErrors", facts.status ? facts.status->errors : none, true);
}

void renderLspPath(scrivo::RendererV2* renderer, LspFacts const& facts) {
   char const* const typeWord = pathSpecTypeWord(facts.pathSpecConfig);
   renderer->addText("      Path (", typeWord);
   renderer->addFrill("):\n");
   // The path and tree blocks, and the leaves of a P2MP LSP, call it specType.
   renderer->addJsonKeyValuePair("pathSpecType", typeWord);
   renderer->startJsonList("hops");
   renderP2pHops(renderer, facts.config->tree, true);
   renderer->endJsonList();
}

} // namespace

void ShowRsvpLerTunnel::renderLsps(scrivo::RendererV2* renderer,
                                   RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                                   RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId) const {
   RSVP_LER_TRACE(activeMbbTunnelConfigId, pendingMbbTunnelConfigId);
   renderer->startJsonList("lsps");
   renderLspsForTunnel(renderer, activeMbbTunnelConfigId, true);
   renderLspsForTunnel(renderer, pendingMbbTunnelConfigId, false);
   renderer->endJsonList();
}

void ShowRsvpLerTunnel::renderP2mpLsps(scrivo::RendererV2* renderer,
                                       RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                                       RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId) const {
   RSVP_LER_TRACE(activeMbbTunnelConfigId, pendingMbbTunnelConfigId);
   renderer->startJsonList("p2mpLsps");
   renderLspsForTunnel(renderer, activeMbbTunnelConfigId, true);
   renderLspsForTunnel(renderer, pendingMbbTunnelConfigId, false);
   renderer->endJsonList();
}

void ShowRsvpLerTunnel::renderLspsForTunnel(scrivo::RendererV2* renderer,
                                            RsvpLerMbbTunnelConfigId const& mbbTunnelConfigId, bool active) const {
   RSVP_LER_TRACE(mbbTunnelConfigId);
   auto const status = getMbbTunnelStatus(mbbTunnelConfigId);
   auto const groupTable = lspGroupStatusCollTable();
   auto const groups = groupTable ? groupTable->lspGroupStatusColl(mbbTunnelConfigId) : nullptr;
   if (!status || !groups)
      return;
   Vane::orderedWalk(*groups, [&](RsvpLerLspGroupId const&, Handle<RsvpLerLspGroupStatus> const& group) {
      bool const groupInUse = active && group->lspGroupId == status->activeLspGroupId;
      renderLsp(renderer, group->activeLspRequestConfigId, groupInUse);
      renderLsp(renderer, group->pendingLspRequestConfigId, false);
   });
}

void ShowRsvpLerTunnel::renderLsp(scrivo::RendererV2* renderer, RsvpLerLspRequestConfigId const& lspRequestConfigId,
                                  bool inUse) const {
   RSVP_LER_TRACE(lspRequestConfigId);
   auto const facts = gatherLsp(*this, lspRequestConfigId, inUse);
   if (!facts)
      return;
   renderer->startJsonDict();
   renderLspIdHeading(renderer, *facts);
   if (facts->isP2mp()) {
      renderP2mpLspPathSpec(renderer, *facts);
      renderLspGroupCspfTreeId(renderer, lspRequestConfigId.lspGroupId, true);
   } else {
      renderLspPathSpec(renderer, *facts);
      renderLspGroupCspfPathKey(renderer, lspRequestConfigId.lspGroupId, true);
   }
   renderBandwidthAndState(renderer, *facts);
   renderLspErrors(*this, renderer, *facts);
   if (facts->isP2mp())
      renderDetailedTreeLeaves(renderer, facts->pathSpecConfig, lspRequestConfigId, true);
   else
      renderLspPath(renderer, *facts);
   renderer->endJsonDict();
}

} // namespace Rsvp::Cli
