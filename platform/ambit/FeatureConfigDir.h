#pragma once

#include "brindle/Node.h"
#include "vane/HashMap2018.h"

#include <cstdint>

// The directory of hardware counter features.

namespace Tallies {

// The features whose number is known here. The numbers are those of the counter service.
enum class FeatureId : std::uint32_t { rsvpLerAutoBw = 47 };

} // namespace Tallies

namespace Ambit::Tally {

// How a feature's counters are configured; 1 means that they are in force.
enum class ConfigState : std::uint32_t { inForce = 1 };

struct FeatureConfigDir : Brindle::Node {
   Vane::HashMap2018<Tallies::FeatureId, ConfigState> feature;
};

} // namespace Ambit::Tally
