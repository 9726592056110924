#include "tests/properties/TextReader.h"

#include <algorithm>

namespace Tests {

bool TextReader::skip(std::string_view characters) noexcept {
   if (!rest_.starts_with(characters))
      return false;
   rest_.remove_prefix(characters.size());
   return true;
}

void TextReader::expect(std::string_view characters) {
   if (!skip(characters))
      fail('"' + std::string(characters) + '"');
}

void TextReader::expectAny(std::initializer_list<std::string> alternatives) {
   for (std::string const& alternative : alternatives)
      if (skip(alternative))
         return;
   fail('"' + *alternatives.begin() + "\" or the like");
}

void TextReader::expectEnd() {
   if (!atEnd())
      fail("nothing more that JSON knows of");
}

std::string_view TextReader::until(std::string_view end) {
   std::size_t const at = rest_.find(end);
   if (at == std::string_view::npos)
      fail("something before \"" + std::string(end) + '"');
   std::string_view const before = rest_.substr(0, at);
   rest_.remove_prefix(at + end.size());
   return before;
}

void TextReader::fail(std::string const& expected) const {
   std::size_t const at = text_.size() - rest_.size();
   std::size_t const from = at - std::min<std::size_t>(at, 400);
   throw Disagreement("JSON has " + expected + " at byte " + std::to_string(at) + " of the text:\n" +
                      std::string(text_.substr(from, at - from)) + "<<<here>>>" + std::string(rest_.substr(0, 200)));
}

} // namespace Tests
