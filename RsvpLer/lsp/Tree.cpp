#include "RsvpLer/lsp/Tree.h"

#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/Lines.h"

// The tree of a P2MP tunnel.
//
//    Active tree: to-all                        "primaryTree":{"specName":"to-all",
//       State: up, in use                          "state":"up","mbb":false,"inUse":true,
//       Path MTU: 1500 bytes                       "pathMtu":1500,
//       Interface MTU:                             "intfMtus":{"eth1":1500},
//          eth1: 1500 bytes
//       CSPF Tree ID: 9                            "cspfTreeId":9,
//       Leaves (dynamic):                          "treeErrors":[],"specType":"dynamic",
//          10.0.0.9 up                             "treeLeaves":{"10.0.0.9":{...}}}

namespace Rsvp::Cli {

namespace {

void renderTree(ShowRsvpLerTunnel const& command, scrivo::RendererV2* renderer, RsvpLerPathSpecId const& pathSpecId,
                Handle<RsvpLerMbbTunnelStatus> const& activeMbbTunnelStatus,
                Handle<RsvpLerMbbTunnelStatus> const& pendingMbbTunnelStatus, bool detailed, bool text) {
   if (pathSpecId == RsvpLerPathSpecId() || !activeMbbTunnelStatus)
      return;
   auto const& activeMbbTunnelConfigId = activeMbbTunnelStatus->mbbTunnelConfigId;
   auto const pendingMbbTunnelConfigId =
         pendingMbbTunnelStatus ? pendingMbbTunnelStatus->mbbTunnelConfigId : RsvpLerMbbTunnelConfigId();
   auto const pathSpecs = command.pathSpecConfigColl();
   auto const pathSpecConfig = pathSpecs ? pathSpecs->pathSpecConfig(pathSpecId) : nullptr;
   if (!pathSpecConfig) {
      command.renderTreeSpecNameNoPathSpecConfig(renderer, activeMbbTunnelConfigId, text);
      return;
   }
   auto const group = command.getLspGroupStatusByGroupId(activeMbbTunnelConfigId, pendingMbbTunnelConfigId, 0);
   auto const requestId = group ? group->activeLspRequestConfigId : RsvpLerLspRequestConfigId();

   renderer->startJsonDict("primaryTree");
   renderTreeSpecName(renderer, pathSpecId, text);
   command.renderP2mpTreeState(renderer, activeMbbTunnelStatus, pendingMbbTunnelStatus, group, text);
   command.renderP2mpLspGroupPathMtus(renderer, group, detailed && text);
   // The plain block keeps the line of the tree id, though that of a path has none.
   command.renderLspGroupCspfTreeId(renderer, group ? group->lspGroupId : RsvpLerLspGroupId(), text);
   command.renderP2mpLspGroupTreeErrors(renderer, activeMbbTunnelConfigId, pendingMbbTunnelConfigId, text);
   if (detailed)
      command.renderDetailedTreeLeaves(renderer, pathSpecConfig, requestId, text);
   else
      command.renderTreeLeaves(renderer, pathSpecConfig, requestId, text);
   renderer->endJsonDict();
}

} // namespace

void renderTreeSpecName(scrivo::RendererV2* renderer, RsvpLerPathSpecId const& pathSpecId, bool text) {
   RSVP_LER_TRACE(pathSpecId);
   if (pathSpecId == RsvpLerPathSpecId())
      return;
   renderer->addJsonKeyValuePair("specName", pathSpecId.name);
   addLine(renderer, text, "   Active tree: ", pathSpecId.name);
}

void ShowRsvpLerTunnel::renderP2mpLspGroup(scrivo::RendererV2* renderer, RsvpLerPathSpecId const& pathSpecId,
                                           Handle<RsvpLerMbbTunnelStatus> const& activeMbbTunnelStatus,
                                           Handle<RsvpLerMbbTunnelStatus> const& pendingMbbTunnelStatus,
                                           bool text) const {
   RSVP_LER_TRACE(pathSpecId);
   renderTree(*this, renderer, pathSpecId, activeMbbTunnelStatus, pendingMbbTunnelStatus, false, text);
}

void ShowRsvpLerTunnel::renderDetailedP2mpLspGroup(scrivo::RendererV2* renderer, RsvpLerPathSpecId const& pathSpecId,
                                                   Handle<RsvpLerMbbTunnelStatus> const& activeMbbTunnelStatus,
                                                   Handle<RsvpLerMbbTunnelStatus> const& pendingMbbTunnelStatus,
                                                   bool text) const {
   RSVP_LER_TRACE(pathSpecId);
   renderTree(*this, renderer, pathSpecId, activeMbbTunnelStatus, pendingMbbTunnelStatus, true, text);
}

void ShowRsvpLerTunnel::renderTreeSpecNameNoPathSpecConfig(scrivo::RendererV2* renderer,
                                                           RsvpLerMbbTunnelConfigId const& mbbTunnelConfigId,
                                                           bool text) const {
   RSVP_LER_TRACE(mbbTunnelConfigId);
   if (!text || !mbbTunnelConfigId)
      return;
   RsvpLerPathSpecId const pathSpecId = getRequestedPathSpecId(mbbTunnelConfigId.subTunnelConfigId.tunnelSpecId, true);
   if (pathSpecId == RsvpLerPathSpecId()) {
      renderer->addFrill("   Active tree: not specified\n");
   } else {
      renderer->addText("   Active tree: ", pathSpecId.name);
      renderer->addFrill(" (not configured)\n");
   }
}

} // namespace Rsvp::Cli
