#include "brindle/ValueText.h"

#include "brindle/Exception.h"

namespace Brindle {

namespace {

bool needsBackslash(char c) noexcept {
   return c == '\'' || c == '\\';
}

String quoted(String const& text) {
   String result = "'";
   for (char const c : text) {
      if (needsBackslash(c))
         result += '\\';
      result += c;
   }
   return result + '\'';
}

template<class Number>
bool appendNumber(String& text, GenericValue const& value) {
   if (!value.holds<Number>())
      return false;
   text += std::to_string(value.get<Number>());
   return true;
}

[[noreturn]] void failAt(Vane::CharRange const& text, String const& what) {
   throw Exception(what + " at character " + std::to_string(text.position() + 1));
}

// What stands up to the closing quote, which is read too.
String readQuoted(Vane::CharRange& text) {
   String result;
   while (!text.skip("'")) {
      bool const escaped = text.skip("\\");
      if (text.empty())
         failAt(text, "the text ends before its closing quote");
      if (escaped && !needsBackslash(text.rest().front()))
         failAt(text, "a backslash stands before a character that needs none");
      result += text.take();
   }
   return result;
}

} // namespace

void appendAttribute(String& text, std::string_view name, GenericValue const& value) {
   text.append(text.empty() ? "<" : "_<").append(name) += '=';
   if (value.holds<String>())
      text += quoted(value.get<String>());
   else if (!appendNumber<bool>(text, value) && !appendNumber<std::uint8_t>(text, value) &&
            !appendNumber<std::uint16_t>(text, value) && !appendNumber<std::uint32_t>(text, value) &&
            !appendNumber<std::uint64_t>(text, value))
      throw Exception("the attribute " + String(name) + " has no text form");
   text += '>';
}

String readTextAttribute(Vane::CharRange& text, std::string_view name) {
   if (!text.skip("<") || !text.skip(name) || !text.skip("='"))
      failAt(text, "expected <" + String(name) + "='...'>");
   String value = readQuoted(text);
   if (!text.skip(">"))
      failAt(text, "expected > behind " + String(name));
   return value;
}

void requireConsumed(Vane::CharRange const& text) {
   if (!text.empty())
      failAt(text, "unexpected text behind the value");
}

} // namespace Brindle
