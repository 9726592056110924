#pragma once

#include "RsvpLer/Export.h"
#include "RsvpLer/text/FixedText.h"
#include "brindle/Duration.h"
#include "brindle/String.h"

#include <concepts>
#include <cstdint>
#include <limits>

namespace Rsvp::Cli {

// Room for a calendar stamp with a five-digit year.
using TimestampText = FixedText<28>;

// The calendar stamp of a moment in UTC seconds, in the process's time zone, with milliseconds that are cut,
// not rounded: "Thu 1970-01-01 00:00:01.500". Empty for a moment that is not a number, that the calendar
// can't hold, or whose year has more than five digits. Of a moment before the epoch the whole seconds are cut
// toward zero and the milliseconds counted from the second below, so -0.25 reads 00:00:00.750.
Brindle::String timestampToString(Brindle::Duration utcSeconds);
// The same text without an allocation.
TimestampText timestampText(Brindle::Duration utcSeconds) noexcept;

// The whole seconds from now until a moment on the clock of Vane::System::currentTime(), to the nearest in
// the current rounding mode (2.5 gives 2 and 3.5 gives 4 by default). 0 for the past and for what is not a
// number; the largest number for a moment further away than that.
RSVP_LER_EXPORT std::int64_t timeDelta(Brindle::Duration moment) noexcept;

// The duration cut to whole seconds: 0 when it is below 0 or not a number, the largest `Seconds` when it is
// above that.
template<std::unsigned_integral Seconds>
constexpr Seconds wholeSeconds(Brindle::Duration duration) noexcept {
   constexpr Seconds largest = std::numeric_limits<Seconds>::max();
   // A power of 2, so exact as a double for every width.
   constexpr Seconds halfOfFirstAbove = largest / 2 + 1;
   constexpr double firstAbove = 2.0 * static_cast<double>(halfOfFirstAbove);
   double const seconds = duration.seconds();
   if (!(seconds > 0))
      return 0;
   return seconds >= firstAbove ? largest : static_cast<Seconds>(seconds);
}

} // namespace Rsvp::Cli
