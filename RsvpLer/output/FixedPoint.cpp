#include "RsvpLer/output/FixedPoint.h"

#include "RsvpLer/output/NumberText.h"

#include <charconv>
#include <cmath>
#include <cstdint>

namespace Kerf {

namespace {

// The fraction of a double is a whole number of 2^-64ths unless the value is tiny. Then the six digits and
// the exact rest come out of one product of 84 bits, many times faster than the general conversion.
struct Split {
   std::uint64_t whole;
   std::uint64_t fraction; // in units of 2^-64
   bool exact;
};

Split split(double value) noexcept {
   if (!(value < 0x1p63))
      return {0, 0, false};
   auto const whole = static_cast<std::uint64_t>(value);
   double const scaled = (value - static_cast<double>(whole)) * 0x1p64;
   auto const fraction = static_cast<std::uint64_t>(scaled);
   return {whole, fraction, static_cast<double>(fraction) == scaled};
}

char* putSplit(char* at, Split const& value) noexcept {
   std::uint64_t const low = (value.fraction & 0xffffffff) * 1000000;
   std::uint64_t const high = (value.fraction >> 32) * 1000000 + (low >> 32);
   std::uint64_t const rest = high << 32 | (low & 0xffffffff);
   std::uint64_t const half = std::uint64_t{1} << 63;
   std::uint64_t millionths = high >> 32;
   if (rest > half || (rest == half && millionths % 2 == 1))
      ++millionths;
   at = putNumber(at, value.whole + millionths / 1000000);
   // Seven digits that begin with 1; the point takes the place of the 1, and leading zeros come of
   // themselves.
   char* const end = putNumber(at, 1000000 + millionths % 1000000);
   *at = '.';
   return end;
}

} // namespace

char* putFixedPoint(char* at, double value) noexcept {
   if (!std::isfinite(value))
      value = 0;
   if (std::signbit(value)) {
      *at++ = '-';
      value = -value;
   }
   Split const parts = split(value);
   if (parts.exact)
      return putSplit(at, parts);
   return std::to_chars(at, at + maxFixedPointLength - 1, value, std::chars_format::fixed, 6).ptr;
}

} // namespace Kerf
