#include "RsvpLer/state/Lookups.h"

#include <type_traits>

namespace Rsvp {

namespace {

// The two steps of every table of tables: the parent's collection, then the whole key in it. What is on the way is only
// looked at, under the caller's pin. nullptr when something is missing.
template<class Table, class ParentKey, class Key>
auto* peekInCollection(Vane::Slot<Table> const& slot, ParentKey const& parent, Key const& key) noexcept {
   Table const* const table = slot.peek();
   auto const* const coll = table != nullptr ? table->peek(parent) : nullptr;
   return coll != nullptr ? coll->peek(key) : nullptr;
}

template<class Table, class ParentKey, class Key>
auto findInCollection(Vane::Slot<Table> const& slot, ParentKey const& parent, Key const& key) {
   Vane::Pin const pin;
   auto* record = peekInCollection(slot, parent, key);
   return Brindle::Ptr<std::remove_pointer_t<decltype(record)>>::share(record);
}

} // namespace

Handle<RsvpLerMbbTunnelConfig> findMbbTunnelConfig(Handle<RsvpLerStatehubStatus> const& root,
                                                   RsvpLerMbbTunnelConfigId const& id) {
   if (!root)
      return {};
   return findInCollection(root->mbbTunnelConfigCollTable, id.subTunnelConfigId, id);
}

Handle<RsvpLerMbbTunnelStatus> findMbbTunnelStatus(Handle<RsvpLerStatehubStatus> const& root,
                                                   RsvpLerMbbTunnelConfigId const& id) {
   if (!root)
      return {};
   return findInCollection(root->mbbTunnelStatusCollTable, id.subTunnelConfigId, id);
}

Handle<RsvpLerLspGroupStatus> findLspGroupStatus(Handle<RsvpLerStatehubStatus> const& root,
                                                 RsvpLerLspGroupId const& id) {
   if (!root)
      return {};
   Vane::Pin const pin;
   RsvpLerMbbTunnelConfigId const& instance = id.mbbTunnelConfigId;
   if (peekInCollection(root->mbbTunnelStatusCollTable, instance.subTunnelConfigId, instance) == nullptr)
      return {};
   return findInCollection(root->lspGroupStatusCollTable, instance, id);
}

Handle<RsvpLerLspRequestConfig> findLspRequestConfig(Handle<RsvpLerStatehubStatus> const& root,
                                                     RsvpLerLspRequestConfigId const& id) {
   if (!root)
      return {};
   return findInCollection(root->lspRequestConfigCollTable, id.lspGroupId, id);
}

Handle<RsvpLerLspRequestStatus> findLspRequestStatus(Handle<RsvpLerStatehubStatus> const& root,
                                                     RsvpLerLspRequestConfigId const& id) {
   if (!root)
      return {};
   return findInCollection(root->lspRequestStatusCollTable, id.lspGroupId, id);
}

Handle<RsvpLerSubTunnelConfig> findSubTunnelConfig(Handle<RsvpLerStatehubStatus> const& root,
                                                   RsvpLerSubTunnelConfigId const& id) {
   if (!root)
      return {};
   return findInCollection(root->subTunnelConfigCollTable, id.tunnelSpecId, id);
}

RsvpLerTunnelAutoBwConfig findAutoBwConfig(Handle<RsvpLerAutoBwConfig> const& autoBwConfig,
                                           RsvpLerTunnelSpecId const& id) {
   return autoBwConfig ? autoBwConfig->safeLookup(id) : RsvpLerTunnelAutoBwConfig();
}

} // namespace Rsvp
