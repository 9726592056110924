#pragma once

#include "RsvpLer/state/Keys.h"
#include "RsvpLer/state/RsvpDstId.h"
#include "RsvpLer/state/RsvpErrorWithNode.h"
#include "brindle/Node.h"
#include "brindle/Ptr.h"
#include "fathom/Vector.h"
#include "lattice/Address.h"
#include "lattice/IntfId.h"
#include "vane/FlatMap.h"
#include "vane/Optional.h"

#include <cstdint>
#include <utility>

// What stands below a sub-tunnel: make-before-break instances, LSP groups (one for each path alternative of an
// instance), LSP requests (one for each LSP of a group) and the paths they ask for. Records are never changed once a
// table holds them, but for the errors of a request, which may come and go in place. Bandwidths are in bytes per
// second, MTUs in bytes. What outline() tells of a record is kept by the table beside it, so that a count needn't read
// the record.

namespace Rsvp {

struct RsvpLerMbbTunnelStatus : Brindle::Node {
   RsvpLerMbbTunnelConfigId mbbTunnelConfigId;
   RsvpLerLspGroupId activeLspGroupId; // carries the traffic of this instance; the default means none

   struct Outline {
      std::uint8_t activeGroupId = 0; // the last field of the active group's key
   };
   Outline outline() const noexcept { return {activeLspGroupId.groupId}; }
};

struct RsvpLerMbbTunnelConfig : Brindle::Node {
   RsvpLerMbbTunnelConfigId mbbTunnelConfigId;
   std::uint64_t requestedBandwidth = 0;
};

struct RsvpNextHopInfo {
   Lattice::IntfId intfId;
   Vane::Optional<std::uint32_t> intfMtu;
};

struct RsvpLerLspGroupStatus : Brindle::Node {
   RsvpLerLspGroupId lspGroupId;
   bool isP2mp = false;
   RsvpLerLspGroupState lspGroupState = RsvpLerLspGroupState::unknown;
   Vane::FlatMap<Lattice::IpGenAddr, RsvpNextHopInfo> nextHop;
   RsvpLerLspRequestConfigId activeLspRequestConfigId;  // carries the traffic; the default means none
   RsvpLerLspRequestConfigId pendingLspRequestConfigId; // is replacing it; the default means none
   Vane::Optional<std::uint32_t> pathMtu;               // of the signalled path

   struct Outline {
      bool isP2mp : 1 = false;
      bool isUp : 1 = false;
      bool hasActive : 1 = false;
      bool hasPending : 1 = false;
   };
   Outline outline() const noexcept {
      bool const isUp = lspGroupState == RsvpLerLspGroupState::up || lspGroupState == RsvpLerLspGroupState::upVerified;
      return {isP2mp, isUp, bool(activeLspRequestConfigId), bool(pendingLspRequestConfigId)};
   }
};

struct RsvpPathWithVersion {
   RsvpPathWithVersion() noexcept = default;
   explicit RsvpPathWithVersion(std::uint32_t version_) noexcept : version(version_) {}

   std::uint32_t version = 0;
   Fathom::Vector<Lattice::IpGenAddr> hops; // from the head end to the destination
};

// The path or paths of a request. The default has none.
struct RsvpLerTree : Brindle::Node {
   Vane::FlatMap<RsvpDstId, RsvpPathWithVersion> paths; // one for each leaf

   // The single path of a P2P request: that of the lowest leaf, RsvpPathWithVersion(0) when there is none.
   RsvpPathWithVersion p2pPath() const;
};

struct RsvpLerLspRequestConfig : Brindle::Node {
   RsvpLerLspRequestConfigId lspRequestConfigId;
   RsvpSessionType sessionType = RsvpSessionType::p2p;
   Brindle::Ptr<RsvpLerTree const> tree; // may be empty
   std::uint64_t bandwidth = 0;
};

struct RsvpLerLspRequestStatus : Brindle::Node {
   RsvpLerLspRequestStatus() = default;
   // An empty record, such as a display puts in the place of a missing one. The session type leaves no trace in it.
   RsvpLerLspRequestStatus(RsvpLerLspRequestConfigId id, RsvpSessionType) : lspRequestConfigId(std::move(id)) {}

   RsvpLerLspRequestConfigId lspRequestConfigId;
   RsvpLerLspState lspState = RsvpLerLspState::unknown;
   Vane::Optional<std::uint16_t> lspId; // once assigned
   RsvpErrors errors;
   Vane::FlatMap<RsvpDstId, RsvpLspState> subLspState; // of each leaf that the signalling knows
};

struct RsvpLerPathSpecConfig : Brindle::Node {
   RsvpLerPathSpecType pathSpecType = RsvpLerPathSpecType::unknown;
};

// The key under which the path computation knows a group.
struct RsvpLerCspfPathKey : Brindle::Node {
   static constexpr std::uint8_t kindPath = 1;
   static constexpr std::uint8_t kindTree = 2;

   std::uint32_t treeId = 0; // of kindTree
   std::uint32_t pathId = 0; // of kindPath
   std::uint8_t kind = 0;
};

} // namespace Rsvp
