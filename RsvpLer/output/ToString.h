#pragma once

#include "RsvpLer/output/Justify.h"
#include "brindle/Duration.h"
#include "lattice/Address.h"
#include "lattice/IntfId.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Kerf {

// Bounded prints. Each writes at most `size` - 1 characters of the value's text and a NUL behind them
// (nothing at all when `size` is 0) and returns the length of the whole text, also when it didn't fit: a
// result of `size` or more tells the caller to try again with more room. None allocates, none throws.

// Dotted decimal, without leading zeros.
std::size_t to_stringb(char* buffer, std::size_t size, Lattice::IpAddr const& value) noexcept;
// Dotted decimal for IPv4, else the IPv6 text.
std::size_t to_stringb(char* buffer, std::size_t size, Lattice::IpGenAddr const& value) noexcept;
// The interface's name.
std::size_t to_stringb(char* buffer, std::size_t size, Lattice::IntfId const& value) noexcept;
// The seconds with exactly six digits after the point, rounded as printf's "%lf" rounds. A value that is no
// finite number has no place in JSON and reads 0.000000.
std::size_t to_stringb(char* buffer, std::size_t size, Brindle::Duration value) noexcept;
// The text in its column; the length is the larger of the width and the text's length, in bytes.
std::size_t to_stringb(char* buffer, std::size_t size, JustifyLeft<std::string_view> const& value) noexcept;
std::size_t to_stringb(char* buffer, std::size_t size, JustifyRight<std::string_view> const& value) noexcept;

// The decimal number at the right end of `width` bytes, `fill` in front of it. Returns the length laid out:
// `width`, or the number of digits when they are at least `width` or more than `size`; they are then written
// alone, and the low-order ones cut where `size` is too small. A number is never cut on account of `width`.
std::size_t to_stringb_aright(char* buffer, std::size_t size, std::uint32_t value, std::size_t width,
                              char fill) noexcept;

} // namespace Kerf
