#include "vane/Epoch.h"

#include "brindle/Assert.h"

#include <algorithm>
#include <atomic>
#include <deque>
#include <mutex>

namespace Vane {

namespace Impl {

constinit thread_local ThreadState threadState{};

// One thread's place in the list of readers. Records are never freed; a thread that ends leaves its own to
// the next.
struct alignas(64) ThreadRecord {
   std::atomic<std::uint64_t> epoch = 0; // that of the outermost pin; 0 without a pin
   std::atomic<bool> taken = true;
   ThreadRecord* next = nullptr;
};

namespace {

// Objects retired between two attempts to collect.
constexpr std::size_t backlogStep = 64;

alignas(64) constinit std::atomic<std::uint64_t> globalEpoch = 1;
alignas(64) constinit std::atomic<ThreadRecord*> records = nullptr;

struct Retired {
   void const* object;
   Disposer dispose;
   std::uint64_t epoch;
};

struct Backlog {
   std::mutex mutex;
   std::deque<Retired> waiting; // in ascending order of epoch
   std::size_t attemptAt = backlogStep;
   bool processEnds = false;
};

// Never destroyed: objects may be retired while the process ends.
Backlog& backlog() {
   static Backlog& instance = *new Backlog;
   return instance;
}

void giveRecordBack() noexcept {
   threadState.record->taken.store(false, std::memory_order_release);
   threadState.record = nullptr;
}

struct ThreadExit {
   ~ThreadExit() {
      BRINDLE_ASSERT_TEXT(threadState.depth == 0, "a thread ended with a pin");
      threadState.exiting = true;
      if (threadState.record != nullptr)
         giveRecordBack();
   }
};

ThreadRecord* takeRecord() {
   // A destructor that runs after ThreadExit's may still pin; the object must not be made a second time.
   if (!threadState.exiting) {
      [[maybe_unused]] static thread_local ThreadExit atExit;
   }
   for (ThreadRecord* record = records.load(); record != nullptr; record = record->next) {
      if (!record->taken.load(std::memory_order_relaxed) && !record->taken.exchange(true))
         return record;
   }
   auto* record = new ThreadRecord;
   record->next = records.load();
   while (!records.compare_exchange_weak(record->next, record)) {
   }
   return record;
}

std::uint64_t oldestPin(std::uint64_t now) noexcept {
   std::uint64_t oldest = now;
   for (ThreadRecord const* record = records.load(); record != nullptr; record = record->next) {
      std::uint64_t const epoch = record->epoch.load();
      if (epoch != 0 && epoch < oldest)
         oldest = epoch;
   }
   return oldest;
}

// Advances the epoch and takes out what was retired before the oldest pin.
std::deque<Retired> takeFree() {
   Backlog& all = backlog();
   std::lock_guard const lock(all.mutex);
   std::uint64_t const now = globalEpoch.load(std::memory_order_relaxed) + 1;
   globalEpoch.store(now);
   std::uint64_t const oldest = oldestPin(now);
   auto const end = std::partition_point(all.waiting.begin(), all.waiting.end(),
                                         [oldest](Retired const& retired) { return retired.epoch < oldest; });
   std::deque<Retired> free(all.waiting.begin(), end);
   all.waiting.erase(all.waiting.begin(), end);
   all.attemptAt = all.processEnds ? 0 : all.waiting.size() + backlogStep;
   return free;
}

std::size_t collectOnce() noexcept {
   threadState.collecting = true;
   std::deque<Retired> const free = takeFree();
   for (Retired const& retired : free)
      retired.dispose(retired.object);
   threadState.collecting = false;
   return free.size();
}

// From its destruction on every retirement collects at once, but for those that a disposer makes.
struct ProcessExit {
   ~ProcessExit() {
      {
         std::lock_guard const lock(backlog().mutex);
         backlog().processEnds = true;
      }
      collectRetired();
   }
} const processExit{};

} // namespace

// Why a collector can't miss a pin: the store of the record's epoch comes before the second load of the
// global one, and the collector's advance comes before its look at the records, all four in one total order.
// Either the load comes first, then the collector sees the pin; or it reads the advanced epoch, then
// everything unlinked before the advance is out of this reader's sight. The advance and the backlog share a
// mutex, so an object that carries an epoch was unlinked before the advance past it.
void publishPin() noexcept {
   if (threadState.record == nullptr)
      threadState.record = takeRecord();
   threadState.record->epoch.store(globalEpoch.load());
   static_cast<void>(globalEpoch.load());
}

void withdrawPin() noexcept {
   threadState.record->epoch.store(0, std::memory_order_release);
   if (threadState.exiting)
      giveRecordBack();
}

} // namespace Impl

void retire(void const* object, Disposer dispose) noexcept {
   Impl::Backlog& all = Impl::backlog();
   bool attempt = false;
   {
      std::lock_guard const lock(all.mutex);
      all.waiting.push_back({object, dispose, Impl::globalEpoch.load(std::memory_order_relaxed)});
      attempt = all.waiting.size() >= all.attemptAt;
   }
   if (attempt && !Impl::threadState.collecting)
      Impl::collectOnce();
}

std::size_t collectRetired() noexcept {
   if (Impl::threadState.collecting)
      return 0;
   std::size_t total = 0;
   // A disposer may retire more.
   while (std::size_t const count = Impl::collectOnce())
      total += count;
   return total;
}

std::size_t retiredCount() noexcept {
   std::lock_guard const lock(Impl::backlog().mutex);
   return Impl::backlog().waiting.size();
}

} // namespace Vane
