#pragma once

#include "tests/support/Router.h"

#include <cstdint>
#include <memory>

namespace Bench {

// A router with so many tunnels of a synthetic state (host/synth), made in memory: with a million of them its state
// file would be longer than a file may be. It has all tables that the views look at but the histories, filled one after
// the other as the loader of state files does. The process's clocks stand at the moment of the state.
std::unique_ptr<Tests::Router> synthRouter(std::uint64_t tunnels);

} // namespace Bench
