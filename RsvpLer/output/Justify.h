#pragma once

#include <cstdint>

namespace Kerf {

// A value laid out in a column of `width` bytes: the text first and `fill` after it. A text longer than the
// column is written whole. T is char const* (terminated by a NUL), std::string_view, or for JustifyRight an
// unsigned int.
template<class T>
struct JustifyLeft {
   std::uint64_t width;
   T text;
   char fill = ' ';
};

// The same with `fill` first and the text after it.
template<class T>
struct JustifyRight {
   std::uint64_t width;
   T text;
   char fill = ' ';
};

} // namespace Kerf
