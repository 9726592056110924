#include "host/state/NameTable.h"

#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

// In order, which needs no search, and in any other; the empty name among them, which has no text of its own.
TEST(NameTable, HasOneStringOfEachText) {
   Host::NameTable names;
   std::map<std::string, char const*> first;
   Tests::Random random(1);
   for (int round = 0; round < 20; ++round) {
      for (std::uint32_t i = 0; i < 300; ++i) {
         std::uint32_t const number = round % 2 == 0 ? i : random.below(400);
         std::string const text = number == 7 ? "" : "pe" + std::to_string(number);
         Fathom::String const name = names.name(text);
         ASSERT_EQ(name.view(), text);
         ASSERT_EQ(name.c_str(), first.try_emplace(text, name.c_str()).first->second) << text;
      }
   }
   EXPECT_EQ(first.size(), 400u);
}

} // namespace
