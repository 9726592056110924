#pragma once

// The user's wish to end the running command. One flag for the process: a handler of SIGINT raises it, the
// output side looks at it where it would otherwise go on or wait, and the host takes it back between two
// commands.
namespace Vane::Interrupt {

// Raises the flag. Safe in a signal handler and from any thread.
void request() noexcept;
// Whether the flag is up.
bool pending() noexcept;
// Takes the flag down; without effect when it isn't up.
void clear() noexcept;

} // namespace Vane::Interrupt
