#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/status/LerStatus.h"
#include "vane/OrderedColl.h"

namespace Rsvp::Cli {

namespace {

bool isUp(RsvpLerLspGroupState state) {
   return state == RsvpLerLspGroupState::up || state == RsvpLerLspGroupState::upVerified;
}

void countConfiguredTunnels(Handle<RsvpLerSuperTunnelConfigColl> const& configs, LerCounts& counts) {
   if (!configs)
      return;
   configs->walk([&](RsvpLerTunnelSpecId const&, Handle<RsvpLerSuperTunnelConfig> const& config) {
      if (config->sessionType != RsvpSessionType::p2p) {
         ++counts.p2mpTunnelCount;
         return;
      }
      ++counts.tunnelCount;
      if (config->secondaryPathSpecId != RsvpLerPathSpecId())
         ++counts.tunnelSecondaryEnabledCount;
      if (config->splitBwEnabled)
         ++counts.splitBwTunnelCount;
   });
}

void countTunnelsUp(Handle<RsvpLerSuperTunnelStatusColl> const& statuses, LerCounts& counts) {
   if (!statuses)
      return;
   statuses->walk([&](RsvpLerTunnelSpecId const&, Handle<RsvpLerSuperTunnelStatus> const& status) {
      if (status->state == RsvpLerTunnelState::up)
         ++(status->isP2mp ? counts.p2mpTunnelUpCount : counts.tunnelUpCount);
   });
}

void countSubTunnels(Handle<RsvpLerSubTunnelConfigCollTable> const& table, LerCounts& counts) {
   if (!table)
      return;
   table->walk([&](RsvpLerTunnelSpecId const&, Handle<RsvpLerSubTunnelConfigColl> const& coll) {
      coll->walk([&](RsvpLerSubTunnelConfigId const& id, Handle<RsvpLerSubTunnelConfig> const&) {
         if (id.isSplit())
            ++counts.subTunnelCount;
      });
   });
}

void countSubTunnelsUp(Handle<RsvpLerSubTunnelStatusCollTable> const& table, LerCounts& counts) {
   if (!table)
      return;
   table->walk([&](RsvpLerTunnelSpecId const&, Handle<RsvpLerSubTunnelStatusColl> const& coll) {
      coll->walk([&](RsvpLerSubTunnelConfigId const& id, Handle<RsvpLerSubTunnelStatus> const& status) {
         if (id.isSplit() && status->state == RsvpLerTunnelState::up)
            ++counts.subTunnelUpCount;
      });
   });
}

// The group that carries the traffic of an instance, the default when the instance has no status.
RsvpLerLspGroupId activeGroupOf(Handle<RsvpLerMbbTunnelStatusCollTable> const& table,
                                RsvpLerMbbTunnelConfigId const& mbbId) {
   auto const coll = table->mbbTunnelStatusColl(mbbId.subTunnelConfigId);
   auto const status = coll ? coll->mbbTunnelStatus(mbbId) : nullptr;
   return status ? status->activeLspGroupId : RsvpLerLspGroupId();
}

void countRequest(ShowRsvpLer const& command, RsvpLerLspRequestConfigId const& id, bool isP2mp, LerCounts& counts) {
   if (!id)
      return;
   if (!isP2mp) {
      ++counts.lspCount;
      return;
   }
   ++counts.p2mpLspCount;
   auto const status = command.getLspRequestStatus(id);
   if (!status)
      return;
   for (auto const& [leaf, state] : status->subLspState) {
      ++counts.p2mpSubLspCount;
      if (state == RsvpLspState::up)
         ++counts.p2mpSubLspUpCount;
   }
}

// `activeGroup` is that of the instance the group belongs to, and `split` tells whether that instance is a
// sub-tunnel's.
void countGroup(ShowRsvpLer const& command, RsvpLerLspGroupId const& groupKey, RsvpLerLspGroupStatus const& group,
                RsvpLerLspGroupId const& activeGroup, bool split, LerCounts& counts) {
   countRequest(command, group.activeLspRequestConfigId, group.isP2mp, counts);
   countRequest(command, group.pendingLspRequestConfigId, group.isP2mp, counts);
   if (!isUp(group.lspGroupState))
      return;
   ++(group.isP2mp ? counts.p2mpLspUpCount : counts.lspUpCount);
   bool const inUse = activeGroup != RsvpLerLspGroupId() && activeGroup == groupKey;
   // P2MP groups take part in this just as P2P groups do.
   if (inUse && groupKey.groupId != 0)
      ++(split ? counts.subTunnelSecondaryInUseCount : counts.tunnelSecondaryInUseCount);
}

void countLsps(ShowRsvpLer const& command, LerCounts& counts) {
   auto const groupTable = command.lspGroupStatusCollTable();
   auto const mbbTable = command.mbbTunnelStatusCollTable();
   if (!groupTable || !mbbTable)
      return;
   groupTable->walk([&](RsvpLerMbbTunnelConfigId const& mbbId, Handle<RsvpLerLspGroupStatusColl> const& groups) {
      RsvpLerLspGroupId const activeGroup = activeGroupOf(mbbTable, mbbId);
      bool const split = mbbId.subTunnelConfigId.isSplit();
      Vane::orderedWalk(*groups, [&](RsvpLerLspGroupId const& groupKey, Handle<RsvpLerLspGroupStatus> const& group) {
         countGroup(command, groupKey, *group, activeGroup, split, counts);
      });
   });
}

} // namespace

LerCounts countLer(ShowRsvpLer const& command) {
   RSVP_LER_TRACE();
   LerCounts counts;
   countConfiguredTunnels(command.superTunnelConfigColl(), counts);
   countTunnelsUp(command.superTunnelStatusColl(), counts);
   countSubTunnels(command.subTunnelConfigCollTable(), counts);
   countSubTunnelsUp(command.subTunnelStatusCollTable(), counts);
   countLsps(command, counts);
   return counts;
}

} // namespace Rsvp::Cli
