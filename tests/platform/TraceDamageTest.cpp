#include "fathom/String.h"
#include "skein/Descriptor.h"
#include "skein/TraceFormat.h"
#include "tests/support/Random.h"
#include "tests/support/TraceDirectory.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>

// Damaged trace files: whatever comes of one are records of printable text, or one line of complaint.

namespace {

using namespace Skein;

struct Parent {
   Fathom::String name;
   std::uint8_t kind = 0;
};
struct Child {
   Parent parent;
   std::uint32_t number = 0;
};

} // namespace

template<>
struct Skein::TraceFormat<Parent> : RecordFormat<"Parent", "<{}/{}>", &Parent::name, &Parent::kind> {};
template<>
struct Skein::TraceFormat<Child> : RecordFormat<"Child", "{}.{}", &Child::parent, &Child::number> {};

namespace {

class TraceDamage : public testing::Test {
protected:
   static constexpr Geometry geometry{.descriptions = 5, .slots = 4};

   TraceDamage() {
      TraceFile file(name_, geometry);
      MsgDesc description(file, "/src/here", 7, "function");
      Argument<Child>::describe(description, file, {});
      description.addText(", twice=");
      Argument<std::uint32_t>::describe(description, file, 0);
      MessageId const message = description.finishMessage();
      for (std::uint32_t n = 1; n <= 6; ++n) {
         Msg record = file.ringBuf().startMsg(TraceFile::descriptionOf(message), 1);
         Argument<Child>::put(record, {{"name", 2}, n});
         Argument<std::uint32_t>::put(record, n * 2);
         record.end();
      }
      std::ifstream stream(name_, std::ios::binary);
      sound_.assign(std::istreambuf_iterator<char>(stream), {});
      file_.emplace(open(name_.c_str(), O_WRONLY | O_CLOEXEC));
   }

   // What reading a file of these bytes comes to: "damaged" for complaints, else its records, the damaged as "?".
   std::string outcome(std::string const& bytes) {
      // In place: a file that is truncated first would be written to the disk each time.
      EXPECT_EQ(pwrite(file_->number(), bytes.data(), bytes.size(), 0), static_cast<ssize_t>(bytes.size()));
      EXPECT_EQ(ftruncate(file_->number(), static_cast<off_t>(bytes.size())), 0);
      std::string all;
      try {
         TraceReader const trace(name_);
         for (std::size_t i = 0; i < trace.size(); ++i) {
            auto const record = trace.record(i);
            all += record ? std::string(record->function) + " " + record->arguments + "; " : "?; ";
         }
      } catch (TraceError const& error) {
         all = std::string(error.what());
         EXPECT_EQ(all.rfind(complaint("it"), 0), 0u) << all;
      }
      EXPECT_TRUE(std::ranges::none_of(all, [](char c) { return static_cast<unsigned char>(c) < 0x20; })) << all;
      EXPECT_LT(all.size(), 20000u);
      return all;
   }
   std::string complaint(std::string const& what) const { return "cannot read the trace file " + name_ + ": " + what; }

   std::string withByte(std::size_t offset, char byte) const {
      std::string bytes = sound_;
      bytes[offset] = byte;
      return bytes;
   }

   Tests::TraceDirectory directory_;
   std::string name_ = directory_.file();
   std::string sound_;
   std::optional<Descriptor> file_;
   std::string const soundRecords_ = "function <name/2>.3, twice=6; function <name/2>.4, twice=8; "
                                     "function <name/2>.5, twice=10; function <name/2>.6, twice=12; ";
};

TEST_F(TraceDamage, none) {
   EXPECT_EQ(outcome(sound_), soundRecords_);
   EXPECT_EQ(outcome(sound_ + "more"), soundRecords_);
}

TEST_F(TraceDamage, cutAnywhere) {
   for (std::size_t size = 0; size < sound_.size(); ++size)
      ASSERT_EQ(outcome(sound_.substr(0, size)),
                complaint(size < sizeof FileHeader::fileMagic ? "it is not a trace file" : "it is cut short"))
            << size;
}

TEST_F(TraceDamage, oneByteAnywhere) {
   std::size_t noticed = 0;
   for (std::size_t offset = 0; offset < sound_.size(); ++offset) {
      for (int const flip : {0x01, 0x10, 0x80, 0xff})
         noticed += outcome(withByte(offset, static_cast<char>(sound_[offset] ^ flip))) != soundRecords_;
   }
   // At least in the states, messages, sizes and values of the slots; what isn't used of a text or a slot may hold
   // anything.
   EXPECT_GT(noticed, 450u);
   EXPECT_LT(noticed, sound_.size() * 4);
}

TEST_F(TraceDamage, manyBytesAtOnce) {
   Tests::Random random(20);
   for (int round = 0; round < 5000; ++round) {
      std::string bytes = sound_;
      for (std::uint32_t i = random.below(30) + 1; i > 0; --i)
         bytes[random.below(static_cast<std::uint32_t>(bytes.size()))] = static_cast<char>(random.below(256));
      outcome(bytes);
   }
}

struct Row {
   std::size_t offset;
   char byte;
   std::string outcome; // a complaint without its beginning, or a part of the records
};

TEST_F(TraceDamage, fieldsOfTheHeaderAndTheDescriptions) {
   std::size_t const types = geometry.descriptionsOffset();
   std::size_t const child = types + sizeof(Description);
   for (Row const& row : std::vector<Row>{
              {0, 'X', "it is not a trace file"},
              {offsetof(FileHeader, byteOrder), 9, "it was written on a machine of another byte order, or is damaged"},
              {offsetof(FileHeader, descriptionCapacity), 0, "it is damaged"},
              {offsetof(FileHeader, descriptionCapacity) + 3, 1, "it is damaged"},
              {offsetof(FileHeader, slotCapacity), 0, "it is damaged"},
              {offsetof(FileHeader, slotCapacity), 5, "it is cut short"},
              {offsetof(FileHeader, slotCapacity) + 3, 127, "it is damaged"},
              {offsetof(FileHeader, descriptionCount), 6, "its descriptions are damaged"},
              {types + offsetof(Description, kind), 3, "its descriptions are damaged"},
              {types + offsetof(Description, kind), 2, "its descriptions are damaged"},
              {types + offsetof(Description, componentCount), 0, "its descriptions are damaged"},
              {types + offsetof(Description, componentCount), 10, "its descriptions are damaged"},
              {types + offsetof(Description, typeString), 'i', "its descriptions are damaged"},
              {types + offsetof(Description, format), '\n', "its descriptions are damaged"},
              {types + offsetof(Description, format), '{', "its descriptions are damaged"},
              // A type of which it is a part itself.
              {child + offsetof(Description, components), firstType + 1, "its descriptions are damaged"},
              {child + offsetof(Description, components), firstType + 9, "its descriptions are damaged"},
              {child + offsetof(Description, components), 0, "its descriptions are damaged"},
        })
      EXPECT_EQ(outcome(withByte(row.offset, row.byte)), complaint(row.outcome)) << row.offset;
}

// Whose type string is right, and that never ends.
TEST_F(TraceDamage, aTypeMadeOfItself) {
   std::size_t const child = geometry.descriptionsOffset() + sizeof(Description);
   std::string bytes = sound_;
   bytes[child + offsetof(Description, componentCount)] = 1;
   bytes[child + offsetof(Description, components)] = firstType + 1;
   bytes[child + offsetof(Description, format)] = 'x'; // has one place left
   EXPECT_EQ(outcome(bytes), complaint("its descriptions are damaged"));
}

TEST_F(TraceDamage, fieldsOfARecord) {
   std::size_t const first = geometry.slotsOffset(); // holds record 5
   std::string const rest = "function <name/2>.6, twice=12; ";
   std::string const before = "function <name/2>.3, twice=6; function <name/2>.4, twice=8; ";
   for (Row const& row : std::vector<Row>{
              {offsetof(Slot, state), 0, before + rest},
              {offsetof(Slot, state), 5 * 2 + 1, before + rest},
              {offsetof(Slot, state), 7 * 2, before + rest + "?; "}, // belongs into another slot
              {offsetof(Slot, message), 0, before + "?; " + rest},   // a type
              {offsetof(Slot, message), 100, before + "?; " + rest},
              {offsetof(Slot, size), 0, before + "?; " + rest},
              {offsetof(Slot, size), 1, before + "?; " + rest},
              {offsetof(Slot, size) + 1, 1, before + "?; " + rest},
              {offsetof(Slot, size) + 1, 127, before + "?; " + rest},
              {offsetof(Slot, values), 3, before + "?; " + rest}, // the length of the name
              {offsetof(Slot, values) + 1, 127, before + "?; " + rest},
              {offsetof(Slot, values) + 2, 'N', before + "function <Name/2>.5, twice=10; " + rest},
        })
      EXPECT_EQ(outcome(withByte(first + row.offset, row.byte)), row.outcome) << row.offset;
}

} // namespace
