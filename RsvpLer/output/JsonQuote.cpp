#include "RsvpLer/output/JsonQuote.h"

namespace scrivo::helpers {

namespace {

// What follows the backslash for each control byte; u stands for the form with four hexadecimal digits.
constexpr std::string_view escapeClasses = "uuuuuuuubtnufruuuuuuuuuuuuuuuuuu";
constexpr std::string_view hexDigits = "0123456789ABCDEF";

constexpr char escapeLetter(char c) noexcept {
   return c == '"' || c == '\\' ? c : escapeClasses[static_cast<unsigned char>(c)];
}

// The first byte from `at` on that must be escaped, or `last`.
char const* findEscape(char const* at, char const* last) noexcept {
   while (last - at >= 8 && escapesIn(loadWord<std::uint64_t>(at)) == 0)
      at += 8;
   while (at != last && !needsEscape(*at))
      ++at;
   return at;
}

char* putEscape(char* at, char c) noexcept {
   char const letter = escapeLetter(c);
   *at++ = '\\';
   *at++ = letter;
   if (letter != 'u')
      return at;
   *at++ = '0';
   *at++ = '0';
   *at++ = hexDigits[static_cast<unsigned char>(c) >> 4];
   *at++ = hexDigits[static_cast<unsigned char>(c) & 15];
   return at;
}

} // namespace

QuotedSize quotedSize(std::string_view text) noexcept {
   char const* const last = text.data() + text.size();
   QuotedSize result{text.size(), true};
   for (char const* at = findEscape(text.data(), last); at != last; at = findEscape(at + 1, last)) {
      result.size += escapeLetter(*at) == 'u' ? 5 : 1;
      result.trivial = false;
   }
   return result;
}

Quoted jsonQuote(char const* first, char const* last, char* destination) noexcept {
   bool trivial = true;
   while (first != last) {
      char const* const run = findEscape(first, last);
      auto const length = static_cast<std::size_t>(run - first);
      if (length != 0)
         std::memcpy(destination, first, length);
      destination += length;
      first = run;
      if (run != last) {
         destination = putEscape(destination, *first++);
         trivial = false;
      }
   }
   return {trivial, destination};
}

} // namespace scrivo::helpers
