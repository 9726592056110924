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

// Whether the group is the one that carries the traffic of its instance.
bool isInUse(Handle<RsvpLerMbbTunnelStatusCollTable> const& table, RsvpLerMbbTunnelConfigId const& mbbId,
             RsvpLerLspGroupId const& groupKey) {
   auto const coll = table->mbbTunnelStatusColl(mbbId.subTunnelConfigId);
   auto const status = coll ? coll->mbbTunnelStatus(mbbId) : nullptr;
   return status && status->activeLspGroupId == groupKey;
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

void countGroup(ShowRsvpLer const& command, RsvpLerLspGroupStatus const& group, LerCounts& counts) {
   countRequest(command, group.activeLspRequestConfigId, group.isP2mp, counts);
   countRequest(command, group.pendingLspRequestConfigId, group.isP2mp, counts);
   if (isUp(group.lspGroupState))
      ++(group.isP2mp ? counts.p2mpLspUpCount : counts.lspUpCount);
}

void countLsps(ShowRsvpLer const& command, LerCounts& counts) {
   auto const groupTable = command.lspGroupStatusCollTable();
   auto const mbbTable = command.mbbTunnelStatusCollTable();
   if (!groupTable || !mbbTable)
      return;
   groupTable->walk([&](RsvpLerMbbTunnelConfigId const& mbbId, Handle<RsvpLerLspGroupStatusColl> const& groups) {
      Vane::orderedWalk(*groups, [&](RsvpLerLspGroupId const& groupKey, Handle<RsvpLerLspGroupStatus> const& group) {
         countGroup(command, *group, counts);
         // P2MP groups take part in this just as P2P groups do.
         if (groupKey.groupId != 0 && isUp(group->lspGroupState) && isInUse(mbbTable, mbbId, groupKey))
            ++(mbbId.subTunnelConfigId.isSplit() ? counts.subTunnelSecondaryInUseCount
                                                 : counts.tunnelSecondaryInUseCount);
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
