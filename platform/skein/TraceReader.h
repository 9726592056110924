#pragma once

#include "brindle/String.h"
#include "skein/Layout.h"
#include "skein/TraceError.h"
#include "skein/Twine.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace Skein {

// One call of a traced function. Its texts stay as long as the reader.
struct TraceRecord {
   std::uint64_t number = 0;              // in the order of the starts
   std::uint64_t start = 0;               // nanoseconds since the file was made
   std::optional<std::uint64_t> duration; // nanoseconds; absent for a call that had not ended
   std::uint32_t thread = 0;
   std::uint16_t depth = 0;
   std::string_view function;
   std::string_view sourcePath;
   std::uint32_t line = 0;
   Brindle::String arguments;
};

// What a trace file holds, whoever may still write it.
class TraceReader {
public:
   // Reads the whole file. Throws TraceError when it isn't a trace file or its descriptions are damaged.
   explicit TraceReader(Brindle::String const& fileName);

   std::span<Description const> descriptions() const noexcept { return descriptions_; }
   // How many records the writer had to leave out.
   std::uint64_t skippedRecords() const noexcept { return skipped_; }

   // The number of records; those that a writer has not finished don't count.
   std::size_t size() const noexcept { return slots_.size(); }
   // The records from the oldest to the newest. Nothing for one that is damaged.
   std::optional<TraceRecord> record(std::size_t index) const;

private:
   // A slot of the file, which may hold any bytes.
   struct StoredSlot {
      std::uint64_t number;
      bool isInPlace; // where a record of that number belongs
      std::byte const* bytes;
   };
   class Values;

   bool readDescriptions(Geometry const& geometry, std::vector<std::byte> const& bytes);
   bool isSound(std::size_t index) const;
   std::string_view typeString(Component component) const noexcept;
   // `later` is the file as it was read once more.
   void readSlots(Geometry const& geometry, std::vector<std::byte> const& later);
   // Each tells whether the values of the record suffice.
   template<class T>
   static bool putPlain(Twine::Text& text, Values& values);
   bool putValue(Twine::Text& text, Component component, Values& values) const;
   bool putFields(Twine::Text& text, Description const& description, Values& values) const;

   std::vector<std::byte> bytes_;
   std::vector<Description> descriptions_;
   std::vector<StoredSlot> slots_;
   std::uint64_t skipped_ = 0;
};

} // namespace Skein
