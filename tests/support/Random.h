#pragma once

#include <cstdint>
#include <random>

namespace Tests {

// Numbers that are the same in each run of a test.
class Random {
public:
   explicit Random(std::uint32_t seed) : engine_(seed) {}
   // From 0 to bound - 1.
   std::uint32_t below(std::uint32_t bound) { return static_cast<std::uint32_t>(engine_() % bound); }

private:
   std::mt19937 engine_;
};

} // namespace Tests
