#pragma once

#include "RsvpLer/RsvpLerCliCapi.h"

#include <cstdint>
#include <string_view>
#include <vector>

// What the plain and the detailed view show of one tunnel, as plain values. Gathering them takes the lookups that these
// views need, touches the fields that they show, and writes nothing: it is the floor that they are measured against.
// The texts are those of the records and the vocabulary; a null text stands for a member that isn't there.

namespace Bench {

struct ErrorValues {
   std::uint32_t code;
   std::uint16_t value;
   Lattice::IpGenAddr node;
};

using Hops = std::vector<Lattice::IpGenAddr>;

struct LeafValues {
   Lattice::IpGenAddr address;
   std::string_view state;
   Hops hops;
};

// A path, or the tree of a P2MP tunnel.
struct PathValues {
   std::string_view specName;
   std::string_view state;
   bool preSignaled;
   bool mbb;
   bool inUse;
   Vane::Optional<std::uint32_t> pathMtu;
   Vane::Optional<std::uint32_t> intfMtu;
   std::string_view intfName; // of a tree
   Vane::Optional<std::uint32_t> cspfId;
   std::string_view specType;
   std::vector<ErrorValues> errors;
   Hops hops;
   std::vector<LeafValues> leaves;
   std::size_t leafCount; // those of `leaves` that count; the others are kept for their memory
};

// What a sub-tunnel shows, and a tunnel that isn't split.
struct SubTunnelValues {
   std::uint32_t id = 0;
   std::uint64_t currentBandwidth = 0;
   Vane::Optional<Brindle::Duration> nextAdjustment;
   std::uint64_t lastSampledBandwidth = 0;
   Vane::Optional<std::uint32_t> sessionId;
   Vane::Optional<std::uint32_t> index;
   std::string_view state;
   bool mbb = false;
   std::vector<Vane::Optional<std::uint16_t>> lspIds;
   std::string_view activePathType;
   bool hasPrimary = false;
   bool hasSecondary = false;
   PathValues primary;
   PathValues secondary;
};

struct TunnelValues {
   std::string_view name;
   bool p2mp;
   bool split; // runs on several sub-tunnels
   Lattice::IpGenAddr source;
   Lattice::IpGenAddr destination;
   Vane::Optional<std::uint32_t> p2mpId;
   std::string_view configSource;
   std::string_view profile;
   std::string_view profileState;
   Hops aliasTeps;
   Cask::TristateU32 color;
   bool dynamicMetric;
   std::uint32_t metric;
   std::string_view state;
   bool splitEnabled;
   std::uint64_t quantum;
   std::uint32_t subTunnelMinimum;
   std::uint32_t subTunnelLimit;
   std::uint32_t subTunnelInitial;
   std::uint64_t minSplitBandwidth;
   std::uint64_t maxSplitBandwidth;
   std::uint32_t reductionDelay;
   std::uint64_t currentBandwidth;
   std::uint64_t requestedBandwidth;
   bool autoBandwidth;
   bool signalBandwidth;
   Brindle::Duration adjustmentPeriod;
   Vane::Optional<Brindle::Duration> nextAdjustment;
   std::uint64_t minBandwidth;
   std::uint64_t maxBandwidth;
   std::uint64_t lastSampledBandwidth;
   std::uint8_t setupPriority;
   std::uint8_t holdPriority;
   std::string_view frrMode;
   std::uint32_t optimizationInterval;
   Vane::Optional<std::uint32_t> index;
   bool ldpTunneling;
   bool ldpTunnelingUcmp;
   bool igpShortcut;
   SubTunnelValues own; // the one sub-tunnel; of a split tunnel the ids of all LSPs
   std::vector<SubTunnelValues> subTunnels;
   std::size_t subTunnelCount; // those of `subTunnels` that count
};

// Fills `out` with what the views show of the tunnel. Memory that `out` has from the tunnel before is used again, so
// that in the long run nothing is allocated.
void gather(Rsvp::Cli::ShowRsvpLerTunnel const& command, Rsvp::RsvpLerTunnelSpecId const& id, TunnelValues& out);

} // namespace Bench
