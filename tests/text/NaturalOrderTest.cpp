#include "RsvpLer/text/NaturalOrder.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

using namespace std::string_literals;

namespace {

// The texts stand in buffers of their exact length, so that a sanitizer sees a read at or behind the end.
bool isBefore(std::string_view left, std::string_view right) {
   auto const l = std::make_unique<char[]>(left.size());
   auto const r = std::make_unique<char[]>(right.size());
   left.copy(l.get(), left.size());
   right.copy(r.get(), right.size());
   return SI::natural::_compare<char, char const*>(l.get(), l.get() + left.size(), r.get(), r.get() + right.size());
}

enum class Expected { before, equivalent };

struct OrderRow {
   std::string left;
   Expected expected;
   std::string right;
};

constexpr Expected before = Expected::before;
constexpr Expected equivalent = Expected::equivalent;

void expectOrder(std::initializer_list<OrderRow> rows) {
   for (OrderRow const& row : rows) {
      EXPECT_EQ(isBefore(row.left, row.right), row.expected == before)
            << '"' << row.left << "\" \"" << row.right << '"';
      EXPECT_FALSE(isBefore(row.right, row.left)) << '"' << row.right << "\" \"" << row.left << '"';
   }
}

TEST(NaturalOrder, anEmptyTextComesFirst) {
   expectOrder({
         {"", equivalent, ""},
         {"", before, "a"},
         {"", before, " "},
         {"", before, "0"},
         {"", before, "\0"s},
         {"", before, "\xff"},
   });
}

TEST(NaturalOrder, aTextThatRunsOutFirstIsBefore) {
   expectOrder({
         {"a", before, "ab"},
         {"a", before, "a0"},
         {"a", before, "a\xff"},
         {"a", before, "a\0"s},
         {"1", before, "1a"},
         {"1.", before, "1.0"},
         {"a", equivalent, "a"},
   });
}

TEST(NaturalOrder, runsOfDigitsCompareAsIntegers) {
   expectOrder({
         {"tunnel2", before, "tunnel10"},
         {"tunnel02", equivalent, "tunnel2"},
         {"007", equivalent, "7"},
         {"0", equivalent, "000"},
         {"0", before, "1"},
         {"009", before, "10"},
         {"19", before, "21"},
         {"121", before, "122"},
         {"rel9", before, "rel10"},
         {"a1b2", before, "a1b10"},
         {"a01b2", before, "a1b10"},
         {"a2b1", before, "a10b0"},
         {"t1 ", before, "t01 x"},
         {"99999999999999999999999999999998", before, "99999999999999999999999999999999"},
         {"99999999999999999999999999999999", before, "100000000000000000000000000000000"},
         {"18446744073709551616", before, "18446744073709551617"},
   });
}

TEST(NaturalOrder, runsBehindAPointCompareAsFractions) {
   expectOrder({
         {"rel1.5", equivalent, "rel1.50"},
         {"rel1.05", before, "rel1.5"},
         {"rel1.10", before, "rel1.9"},
         {"rel1.0", equivalent, "rel1.000"},
         {"rel1.5", before, "rel1.501"},
         {"rel1.49", before, "rel1.5"},
         {"rel1.05", before, "rel1.1"},
         {"rel1.5a", before, "rel1.50b"},
         {".5", equivalent, ".50"},
         {".10", before, ".9"},
         {"a.10", before, "a.9"},
         {"1.9.10", before, "1.91"},
         {"1.1.10", before, "1.1.9"},
         {"1. 9", before, "1. 10"},
         {"1.a9", before, "1.a10"},
         {"1,9", before, "1,10"},
   });
}

TEST(NaturalOrder, lettersCompareWithoutTheirCase) {
   expectOrder({
         {"abc", equivalent, "ABC"},
         {"aBc", equivalent, "AbC"},
         {"A", before, "b"},
         {"z", equivalent, "Z"},
         {"a", before, "B"},
         {"Z", before, "{"},
         {"@", before, "A"},
         {"[", before, "A"},
         {"_", before, "A"},
         {"_", before, "a"},
         {"9", before, "_"},
         {"`", before, "A"},
   });
}

TEST(NaturalOrder, otherBytesCompareByCode) {
   expectOrder({
         {"10", before, "a"},
         {"/", before, "0"},
         {"9", before, ":"},
         {"-", before, "1"},
         {"\t", before, " "},
         {"\x80", before, "\xff"},
         {"\xff", before, "\x01"},
         {"\xff", before, "\0"s},
         {"\xc3\xa4", before, "a"},
         {"\xc4", before, "\xe4"}, // not lowered in any locale
         {"\0"s, before, "\x01"},
         {"a\0b"s, before, "a\0c"s},
         {"a\0b"s, before, "a b"},
   });
}

TEST(NaturalOrder, aRunOfBlanksCountsAsOne) {
   expectOrder({
         {"a  b", equivalent, "a b"},
         {"a     b", equivalent, "a  b"},
         {"  a", equivalent, " a"},
         {" a", before, "a"},
         {"a b", before, "ab"},
         {"a\t\tb", before, "a\tb"},
         {"a 2", before, "a  10"},
         {"a   c", before, "a d c"},
         {"a  b  c", equivalent, "a b c"},
   });
}

TEST(NaturalOrder, aRunOfBlanksAtTheEndEndsInANul) {
   expectOrder({
         {"a", before, "a "},
         {"a ", before, "a  "},
         {"a  ", equivalent, "a     "},
         {"a  ", before, "a b"},
         {"a  ", before, "a 0"},
         {"a  ", before, "a \x01"},
         {"a \x80", before, "a  "},
         {"a  ", equivalent, "a \0"s},
         {"a  ", before, "a \0b"s},
         {"a  ", equivalent, "a  \0"s},
         {" ", before, "  "},
         {"a b ", before, "a b  "},
         {"  ", equivalent, "   "},
         {"  ", before, "a"},
   });
}

TEST(NaturalOrder, onlyTheEndOfARangeEndsIt) {
   char const text[] = "a  9x";
   char const* const begin = text;
   char const* const behindBlanks = text + 3;
   char const* const behindDigit = text + 4;
   char const other[] = "a 10";
   char const* const otherBegin = other;
   char const* const otherBehindBlank = other + 2;
   char const* const otherEnd = other + 4;
   auto const compare = SI::natural::_compare<char, char const*>;
   EXPECT_TRUE(compare(begin, behindDigit, otherBegin, otherEnd));
   EXPECT_FALSE(compare(otherBegin, otherEnd, begin, behindDigit));
   EXPECT_TRUE(compare(begin, behindBlanks, otherBegin, otherEnd));
   EXPECT_TRUE(compare(otherBegin, otherBehindBlank, begin, behindBlanks));
}

TEST(NaturalOrder, onlyTheTenDigitsAreDigits) {
   for (int value = 0; value < 256; ++value) {
      auto const byte = static_cast<char>(value);
      bool const isDigit = std::string_view("0123456789").find(byte) != std::string_view::npos;
      EXPECT_EQ(SI::natural::detail::is_not_digit<char>(byte), !isDigit) << value;
   }
}

} // namespace
