#include "host/state/JsonReader.h"

#include "host/state/SourceText.h"
#include "host/state/StateError.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

namespace Host {

namespace {

// Where the string that begins at `first` ends: its closing quote. There is one.
char const* closingQuote(char const* first) noexcept {
   while (*first != '"')
      first += *first == '\\' ? 2 : 1;
   return first;
}

// Half of a surrogate pair, which no UTF-8 text holds, got in through an escape.
bool hasLoneSurrogate(std::string_view text) noexcept {
   for (std::size_t at = text.find('\xed'); at != std::string_view::npos; at = text.find('\xed', at + 1)) {
      if (at + 1 < text.size() && static_cast<std::uint8_t>(text[at + 1]) >= 0xa0)
         return true;
   }
   return false;
}

bool isIdentifier(std::string_view name) noexcept {
   return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
      return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
   });
}

} // namespace

JsonReader::JsonReader(std::string_view fileName, simdjson::padded_string_view text)
      : fileName_(shownFileName(fileName)), text_(text) {
   if (text_.starts_with("\xef\xbb\xbf"))
      failAt(text_.data(), "an object", "a byte order mark");
   switch (parser_.iterate(text).get(document_)) {
   case simdjson::SUCCESS:
      return;
   case simdjson::EMPTY:
      failAt(text_.data() + text_.size(), "an object", {});
   case simdjson::MEMALLOC:
      throw std::bad_alloc();
   case simdjson::CAPACITY:
      throw StateError(fileName_ + ": expected less than 4 GiB of text");
   default:
      break;
   }
   std::optional<TextDefect> const defect = findTextDefect(text_);
   failAt(text_.data() + (defect ? defect->position : 0), defect ? defect->expected : "a JSON document", {});
}

std::string_view JsonReader::textBehindQuote(char const* first) {
   char const* last = first;
   while (*last != '"' && *last != '\\')
      ++last;
   std::string_view result(first, static_cast<std::size_t>(last - first));
   if (*last == '"')
      return result;
   // The string may come out as long as it is written, and the parser writes whole blocks.
   unescaped_.resize(static_cast<std::size_t>(closingQuote(last) - first) + simdjson::SIMDJSON_PADDING);
   std::uint8_t* end = unescaped_.data();
   simdjson::ondemand::raw_json_string const string(reinterpret_cast<std::uint8_t const*>(first));
   if (parser_.unescape(string, end).get(result) != simdjson::SUCCESS || hasLoneSurrogate(result))
      failAt(first - 1, "a string with valid escapes", {});
   return result;
}

char const* JsonReader::start(JsonValue& value) noexcept {
   return value.raw_json_token().data();
}

bool JsonReader::isNull(JsonValue& value) {
   bool null = false;
   return *start(value) == 'n' && value.is_null().get(null) == simdjson::SUCCESS && null;
}

bool JsonReader::boolean(JsonValue& value) {
   bool result = false;
   if (value.get_bool().get(result) != simdjson::SUCCESS)
      fail(value, "true or false");
   return result;
}

std::uint64_t JsonReader::wholeNumber(JsonValue& value, std::uint64_t highest) {
   std::uint64_t result = 0;
   if (!tryWholeNumber(value, highest, result))
      fail(value, "a whole number from 0 to " + std::to_string(highest));
   return result;
}

bool JsonReader::tryWholeNumber(JsonValue& value, std::uint64_t highest, std::uint64_t& number) {
   return value.get_uint64().get(number) == simdjson::SUCCESS && number <= highest;
}

double JsonReader::number(JsonValue& value) {
   double result = 0;
   if (value.get_double().get(result) != simdjson::SUCCESS || !std::isfinite(result))
      fail(value, "a finite number");
   return result;
}

std::string_view JsonReader::text(JsonValue& value) {
   simdjson::ondemand::raw_json_string raw;
   if (value.get_raw_json_string().get(raw) != simdjson::SUCCESS)
      fail(value, "a string");
   return textBehindQuote(raw.raw());
}

void JsonReader::check(simdjson::error_code error) const {
   switch (error) {
   case simdjson::SUCCESS:
      return;
   case simdjson::INCOMPLETE_ARRAY_OR_OBJECT:
      failIncomplete();
   default:
      failHere("an object");
   }
}

// The parser says so of every document that doesn't end in a brace, whatever it ends in. Where its quotes don't pair
// up, which the parser sees by other rules, the end is all that can be told.
void JsonReader::failIncomplete() const {
   std::size_t depth = 0;
   bool inString = false;
   for (std::size_t at = 0; at < text_.size(); ++at) {
      char const c = text_[at];
      if (inString && c == '\\')
         ++at;
      else if (c == '"')
         inString = !inString;
      else if (!inString && (c == '{' || c == '['))
         ++depth;
      else if (!inString && (c == '}' || c == ']') && --depth == 0) {
         if (c == ']')
            failAt(text_.data() + at, "a closing brace", {});
         failAt(text_.data() + std::min(text_.size(), text_.find_first_not_of(" \t\r\n", at + 1)),
                "the end of the file", {});
      }
   }
   failAt(text_.data() + text_.size(), "a closing brace before the end of the file", {});
}

void JsonReader::checkEnd() const {
   char const* place = nullptr;
   if (document_.current_location().get(place) == simdjson::SUCCESS)
      failAt(place, "the end of the file", {});
}

std::string JsonReader::path() const {
   std::vector<Step const*> steps;
   for (Step const* step = step_; step != nullptr; step = step->outer)
      steps.push_back(step);
   std::string result;
   for (auto at = steps.rbegin(); at != steps.rend(); ++at) {
      Step const& step = **at;
      if (step.name == nullptr) {
         result.append("[").append(std::to_string(step.index)).append("]");
         continue;
      }
      std::string_view const name(step.name, static_cast<std::size_t>(closingQuote(step.name) - step.name));
      if (isIdentifier(name))
         result.append(result.empty() ? "" : ".").append(printable(name));
      else
         result.append("[\"").append(printable(name)).append("\"]");
   }
   return result;
}

void JsonReader::fail(JsonValue& value, std::string_view expected, std::string_view found) const {
   failAt(start(value), expected, found);
}

void JsonReader::failName(std::string_view expected) const {
   failAt(step_->name - 1, expected, {});
}

void JsonReader::failMissing(JsonValue& object, std::string_view member) const {
   failAt(start(object), "the member " + std::string(member), "an object without it");
}

void JsonReader::failHere(std::string_view expected) const {
   char const* place = nullptr;
   if (document_.current_location().get(place) != simdjson::SUCCESS)
      place = text_.data() + text_.size();
   failAt(place, expected, {});
}

void JsonReader::failAt(char const* place, std::string_view expected, std::string_view found) const {
   auto const position = static_cast<std::size_t>(place - text_.data());
   std::string message;
   if (!fileName_.empty())
      message = fileName_ + ':' + lineAndColumn(text_, position) + ": ";
   if (step_ != nullptr)
      message.append(path()).append(": ");
   message.append("expected ").append(expected).append(", found ");
   throw StateError(message.append(found.empty() ? describeToken(text_, position) : found));
}

} // namespace Host
