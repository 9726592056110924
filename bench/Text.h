#pragma once

#include <cstdio>
#include <string>

// Numbers as the notes of the table show them.

namespace Bench {

inline std::string shown(double value, char const* unit) {
   char text[64];
   std::snprintf(text, sizeof text, "%.4g %s", value, unit);
   return text;
}

inline std::string milliseconds(double seconds) {
   return shown(seconds * 1e3, "ms");
}

inline std::string nanoseconds(double seconds) {
   return shown(seconds * 1e9, "ns");
}

} // namespace Bench
