#include "tests/support/Router.h"

#include <type_traits>
#include <utility>

namespace Tests {

namespace {

template<class Record, class Coll, class Key, class Body>
void put(Coll& coll, Key const& key, Body&& edit) {
   auto record = Brindle::makeNode<Record>();
   edit(*record);
   coll.set(key, std::move(record));
}

// The collection under a parent's key.
template<class Coll, class Key>
Brindle::Ptr<Coll> collOf(Rsvp::CollTable<Key, Coll>& table, std::type_identity_t<Key> const& key) {
   auto coll = table.find(key);
   if (!coll) {
      coll = Brindle::makeNode<Coll>();
      table.set(key, coll);
   }
   return coll;
}

template<class Coll>
void makeTable(Vane::Slot<Coll>& slot) {
   slot.set(Brindle::makeNode<Coll>());
}

void makeTables(Rsvp::RsvpLerStatehubStatus& root) {
   makeTable(root.pathSpecConfigColl);
   makeTable(root.tunnelSpecColl);
   makeTable(root.autoBwStats);
   makeTable(root.bwSamplingStatusColl);
   makeTable(root.tunnelIndexMap);
   makeTable(root.subTunnelIndexMap);
   makeTable(root.superTunnelStatusColl);
   makeTable(root.subTunnelConfigCollTable);
   makeTable(root.subTunnelStatusCollTable);
   makeTable(root.mbbTunnelConfigCollTable);
   makeTable(root.mbbTunnelStatusCollTable);
   makeTable(root.lspGroupStatusCollTable);
   makeTable(root.lspRequestConfigCollTable);
   makeTable(root.lspRequestStatusCollTable);
   makeTable(root.cspfPathKeyMapping);
}

void makeTables(Rsvp::RsvpLerFathomStatus& root) {
   makeTable(root.superTunnelConfigColl);
   makeTable(root.autoBwConfig);
   makeTable(root.rsvpLerTunnelHistory);
   makeTable(root.rsvpLerSubTunnelHistory);
}

} // namespace

Router::Router()
      : cliConfig(Brindle::makeNode<Rsvp::RsvpCliConfig>()), lerCliConfig(Brindle::makeNode<Rsvp::RsvpLerCliConfig>()),
        lerConfig(Brindle::makeNode<Rsvp::RsvpLerConfig>()), status(Brindle::makeNode<Rsvp::RsvpLerStatehubStatus>()),
        fathomStatus(Brindle::makeNode<Rsvp::RsvpLerFathomStatus>()),
        featureConfigDir(Brindle::makeNode<Ambit::Tally::FeatureConfigDir>()) {
   makeTables(*status);
   makeTables(*fathomStatus);
}

Router::Router(Router&&) noexcept = default;

Router::~Router() = default;

void Router::superTunnelConfig(Rsvp::RsvpLerTunnelSpecId const& id, Edit<Rsvp::RsvpLerSuperTunnelConfig> const& edit) {
   put<Rsvp::RsvpLerSuperTunnelConfig>(*fathomStatus->superTunnelConfigColl.get(), id, [&](auto& record) {
      record.tunnelSpecId = id;
      edit(record);
   });
}

void Router::superTunnelConfig(Rsvp::RsvpLerTunnelSpecId const& id) {
   superTunnelConfig(id, [](auto&) {});
}

void Router::superTunnelStatus(Rsvp::RsvpLerTunnelSpecId const& id, Edit<Rsvp::RsvpLerSuperTunnelStatus> const& edit) {
   put<Rsvp::RsvpLerSuperTunnelStatus>(*status->superTunnelStatusColl.get(), id, [&](auto& record) {
      record.tunnelSpecId = id;
      edit(record);
   });
}

void Router::tunnelSpec(Rsvp::RsvpLerTunnelSpecId const& id, Edit<Rsvp::RsvpLerTunnelSpec> const& edit) {
   put<Rsvp::RsvpLerTunnelSpec>(*status->tunnelSpecColl.get(), id, edit);
}

void Router::subTunnelConfig(Rsvp::RsvpLerSubTunnelConfigId const& id, Edit<Rsvp::RsvpLerSubTunnelConfig> const& edit) {
   auto const coll = collOf(*status->subTunnelConfigCollTable.get(), id.tunnelSpecId);
   put<Rsvp::RsvpLerSubTunnelConfig>(*coll, id, [&](auto& record) {
      record.subTunnelConfigId = id;
      edit(record);
   });
}

void Router::subTunnelStatus(Rsvp::RsvpLerSubTunnelConfigId const& id, Edit<Rsvp::RsvpLerSubTunnelStatus> const& edit) {
   auto const coll = collOf(*status->subTunnelStatusCollTable.get(), id.tunnelSpecId);
   put<Rsvp::RsvpLerSubTunnelStatus>(*coll, id, [&](auto& record) {
      record.subTunnelConfigId = id;
      edit(record);
   });
}

void Router::mbbTunnelConfig(Rsvp::RsvpLerMbbTunnelConfigId const& id, std::uint64_t requestedBandwidth) {
   auto const coll = collOf(*status->mbbTunnelConfigCollTable.get(), id.subTunnelConfigId);
   put<Rsvp::RsvpLerMbbTunnelConfig>(*coll, id, [&](auto& record) {
      record.mbbTunnelConfigId = id;
      record.requestedBandwidth = requestedBandwidth;
   });
}

void Router::mbbTunnelStatus(Rsvp::RsvpLerMbbTunnelConfigId const& id,
                             Rsvp::RsvpLerLspGroupId const& activeLspGroupId) {
   auto const coll = collOf(*status->mbbTunnelStatusCollTable.get(), id.subTunnelConfigId);
   put<Rsvp::RsvpLerMbbTunnelStatus>(*coll, id, [&](auto& record) {
      record.mbbTunnelConfigId = id;
      record.activeLspGroupId = activeLspGroupId;
   });
}

void Router::lspGroupStatus(Rsvp::RsvpLerLspGroupId const& id, Edit<Rsvp::RsvpLerLspGroupStatus> const& edit) {
   auto const coll = collOf(*status->lspGroupStatusCollTable.get(), id.mbbTunnelConfigId);
   put<Rsvp::RsvpLerLspGroupStatus>(*coll, id, [&](auto& record) {
      record.lspGroupId = id;
      edit(record);
   });
}

void Router::lspRequestConfig(Rsvp::RsvpLerLspRequestConfigId const& id,
                              Edit<Rsvp::RsvpLerLspRequestConfig> const& edit) {
   auto const coll = collOf(*status->lspRequestConfigCollTable.get(), id.lspGroupId);
   put<Rsvp::RsvpLerLspRequestConfig>(*coll, id, [&](auto& record) {
      record.lspRequestConfigId = id;
      edit(record);
   });
}

void Router::lspRequestStatus(Rsvp::RsvpLerLspRequestConfigId const& id,
                              Edit<Rsvp::RsvpLerLspRequestStatus> const& edit) {
   auto const coll = collOf(*status->lspRequestStatusCollTable.get(), id.lspGroupId);
   put<Rsvp::RsvpLerLspRequestStatus>(*coll, id, [&](auto& record) {
      record.lspRequestConfigId = id;
      edit(record);
   });
}

void Router::pathSpecConfig(Rsvp::RsvpLerPathSpecId const& id, Rsvp::RsvpLerPathSpecType type) {
   put<Rsvp::RsvpLerPathSpecConfig>(*status->pathSpecConfigColl.get(), id,
                                    [&](auto& record) { record.pathSpecType = type; });
}

void Router::cspfPathKey(Rsvp::RsvpLerLspGroupId const& id, Edit<Rsvp::RsvpLerCspfPathKey> const& edit) {
   put<Rsvp::RsvpLerCspfPathKey>(*status->cspfPathKeyMapping.get(), id, edit);
}

void Router::bwSamplingStats(Rsvp::RsvpLerTunnelSpecId const& id, Edit<Rsvp::RsvpLerBwSamplingStats> const& edit) {
   put<Rsvp::RsvpLerBwSamplingStats>(*status->autoBwStats.get(), id, edit);
}

void Router::bwSamplingStatus(Rsvp::RsvpLerTunnelSpecId const& id, Edit<Rsvp::RsvpLerBwSamplingStatus> const& edit) {
   put<Rsvp::RsvpLerBwSamplingStatus>(*status->bwSamplingStatusColl.get(), id, edit);
}

void Router::autoBwConfig(Rsvp::RsvpLerTunnelSpecId const& id, Edit<Rsvp::RsvpLerTunnelAutoBwConfig> const& edit) {
   Rsvp::RsvpLerTunnelAutoBwConfig value;
   value.tunnelSpecId = id;
   edit(value);
   fathomStatus->autoBwConfig.get()->set(id, std::move(value));
}

void Router::tunnelIndex(Rsvp::RsvpLerTunnelSpecId const& id, std::uint32_t index) {
   status->tunnelIndexMap.get()->set(id, index);
}

void Router::subTunnelIndex(Rsvp::RsvpLerSubTunnelConfigId const& id, std::uint32_t index) {
   status->subTunnelIndexMap.get()->set(id, index);
}

Brindle::Ptr<Rsvp::RsvpLerTunnelHistoryEntryColl> Router::tunnelLog(std::uint32_t index) {
   return collOf(*fathomStatus->rsvpLerTunnelHistory.get(), index);
}

Brindle::Ptr<Rsvp::RsvpLerTunnelHistoryEntryColl> Router::subTunnelLog(std::uint32_t index) {
   return collOf(*fathomStatus->rsvpLerSubTunnelHistory.get(), index);
}

Brindle::Ptr<Rsvp::Cli::ShowRsvpLerTunnel> Router::tunnelCommand() const {
   return Rsvp::Cli::showRsvpLerTunnelFactory(cliConfig, lerCliConfig, status, fathomStatus);
}

Brindle::Ptr<Rsvp::Cli::ShowRsvpLer> Router::statusCommand() const {
   return Rsvp::Cli::showRsvpLerFactory(lerConfig, lerCliConfig, status, fathomStatus, featureConfigDir);
}

} // namespace Tests
