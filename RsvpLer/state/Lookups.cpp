#include "RsvpLer/state/Lookups.h"

namespace Rsvp {

namespace {

// The two steps of every table of tables: the parent's collection, then the whole key in it.
template<class Table, class ParentKey, class Key>
auto findInCollection(Brindle::Ptr<Table> const& table, ParentKey const& parent, Key const& key)
      -> decltype(table->find(parent)->find(key)) {
   if (!table)
      return {};
   auto const coll = table->find(parent);
   if (!coll)
      return {};
   return coll->find(key);
}

} // namespace

Handle<RsvpLerMbbTunnelConfig> findMbbTunnelConfig(Handle<RsvpLerStatehubStatus> const& root,
                                                   RsvpLerMbbTunnelConfigId const& id) {
   if (!root)
      return {};
   return findInCollection(root->mbbTunnelConfigCollTable.get(), id.subTunnelConfigId, id);
}

Handle<RsvpLerMbbTunnelStatus> findMbbTunnelStatus(Handle<RsvpLerStatehubStatus> const& root,
                                                   RsvpLerMbbTunnelConfigId const& id) {
   if (!root)
      return {};
   return findInCollection(root->mbbTunnelStatusCollTable.get(), id.subTunnelConfigId, id);
}

Handle<RsvpLerLspGroupStatus> findLspGroupStatus(Handle<RsvpLerStatehubStatus> const& root,
                                                 RsvpLerLspGroupId const& id) {
   if (!root)
      return {};
   auto const table = root->lspGroupStatusCollTable.get();
   if (!table || !findMbbTunnelStatus(root, id.mbbTunnelConfigId))
      return {};
   return findInCollection(table, id.mbbTunnelConfigId, id);
}

Handle<RsvpLerLspRequestConfig> findLspRequestConfig(Handle<RsvpLerStatehubStatus> const& root,
                                                     RsvpLerLspRequestConfigId const& id) {
   if (!root)
      return {};
   return findInCollection(root->lspRequestConfigCollTable.get(), id.lspGroupId, id);
}

Handle<RsvpLerLspRequestStatus> findLspRequestStatus(Handle<RsvpLerStatehubStatus> const& root,
                                                     RsvpLerLspRequestConfigId const& id) {
   if (!root)
      return {};
   return findInCollection(root->lspRequestStatusCollTable.get(), id.lspGroupId, id);
}

Handle<RsvpLerSubTunnelConfig> findSubTunnelConfig(Handle<RsvpLerStatehubStatus> const& root,
                                                   RsvpLerSubTunnelConfigId const& id) {
   if (!root)
      return {};
   return findInCollection(root->subTunnelConfigCollTable.get(), id.tunnelSpecId, id);
}

RsvpLerTunnelAutoBwConfig findAutoBwConfig(Handle<RsvpLerAutoBwConfig> const& autoBwConfig,
                                           RsvpLerTunnelSpecId const& id) {
   return autoBwConfig ? autoBwConfig->safeLookup(id) : RsvpLerTunnelAutoBwConfig();
}

} // namespace Rsvp
