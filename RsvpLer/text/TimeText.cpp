#include "RsvpLer/text/TimeText.h"

#include "vane/System.h"

#include <time.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace Rsvp::Cli {

namespace {

// Both are powers of 2, so exact. Every double from the lowest up to, not including, `beyond` fits the type.
template<class Integer>
constexpr double lowestOf = static_cast<double>(std::numeric_limits<Integer>::min());
template<class Integer>
constexpr double beyond = -lowestOf<Integer>;

static_assert(std::numeric_limits<time_t>::is_signed);

// Writes the calendar part and gives its length, 0 when there is none.
template<std::size_t size>
std::size_t formatCalendar(char (&buffer)[size], time_t wholeSeconds) noexcept {
   // localtime_r, unlike localtime, needn't notice a change of the TZ variable, but it is safe beside other
   // threads.
   tzset();
   tm calendar;
   if (localtime_r(&wholeSeconds, &calendar) == nullptr)
      return 0;
   return strftime(buffer, size, "%a %Y-%m-%d %H:%M:%S", &calendar);
}

// Floating point makes a fraction of 1.0 out of a moment a hair below 0; it reads 999 as well.
unsigned milliseconds(double seconds) noexcept {
   return std::min(static_cast<unsigned>((seconds - std::floor(seconds)) * 1000.0), 999U);
}

} // namespace

TimestampText timestampText(Brindle::Duration utcSeconds) noexcept {
   TimestampText text;
   double const seconds = utcSeconds.seconds();
   if (!(seconds >= lowestOf<time_t> && seconds < beyond<time_t>))
      return text;
   char calendar[25];
   std::size_t const length = formatCalendar(calendar, static_cast<time_t>(seconds));
   if (length == 0)
      return text;
   text.append(std::string_view(calendar, length));
   text.append(".");
   text.appendNumber(milliseconds(seconds), 3);
   return text;
}

Brindle::String timestampToString(Brindle::Duration utcSeconds) {
   return timestampText(utcSeconds).string();
}

std::int64_t timeDelta(Brindle::Duration moment) noexcept {
   double const seconds = (moment - Vane::System::currentTime()).seconds();
   if (!(seconds > 0))
      return 0;
   if (seconds >= beyond<std::int64_t>)
      return std::numeric_limits<std::int64_t>::max();
   return std::llrint(seconds);
}

} // namespace Rsvp::Cli
