#include "RsvpLer/frame/Trace.h"
#include "tests/support/Router.h"
#include "tests/support/TraceDirectory.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace Rsvp;
using testing::ElementsAre;
using testing::IsEmpty;
using Tests::calls;
using Tests::TracingIntoFile;

// An argument that counts how often it is looked at.
struct Counted {
   std::uint32_t number = 0;
};
unsigned looks = 0;

} // namespace

template<>
struct Skein::TraceFormat<Counted> : Skein::PlainFormat<Skein::u32Component> {
   template<class Sink>
   static void put(Sink& sink, Counted const& value) {
      ++looks;
      sink.put(value.number);
   }
};

namespace {

unsigned depth() {
   return callDepth;
}

unsigned traced(Counted const& argument) {
   RSVP_LER_TRACE("argument=", argument);
   return depth();
}

unsigned nested(unsigned levels) {
   RSVP_LER_TRACE();
   return levels == 0 ? depth() : nested(levels - 1);
}

void throwing() {
   RSVP_LER_TRACE();
   throw std::runtime_error("thrown");
}

unsigned lineOfHere = 0;
void here(std::uint32_t format) {
   lineOfHere = __LINE__ + 1;
   RSVP_LER_TRACE("format=", format);
}

void aggregate(RsvpLerLspGroupId const& lspGroupId) {
   RSVP_LER_TRACE(Skein::Hex(lspGroupId));
}

void group(RsvpLerMbbTunnelConfigId const& active, RsvpLerMbbTunnelConfigId const& pending, std::uint8_t groupId) {
   RSVP_LER_TRACE(active, pending, ", groupId=", groupId);
}

struct Line {
   std::string facility;
   unsigned level;
   std::string sourcePath;
   std::uint32_t line;
   std::string function;
   std::string text;
};
std::vector<Line> lines;

std::vector<std::string> lineTexts() {
   std::vector<std::string> texts;
   for (Line const& line : lines)
      texts.push_back(line.text);
   return texts;
}

class Probe : public testing::Test {
protected:
   Probe() {
      lines.clear();
      looks = 0;
      Vane::traceSinkIs([](Vane::TraceHelper const& origin, std::string_view text) noexcept {
         lines.push_back({std::string(origin.facility.name()), origin.level, std::string(origin.sourcePath),
                          origin.line, std::string(origin.function), std::string(text)});
      });
   }
   ~Probe() override {
      facility.levelIs(0);
      Vane::traceSinkIs(nullptr);
   }

   Vane::TraceHandle& facility = Vane::TraceHandle::named("RsvpLerCliCapi");
};

TEST_F(Probe, withoutFileAndLevelOnlyCounts) {
   facility.levelIs(7);
   EXPECT_EQ(depth(), 0u);
   EXPECT_EQ(traced({1}), 1u);
   EXPECT_EQ(nested(4), 5u);
   EXPECT_EQ(depth(), 0u);
   EXPECT_EQ(looks, 0u);
   EXPECT_THAT(lines, IsEmpty());
}

TEST_F(Probe, depthAfterAnException) {
   for (bool const tracing : {false, true}) {
      std::optional<TracingIntoFile> file;
      if (tracing)
         file.emplace();
      facility.levelIs(tracing ? 8 : 0);
      EXPECT_THROW(throwing(), std::runtime_error);
      EXPECT_EQ(depth(), 0u);
      if (tracing) {
         EXPECT_TRUE(file->read().record(0).value().duration.has_value());
      }
   }
}

TEST_F(Probe, depthWraps) {
   callDepth = 65535;
   EXPECT_EQ(nested(0), 0u);
   EXPECT_EQ(callDepth, 65535);
   callDepth = 0;
}

TEST_F(Probe, belowLevel8RecordsAreWrittenAndNoLines) {
   TracingIntoFile const file;
   facility.levelIs(7);
   traced({12});
   EXPECT_THAT(calls(file.read()), ElementsAre("traced argument=12"));
   EXPECT_EQ(looks, 1u);
   EXPECT_THAT(lines, IsEmpty());
}

TEST_F(Probe, atLevel8LinesAreWrittenWithoutAFileToo) {
   facility.levelIs(8);
   traced({12});
   nested(1);
   EXPECT_THAT(lineTexts(), ElementsAre("[1] traced argument=12", "[1] nested ", "[2] nested "));
}

TEST_F(Probe, aLineTellsWhereItComesFrom) {
   facility.levelIs(31);
   here(2);
   ASSERT_EQ(lines.size(), 1u);
   EXPECT_EQ(lines[0].facility, "RsvpLerCliCapi");
   EXPECT_EQ(lines[0].level, 8u);
   EXPECT_EQ(lines[0].sourcePath, "/src/RsvpLer/RsvpLerCliCapi");
   EXPECT_EQ(lines[0].line, lineOfHere);
   EXPECT_EQ(lines[0].function, "here");
   EXPECT_EQ(lines[0].text, "[1] here format=2");
}

TEST_F(Probe, aRecordTellsDepthDurationAndWhereItComesFrom) {
   TracingIntoFile const file;
   nested(1);
   here(1);
   Skein::TraceReader const trace = file.read();
   auto const records = Tests::soundRecords(trace);
   ASSERT_EQ(records.size(), 3u);
   EXPECT_EQ(records[0].depth, 1);
   EXPECT_EQ(records[1].depth, 2);
   EXPECT_EQ(records[0].function, "nested");
   EXPECT_GE(records[0].duration.value(), records[1].duration.value());
   EXPECT_EQ(records[2].line, lineOfHere);
   EXPECT_EQ(records[2].sourcePath, "/src/RsvpLer/RsvpLerCliCapi");
   EXPECT_EQ(records[2].arguments, "format=1");
}

TEST_F(Probe, theFormsOfTheArguments) {
   TracingIntoFile const file;
   facility.levelIs(8);
   aggregate(Tests::groupId("tun1", 1, 31, 10));
   group(Tests::mbbId("tun1", 1), {}, 1);
   std::string const aggregated = "aggregate <name='tun1'>_<source='1'>_<subTunnelId=a>_<epoch=1f>_<groupId=1>";
   std::string const grouped = "group <name='tun1'>_<source='1'>_<subTunnelId=0>_<epoch=1>"
                               "<name=''>_<source='0'>_<subTunnelId=0>_<epoch=0>, groupId=1";
   EXPECT_THAT(calls(file.read()), ElementsAre(aggregated, grouped));
   EXPECT_THAT(lineTexts(), ElementsAre("[1] " + aggregated, "[1] " + grouped));
}

TEST_F(Probe, describesAFunctionOnceInEachFile) {
   for (int round = 0; round < 2; ++round) {
      TracingIntoFile const file;
      for (int i = 0; i < 3; ++i)
         here(2);
      nested(0);
      nested(0);
      EXPECT_EQ(file.read().descriptions().size(), 2u);
      EXPECT_THAT(calls(file.read()),
                  ElementsAre("here format=2", "here format=2", "here format=2", "nested ", "nested "));
   }
}

TEST_F(Probe, aFullTableOfDescriptionsOrALongNameHarmsNothing) {
   TracingIntoFile const file({.descriptions = 3, .slots = 8});
   aggregate(Tests::groupId("tun1")); // source, tunnel and sub-tunnel, and no room for more
   here(2);
   here(2);
   EXPECT_EQ(depth(), 0u);
   EXPECT_THAT(calls(file.read()), IsEmpty());
   EXPECT_EQ(file.read().skippedRecords(), 3u);
   TracingIntoFile const other;
   aggregate(Tests::groupId(std::string(60000, 'n')));
   EXPECT_THAT(calls(other.read()), IsEmpty());
   EXPECT_EQ(other.read().skippedRecords(), 1u);
}

TEST_F(Probe, aHelperWritesAtItsLevelAlone) {
   Vane::TraceHelper const helper{facility, 8, "/src/here", 12, "f"};
   facility.levelIs(7);
   helper.write("not asked for");
   EXPECT_THAT(lines, IsEmpty());
   facility.levelIs(8);
   helper.write("asked for");
   EXPECT_THAT(lineTexts(), ElementsAre("asked for"));
   Vane::traceSinkIs(nullptr);
   testing::internal::CaptureStderr();
   helper.write("to the terminal");
   EXPECT_EQ(testing::internal::GetCapturedStderr(), "to the terminal\n");
}

TEST(TraceHandle, levels) {
   Vane::TraceHandle& handle = Vane::TraceHandle::named("TraceHandleTest");
   EXPECT_EQ(&handle, &Vane::TraceHandle::named("TraceHandleTest"));
   EXPECT_NE(&handle, &Vane::TraceHandle::named("TraceHandleTest2"));
   EXPECT_EQ(handle.name(), "TraceHandleTest");
   EXPECT_TRUE(handle.enabled(0));
   EXPECT_FALSE(handle.enabled(1));
   for (unsigned const level : {8u, 0u, 31u, 1000u, 7u}) {
      handle.levelIs(level);
      for (unsigned asked = 0; asked < 32; ++asked)
         EXPECT_EQ(handle.enabled(asked), asked <= level) << level << ' ' << asked;
   }
}

} // namespace
