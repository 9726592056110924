#pragma once

#include "RsvpLer/output/JsonKey.h"
#include "RsvpLer/output/Justify.h"
#include "RsvpLer/output/Renderer.h"
#include "RsvpLer/output/ValueText.h"
#include "brindle/Duration.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace scrivo {

// The one output object of a show command. The same calls serve both formats: a text operation does nothing
// unless the format is text, a JSON operation nothing unless it is JSON, and the writers at the end don't
// look at the format. JSON is streamed without white space; the balance of braces and brackets is the
// caller's, and so are the braces around the document.
//
//    renderer.startJsonDict("tunnels");               {"tunnels":{"east":{"state":"up"}}}
//    renderer.startJsonDict(name);
//    renderer.addText("   State: ", "up");                  State: up
//    renderer.eol();
//    renderer.addJsonKeyValuePair("state", "up");
//    renderer.endJsonDict();
//    renderer.endJsonDict();
//
// Nothing here allocates. Every operation may throw what the print buffer throws when it runs full,
// SigIntException above all; the document then stays open. Lengths and widths are bytes.
class RendererV2 final : public Renderer {
public:
   using Renderer::Renderer;

   bool isText() const noexcept { return outputFormat() == OutputFormat_t::text; }
   bool isJson() const noexcept { return outputFormat() == OutputFormat_t::json; }

   // ---- Text. Nothing is escaped.

   // The prefix as it stands, then the value: a text, an unsigned number of any width in decimal, or an
   // address.
   template<TextValue T>
   void addText(std::string_view prefix, T const& value);

   // What the text format has and JSON doesn't: a heading, a unit, an indent.
   template<Text T>
   void addFrill(T const& text);
   // The text in `width` columns, with `fill` after it or before it; a longer text is written whole. Where
   // the text or the width is exactly 100 and neither is more, the last byte is written as a NUL.
   void addFrillLeft(std::size_t width, std::string_view text, char fill);
   void addFrillRight(std::size_t width, std::string_view text, char fill);
   // One line feed.
   void eol();

   // ---- JSON. Each entry writes the comma that is due.

   // "key":{ and "key":[ ; an empty key is written as "". Without a key, a dictionary as an element of a
   // list.
   void startJsonDict(JsonKey key);
   void startJsonDict();
   void startJsonList(JsonKey key);
   void endJsonDict();
   void endJsonList();
   // "key":value, or the value alone, as an element of a list, when the key is empty. A bool or unsigned
   // number of any width is bare; a Duration is bare, in seconds, with six digits after the point (0.000000
   // when it is no finite number; a text of exactly 100 characters ends in a NUL); a text or address stands
   // between double quotes.
   template<JsonValue T>
   void addJsonKeyValuePair(JsonKey key, T const& value);

   // ---- Writers that don't look at the format.

   void writeChar(char c);
   // The bytes as they stand; the decimal number, also for U8; the address without quotes.
   void writeString(std::string_view text);
   template<BoundedValue T>
   void writeString(T const& value);
   // The text in its column, as addFrillLeft and addFrillRight lay it out.
   template<Text T>
   void writeString(Kerf::JustifyLeft<T> const& value);
   template<Text T>
   void writeString(Kerf::JustifyRight<T> const& value);
   void writeString(Kerf::JustifyRight<std::uint32_t> const& value);
   // The bytes with JSON escapes, without the double quotes around them; and with them. Neither writes a
   // comma.
   void writeQuotedString(std::string_view text);
   void writeJsonValue(std::string_view text);

   // ---- Inner forms, for a caller that has tested the format itself.

   template<TextValue T>
   void _addText(std::string_view prefix, T const& value);
   void _startJsonObject(JsonKey key);
   void _startJsonListEntry();
   void _startJsonList(JsonKey key);
   template<JsonValue T>
   void _addJsonKeyValuePair(JsonKey key, T const& value);

private:
   char* reserve(std::size_t required) { return chars().getBuffer(required); }
   void commit(char* end) noexcept { chars().writePtr = end; }

   char* beginEntry(bool startsContainer, std::size_t room);
   char* beginPair(bool startsContainer, JsonKey key, std::size_t room);
   char* beginQuotedPair(bool startsContainer, std::string_view key, std::size_t room);
   char* beginValue(JsonKey key, std::size_t room);
   void startContainer(JsonKey key, char opener);
   void endContainer(char closer);
   void finishJsonText(char* at, std::string_view text);
   [[gnu::noinline]] void finishLongJsonText(char* at, std::string_view text);
   void writeLeft(std::size_t width, std::string_view text, char fill);
   void writeRight(std::size_t width, std::string_view text, char fill);
   void writeDuration(Brindle::Duration value);
   template<class Print>
   void printInTwoSteps(Print const& print);
};

} // namespace scrivo

#include "RsvpLer/output/RendererV2Inline.h"
