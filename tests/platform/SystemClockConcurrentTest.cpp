#include "vane/System.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

using Brindle::Duration;
using namespace Vane::System;

namespace {

// Two writers fix pairs that differ by a million; no reader may ever see halves of two pairs.
TEST(SystemClockConcurrent, aReadingIsNeverMadeOfTwoPairs) {
   fixClocks(Duration(0), Duration(1e6));
   std::atomic<bool> done = false;
   std::atomic<unsigned> readings = 0;
   std::atomic<unsigned> torn = 0;

   std::vector<std::thread> threads;
   for (double const start : {1.0, 50000.0})
      threads.emplace_back([start, &done] {
         for (double moment = start; !done; moment += 1)
            fixClocks(Duration(moment), Duration(moment + 1e6));
      });
   for (int reader = 0; reader < 2; ++reader)
      threads.emplace_back([&] {
         for (int i = 0; i < 100000; ++i) {
            ClockReading const reading = readClocks();
            if (reading.utcTime - reading.currentTime != Duration(1e6))
               ++torn;
            ++readings;
         }
      });
   threads[2].join();
   threads[3].join();
   done = true;
   threads[0].join();
   threads[1].join();
   releaseClocks();

   EXPECT_EQ(readings, 200000U);
   EXPECT_EQ(torn, 0U);
}

} // namespace
