#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/status/LerStatus.h"
#include "vane/Epoch.h"

#include <array>
#include <cstddef>
#include <span>
#include <utility>

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
   table->walk([&](RsvpLerTunnelSpecId const&, auto const& coll) {
      coll->walk([&](RsvpLerSubTunnelConfigId const& id, Handle<RsvpLerSubTunnelConfig> const&) {
         if (id.isSplit())
            ++counts.subTunnelCount;
      });
   });
}

void countSubTunnelsUp(Handle<RsvpLerSubTunnelStatusCollTable> const& table, LerCounts& counts) {
   if (!table)
      return;
   table->walk([&](RsvpLerTunnelSpecId const&, auto const& coll) {
      coll->walk([&](RsvpLerSubTunnelConfigId const& id, Handle<RsvpLerSubTunnelStatus> const& status) {
         if (id.isSplit() && status->state == RsvpLerTunnelState::up)
            ++counts.subTunnelUpCount;
      });
   });
}

// Counts those of the groups it is given that carry the traffic of their instances. That stands in another table, where
// their records lie far from each other: it asks the memory for many of them before it looks at the first.
class SecondariesInUse {
public:
   SecondariesInUse(RsvpLerMbbTunnelStatusCollTable const& table, LerCounts& counts) : table_(table), counts_(counts) {}

   // Both keys have to stay where they are until count() is called.
   void add(RsvpLerMbbTunnelConfigId const& mbbId, RsvpLerLspGroupId const& groupKey) {
      table_.prefetchCell(mbbId.subTunnelConfigId);
      groups_[size_++] = {&mbbId, &groupKey};
      if (size_ == groups_.size())
         count();
   }
   void count() {
      std::span const groups(groups_.data(), std::exchange(size_, 0));
      for (Group const& group : groups)
         table_.prefetchEntry(group.mbbId->subTunnelConfigId);
      for (Group const& group : groups) {
         if (auto const* const coll = table_.peek(group.mbbId->subTunnelConfigId); coll != nullptr && *coll)
            (*coll)->prefetchEntries();
      }
      for (Group const& group : groups) {
         if (isInUse(group))
            ++(group.mbbId->subTunnelConfigId.isSplit() ? counts_.subTunnelSecondaryInUseCount
                                                        : counts_.tunnelSecondaryInUseCount);
      }
   }

private:
   struct Group {
      RsvpLerMbbTunnelConfigId const* mbbId;
      RsvpLerLspGroupId const* key;
   };

   bool isInUse(Group const& group) const {
      auto const* const coll = table_.peek(group.mbbId->subTunnelConfigId);
      auto const* const status = coll != nullptr && *coll ? (*coll)->peek(*group.mbbId) : nullptr;
      return status != nullptr && *status && (*status)->activeLspGroupId == *group.key;
   }

   Vane::Pin pin_;
   RsvpLerMbbTunnelStatusCollTable const& table_;
   LerCounts& counts_;
   std::array<Group, 32> groups_;
   std::size_t size_ = 0;
};

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
   SecondariesInUse inUse(*mbbTable, counts);
   groupTable->walk([&](RsvpLerMbbTunnelConfigId const& mbbId, auto const& groups) {
      groups->inspectAll([&](RsvpLerLspGroupId const& groupKey, Handle<RsvpLerLspGroupStatus> const& group) {
         countGroup(command, *group, counts);
         // P2MP groups take part in this just as P2P groups do.
         if (groupKey.groupId != 0 && isUp(group->lspGroupState))
            inUse.add(mbbId, groupKey);
      });
   });
   inUse.count();
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
