#include "bench/TunnelValues.h"

#include "RsvpLer/lsp/GroupRecord.h"
#include "RsvpLer/text/EnumText.h"
#include "RsvpLer/text/Rates.h"
#include "RsvpLer/text/RsvpShowUtils.h"
#include "RsvpLer/text/TimeText.h"

#include <algorithm>

namespace Bench {

namespace {

using namespace Rsvp;
using namespace Rsvp::Cli;

// The records of one tunnel that more than one part needs.
struct Instances {
   RsvpLerMbbTunnelConfigId active;
   RsvpLerMbbTunnelConfigId pending;
   Handle<RsvpLerMbbTunnelStatus> activeStatus;
   Handle<RsvpLerMbbTunnelStatus> pendingStatus;
};

class Gatherer {
public:
   Gatherer(ShowRsvpLerTunnel const& command, RsvpLerTunnelSpecId const& id, TunnelValues& out)
         : command_(command), id_(id), out_(out) {}

   void tunnel();

private:
   void config();
   void autoBandwidth();
   void lspIds(RsvpLerMbbTunnelConfigId const& instance, SubTunnelValues& out);
   void errors(RsvpLerMbbTunnelConfigId const& instance, std::uint8_t groupId, PathValues& out);
   Instances instances(Handle<RsvpLerSubTunnelStatus> const& status, SubTunnelValues& out);
   bool path(Instances const& instances, std::uint8_t groupId, PathValues& out);
   bool tree(Instances const& instances, PathValues& out);
   void groupState(Handle<RsvpLerLspGroupStatus> const& group, bool bothInstances, PathValues& out);
   void leaves(Handle<RsvpLerLspGroupStatus> const& group, PathValues& out);
   void subTunnel(RsvpLerSubTunnelConfigId const& id, SubTunnelValues& out);
   void requestedBandwidth(Handle<RsvpLerSubTunnelStatus> const& status);

   ShowRsvpLerTunnel const& command_;
   RsvpLerTunnelSpecId const& id_;
   TunnelValues& out_;
   Handle<RsvpLerSuperTunnelConfig> config_;
   Handle<RsvpLerSuperTunnelStatus> status_;
   Handle<RsvpLerBwSamplingStats> stats_;
   Handle<RsvpLerBwSamplingStatus> samples_;
};

void Gatherer::config() {
   RsvpLerSuperTunnelConfig const& config = *config_;
   out_.p2mp = config.sessionType != RsvpSessionType::p2p;
   out_.source = config.source;
   out_.destination = {};
   if (!out_.p2mp && !config.destination.empty())
      out_.destination = *config.destination.begin();
   out_.configSource = tunnelSourceToEnumString(id_.source);
   out_.aliasTeps.assign(config.aliasTeps.begin(), config.aliasTeps.end());
   out_.dynamicMetric = config.metricFromIgp;
   out_.metric = config.metric;
   out_.profileState = profileStateToEnumString(config.profileState);
   out_.splitEnabled = config.splitBwEnabled;
   out_.quantum = bitsPerSecond(config.quantum);
   out_.subTunnelMinimum = config.subTunnelMinimum;
   out_.subTunnelLimit = config.subTunnelLimit;
   out_.subTunnelInitial = config.subTunnelInitial;
   out_.minSplitBandwidth = bitsPerSecond(config.minBandwidth);
   out_.maxSplitBandwidth = bitsPerSecond(config.maxBandwidth);
   out_.reductionDelay = wholeSeconds<std::uint32_t>(config.reductionDelay);
   out_.signalBandwidth = config.signalBandwidth;
   out_.setupPriority = config.setupPriority;
   out_.holdPriority = config.holdPriority;
   out_.frrMode = frrModeToString(config.frrMode, true);
   out_.optimizationInterval = config.optimizationInterval;
   out_.ldpTunneling = config.ldpTunneling;
   out_.ldpTunnelingUcmp = config.ldpTunnelingUcmp;
   out_.igpShortcut = config.igpShortcut;
}

void Gatherer::autoBandwidth() {
   RsvpLerTunnelAutoBwConfig const config = findAutoBwConfig(command_.autoBwConfig(), id_);
   out_.autoBandwidth = config.enabled;
   if (!config.enabled)
      return;
   stats_ = command_.autoBwStats()->bwSamplingStat(id_);
   samples_ = command_.bwSamplingStatusColl()->bwSamplingStatus(id_);
   out_.adjustmentPeriod = config.adjustmentPeriod;
   out_.minBandwidth = bitsPerSecond(config.minBandwidth);
   out_.maxBandwidth = bitsPerSecond(config.maxBandwidth);
   out_.nextAdjustment = {};
   if (stats_ && stats_->nextAdjustmentTime.hasValue())
      out_.nextAdjustment = RsvpShowUtils::toUtcTime(stats_->nextAdjustmentTime.value());
   out_.lastSampledBandwidth = samples_ ? bitsPerSecond(samples_->lastSampledBandwidth) : 0;
}

void Gatherer::lspIds(RsvpLerMbbTunnelConfigId const& instance, SubTunnelValues& out) {
   auto const groups = command_.lspGroupStatusCollTable()->lspGroupStatusColl(instance);
   if (!groups)
      return;
   Vane::orderedWalk(*groups, [&](RsvpLerLspGroupId const&, Handle<RsvpLerLspGroupStatus> const& group) {
      for (RsvpLerLspRequestConfigId const* request :
           {&group->activeLspRequestConfigId, &group->pendingLspRequestConfigId}) {
         if (!*request)
            continue;
         auto const status = command_.getLspRequestStatus(*request);
         out.lspIds.push_back(status ? status->lspId : Vane::Optional<std::uint16_t>());
      }
   });
}

void Gatherer::errors(RsvpLerMbbTunnelConfigId const& instance, std::uint8_t groupId, PathValues& out) {
   auto const group = findGroupRecord(command_.lspGroupStatusCollTable(), {instance, groupId});
   if (!group)
      return;
   for (RsvpLerLspRequestConfigId const* request :
        {&group->activeLspRequestConfigId, &group->pendingLspRequestConfigId}) {
      auto const status = command_.getLspRequestStatus(*request);
      if (!status)
         continue;
      Vane::orderedWalk(status->errors, [&](RsvpErrorWithNode const& error, Vane::NoValue) {
         bool const known = std::any_of(out.errors.begin(), out.errors.end(), [&](ErrorValues const& other) {
            return RsvpErrorWithNode{other.code, other.value, other.node} == error;
         });
         if (!known)
            out.errors.push_back({error.errorCode, error.errorValue, error.node});
      });
   }
}

Instances Gatherer::instances(Handle<RsvpLerSubTunnelStatus> const& status, SubTunnelValues& out) {
   Instances instances;
   out.mbb = false;
   out.state = tunnelStateToString(status ? status->state : RsvpLerTunnelState::unknown);
   out.activePathType = "unknown";
   out.sessionId = {};
   if (!status)
      return instances;
   if (status->sessionCliId != RsvpLerSubTunnelStatus::noSessionCliId)
      out.sessionId = status->sessionCliId;
   out.currentBandwidth = bitsPerSecond(status->currentBandwidth);
   instances.active = status->activeMbbTunnelConfigId;
   instances.pending = status->pendingMbbTunnelConfigId;
   out.mbb = instances.active && instances.pending;
   instances.activeStatus = command_.getMbbTunnelStatus(instances.active);
   if (instances.pending)
      instances.pendingStatus = command_.getMbbTunnelStatus(instances.pending);
   if (!instances.activeStatus)
      return instances;
   out.activePathType = getSubTunnelActivePathType(instances.activeStatus->activeLspGroupId);
   if (auto const group = command_.getLspGroupStatus(instances.activeStatus->activeLspGroupId))
      out.mbb = out.mbb || (group->activeLspRequestConfigId && group->pendingLspRequestConfigId);
   return instances;
}

void Gatherer::groupState(Handle<RsvpLerLspGroupStatus> const& group, bool bothInstances, PathValues& out) {
   bool const bothRequests = group && group->activeLspRequestConfigId && group->pendingLspRequestConfigId;
   out.mbb = bothInstances || bothRequests;
   out.state = lspGroupStateToString(group ? group->lspGroupState : RsvpLerLspGroupState::unknown);
   out.pathMtu = group ? group->pathMtu : Vane::Optional<std::uint32_t>();
   out.intfMtu = {};
   out.cspfId = {};
   out.errors.clear();
   if (!group)
      return;
   if (!group->nextHop.empty()) {
      out.intfMtu = group->nextHop.begin()->value.intfMtu;
      out.intfName = group->nextHop.begin()->value.intfId.name();
   }
   if (auto const cspf = command_.cspfPathKeyMapping()->pathKeyForLspGroupId(group->lspGroupId))
      out.cspfId = cspf->kind == RsvpLerCspfPathKey::kindTree ? cspf->treeId : cspf->pathId;
}

bool isUp(RsvpLerLspGroupStatus const& group) {
   return group.lspGroupState == RsvpLerLspGroupState::up || group.lspGroupState == RsvpLerLspGroupState::upVerified;
}

bool Gatherer::path(Instances const& instances, std::uint8_t groupId, PathValues& out) {
   auto const config = findSubTunnelConfig(command_.rsvpLerStatus, instances.active.subTunnelConfigId);
   if (!config || !instances.activeStatus)
      return false;
   auto const active = command_.getLspGroupStatus({instances.active, groupId});
   auto const pending = command_.getLspGroupStatus({instances.pending, groupId});
   auto const& group = active ? active : pending;
   RsvpLerPathSpecId const& specId = groupId == 0 ? config->primaryPathSpecId : config->secondaryPathSpecId;
   auto const spec = command_.pathSpecConfigColl()->pathSpecConfig(specId);
   bool const coldStandby = groupId != 0 && !config->secondaryPreSignaled;
   if (!spec || (!coldStandby && !group))
      return false;
   out.specName = specId.name;
   out.preSignaled = !coldStandby;
   groupState(group, active && pending, out);
   out.inUse = group && group->lspGroupId == instances.activeStatus->activeLspGroupId && isUp(*group);
   if (coldStandby && !group)
      out.state = "coldStandby";
   errors(instances.active, groupId, out);
   errors(instances.pending, groupId, out);
   out.specType = pathSpecTypeToString(spec->pathSpecType);
   out.hops.clear();
   auto const request =
         group ? command_.getLspRequestConfig(group->activeLspRequestConfigId) : Handle<RsvpLerLspRequestConfig>();
   if (request && request->tree && !request->tree->paths.empty()) {
      auto const& hops = request->tree->paths.begin()->value.hops;
      out.hops.assign(hops.begin(), hops.end());
   }
   return true;
}

void Gatherer::leaves(Handle<RsvpLerLspGroupStatus> const& group, PathValues& out) {
   out.leafCount = 0;
   if (!group)
      return;
   auto const config = command_.getLspRequestConfig(group->activeLspRequestConfigId);
   auto const status = command_.getLspRequestStatus(group->activeLspRequestConfigId);
   auto const add = [&](RsvpDstId const& leaf) -> LeafValues& {
      if (out.leaves.size() == out.leafCount)
         out.leaves.emplace_back();
      LeafValues& values = out.leaves[out.leafCount++];
      RsvpLspState const* const state = status ? status->subLspState.valueOf(leaf) : nullptr;
      values.address = leaf.address;
      values.state = lspStateToString(state != nullptr ? *state : RsvpLspState::down);
      values.hops.clear();
      return values;
   };
   if (config && config->tree) {
      for (auto const& [leaf, path] : config->tree->paths)
         add(leaf).hops.assign(path.hops.begin(), path.hops.end());
   }
   if (status) {
      for (auto const& [leaf, state] : status->subLspState) {
         if (!config || !config->tree || !config->tree->paths.contains(leaf))
            add(leaf);
      }
   }
   std::sort(out.leaves.begin(), out.leaves.begin() + static_cast<std::ptrdiff_t>(out.leafCount),
             [](LeafValues const& a, LeafValues const& b) { return a.address < b.address; });
}

bool Gatherer::tree(Instances const& instances, PathValues& out) {
   if (!instances.activeStatus)
      return false;
   auto const spec = command_.pathSpecConfigColl()->pathSpecConfig(config_->primaryPathSpecId);
   if (!spec)
      return false;
   auto const group = command_.getLspGroupStatusByGroupId(instances.active, instances.pending, 0);
   auto const pending =
         instances.pendingStatus ? command_.getLspGroupStatus(instances.pendingStatus->activeLspGroupId) : nullptr;
   out.specName = config_->primaryPathSpecId.name;
   groupState(group, command_.getLspGroupStatus(instances.activeStatus->activeLspGroupId) && pending, out);
   out.inUse = group && group->lspGroupId == instances.activeStatus->activeLspGroupId && isUp(*group);
   errors(instances.active, 0, out);
   errors(instances.pending, 0, out);
   out.specType = pathSpecTypeToString(spec->pathSpecType);
   leaves(group, out);
   return true;
}

void Gatherer::subTunnel(RsvpLerSubTunnelConfigId const& id, SubTunnelValues& out) {
   out.id = id.subTunnelId;
   out.lspIds.clear();
   auto const status = command_.getSubTunnelStatus(id_, id);
   Instances const current = instances(status, out);
   lspIds(current.active, out);
   lspIds(current.pending, out);
   std::sort(out.lspIds.begin(), out.lspIds.end());
   out.nextAdjustment = {};
   out.lastSampledBandwidth = 0;
   auto const* const stats = stats_ ? stats_->subTunnelBwSamplingStats.valueOf(id) : nullptr;
   if (stats != nullptr && stats->nextAdjustmentTime.hasValue())
      out.nextAdjustment = RsvpShowUtils::toUtcTime(stats->nextAdjustmentTime.value());
   if (auto const* const sample = samples_ ? samples_->subTunnelBwSamplingStatus.valueOf(id) : nullptr)
      out.lastSampledBandwidth = bitsPerSecond(sample->lastSampledBandwidth);
   out.index = {};
   if (id.isSplit())
      out.index = command_.subTunnelIndexMap()->tunnelIndexForSubTunnelConfigId(id);
   if (out_.p2mp) {
      out.hasPrimary = tree(current, out.primary);
      out.activePathType = "primary";
   } else {
      out.hasPrimary = path(current, 0, out.primary);
      out.hasSecondary = path(current, 1, out.secondary);
   }
}

void Gatherer::requestedBandwidth(Handle<RsvpLerSubTunnelStatus> const& status) {
   auto const active = command_.getMbbTunnelConfig(status->activeMbbTunnelConfigId);
   auto const pending = command_.getMbbTunnelConfig(status->pendingMbbTunnelConfigId);
   if (pending)
      out_.requestedBandwidth += bitsPerSecond(pending->requestedBandwidth);
   else if (active)
      out_.requestedBandwidth += bitsPerSecond(active->requestedBandwidth);
}

void Gatherer::tunnel() {
   config_ = command_.superTunnelConfigColl()->superTunnelConfig(id_);
   status_ = command_.superTunnelStatusColl()->superTunnelStatus(id_);
   auto const spec = command_.tunnelSpecColl()->tunnelSpec(id_);
   out_.name = id_.name;
   config();
   out_.profile = spec ? std::string_view(spec->profile.name) : std::string_view();
   out_.color = status_ ? status_->color : Cask::TristateU32();
   out_.p2mpId = {};
   if (status_ && status_->sessionId.type == 1)
      out_.p2mpId = status_->sessionId.p2mpId();
   if (out_.dynamicMetric)
      out_.metric = status_ ? status_->igpMetric : 0;
   out_.state = tunnelStateToString(status_ ? status_->state : RsvpLerTunnelState::unknown);
   out_.split = status_ && status_->split;
   out_.currentBandwidth = status_ ? bitsPerSecond(status_->currentBandwidth) : 0;
   autoBandwidth();
   out_.index = command_.tunnelIndexMap()->tunnelIndexForTunnelSpecId(id_);

   out_.requestedBandwidth = 0;
   out_.subTunnelCount = 0;
   out_.own.lspIds.clear();
   auto const subTunnels = command_.subTunnelStatusCollTable()->subTunnelStatusColl(id_);
   if (subTunnels) {
      subTunnels->walk([&](RsvpLerSubTunnelConfigId const& id, Handle<RsvpLerSubTunnelStatus> const& status) {
         requestedBandwidth(status);
         if (!id.isSplit())
            return;
         if (out_.subTunnels.size() == out_.subTunnelCount)
            out_.subTunnels.emplace_back();
         SubTunnelValues& values = out_.subTunnels[out_.subTunnelCount++];
         subTunnel(id, values);
         out_.own.lspIds.insert(out_.own.lspIds.end(), values.lspIds.begin(), values.lspIds.end());
      });
      std::sort(out_.subTunnels.begin(), out_.subTunnels.begin() + static_cast<std::ptrdiff_t>(out_.subTunnelCount),
                [](SubTunnelValues const& a, SubTunnelValues const& b) { return a.id < b.id; });
   }
   if (out_.split) {
      out_.own.activePathType = "split";
      out_.own.mbb = false;
      out_.own.sessionId = {};
   } else {
      subTunnel(RsvpLerSubTunnelConfigId::makeNonSplitSubTunnelConfigId(id_), out_.own);
   }
}

} // namespace

void gather(ShowRsvpLerTunnel const& command, RsvpLerTunnelSpecId const& id, TunnelValues& out) {
   Gatherer(command, id, out).tunnel();
}

} // namespace Bench
