#include "RsvpLer/text/NaturalOrder.h"
#include "tests/support/Sanitized.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The comparison against a second telling of the same order: each text is turned into a row of numbers once,
// and rows compare lexicographically. That the comparison agrees with such rows also proves it irreflexive,
// asymmetric and transitive, equivalence included.

namespace {

using SortKey = std::vector<int>;

bool isDigit(char c) {
   return c >= '0' && c <= '9';
}

// A number less than any byte's and any digit's: closes a run of digits.
constexpr int runEnd = -1000;

void addDigits(SortKey& key, std::string_view text, std::size_t from, std::size_t to) {
   for (std::size_t i = from; i < to; ++i)
      key.push_back(text[i]);
   key.push_back(runEnd);
}

// Every run of digits is entered as one '0', which puts it between the characters before and behind the
// digits.
void addRun(SortKey& key, std::string_view text, std::size_t from, std::size_t to) {
   key.push_back('0');
   if (from > 0 && text[from - 1] == '.') {
      while (to > from && text[to - 1] == '0')
         --to;
   } else {
      while (from < to && text[from] == '0')
         ++from;
      key.push_back(static_cast<int>(to - from));
   }
   addDigits(key, text, from, to);
}

void addByte(SortKey& key, char c) {
   int const value = static_cast<unsigned char>(c);
   if (value >= 128)
      key.push_back(value - 256);
   else
      key.push_back(value >= 'A' && value <= 'Z' ? value + 32 : value);
}

SortKey sortKey(std::string_view text) {
   SortKey key;
   for (std::size_t i = 0; i < text.size();) {
      std::size_t next = i + 1;
      if (isDigit(text[i])) {
         while (next < text.size() && isDigit(text[next]))
            ++next;
         addRun(key, text, i, next);
      } else {
         addByte(key, text[i]);
         while (text[i] == ' ' && next < text.size() && text[next] == ' ')
            ++next;
         if (next == text.size() && next > i + 1)
            key.push_back(0);
      }
      i = next;
   }
   return key;
}

bool isBefore(std::string const& left, std::string const& right) {
   return SI::natural::_compare<char, char const*>(left.data(), left.data() + left.size(), right.data(),
                                                   right.data() + right.size());
}

std::vector<std::string> allTexts(std::string_view alphabet, std::size_t longest) {
   std::vector<std::string> texts = {""};
   std::size_t from = 0;
   for (std::size_t length = 1; length <= longest; ++length) {
      std::size_t const to = texts.size();
      for (std::size_t i = from; i < to; ++i)
         for (char const c : alphabet)
            texts.push_back(texts[i] + c);
      from = to;
   }
   return texts;
}

// The place of each text's key among the keys of all.
std::vector<std::size_t> ranks(std::vector<std::string> const& texts) {
   std::map<SortKey, std::size_t> places;
   for (std::string const& text : texts)
      places[sortKey(text)] = 0;
   std::size_t place = 0;
   for (auto& [key, rank] : places)
      rank = place++;
   std::vector<std::size_t> result;
   for (std::string const& text : texts)
      result.push_back(places[sortKey(text)]);
   return result;
}

// Reports the first pairs in which the comparison and the ranks disagree.
class Disagreements {
public:
   void check(std::string const& left, std::string const& right, bool expected) {
      if (isBefore(left, right) == expected)
         return;
      if (++count_ <= 10)
         ADD_FAILURE() << testing::PrintToString(left) << (expected ? " isn't before " : " is before ")
                       << testing::PrintToString(right);
   }
   std::size_t count() const { return count_; }

private:
   std::size_t count_ = 0;
};

constexpr std::string_view smallAlphabet = "01. aA\xc8";

TEST(NaturalOrderProperty, agreesWithTheKeysOfAllPairsUpToFourBytes) {
   std::vector<std::string> const texts = allTexts(smallAlphabet, 4);
   ASSERT_EQ(texts.size(), 1U + 7U + 49U + 343U + 2401U);
   std::vector<std::size_t> const rank = ranks(texts);
   Disagreements disagreements;
   for (std::size_t i = 0; i < texts.size(); ++i)
      for (std::size_t j = 0; j < texts.size(); ++j)
         disagreements.check(texts[i], texts[j], rank[i] < rank[j]);
   EXPECT_EQ(disagreements.count(), 0U);
}

// Up to five bytes: each text against a share of all others that shifts from text to text, and against those
// that follow it most closely.
TEST(NaturalOrderProperty, agreesWithTheKeysOfPairsUpToFiveBytes) {
   std::vector<std::string> texts = allTexts(smallAlphabet, 5);
   std::stable_sort(texts.begin(), texts.end(),
                    [](std::string const& a, std::string const& b) { return sortKey(a) < sortKey(b); });
   std::vector<std::size_t> const rank = ranks(texts);
   Disagreements disagreements;
   for (std::size_t i = 0; i < texts.size(); ++i) {
      for (std::size_t j = i % 97; j < texts.size(); j += 97)
         disagreements.check(texts[i], texts[j], rank[i] < rank[j]);
      for (std::size_t j = i; j < std::min(i + 20, texts.size()); ++j) {
         disagreements.check(texts[i], texts[j], rank[i] < rank[j]);
         disagreements.check(texts[j], texts[i], rank[j] < rank[i]);
      }
   }
   EXPECT_EQ(disagreements.count(), 0U);
}

// The key in bytes; what it writes beyond the room that it asks for is noticed.
std::string byteKey(std::string const& text) {
   std::string bytes(SI::natural::sortKeyRoom(text.size()) + 8, '\x7f');
   char* const end = SI::natural::putSortKey(bytes.data(), text);
   auto const size = static_cast<std::size_t>(end - bytes.data());
   EXPECT_LE(size, SI::natural::sortKeyRoom(text.size())) << testing::PrintToString(text);
   EXPECT_EQ(bytes.substr(SI::natural::sortKeyRoom(text.size())), std::string(8, '\x7f'));
   bytes.resize(size);
   return bytes;
}

// Both kinds of keys are totally ordered, so that neighbours tell of all pairs.
TEST(NaturalOrderProperty, bytesOfKeysOrderAllTextsUpToSixBytes) {
   std::vector<std::pair<SortKey, std::string>> keys;
   for (std::string const& text : allTexts(smallAlphabet, 6))
      keys.emplace_back(sortKey(text), byteKey(text));
   std::sort(keys.begin(), keys.end());
   ASSERT_GT(keys.size(), 130000U);
   std::size_t wrong = 0;
   for (std::size_t i = 1; i < keys.size(); ++i) {
      bool const different = keys[i - 1].first != keys[i].first;
      if (different ? !(keys[i - 1].second < keys[i].second) : keys[i - 1].second != keys[i].second)
         ++wrong;
   }
   EXPECT_EQ(wrong, 0U);
}

TEST(NaturalOrderProperty, bytesOfKeysOrderLongRunsOfDigits) {
   std::vector<std::pair<SortKey, std::string>> keys;
   for (std::size_t digits : {1u, 7u, 8u, 9u, 10u, 255u, 256u, 65535u, 65536u}) {
      for (char const first : {'0', '1', '9'}) {
         for (char const* const end : {"", ".", "a", " "}) {
            for (char const* const begin : {"t", "t."}) {
               std::string text = begin;
               text.append(1, first).append(digits - 1, '5').append(end);
               keys.emplace_back(sortKey(text), byteKey(text));
            }
         }
      }
   }
   std::size_t wrong = 0;
   for (auto const& left : keys) {
      for (auto const& right : keys)
         wrong += (left.first < right.first) != (left.second < right.second) ? 1 : 0;
   }
   EXPECT_EQ(wrong, 0U);
}

class RandomNames {
public:
   std::string name() {
      std::string result;
      for (unsigned i = below(14); i > 0; --i)
         result += byte();
      return result;
   }
   // A name that differs from another in one place, so that the two have much in common.
   std::string variant(std::string name) {
      std::size_t const at = below(static_cast<unsigned>(name.size()) + 1);
      if (at < name.size() && below(2) == 0)
         name.erase(at, 1);
      else
         name.insert(at, 1, byte());
      return name;
   }

private:
   unsigned below(unsigned limit) { return std::uniform_int_distribution<unsigned>(0, limit - 1)(engine_); }
   // Mostly bytes that mean something to the order, at times any byte at all, a NUL too.
   char byte() {
      constexpr std::string_view telling("0012359...   aAbBzZ_-\t\0\x80\xff", 24);
      return below(8) == 0 ? static_cast<char>(below(256)) : telling[below(static_cast<unsigned>(telling.size()))];
   }

   std::mt19937 engine_{20240229};
};

TEST(NaturalOrderProperty, agreesWithTheKeysOfRandomNames) {
   RandomNames names;
   Disagreements disagreements;
   for (int i = 0; i < (Tests::isSanitized ? 10000 : 100000); ++i) {
      std::string const name = names.name();
      std::string const variant = names.variant(name);
      std::string const other = names.name();
      disagreements.check(name, name, false);
      for (std::string const& second : {variant, names.variant(variant), other}) {
         disagreements.check(name, second, sortKey(name) < sortKey(second));
         disagreements.check(second, name, sortKey(second) < sortKey(name));
         EXPECT_EQ(byteKey(name) < byteKey(second), isBefore(name, second))
               << testing::PrintToString(name) << testing::PrintToString(second);
      }
   }
   EXPECT_EQ(disagreements.count(), 0U);
}

} // namespace
