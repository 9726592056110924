#pragma once

#include "host/state/RouterState.h"

#include <cstdint>
#include <functional>
#include <string>

// The states over which the properties are held: those of `lershow state synth`, damaged little and much.

namespace Tests {

struct DamagedState {
   std::uint64_t seed;
   std::string origin; // the command that writes the same state
   std::string text;   // as a state file
   Host::RouterState router;
};

// How many states a property is tried on: 2,000, fewer in a build with sanitizers, or what the variable
// LER_PROPERTY_STATES says.
std::uint32_t stateCount();

// The same seed gives the same state.
DamagedState damagedState(std::uint64_t seed);
Host::RouterState loaded(std::string const& text);

// Calls body(state) for all of them, with the clocks standing still and the origin in the trace of a failure, and ends
// at the first state for which a test fails.
void forEachState(std::function<void(DamagedState const& state)> const& body);

// The moment at which the clocks stand still, in UTC seconds.
inline constexpr double utcNow = 1731576400;

} // namespace Tests
