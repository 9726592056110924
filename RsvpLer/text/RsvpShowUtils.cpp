#include "RsvpLer/text/RsvpShowUtils.h"

#include "vane/System.h"

#include <iterator>
#include <string_view>

namespace Rsvp::RsvpShowUtils {

namespace {

struct BandwidthUnit {
   std::uint64_t hundredth; // bits per second
   std::string_view name;
};

constexpr BandwidthUnit bandwidthUnits[] = {
      {10, " Kbps"},
      {10'000, " Mbps"},
      {10'000'000, " Gbps"},
      {10'000'000'000, " Tbps"},
      {10'000'000'000'000, " Pbps"},
      {10'000'000'000'000'000, " Ebps"},
};

std::uint64_t roundedHundredths(std::uint64_t bitsPerSecond, BandwidthUnit const& unit) noexcept {
   std::uint64_t const remainder = bitsPerSecond % unit.hundredth;
   return bitsPerSecond / unit.hundredth + (remainder >= unit.hundredth / 2 ? 1 : 0);
}

// A value moves to the next unit where it would round to 1000.00; of the last unit a U64 can't hold that
// many.
BandwidthUnit const& unitFor(std::uint64_t bitsPerSecond) noexcept {
   BandwidthUnit const* unit = std::begin(bandwidthUnits);
   while (roundedHundredths(bitsPerSecond, *unit) >= 1000 * 100)
      ++unit;
   return *unit;
}

void appendPart(IntervalText& text, std::uint32_t count, std::string_view singular) noexcept {
   if (count == 0)
      return;
   if (text.size() != 0)
      text.append(" ");
   text.appendNumber(count);
   text.append(" ");
   text.append(singular);
   if (count != 1)
      text.append("s");
}

} // namespace

BandwidthText bandwidthText(std::uint64_t bitsPerSecond, bool bw1000) noexcept {
   BandwidthText text;
   if (bitsPerSecond < 1000 && !bw1000) {
      text.appendNumber(bitsPerSecond);
      text.append(" bps");
      return text;
   }
   BandwidthUnit const& unit = unitFor(bitsPerSecond);
   std::uint64_t const hundredths = roundedHundredths(bitsPerSecond, unit);
   text.appendNumber(hundredths / 100);
   text.append(".");
   text.appendNumber(hundredths % 100, 2);
   text.append(unit.name);
   return text;
}

Brindle::String humanReadableBandwidth(std::uint64_t bitsPerSecond, bool bw1000) {
   return bandwidthText(bitsPerSecond, bw1000).string();
}

IntervalText intervalText(std::uint32_t seconds) noexcept {
   IntervalText text;
   if (seconds == 0) {
      text.append("0 seconds");
      return text;
   }
   appendPart(text, seconds / 86400, "day");
   appendPart(text, seconds / 3600 % 24, "hour");
   appendPart(text, seconds / 60 % 60, "minute");
   appendPart(text, seconds % 60, "second");
   return text;
}

Brindle::String humanReadableInterval(std::uint32_t seconds) {
   return intervalText(seconds).string();
}

Brindle::Duration toUtcTime(Brindle::Duration moment) noexcept {
   Vane::System::ClockReading const now = Vane::System::readClocks();
   return moment + (now.utcTime - now.currentTime);
}

} // namespace Rsvp::RsvpShowUtils
