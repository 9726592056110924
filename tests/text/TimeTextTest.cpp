#include "RsvpLer/text/TimeText.h"

#include "vane/System.h"

#include <gtest/gtest.h>
#include <time.h>

#include <cfenv>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <limits>

using namespace Rsvp::Cli;
using Brindle::Duration;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr std::int64_t largestI64 = std::numeric_limits<std::int64_t>::max();

void setZone(char const* zone) {
   setenv("TZ", zone, 1);
   tzset();
}

// The first second of a year in UTC.
double yearStart(int year) {
   tm start{};
   start.tm_year = year - 1900;
   start.tm_mday = 1;
   return static_cast<double>(timegm(&start));
}

class Timestamp : public testing::Test {
protected:
   Timestamp() { setZone("UTC"); }
   ~Timestamp() override { setZone("UTC"); }
};

struct TimestampRow {
   double seconds;
   char const* text;
};

void expectTimestamps(std::initializer_list<TimestampRow> rows) {
   for (TimestampRow const& row : rows) {
      EXPECT_EQ(timestampToString(Duration(row.seconds)), row.text) << row.seconds;
      EXPECT_EQ(timestampText(Duration(row.seconds)).view(), row.text) << row.seconds;
   }
}

TEST_F(Timestamp, isTheCalendarWithMilliseconds) {
   expectTimestamps({
         {0, "Thu 1970-01-01 00:00:00.000"},
         {1, "Thu 1970-01-01 00:00:01.000"},
         {1.5, "Thu 1970-01-01 00:00:01.500"},
         {951782400, "Tue 2000-02-29 00:00:00.000"},
         {1700000000.25, "Tue 2023-11-14 22:13:20.250"},
         {4102444799.125, "Thu 2099-12-31 23:59:59.125"},
   });
}

TEST_F(Timestamp, cutsTheMilliseconds) {
   expectTimestamps({
         {1.9996, "Thu 1970-01-01 00:00:01.999"},
         {1.0009765625, "Thu 1970-01-01 00:00:01.000"},
         {1.0078125, "Thu 1970-01-01 00:00:01.007"},
         {1.0625, "Thu 1970-01-01 00:00:01.062"},
   });
}

TEST_F(Timestamp, countsTheMillisecondsOfANegativeTimeFromTheSecondBelow) {
   expectTimestamps({
         {-0.25, "Thu 1970-01-01 00:00:00.750"},
         {-1, "Wed 1969-12-31 23:59:59.000"},
         {-1.25, "Wed 1969-12-31 23:59:59.750"},
         {-86400.5, "Wed 1969-12-31 00:00:00.500"},
         {-1e-20, "Thu 1970-01-01 00:00:00.999"},
   });
}

TEST_F(Timestamp, holdsAYearOfFiveDigitsAndNoMore) {
   expectTimestamps({
         {yearStart(10000), "Sat 10000-01-01 00:00:00.000"},
         {yearStart(100000) - 0.5, "Fri 99999-12-31 23:59:59.500"},
         {yearStart(100000), ""},
         {yearStart(1000000), ""},
   });
}

TEST_F(Timestamp, isEmptyForWhatNoCalendarHolds) {
   expectTimestamps({
         {1e17, ""}, // a year beyond the calendar's integer
         {9.2233720368547758e18, ""},
         {-9.2233720368547778e18, ""},
         {-9.2233720368547758e18, ""},
         {1e300, ""},
         {-1e300, ""},
         {infinity, ""},
         {-infinity, ""},
         {notANumber, ""},
   });
}

TEST_F(Timestamp, isInTheTimeZoneOfTheProcess) {
   setZone("XYZ-5:30");
   expectTimestamps({{0.5, "Thu 1970-01-01 05:30:00.500"}, {-19800, "Thu 1970-01-01 00:00:00.000"}});
   setenv("TZ", "ABC+2", 1); // noticed without a call of tzset
   expectTimestamps({{0, "Wed 1969-12-31 22:00:00.000"}});
}

class ClockedText : public testing::Test {
protected:
   ~ClockedText() override { Vane::System::releaseClocks(); }
};

using TimeDelta = ClockedText;

struct DeltaRow {
   double ahead;
   std::int64_t seconds;
};

TEST_F(TimeDelta, isTheNearestSecondAhead) {
   DeltaRow const rows[] = {
         {0, 0},
         {0.4, 0},
         {0.5, 0},
         {0.6, 1},
         {1, 1},
         {1.5, 2},
         {2.5, 2},
         {3.5, 4},
         {86400, 86400},
         {-0.6, 0},
         {-1, 0},
         {-1e300, 0},
         {-infinity, 0},
         {notANumber, 0},
         {1e300, largestI64},
         {infinity, largestI64},
   };
   for (double const now : {0.0, 1000.0}) {
      Vane::System::fixClocks(Duration(now), Duration(1.7e9));
      for (DeltaRow const& row : rows)
         EXPECT_EQ(timeDelta(Duration(now + row.ahead)), row.seconds) << row.ahead << " from " << now;
   }
}

TEST_F(TimeDelta, reachesTheLargestNumber) {
   Vane::System::fixClocks(Duration(0), Duration(0));
   EXPECT_EQ(timeDelta(Duration(9223372036854774784.0)),
             9223372036854774784); // the largest double below 2^63
   EXPECT_EQ(timeDelta(Duration(9223372036854775808.0)), largestI64);
}

TEST_F(TimeDelta, followsTheRoundingMode) {
   Vane::System::fixClocks(Duration(0), Duration(0));
   int const mode = std::fegetround();
   std::fesetround(FE_UPWARD);
   std::int64_t const up = timeDelta(Duration(2.25));
   std::fesetround(FE_DOWNWARD);
   std::int64_t const down = timeDelta(Duration(2.75));
   std::fesetround(mode);
   EXPECT_EQ(up, 3);
   EXPECT_EQ(down, 2);
}

TEST_F(TimeDelta, countsFromTheInternalClock) {
   Duration const now = Vane::System::currentTime();
   EXPECT_EQ(timeDelta(now), 0);
   std::int64_t const hour = timeDelta(now + Duration(3600));
   EXPECT_LE(hour, 3600);
   EXPECT_GE(hour, 3500);
}

TEST(WholeSeconds, areCutIntoTheRangeOfTheirType) {
   struct Row {
      double seconds;
      std::uint32_t u32;
      std::uint64_t u64;
   };
   constexpr std::uint32_t largestU32 = std::numeric_limits<std::uint32_t>::max();
   constexpr std::uint64_t largestU64 = std::numeric_limits<std::uint64_t>::max();
   Row const rows[] = {
         {0, 0, 0},
         {0.999, 0, 0},
         {1, 1, 1},
         {1.999, 1, 1},
         {300, 300, 300},
         {-0.0, 0, 0},
         {-0.5, 0, 0},
         {-7, 0, 0},
         {-infinity, 0, 0},
         {notANumber, 0, 0},
         {4294967295.0, largestU32, 4294967295},
         {4294967295.75, largestU32, 4294967295},
         {4294967296.0, largestU32, 4294967296},
         {18446744073709549568.0, largestU32, 18446744073709549568U}, // the largest double below 2^64
         {18446744073709551616.0, largestU32, largestU64},
         {1e300, largestU32, largestU64},
         {infinity, largestU32, largestU64},
   };
   for (Row const& row : rows) {
      EXPECT_EQ(wholeSeconds<std::uint32_t>(Duration(row.seconds)), row.u32) << row.seconds;
      EXPECT_EQ(wholeSeconds<std::uint64_t>(Duration(row.seconds)), row.u64) << row.seconds;
   }
}

} // namespace
