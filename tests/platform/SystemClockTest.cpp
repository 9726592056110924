#include "vane/System.h"

#include <gtest/gtest.h>

#include <chrono>

using Brindle::Duration;
using namespace Vane::System;

namespace {

class SystemClock : public testing::Test {
protected:
   ~SystemClock() override { releaseClocks(); }
};

TEST_F(SystemClock, runsUnlessItIsFixed) {
   double const before = std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
   double const now = currentTime().seconds();
   double const after = std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
   EXPECT_LE(before, now + 1e-6);
   EXPECT_LE(now, after + 1e-6);
}

TEST_F(SystemClock, tellsUtc) {
   double const wall = std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
   EXPECT_NEAR(utcTime().seconds(), wall, 60);
   EXPECT_NEAR(readClocks().utcTime.seconds(), wall, 60);
}

TEST_F(SystemClock, neverGoesBack) {
   double last = currentTime().seconds();
   for (int i = 0; i < 1000; ++i) {
      double const now = currentTime().seconds();
      EXPECT_LE(last, now);
      last = now;
   }
}

TEST_F(SystemClock, standsStillWhereItIsFixed) {
   fixClocks(Duration(12.5), Duration(1700000000));
   for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(currentTime(), Duration(12.5));
      EXPECT_EQ(utcTime(), Duration(1700000000));
      EXPECT_EQ(readClocks().currentTime, Duration(12.5));
      EXPECT_EQ(readClocks().utcTime, Duration(1700000000));
   }
   fixClocks(Duration(0), Duration(-1));
   EXPECT_EQ(currentTime(), Duration(0));
   EXPECT_EQ(utcTime(), Duration(-1));
}

TEST_F(SystemClock, runsAgainWhenItIsReleased) {
   double const before = currentTime().seconds();
   fixClocks(Duration(-5), Duration(-6));
   releaseClocks();
   EXPECT_GE(currentTime().seconds(), before);
   EXPECT_GT(utcTime().seconds(), 1.6e9);
   releaseClocks();
   EXPECT_GE(readClocks().currentTime.seconds(), before);
}

} // namespace
