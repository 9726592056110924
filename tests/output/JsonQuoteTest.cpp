#include "RsvpLer/output/JsonQuote.h"

#include "RsvpLer/output/RendererV2.h"
#include "tests/support/MemoryBuffer.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <random>
#include <string>
#include <vector>

namespace {

using scrivo::helpers::jsonQuote;
using scrivo::helpers::quotedSize;

// One byte at a time, by the rules and without any table.
std::string reference(std::string const& text) {
   std::string out;
   for (char c : text) {
      auto const byte = static_cast<unsigned char>(c);
      if (c == '"' || c == '\\')
         out += {'\\', c};
      else if (byte == 8)
         out += "\\b";
      else if (byte == 9)
         out += "\\t";
      else if (byte == 10)
         out += "\\n";
      else if (byte == 12)
         out += "\\f";
      else if (byte == 13)
         out += "\\r";
      else if (byte < 32)
         out += std::string("\\u00") + (byte < 16 ? '0' : '1') + "0123456789ABCDEF"[byte % 16];
      else
         out += c;
   }
   return out;
}

std::string escaped(std::string const& text) {
   std::string out(quotedSize(text).size, '?');
   auto const result = jsonQuote(text.data(), text.data() + text.size(), out.data());
   EXPECT_EQ(result.end, out.data() + out.size());
   EXPECT_EQ(result.trivial, quotedSize(text).trivial);
   return out;
}

// The same text by every road through the renderer.
void expectQuoted(std::string const& text, std::string const& expected) {
   EXPECT_EQ(escaped(text), expected);
   EXPECT_EQ(quotedSize(text).size, expected.size());
   EXPECT_EQ(quotedSize(text).trivial, text == expected);

   Tests::MemoryBuffer buffer;
   scrivo::RendererV2 renderer(scrivo::OutputFormat_t::json, &buffer, true);
   renderer.writeQuotedString(text);
   EXPECT_EQ(buffer.text(), expected);
   buffer.clear();
   renderer.writeJsonValue(text);
   EXPECT_EQ(buffer.text(), '"' + expected + '"');
   buffer.clear();
   renderer.startJsonDict(text);
   EXPECT_EQ(buffer.text(), '"' + expected + "\":{");
   buffer.clear();
   renderer.addJsonKeyValuePair("k", text);
   EXPECT_EQ(buffer.text(), "\"k\":\"" + expected + '"');
}

TEST(JsonQuote, Rows) {
   struct Row {
      std::string text;
      std::string expected;
   };
   std::vector<Row> const rows{
         {"", ""},
         {"plain", "plain"},
         {"\"", "\\\""},
         {"\\", "\\\\"},
         {"/", "/"},
         {std::string(1, '\0'), "\\u0000"},
         {"\x01", "\\u0001"},
         {"\b\t\n\f\r", "\\b\\t\\n\\f\\r"},
         {"\x0b", "\\u000B"},
         {"\x0e", "\\u000E"},
         {"\x1f", "\\u001F"},
         {" ", " "},
         {"\x7f", "\x7f"},
         {"\x80\xff", "\x80\xff"},
         {"t\xc3\xbcr", "t\xc3\xbcr"},
         {"a\"b\\c\nd", "a\\\"b\\\\c\\nd"},
         {std::string("a\0b", 3), "a\\u0000b"},
         {std::string(64, 'x'), std::string(64, 'x')},
         {std::string(65, 'x'), std::string(65, 'x')},
         {std::string(70, '"'),
          [] {
             std::string all;
             for (int i = 0; i < 70; ++i)
                all += "\\\"";
             return all;
          }()},
   };
   for (Row const& row : rows)
      expectQuoted(row.text, row.expected);
}

TEST(JsonQuote, TheSizeOfADoubleQuoteIsTwo) {
   EXPECT_EQ(quotedSize("\"").size, 2u);
   EXPECT_FALSE(quotedSize("\"").trivial);
}

TEST(JsonQuote, EmptyInputLeavesTheDestination) {
   char place = 'x';
   auto const result = jsonQuote(nullptr, nullptr, &place);
   EXPECT_TRUE(result.trivial);
   EXPECT_EQ(result.end, &place);
   EXPECT_EQ(place, 'x');
}

TEST(JsonQuote, EveryByteInEveryPlaceOfEveryLength) {
   for (char surrounding : {'a', '\xff', '!'})
      for (std::size_t length = 1; length <= 20; ++length)
         for (std::size_t place = 0; place < length; ++place)
            for (unsigned byte = 0; byte < 256; ++byte) {
               std::string text(length, surrounding);
               text[place] = static_cast<char>(byte);
               std::string const expected = reference(text);
               ASSERT_EQ(escaped(text), expected) << "byte " << byte << " at " << place << " of " << length;
               std::string copy(length, '?');
               bool const trivial = scrivo::helpers::copyIfTrivial(copy.data(), text);
               ASSERT_EQ(trivial, text == expected) << "byte " << byte << " at " << place << " of " << length;
               if (trivial) {
                  ASSERT_EQ(copy, text);
               }
            }
}

TEST(JsonQuote, RandomBytesThroughEveryRoad) {
   std::mt19937 random(1);
   for (int round = 0; round < 3000; ++round) {
      std::string text(random() % 150, ' ');
      // Few escapes in some rounds and many in others.
      unsigned const spread = round % 3 == 0 ? 256 : 40;
      for (char& c : text)
         c = static_cast<char>(round % 3 == 1 && random() % 30 != 0 ? 'a' : random() % spread);
      expectQuoted(text, reference(text));
   }
}

TEST(JsonQuote, AnotherParserReadsItBack) {
   std::mt19937 random(2);
   for (int round = 0; round < 2000; ++round) {
      std::string text;
      for (std::size_t i = random() % 40; i != 0; --i) {
         unsigned const point = random() % 0x800;
         if (point < 0x80) {
            text += static_cast<char>(point);
         } else {
            text += static_cast<char>(0xc0 | point >> 6);
            text += static_cast<char>(0x80 | (point & 0x3f));
         }
      }
      ASSERT_EQ(nlohmann::json::parse('"' + escaped(text) + '"').get<std::string>(), text);
   }
}

} // namespace
