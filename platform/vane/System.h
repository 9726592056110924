#pragma once

#include "brindle/Duration.h"

// The two clocks of the device. Any thread may call any of these; reading takes no lock.

namespace Vane::System {

// One look at both clocks.
struct ClockReading {
   Brindle::Duration currentTime;
   Brindle::Duration utcTime;
};

// The internal clock: seconds since an arbitrary start, never going back.
Brindle::Duration currentTime() noexcept;

// Seconds since the start of 1970 in UTC.
Brindle::Duration utcTime() noexcept;

// Both clocks at once; while they are fixed, always a pair that was given together.
ClockReading readClocks() noexcept;

// Makes both clocks stand still at these moments, for the whole process, until they are fixed anew or
// released. A state that was recorded is shown as of its own moment this way.
void fixClocks(Brindle::Duration currentTime, Brindle::Duration utcTime);

// Lets both clocks run again; no effect when they do.
void releaseClocks();

} // namespace Vane::System
