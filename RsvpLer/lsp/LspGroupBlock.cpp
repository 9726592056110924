#include "RsvpLer/lsp/LspGroupBlock.h"

#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/Lines.h"

// The paths of a tunnel.
//
//    Primary path: via-north                    "primaryPath":{"specName":"via-north",
//       State: up, in use                          "state":"up","mbb":false,"inUse":true,
//       Path MTU: 1500 bytes                       "pathMtu":1500,
//       Interface MTU: 1500 bytes                  "intfMtu":1500,
//       CSPF Path ID: 5                            "cspfPathKeyId":5,
//       Errors:                                    "pathErrors":[{...}],
//          ...
//       Path (explicit):                           "specType":"explicit",
//          10.1.1.2                                "hops":["10.1.1.2"]},
//    Secondary path: via-south
//       State: cold standby                     "secondaryPaths":[{...}]

namespace Rsvp::Cli {

namespace {

// Which text lines of a path block are written; its JSON is always complete.
struct PathTexts {
   bool block;   // all but the details
   bool details; // MTUs and CSPF id
};

struct PathFacts {
   RsvpLerPathSpecId pathSpecId;
   Handle<RsvpLerPathSpecConfig> pathSpecConfig;
   Handle<RsvpLerLspGroupStatus> group;
   RsvpLerLspGroupId activeLspGroupId;
   bool coldStandbyCandidate;
};

void renderPathFacts(ShowRsvpLerTunnel const& command, scrivo::RendererV2* renderer, PathFacts const& facts,
                     RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                     RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId, std::uint8_t groupId, PathTexts texts) {
   bool const primary = groupId == 0;
   startLspGroupPathJson(renderer, primary);
   renderLspGroupPathSpec(renderer, facts.pathSpecId, primary, texts.block);
   command.renderLspGroupState(renderer, facts.group, activeMbbTunnelConfigId, pendingMbbTunnelConfigId,
                               facts.activeLspGroupId, groupId, facts.coldStandbyCandidate, primary, texts.block);
   command.renderLspGroupMtuInfo(renderer, facts.group, texts.details);
   command.renderLspGroupCspfPathKey(renderer, facts.group ? facts.group->lspGroupId : RsvpLerLspGroupId(),
                                     texts.details);
   command.renderLspGroupErrors(renderer, activeMbbTunnelConfigId, pendingMbbTunnelConfigId, groupId, texts.block);
   command.renderLspGroupHops(renderer, facts.pathSpecConfig, facts.group, texts.block);
   endLspGroupPathJson(renderer, primary);
}

void renderPath(ShowRsvpLerTunnel const& command, scrivo::RendererV2* renderer,
                RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId, std::uint8_t groupId, PathTexts texts) {
   bool const primary = groupId == 0;
   auto const& subTunnelConfigId = activeMbbTunnelConfigId.subTunnelConfigId;
   auto const subTunnelConfig = findSubTunnelConfig(command.rsvpLerStatus, subTunnelConfigId);
   // The active instance's status is needed even when the group stands in the pending instance.
   auto const activeMbbTunnelStatus = command.getMbbTunnelStatus(activeMbbTunnelConfigId);
   if (!subTunnelConfig || !activeMbbTunnelStatus)
      return;
   PathFacts facts;
   facts.group = command.getLspGroupStatusByGroupId(activeMbbTunnelConfigId, pendingMbbTunnelConfigId, groupId);
   facts.pathSpecId = primary ? subTunnelConfig->primaryPathSpecId : subTunnelConfig->secondaryPathSpecId;
   auto const pathSpecs = command.pathSpecConfigColl();
   facts.pathSpecConfig = pathSpecs ? pathSpecs->pathSpecConfig(facts.pathSpecId) : nullptr;
   if (!facts.pathSpecConfig) {
      command.renderMissingPathSpecConfig(renderer, subTunnelConfigId.tunnelSpecId, primary);
      return;
   }
   facts.coldStandbyCandidate = !primary && !subTunnelConfig->secondaryPreSignaled;
   if (!facts.coldStandbyCandidate && !facts.group)
      return;
   facts.activeLspGroupId = activeMbbTunnelStatus->activeLspGroupId;
   renderPathFacts(command, renderer, facts, activeMbbTunnelConfigId, pendingMbbTunnelConfigId, groupId, texts);
}

} // namespace

void startLspGroupPathJson(scrivo::RendererV2* renderer, bool primary) {
   RSVP_LER_TRACE();
   if (primary)
      renderer->startJsonDict("primaryPath");
   else
      renderer->startJsonDict();
}

void endLspGroupPathJson(scrivo::RendererV2* renderer, bool) {
   RSVP_LER_TRACE();
   renderer->endJsonDict();
}

void renderLspGroupPathSpec(scrivo::RendererV2* renderer, RsvpLerPathSpecId const& pathSpecId, bool primary,
                            bool text) {
   RSVP_LER_TRACE(pathSpecId);
   addLine(renderer, text, primary ? "   Primary path: " : "   Secondary path: ", pathSpecId.name);
   renderer->addJsonKeyValuePair("specName", pathSpecId.name);
}

void ShowRsvpLerTunnel::renderPaths(scrivo::RendererV2* renderer,
                                    RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                                    RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId) const {
   RSVP_LER_TRACE(activeMbbTunnelConfigId, pendingMbbTunnelConfigId);
   renderLspGroup(renderer, activeMbbTunnelConfigId, pendingMbbTunnelConfigId, 0);
   renderer->startJsonList("secondaryPaths");
   renderLspGroup(renderer, activeMbbTunnelConfigId, pendingMbbTunnelConfigId, 1);
   renderer->endJsonList();
}

void ShowRsvpLerTunnel::renderDetailedPaths(scrivo::RendererV2* renderer,
                                            RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                                            RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId, bool text) const {
   RSVP_LER_TRACE(activeMbbTunnelConfigId, pendingMbbTunnelConfigId);
   renderDetailedLspGroup(renderer, activeMbbTunnelConfigId, pendingMbbTunnelConfigId, 0, text);
   renderer->startJsonList("secondaryPaths");
   renderDetailedLspGroup(renderer, activeMbbTunnelConfigId, pendingMbbTunnelConfigId, 1, text);
   renderer->endJsonList();
}

void ShowRsvpLerTunnel::renderLspGroup(scrivo::RendererV2* renderer,
                                       RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                                       RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId,
                                       std::uint8_t groupId) const {
   RSVP_LER_TRACE(activeMbbTunnelConfigId, pendingMbbTunnelConfigId, ", groupId=", groupId);
   renderPath(*this, renderer, activeMbbTunnelConfigId, pendingMbbTunnelConfigId, groupId, {true, false});
}

void ShowRsvpLerTunnel::renderDetailedLspGroup(scrivo::RendererV2* renderer,
                                               RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                                               RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId,
                                               std::uint8_t groupId, bool text) const {
   RSVP_LER_TRACE(activeMbbTunnelConfigId, pendingMbbTunnelConfigId, ", groupId=", groupId);
   renderPath(*this, renderer, activeMbbTunnelConfigId, pendingMbbTunnelConfigId, groupId, {text, text});
}

void ShowRsvpLerTunnel::renderMissingPathSpecConfig(scrivo::RendererV2* renderer,
                                                    RsvpLerTunnelSpecId const& tunnelSpecId, bool primary) const {
   RSVP_LER_TRACE(tunnelSpecId);
   RsvpLerPathSpecId const pathSpecId = getRequestedPathSpecId(tunnelSpecId, primary);
   if (pathSpecId != RsvpLerPathSpecId()) {
      renderer->addText(primary ? "   Primary path: " : "   Secondary path: ", pathSpecId.name);
      renderer->addFrill(" (not configured)\n");
   } else if (primary) {
      renderer->addFrill("   Primary path: not specified\n");
   }
}

} // namespace Rsvp::Cli
