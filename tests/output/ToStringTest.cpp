#include "RsvpLer/output/ToString.h"

#include "RsvpLer/output/FixedPoint.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using Lattice::IpAddr;
using Lattice::IpGenAddr;

// Holds a bounded print against its contract with every size from none to more than enough.
template<class Value>
void expectBounded(Value const& value, std::string const& text) {
   for (std::size_t size = 0; size <= text.size() + 3; ++size) {
      std::string buffer(text.size() + 8, '#');
      ASSERT_EQ(Kerf::to_stringb(buffer.data(), size, value), text.size()) << "size " << size;
      std::string expected = size == 0 ? "" : text.substr(0, size - 1) + '\0';
      ASSERT_EQ(buffer, expected + std::string(buffer.size() - expected.size(), '#')) << "size " << size;
   }
}

TEST(ToStringb, Addresses) {
   expectBounded(IpAddr(0, 0, 0, 0), "0.0.0.0");
   expectBounded(IpAddr(10, 0, 0, 7), "10.0.0.7");
   expectBounded(IpAddr(192, 168, 100, 1), "192.168.100.1");
   expectBounded(IpAddr(255, 255, 255, 255), "255.255.255.255");
   expectBounded(IpGenAddr(IpAddr(10, 0, 0, 7)), "10.0.0.7");
   expectBounded(IpGenAddr(), "::");
   expectBounded(*IpGenAddr::parse("2001:db8::7"), "2001:db8::7");
}

TEST(ToStringb, Interfaces) {
   expectBounded(Lattice::IntfId(), "");
   expectBounded(Lattice::IntfId("Ethernet12/1"), "Ethernet12/1");
}

TEST(ToStringb, JustifiedText) {
   using Left = Kerf::JustifyLeft<std::string_view>;
   using Right = Kerf::JustifyRight<std::string_view>;
   expectBounded(Left{0, "", ' '}, "");
   expectBounded(Left{6, "abc", '-'}, "abc---");
   expectBounded(Left{3, "abc", '-'}, "abc");
   expectBounded(Left{2, "abc", '-'}, "abc");
   expectBounded(Left{4, "", '.'}, "....");
   expectBounded(Right{0, "", ' '}, "");
   expectBounded(Right{6, "abc", '-'}, "---abc");
   expectBounded(Right{3, "abc", '-'}, "abc");
   expectBounded(Right{2, "abc", '-'}, "abc");
   expectBounded(Right{4, "", '.'}, "....");
}

TEST(ToStringb, Durations) {
   expectBounded(Brindle::Duration(0), "0.000000");
   expectBounded(Brindle::Duration(12.5), "12.500000");
   expectBounded(Brindle::Duration(-3.25), "-3.250000");
   expectBounded(Brindle::Duration(1e22), "10000000000000000000000.000000");
}

TEST(ToStringbAright, Rows) {
   struct Row {
      std::size_t size;
      std::uint32_t value;
      std::size_t width;
      std::string written; // with the terminator where one is stored
      std::size_t result;
   };
   std::string const nul(1, '\0');
   std::vector<Row> const rows{
         {100, 42, 6, "****42" + nul, 6},
         {100, 0, 3, "**0" + nul, 3},
         {100, 4294967295, 12, "**4294967295" + nul, 12},
         {100, 1234, 4, "1234" + nul, 4},   // as wide as its column: no fill
         {100, 12345, 3, "12345" + nul, 5}, // wider: whole
         {100, 7, 0, "7" + nul, 1},
         {3, 12345, 8, "12" + nul, 5}, // the digits don't fit: no fill, low-order digits cut
         {1, 12345, 8, nul, 5},
         {0, 12345, 8, "", 5},
         {7, 42, 6, "****42" + nul, 6},
         {6, 42, 6, "****4" + nul, 6}, // the terminator takes the last place
         {5, 42, 6, "****" + nul, 6},
         {4, 42, 6, "****", 6}, // the fill takes all there is
         {3, 42, 6, "***", 6},
         {2, 42, 6, "**", 6},
         {100, 42, 100, std::string(98, '*') + "4" + nul, 100},
   };
   for (Row const& row : rows) {
      std::string buffer(110, '#');
      EXPECT_EQ(Kerf::to_stringb_aright(buffer.data(), row.size, row.value, row.width, '*'), row.result);
      EXPECT_EQ(buffer, row.written + std::string(buffer.size() - row.written.size(), '#'))
            << row.value << " in " << row.width << ", size " << row.size;
   }
}

std::string fixedPoint(double value) {
   char text[Kerf::maxFixedPointLength];
   return {text, Kerf::putFixedPoint(text, value)};
}

std::string printed(double value) {
   char text[400];
   return {text, static_cast<std::size_t>(std::snprintf(text, sizeof text, "%lf", value))};
}

TEST(FixedPoint, Rows) {
   using Limits = std::numeric_limits<double>;
   struct Row {
      double value;
      std::string text;
   };
   std::vector<Row> const rows{
         {0, "0.000000"},
         {-0.0, "-0.000000"},
         {1, "1.000000"},
         {12.5, "12.500000"},
         {0.000001, "0.000001"},
         {0.0000004, "0.000000"},
         {0.9999996, "1.000000"},
         {9.9999996, "10.000000"},
         {0.0078125, "0.007812"}, // an exact half goes to the even digit
         {0.0234375, "0.023438"},
         {1.0078125, "1.007812"},
         {-1.5, "-1.500000"},
         {1700000000.123456, "1700000000.123456"},
         {9007199254740993.0, "9007199254740992.000000"},
         {0x1p63, "9223372036854775808.000000"},
         {0x1p64, "18446744073709551616.000000"},
         {Limits::denorm_min(), "0.000000"},
         {Limits::quiet_NaN(), "0.000000"},
         {-Limits::quiet_NaN(), "0.000000"},
         {Limits::infinity(), "0.000000"},
         {-Limits::infinity(), "0.000000"},
   };
   for (Row const& row : rows)
      EXPECT_EQ(fixedPoint(row.value), row.text);
   EXPECT_EQ(fixedPoint(-Limits::max()).size(), 317u);
   EXPECT_EQ(fixedPoint(-Limits::max()), printed(-Limits::max()));
}

TEST(FixedPoint, AsPrintfWritesEveryKindOfDouble) {
   std::mt19937_64 random(3);
   for (int i = 0; i < 200000; ++i) {
      double const any = std::bit_cast<double>(random());
      if (std::isfinite(any)) {
         ASSERT_EQ(fixedPoint(any), printed(any));
      }
      double const small = std::ldexp(static_cast<double>(random() >> 11), -static_cast<int>(random() % 90));
      ASSERT_EQ(fixedPoint(small), printed(small));
      // Odd multiples of 2^-7 and the like: halves at the seventh digit.
      double const half = static_cast<double>(random() % 100000) / static_cast<double>(1u << (random() % 10));
      ASSERT_EQ(fixedPoint(half), printed(half));
      double const decimal = static_cast<double>(random() % 10000000000) / 1e7;
      ASSERT_EQ(fixedPoint(decimal), printed(decimal));
   }
}

} // namespace
