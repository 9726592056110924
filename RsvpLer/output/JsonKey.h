#pragma once

#include "RsvpLer/output/JsonQuote.h"

#include <cstddef>
#include <string_view>
#include <type_traits>

namespace scrivo {

// The key of a JSON member, as a parameter takes it. Made of a string literal, its length is known to the
// compiler and it is copied as it stands: a literal in which something must be escaped doesn't compile. Made
// of any other text (a tunnel's name, an address), it is quoted like a string value and may hold any byte. It
// refers to the text it was made of. A local character array must be given as a std::string_view.
class JsonKey {
public:
   template<std::size_t size>
   consteval JsonKey(char const (&literal)[size]) : text_(literal, size - 1), isLiteral_(true) {
      for (char c : text_)
         if (helpers::needsEscape(c))
            throw "a literal key must be free of bytes that JSON escapes";
   }
   template<class Text>
   requires(std::is_convertible_v<Text const&, std::string_view> &&
            !std::is_array_v<Text>) constexpr JsonKey(Text const& text)
         : text_(text), isLiteral_(false) {}

   constexpr std::string_view text() const noexcept { return text_; }
   constexpr bool isLiteral() const noexcept { return isLiteral_; }

private:
   std::string_view text_;
   bool isLiteral_;
};

} // namespace scrivo
