#include "vane/System.h"

#include <time.h>

#include <atomic>
#include <cstdint>
#include <mutex>

namespace Vane::System {

namespace {

struct FixedClocks {
   std::atomic<bool> fixed = false;
   std::atomic<double> currentTime = 0;
   std::atomic<double> utcTime = 0;
};

// A change fills the slot that isn't in use and then publishes it by counting `changes` up. A reader whose
// count has stood still while it read has read one slot whole, since its slot is only filled again after the
// next count.
FixedClocks slots[2];
std::atomic<std::uint64_t> changes = 0;
std::mutex changing;

struct FixedReading {
   bool fixed;
   ClockReading clocks;
};

FixedReading readFixed() noexcept {
   while (true) {
      std::uint64_t const before = changes.load(std::memory_order_acquire);
      FixedClocks const& slot = slots[before % 2];
      FixedReading reading;
      reading.fixed = slot.fixed.load(std::memory_order_acquire);
      reading.clocks.currentTime = Brindle::Duration(slot.currentTime.load(std::memory_order_acquire));
      reading.clocks.utcTime = Brindle::Duration(slot.utcTime.load(std::memory_order_acquire));
      if (changes.load(std::memory_order_relaxed) == before)
         return reading;
   }
}

void publish(bool fixed, ClockReading clocks) {
   std::lock_guard const lock(changing);
   std::uint64_t const next = changes.load(std::memory_order_relaxed) + 1;
   FixedClocks& slot = slots[next % 2];
   slot.fixed.store(fixed, std::memory_order_release);
   slot.currentTime.store(clocks.currentTime.seconds(), std::memory_order_release);
   slot.utcTime.store(clocks.utcTime.seconds(), std::memory_order_release);
   changes.store(next, std::memory_order_release);
}

Brindle::Duration liveClock(clockid_t clock) noexcept {
   timespec now{};
   clock_gettime(clock, &now);
   return Brindle::Duration(static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9);
}

} // namespace

Brindle::Duration currentTime() noexcept {
   FixedReading const reading = readFixed();
   return reading.fixed ? reading.clocks.currentTime : liveClock(CLOCK_MONOTONIC);
}

Brindle::Duration utcTime() noexcept {
   FixedReading const reading = readFixed();
   return reading.fixed ? reading.clocks.utcTime : liveClock(CLOCK_REALTIME);
}

ClockReading readClocks() noexcept {
   FixedReading const reading = readFixed();
   return reading.fixed ? reading.clocks : ClockReading{liveClock(CLOCK_MONOTONIC), liveClock(CLOCK_REALTIME)};
}

void fixClocks(Brindle::Duration currentTime, Brindle::Duration utcTime) {
   publish(true, {currentTime, utcTime});
}

void releaseClocks() {
   publish(false, {});
}

} // namespace Vane::System
