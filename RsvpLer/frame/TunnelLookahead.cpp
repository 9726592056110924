#include "RsvpLer/frame/TunnelLookahead.h"

#include "vane/Epoch.h"

#include <cstdint>

namespace Rsvp::Cli {

namespace {

void fetch(void const* at) noexcept {
   __builtin_prefetch(at);
}

// In a table the cell comes first, and then the slot it leads to together with the record.
template<class Table, class Key>
void stepInTable(Table const* table, Key const& key, int step) noexcept {
   if (table == nullptr)
      return;
   if (step == 0)
      table->prefetchCell(key);
   else if (step == 1)
      table->prefetchSlot(key);
}

// In a table of tables, after the collection, what stands first in it.
template<class Table, class Key>
void stepInTables(Table const* table, Key const& parent, int step) noexcept {
   if (step < 2)
      return stepInTable(table, parent, step);
   auto const* const coll = table != nullptr ? table->peek(parent) : nullptr;
   if (coll == nullptr)
      return;
   if constexpr (requires { coll->prefetchOnlyObject(); })
      coll->prefetchOnlyObject();
   else
      coll->prefetchFirst();
}

template<class Table, class ParentKey, class Key>
auto const* peekRecord(Table const* table, ParentKey const& parent, Key const& key) noexcept {
   auto const* const coll = table != nullptr ? table->peek(parent) : nullptr;
   return coll != nullptr ? coll->peek(key) : nullptr;
}

constexpr int stepsByTunnel = 3;

// The tables that are searched by the key of the tunnel or of its one sub-tunnel.
void stepByTunnel(ShowRsvpLerTunnel const& command, RsvpLerSubTunnelConfigId const& id, int step) noexcept {
   RsvpLerStatehubStatus const& status = *command.rsvpLerStatus;
   RsvpLerTunnelSpecId const& tunnel = id.tunnelSpecId;
   stepInTable(command.rsvpLerFathomStatus->superTunnelConfigColl.peek(), tunnel, step);
   stepInTable(status.superTunnelStatusColl.peek(), tunnel, step);
   stepInTable(status.tunnelSpecColl.peek(), tunnel, step);
   stepInTable(status.tunnelIndexMap.peek(), tunnel, step);
   stepInTables(status.subTunnelStatusCollTable.peek(), tunnel, step);
   stepInTables(status.subTunnelConfigCollTable.peek(), tunnel, step);
   stepInTables(status.mbbTunnelStatusCollTable.peek(), id, step);
   stepInTables(status.mbbTunnelConfigCollTable.peek(), id, step);
}

constexpr int stepsByInstance = 4; // the last one asks for the records of the groups

// Those that are searched by its active instance, or by a group of that.
void stepByInstance(RsvpLerStatehubStatus const& status, RsvpLerMbbTunnelConfigId const& instance, int step) noexcept {
   bool const last = step == stepsByInstance - 1;
   if (!last)
      stepInTables(status.lspGroupStatusCollTable.peek(), instance, step);
   for (std::uint8_t groupId = 0; groupId < 2; ++groupId) {
      RsvpLerLspGroupId const group{instance, groupId};
      if (last) {
         fetch(peekRecord(status.lspGroupStatusCollTable.peek(), instance, group));
         continue;
      }
      stepInTable(status.cspfPathKeyMapping.peek(), group, step);
      stepInTables(status.lspRequestConfigCollTable.peek(), group, step);
      stepInTables(status.lspRequestStatusCollTable.peek(), group, step);
   }
}

// The request that a group runs on, and the way from there to the hops of its path.
void stepByGroup(RsvpLerStatehubStatus const& status, RsvpLerLspGroupId const& id, int step) noexcept {
   auto const* const group = peekRecord(status.lspGroupStatusCollTable.peek(), id.mbbTunnelConfigId, id);
   if (group == nullptr)
      return;
   RsvpLerLspRequestConfigId const& request = group->activeLspRequestConfigId;
   auto const* const config = peekRecord(status.lspRequestConfigCollTable.peek(), id, request);
   if (config == nullptr || !config->tree)
      return;
   RsvpLerTree const& tree = *config->tree;
   if (step == 0)
      return fetch(&tree);
   if (tree.paths.empty())
      return;
   RsvpPathWithVersion const& path = tree.paths.begin()->value;
   if (step == 1)
      fetch(&path);
   else if (step == 2)
      path.hops.prefetch();
   else
      fetch(path.hops.begin());
}

constexpr int stepsByGroup = 4;
constexpr int allSteps = 1 + stepsByTunnel + stepsByInstance + stepsByGroup;

void takeStep(ShowRsvpLerTunnel const& command, RsvpLerTunnelSpecId const& tunnel, int step) noexcept {
   if (step == 0)
      return fetch(tunnel.name.c_str());
   RsvpLerStatehubStatus const& status = *command.rsvpLerStatus;
   auto const subTunnel = RsvpLerSubTunnelConfigId::makeNonSplitSubTunnelConfigId(tunnel);
   step -= 1;
   if (step < stepsByTunnel)
      return stepByTunnel(command, subTunnel, step);
   auto const* const subTunnelStatus = peekRecord(status.subTunnelStatusCollTable.peek(), tunnel, subTunnel);
   if (subTunnelStatus == nullptr)
      return;
   RsvpLerMbbTunnelConfigId const& instance = subTunnelStatus->activeMbbTunnelConfigId;
   step -= stepsByTunnel;
   if (step < stepsByInstance)
      return stepByInstance(status, instance, step);
   step -= stepsByInstance;
   stepByGroup(status, {instance, 0}, step);
   stepByGroup(status, {instance, 1}, step);
}

} // namespace

void TunnelLookahead::advance() noexcept {
   if (!command_.rsvpLerStatus || !command_.rsvpLerFathomStatus)
      return;
   Vane::Pin const pin;
   for (int step = 0; step < allSteps; ++step) {
      std::size_t const tunnel = next_ + static_cast<std::size_t>(allSteps - step);
      if (tunnel < tunnels_.size())
         takeStep(command_, tunnels_[tunnel], step);
   }
   ++next_;
}

} // namespace Rsvp::Cli
