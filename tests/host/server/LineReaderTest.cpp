#include "host/server/LineReader.h"

#include "host/server/Descriptor.h"
#include "host/server/SendAll.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <chrono>
#include <string>
#include <vector>

namespace Host {

namespace {

using namespace std::chrono_literals;

class LineReaderTest : public testing::Test {
protected:
   LineReaderTest() {
      int ends[2];
      if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) == 0) {
         here_ = Descriptor(ends[0]);
         there_ = Descriptor(ends[1]);
      }
   }
   void come(std::string const& text) { ASSERT_TRUE(sendAll(there_.get(), text, 1s)); }
   std::vector<std::string> lines(LineReader& reader) {
      std::vector<std::string> all;
      while (std::optional<Line> const line = reader.take()) {
         EXPECT_GE(line->capacity, line->text.size() + 64);
         all.emplace_back(line->text);
      }
      return all;
   }

   Descriptor here_;
   Descriptor there_;
};

using Lines = std::vector<std::string>;
using Fill = LineReader::Fill;

TEST_F(LineReaderTest, CutsLinesWhereverTheyWereCutBefore) {
   LineReader reader(here_.get(), 100);
   EXPECT_EQ(reader.fill(), Fill::nothing);
   come("a");
   EXPECT_EQ(reader.fill(), Fill::more);
   EXPECT_EQ(lines(reader), Lines());
   EXPECT_EQ(reader.rest().text, "a");
   come("b\n\ncd\ne");
   EXPECT_EQ(reader.fill(), Fill::more);
   EXPECT_EQ(lines(reader), (Lines{"ab", "", "cd"}));
   there_ = Descriptor();
   EXPECT_EQ(reader.fill(), Fill::end);
   EXPECT_EQ(lines(reader), Lines());
   EXPECT_EQ(reader.rest().text, "e");
   reader.drop();
   EXPECT_EQ(reader.rest().text, "");
}

TEST_F(LineReaderTest, GrowsWithALineAndShrinksAfterIt) {
   LineReader reader(here_.get(), 10'000'000);
   std::string const big(1'000'000, 'x');
   for (std::size_t at = 0; at < big.size(); at += 50'000) {
      come(big.substr(at, 50'000));
      ASSERT_EQ(reader.fill(), Fill::more);
      EXPECT_EQ(lines(reader), Lines());
   }
   come("\nnext\n");
   while (reader.fill() == Fill::more)
      ;
   std::vector<std::string> const got = lines(reader);
   ASSERT_EQ(got.size(), 2u);
   EXPECT_EQ(got[0], big);
   EXPECT_EQ(got[1], "next");
   come("z");
   EXPECT_EQ(reader.fill(), Fill::more);
   EXPECT_LT(reader.rest().capacity, 300'000u);
   EXPECT_EQ(reader.rest().text, "z");
}

TEST_F(LineReaderTest, TellsWhenALineIsTooLong) {
   LineReader reader(here_.get(), 4);
   come("abcd");
   reader.fill();
   EXPECT_FALSE(reader.tooLong());
   come("e");
   reader.fill();
   EXPECT_FALSE(reader.take());
   EXPECT_TRUE(reader.tooLong());
}

} // namespace

} // namespace Host
