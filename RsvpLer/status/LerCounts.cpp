#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/status/LerStatus.h"
#include "vane/Epoch.h"

#include <array>
#include <cstddef>
#include <span>
#include <utility>

namespace Rsvp::Cli {

namespace {

// Asks the memory for what the walk of a collection reads first.
constexpr auto aheadOfAll = [](auto const& coll) { coll.prefetch(); };

void countConfiguredTunnels(Handle<RsvpLerSuperTunnelConfigColl> const& configs, LerCounts& counts) {
   if (!configs)
      return;
   configs->inspectOutlines([&](RsvpLerTunnelSpecId const&, RsvpLerSuperTunnelConfig::Outline config) {
      if (config.isP2mp) {
         ++counts.p2mpTunnelCount;
         return;
      }
      ++counts.tunnelCount;
      if (config.hasSecondary)
         ++counts.tunnelSecondaryEnabledCount;
      if (config.splitBwEnabled)
         ++counts.splitBwTunnelCount;
   });
}

void countTunnelsUp(Handle<RsvpLerSuperTunnelStatusColl> const& statuses, LerCounts& counts) {
   if (!statuses)
      return;
   statuses->inspectOutlines([&](RsvpLerTunnelSpecId const&, RsvpLerSuperTunnelStatus::Outline status) {
      if (status.isUp)
         ++(status.isP2mp ? counts.p2mpTunnelUpCount : counts.tunnelUpCount);
   });
}

void countSubTunnels(Handle<RsvpLerSubTunnelConfigCollTable> const& table, LerCounts& counts) {
   if (!table)
      return;
   table->inspectAll(aheadOfAll, [&](RsvpLerTunnelSpecId const&, RsvpLerSubTunnelConfigColl const& coll) {
      coll.inspectAll([&](RsvpLerSubTunnelConfigId const& id, RsvpLerSubTunnelConfig const&) {
         if (id.isSplit())
            ++counts.subTunnelCount;
      });
   });
}

void countSubTunnelsUp(Handle<RsvpLerSubTunnelStatusCollTable> const& table, LerCounts& counts) {
   if (!table)
      return;
   table->inspectAll(aheadOfAll, [&](RsvpLerTunnelSpecId const&, RsvpLerSubTunnelStatusColl const& coll) {
      coll.inspectOutlines([&](RsvpLerSubTunnelConfigId const& id, RsvpLerSubTunnelStatus::Outline status) {
         if (id.isSplit() && status.isUp)
            ++counts.subTunnelUpCount;
      });
   });
}

// Whether a group carries the traffic of its instance.
struct SecondaryInUse {
   RsvpLerMbbTunnelConfigId const* mbbId;
   RsvpLerLspGroupId const* groupKey;

   auto const& parent() const noexcept { return mbbId->subTunnelConfigId; }
   static void lookAhead(RsvpLerMbbTunnelStatusColl const&) noexcept {}
   // Of most the outline tells that another group does.
   RsvpLerMbbTunnelStatus const* find(RsvpLerMbbTunnelStatusColl const& coll) const noexcept {
      RsvpLerMbbTunnelStatus const* const status = coll.peekIf(
            *mbbId, [&](RsvpLerMbbTunnelStatus::Outline of) { return of.activeGroupId == groupKey->groupId; });
      if (status != nullptr)
         __builtin_prefetch(&status->activeLspGroupId.groupId);
      return status;
   }
   void count(RsvpLerMbbTunnelStatus const& status, LerCounts& counts) const {
      if (status.activeLspGroupId == *groupKey)
         ++(parent().isSplit() ? counts.subTunnelSecondaryInUseCount : counts.tunnelSecondaryInUseCount);
   }
};

// How the sub-LSPs of a P2MP request do.
struct SubLspsOfRequest {
   RsvpLerLspRequestConfigId const* id;

   auto const& parent() const noexcept { return id->lspGroupId; }
   static void lookAhead(RsvpLerLspRequestStatusColl const& coll) noexcept {
      coll.lookAheadToOnly([](RsvpLerLspRequestStatus const& status) { __builtin_prefetch(&status.subLspState); });
   }
   RsvpLerLspRequestStatus const* find(RsvpLerLspRequestStatusColl const& coll) const noexcept {
      RsvpLerLspRequestStatus const* const status = coll.peek(*id);
      if (status != nullptr && !status->subLspState.empty())
         __builtin_prefetch(&*status->subLspState.begin());
      return status;
   }
   void count(RsvpLerLspRequestStatus const& status, LerCounts& counts) const {
      for (auto const& [leaf, state] : status.subLspState) {
         ++counts.p2mpSubLspCount;
         if (state == RsvpLspState::up)
            ++counts.p2mpSubLspUpCount;
      }
   }
};

// Questions to another table of tables than the one that is walked, where the records lie far from each other. They are
// gathered until they are so many that it pays to ask the memory for what each step to the answers will read, for all
// of them before the first.
template<class Question, class Table>
class Questions {
public:
   // The table may be missing.
   Questions(Handle<Table> table, LerCounts& counts) : table_(std::move(table)), counts_(counts) {}

   // What the question refers to has to stay where it is until the answers are there.
   void add(Question const& question) {
      if (table_)
         add(question, nullptr);
   }
   // For questions that come much in the order in which the keys of the table came: looks first where the one before
   // was answered.
   void addNear(Question const& question) {
      if (!table_)
         return;
      Coll const* const coll = table_->peekNear(question.parent(), place_);
      if (coll != nullptr)
         coll->prefetch();
      add(question, coll);
   }
   void answer() {
      std::span<Step> const steps(steps_.data(), std::exchange(size_, 0));
      for (Step const& step : steps) {
         if (step.coll == nullptr)
            table_->prefetchCell(step.question.parent());
      }
      for (Step const& step : steps) {
         if (step.coll == nullptr)
            table_->prefetchSlot(step.question.parent());
      }
      for (Step& step : steps) {
         if (step.coll == nullptr)
            step.coll = table_->peek(step.question.parent(), place_);
         if (step.coll != nullptr)
            Question::lookAhead(*step.coll);
      }
      for (Step& step : steps)
         step.record = step.coll != nullptr ? step.question.find(*step.coll) : nullptr;
      for (Step const& step : steps) {
         if (step.record != nullptr)
            step.question.count(*step.record, counts_);
      }
   }

private:
   using Coll = typename Table::Object;
   struct Step {
      Question question;
      Coll const* coll;
      typename Coll::Object const* record;
   };

   void add(Question const& question, Coll const* coll) {
      steps_[size_++] = {question, coll, nullptr};
      if (size_ == steps_.size())
         answer();
   }

   Handle<Table> table_;
   LerCounts& counts_;
   typename Table::Place place_ = 0; // where the last answer was
   std::array<Step, 32> steps_;
   std::size_t size_ = 0;
};

// Counts the LSPs, which stand in the groups. Under a pin of the caller's.
class LspCounter {
public:
   LspCounter(ShowRsvpLer const& command, LerCounts& counts)
         : groupTable_(command.lspGroupStatusCollTable()), mbbTable_(command.mbbTunnelStatusCollTable()),
           counts_(counts), secondaries_(mbbTable_, counts), subLsps_(command.lspRequestStatusCollTable(), counts) {}

   void countAll() {
      if (!groupTable_ || !mbbTable_)
         return;
      groupTable_->inspectAll(aheadOfAll, [&](RsvpLerMbbTunnelConfigId const& mbbId, auto const& groups) {
         groups.inspectAll([&](RsvpLerLspGroupId const& key, RsvpLerLspGroupStatus const& group,
                               RsvpLerLspGroupStatus::Outline outline) { countGroup(mbbId, key, group, outline); });
      });
      secondaries_.answer();
      subLsps_.answer();
   }

private:
   void countGroup(RsvpLerMbbTunnelConfigId const& mbbId, RsvpLerLspGroupId const& key,
                   RsvpLerLspGroupStatus const& group, RsvpLerLspGroupStatus::Outline outline) {
      if (outline.hasActive)
         countRequest(outline, group.activeLspRequestConfigId);
      if (outline.hasPending)
         countRequest(outline, group.pendingLspRequestConfigId);
      if (!outline.isUp)
         return;
      ++(outline.isP2mp ? counts_.p2mpLspUpCount : counts_.lspUpCount);
      // P2MP groups take part in this just as P2P groups do.
      if (key.groupId != 0)
         secondaries_.addNear({&mbbId, &key});
   }
   void countRequest(RsvpLerLspGroupStatus::Outline group, RsvpLerLspRequestConfigId const& id) {
      ++(group.isP2mp ? counts_.p2mpLspCount : counts_.lspCount);
      if (group.isP2mp) {
         __builtin_prefetch(&id);
         subLsps_.add({&id});
      }
   }

   Handle<RsvpLerLspGroupStatusCollTable> groupTable_;
   Handle<RsvpLerMbbTunnelStatusCollTable> mbbTable_;
   LerCounts& counts_;
   Questions<SecondaryInUse, RsvpLerMbbTunnelStatusCollTable> secondaries_;
   Questions<SubLspsOfRequest, RsvpLerLspRequestStatusCollTable> subLsps_;
};

} // namespace

LerCounts countLer(ShowRsvpLer const& command) {
   RSVP_LER_TRACE();
   Vane::Pin const pin;
   LerCounts counts;
   countConfiguredTunnels(command.superTunnelConfigColl(), counts);
   countTunnelsUp(command.superTunnelStatusColl(), counts);
   countSubTunnels(command.subTunnelConfigCollTable(), counts);
   countSubTunnelsUp(command.subTunnelStatusCollTable(), counts);
   LspCounter(command, counts).countAll();
   return counts;
}

} // namespace Rsvp::Cli
