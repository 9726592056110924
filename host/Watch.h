#pragma once

#include "host/ExitStatus.h"

#include <chrono>
#include <functional>

namespace Host {

// Calls `show` once, or, with an interval, again and again that far apart, until it returns something else than `shown`
// or the user interrupts. A terminal at standard output is cleared each time before.
ExitStatus watch(std::chrono::milliseconds interval, std::function<ExitStatus()> const& show);

} // namespace Host
