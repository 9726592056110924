#pragma once

#include "RsvpLer/state/BandwidthRecords.h"
#include "RsvpLer/state/LspRecords.h"
#include "RsvpLer/state/Table.h"
#include "RsvpLer/state/TunnelRecords.h"
#include "fathom/ValueMap.h"

#include <cstdint>

// The tables of tunnels and sub-tunnels. The named accessor of each is its lookup: an owned handle or copy, empty when
// the key is absent.

namespace Rsvp {

struct RsvpLerSuperTunnelConfigColl : RecordTable<RsvpLerTunnelSpecId, RsvpLerSuperTunnelConfig> {
   auto superTunnelConfig(RsvpLerTunnelSpecId const& id) const { return find(id); }
};

struct RsvpLerSuperTunnelStatusColl : RecordTable<RsvpLerTunnelSpecId, RsvpLerSuperTunnelStatus> {
   auto superTunnelStatus(RsvpLerTunnelSpecId const& id) const { return find(id); }
};

struct RsvpLerTunnelSpecPtrConstColl : RecordTable<RsvpLerTunnelSpecId, RsvpLerTunnelSpec> {
   auto tunnelSpec(RsvpLerTunnelSpecId const& id) const { return find(id); }
};

// The index of a tunnel's log.
struct RsvpLerTunnelIndexMap : Table<RsvpLerTunnelSpecId, std::uint32_t> {
   Vane::Optional<std::uint32_t> tunnelIndexForTunnelSpecId(RsvpLerTunnelSpecId const& id) const {
      std::uint32_t index = 0;
      return find(id, index) ? Vane::Optional<std::uint32_t>(index) : Vane::Optional<std::uint32_t>();
   }
};

// The index of a sub-tunnel's log.
struct RsvpLerSubTunnelIndexMap : Table<RsvpLerSubTunnelConfigId, std::uint32_t> {
   Vane::Optional<std::uint32_t> tunnelIndexForSubTunnelConfigId(RsvpLerSubTunnelConfigId const& id) const {
      std::uint32_t index = 0;
      return find(id, index) ? Vane::Optional<std::uint32_t>(index) : Vane::Optional<std::uint32_t>();
   }
};

struct RsvpLerSubTunnelConfigColl : RecordTable<RsvpLerSubTunnelConfigId, RsvpLerSubTunnelConfig> {
   auto subTunnelConfig(RsvpLerSubTunnelConfigId const& id) const { return find(id); }
};

struct RsvpLerSubTunnelConfigCollTable : CollTable<RsvpLerTunnelSpecId, RsvpLerSubTunnelConfigColl> {
   Brindle::Ptr<RsvpLerSubTunnelConfigColl const> subTunnelConfigColl(RsvpLerTunnelSpecId const& id) const {
      return find(id);
   }
};

struct RsvpLerSubTunnelStatusColl : RecordTable<RsvpLerSubTunnelConfigId, RsvpLerSubTunnelStatus> {
   auto subTunnelStatus(RsvpLerSubTunnelConfigId const& id) const { return find(id); }
};

struct RsvpLerSubTunnelStatusCollTable : CollTable<RsvpLerTunnelSpecId, RsvpLerSubTunnelStatusColl> {
   Brindle::Ptr<RsvpLerSubTunnelStatusColl const> subTunnelStatusColl(RsvpLerTunnelSpecId const& id) const {
      return find(id);
   }
};

struct RsvpLerPathSpecConfigColl : RecordTable<RsvpLerPathSpecId, RsvpLerPathSpecConfig> {
   auto pathSpecConfig(RsvpLerPathSpecId const& id) const { return find(id); }
};

struct RsvpLerAutoBwStats : RecordTable<RsvpLerTunnelSpecId, RsvpLerBwSamplingStats> {
   auto bwSamplingStat(RsvpLerTunnelSpecId const& id) const { return find(id); }
};

struct RsvpLerBwSamplingStatusColl : RecordTable<RsvpLerTunnelSpecId, RsvpLerBwSamplingStatus> {
   auto bwSamplingStatus(RsvpLerTunnelSpecId const& id) const { return find(id); }
};

// A tunnel without an entry, or with a damaged one, reads as the default: automatic bandwidth is off.
struct RsvpLerAutoBwConfig : Brindle::Node, Fathom::FathomValueMap<RsvpLerTunnelSpecId, RsvpLerTunnelAutoBwConfig> {};

} // namespace Rsvp
