#include "vane/Interrupt.h"

#include <atomic>

namespace Vane::Interrupt {

namespace {

std::atomic<bool> requested = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may not wait for a lock");

} // namespace

void request() noexcept {
   requested.store(true, std::memory_order_relaxed);
}

bool pending() noexcept {
   return requested.load(std::memory_order_relaxed);
}

void clear() noexcept {
   requested.store(false, std::memory_order_relaxed);
}

} // namespace Vane::Interrupt
