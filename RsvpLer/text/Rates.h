#pragma once

#include <cstdint>

namespace Rsvp::Cli {

// What a view shows of a stored bandwidth, modulo 2^64.
constexpr std::uint64_t bitsPerSecond(std::uint64_t bytesPerSecond) noexcept {
   return bytesPerSecond * 8;
}

} // namespace Rsvp::Cli
