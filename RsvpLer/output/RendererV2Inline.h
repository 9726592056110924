#pragma once

#include "RsvpLer/output/RendererV2.h"

#include <string_view>

// The operations of RendererV2 that a view calls for every datum. They are inlined into their callers, where
// a literal's length is a constant: one comparison of the free room, and then stores, for a whole token.

namespace scrivo {

template<TextValue T>
[[gnu::always_inline]] inline void RendererV2::_addText(std::string_view prefix, T const& value) {
   if constexpr (Text<T>) {
      std::string_view const text = value;
      char* const at = reserve(prefix.size() + text.size());
      commit(putBytes(putBytes(at, prefix), text));
   } else {
      char* const at = reserve(prefix.size() + valueRoom<T>);
      commit(putValue(putBytes(at, prefix), value));
   }
}

template<TextValue T>
[[gnu::always_inline]] inline void RendererV2::addText(std::string_view prefix, T const& value) {
   if (isText())
      _addText(prefix, value);
}

template<Text T>
[[gnu::always_inline]] inline void RendererV2::addFrill(T const& text) {
   if (isText())
      writeString(std::string_view(text));
}

inline void RendererV2::addFrillLeft(std::size_t width, std::string_view text, char fill) {
   if (isText())
      writeLeft(width, text, fill);
}

inline void RendererV2::addFrillRight(std::size_t width, std::string_view text, char fill) {
   if (isText())
      writeRight(width, text, fill);
}

inline void RendererV2::eol() {
   if (isText())
      writeChar('\n');
}

[[gnu::always_inline]] inline void RendererV2::writeChar(char c) {
   char* const at = reserve(1);
   *at = c;
   commit(at + 1);
}

[[gnu::always_inline]] inline void RendererV2::writeString(std::string_view text) {
   commit(putBytes(reserve(text.size()), text));
}

template<BoundedValue T>
void RendererV2::writeString(T const& value) {
   commit(putValue(reserve(valueRoom<T>), value));
}

template<Text T>
[[gnu::always_inline]] inline void RendererV2::writeString(Kerf::JustifyLeft<T> const& value) {
   writeLeft(value.width, value.text, value.fill);
}

template<Text T>
[[gnu::always_inline]] inline void RendererV2::writeString(Kerf::JustifyRight<T> const& value) {
   writeRight(value.width, value.text, value.fill);
}

// Writes the comma that is due, and leaves the place behind it with `room` bytes free, not yet committed.
[[gnu::always_inline]] inline char* RendererV2::beginEntry(bool startsContainer, std::size_t room) {
   bool const comma = !atContainerStart;
   // Before anything is stored: an exception on the way doesn't bring the old value back.
   atContainerStart = startsContainer;
   char* const at = reserve(room + 1);
   *at = ',';
   return at + comma;
}

// The same with the quoted key and its colon.
[[gnu::always_inline]] inline char* RendererV2::beginPair(bool startsContainer, JsonKey key, std::size_t room) {
   std::string_view const text = key.text();
   if (!key.isLiteral())
      return beginQuotedPair(startsContainer, text, room);
   char* at = beginEntry(startsContainer, text.size() + 3 + room);
   *at++ = '"';
   at = putBytes(at, text);
   *at++ = '"';
   *at++ = ':';
   return at;
}

[[gnu::always_inline]] inline char* RendererV2::beginValue(JsonKey key, std::size_t room) {
   return key.text().empty() ? beginEntry(false, room) : beginPair(false, key, room);
}

[[gnu::always_inline]] inline void RendererV2::startContainer(JsonKey key, char opener) {
   char* const at = beginPair(true, key, 1);
   *at = opener;
   commit(at + 1);
}

[[gnu::always_inline]] inline void RendererV2::endContainer(char closer) {
   if (!isJson())
      return;
   writeChar(closer);
   atContainerStart = false;
}

[[gnu::always_inline]] inline void RendererV2::_startJsonObject(JsonKey key) {
   startContainer(key, '{');
}

[[gnu::always_inline]] inline void RendererV2::_startJsonList(JsonKey key) {
   startContainer(key, '[');
}

[[gnu::always_inline]] inline void RendererV2::_startJsonListEntry() {
   char* const at = beginEntry(true, 1);
   *at = '{';
   commit(at + 1);
}

[[gnu::always_inline]] inline void RendererV2::startJsonDict(JsonKey key) {
   if (isJson())
      _startJsonObject(key);
}

[[gnu::always_inline]] inline void RendererV2::startJsonDict() {
   if (isJson())
      _startJsonListEntry();
}

[[gnu::always_inline]] inline void RendererV2::startJsonList(JsonKey key) {
   if (isJson())
      _startJsonList(key);
}

[[gnu::always_inline]] inline void RendererV2::endJsonDict() {
   endContainer('}');
}

[[gnu::always_inline]] inline void RendererV2::endJsonList() {
   endContainer(']');
}

template<JsonValue T>
[[gnu::always_inline]] inline void RendererV2::_addJsonKeyValuePair(JsonKey key, T const& value) {
   if constexpr (std::same_as<T, Brindle::Duration>) {
      commit(beginValue(key, 0));
      writeDuration(value);
   } else if constexpr (Text<T>) {
      std::string_view const text = value;
      finishJsonText(beginValue(key, text.size() + 2), text);
   } else {
      commit(putJson(beginValue(key, jsonRoom<T>), value));
   }
}

template<JsonValue T>
[[gnu::always_inline]] inline void RendererV2::addJsonKeyValuePair(JsonKey key, T const& value) {
   if (isJson())
      _addJsonKeyValuePair(key, value);
}

} // namespace scrivo
