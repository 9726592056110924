#include "vane/FlatMap.h"

#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

using Map = Vane::FlatMap<std::uint32_t, std::string>;
using Set = Vane::FlatSet<std::string>;

std::string textOf(Map const& map) {
   std::string text;
   for (auto const& [key, value] : map)
      text += std::to_string(key) + value + ' ';
   return text;
}

std::vector<std::string> keysOf(Set const& set) {
   return {set.begin(), set.end()};
}

TEST(FlatMap, DoesWhatAModelDoes) {
   for (std::uint32_t seed = 1; seed <= 8; ++seed) {
      Tests::Random random(seed);
      Map map;
      std::map<std::uint32_t, std::string> model;
      for (int step = 0; step < 500; ++step) {
         std::uint32_t const key = random.below(40);
         std::string const value = std::to_string(step);
         if (random.below(2) == 0)
            ASSERT_EQ(map.insert(key, value), model.emplace(key, value).second);
         else
            ASSERT_EQ(map.erase(key), model.erase(key) == 1);
         ASSERT_EQ(map.size(), model.size());
         ASSERT_EQ(map.empty(), model.empty());
         auto expected = model.begin();
         for (auto const& [k, v] : map) {
            ASSERT_EQ(k, expected->first);
            ASSERT_EQ(v, expected->second);
            ++expected;
         }
         std::uint32_t const sought = random.below(40);
         auto const at = model.find(sought);
         ASSERT_EQ(map.contains(sought), at != model.end());
         ASSERT_EQ(map.find(sought) == map.end(), at == model.end());
         ASSERT_EQ(map.valueOf(sought) == nullptr, at == model.end());
         if (at != model.end()) {
            ASSERT_EQ(map.find(sought)->value, at->second);
            ASSERT_EQ(*map.valueOf(sought), at->second);
         }
      }
   }
}

TEST(FlatMap, KeepsTheFirstOfItemsWithOneKey) {
   EXPECT_EQ(textOf(Map{{3, "c"}, {1, "a"}, {3, "d"}, {2, "b"}, {1, "e"}}), "1a 2b 3c ");
   Map map{{1, "a"}};
   EXPECT_FALSE(map.insert(1, "b"));
   EXPECT_EQ(textOf(map), "1a ");
}

TEST(FlatMap, EqualityIsThatOfTheItems) {
   EXPECT_EQ((Map{{1, "a"}, {2, "b"}}), (Map{{2, "b"}, {1, "a"}}));
   EXPECT_FALSE((Map{{1, "a"}}) == (Map{{1, "b"}}));
   EXPECT_FALSE((Map{{1, "a"}}) == (Map{{2, "a"}}));
   EXPECT_FALSE((Map{{1, "a"}}) == Map{});
}

TEST(FlatMap, IsEmptyAfterClear) {
   Map map{{1, "a"}};
   map.clear();
   map.reserve(10);
   EXPECT_EQ(map, Map{});
}

TEST(FlatSet, HoldsKeysInAscendingOrderOnce) {
   Set set{"b", "a", "c", "a"};
   EXPECT_EQ(keysOf(set), (std::vector<std::string>{"a", "b", "c"}));
   EXPECT_FALSE(set.insert("b"));
   EXPECT_TRUE(set.insert("d"));
   EXPECT_TRUE(set.insert("aa"));
   EXPECT_TRUE(set.erase("a"));
   EXPECT_FALSE(set.erase("a"));
   EXPECT_EQ(keysOf(set), (std::vector<std::string>{"aa", "b", "c", "d"}));
   EXPECT_TRUE(set.contains("aa"));
   EXPECT_FALSE(set.contains("a"));
   EXPECT_EQ(set, (Set{"d", "c", "b", "aa"}));
}

} // namespace
