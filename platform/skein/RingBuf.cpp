#include "skein/RingBuf.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>

namespace Skein {

namespace {

std::uint64_t steadyNanoseconds() noexcept {
   auto const time = std::chrono::steady_clock::now().time_since_epoch();
   return static_cast<std::uint64_t>(std::chrono::nanoseconds(time).count());
}

// The system call costs more than the rest of a record.
std::uint32_t threadNumber() noexcept {
   thread_local std::uint32_t const number = static_cast<std::uint32_t>(gettid());
   return number;
}

} // namespace

RingBuf::RingBuf(FileHeader& header, Slot* slots) noexcept
      : header_(header), slots_(slots), made_(steadyNanoseconds()) {
}

std::uint64_t RingBuf::now() const noexcept {
   return steadyNanoseconds() - made_;
}

std::uint64_t RingBuf::enter(Msg const& msg) noexcept {
   if (!msg.fits_) {
      header_.skippedRecords.fetch_add(1, std::memory_order_relaxed);
      return 0;
   }
   std::uint64_t const record = header_.lastRecord.fetch_add(1, std::memory_order_relaxed) + 1;
   Slot& slot = slotOf(record);
   std::uint64_t state = slot.state.load(std::memory_order_relaxed);
   bool const isTaken = (state & 1) != 0 || state > record * 2;
   if (isTaken || !slot.state.compare_exchange_strong(state, record * 2 | 1, std::memory_order_acquire,
                                                      std::memory_order_relaxed)) {
      header_.skippedRecords.fetch_add(1, std::memory_order_relaxed);
      return 0;
   }
   slot.start = now();
   slot.duration = Slot::notEnded;
   slot.thread = threadNumber();
   slot.message = msg.message_;
   slot.depth = msg.depth_;
   slot.size = static_cast<std::uint16_t>(msg.size_);
   std::copy_n(msg.values_, msg.size_, slot.values.begin());
   slot.state.store(record * 2, std::memory_order_release);
   return record;
}

void RingBuf::blockEnded(std::uint64_t record) noexcept {
   Slot& slot = slotOf(record);
   std::uint64_t state = record * 2;
   if (!slot.state.compare_exchange_strong(state, state | 1, std::memory_order_acquire, std::memory_order_relaxed))
      return;
   slot.duration = now() - slot.start;
   slot.state.store(record * 2, std::memory_order_release);
}

} // namespace Skein
