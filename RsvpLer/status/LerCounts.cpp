#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/status/LerStatus.h"
#include "vane/Epoch.h"

#include <array>
#include <cstddef>
#include <optional>
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

// Whether a group carries the traffic of its instance.
struct SecondaryInUse {
   RsvpLerMbbTunnelConfigId const& mbbId;
   RsvpLerLspGroupId const& groupKey;

   auto const& parent() const noexcept { return mbbId.subTunnelConfigId; }
   auto const& key() const noexcept { return mbbId; }
   static void prefetchMore(RsvpLerMbbTunnelStatus const&) noexcept {}
   void count(RsvpLerMbbTunnelStatus const& status, LerCounts& counts) const {
      if (status.activeLspGroupId == groupKey)
         ++(parent().isSplit() ? counts.subTunnelSecondaryInUseCount : counts.tunnelSecondaryInUseCount);
   }
};

// How the sub-LSPs of a P2MP request do.
struct SubLspsOfRequest {
   RsvpLerLspRequestConfigId const& id;

   auto const& parent() const noexcept { return id.lspGroupId; }
   auto const& key() const noexcept { return id; }
   static void prefetchMore(RsvpLerLspRequestStatus const& status) noexcept {
      if (!status.subLspState.empty())
         __builtin_prefetch(&*status.subLspState.begin());
   }
   void count(RsvpLerLspRequestStatus const& status, LerCounts& counts) const {
      for (auto const& [leaf, state] : status.subLspState) {
         ++counts.p2mpSubLspCount;
         if (state == RsvpLspState::up)
            ++counts.p2mpSubLspUpCount;
      }
   }
};

// Questions to another table of tables than the one that is walked, where the records lie far from each other. It
// gathers many and takes each step to the records for all of them, so that it waits for the memory once and not for
// each.
template<class Question, class Table>
class Questions {
public:
   // The table may be missing.
   Questions(Handle<Table> table, LerCounts& counts) : table_(std::move(table)), counts_(counts) {}

   // What the question refers to has to stay where it is until the answers are there.
   void add(Question const& question) {
      if (!table_)
         return;
      table_->prefetchCell(question.parent());
      steps_[size_++].question.emplace(question);
      if (size_ == steps_.size())
         answer();
   }
   void answer() {
      std::span const steps(steps_.data(), std::exchange(size_, 0));
      for (Step const& step : steps)
         table_->prefetchSlot(step.question->parent());
      for (Step& step : steps) {
         step.coll = table_->peek(step.question->parent());
         if (step.coll != nullptr)
            step.coll->prefetchOnlyObject();
      }
      for (Step& step : steps) {
         step.record = step.coll != nullptr ? step.coll->peek(step.question->key()) : nullptr;
         if (step.record != nullptr)
            Question::prefetchMore(*step.record);
      }
      for (Step const& step : steps) {
         if (step.record != nullptr)
            step.question->count(*step.record, counts_);
      }
   }

private:
   struct Step {
      std::optional<Question> question;
      typename Table::Object const* coll;
      typename Table::Object::Object const* record;
   };

   Vane::Pin pin_;
   Handle<Table> table_;
   LerCounts& counts_;
   std::array<Step, 32> steps_;
   std::size_t size_ = 0;
};

// Counts the LSPs, which stand in the groups.
class LspCounter {
public:
   LspCounter(ShowRsvpLer const& command, LerCounts& counts)
         : groupTable_(command.lspGroupStatusCollTable()), mbbTable_(command.mbbTunnelStatusCollTable()),
           counts_(counts), secondaries_(mbbTable_, counts), subLsps_(command.lspRequestStatusCollTable(), counts) {}

   void countAll() {
      if (!groupTable_ || !mbbTable_)
         return;
      groupTable_->walk([&](RsvpLerMbbTunnelConfigId const& mbbId, auto const& groups) {
         groups->inspectAll([&](RsvpLerLspGroupId const& groupKey, Handle<RsvpLerLspGroupStatus> const& group) {
            countGroup(mbbId, groupKey, *group);
         });
      });
      secondaries_.answer();
      subLsps_.answer();
   }

private:
   void countGroup(RsvpLerMbbTunnelConfigId const& mbbId, RsvpLerLspGroupId const& groupKey,
                   RsvpLerLspGroupStatus const& group) {
      countRequest(group.activeLspRequestConfigId, group.isP2mp);
      countRequest(group.pendingLspRequestConfigId, group.isP2mp);
      if (!isUp(group.lspGroupState))
         return;
      ++(group.isP2mp ? counts_.p2mpLspUpCount : counts_.lspUpCount);
      // P2MP groups take part in this just as P2P groups do.
      if (groupKey.groupId != 0)
         secondaries_.add({mbbId, groupKey});
   }
   void countRequest(RsvpLerLspRequestConfigId const& id, bool isP2mp) {
      if (!id)
         return;
      ++(isP2mp ? counts_.p2mpLspCount : counts_.lspCount);
      if (isP2mp)
         subLsps_.add({id});
   }

   Vane::Pin pin_;
   Handle<RsvpLerLspGroupStatusCollTable> groupTable_;
   Handle<RsvpLerMbbTunnelStatusCollTable> mbbTable_;
   LerCounts& counts_;
   Questions<SecondaryInUse, RsvpLerMbbTunnelStatusCollTable> secondaries_;
   Questions<SubLspsOfRequest, RsvpLerLspRequestStatusCollTable> subLsps_;
};

} // namespace

LerCounts countLer(ShowRsvpLer const& command) {
   RSVP_LER_TRACE();
   LerCounts counts;
   countConfiguredTunnels(command.superTunnelConfigColl(), counts);
   countTunnelsUp(command.superTunnelStatusColl(), counts);
   countSubTunnels(command.subTunnelConfigCollTable(), counts);
   countSubTunnelsUp(command.subTunnelStatusCollTable(), counts);
   LspCounter(command, counts).countAll();
   return counts;
}

} // namespace Rsvp::Cli
