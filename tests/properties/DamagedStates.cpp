#include "tests/properties/DamagedStates.h"

#include "host/state/LoadState.h"
#include "tests/support/Sanitized.h"
#include "tests/support/SynthText.h"
#include "vane/System.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace Tests {

namespace {

constexpr std::uint32_t usualCount = isSanitized ? 60 : 2000;

constexpr double rates[] = {0.01, 0.02, 0.05, 0.1, 0.2, 0.3, 0.45, 0.6};

} // namespace

std::uint32_t stateCount() {
   char const* const wanted = std::getenv("LER_PROPERTY_STATES");
   return wanted == nullptr ? usualCount : static_cast<std::uint32_t>(std::strtoul(wanted, nullptr, 10));
}

Host::RouterState loaded(std::string const& text) {
   return Host::loadState("state.json", Host::StateText(text));
}

DamagedState damagedState(std::uint64_t seed) {
   double const rate = rates[seed % std::size(rates)];
   std::uint64_t const tunnels = 1 + seed / std::size(rates) % 8;
   DamagedState state;
   state.seed = seed;
   state.origin = "lershow state synth --tunnels " + std::to_string(tunnels) + " --seed " + std::to_string(seed) +
                  " --damage " + std::to_string(rate);
   state.text = synthText({tunnels, seed, rate});
   state.router = loaded(state.text);
   return state;
}

void forEachState(std::function<void(DamagedState const& state)> const& body) {
   Vane::System::fixClocks(Brindle::Duration(3456000), Brindle::Duration(utcNow));
   for (std::uint64_t seed = 0; seed < stateCount() && !testing::Test::HasFailure(); ++seed) {
      DamagedState const state = damagedState(seed);
      SCOPED_TRACE(state.origin);
      body(state);
   }
   Vane::System::releaseClocks();
}

} // namespace Tests
