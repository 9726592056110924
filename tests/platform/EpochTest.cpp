#include "vane/Epoch.h"

#include "tests/support/CountedRecord.h"
#include "vane/Slot.h"

#include <gtest/gtest.h>

#include <new>
#include <optional>
#include <semaphore>
#include <thread>
#include <vector>

namespace {

using Tests::countedRecord;
using Tests::CountedRecord;

// A thread that holds a pin while told to.
class Reader {
public:
   ~Reader() {
      stop_ = true;
      go_.release();
      thread_.join();
   }
   void pin() { step(true); }
   void unpin() { step(false); }

private:
   void step(bool pinned) {
      pinned_ = pinned;
      go_.release();
      done_.acquire();
   }
   void run() {
      std::optional<Vane::Pin> pin;
      for (go_.acquire(); !stop_; go_.acquire()) {
         if (pinned_)
            pin.emplace();
         else
            pin.reset();
         done_.release();
      }
   }

   bool pinned_ = false;
   bool stop_ = false;
   std::binary_semaphore go_{0};
   std::binary_semaphore done_{0};
   std::thread thread_{[this] { run(); }};
};

void retireOne() {
   Vane::retireObject(new CountedRecord(1, 1));
}

class Epoch : public testing::Test {
protected:
   void SetUp() override {
      Vane::collectRetired();
      ASSERT_EQ(CountedRecord::alive(), 0);
   }
   void TearDown() override {
      Vane::collectRetired();
      EXPECT_EQ(CountedRecord::alive(), 0);
      EXPECT_EQ(Vane::retiredCount(), 0u);
   }
};

TEST_F(Epoch, DisposesAtOnceWithoutAPin) {
   retireOne();
   EXPECT_EQ(Vane::retiredCount(), 1u);
   EXPECT_EQ(CountedRecord::alive(), 1);
   EXPECT_EQ(Vane::collectRetired(), 1u);
   EXPECT_EQ(CountedRecord::alive(), 0);
}

TEST_F(Epoch, APinOfAnotherThreadHoldsBackUntilItGoes) {
   Reader reader;
   reader.pin();
   retireOne();
   EXPECT_EQ(Vane::collectRetired(), 0u);
   EXPECT_EQ(CountedRecord::alive(), 1);
   reader.unpin();
   EXPECT_EQ(Vane::collectRetired(), 1u);
}

TEST_F(Epoch, AYoungerPinHoldsNothingBack) {
   Reader older;
   Reader younger;
   older.pin();
   retireOne();
   EXPECT_EQ(Vane::collectRetired(), 0u);
   younger.pin();
   older.unpin();
   EXPECT_EQ(Vane::collectRetired(), 1u);
   retireOne();
   EXPECT_EQ(Vane::collectRetired(), 0u);
   younger.unpin();
   EXPECT_EQ(Vane::collectRetired(), 1u);
}

TEST_F(Epoch, OnlyTheOutermostPinCounts) {
   std::optional<Vane::Pin> outer(std::in_place);
   {
      Vane::Pin const inner;
      Vane::Pin copy(inner);
      copy = inner;
   }
   retireOne();
   EXPECT_EQ(Vane::collectRetired(), 0u);
   outer.reset();
   EXPECT_EQ(Vane::collectRetired(), 1u);
}

TEST_F(Epoch, TheBacklogStaysSmallByItself) {
   for (int i = 0; i < 1000; ++i) {
      retireOne();
      ASSERT_LE(Vane::retiredCount(), 64u);
      ASSERT_LE(CountedRecord::alive(), 64);
   }
}

TEST_F(Epoch, TheBacklogShrinksAgainAfterALongPin) {
   Reader reader;
   reader.pin();
   for (int i = 0; i < 1000; ++i)
      retireOne();
   EXPECT_EQ(CountedRecord::alive(), 1000);
   reader.unpin();
   for (int i = 0; i < 64; ++i)
      retireOne();
   EXPECT_LE(CountedRecord::alive(), 64);
}

TEST_F(Epoch, ACommandPinHoldsBackButWhileItRests) {
   Vane::CommandPin const command;
   retireOne();
   EXPECT_EQ(Vane::collectRetired(), 0u);
   {
      Vane::PinRest const rest;
      EXPECT_EQ(Vane::collectRetired(), 1u);
   }
   retireOne();
   EXPECT_EQ(Vane::collectRetired(), 0u);
}

TEST_F(Epoch, APinTakenDuringARestHoldsBack) {
   Vane::CommandPin const command;
   Vane::PinRest const rest;
   {
      Vane::Pin const pin;
      retireOne();
      EXPECT_EQ(Vane::collectRetired(), 0u);
   }
   EXPECT_EQ(Vane::collectRetired(), 1u);
}

TEST_F(Epoch, ARestWithinARestHasNoEffect) {
   Vane::CommandPin const command;
   {
      Vane::PinRest const rest;
      { Vane::PinRest const second; }
      retireOne();
      EXPECT_EQ(Vane::collectRetired(), 1u);
   }
   retireOne();
   EXPECT_EQ(Vane::collectRetired(), 0u);
}

TEST_F(Epoch, NoOtherPinRests) {
   {
      Vane::Pin const pin;
      Vane::CommandPin const inside;
      Vane::PinRest const rest;
      retireOne();
      EXPECT_EQ(Vane::collectRetired(), 0u);
   }
   EXPECT_EQ(Vane::collectRetired(), 1u);
   {
      Vane::CommandPin const command;
      Vane::Pin const walk;
      Vane::PinRest const rest;
      retireOne();
      EXPECT_EQ(Vane::collectRetired(), 0u);
   }
   EXPECT_EQ(Vane::collectRetired(), 1u);
   Vane::Pin const pin;
   Vane::PinRest const rest;
   retireOne();
   EXPECT_EQ(Vane::collectRetired(), 0u);
}

TEST_F(Epoch, ADisposerMayRetireAndCollect) {
   static std::size_t collectedInside = 1;
   int const object = 0;
   Vane::retire(&object, [](void const*) noexcept {
      for (int i = 0; i < 200; ++i)
         retireOne();
      collectedInside = Vane::collectRetired();
   });
   EXPECT_EQ(Vane::collectRetired(), 201u);
   EXPECT_EQ(collectedInside, 0u);
}

TEST_F(Epoch, AnyThreadMayRetire) {
   std::vector<std::thread> threads;
   for (int i = 0; i < 4; ++i)
      threads.emplace_back([] {
         for (int j = 0; j < 1000; ++j)
            retireOne();
      });
   for (std::thread& thread : threads)
      thread.join();
   Vane::collectRetired();
   EXPECT_EQ(CountedRecord::alive(), 0);
}

TEST_F(Epoch, AThreadThatEndedHoldsNothingBack) {
   for (int i = 0; i < 100; ++i)
      std::thread([] { Vane::Pin const pin; }).join();
   retireOne();
   EXPECT_EQ(Vane::collectRetired(), 1u);
}

// Destroyed after the thread has given its place among the readers back, since it was made before the first pin.
struct PinsWhenDestroyed {
   ~PinsWhenDestroyed() {
      {
         Vane::Pin const pin;
         retireOne();
         heldBack = Vane::collectRetired() == 0;
      }
      disposed = Vane::collectRetired();
   }
   static inline bool heldBack = false;
   static inline std::size_t disposed = 0;
};

TEST_F(Epoch, AThreadMayPinWhileItEnds) {
   std::thread([] {
      static thread_local PinsWhenDestroyed const last{};
      static_cast<void>(&last);
      Vane::Pin const pin;
   }).join();
   EXPECT_TRUE(PinsWhenDestroyed::heldBack);
   EXPECT_EQ(PinsWhenDestroyed::disposed, 1u);
}

TEST(EpochDeathTest, AThreadMustNotEndWithAPin) {
   EXPECT_DEATH(std::thread([] {
                   alignas(Vane::Pin) static thread_local char storage[sizeof(Vane::Pin)];
                   new (storage) Vane::Pin;
                }).join(),
                "assertion failed: a thread ended with a pin");
}

using Slot = Epoch;

TEST_F(Slot, IsEmptyByDefault) {
   Vane::Slot<CountedRecord const> const slot;
   EXPECT_EQ(slot.get(), nullptr);
}

TEST_F(Slot, HasAUseOfItsOwn) {
   Tests::CountedPtr const record = countedRecord(1);
   {
      Vane::Slot<CountedRecord const> slot(record);
      EXPECT_EQ(record->userCount(), 2u);
      EXPECT_EQ(slot.get(), record);
      Tests::CountedPtr const mine = slot.get();
      EXPECT_EQ(record->userCount(), 3u);
   }
   EXPECT_EQ(record->userCount(), 1u);
}

TEST_F(Slot, DropsWhatItReplacesWhenNoPinIsLeft) {
   Vane::Slot<CountedRecord const> slot(countedRecord(1));
   {
      Vane::Pin const pin;
      slot.set(countedRecord(2));
      Vane::collectRetired();
      EXPECT_EQ(CountedRecord::alive(), 2);
   }
   Vane::collectRetired();
   EXPECT_EQ(CountedRecord::alive(), 1);
   EXPECT_EQ(slot.get()->key(), 2u);
   slot.set(nullptr);
   EXPECT_EQ(slot.get(), nullptr);
   Vane::collectRetired();
   EXPECT_EQ(CountedRecord::alive(), 0);
}

TEST_F(Slot, AHandleKeepsWhatWasReplaced) {
   Vane::Slot<CountedRecord const> slot(countedRecord(1, 7));
   Tests::CountedPtr const kept = slot.get();
   slot.set(countedRecord(1, 8));
   Vane::collectRetired();
   EXPECT_TRUE(kept->isWhole(1));
   EXPECT_EQ(kept->generation(), 7u);
   EXPECT_EQ(kept->userCount(), 1u);
}

} // namespace
