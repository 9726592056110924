#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>

// The form of a trace file.
//
//    FileHeader
//    Description x descriptionCapacity    the first descriptionCount are in use
//    Slot x slotCapacity                  a ring of records
//
// Numbers stand in the byte order of the machine that wrote the file. A description is either of a type, whose values
// are shown in a form of their own, or of a message, that is of one traced function. Each has a format, the text form
// with a place for each of its components, "{}", or "{x}" where numbers are shown in hexadecimal. A component is a
// string, a number, or a type that stands further up in the table. The type string lists the leaves of the components
// in order: p a string, i a number of 32 bits, u one of 8 bits.
//
// The records are numbered from 1 on; record n stands in slot (n - 1) modulo slotCapacity, where it replaces an older
// one. A record holds the values of its message's type string one behind the other: a string as its length in 16 bits
// and its bytes, a number as it is.
//
// The file is mapped by one process, several threads of which may write at once. The state of a slot is twice the
// number of its record, plus 1 while a thread has the slot for itself to write in it, and 0 before the first record.

namespace Skein {

using Component = std::uint16_t;
inline constexpr Component stringComponent = 1;
inline constexpr Component u32Component = 2;
inline constexpr Component u8Component = 3;
inline constexpr Component firstType = 16;       // the type with the first description
inline constexpr Component noComponent = 0xffff; // of a type that couldn't be described

// What a component that is no type is in a type string.
constexpr std::string_view plainTypeString(Component component) noexcept {
   return component == stringComponent ? "p" : component == u32Component ? "i" : "u";
}

struct FileHeader {
   static constexpr std::array<char, 8> fileMagic = {'S', 'K', 'E', 'I', 'N', '0', '0', '1'};
   static constexpr std::uint32_t nativeByteOrder = 0x01020304;

   std::array<char, 8> magic = fileMagic;
   std::uint32_t byteOrder = nativeByteOrder;
   std::uint32_t descriptionCapacity = 0;
   std::uint32_t slotCapacity = 0;
   std::atomic<std::uint32_t> descriptionCount = 0;
   std::atomic<std::uint64_t> lastRecord = 0;
   std::atomic<std::uint64_t> skippedRecords = 0;
};

enum class DescriptionKind : std::uint8_t { type = 1, message = 2 };

inline constexpr std::uint16_t noDescription = 0xffff; // the index of a message that the table has no room for

struct Description {
   static constexpr std::size_t maxComponents = 9;

   DescriptionKind kind = DescriptionKind::type;
   std::uint8_t componentCount = 0;
   std::array<Component, maxComponents> components = {};
   std::uint32_t line = 0;
   // Each text ends in a NUL.
   std::array<char, 64> sourcePath = {};
   std::array<char, 64> name = {}; // of the type or the function
   std::array<char, 64> typeString = {};
   std::array<char, 128> format = {};
};

struct Slot {
   static constexpr std::uint64_t notEnded = ~std::uint64_t{0};

   std::atomic<std::uint64_t> state = 0;
   std::uint64_t start = 0;           // nanoseconds since the file was made
   std::uint64_t duration = notEnded; // nanoseconds
   std::uint32_t thread = 0;          // the system's number of it
   std::uint16_t message = 0;         // the index of its description
   std::uint16_t depth = 0;
   std::uint16_t size = 0; // bytes of values
   std::array<std::byte, 478> values = {};
};

static_assert(sizeof(FileHeader) == 40 && sizeof(Description) == 344 && sizeof(Slot) == 512);
static_assert(std::atomic<std::uint64_t>::is_always_lock_free, "a lock isn't shared through a file");

// How much a file holds.
struct Geometry {
   static constexpr std::uint32_t maxDescriptions = 4096;
   static constexpr std::uint32_t maxSlots = 131072;

   std::uint32_t descriptions = 512;
   std::uint32_t slots = 16384;

   constexpr std::size_t descriptionsOffset() const noexcept { return sizeof(FileHeader); }
   constexpr std::size_t slotsOffset() const noexcept {
      return descriptionsOffset() + descriptions * sizeof(Description);
   }
   constexpr std::size_t fileSize() const noexcept { return slotsOffset() + slots * sizeof(Slot); }
   constexpr bool isValid() const noexcept {
      return descriptions > 0 && descriptions <= maxDescriptions && slots > 0 && slots <= maxSlots;
   }
};

// The text of a field that a NUL ends, or fills.
template<std::size_t size>
constexpr std::string_view fieldText(std::array<char, size> const& field) noexcept {
   std::string_view const whole(field.data(), size);
   return whole.substr(0, whole.find('\0'));
}

} // namespace Skein
