#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

// What the fuzz targets have in common. Each is a program of its own: with libFuzzer in the fuzz preset, and elsewhere
// with a main that runs the committed corpus.

// Runs one input. Returns 0; a finding ends the process.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace Fuzz {

inline std::string_view textOf(std::uint8_t const* data, std::size_t size) {
   return {reinterpret_cast<char const*>(data), size};
}

inline void require(bool condition, char const* what) {
   if (condition)
      return;
   std::fprintf(stderr, "it doesn't hold that %s\n", what);
   std::abort();
}

// One line of printable ASCII, fit for any terminal.
inline bool isPlainLine(std::string_view text) {
   for (char const c : text)
      if (c < 0x20 || c > 0x7e)
         return false;
   return !text.empty();
}

} // namespace Fuzz
