#pragma once

#include "tests/properties/Document.h"
#include "tests/properties/TextReader.h"

#include <string>
#include <string_view>

namespace Tests {

// An object of a JSON document that a block of text is held against. What is asked of it counts as shown. Throws
// Disagreement where a member isn't there or of another kind.
class Block {
public:
   explicit Block(Json const& object) : object_(&object) {}

   bool has(std::string_view name) const noexcept { return object_->find(name) != nullptr; }
   std::string const& text(std::string_view name) const { return member(name, Json::Kind::text).text; }
   // The number, and the same in decimal.
   std::uint64_t number(std::string_view name) const { return member(name, Json::Kind::whole).whole; }
   std::string digits(std::string_view name) const { return std::to_string(number(name)); }
   double seconds(std::string_view name) const { return member(name, Json::Kind::real).real; }
   bool flag(std::string_view name) const { return member(name, Json::Kind::flag).flag; }
   Json const& list(std::string_view name) const { return member(name, Json::Kind::list); }
   // The members of an object below.
   Json const& object(std::string_view name) const { return member(name, Json::Kind::object); }
   Block block(std::string_view name) const { return Block(object(name)); }

private:
   Json const& member(std::string_view name, Json::Kind kind) const {
      Json const* const found = object_->find(name);
      if (found == nullptr || found->kind != kind)
         throw Disagreement("the text shows what JSON doesn't have: " + std::string(name));
      found->shown = true;
      return *found;
   }

   Json const* object_;
};

// An element of a list of texts.
inline std::string const& shownText(Json const& element) {
   element.shown = true;
   return element.text;
}

// The forms that values of JSON have in a text.

// A bandwidth in bits per second; with two decimals also below 1000 when the flag says so.
std::string bandwidthWords(std::uint64_t bitsPerSecond, bool twoDecimals = false);
// "2 days 1 second"
std::string intervalWords(std::uint64_t seconds);
// The calendar stamp of UTC seconds, which the test reads in UTC. Empty when the year has more than five digits.
std::string timestampWords(double utcSeconds);
// A member whose words in the two formats differ.
std::string otherWord(Block const& block, std::string_view name);

} // namespace Tests
