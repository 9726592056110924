#include "RsvpLer/output/JsonQuote.h"

#include "tests/fuzz/Fuzz.h"

#include <nlohmann/json.hpp>
#include <simdjson.h>

#include <memory>
#include <string>

// Quoted text is what the reading of it gives back: by a parser that isn't ours where the text is UTF-8, and by the
// plain inverse of the rules where it is anything.

namespace {

using scrivo::helpers::copyIfTrivial;
using scrivo::helpers::jsonQuote;
using scrivo::helpers::quotedSize;

char unescaped(std::string_view& rest) {
   char const letter = rest.front();
   rest.remove_prefix(1);
   constexpr std::string_view letters = "\"\\bfnrt";
   constexpr std::string_view bytes = "\"\\\b\f\n\r\t";
   if (letter != 'u') {
      Fuzz::require(letters.find(letter) != letters.npos, "an escape is one that JSON knows");
      return bytes[letters.find(letter)];
   }
   std::string const digits(rest.substr(0, 4));
   rest.remove_prefix(digits.size());
   int const byte = std::stoi(digits, nullptr, 16);
   Fuzz::require(digits.size() == 4 && byte < 32, "only control bytes are escaped by number");
   return static_cast<char>(byte);
}

std::string unquoted(std::string_view rest) {
   std::string text;
   while (!rest.empty()) {
      char const c = rest.front();
      rest.remove_prefix(1);
      Fuzz::require(static_cast<unsigned char>(c) >= 32 && c != '"', "such a byte is escaped");
      text += c == '\\' ? unescaped(rest) : c;
   }
   return text;
}

// Into memory of just the size that was promised.
std::string quoted(std::string_view text) {
   auto const size = quotedSize(text);
   auto const place = std::make_unique<char[]>(size.size);
   auto const result = jsonQuote(text.data(), text.data() + text.size(), place.get());
   Fuzz::require(result.end == place.get() + size.size, "the size is the one that was counted");
   Fuzz::require(result.trivial == size.trivial, "both passes agree on whether there is something to escape");
   return {place.get(), size.size};
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
   std::string_view const text = Fuzz::textOf(data, size);
   std::string const body = quoted(text);
   Fuzz::require(unquoted(body) == text, "unquoting gives the text back");
   if (simdjson::validate_utf8(text.data(), text.size()))
      Fuzz::require(nlohmann::json::parse('"' + body + '"').get<std::string>() == text, "a parser gives the text back");
   auto const copy = std::make_unique<char[]>(text.size());
   bool const trivial = copyIfTrivial(copy.get(), text);
   Fuzz::require(trivial == (body == text), "a copy is taken just where nothing must be escaped");
   Fuzz::require(!trivial || std::string_view(copy.get(), text.size()) == text, "the copy is the text");
   return 0;
}
