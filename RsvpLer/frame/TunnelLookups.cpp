#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"

// The lookups of the tunnel object.

namespace Rsvp::Cli {

Handle<RsvpLerMbbTunnelConfig>
ShowRsvpLerTunnel::getMbbTunnelConfig(RsvpLerMbbTunnelConfigId const& mbbTunnelConfigId) const {
   RSVP_LER_TRACE(mbbTunnelConfigId);
   return findMbbTunnelConfig(rsvpLerStatus, mbbTunnelConfigId);
}

Handle<RsvpLerMbbTunnelStatus>
ShowRsvpLerTunnel::getMbbTunnelStatus(RsvpLerMbbTunnelConfigId const& mbbTunnelConfigId) const {
   RSVP_LER_TRACE(mbbTunnelConfigId);
   return findMbbTunnelStatus(rsvpLerStatus, mbbTunnelConfigId);
}

Handle<RsvpLerLspGroupStatus> ShowRsvpLerTunnel::getLspGroupStatus(RsvpLerLspGroupId const& lspGroupId) const {
   RSVP_LER_TRACE(lspGroupId);
   return findLspGroupStatus(rsvpLerStatus, lspGroupId);
}

Handle<RsvpLerLspGroupStatus>
ShowRsvpLerTunnel::getLspGroupStatusByGroupId(RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                                              RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId,
                                              std::uint8_t groupId) const {
   RSVP_LER_TRACE(activeMbbTunnelConfigId, pendingMbbTunnelConfigId, ", groupId=", groupId);
   auto activeGroup = getLspGroupStatus({activeMbbTunnelConfigId, groupId});
   return activeGroup ? activeGroup : getLspGroupStatus({pendingMbbTunnelConfigId, groupId});
}

Handle<RsvpLerLspRequestConfig>
ShowRsvpLerTunnel::getLspRequestConfig(RsvpLerLspRequestConfigId const& lspRequestConfigId) const {
   RSVP_LER_TRACE(lspRequestConfigId);
   return findLspRequestConfig(rsvpLerStatus, lspRequestConfigId);
}

Handle<RsvpLerLspRequestStatus>
ShowRsvpLerTunnel::getLspRequestStatus(RsvpLerLspRequestConfigId const& lspRequestConfigId) const {
   RSVP_LER_TRACE(lspRequestConfigId);
   return findLspRequestStatus(rsvpLerStatus, lspRequestConfigId);
}

Handle<RsvpLerSubTunnelStatus>
ShowRsvpLerTunnel::getSubTunnelStatus(RsvpLerTunnelSpecId const& tunnelSpecId,
                                      RsvpLerSubTunnelConfigId const& subTunnelConfigId) const {
   RSVP_LER_TRACE(subTunnelConfigId);
   auto const table = subTunnelStatusCollTable();
   auto const coll = table ? table->subTunnelStatusColl(tunnelSpecId) : nullptr;
   return coll ? coll->subTunnelStatus(subTunnelConfigId) : nullptr;
}

Handle<RsvpLerSubTunnelStatus>
ShowRsvpLerTunnel::getNonSplitSubTunnelStatus(RsvpLerTunnelSpecId const& tunnelSpecId) const {
   RSVP_LER_TRACE(tunnelSpecId);
   return getSubTunnelStatus(tunnelSpecId, RsvpLerSubTunnelConfigId::makeNonSplitSubTunnelConfigId(tunnelSpecId));
}

CurrentInstances ShowRsvpLerTunnel::getCurrentInstances(Handle<RsvpLerSubTunnelStatus> const& subTunnelStatus) const {
   RSVP_LER_TRACE();
   CurrentInstances current;
   if (!subTunnelStatus)
      return current;
   current.activeMbbTunnelConfigId = subTunnelStatus->activeMbbTunnelConfigId;
   current.pendingMbbTunnelConfigId = subTunnelStatus->pendingMbbTunnelConfigId;
   current.mbb = current.activeMbbTunnelConfigId && current.pendingMbbTunnelConfigId;
   current.activeMbbTunnelStatus = getMbbTunnelStatus(current.activeMbbTunnelConfigId);
   if (!current.activeMbbTunnelStatus)
      return current;
   current.lspGroupId = current.activeMbbTunnelStatus->activeLspGroupId;
   if (auto const group = getLspGroupStatus(current.lspGroupId))
      current.mbb = current.mbb || (group->activeLspRequestConfigId && group->pendingLspRequestConfigId);
   return current;
}

RsvpLerPathSpecId ShowRsvpLerTunnel::getRequestedPathSpecId(RsvpLerTunnelSpecId const& tunnelSpecId,
                                                            bool primary) const {
   RSVP_LER_TRACE(tunnelSpecId);
   auto const specs = tunnelSpecColl();
   auto const spec = specs ? specs->tunnelSpec(tunnelSpecId) : nullptr;
   if (!spec)
      return {};
   return primary ? spec->primaryPathSpecId : spec->secondaryPathSpecId;
}

} // namespace Rsvp::Cli
