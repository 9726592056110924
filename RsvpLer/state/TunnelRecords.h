#pragma once

#include "RsvpLer/state/Keys.h"
#include "RsvpLer/state/RsvpDstId.h"
#include "brindle/Duration.h"
#include "brindle/Node.h"
#include "cask/TristateU32.h"
#include "lattice/Address.h"
#include "vane/FlatMap.h"

#include <cstdint>

// A tunnel: what is configured, what was asked for before it was resolved, and what it does now. Records are never
// changed once a table holds them; a change is a new record. What outline() tells of one is kept by the table beside
// it, so that a count needn't read the record. Bandwidths are in bytes per second.

namespace Rsvp {

// Tells an RSVP session apart. Two are equal when all four fields are.
struct RsvpSessionId {
   std::uint8_t type = 0; // 1 for P2MP
   Lattice::IpGenAddr address;
   std::uint16_t id = 0;
   Lattice::IpGenAddr extendedAddress;

   // The P2MP id: the octets of an IPv4 address as a number, first octet highest; 0 for another family.
   std::uint32_t p2mpId() const noexcept { return address.isV4() ? address.v4Addr().number() : 0; }
   bool isEq(RsvpSessionId const& other) const noexcept { return *this == other; }
   friend bool operator==(RsvpSessionId const&, RsvpSessionId const&) noexcept = default;
};

struct RsvpLerSuperTunnelConfig : Brindle::Node {
   RsvpLerTunnelSpecId tunnelSpecId;
   RsvpSessionType sessionType = RsvpSessionType::p2p;
   Lattice::IpGenAddr source;
   Vane::FlatSet<Lattice::IpGenAddr> destination; // a P2P tunnel uses the lowest
   Vane::FlatSet<Lattice::IpGenAddr> aliasTeps;   // additional tunnel endpoints
   std::uint32_t metric = 0;
   bool metricFromIgp = false;            // the metric is the status's igpMetric
   RsvpLerPathSpecId primaryPathSpecId;   // also the tree specification of a P2MP tunnel
   RsvpLerPathSpecId secondaryPathSpecId; // the default means none
   std::uint64_t configuredBandwidth = 0;
   bool splitBwEnabled = false; // the tunnel may split its bandwidth over sub-tunnels
   std::uint64_t quantum = 0;   // of a split; 0 means that the two limits hold instead
   std::uint64_t minBandwidth = 0;
   std::uint64_t maxBandwidth = 0;
   Brindle::Duration reductionDelay; // before sub-tunnels are reduced
   std::uint32_t subTunnelMinimum = 0;
   std::uint32_t subTunnelLimit = 0;
   std::uint32_t subTunnelInitial = 0;
   bool signalBandwidth = false;
   std::uint8_t setupPriority = 0;
   std::uint8_t holdPriority = 0;
   Cli::FrrMode frrMode = Cli::FrrMode::none;
   bool ldpTunneling = false;
   bool ldpTunnelingUcmp = false;
   bool igpShortcut = false;
   std::uint32_t optimizationInterval = 0; // seconds; 0 means disabled
   RsvpLerTunnelProfileState profileState = RsvpLerTunnelProfileState::notSpecified;

   struct Outline {
      bool isP2mp : 1 = false;
      bool hasSecondary : 1 = false;
      bool splitBwEnabled : 1 = false;
   };
   Outline outline() const noexcept {
      return {sessionType != RsvpSessionType::p2p, secondaryPathSpecId != RsvpLerPathSpecId(), splitBwEnabled};
   }
};

struct RsvpLerSuperTunnelStatus : Brindle::Node {
   RsvpLerTunnelSpecId tunnelSpecId;
   bool isP2mp = false;
   RsvpSessionId sessionId;
   RsvpLerTunnelState state = RsvpLerTunnelState::unknown;
   Cask::TristateU32 color;
   std::uint64_t currentBandwidth = 0;
   bool split = false; // runs on several sub-tunnels now
   std::uint32_t igpMetric = 0;
   Vane::FlatMap<RsvpDstId, RsvpLspState> subLspState; // of each leaf of a P2MP tunnel

   struct Outline {
      bool isP2mp : 1 = false;
      bool isUp : 1 = false;
   };
   Outline outline() const noexcept { return {isP2mp, state == RsvpLerTunnelState::up}; }
};

// The names that the tunnel asks for, which need not be configured.
struct RsvpLerTunnelSpec : Brindle::Node {
   RsvpLerPathSpecId primaryPathSpecId;
   RsvpLerPathSpecId secondaryPathSpecId;
   RsvpLerTunnelProfileId profile; // the default means none
};

struct RsvpLerSubTunnelConfig : Brindle::Node {
   RsvpLerSubTunnelConfigId subTunnelConfigId;
   RsvpLerPathSpecId primaryPathSpecId;
   RsvpLerPathSpecId secondaryPathSpecId;
   bool secondaryPreSignaled = false; // false means cold standby
};

struct RsvpLerSubTunnelStatus : Brindle::Node {
   // The sessionCliId of a sub-tunnel that has no session number.
   static constexpr std::uint32_t noSessionCliId = 1000000;

   RsvpLerSubTunnelConfigId subTunnelConfigId;
   RsvpLerTunnelState state = RsvpLerTunnelState::unknown;
   RsvpLerMbbTunnelConfigId activeMbbTunnelConfigId;  // the current instance; the default means none
   RsvpLerMbbTunnelConfigId pendingMbbTunnelConfigId; // the one that is replacing it; the default means none
   std::uint64_t currentBandwidth = 0;
   std::uint32_t sessionCliId = noSessionCliId;

   struct Outline {
      bool isUp : 1 = false;
   };
   Outline outline() const noexcept { return {state == RsvpLerTunnelState::up}; }
};

} // namespace Rsvp
