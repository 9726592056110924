#include "brindle/GenericValue.h"

#include <gtest/gtest.h>

using namespace Brindle;

namespace {

struct Record : Node {
   int number = 0;
};
struct Derived : Record {};
struct Point {
   int x = 0;
   int y = 0;
};
enum class Colour : std::uint8_t { red = 0, green = 7 };
enum class Shape : std::uint8_t { round = 7 };

// How many of some types the value holds.
int typesOf(GenericValue const& value) {
   return value.holds<bool>() + value.holds<std::uint8_t>() + value.holds<std::uint16_t>() +
          value.holds<std::uint32_t>() + value.holds<std::uint64_t>() + value.holds<String>() + value.holds<Colour>() +
          value.holds<Shape>() + value.holds<Ptr<Record>>() + value.holds<Ptr<Derived>>() + value.holds<Point>();
}

} // namespace

TEST(GenericValue, holdsExactlyItsType) {
   EXPECT_TRUE(GenericValue().empty());
   EXPECT_EQ(typesOf(GenericValue()), 0);
   GenericValue const values[] = {true,        std::uint8_t{1}, std::uint16_t{1}, std::uint32_t{1},   std::uint64_t{1},
                                  String("1"), Colour::green,   Shape::round,     makeNode<Record>(), Ptr<Derived>(),
                                  Point{1, 2}};
   for (GenericValue const& value : values) {
      EXPECT_EQ(typesOf(value), 1);
      EXPECT_FALSE(value.empty());
   }
   EXPECT_EQ(values[4].get<std::uint64_t>(), 1u);
   EXPECT_EQ(values[5].get<String>(), "1");
   EXPECT_EQ(values[6].get<Colour>(), Colour::green);
   EXPECT_TRUE(values[8].get<Ptr<Record>>());
   EXPECT_FALSE(values[9].get<Ptr<Derived>>());
   EXPECT_EQ(values[10].get<Point>().y, 2);
   EXPECT_DEATH(values[3].get<std::uint64_t>(), "a generic value holds another type");
}

TEST(GenericValue, countsItsHandle) {
   auto const record = makeNode<Record>();
   {
      GenericValue const value = record;
      EXPECT_EQ(record->userCount(), 2u);
      GenericValue copy = value;
      EXPECT_EQ(record->userCount(), 3u);
      copy = GenericValue();
      EXPECT_EQ(record->userCount(), 2u);
      EXPECT_EQ(value.get<Ptr<Record>>(), record);
   }
   EXPECT_EQ(record->userCount(), 1u);
}

TEST(GenericValue, constIsKept) {
   auto const record = makeNode<Record>();
   GenericValue changeable = record;
   GenericValue readOnly = Ptr<Record const>(record);
   EXPECT_TRUE(changeable.holds<Ptr<Record const>>());
   EXPECT_FALSE(readOnly.holds<Ptr<Record>>());
   EXPECT_EQ(changeable.object<Record>(), record.get());
   EXPECT_EQ(readOnly.object<Record const>(), record.get());
   EXPECT_EQ(readOnly.object<Record>(), nullptr);
   EXPECT_EQ(changeable.object<Derived>(), nullptr);
   EXPECT_EQ(GenericValue(Ptr<Record>()).object<Record>(), nullptr);
}

TEST(GenericValue, copiesItsValue) {
   GenericValue value = Point{1, 2};
   GenericValue const copy = value;
   value.object<Point>()->x = 5;
   EXPECT_EQ(value.get<Point>().x, 5);
   EXPECT_EQ(copy.get<Point>().x, 1);
   EXPECT_EQ(value.object<String>(), nullptr);
   value = copy;
   EXPECT_EQ(value.get<Point>().x, 1);
}
