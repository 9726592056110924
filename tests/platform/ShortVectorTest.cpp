#include "vane/ShortVector.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using Texts = Vane::ShortVector<std::string, 3>;

// Long enough to have memory of its own, so that a sanitizer sees what becomes of it.
std::string text(int number) {
   return "an item of the list with the number " + std::to_string(number);
}

TEST(ShortVector, KeepsItsItemsInOrderPastItsOwnRoom) {
   Texts texts;
   EXPECT_TRUE(texts.empty());
   for (int count = 1; count <= 10; ++count) {
      texts.push_back(text(count));
      ASSERT_EQ(texts.size(), static_cast<std::size_t>(count));
      ASSERT_EQ(std::distance(texts.begin(), texts.end()), count);
      for (int i = 0; i < count; ++i)
         EXPECT_EQ(texts.begin()[i], text(i + 1)) << "of " << count;
   }
}

TEST(ShortVector, IsAPlainValue) {
   for (int count : {0, 2, 3, 4, 7}) {
      Texts texts;
      for (int i = 0; i < count; ++i)
         texts.push_back(text(i));
      Texts copy = texts;
      EXPECT_EQ(copy, texts);
      copy.push_back(text(100));
      EXPECT_NE(copy, texts);
      EXPECT_EQ(texts.size(), static_cast<std::size_t>(count));
   }
}

TEST(ShortVector, CanBeSorted) {
   for (int count : {3, 4, 9}) {
      Texts texts;
      for (int i = count; i > 0; --i)
         texts.push_back(text(i));
      std::sort(texts.begin(), texts.end());
      EXPECT_TRUE(std::is_sorted(texts.begin(), texts.end()));
      EXPECT_EQ(*texts.begin(), text(1));
   }
}

} // namespace
