#pragma once

#include <cstdint>

namespace Host::Synth {

// Spreads the bits of a number over the whole result; a different result for every argument.
constexpr std::uint64_t mixed(std::uint64_t x) noexcept {
   x += 0x9e3779b97f4a7c15u;
   x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9u;
   x = (x ^ (x >> 27)) * 0x94d049bb133111ebu;
   return x ^ (x >> 31);
}

// A sequence of numbers that depends on its start alone. Not for secrets.
class Random {
public:
   explicit constexpr Random(std::uint64_t start) noexcept : state_(start) {}

   constexpr std::uint64_t next() noexcept { return mixed(++state_); }
   // From 0 to `bound` - 1.
   constexpr std::uint32_t below(std::uint32_t bound) noexcept {
      return static_cast<std::uint32_t>(((next() >> 32) * bound) >> 32);
   }
   // True once in `times`.
   constexpr bool oneIn(std::uint32_t times) noexcept { return below(times) == 0; }

private:
   std::uint64_t state_;
};

} // namespace Host::Synth
