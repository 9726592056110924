#include "host/state/SourceText.h"

#include <algorithm>
#include <cstdint>

namespace Host {

namespace {

std::uint8_t byteAt(std::string_view text, std::size_t position) noexcept {
   return position < text.size() ? static_cast<std::uint8_t>(text[position]) : 0;
}

// The length of the well-formed UTF-8 sequence at the position; 0 when there is none. Overlong forms, surrogates and
// numbers above U+10FFFF are not well formed.
std::size_t sequenceLength(std::string_view text, std::size_t position) noexcept {
   std::uint8_t const lead = byteAt(text, position);
   if (lead < 0x80)
      return 1;
   std::size_t const length = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : 2;
   if (lead < 0xc2 || lead > 0xf4)
      return 0;
   std::uint8_t const second = byteAt(text, position + 1);
   std::uint8_t const lowest = lead == 0xe0 ? 0xa0 : lead == 0xf0 ? 0x90 : 0x80;
   std::uint8_t const highest = lead == 0xed ? 0x9f : lead == 0xf4 ? 0x8f : 0xbf;
   if (second < lowest || second > highest)
      return 0;
   for (std::size_t i = 2; i < length; ++i) {
      if ((byteAt(text, position + i) & 0xc0) != 0x80)
         return 0;
   }
   return length;
}

bool isBlank(char c) noexcept {
   return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool isControl(char c) noexcept {
   auto const byte = static_cast<std::uint8_t>(c);
   return byte < 0x20 || byte == 0x7f;
}

bool isPrintable(char c) noexcept {
   return !isControl(c) && static_cast<std::uint8_t>(c) < 0x80;
}

void appendByte(std::string& text, char c, bool inHex) {
   static constexpr char digits[] = "0123456789abcdef";
   auto const byte = static_cast<std::uint8_t>(c);
   if (inHex)
      text.append("\\x").append(1, digits[byte >> 4]).append(1, digits[byte & 15]);
   else
      text += c;
}

// The end of the string whose opening quote stands at the position, or of the text.
std::size_t stringEnd(std::string_view text, std::size_t position) noexcept {
   std::size_t at = position + 1;
   while (at < text.size() && text[at] != '"')
      at += text[at] == '\\' ? 2 : 1;
   return std::min(at + 1, text.size());
}

} // namespace

std::string printable(std::string_view part, std::size_t limit) {
   std::string result;
   for (char const c : part.substr(0, limit))
      appendByte(result, c, !isPrintable(c));
   if (part.size() > limit)
      result += "...";
   return result;
}

std::string inOneLine(std::string_view text) {
   std::string result;
   for (char const c : text)
      appendByte(result, c, isControl(c));
   return result;
}

std::string shownFileName(std::string_view name) {
   return inOneLine(name == "-" ? "standard input" : name);
}

std::string lineAndColumn(std::string_view text, std::size_t position) {
   std::string_view const before = text.substr(0, position);
   auto const lines = std::count(before.begin(), before.end(), '\n');
   std::size_t const lineFeed = before.rfind('\n');
   std::size_t const column = lineFeed == std::string_view::npos ? position : position - lineFeed - 1;
   return std::to_string(lines + 1) + ':' + std::to_string(column + 1);
}

std::string describeToken(std::string_view text, std::size_t position) {
   if (position >= text.size())
      return "the end of the file";
   if (!isPrintable(text[position]))
      return printable(text.substr(position, 1));
   std::size_t end = position + 1;
   switch (text[position]) {
   case '{':
      return "an object";
   case '[':
      return "an array";
   case '"':
      end = stringEnd(text, position);
      break;
   case ']':
   case '}':
   case ',':
   case ':':
      break;
   default:
      while (end < text.size() && !isBlank(text[end]) &&
             std::string_view("{}[],:\"").find(text[end]) == std::string_view::npos)
         ++end;
   }
   return printable(text.substr(position, end - position));
}

std::optional<TextDefect> findTextDefect(std::string_view text) noexcept {
   static constexpr std::size_t outside = std::string_view::npos;
   std::size_t opening = outside;
   for (std::size_t at = 0; at < text.size();) {
      std::size_t const length = sequenceLength(text, at);
      if (length == 0)
         return TextDefect{at, "UTF-8 text"};
      if (opening != outside && static_cast<std::uint8_t>(text[at]) < 0x20)
         return TextDefect{at, "no control character in a string"};
      bool const escape = opening != outside && text[at] == '\\' && at + 1 < text.size();
      if (text[at] == '"')
         opening = opening == outside ? at : outside;
      // What follows a backslash is looked at once more when it is a byte that may be defective.
      at += escape && (text[at + 1] == '"' || text[at + 1] == '\\') ? 2 : length;
   }
   if (opening != outside)
      return TextDefect{opening, "a string with a closing quote"};
   return std::nullopt;
}

} // namespace Host
