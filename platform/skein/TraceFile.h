#pragma once

#include "brindle/String.h"
#include "skein/Layout.h"
#include "skein/RingBuf.h"
#include "skein/TraceError.h"

#include <atomic>
#include <memory>
#include <mutex>

namespace Skein {

// A message as a trace file knows it. The identifier of another file is as good as none.
using MessageId = std::uint64_t;
inline constexpr MessageId unsetMessageId = 0;

// A trace file that this process writes. All of it may be called by several threads at once.
class TraceFile {
public:
   // Makes the file, with room for all that it will ever hold, and puts it in the place of an older trace of that name.
   // Throws TraceError; a file that isn't a trace is left alone.
   explicit TraceFile(Brindle::String const& fileName, Geometry geometry = {});
   ~TraceFile();
   TraceFile(TraceFile const&) = delete;
   TraceFile& operator=(TraceFile const&) = delete;

   RingBuf& ringBuf() noexcept { return ringBuf_; }
   // Tells this file from every other of the process; never 0.
   std::uint32_t generation() const noexcept { return generation_; }

   // The type with that description, entered at the first call; noComponent when the table is full.
   Component typeIs(Description const& description) noexcept;
   // The same for a message; undescribedMessage when the table is full.
   MessageId messageIs(Description const& description) noexcept;
   // What a message is known by that has no description, so that it isn't tried again.
   MessageId undescribedMessage() const noexcept { return std::uint64_t{generation_} << 32 | noDescription; }
   // Whether the identifier is one of this file.
   bool knows(MessageId id) const noexcept { return id >> 32 == generation_; }
   // What RingBuf::startMsg takes for a message of this file.
   static std::uint16_t descriptionOf(MessageId id) noexcept { return static_cast<std::uint16_t>(id); }

   // What a component of a description adds to its type string; it must be one of this file.
   std::string_view typeString(Component component) const noexcept;

private:
   std::uint16_t descriptionIndex(Description const& description) noexcept;
   FileHeader& header() const noexcept { return *static_cast<FileHeader*>(memory_); }
   std::byte* at(std::size_t offset) const noexcept { return static_cast<std::byte*>(memory_) + offset; }
   Description* descriptions() const noexcept {
      return reinterpret_cast<Description*>(at(geometry_.descriptionsOffset()));
   }

   Geometry geometry_;
   std::uint32_t generation_;
   void* memory_;
   RingBuf ringBuf_;
   std::mutex mutex_; // of the descriptions
};

namespace Impl {
extern constinit std::atomic<TraceFile*> defaultTraceFile;
void endBlock(std::uint64_t ticket) noexcept;
} // namespace Impl

// The file that the process traces into, or none. Whoever uses it holds a Vane::Pin from before this call on.
inline TraceFile* defaultTraceFile() noexcept {
   return Impl::defaultTraceFile.load(std::memory_order_acquire);
}

// Whether there is such a file; needs no pin.
inline bool hasDefaultTraceFile() noexcept {
   return Impl::defaultTraceFile.load(std::memory_order_relaxed) != nullptr;
}

// Traces into that file from now on, or into none; the one before is closed when the last thread that writes in it is
// done.
void defaultTraceFileIs(std::unique_ptr<TraceFile> file) noexcept;

// A call in progress, whose duration is to be entered in its record. Small, since every traced function holds one.
class BlockTimerMsg {
public:
   // There is none.
   constexpr BlockTimerMsg() noexcept = default;
   // On a record of that file; none when its number is 0.
   BlockTimerMsg(TraceFile const& file, std::uint64_t record) noexcept
         : ticket_(record == 0 ? 0 : std::uint64_t{file.generation()} << recordBits | record) {}

   explicit operator bool() const noexcept { return ticket_ != 0; }
   // Enters the duration, if the file is still the one that the process traces into.
   void end() const noexcept { Impl::endBlock(ticket_); }
   static constexpr unsigned recordBits = 48; // the low ones of the ticket; the others are the lowest of the generation

private:
   std::uint64_t ticket_ = 0;
};

} // namespace Skein
