#include "RsvpLer/summary/SummaryTable.h"

#include <gtest/gtest.h>

using namespace Rsvp::Cli;

TEST(SummaryTable, digits) {
   struct {
      std::uint32_t number;
      std::size_t digits;
   } const rows[] = {{0, 1}, {9, 1}, {10, 2}, {99, 2}, {100, 3}, {999999999, 9}, {1000000000, 10}, {4294967295, 10}};
   for (auto const& test : rows)
      EXPECT_EQ(digitCount(test.number), test.digits) << test.number;
}

TEST(SummaryTable, aWidthGrowsToTheTextAndNotPastAByte) {
   struct {
      std::uint8_t width;
      std::size_t length;
      std::uint8_t after;
   } const rows[] = {{5, 4, 5}, {5, 5, 5}, {5, 6, 6}, {5, 255, 255}, {5, 256, 255}, {5, 100000, 255}, {255, 3, 255}};
   for (auto const& test : rows) {
      std::uint8_t width = test.width;
      raiseWidth(width, test.length);
      EXPECT_EQ(width, test.after) << test.length;
   }
}
