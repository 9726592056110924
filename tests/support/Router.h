#pragma once

#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/output/RendererV2.h"
#include "tests/support/MemoryBuffer.h"

#include <string>
#include <utility>

namespace Tests {

// Keys of tests: short to write, one field more each.
inline Rsvp::RsvpLerTunnelSpecId tunnelId(std::string_view name,
                                          Rsvp::RsvpLerTunnelSource source = Rsvp::RsvpLerTunnelSource::cli) {
   return {Fathom::String(name), source};
}
inline Rsvp::RsvpLerSubTunnelConfigId subTunnelId(std::string_view name, std::uint32_t subTunnel = 0) {
   return {tunnelId(name), subTunnel};
}
inline Rsvp::RsvpLerMbbTunnelConfigId mbbId(std::string_view name, std::uint32_t epoch = 1,
                                            std::uint32_t subTunnel = 0) {
   return {subTunnelId(name, subTunnel), epoch};
}
inline Rsvp::RsvpLerLspGroupId groupId(std::string_view name, std::uint8_t group = 0, std::uint32_t epoch = 1,
                                       std::uint32_t subTunnel = 0) {
   return {mbbId(name, epoch, subTunnel), group};
}
inline Rsvp::RsvpLerLspRequestConfigId requestId(std::string_view name, std::uint32_t config = 1,
                                                 std::uint8_t group = 0, std::uint32_t epoch = 1,
                                                 std::uint32_t subTunnel = 0) {
   return {groupId(name, group, epoch, subTunnel), config};
}
inline Rsvp::RsvpLerPathSpecId pathSpecId(std::string_view name) {
   return {Fathom::String(name), Rsvp::RsvpLerTunnelSource::cli};
}
// Ends the test program for a text that is no address.
inline Lattice::IpGenAddr address(std::string_view text) {
   return Lattice::IpGenAddr::parse(text).value();
}
inline Fathom::Vector<Lattice::IpGenAddr> hops(std::initializer_list<std::string_view> texts) {
   std::vector<Lattice::IpGenAddr> addresses;
   for (std::string_view text : texts)
      addresses.push_back(address(text));
   return Fathom::Vector<Lattice::IpGenAddr>(addresses);
}

// A router's state, in which every table exists and is empty until a test puts something in. Each operation that is
// named for a record stores a new record under the key, with the key field filled in and whatever `edit` does to it.
struct Router {
   Router() {
      makeTables(*status);
      makeTables(*fathomStatus);
   }

   template<class Edit>
   void superTunnelConfig(Rsvp::RsvpLerTunnelSpecId const& id, Edit&& edit) {
      put<Rsvp::RsvpLerSuperTunnelConfig>(*fathomStatus->superTunnelConfigColl.get(), id, [&](auto& record) {
         record.tunnelSpecId = id;
         edit(record);
      });
   }
   void superTunnelConfig(Rsvp::RsvpLerTunnelSpecId const& id) {
      superTunnelConfig(id, [](auto&) {});
   }
   template<class Edit>
   void superTunnelStatus(Rsvp::RsvpLerTunnelSpecId const& id, Edit&& edit) {
      put<Rsvp::RsvpLerSuperTunnelStatus>(*status->superTunnelStatusColl.get(), id, [&](auto& record) {
         record.tunnelSpecId = id;
         edit(record);
      });
   }
   template<class Edit>
   void tunnelSpec(Rsvp::RsvpLerTunnelSpecId const& id, Edit&& edit) {
      put<Rsvp::RsvpLerTunnelSpec>(*status->tunnelSpecColl.get(), id, edit);
   }
   template<class Edit>
   void subTunnelConfig(Rsvp::RsvpLerSubTunnelConfigId const& id, Edit&& edit) {
      auto const coll = collOf(*status->subTunnelConfigCollTable.get(), id.tunnelSpecId);
      put<Rsvp::RsvpLerSubTunnelConfig>(*coll, id, [&](auto& record) {
         record.subTunnelConfigId = id;
         edit(record);
      });
   }
   template<class Edit>
   void subTunnelStatus(Rsvp::RsvpLerSubTunnelConfigId const& id, Edit&& edit) {
      auto const coll = collOf(*status->subTunnelStatusCollTable.get(), id.tunnelSpecId);
      put<Rsvp::RsvpLerSubTunnelStatus>(*coll, id, [&](auto& record) {
         record.subTunnelConfigId = id;
         edit(record);
      });
   }
   void mbbTunnelConfig(Rsvp::RsvpLerMbbTunnelConfigId const& id, std::uint64_t requestedBandwidth) {
      auto const coll = collOf(*status->mbbTunnelConfigCollTable.get(), id.subTunnelConfigId);
      put<Rsvp::RsvpLerMbbTunnelConfig>(*coll, id, [&](auto& record) {
         record.mbbTunnelConfigId = id;
         record.requestedBandwidth = requestedBandwidth;
      });
   }
   void mbbTunnelStatus(Rsvp::RsvpLerMbbTunnelConfigId const& id, Rsvp::RsvpLerLspGroupId const& activeLspGroupId) {
      auto const coll = collOf(*status->mbbTunnelStatusCollTable.get(), id.subTunnelConfigId);
      put<Rsvp::RsvpLerMbbTunnelStatus>(*coll, id, [&](auto& record) {
         record.mbbTunnelConfigId = id;
         record.activeLspGroupId = activeLspGroupId;
      });
   }
   template<class Edit>
   void lspGroupStatus(Rsvp::RsvpLerLspGroupId const& id, Edit&& edit) {
      auto const coll = collOf(*status->lspGroupStatusCollTable.get(), id.mbbTunnelConfigId);
      put<Rsvp::RsvpLerLspGroupStatus>(*coll, id, [&](auto& record) {
         record.lspGroupId = id;
         edit(record);
      });
   }
   template<class Edit>
   void lspRequestConfig(Rsvp::RsvpLerLspRequestConfigId const& id, Edit&& edit) {
      auto const coll = collOf(*status->lspRequestConfigCollTable.get(), id.lspGroupId);
      put<Rsvp::RsvpLerLspRequestConfig>(*coll, id, [&](auto& record) {
         record.lspRequestConfigId = id;
         edit(record);
      });
   }
   template<class Edit>
   void lspRequestStatus(Rsvp::RsvpLerLspRequestConfigId const& id, Edit&& edit) {
      auto const coll = collOf(*status->lspRequestStatusCollTable.get(), id.lspGroupId);
      put<Rsvp::RsvpLerLspRequestStatus>(*coll, id, [&](auto& record) {
         record.lspRequestConfigId = id;
         edit(record);
      });
   }
   void pathSpecConfig(Rsvp::RsvpLerPathSpecId const& id, Rsvp::RsvpLerPathSpecType type) {
      put<Rsvp::RsvpLerPathSpecConfig>(*status->pathSpecConfigColl.get(), id,
                                       [&](auto& record) { record.pathSpecType = type; });
   }
   template<class Edit>
   void cspfPathKey(Rsvp::RsvpLerLspGroupId const& id, Edit&& edit) {
      put<Rsvp::RsvpLerCspfPathKey>(*status->cspfPathKeyMapping.get(), id, edit);
   }
   template<class Edit>
   void bwSamplingStats(Rsvp::RsvpLerTunnelSpecId const& id, Edit&& edit) {
      put<Rsvp::RsvpLerBwSamplingStats>(*status->autoBwStats.get(), id, edit);
   }
   template<class Edit>
   void bwSamplingStatus(Rsvp::RsvpLerTunnelSpecId const& id, Edit&& edit) {
      put<Rsvp::RsvpLerBwSamplingStatus>(*status->bwSamplingStatusColl.get(), id, edit);
   }
   template<class Edit>
   void autoBwConfig(Rsvp::RsvpLerTunnelSpecId const& id, Edit&& edit) {
      Rsvp::RsvpLerTunnelAutoBwConfig value;
      value.tunnelSpecId = id;
      edit(value);
      fathomStatus->autoBwConfig.get()->set(id, std::move(value));
   }
   void tunnelIndex(Rsvp::RsvpLerTunnelSpecId const& id, std::uint32_t index) {
      status->tunnelIndexMap.get()->set(id, index);
   }
   void subTunnelIndex(Rsvp::RsvpLerSubTunnelConfigId const& id, std::uint32_t index) {
      status->subTunnelIndexMap.get()->set(id, index);
   }
   // The log of that index, made when it is first asked for.
   Brindle::Ptr<Rsvp::RsvpLerTunnelHistoryEntryColl> tunnelLog(std::uint32_t index) {
      return collOf(*fathomStatus->rsvpLerTunnelHistory.get(), index);
   }
   Brindle::Ptr<Rsvp::RsvpLerTunnelHistoryEntryColl> subTunnelLog(std::uint32_t index) {
      return collOf(*fathomStatus->rsvpLerSubTunnelHistory.get(), index);
   }

   // Command objects on this state. It goes on changing under them.
   Brindle::Ptr<Rsvp::Cli::ShowRsvpLerTunnel> tunnelCommand() const {
      return Rsvp::Cli::showRsvpLerTunnelFactory(cliConfig, lerCliConfig, status, fathomStatus);
   }
   Brindle::Ptr<Rsvp::Cli::ShowRsvpLer> statusCommand() const {
      return Rsvp::Cli::showRsvpLerFactory(lerConfig, lerCliConfig, status, fathomStatus, featureConfigDir);
   }

   Brindle::Ptr<Rsvp::RsvpCliConfig> cliConfig = Brindle::makeNode<Rsvp::RsvpCliConfig>();
   Brindle::Ptr<Rsvp::RsvpLerCliConfig> lerCliConfig = Brindle::makeNode<Rsvp::RsvpLerCliConfig>();
   Brindle::Ptr<Rsvp::RsvpLerConfig> lerConfig = Brindle::makeNode<Rsvp::RsvpLerConfig>();
   Brindle::Ptr<Rsvp::RsvpLerStatehubStatus> status = Brindle::makeNode<Rsvp::RsvpLerStatehubStatus>();
   Brindle::Ptr<Rsvp::RsvpLerFathomStatus> fathomStatus = Brindle::makeNode<Rsvp::RsvpLerFathomStatus>();
   Brindle::Ptr<Ambit::Tally::FeatureConfigDir> featureConfigDir = Brindle::makeNode<Ambit::Tally::FeatureConfigDir>();

private:
   template<class Record, class Coll, class Key, class Edit>
   static void put(Coll& coll, Key const& key, Edit&& edit) {
      auto record = Brindle::makeNode<Record>();
      edit(*record);
      coll.set(key, std::move(record));
   }
   // The collection under a parent's key.
   template<class Coll, class Key>
   static Brindle::Ptr<Coll> collOf(Rsvp::CollTable<Key, Coll>& table, std::type_identity_t<Key> const& key) {
      auto coll = table.find(key);
      if (!coll) {
         coll = Brindle::makeNode<Coll>();
         table.set(key, coll);
      }
      return coll;
   }
   template<class Coll>
   static void makeTable(Vane::Slot<Coll>& slot) {
      slot.set(Brindle::makeNode<Coll>());
   }
   static void makeTables(Rsvp::RsvpLerStatehubStatus& root) {
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
   static void makeTables(Rsvp::RsvpLerFathomStatus& root) {
      makeTable(root.superTunnelConfigColl);
      makeTable(root.autoBwConfig);
      makeTable(root.rsvpLerTunnelHistory);
      makeTable(root.rsvpLerSubTunnelHistory);
   }
};

inline constexpr std::uint32_t textFormat = 1;
inline constexpr std::uint32_t jsonFormat = 2;

// What body(renderer) writes in the format.
template<class Body>
std::string rendered(std::uint32_t format, Body&& body) {
   MemoryBuffer buffer;
   scrivo::RendererV2 renderer(static_cast<scrivo::OutputFormat_t>(format), &buffer, true);
   body(&renderer);
   return std::string(buffer.text());
}

} // namespace Tests
