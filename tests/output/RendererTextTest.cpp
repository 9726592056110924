#include "RsvpLer/output/RendererV2.h"
#include "fathom/String.h"
#include "tests/support/MemoryBuffer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace {

using Lattice::IpAddr;
using Lattice::IpGenAddr;
using scrivo::OutputFormat_t;
using scrivo::RendererV2;

std::string written(OutputFormat_t format, std::function<void(RendererV2&)> const& calls, std::size_t capacity = 4096) {
   Tests::MemoryBuffer buffer(capacity);
   RendererV2 renderer(format, &buffer, true);
   calls(renderer);
   return std::string(buffer.text());
}

struct Row {
   std::function<void(RendererV2&)> calls;
   std::string expected;
};

IpGenAddr const v6 = *IpGenAddr::parse("2001:db8::7");

std::vector<Row> const textRows{
      {[](auto& r) { r.addText("Name: ", Brindle::String("east")); }, "Name: east"},
      {[](auto& r) { r.addText("Name: ", Fathom::String("east")); }, "Name: east"},
      {[](auto& r) { r.addText("Name: ", std::string_view("ea\0st", 5)); }, std::string("Name: ea\0st", 11)},
      {[](auto& r) {
          char const* name = "east";
          r.addText("Name: ", name);
       },
       "Name: east"},
      {[](auto& r) { r.addText("   State: ", "up"); }, "   State: up"},
      {[](auto& r) { r.addText("", ""); }, ""},
      {[](auto& r) { r.addText(std::string("   ") + "MTU: ", 1500u); }, "   MTU: 1500"},
      {[](auto& r) { r.addText("A: ", std::uint8_t{65}); }, "A: 65"},
      {[](auto& r) { r.addText("A: ", std::uint16_t{65535}); }, "A: 65535"},
      {[](auto& r) { r.addText("A: ", std::uint32_t{0}); }, "A: 0"},
      {[](auto& r) { r.addText("A: ", 4294967295u); }, "A: 4294967295"},
      {[](auto& r) { r.addText("A: ", std::uint64_t{18446744073709551615u}); }, "A: 18446744073709551615"},
      {[](auto& r) { r.addText("To: ", IpAddr(10, 0, 0, 7)); }, "To: 10.0.0.7"},
      {[](auto& r) { r.addText("To: ", IpGenAddr(IpAddr(10, 0, 0, 7))); }, "To: 10.0.0.7"},
      {[](auto& r) { r.addText("To: ", v6); }, "To: 2001:db8::7"},
      {[](auto& r) { r.addText("\"\\\n", "\"\\\x01"); }, "\"\\\n\"\\\x01"}, // text is never escaped
      {[](auto& r) { r.addFrill(" (MBB)"); }, " (MBB)"},
      {[](auto& r) { r.addFrill(Brindle::String("      ")); }, "      "},
      {[](auto& r) { r.addFrill(std::string_view()); }, ""},
      {[](auto& r) { r.addFrillLeft(6, Brindle::String("abc"), ' '); }, "abc   "},
      {[](auto& r) { r.addFrillLeft(3, "abc", '-'); }, "abc"},
      {[](auto& r) { r.addFrillLeft(2, "abc", '-'); }, "abc"},
      {[](auto& r) { r.addFrillLeft(0, "", '-'); }, ""},
      {[](auto& r) { r.addFrillRight(6, Brindle::String("abc"), '-'); }, "---abc"},
      {[](auto& r) { r.addFrillRight(3, "abc", '-'); }, "abc"},
      {[](auto& r) { r.addFrillRight(2, "abc", '-'); }, "abc"},
      {[](auto& r) { r.addFrillRight(0, "", '-'); }, ""},
      {[](auto& r) { r.eol(); }, "\n"},
};

TEST(RendererText, OperationsWriteInTextAlone) {
   for (Row const& row : textRows) {
      EXPECT_EQ(written(OutputFormat_t::text, row.calls), row.expected);
      // From a buffer without any room, too.
      EXPECT_EQ(written(OutputFormat_t::text, row.calls, 0), row.expected);
      for (std::uint32_t other : {0u, 2u, 3u, 4294967295u})
         EXPECT_EQ(written(OutputFormat_t{other}, row.calls), "") << "format " << other;
   }
}

std::vector<Row> const writerRows{
      {[](auto& r) { r.writeChar('{'); }, "{"},
      {[](auto& r) { r.writeChar('\0'); }, std::string(1, '\0')},
      {[](auto& r) { r.writeString("}\n"); }, "}\n"},
      {[](auto& r) { r.writeString(std::string("\"a\"")); }, "\"a\""},
      {[](auto& r) { r.writeString(std::string_view()); }, ""},
      {[](auto& r) { r.writeString(static_cast<unsigned char>(65)); }, "65"},
      {[](auto& r) { r.writeString(static_cast<unsigned short>(65535)); }, "65535"},
      {[](auto& r) { r.writeString(0u); }, "0"},
      {[](auto& r) { r.writeString(18446744073709551615ul); }, "18446744073709551615"},
      {[](auto& r) { r.writeString(IpGenAddr(IpAddr(255, 255, 255, 255))); }, "255.255.255.255"},
      {[](auto& r) { r.writeString(IpGenAddr()); }, "::"},
      {[](auto& r) { r.writeString(v6); }, "2001:db8::7"},
      {[](auto& r) {
          r.writeString(Kerf::JustifyLeft<char const*>{5, "ab", '.'});
       },
       "ab..."},
      {[](auto& r) {
          r.writeString(Kerf::JustifyLeft<char const*>{2, "ab"});
       },
       "ab"},
      {[](auto& r) {
          r.writeString(Kerf::JustifyLeft<char const*>{1, "ab"});
       },
       "ab"},
      {[](auto& r) {
          r.writeString(Kerf::JustifyRight<char const*>{5, "ab"});
       },
       "   ab"},
      {[](auto& r) {
          r.writeString(Kerf::JustifyRight<char const*>{2, "ab"});
       },
       "ab"},
      {[](auto& r) {
          r.writeString(Kerf::JustifyRight<char const*>{1, "ab"});
       },
       "ab"},
      {[](auto& r) {
          r.writeString(Kerf::JustifyRight<std::uint32_t>{6, 42, '0'});
       },
       "000042"},
      {[](auto& r) {
          r.writeString(Kerf::JustifyRight<std::uint32_t>{1, 42});
       },
       "42"},
      {[](auto& r) {
          r.writeString(Kerf::JustifyRight<std::uint32_t>{120, 42});
       },
       std::string(118, ' ') + "42"},
      {[](auto& r) { r.writeQuotedString("a\"b"); }, "a\\\"b"},
      {[](auto& r) { r.writeQuotedString(""); }, ""},
      {[](auto& r) { r.writeJsonValue("a\"b"); }, "\"a\\\"b\""},
      {[](auto& r) { r.writeJsonValue(""); }, "\"\""},
};

TEST(RendererText, WritersWriteInEveryFormat) {
   for (Row const& row : writerRows)
      for (std::uint32_t format : {0u, 1u, 2u, 3u}) {
         EXPECT_EQ(written(OutputFormat_t{format}, row.calls), row.expected) << "format " << format;
         EXPECT_EQ(written(OutputFormat_t{format}, row.calls, 0), row.expected) << "format " << format;
      }
}

// The whole layout of a text in a column, by the rules: at exactly 100 the last byte is lost to a NUL.
std::string column(std::size_t width, std::string const& text, char fill, bool left) {
   std::string const padding(width - std::min(width, text.size()), fill);
   std::string laidOut = left ? text + padding : padding + text;
   if (laidOut.size() == 100)
      laidOut.back() = '\0';
   return laidOut;
}

// Bytes of which each differs from its neighbours, so that none can take the place of another.
std::string textOf(std::size_t length) {
   std::string text(length, ' ');
   for (std::size_t i = 0; i < length; ++i)
      text[i] = static_cast<char>('A' + i % 57);
   return text;
}

TEST(RendererText, ColumnsOfEveryLength) {
   for (std::size_t width : {0u, 1u, 15u, 16u, 17u, 63u, 64u, 65u, 98u, 99u, 100u, 101u, 102u, 255u, 300u})
      for (std::size_t length = 0; length <= 300; length += length < 110 ? 1 : 19) {
         std::string const text = textOf(length);
         for (std::size_t capacity : {0u, 64u, 101u, 4096u}) {
            EXPECT_EQ(written(
                            OutputFormat_t::text, [&](auto& r) { r.addFrillLeft(width, text, '.'); }, capacity),
                      column(width, text, '.', true));
            EXPECT_EQ(written(
                            OutputFormat_t::text, [&](auto& r) { r.addFrillRight(width, text, '.'); }, capacity),
                      column(width, text, '.', false));
            EXPECT_EQ(written(OutputFormat_t::text,
                              [&](auto& r) {
                                 r.writeString(Kerf::JustifyLeft<char const*>{width, text.c_str(), '.'});
                              }),
                      column(width, text, '.', true));
            EXPECT_EQ(written(OutputFormat_t::text,
                              [&](auto& r) {
                                 r.writeString(Kerf::JustifyRight<char const*>{width, text.c_str(), '.'});
                              }),
                      column(width, text, '.', false));
         }
      }
}

TEST(RendererText, ExactlyAHundredLosesItsLastCharacter) {
   std::string const nul(1, '\0');
   EXPECT_EQ(written(OutputFormat_t::text, [](auto& r) { r.addFrillLeft(10, std::string(100, 'x'), ' '); }),
             std::string(99, 'x') + nul);
   EXPECT_EQ(written(OutputFormat_t::text, [](auto& r) { r.addFrillRight(100, "ab", '-'); }),
             std::string(98, '-') + "a" + nul);
   EXPECT_EQ(written(OutputFormat_t::text,
                     [](auto& r) {
                        r.writeString(Kerf::JustifyRight<std::uint32_t>{100, 42, '-'});
                     }),
             std::string(98, '-') + "4" + nul);
   EXPECT_EQ(written(OutputFormat_t::text, [](auto& r) { r.addFrillLeft(99, "ab", '-'); }),
             "ab" + std::string(97, '-'));
   EXPECT_EQ(written(OutputFormat_t::text, [](auto& r) { r.addFrillLeft(101, "ab", '-'); }),
             "ab" + std::string(99, '-'));
}

TEST(RendererText, AColumnDoesNotSpillOverWhatFollows) {
   EXPECT_EQ(written(
                   OutputFormat_t::text,
                   [](auto& r) {
                      for (int i = 0; i < 5; ++i) {
                         r.addFrillLeft(3, "a", '*');
                         r.addFrillRight(3, "b", '+');
                      }
                   },
                   1),
             "a**++ba**++ba**++ba**++ba**++b");
}

// What must not compile, so that no value is written by way of a conversion.
template<class T>
concept TakesText = requires(RendererV2& r, T value) {
   r.addText("", value);
};
template<class T>
concept TakesFrill = requires(RendererV2& r, T value) {
   r.addFrill(value);
};
template<class T>
concept TakesString = requires(RendererV2& r, T value) {
   r.writeString(value);
};

static_assert(TakesText<std::uint32_t> && TakesText<char const*> && TakesText<Fathom::String>);
static_assert(!TakesText<bool> && !TakesText<int> && !TakesText<char> && !TakesText<double> &&
              !TakesText<OutputFormat_t> && !TakesText<std::nullptr_t> && !TakesText<Brindle::Duration>);
static_assert(TakesFrill<char const*> && !TakesFrill<char> && !TakesFrill<std::uint32_t>);
static_assert(TakesString<unsigned char> && !TakesString<char> && !TakesString<bool> && !TakesString<int>);

} // namespace
