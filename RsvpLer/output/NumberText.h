#pragma once

#include <bit>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

namespace Kerf {

// The types that are written as a number: every unsigned integer, U8 included, but neither bool nor a
// character type. Signed values and enumerations have no text of their own here, so that none is written by
// way of a conversion.
template<class T>
concept UnsignedNumber =
      std::unsigned_integral<T> && !std::same_as<T, bool> && !std::same_as<T, char> && !std::same_as<T, wchar_t> &&
      !std::same_as<T, char8_t> && !std::same_as<T, char16_t> && !std::same_as<T, char32_t>;

// The most digits that a number of the type has.
template<UnsignedNumber T>
constexpr std::size_t maxDigits = std::numeric_limits<T>::digits10 + 1;

namespace Impl {

// The eight decimal digits of a number below 10^8, the first in the lowest byte, each from 0 to 9. Two numbers of four
// digits, then four of two, then eight of one are split side by side in one register.
constexpr std::uint64_t eightDigits(std::uint64_t value) noexcept {
   std::uint64_t const fours = value / 10000 | value % 10000 << 32;
   std::uint64_t const hundreds = fours * 10486 >> 20 & 0x0000007f0000007f;
   std::uint64_t const twos = hundreds | (fours - 100 * hundreds) << 16;
   std::uint64_t const tens = twos * 103 >> 10 & 0x000f000f000f000f;
   return tens | (twos - 10 * tens) << 8;
}

inline char* putEightDigits(char* at, std::uint64_t value) noexcept {
   std::uint64_t const text = eightDigits(value) | 0x3030303030303030;
   std::memcpy(at, &text, sizeof text);
   return at + sizeof text;
}

// The digits without leading zeros; eight bytes must be free however few there are.
inline char* putUpToEightDigits(char* at, std::uint64_t value) noexcept {
   std::uint64_t const digits = eightDigits(value);
   // The lowest bit of the last digit stands for a number of one digit, 0 above all.
   int const zeros = std::countr_zero(digits | std::uint64_t{1} << 56) / 8;
   std::uint64_t const text = (digits | 0x3030303030303030) >> 8 * zeros;
   std::memcpy(at, &text, sizeof text);
   return at + 8 - zeros;
}

} // namespace Impl

// Writes the decimal digits at `at`, where maxDigits<T> bytes must be free, and returns their end. Stores no
// NUL.
template<UnsignedNumber T>
char* putNumber(char* at, T value) noexcept {
   static_assert(std::endian::native == std::endian::little);
   constexpr std::uint64_t eight = 100000000;
   if constexpr (maxDigits<T> < 8) {
      return std::to_chars(at, at + maxDigits<T>, value).ptr;
   } else if (value < eight) {
      return Impl::putUpToEightDigits(at, value);
   } else if (std::uint64_t const above = value / eight; above < eight) {
      return Impl::putEightDigits(Impl::putUpToEightDigits(at, above), value % eight);
   } else {
      at = Impl::putUpToEightDigits(at, above / eight);
      return Impl::putEightDigits(Impl::putEightDigits(at, above % eight), value % eight);
   }
}

} // namespace Kerf
