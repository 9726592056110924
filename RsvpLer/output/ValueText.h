#pragma once

#include "RsvpLer/output/NumberText.h"
#include "brindle/Duration.h"
#include "lattice/Address.h"

#include <concepts>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <type_traits>

// The values that a renderer writes, as the bytes behind a write position. They come in two kinds: those
// whose text has a bound, so that one reservation serves the whole token, and texts, whose length is known
// only at run time.

namespace scrivo {

// Brindle::String, Fathom::String, char const*, std::string_view. A bool, a number or an empty pointer is
// none.
template<class T>
concept Text = std::convertible_to<T const&, std::string_view> && !std::same_as<T, std::nullptr_t>;

template<class T>
concept Address = std::same_as<T, Lattice::IpAddr> || std::same_as<T, Lattice::IpGenAddr>;

template<class T>
concept BoundedValue = Kerf::UnsignedNumber<T> || Address<T>;

// What stands behind a prefix in a line of text.
template<class T>
concept TextValue = Text<T> || BoundedValue<T>;

// The bytes that must be free for putValue: the longest text of the type, and a NUL for the addresses.
template<BoundedValue T>
constexpr std::size_t valueRoom = Lattice::IpGenAddr::textSize;
template<Kerf::UnsignedNumber T>
constexpr std::size_t valueRoom<T> = Kerf::maxDigits<T>;

// Each of these writes at `at` and returns the end of what it wrote.

inline char* putBytes(char* at, std::string_view bytes) noexcept {
   if (!bytes.empty())
      std::memcpy(at, bytes.data(), bytes.size());
   return at + bytes.size();
}

template<Kerf::UnsignedNumber T>
char* putValue(char* at, T value) noexcept {
   return Kerf::putNumber(at, value);
}

template<Address T>
char* putValue(char* at, T const& value) noexcept {
   if constexpr (std::same_as<T, Lattice::IpAddr>)
      return Lattice::putIpAddr(at, value);
   else
      return value.isV4() ? Lattice::putIpAddr(at, value.v4Addr()) : at + value.printToBuffer(at, valueRoom<T>);
}

// The JSON forms: a bare number or bool, an address between double quotes. Room: jsonRoom<T>.

template<class T>
concept BoundedJson = BoundedValue<T> || std::same_as<T, bool>;

template<class T>
concept JsonValue = Text<T> || BoundedJson<T> || std::same_as<T, Brindle::Duration>;

template<BoundedJson T>
constexpr std::size_t jsonRoom = valueRoom<T> + 2;
template<>
inline constexpr std::size_t jsonRoom<bool> = 5;

template<Kerf::UnsignedNumber T>
char* putJson(char* at, T value) noexcept {
   return Kerf::putNumber(at, value);
}

inline char* putJson(char* at, std::same_as<bool> auto value) noexcept {
   std::memcpy(at, value ? "true" : "fals", 4);
   at[4] = 'e';
   return at + (value ? 4 : 5);
}

template<Address T>
char* putJson(char* at, T const& value) noexcept {
   *at++ = '"';
   at = putValue(at, value);
   *at++ = '"';
   return at;
}

} // namespace scrivo
