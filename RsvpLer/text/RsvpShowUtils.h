#pragma once

#include "RsvpLer/text/FixedText.h"
#include "brindle/Duration.h"
#include "brindle/String.h"

#include <cstdint>

// Bandwidth and intervals as people read them. Each text comes in two forms: one that allocates nothing, and
// the string.

namespace Rsvp::RsvpShowUtils {

// "999.99 Kbps" is the longest.
using BandwidthText = Cli::FixedText<11>;

// A bandwidth in bits per second, with two decimals, rounded half up, in the largest decimal unit that leaves
// at least 1.00: "1.23 Mbps". Below 1000 it is "999 bps" with `bw1000` false; with `bw1000` true it is "1.00
// Kbps", "0.01 Kbps", so that the points of a column that holds larger values line up.
Brindle::String humanReadableBandwidth(std::uint64_t bitsPerSecond, bool bw1000);
BandwidthText bandwidthText(std::uint64_t bitsPerSecond, bool bw1000) noexcept;

// "49709 days 23 hours 59 minutes 59 seconds" is the longest.
using IntervalText = Cli::FixedText<41>;

// An interval in seconds as days, hours, minutes and seconds, without the parts that are 0: "1 hour 30
// minutes"; 0 is "0 seconds".
Brindle::String humanReadableInterval(std::uint32_t seconds);
IntervalText intervalText(std::uint32_t seconds) noexcept;

// The moment in UTC seconds of a moment on the clock of Vane::System::currentTime().
Brindle::Duration toUtcTime(Brindle::Duration moment) noexcept;

} // namespace Rsvp::RsvpShowUtils
