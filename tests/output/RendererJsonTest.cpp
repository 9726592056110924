#include "RsvpLer/output/RendererV2.h"
#include "RsvpLer/output/SigIntException.h"
#include "fathom/String.h"
#include "tests/support/MemoryBuffer.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace {

using Brindle::Duration;
using Lattice::IpAddr;
using Lattice::IpGenAddr;
using scrivo::OutputFormat_t;
using scrivo::RendererV2;

struct Row {
   std::function<void(RendererV2&)> calls;
   std::string expected;
   bool atContainerStart;
};

struct Result {
   std::string text;
   bool atContainerStart;
};

Result run(OutputFormat_t format, std::function<void(RendererV2&)> const& calls, std::size_t capacity = 4096,
           bool atContainerStart = true) {
   Tests::MemoryBuffer buffer(capacity);
   RendererV2 renderer(format, &buffer, true);
   EXPECT_TRUE(renderer.atContainerStart);
   EXPECT_EQ(renderer.outputFormat(), format);
   renderer.atContainerStart = atContainerStart;
   calls(renderer);
   return {std::string(buffer.text()), renderer.atContainerStart};
}

IpGenAddr const v6 = *IpGenAddr::parse("2001:db8::7");
Brindle::String const empty;

std::vector<Row> const rows{
      {[](auto& r) { r.startJsonDict("tunnels"); }, "\"tunnels\":{", true},
      {[](auto& r) { r.startJsonDict(std::string("ea\"st")); }, "\"ea\\\"st\":{", true},
      {[](auto& r) { r.startJsonDict(Fathom::String("east")); }, "\"east\":{", true},
      {[](auto& r) { r.startJsonDict(empty); }, "\"\":{", true},
      {[](auto& r) { r.startJsonDict(); }, "{", true},
      {[](auto& r) { r.startJsonList("hops"); }, "\"hops\":[", true},
      {[](auto& r) { r.startJsonList(std::string("ho\nps")); }, "\"ho\\nps\":[", true},
      {[](auto& r) { r.addJsonKeyValuePair("mbb", true); }, "\"mbb\":true", false},
      {[](auto& r) { r.addJsonKeyValuePair("mbb", false); }, "\"mbb\":false", false},
      {[](auto& r) { r.addJsonKeyValuePair("id", std::uint8_t{65}); }, "\"id\":65", false},
      {[](auto& r) { r.addJsonKeyValuePair("id", static_cast<unsigned short>(65535)); }, "\"id\":65535", false},
      {[](auto& r) { r.addJsonKeyValuePair("id", 0u); }, "\"id\":0", false},
      {[](auto& r) { r.addJsonKeyValuePair("id", 4294967295u); }, "\"id\":4294967295", false},
      {[](auto& r) { r.addJsonKeyValuePair("id", 18446744073709551615ul); }, "\"id\":18446744073709551615", false},
      {[](auto& r) { r.addJsonKeyValuePair("t", Duration(0)); }, "\"t\":0.000000", false},
      {[](auto& r) { r.addJsonKeyValuePair("t", Duration(12.5)); }, "\"t\":12.500000", false},
      {[](auto& r) { r.addJsonKeyValuePair("t", Duration(-1)); }, "\"t\":-1.000000", false},
      {[](auto& r) { r.addJsonKeyValuePair("t", Duration(std::numeric_limits<double>::quiet_NaN())); },
       "\"t\":0.000000", false},
      {[](auto& r) { r.addJsonKeyValuePair("t", Duration(0x1p332)); }, "\"t\":" + std::to_string(0x1p332),
       false}, // 100 digits: printed a second time
      {[](auto& r) { r.addJsonKeyValuePair("name", Brindle::String("ea\"st")); }, "\"name\":\"ea\\\"st\"", false},
      {[](auto& r) { r.addJsonKeyValuePair("name", Fathom::String("east")); }, "\"name\":\"east\"", false},
      {[](auto& r) { r.addJsonKeyValuePair("name", std::string_view("a\0b", 3)); }, "\"name\":\"a\\u0000b\"", false},
      {[](auto& r) { r.addJsonKeyValuePair("name", static_cast<char const*>("true")); }, "\"name\":\"true\"", false},
      {[](auto& r) { r.addJsonKeyValuePair("name", "a literal"); }, "\"name\":\"a literal\"", false},
      {[](auto& r) { r.addJsonKeyValuePair("name", ""); }, "\"name\":\"\"", false},
      {[](auto& r) { r.addJsonKeyValuePair("name", std::string(64, 'x')); },
       "\"name\":\"" + std::string(64, 'x') + "\"", false},
      {[](auto& r) { r.addJsonKeyValuePair("name", std::string(65, 'x')); },
       "\"name\":\"" + std::string(65, 'x') + "\"", false},
      {[](auto& r) { r.addJsonKeyValuePair("to", IpAddr(10, 0, 0, 7)); }, "\"to\":\"10.0.0.7\"", false},
      {[](auto& r) { r.addJsonKeyValuePair("to", IpGenAddr(IpAddr(10, 0, 0, 7))); }, "\"to\":\"10.0.0.7\"", false},
      {[](auto& r) { r.addJsonKeyValuePair("to", v6); }, "\"to\":\"2001:db8::7\"", false},
      {[](auto& r) { r.addJsonKeyValuePair("to", IpGenAddr()); }, "\"to\":\"::\"", false},
      // A key made at run time is quoted like a value.
      {[](auto& r) { r.addJsonKeyValuePair(std::string("a\\b"), 1u); }, "\"a\\\\b\":1", false},
      {[](auto& r) { r.addJsonKeyValuePair(std::string(70, 'k'), true); }, "\"" + std::string(70, 'k') + "\":true",
       false},
      // An empty key writes the value alone.
      {[](auto& r) { r.addJsonKeyValuePair("", 7u); }, "7", false},
      {[](auto& r) { r.addJsonKeyValuePair(empty, true); }, "true", false},
      {[](auto& r) { r.addJsonKeyValuePair("", "x"); }, "\"x\"", false},
      {[](auto& r) { r.addJsonKeyValuePair("", Duration(1)); }, "1.000000", false},
      {[](auto& r) { r.addJsonKeyValuePair("", IpAddr(10, 0, 0, 7)); }, "\"10.0.0.7\"", false},
      {[](auto& r) { r.addJsonKeyValuePair("", v6); }, "\"2001:db8::7\"", false},
};

TEST(RendererJson, OperationsWriteInJsonAlone) {
   for (Row const& row : rows)
      for (std::size_t capacity : {0u, 1u, 16u, 4096u}) {
         Result const first = run(OutputFormat_t::json, row.calls, capacity);
         EXPECT_EQ(first.text, row.expected);
         EXPECT_EQ(first.atContainerStart, row.atContainerStart);
         Result const next = run(OutputFormat_t::json, row.calls, capacity, false);
         EXPECT_EQ(next.text, "," + row.expected);
         EXPECT_EQ(next.atContainerStart, row.atContainerStart);
      }
}

TEST(RendererJson, ClosersWriteNoComma) {
   for (bool start : {true, false}) {
      Result const dict = run(
            OutputFormat_t::json, [](auto& r) { r.endJsonDict(); }, 0, start);
      EXPECT_EQ(dict.text, "}");
      EXPECT_FALSE(dict.atContainerStart);
      Result const list = run(
            OutputFormat_t::json, [](auto& r) { r.endJsonList(); }, 0, start);
      EXPECT_EQ(list.text, "]");
      EXPECT_FALSE(list.atContainerStart);
   }
}

TEST(RendererJson, OtherFormatsWriteNothingAndKeepTheFlag) {
   std::vector<Row> all = rows;
   all.push_back({[](auto& r) { r.endJsonDict(); }, "}", false});
   all.push_back({[](auto& r) { r.endJsonList(); }, "]", false});
   for (Row const& row : all)
      for (std::uint32_t format : {0u, 1u, 3u, 4294967295u})
         for (bool start : {true, false}) {
            Result const result = run(OutputFormat_t{format}, row.calls, 4096, start);
            EXPECT_EQ(result.text, "") << "format " << format;
            EXPECT_EQ(result.atContainerStart, start) << "format " << format;
         }
}

TEST(RendererJson, Commas) {
   struct Document {
      std::function<void(RendererV2&)> calls;
      std::string expected;
   };
   std::vector<Document> const documents{
         // An empty container gets its comma behind it.
         {[](auto& r) {
             r.startJsonDict("a");
             r.endJsonDict();
             r.startJsonList("b");
             r.endJsonList();
             r.addJsonKeyValuePair("c", true);
          },
          R"("a":{},"b":[],"c":true)"},
         {[](auto& r) {
             r.startJsonList("l");
             r.addJsonKeyValuePair("", "x");
             r.addJsonKeyValuePair("", 2u);
             r.addJsonKeyValuePair("", IpAddr(10, 0, 0, 7));
             r.endJsonList();
          },
          R"("l":["x",2,"10.0.0.7"])"},
         // Two dictionaries in a row in a list.
         {[](auto& r) {
             r.startJsonList("l");
             r.startJsonDict();
             r.addJsonKeyValuePair("a", 1u);
             r.endJsonDict();
             r.startJsonDict();
             r.endJsonDict();
             r.endJsonList();
             r.addJsonKeyValuePair("t", Duration(0));
          },
          R"("l":[{"a":1},{}],"t":0.000000)"},
         // A pair written byte by byte.
         {[](auto& r) {
             for (int i = 0; i < 2; ++i) {
                if (!r.atContainerStart)
                   r.writeChar(',');
                r.atContainerStart = false;
                r.writeJsonValue("k");
                r.writeChar(':');
                r.writeString(7u);
             }
             r.addJsonKeyValuePair("k", 7u);
          },
          R"("k":7,"k":7,"k":7)"},
   };
   for (Document const& document : documents)
      for (std::size_t capacity : {0u, 4096u})
         EXPECT_EQ(run(OutputFormat_t::json, document.calls, capacity).text, document.expected);
}

TEST(RendererJson, AWholeDocumentParses) {
   Tests::MemoryBuffer buffer;
   RendererV2 renderer(OutputFormat_t::json, &buffer, true);
   renderer.writeChar('{');
   renderer.startJsonDict("tunnels");
   renderer.startJsonDict(std::string("e\ta\"st"));
   renderer.addJsonKeyValuePair("state", "up");
   renderer.addText("   State: ", "up");
   renderer.eol();
   renderer.endJsonDict();
   renderer.endJsonDict();
   renderer.writeString("}\n");
   renderer.ioflush();
   EXPECT_EQ(buffer.flushes(), 1);
   EXPECT_EQ(buffer.text(), "{\"tunnels\":{\"e\\ta\\\"st\":{\"state\":\"up\"}}}\n");
   EXPECT_EQ(nlohmann::json::parse(buffer.text())["tunnels"]["e\ta\"st"]["state"], "up");
}

TEST(RendererJson, ADurationOfExactlyAHundredCharactersEndsInANul) {
   // 93 digits, the point and six more.
   std::string const text = std::to_string(1e92);
   ASSERT_EQ(text.size(), 100u);
   EXPECT_EQ(run(OutputFormat_t::json, [](auto& r) { r.addJsonKeyValuePair("", Duration(1e92)); }).text,
             text.substr(0, 99) + '\0');
   std::string const shorter = std::to_string(1e91);
   ASSERT_EQ(shorter.size(), 99u);
   EXPECT_EQ(run(OutputFormat_t::json, [](auto& r) { r.addJsonKeyValuePair("", Duration(1e91)); }).text, shorter);
   std::string const longer = std::to_string(1e93);
   ASSERT_EQ(longer.size(), 101u);
   EXPECT_EQ(run(OutputFormat_t::json, [](auto& r) { r.addJsonKeyValuePair("", Duration(1e93)); }).text, longer);
}

// Gives no room at all from the start.
class InterruptedBuffer : public scrivo::PrintBuffer {
public:
   void ioflush() override {}

protected:
   void allocateSpace(std::size_t) override { throw scrivo::SigIntException("interrupted"); }
};

TEST(RendererJson, AnExceptionPassesAndDoesNotRestoreTheFlag) {
   InterruptedBuffer buffer;
   RendererV2 renderer(OutputFormat_t::json, &buffer, true);
   EXPECT_THROW(renderer.addJsonKeyValuePair("k", 1u), scrivo::SigIntException);
   EXPECT_FALSE(renderer.atContainerStart);
   EXPECT_THROW(renderer.writeString("}\n"), scrivo::SigIntException);
   EXPECT_THROW(renderer.startJsonDict("k"), scrivo::SigIntException);
   EXPECT_TRUE(renderer.atContainerStart);
   renderer.writeQuotedString(""); // nothing to write asks for no room
}

// What must not compile, so that no value is written by way of a conversion.
template<class T>
concept TakesValue = requires(RendererV2& r, T value) {
   r.addJsonKeyValuePair("", value);
};

static_assert(TakesValue<bool> && TakesValue<unsigned short> && TakesValue<unsigned long> && TakesValue<char const*> &&
              TakesValue<Brindle::Duration>);
static_assert(!TakesValue<int> && !TakesValue<long> && !TakesValue<char> && !TakesValue<double> &&
              !TakesValue<OutputFormat_t> && !TakesValue<std::nullptr_t> && !TakesValue<void*>);

} // namespace
