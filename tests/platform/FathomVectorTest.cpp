#include "fathom/Vector.h"
#include "tests/support/CountedRecord.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Strings = Fathom::Vector<std::string>;

TEST(FathomVector, IsEmptyByDefault) {
   for (Strings const& vector : {Strings(), Strings{}, Strings(std::vector<std::string>())}) {
      EXPECT_EQ(vector.size(), 0u);
      EXPECT_TRUE(vector.empty());
      EXPECT_EQ(vector.begin(), vector.end());
      EXPECT_EQ(vector, Strings());
   }
}

TEST(FathomVector, KeepsTheElementsInOrder) {
   Strings const vector{"b", "a", "b"};
   EXPECT_EQ(std::vector<std::string>(vector.begin(), vector.end()), (std::vector<std::string>{"b", "a", "b"}));
   EXPECT_EQ(vector.size(), 3u);
   EXPECT_EQ(vector[1], "a");
}

TEST(FathomVector, CopiesPlainElements) {
   int numbers[] = {3, 1, 2};
   Fathom::Vector<int> const vector(numbers, 3);
   numbers[0] = 0;
   EXPECT_EQ(vector, (Fathom::Vector<int>{3, 1, 2}));
   EXPECT_TRUE(Fathom::Vector<int>(numbers, 0).empty());
}

TEST(FathomVector, ACopySharesTheElements) {
   Strings const vector{"a", "b"};
   Strings copy;
   copy = vector;
   EXPECT_EQ(copy.begin(), vector.begin());
   EXPECT_EQ(copy, vector);
}

TEST(FathomVector, EqualityIsThatOfTheElements) {
   EXPECT_EQ((Strings{"a", "b"}), (Strings{"a", "b"}));
   EXPECT_FALSE((Strings{"a", "b"}) == (Strings{"b", "a"}));
   EXPECT_FALSE((Strings{"a"}) == (Strings{"a", "b"}));
   EXPECT_FALSE((Strings{"a"}) == Strings());
}

TEST(FathomVector, TheLastCopyTakesTheElementsAlong) {
   ASSERT_EQ(Tests::CountedRecord::alive(), 0);
   {
      Fathom::Vector<Tests::CountedPtr> last;
      {
         Fathom::Vector<Tests::CountedPtr> const first{Tests::countedRecord(1), Tests::countedRecord(2)};
         last = first;
      }
      EXPECT_EQ(Tests::CountedRecord::alive(), 2);
      EXPECT_TRUE(last[1]->isWhole(2));
   }
   EXPECT_EQ(Tests::CountedRecord::alive(), 0);
}

TEST(FathomVectorDeathTest, AnIndexPastTheEndAsserts) {
   Strings const vector{"a"};
   EXPECT_DEATH(static_cast<void>(vector[1]), "assertion failed: index < size\\(\\)");
   EXPECT_DEATH(static_cast<void>(Strings()[0]), "assertion failed: index < size\\(\\)");
}

} // namespace
