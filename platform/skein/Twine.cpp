#include "skein/Twine.h"

#include <charconv>

namespace Twine {

// Writes the words before the next place and steps over that. Returns whether it is a hexadecimal one.
bool Text::goToPlace() {
   std::size_t const begin = format_.find('{');
   text_.append(format_.substr(0, begin));
   if (begin == std::string_view::npos) {
      format_ = {};
      return hex_;
   }
   std::string_view const place = format_.substr(begin, format_.find('}', begin) - begin);
   format_.remove_prefix(std::min(format_.size(), begin + place.size() + 1));
   return hex_ || place == "{x";
}

void Text::put(std::string_view text) {
   goToPlace();
   for (char const c : text) {
      auto const byte = static_cast<unsigned char>(c);
      text_.push_back(byte < 0x20 || byte == 0x7f ? '?' : c);
   }
}

void Text::put(std::uint32_t number) {
   bool const hex = goToPlace();
   char digits[10];
   auto const end = std::to_chars(digits, digits + sizeof digits, number, hex ? 16 : 10).ptr;
   text_.append(digits, end);
}

Text::Outer Text::open(std::string_view format) {
   bool const hex = goToPlace();
   Outer const outer{format_, hex_};
   format_ = format;
   hex_ = hex;
   return outer;
}

void Text::close(Outer outer) {
   text_.append(format_);
   format_ = outer.format;
   hex_ = outer.hex;
}

} // namespace Twine
