#pragma once

#include "tests/support/CountedRecord.h"
#include "tests/support/Random.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

namespace Tests {

// The keys of the tables are 0 to keys - 1. Even ones stay for ever and are only replaced, by generations that grow;
// odd ones come and go.
constexpr std::uint32_t keys = 200;
constexpr bool stays(std::uint32_t key) {
   return key % 2 == 0;
}

// The first thing that a reader found wrong. Any thread may use it.
class Verdict {
public:
   void require(bool condition, char const* what) noexcept {
      char const* none = nullptr;
      if (!condition)
         wrong_.compare_exchange_strong(none, what);
   }
   // Empty when nothing was wrong.
   std::string text() const;

private:
   std::atomic<char const*> wrong_ = nullptr;
};

// One reader's memory of the generations it has seen: none may go back.
class Generations {
public:
   explicit Generations(Verdict& verdict) : verdict_(verdict) {}
   // Requires of the record of a key that it is whole, and no older than the one before if the key stays.
   void see(std::uint32_t key, CountedPtr const& record);

private:
   Verdict& verdict_;
   std::array<std::uint64_t, keys> last_{};
};

using Round = std::function<void(Random&)>;

// Runs rounds of the writer, on this thread, while three readers have theirs: a million each, or as many as they can
// in 2 seconds. `makeReader` is called on each reader's thread. Fails the test when the verdict isn't clean.
void contend(Verdict const& verdict, Round const& writerRound, std::function<Round()> const& makeReader);

} // namespace Tests
