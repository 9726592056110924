#pragma once

#include "RsvpLer/state/Enumerations.h"
#include "RsvpLer/state/RsvpErrorWithNode.h"
#include "brindle/Duration.h"
#include "fathom/Vector.h"
#include "lattice/Address.h"
#include "vane/Optional.h"

#include <compare>
#include <cstdint>
#include <variant>

// The event logs of tunnels and sub-tunnels. An entry is a plain value, copied out of the log before it is looked at.
// The order of the alternatives is fixed: their index tells readers what happened.

namespace Rsvp {

// The places of a log: a P2P tunnel's and a sub-tunnel's, and a P2MP tunnel's.
inline constexpr std::uint32_t p2pHistoryCapacity = 100;
inline constexpr std::uint32_t p2mpHistoryCapacity = 1000;

// The index of a log and a slot in it, from 0 to the log's capacity minus 1.
struct RsvpLerTunnelHistoryKey {
   std::uint32_t tunnelIndex = 0;
   std::uint32_t entryIndex = 0;

   std::uint32_t hash(std::uint32_t seed) const noexcept;
   friend bool operator==(RsvpLerTunnelHistoryKey const&, RsvpLerTunnelHistoryKey const&) noexcept = default;
};

using OptionalLspId = Vane::Optional<std::uint16_t>;

struct LerUnknownHistoryData {
   friend bool operator==(LerUnknownHistoryData const&, LerUnknownHistoryData const&) = default;
};

struct LerAgentRestartHistoryData {
   friend bool operator==(LerAgentRestartHistoryData const&, LerAgentRestartHistoryData const&) = default;
};

struct LerCreationHistoryData {
   friend bool operator==(LerCreationHistoryData const&, LerCreationHistoryData const&) = default;
};

struct LerTunnelStateHistoryData {
   RsvpLerTunnelState state = RsvpLerTunnelState::unknown;
   std::uint8_t groupId = 0; // 0 primary path, 1 secondary path
   std::uint16_t subTunnelCount = 0;
   bool splitBw = false;
   friend bool operator==(LerTunnelStateHistoryData const&, LerTunnelStateHistoryData const&) = default;
};

struct LerBandwidthHistoryData {
   std::uint64_t bandwidth = 0; // bytes per second
   friend bool operator==(LerBandwidthHistoryData const&, LerBandwidthHistoryData const&) = default;
};

struct LerBandwidthConfigHistoryData {
   std::uint64_t bandwidth = 0; // bytes per second
   bool autoBw = false;         // the value came from automatic bandwidth
   friend bool operator==(LerBandwidthConfigHistoryData const&, LerBandwidthConfigHistoryData const&) = default;
};

struct LerLspAddHistoryData {
   OptionalLspId lspId;
   OptionalLspId replacedLspId; // the LSP that this one replaces in a make-before-break
   friend bool operator==(LerLspAddHistoryData const&, LerLspAddHistoryData const&) = default;
};

struct LerLspDelHistoryData {
   OptionalLspId lspId;
   friend bool operator==(LerLspDelHistoryData const&, LerLspDelHistoryData const&) = default;
};

struct LerLspInUseHistoryData {
   OptionalLspId lspId;
   OptionalLspId replacedLspId;
   friend bool operator==(LerLspInUseHistoryData const&, LerLspInUseHistoryData const&) = default;
};

struct LerLspNoLongerInUseHistoryData {
   OptionalLspId lspId;
   friend bool operator==(LerLspNoLongerInUseHistoryData const&, LerLspNoLongerInUseHistoryData const&) = default;
};

struct LerLspStateHistoryData {
   OptionalLspId lspId;
   RsvpLerLspState state = RsvpLerLspState::unknown;
   friend bool operator==(LerLspStateHistoryData const&, LerLspStateHistoryData const&) = default;
};

struct LerLspErrorHistoryData {
   OptionalLspId lspId;
   RsvpErrorWithNode error;
   friend bool operator==(LerLspErrorHistoryData const&, LerLspErrorHistoryData const&) = default;
};

struct LerCspfQueryHistoryData {
   std::uint32_t count = 0;  // how many like queries this record stands for
   std::uint8_t groupId = 0; // 0 primary path, otherwise secondary
   friend bool operator==(LerCspfQueryHistoryData const&, LerCspfQueryHistoryData const&) = default;
};

struct LerCspfReplyHistoryData {
   std::uint32_t count = 0;        // how many like replies this record stands for
   std::uint16_t totalLeaves = 0;  // in the tree, 0 when none was found; P2MP only
   std::uint8_t groupId = 0;       // 0 primary path, otherwise secondary; P2P only
   Lattice::IpGenAddr destination; // the leaf of this record; P2MP only
   RsvpLerP2mpPathChangeType changeType = RsvpLerP2mpPathChangeType::none; // P2MP only
   friend bool operator==(LerCspfReplyHistoryData const&, LerCspfReplyHistoryData const&) = default;
};

struct LerP2mpDestinationAddedHistoryData {
   Lattice::IpGenAddr destination;
   friend bool operator==(LerP2mpDestinationAddedHistoryData const&,
                          LerP2mpDestinationAddedHistoryData const&) = default;
};

struct LerP2mpDestinationRemovedHistoryData {
   Lattice::IpGenAddr destination;
   friend bool operator==(LerP2mpDestinationRemovedHistoryData const&,
                          LerP2mpDestinationRemovedHistoryData const&) = default;
};

struct LerP2mpLeafStateHistoryData {
   Lattice::IpGenAddr destination;
   RsvpLspState state = RsvpLspState::unknown;
   friend bool operator==(LerP2mpLeafStateHistoryData const&, LerP2mpLeafStateHistoryData const&) = default;
};

using LerTunnelHistoryData =
      std::variant<LerUnknownHistoryData, LerAgentRestartHistoryData, LerCreationHistoryData, LerTunnelStateHistoryData,
                   LerBandwidthHistoryData, LerBandwidthConfigHistoryData, LerLspAddHistoryData, LerLspDelHistoryData,
                   LerLspInUseHistoryData, LerLspNoLongerInUseHistoryData, LerLspStateHistoryData,
                   LerLspErrorHistoryData, LerCspfQueryHistoryData, LerCspfReplyHistoryData,
                   LerP2mpDestinationAddedHistoryData, LerP2mpDestinationRemovedHistoryData,
                   LerP2mpLeafStateHistoryData>;

struct RsvpLerTunnelHistoryEntry {
   RsvpLerTunnelHistoryKey key;
   Brindle::Duration timestamp; // UTC, since the Unix epoch
   LerTunnelHistoryData data;
   Fathom::Vector<Lattice::IpGenAddr> hops; // the path of a CSPF reply; empty for all other events

   // Whether all fields are equal, the hops too.
   static bool isEq(RsvpLerTunnelHistoryEntry const& a, RsvpLerTunnelHistoryEntry const& b) { return a == b; }
   static bool timestampLesser(RsvpLerTunnelHistoryEntry const& a, RsvpLerTunnelHistoryEntry const& b) noexcept {
      return a.timestamp < b.timestamp;
   }
   friend bool operator==(RsvpLerTunnelHistoryEntry const&, RsvpLerTunnelHistoryEntry const&) = default;
};

} // namespace Rsvp
