#include "RsvpLer/output/StackBackedBuffer.h"

#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <string>
#include <vector>

// A request that no memory can meet fails under a sanitizer as it does elsewhere, and doesn't end the process.
extern "C" char const* __asan_default_options() {
   return "allocator_may_return_null=1";
}

namespace {

using Sentence = Kerf::StackBackedBuffer<128, 1024>;

std::size_t capacity(Sentence const& buffer) {
   return static_cast<std::size_t>(buffer.endPtr - buffer.bufferStart);
}

TEST(StackBackedBuffer, BeginsEmptyInPlace) {
   Sentence buffer;
   EXPECT_EQ(buffer.view(), "");
   EXPECT_EQ(buffer.writePtr, buffer.bufferStart);
   EXPECT_EQ(capacity(buffer), 128u);
   auto const* const self = reinterpret_cast<char const*>(&buffer);
   EXPECT_TRUE(self <= buffer.bufferStart && buffer.bufferStart < self + sizeof buffer);
}

TEST(StackBackedBuffer, Growth) {
   struct Row {
      std::size_t used;
      std::size_t required;
      std::size_t capacity;
   };
   std::vector<Row> const rows{
         {100, 1000, 1100}, // what is asked for is more than the double
         {2000, 10, 2010},  // beyond the ceiling nothing is rounded
         {100, 50, 200},    // the double
         {128, 1, 256},     {500, 10, 1000}, {512, 1, 1024}, {513, 1, 1024}, {600, 10, 1024},
         {1023, 1, 1024},   {1024, 1, 1025}, {0, 1, 1},      {0, 200, 200},
   };
   for (Row const& row : rows) {
      Sentence buffer;
      std::string const text(row.used, 'x');
      buffer.getBuffer(row.used);
      text.copy(buffer.writePtr, text.size());
      buffer.writePtr += row.used;
      buffer.allocateSpace(row.required);
      EXPECT_EQ(capacity(buffer), row.capacity) << row.used << " + " << row.required;
      EXPECT_EQ(buffer.view(), text);
   }
}

TEST(StackBackedBuffer, AskingForNothingKeepsTheStorageUsable) {
   Sentence buffer;
   buffer.allocateSpace(0);
   buffer.allocateSpace(0);
   buffer.add("text");
   EXPECT_EQ(buffer.view(), "text");
}

TEST(StackBackedBuffer, WithoutMemoryTheTextStays) {
   Sentence buffer;
   std::size_t const tooMuch = std::numeric_limits<std::ptrdiff_t>::max();
   for (std::string const& text : {std::string("in place"), std::string(200, 'x')}) {
      buffer.add(text);
      std::string const before(buffer.view());
      EXPECT_THROW(buffer.allocateSpace(tooMuch), std::bad_alloc);
      EXPECT_EQ(buffer.view(), before);
      buffer.add("more");
      EXPECT_EQ(buffer.view(), before + "more");
   }
}

TEST(StackBackedBuffer, AddKeepsTheTextTerminated) {
   Sentence buffer;
   std::string expected;
   for (int i = 0; i < 400; ++i) {
      buffer.add(i % 3 == 0 ? "" : "State change: ");
      expected += i % 3 == 0 ? "" : "State change: ";
      ASSERT_EQ(buffer.view(), expected);
      ASSERT_EQ(*buffer.writePtr, '\0');
   }
}

TEST(StackBackedBuffer, StaysInPlaceWhileTextAndTerminatorFit) {
   Sentence buffer;
   char const* const start = buffer.bufferStart;
   buffer.add(std::string(127, 'x'));
   EXPECT_EQ(buffer.bufferStart, start);
   buffer.add("y");
   EXPECT_NE(buffer.bufferStart, start);
   EXPECT_EQ(buffer.view(), std::string(127, 'x') + "y");
}

TEST(StackBackedBuffer, AddsNumbers) {
   struct Row {
      std::uint64_t value;
      std::string text;
   };
   std::vector<Row> const rows{{0, "0"}, {7, "7"}, {10, "10"}, {65535, "65535"}};
   for (Row const& row : rows) {
      Sentence buffer;
      EXPECT_EQ(buffer.add(static_cast<unsigned short>(row.value)), row.text.size());
      EXPECT_EQ(buffer.view(), row.text);
      EXPECT_EQ(*buffer.writePtr, '\0');
      EXPECT_EQ(buffer.add(row.value), row.text.size());
      EXPECT_EQ(buffer.view(), row.text + row.text);
   }
   Sentence buffer;
   EXPECT_EQ(buffer.add(std::uint64_t{18446744073709551615u}), 20u);
   EXPECT_EQ(buffer.add(std::uint32_t{4294967295}), 10u);
   EXPECT_EQ(buffer.add(std::uint8_t{65}), 2u);
   EXPECT_EQ(buffer.view(), "18446744073709551615429496729565");
}

TEST(DynamicBufferInterface, GetBufferDoesNotMoveTheWritePosition) {
   Sentence buffer;
   buffer.add("abc");
   for (std::size_t required : {10u, 1000u}) {
      char* const place = buffer.getBuffer(required);
      EXPECT_EQ(place, buffer.bufferStart + 3);
   }
   EXPECT_EQ(buffer.view(), "abc");
   EXPECT_EQ(capacity(buffer), 1003u);
}

class StingyBuffer : public Kerf::DynamicBufferInterface {
public:
   StingyBuffer() {
      writePtr = storage_;
      endPtr = storage_ + 4;
   }
   void allocateSpace(std::size_t) override { endPtr = storage_ + 9; }

private:
   char storage_[16];
};

TEST(DynamicBufferInterfaceDeathTest, AReserveThatLeavesTooLittleEndsTheProcess) {
   StingyBuffer buffer;
   EXPECT_EQ(buffer.getBuffer(9), buffer.writePtr);
   EXPECT_DEATH(buffer.getBuffer(10), "assertion failed: endPtr - writePtr >= ptrdiff_t\\( required \\)");
}

} // namespace
