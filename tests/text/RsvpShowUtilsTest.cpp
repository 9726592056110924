#include "RsvpLer/text/RsvpShowUtils.h"

#include "vane/System.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdint>
#include <limits>
#include <string_view>

using namespace Rsvp::RsvpShowUtils;
using Brindle::Duration;

namespace {

struct BandwidthRow {
   std::uint64_t bitsPerSecond;
   char const* withoutFlag;
   char const* withFlag;
};

TEST(Bandwidth, below1000DependsOnTheFlag) {
   BandwidthRow const rows[] = {
         {0, "0 bps", "0.00 Kbps"},     {1, "1 bps", "0.00 Kbps"},     {4, "4 bps", "0.00 Kbps"},
         {5, "5 bps", "0.01 Kbps"},     {14, "14 bps", "0.01 Kbps"},   {15, "15 bps", "0.02 Kbps"},
         {100, "100 bps", "0.10 Kbps"}, {900, "900 bps", "0.90 Kbps"}, {994, "994 bps", "0.99 Kbps"},
         {995, "995 bps", "1.00 Kbps"}, {999, "999 bps", "1.00 Kbps"},
   };
   for (BandwidthRow const& row : rows) {
      EXPECT_EQ(humanReadableBandwidth(row.bitsPerSecond, false), row.withoutFlag);
      EXPECT_EQ(humanReadableBandwidth(row.bitsPerSecond, true), row.withFlag);
      EXPECT_EQ(bandwidthText(row.bitsPerSecond, false).view(), row.withoutFlag);
      EXPECT_EQ(bandwidthText(row.bitsPerSecond, true).view(), row.withFlag);
   }
}

struct LargeBandwidthRow {
   std::uint64_t bitsPerSecond;
   char const* text;
};

TEST(Bandwidth, from1000UpHasTwoDecimalsAndTheLargestUnit) {
   LargeBandwidthRow const rows[] = {
         {1000, "1.00 Kbps"},
         {1004, "1.00 Kbps"},
         {1005, "1.01 Kbps"},
         {8000, "8.00 Kbps"},
         {9999, "10.00 Kbps"},
         {995000, "995.00 Kbps"},
         {999989, "999.99 Kbps"},
         {999994, "999.99 Kbps"},
         {999995, "1.00 Mbps"},
         {999999, "1.00 Mbps"},
         {1000000, "1.00 Mbps"},
         {1004999, "1.00 Mbps"},
         {1005000, "1.01 Mbps"},
         {1234567, "1.23 Mbps"},
         {80000000, "80.00 Mbps"},
         {999994999, "999.99 Mbps"},
         {999995000, "1.00 Gbps"},
         {1000000000, "1.00 Gbps"},
         {999994999999, "999.99 Gbps"},
         {999995000000, "1.00 Tbps"},
         {1000000000000, "1.00 Tbps"},
         {999994999999999, "999.99 Tbps"},
         {999995000000000, "1.00 Pbps"},
         {1000000000000000, "1.00 Pbps"},
         {999994999999999999, "999.99 Pbps"},
         {999995000000000000, "1.00 Ebps"},
         {1000000000000000000, "1.00 Ebps"},
         {18444999999999999999U, "18.44 Ebps"},
         {18445000000000000000U, "18.45 Ebps"},
         {18446744073709551615U, "18.45 Ebps"},
   };
   for (LargeBandwidthRow const& row : rows)
      for (bool const flag : {false, true}) {
         EXPECT_EQ(humanReadableBandwidth(row.bitsPerSecond, flag), row.text);
         EXPECT_EQ(bandwidthText(row.bitsPerSecond, flag).view(), row.text);
      }
}

struct IntervalRow {
   std::uint32_t seconds;
   char const* text;
};

TEST(Interval, namesThePartsThatAreNotZero) {
   IntervalRow const rows[] = {
         {0, "0 seconds"},
         {1, "1 second"},
         {2, "2 seconds"},
         {59, "59 seconds"},
         {60, "1 minute"},
         {61, "1 minute 1 second"},
         {300, "5 minutes"},
         {3599, "59 minutes 59 seconds"},
         {3600, "1 hour"},
         {3601, "1 hour 1 second"},
         {5400, "1 hour 30 minutes"},
         {7200, "2 hours"},
         {86399, "23 hours 59 minutes 59 seconds"},
         {86400, "1 day"},
         {90061, "1 day 1 hour 1 minute 1 second"},
         {172801, "2 days 1 second"},
         {4294943999, "49709 days 23 hours 59 minutes 59 seconds"},
         {4294967295, "49710 days 6 hours 28 minutes 15 seconds"},
   };
   for (IntervalRow const& row : rows) {
      EXPECT_EQ(humanReadableInterval(row.seconds), row.text);
      EXPECT_EQ(intervalText(row.seconds).view(), row.text);
   }
}

class UtcTime : public testing::Test {
protected:
   ~UtcTime() override { Vane::System::releaseClocks(); }
};

TEST_F(UtcTime, isShiftedByTheDifferenceOfTheClocks) {
   Vane::System::fixClocks(Duration(5000), Duration(1700000000.5));
   EXPECT_EQ(toUtcTime(Duration(5000)).seconds(), 1700000000.5);
   EXPECT_EQ(toUtcTime(Duration(5120.25)).seconds(), 1700000120.75);
   EXPECT_EQ(toUtcTime(Duration(0)).seconds(), 1699995000.5);
   EXPECT_EQ(toUtcTime(Duration(-100)).seconds(), 1699994900.5);
}

TEST_F(UtcTime, ofTheRunningClocksIsNow) {
   Duration const before = Vane::System::utcTime();
   Duration const now = toUtcTime(Vane::System::currentTime());
   EXPECT_NEAR(now.seconds(), before.seconds(), 60);
}

TEST(FixedText, padsANumberAndStopsAtItsCapacity) {
   Rsvp::Cli::FixedText<5> text;
   EXPECT_EQ(text.view(), "");
   text.append({});
   text.appendNumber(7U, 3);
   EXPECT_EQ(text.view(), "007");
   text.appendNumber(12U, 1);
   EXPECT_EQ(text.view(), "00712");
   EXPECT_EQ(text.string(), "00712");
}

TEST(FixedTextDeathTest, endsTheProcessWhereTheTextIsTooLong) {
   Rsvp::Cli::FixedText<3> text;
   text.append("ab");
   EXPECT_EXIT(text.append("cd"), testing::KilledBySignal(SIGABRT), "assertion failed");
}

TEST(FixedText, holdsTheLargestNumber) {
   Rsvp::Cli::FixedText<20> text;
   text.appendNumber(std::numeric_limits<std::uint64_t>::max());
   EXPECT_EQ(text.view(), "18446744073709551615");
}

} // namespace
