#pragma once

#include <charconv>
#include <concepts>
#include <cstddef>
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

// Writes the decimal digits at `at`, where maxDigits<T> bytes must be free, and returns their end. Stores no
// NUL.
template<UnsignedNumber T>
char* putNumber(char* at, T value) noexcept {
   return std::to_chars(at, at + maxDigits<T>, value).ptr;
}

} // namespace Kerf
