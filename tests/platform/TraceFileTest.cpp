#include "skein/MsgDesc.h"
#include "tests/support/TraceDirectory.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

namespace {

using namespace Skein;
using testing::ElementsAre;
using testing::IsEmpty;
using Tests::calls;
using Tests::TraceDirectory;

// A message of one number and one string.
MessageId describe(TraceFile& file, std::string_view function, std::uint32_t line = 7) {
   MsgDesc description(file, "/src/here", line, function);
   description.addText("number={}, text={}");
   description.addComponent(u32Component);
   description.addComponent(stringComponent);
   return description.finishMessage();
}

std::uint64_t enter(TraceFile& file, MessageId id, std::uint32_t number, std::string_view text = "t") {
   Msg record = file.ringBuf().startMsg(TraceFile::descriptionOf(id), static_cast<std::uint16_t>(number));
   record.put(number);
   record.put(text);
   return record.end();
}

std::string errorOf(auto&& action) {
   try {
      action();
      return "";
   } catch (TraceError const& error) {
      return error.what();
   }
}

TEST(TraceFile, recordsComeBackInOrder) {
   TraceDirectory const directory;
   TraceFile file(directory.file());
   MessageId const f = describe(file, "f", 11);
   MessageId const g = describe(file, "g", 12);
   EXPECT_EQ(enter(file, f, 1, "one"), 1u);
   EXPECT_EQ(enter(file, g, 4000000000, ""), 2u);

   TraceReader const trace(directory.file());
   EXPECT_THAT(calls(trace), ElementsAre("f number=1, text=one", "g number=4000000000, text="));
   TraceRecord const record = trace.record(1).value();
   EXPECT_EQ(record.number, 2u);
   EXPECT_EQ(record.sourcePath, "/src/here");
   EXPECT_EQ(record.line, 12u);
   EXPECT_EQ(record.depth, static_cast<std::uint16_t>(4000000000));
   EXPECT_GE(record.start, trace.record(0).value().start);
   EXPECT_FALSE(record.duration.has_value());
   EXPECT_EQ(trace.skippedRecords(), 0u);
}

TEST(TraceFile, theRingKeepsTheNewest) {
   TraceDirectory const directory;
   TraceFile file(directory.file(), {.descriptions = 2, .slots = 4});
   MessageId const f = describe(file, "f");
   for (std::uint32_t n = 1; n <= 10; ++n)
      EXPECT_EQ(enter(file, f, n), n);
   EXPECT_THAT(calls(TraceReader(directory.file())),
               ElementsAre("f number=7, text=t", "f number=8, text=t", "f number=9, text=t", "f number=10, text=t"));
   EXPECT_EQ(std::filesystem::file_size(directory.file()), (Geometry{2, 4}.fileSize()));
}

TEST(TraceFile, aDurationIsEnteredWhileTheRecordStands) {
   TraceDirectory const directory;
   TraceFile file(directory.file(), {.descriptions = 2, .slots = 2});
   MessageId const f = describe(file, "f");
   std::uint64_t const first = enter(file, f, 1);
   std::uint64_t const second = enter(file, f, 2);
   std::uint64_t const third = enter(file, f, 3); // in the place of the first
   file.ringBuf().blockEnded(first);
   file.ringBuf().blockEnded(second);
   TraceReader const trace(directory.file());
   EXPECT_TRUE(trace.record(0).value().duration.has_value());
   EXPECT_EQ(trace.record(1).value().number, third);
   EXPECT_FALSE(trace.record(1).value().duration.has_value());
}

TEST(TraceFile, whatDoesNotFitIsSkipped) {
   TraceDirectory const directory;
   TraceFile file(directory.file());
   MessageId const f = describe(file, "f");
   std::size_t const most = sizeof(Slot::values) - sizeof(std::uint32_t) - sizeof(std::uint16_t);
   EXPECT_EQ(enter(file, f, 1, std::string(most, 'x')), 1u);
   EXPECT_EQ(enter(file, f, 2, std::string(most + 1, 'x')), 0u);
   EXPECT_EQ(enter(file, f, 3, std::string(100000, 'x')), 0u);
   EXPECT_EQ(enter(file, f, 4), 2u);
   TraceReader const trace(directory.file());
   EXPECT_THAT(calls(trace), ElementsAre("f number=1, text=" + std::string(most, 'x'), "f number=4, text=t"));
   EXPECT_EQ(trace.skippedRecords(), 2u);
}

TEST(TraceFile, aFullTableOfDescriptionsLeavesTheRestOut) {
   TraceDirectory const directory;
   TraceFile file(directory.file(), {.descriptions = 1, .slots = 4});
   MessageId const f = describe(file, "f");
   MessageId const g = describe(file, "g");
   EXPECT_TRUE(file.knows(g)); // isn't tried again
   EXPECT_EQ(enter(file, f, 1), 1u);
   EXPECT_EQ(enter(file, g, 2), 0u);
   TraceReader const trace(directory.file());
   EXPECT_THAT(calls(trace), ElementsAre("f number=1, text=t"));
   EXPECT_EQ(trace.skippedRecords(), 1u);
}

TEST(TraceFile, aDescriptionThatDoesNotFitLeavesTheMessageOut) {
   TraceDirectory const directory;
   TraceFile file(directory.file());
   EXPECT_EQ(enter(file, describe(file, std::string(64, 'f')), 1), 0u);
   EXPECT_EQ(enter(file, describe(file, std::string(63, 'f')), 1), 1u);
   MsgDesc many(file, "/src/here", 1, "many");
   for (std::size_t i = 0; i <= Description::maxComponents; ++i)
      many.addComponent(u8Component);
   EXPECT_EQ(many.finishMessage(), file.undescribedMessage());
   MsgDesc undescribed(file, "/src/here", 1, "undescribed");
   undescribed.addComponent(noComponent);
   EXPECT_EQ(undescribed.finishMessage(), file.undescribedMessage());
}

TEST(TraceFile, theSameDescriptionIsEnteredOnce) {
   TraceDirectory const directory;
   TraceFile file(directory.file());
   EXPECT_EQ(describe(file, "f", 1), describe(file, "f", 1));
   EXPECT_NE(describe(file, "f", 1), describe(file, "f", 2));
   EXPECT_EQ(TraceReader(directory.file()).descriptions().size(), 2u);
}

TEST(TraceFile, anotherThreadInTheSlotOrAheadOfItSkipsTheRecord) {
   FileHeader header{.slotCapacity = 2};
   std::vector<Slot> slots(2);
   RingBuf ring(header, slots.data());
   slots[0].state = 0 | 1; // being written
   slots[1].state = 4 * 2; // a newer record
   EXPECT_EQ(ring.startMsg(0, 1).end(), 0u);
   EXPECT_EQ(ring.startMsg(0, 1).end(), 0u);
   EXPECT_EQ(header.skippedRecords, 2u);
   EXPECT_EQ(slots[1].state, 8u);
   slots[0].state = 0;
   EXPECT_EQ(ring.startMsg(0, 1).end(), 3u);
}

TEST(TraceFile, whatAWriterHasNotFinishedIsNotShown) {
   TraceDirectory const directory;
   TraceFile file(directory.file(), {.descriptions = 1, .slots = 2});
   MessageId const f = describe(file, "f");
   enter(file, f, 1);
   enter(file, f, 2);
   std::fstream stream(directory.file(), std::ios::in | std::ios::out | std::ios::binary);
   stream.seekp(static_cast<std::streamoff>(Geometry{1, 2}.slotsOffset()));
   stream.put(1 * 2 | 1);
   stream.close();
   EXPECT_THAT(calls(TraceReader(directory.file())), ElementsAre("f number=2, text=t"));
}

TEST(TraceFile, bytesThatBreakALineAreNotShown) {
   TraceDirectory const directory;
   TraceFile file(directory.file());
   enter(file, describe(file, "f"), 1, std::string_view("a\nb\0c\x1b[1m\x7f\xc3\xbc", 12));
   EXPECT_THAT(calls(TraceReader(directory.file())), ElementsAre("f number=1, text=a?b?c?[1m?\xc3\xbc"));
}

TEST(TraceFile, anOlderTraceOfTheNameIsReplacedWhileItIsWritten) {
   TraceDirectory const directory;
   TraceFile older(directory.file());
   TraceFile newer(directory.file());
   enter(older, describe(older, "older"), 1);
   enter(newer, describe(newer, "newer"), 2);
   EXPECT_THAT(calls(TraceReader(directory.file())), ElementsAre("newer number=2, text=t"));
   EXPECT_NE(older.generation(), newer.generation());
   EXPECT_FALSE(newer.knows(describe(older, "older")));
}

TEST(TraceFile, aFileOfAnotherKindIsLeftAlone) {
   TraceDirectory const directory;
   std::string const name = directory.file("state.json");
   std::ofstream(name) << "{\"tables\":{}}";
   EXPECT_EQ(errorOf([&] { TraceFile file(name); }),
             "cannot write the trace file " + name + ": there is a file of another kind; give another name");
   std::stringstream text;
   text << std::ifstream(name).rdbuf();
   EXPECT_EQ(text.str(), "{\"tables\":{}}");
}

TEST(TraceFile, anEmptyFileIsReplaced) {
   TraceDirectory const directory;
   std::ofstream{directory.file()};
   TraceFile const file(directory.file());
   EXPECT_THAT(calls(TraceReader(directory.file())), IsEmpty());
}

TEST(TraceFile, whatCanNotBeMadeOrRead) {
   TraceDirectory const directory;
   std::string const missing = directory.file("no/trace");
   std::string const self = directory.file(".");
   EXPECT_EQ(errorOf([&] { TraceFile file(missing); }),
             "cannot write the trace file " + missing + ": No such file or directory");
   EXPECT_EQ(errorOf([&] { TraceFile file(self); }),
             "cannot write the trace file " + self + ": it is not a regular file");
   EXPECT_EQ(errorOf([&] { TraceFile file("/dev/null"); }),
             "cannot write the trace file /dev/null: it is not a regular file");
   std::string const below = "/dev/null/trace";
   EXPECT_EQ(errorOf([&] { TraceFile file(below); }), "cannot write the trace file " + below + ": Not a directory");
   EXPECT_EQ(errorOf([&] { TraceReader trace(missing); }),
             "cannot read the trace file " + missing + ": No such file or directory");
   EXPECT_EQ(errorOf([&] { TraceReader trace(self); }), "cannot read the trace file " + self + ": Is a directory");
   EXPECT_TRUE(std::filesystem::is_empty(directory.file("")));
}

// The new file is made beside its name first.
TEST(TraceFile, whatCanNotTakeItsNameIsTakenAway) {
   TraceDirectory const directory;
   std::filesystem::path const before = std::filesystem::current_path();
   std::filesystem::current_path(directory.file(""));
   std::string const error = errorOf([] { TraceFile file(""); });
   std::filesystem::current_path(before);
   EXPECT_EQ(error, "cannot write the trace file : No such file or directory");
   EXPECT_TRUE(std::filesystem::is_empty(directory.file("")));
}

TEST(BlockTimer, belongsToItsFile) {
   std::optional<BlockTimerMsg> timer;
   {
      Tests::TracingIntoFile const tracing;
      TraceFile* const file = defaultTraceFile();
      timer.emplace(*file, enter(*file, describe(*file, "f"), 1));
   }
   timer->end(); // no file any more
   Tests::TracingIntoFile const tracing;
   TraceFile* const file = defaultTraceFile();
   BlockTimerMsg const own(*file, enter(*file, describe(*file, "g"), 2));
   timer->end();
   EXPECT_FALSE(tracing.read().record(0).value().duration.has_value());
   own.end();
   EXPECT_TRUE(tracing.read().record(0).value().duration.has_value());
   EXPECT_FALSE(BlockTimerMsg(*file, 0));
   EXPECT_TRUE(own);
}

} // namespace
