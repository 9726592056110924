#pragma once

#include "host/CommandLine.h"
#include "host/state/RouterState.h"

namespace Host {

// Fixes the process-wide clocks at the state's own moment, or, when it has none, lets them run.
void setClocks(RouterState const& state);

// Both need the show commands to be loaded (CommandModule), and throw Brindle::Exception when they aren't.
//
// Answer a show command into an open descriptor, which stays the caller's. They return when the answer is written, or,
// after the line "exiting ..." on standard output, when Vane::Interrupt is pending or the descriptor takes no more.
void showTunnels(ShowTunnelRequest const& request, RouterState const& state, int descriptor);
void showStatus(ShowStatusRequest const& request, RouterState const& state, int descriptor);

} // namespace Host
