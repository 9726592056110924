#pragma once

#include "fathom/String.h"
#include "skein/MsgDesc.h"
#include "skein/Twine.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

// What traces know of a type: TraceFormat<T>, specialised once for each, has
//
//    static Component describe(TraceFile& file)            how its fields stand in a record and how they are shown
//    static void put(Sink& sink, T const& value)           its fields in order, into a Msg or a Twine::Text

namespace Skein {

template<class T>
struct TraceFormat;

template<Component component>
struct PlainFormat {
   static Component describe(TraceFile&) noexcept { return component; }
   template<class Sink>
   static void put(Sink& sink, auto const& value) {
      sink.put(value);
   }
};

template<>
struct TraceFormat<Fathom::String> : PlainFormat<stringComponent> {
   template<class Sink>
   static void put(Sink& sink, Fathom::String const& value) {
      sink.put(value.view());
   }
};
template<>
struct TraceFormat<std::uint32_t> : PlainFormat<u32Component> {};
template<>
struct TraceFormat<std::uint8_t> : PlainFormat<u8Component> {};

// A text that is a template argument.
template<std::size_t size>
struct Literal {
   consteval Literal(char const (&text)[size]) { std::copy_n(text, size, bytes); }
   constexpr std::string_view view() const noexcept { return {bytes, size - 1}; }
   char bytes[size];
};

// The format of an enumeration over 8 bits, which is shown as its number.
template<class Enumeration, Literal name>
struct EnumerationFormat {
   static Component describe(TraceFile& file) noexcept {
      MsgDesc description(file, name.view());
      description.addText("{}");
      description.addComponent(u8Component);
      return description.finishType();
   }
   template<class Sink>
   static void put(Sink& sink, Enumeration value) {
      auto const outer = sink.open("{}");
      sink.put(static_cast<std::uint8_t>(value));
      sink.close(outer);
   }
};

template<class Record, class Field>
Field fieldOf(Field Record::*);

// The format of a value made of fields, with a place for each in its text form.
template<Literal name, Literal format, auto... fields>
struct RecordFormat {
   static Component describe(TraceFile& file) noexcept {
      MsgDesc description(file, name.view());
      description.addText(format.view());
      (description.addComponent(TraceFormat<decltype(fieldOf(fields))>::describe(file)), ...);
      return description.finishType();
   }
   template<class Sink>
   static void put(Sink& sink, auto const& value) {
      auto const outer = sink.open(format.view());
      (TraceFormat<decltype(fieldOf(fields))>::put(sink, value.*fields), ...);
      sink.close(outer);
   }
};

// A value whose numbers are shown in hexadecimal.
template<class T>
struct Hex {
   explicit Hex(T const& value_) noexcept : value(value_) {}
   T const& value;
};

// What is traced: a value, a Hex, or words that stand between values.
template<class T>
struct Argument {
   static void describe(MsgDesc& message, TraceFile& file, T const&) noexcept {
      message.addText("{}");
      message.addComponent(TraceFormat<T>::describe(file));
   }
   template<class Sink>
   static void put(Sink& sink, T const& value) {
      TraceFormat<T>::put(sink, value);
   }
};

template<class T>
struct Argument<Hex<T>> {
   static void describe(MsgDesc& message, TraceFile& file, Hex<T>) noexcept {
      message.addText("{x}");
      message.addComponent(TraceFormat<T>::describe(file));
   }
   template<class Sink>
   static void put(Sink& sink, Hex<T> argument) {
      auto const outer = sink.open("{x}");
      TraceFormat<T>::put(sink, argument.value);
      sink.close(outer);
   }
};

// The words stand in the format of the message, not in its records.
template<>
struct Argument<std::string_view> {
   static void describe(MsgDesc& message, TraceFile&, std::string_view words) noexcept { message.addText(words); }
   static void put(Msg&, std::string_view) noexcept {}
   static void put(Twine::Text& text, std::string_view words) { text.add(words); }
};

} // namespace Skein
