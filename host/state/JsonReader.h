#pragma once

#include "fathom/String.h"
#include "host/state/NameTable.h"

#include <simdjson.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Host {

// A value of the document that has not been read yet. Each is read once.
using JsonValue = simdjson::ondemand::value;

// The name of a member as it stands in the text of the document, behind its opening quote.
class JsonName {
public:
   explicit JsonName(char const* first) noexcept : first_(first) {}

   char const* first() const noexcept { return first_; }
   // Whether it is written as this text, which is no longer than the padding. A name with escapes isn't, whatever it
   // says.
   bool isWrittenAs(std::string_view text) const noexcept {
      return std::memcmp(first_, text.data(), text.size()) == 0 && first_[text.size()] == '"';
   }

private:
   char const* first_;
};

// Reads one JSON document from its beginning to its end, value by value, without building it. It knows at every moment
// which member it is in. Whatever is wrong ends in a StateError
//
//    net.json:7:31: rsvpLerStatus.tunnelIndexMap[3].tunnelIndex: expected a whole number from 0 to 4294967295, found
//    "x"
//
// after which the reader is of no more use. Nothing recurses that the caller doesn't, so a document can nest as deeply
// as it likes. For one thread.
class JsonReader {
public:
   // The text and its padding have to outlive the reader. `fileName` is only for messages. Throws StateError for what
   // can't be any JSON document. Without a file name messages begin with the path, as for a text of one line.
   JsonReader(std::string_view fileName, simdjson::padded_string_view text);
   JsonReader(JsonReader const&) = delete;
   JsonReader& operator=(JsonReader const&) = delete;

   // Calls body(name, value) for each member of the document, which has to be one object and nothing behind it.
   template<class Body>
   void forEachDocumentMember(Body&& body) {
      simdjson::ondemand::object object;
      check(document_.get_object().get(object));
      walkMembers(object, body);
      checkEnd();
   }
   // Goes back to the beginning of the document. What was read before is not to be used any more.
   void rewind() { document_.rewind(); }
   // The same for a value that has to be an object.
   template<class Body>
   void forEachMember(JsonValue& value, Body&& body) {
      simdjson::ondemand::object object;
      if (value.get_object().get(object) != simdjson::SUCCESS)
         fail(value, "an object");
      walkMembers(object, body);
   }
   // Calls body(value) for each element of a value that has to be an array.
   template<class Body>
   void forEachElement(JsonValue& value, Body&& body) {
      simdjson::ondemand::array array;
      if (value.get_array().get(array) != simdjson::SUCCESS)
         fail(value, "an array");
      std::size_t index = 0;
      for (simdjson::simdjson_result<JsonValue> element : array) {
         JsonValue item;
         if (std::move(element).get(item) != simdjson::SUCCESS)
            failHere("the next element or the end of the array");
         Step const step(*this, nullptr, index++);
         body(item);
      }
   }
   // forEachMember with a look ahead: calls look(value) before anything else, for the first member of this name,
   // wherever it stands; it isn't called when there is none. `body` then gets every other member.
   template<class Look, class Body>
   void forEachMemberKnowing(std::string_view name, JsonValue& value, Look&& look, Body&& body) {
      simdjson::ondemand::object object;
      if (value.get_object().get(object) != simdjson::SUCCESS)
         fail(value, "an object");
      // Where it stands first, as usual, no second walk is needed.
      bool const standsFirst = isFirstMember(value, name);
      if (!standsFirst)
         lookForMember(name, object, look);
      bool passed = false;
      auto const passOrBody = [&](JsonName member, JsonValue& memberValue) {
         if (passed || !(standsFirst || text(member) == name))
            return body(member, memberValue);
         passed = true;
         if (standsFirst)
            look(memberValue);
         else
            skip(memberValue);
      };
      walkMembers(object, passOrBody);
   }

   // True, and the value is read, when it is null.
   bool isNull(JsonValue& value);
   bool boolean(JsonValue& value);
   // A number without a fraction or exponent, from 0 to `highest`.
   std::uint64_t wholeNumber(JsonValue& value, std::uint64_t highest);
   // The same as a question: false when it is anything else.
   bool tryWholeNumber(JsonValue& value, std::uint64_t highest, std::uint64_t& number);
   // Any finite number.
   double number(JsonValue& value);
   // Whether the value is an object or a string; it is not read by this.
   bool isObject(JsonValue& value) const noexcept { return *start(value) == '{'; }
   bool isText(JsonValue& value) const noexcept { return *start(value) == '"'; }
   // A string, good until the next one is read.
   std::string_view text(JsonValue& value);
   std::string_view text(JsonName name) { return textBehindQuote(name.first()); }
   // A string, as the one name of this text among all that are read.
   Fathom::String const& name(JsonValue& value) { return names_.name(text(value)); }
   // The same among the names of tunnels, which most tables have in one order.
   Fathom::String const& tunnelName(JsonValue& value) { return tunnelNames_.name(text(value)); }

   // Throw a StateError that names the place, the path and what was expected there. The first is about a value, which
   // may have been read, and says what was found too unless `found` says it; the second about the name of the member
   // that the reader is in; the third about a member that an object lacks.
   [[noreturn]] void fail(JsonValue& value, std::string_view expected, std::string_view found = {}) const;
   [[noreturn]] void failName(std::string_view expected) const;
   [[noreturn]] void failMissing(JsonValue& object, std::string_view member) const;

private:
   // One step of the path, inside of the one that was under way before it: a member, by its name as it stands behind
   // the quote, or without a name an element, by its index.
   struct Step {
      Step(JsonReader& in, char const* nameOfMember, std::size_t indexOfElement = 0) noexcept
            : reader(in), outer(in.step_), name(nameOfMember), index(indexOfElement) {
         reader.step_ = this;
      }
      Step(Step const&) = delete;
      Step& operator=(Step const&) = delete;
      ~Step() { reader.step_ = outer; }

      JsonReader& reader;
      Step const* const outer;
      char const* const name;
      std::size_t const index;
   };

   template<class Body>
   void walkMembers(simdjson::ondemand::object& object, Body& body) {
      for (simdjson::simdjson_result<simdjson::ondemand::field> result : object) {
         simdjson::ondemand::field field = takeField(result);
         JsonName const name(field.key().raw());
         Step const step(*this, name.first());
         body(name, field.value());
      }
   }

   // Leaves the object at its beginning.
   template<class Look>
   void lookForMember(std::string_view name, simdjson::ondemand::object& object, Look& look) {
      for (simdjson::simdjson_result<simdjson::ondemand::field> result : object) {
         simdjson::ondemand::field field = takeField(result);
         JsonName const member(field.key().raw());
         if (text(member) == name) {
            Step const step(*this, member.first());
            look(field.value());
            break;
         }
      }
      check(object.reset().error());
   }
   // For a value that has been looked at. The parser would take a text that is left unread for a name if a colon stood
   // behind it.
   void skip(JsonValue& value) {
      if (isText(value))
         text(value);
   }
   static bool isFirstMember(JsonValue& object, std::string_view name) noexcept {
      char const* at = start(object) + 1;
      at += std::strspn(at, " \t\r\n");
      return *at == '"' && JsonName(at + 1).isWrittenAs(name);
   }

   simdjson::ondemand::field takeField(simdjson::simdjson_result<simdjson::ondemand::field>& result) const {
      simdjson::ondemand::field field;
      if (std::move(result).get(field) != simdjson::SUCCESS)
         failHere("the next member or the end of the object");
      return field;
   }
   // The string whose text begins here; good until the next call.
   std::string_view textBehindQuote(char const* first);
   static char const* start(JsonValue& value) noexcept;

   void check(simdjson::error_code error) const;
   [[noreturn]] void failIncomplete() const;
   void checkEnd() const;
   std::string path() const;
   [[noreturn]] void failHere(std::string_view expected) const;
   [[noreturn]] void failAt(char const* place, std::string_view expected, std::string_view found) const;

   std::string fileName_;
   std::string_view text_;
   simdjson::ondemand::parser parser_;
   mutable simdjson::ondemand::document document_;
   NameTable names_;
   NameTable tunnelNames_;
   Step const* step_ = nullptr;          // the innermost
   std::vector<std::uint8_t> unescaped_; // the last string that had an escape
};

} // namespace Host
