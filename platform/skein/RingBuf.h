#pragma once

#include "skein/Layout.h"

#include <cstring>
#include <string_view>

namespace Skein {

class RingBuf;

// A record in the making. Values that don't fit make it a record that is skipped.
class Msg {
public:
   void put(std::string_view text) noexcept {
      if (text.size() > sizeof values_) {
         fits_ = false;
         return;
      }
      putNumber(static_cast<std::uint16_t>(text.size()));
      putBytes(text.data(), text.size());
   }
   void put(std::uint32_t number) noexcept { putNumber(number); }
   void put(std::uint8_t number) noexcept { putNumber(number); }

   // A record has the fields of nested values one behind the other.
   struct Nothing {};
   Nothing open(std::string_view) noexcept { return {}; }
   void close(Nothing) noexcept {}

   // Enters the record into the ring. Returns its number, or 0 when it was skipped.
   std::uint64_t end() noexcept;

private:
   friend class RingBuf;
   Msg(RingBuf& ring, std::uint16_t message, std::uint16_t depth) noexcept
         : ring_(ring), message_(message), depth_(depth), fits_(message != noDescription) {}

   template<class Number>
   void putNumber(Number number) noexcept {
      putBytes(&number, sizeof number);
   }
   void putBytes(void const* bytes, std::size_t count) noexcept {
      fits_ = fits_ && count <= sizeof values_ - size_;
      if (!fits_ || count == 0)
         return;
      std::memcpy(values_ + size_, bytes, count);
      size_ += count;
   }

   RingBuf& ring_;
   std::uint16_t message_;
   std::uint16_t depth_;
   bool fits_;
   std::size_t size_ = 0;
   std::byte values_[sizeof(Slot::values)];
};

// The ring of a trace file. Any number of threads may write at once; none ever waits: where two meet in one slot, which
// takes a thread that is a whole ring behind, one of the records is skipped.
class RingBuf {
public:
   // The header and the slots stay the caller's.
   RingBuf(FileHeader& header, Slot* slots) noexcept;

   // Starts a record of the message with that description, at that depth of calls; with noDescription it will be
   // skipped.
   Msg startMsg(std::uint16_t message, std::uint16_t depth) noexcept { return {*this, message, depth}; }
   // Enters the time since the record's start as its duration; without effect when the record isn't there any more.
   void blockEnded(std::uint64_t record) noexcept;

private:
   friend class Msg;
   std::uint64_t enter(Msg const& msg) noexcept;
   std::uint64_t now() const noexcept;
   Slot& slotOf(std::uint64_t record) const noexcept { return slots_[(record - 1) % header_.slotCapacity]; }

   FileHeader& header_;
   Slot* slots_;
   std::uint64_t made_; // on the clock that now() reads
};

inline std::uint64_t Msg::end() noexcept {
   return ring_.enter(*this);
}

} // namespace Skein
