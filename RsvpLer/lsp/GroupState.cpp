#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/RendererV2.h"
#include "RsvpLer/text/EnumText.h"

// The state of a path or a tree.
//
//       State: up, in use, re-establishing       "state":"up","mbb":true,"inUse":true
//       State: cold standby                      "preSignaled":false,"state":"coldStandby","mbb":false,"inUse":false

namespace Rsvp::Cli {

namespace {

struct GroupState {
   char const* word;
   bool inUse; // carries the traffic of the active instance, and is up
   bool mbb;   // a replacement runs within the group or between the instances
};

// `activeLspGroupId` is the group in use of the active instance; `bothInstances` tells whether both instances have a
// group. An empty group reads as unknown.
GroupState getGroupState(Handle<RsvpLerLspGroupStatus> const& group, RsvpLerLspGroupId const& activeLspGroupId,
                         bool bothInstances) {
   auto const state = group ? group->lspGroupState : RsvpLerLspGroupState::unknown;
   auto const outline = group ? group->outline() : RsvpLerLspGroupStatus::Outline();
   return {lspGroupStateToString(state), outline.isUp && group->lspGroupId == activeLspGroupId,
           (outline.hasActive && outline.hasPending) || bothInstances};
}

void renderStateJson(scrivo::RendererV2* renderer, GroupState const& state) {
   renderer->addJsonKeyValuePair("state", state.word);
   renderer->addJsonKeyValuePair("mbb", state.mbb);
   renderer->addJsonKeyValuePair("inUse", state.inUse);
}

void renderStateText(scrivo::RendererV2* renderer, GroupState const& state) {
   renderer->addText("      State: ", state.word);
   if (state.inUse)
      renderer->addFrill(", in use");
   if (state.mbb)
      renderer->addFrill(", re-establishing");
   renderer->eol();
}

} // namespace

void ShowRsvpLerTunnel::renderLspGroupState(scrivo::RendererV2* renderer, Handle<RsvpLerLspGroupStatus> const& group,
                                            RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                                            RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId,
                                            RsvpLerLspGroupId const& activeLspGroupId, std::uint8_t groupId,
                                            bool coldStandbyCandidate, bool primary, bool text) const {
   RSVP_LER_TRACE(activeMbbTunnelConfigId, pendingMbbTunnelConfigId, ", groupId=", groupId);
   auto const activeGroup = getLspGroupStatus({activeMbbTunnelConfigId, groupId});
   auto const pendingGroup = getLspGroupStatus({pendingMbbTunnelConfigId, groupId});
   GroupState state = getGroupState(group, activeLspGroupId, activeGroup && pendingGroup);
   bool const coldStandby = coldStandbyCandidate && !group;
   if (coldStandby)
      state.word = "coldStandby";
   if (!primary)
      renderer->addJsonKeyValuePair("preSignaled", !coldStandbyCandidate);
   renderStateJson(renderer, state);
   if (text && coldStandby)
      renderer->addFrill("      State: cold standby\n");
   else if (text)
      renderStateText(renderer, state);
}

void ShowRsvpLerTunnel::renderP2mpTreeState(scrivo::RendererV2* renderer,
                                            Handle<RsvpLerMbbTunnelStatus> const& activeMbbTunnelStatus,
                                            Handle<RsvpLerMbbTunnelStatus> const& pendingMbbTunnelStatus,
                                            Handle<RsvpLerLspGroupStatus> const& group, bool text) const {
   RSVP_LER_TRACE();
   if (!activeMbbTunnelStatus)
      return;
   // Unlike those of a path, the groups of the two instances are the ones in use there, whatever their number.
   auto const activeGroup = getLspGroupStatus(activeMbbTunnelStatus->activeLspGroupId);
   auto const pendingGroup =
         pendingMbbTunnelStatus ? getLspGroupStatus(pendingMbbTunnelStatus->activeLspGroupId) : nullptr;
   GroupState const state = getGroupState(group, activeMbbTunnelStatus->activeLspGroupId, activeGroup && pendingGroup);
   renderStateJson(renderer, state);
   if (text)
      renderStateText(renderer, state);
}

} // namespace Rsvp::Cli
