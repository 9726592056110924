#pragma once

#include "host/CommandLine.h"
#include "host/state/RouterState.h"

namespace Host {

// Both need the show commands to be loaded (CommandModule), and throw Brindle::Exception when they aren't.
//
// Answer a show command into an open descriptor, which stays the caller's; as of the state's own moment when it has
// one, for which the process-wide clocks are fixed. They return when the answer is written, or, after the line "exiting
// ..." on standard output, when Vane::Interrupt is pending or the descriptor takes no more.
void showTunnels(ShowTunnelRequest const& request, RouterState const& state, int descriptor);
void showStatus(ShowStatusRequest const& request, RouterState const& state, int descriptor);

} // namespace Host
