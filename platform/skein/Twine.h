#pragma once

#include "brindle/String.h"

#include <cstdint>
#include <string_view>

namespace Twine {

// Puts traced values into text. A value goes to the next place of the format that is open, "{}", or "{x}" for
// hexadecimal, or to the end of the text where there is none. Bytes that would break the line become question marks.
class Text {
public:
   // What was open before; close takes it back.
   struct Outer {
      std::string_view format;
      bool hex;
   };

   // Words between the values.
   void add(std::string_view words) { text_.append(words); }
   void put(std::string_view text);
   void put(std::uint32_t number);
   void put(std::uint8_t number) { put(std::uint32_t{number}); }

   // A value that has a format of its own: its fields are put between the two calls. In a hexadecimal place all its
   // numbers are so. The format must stay until it is closed.
   Outer open(std::string_view format);
   void close(Outer outer);

   Brindle::String const& text() const noexcept { return text_; }

private:
   bool goToPlace();

   Brindle::String text_;
   std::string_view format_; // what is left of it
   bool hex_ = false;        // of the value that is open
};

} // namespace Twine
