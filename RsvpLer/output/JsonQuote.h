#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

// The body of a JSON string. A control byte (below 32), the double quote and the backslash are escaped; every
// other byte passes as it stands, so UTF-8 goes through and invalid sequences are not noticed.
//
//   a"b, line feed, byte 31, ü   ->   a\"b\n\u001Fü

namespace scrivo::helpers {

constexpr bool needsEscape(char c) noexcept {
   return static_cast<unsigned char>(c) < 32 || c == '"' || c == '\\';
}

struct QuotedSize {
   std::size_t size; // bytes that the escaped text takes
   bool trivial;     // nothing must be escaped, and `size` is the size of the text
};

// The count pass: what jsonQuote will write.
QuotedSize quotedSize(std::string_view text) noexcept;

struct Quoted {
   bool trivial; // nothing was escaped
   char* end;    // one past the last byte written
};

// The quote pass: writes the bytes from `first` to `last` at `destination` with their escapes, where
// quotedSize().size bytes must be free. Stores no NUL. An empty range writes nothing.
Quoted jsonQuote(char const* first, char const* last, char* destination) noexcept;

// Not zero when one of the eight bytes must be escaped.
inline std::uint64_t escapesIn(std::uint64_t bytes) noexcept {
   constexpr std::uint64_t ones = 0x0101010101010101;
   // With bit 1 turned over, the double quote is 32 and the control bytes stay below it; nothing else comes there.
   std::uint64_t const low = bytes ^ ones * 2;
   std::uint64_t const backslash = bytes ^ ones * '\\';
   return (((low - ones * 33) & ~low) | ((backslash - ones) & ~backslash)) & ones * 0x80;
}

template<class Word>
Word loadWord(char const* at) noexcept {
   Word word;
   std::memcpy(&word, at, sizeof word);
   return word;
}

// Copies a word and returns what escapesIn says of it.
inline std::uint64_t copyWord(char* destination, char const* from) noexcept {
   auto const word = loadWord<std::uint64_t>(from);
   std::memcpy(destination, &word, sizeof word);
   return escapesIn(word);
}

// Copies the text to `destination`, where its size must be free, and returns whether nothing in it must be escaped.
// When something must, the bytes at `destination` are of no use. A length that is no multiple of eight is covered by
// two words that overlap.
inline bool copyIfTrivial(char* destination, std::string_view text) noexcept {
   char const* const from = text.data();
   std::size_t const size = text.size();
   if (size >= 8) {
      for (std::size_t at = 0; at + 8 < size; at += 8)
         if (copyWord(destination + at, from + at) != 0)
            return false;
      return copyWord(destination + size - 8, from + size - 8) == 0;
   }
   if (size >= 4) {
      auto const first = loadWord<std::uint32_t>(from);
      auto const last = loadWord<std::uint32_t>(from + size - 4);
      std::memcpy(destination, &first, sizeof first);
      std::memcpy(destination + size - 4, &last, sizeof last);
      return escapesIn(std::uint64_t{first} << 32 | last) == 0;
   }
   bool trivial = true;
   for (std::size_t at = 0; at < size; ++at) {
      trivial = trivial && !needsEscape(from[at]);
      destination[at] = from[at];
   }
   return trivial;
}

} // namespace scrivo::helpers
