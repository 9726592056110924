#pragma once

#include "RsvpLer/state/Keys.h"
#include "brindle/Duration.h"
#include "brindle/Node.h"
#include "vane/FlatMap.h"
#include "vane/Optional.h"

#include <cstdint>

// Automatic bandwidth: its settings, its schedule and its samples. Bandwidths are in bytes per second; a moment is on
// the internal clock.

namespace Rsvp {

struct RsvpLerTunnelAutoBwConfig {
   RsvpLerTunnelSpecId tunnelSpecId;
   bool enabled = false;
   Brindle::Duration adjustmentPeriod;
   std::uint64_t minBandwidth = 0;
   std::uint64_t maxBandwidth = 0;
};

struct RsvpLerSubTunnelBwSamplingStats {
   Vane::Optional<Brindle::Duration> nextAdjustmentTime;
};

// Of one tunnel, with those of its sub-tunnels.
struct RsvpLerBwSamplingStats : Brindle::Node {
   Vane::Optional<Brindle::Duration> nextAdjustmentTime;
   Vane::FlatMap<RsvpLerSubTunnelConfigId, RsvpLerSubTunnelBwSamplingStats> subTunnelBwSamplingStats;
};

struct RsvpLerSubTunnelBwSamplingStatus {
   std::uint64_t lastSampledBandwidth = 0;
};

// Of one tunnel, with those of its sub-tunnels.
struct RsvpLerBwSamplingStatus : Brindle::Node {
   std::uint64_t lastSampledBandwidth = 0;
   Vane::FlatMap<RsvpLerSubTunnelConfigId, RsvpLerSubTunnelBwSamplingStatus> subTunnelBwSamplingStatus;
};

} // namespace Rsvp
