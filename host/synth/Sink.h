#pragma once

#include "host/synth/KeyText.h"
#include "host/synth/Network.h"

#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string_view>

namespace Host::Synth {

// Milliseconds, written as seconds with three digits behind the point.
struct Milliseconds {
   std::uint64_t count;
};

// Text on its way to a file, in large blocks. After the first write that fails nothing more is written.
class Sink {
public:
   // The file stays the caller's and must be open for as long as the sink is used.
   explicit Sink(std::FILE* file);

   // Writes each part: text and single characters as they stand (nothing is quoted), integers in decimal, bools as true
   // and false, keys as JSON objects, addresses as quoted strings.
   template<class... Parts>
   void put(Parts const&... parts) {
      (append(parts), ...);
   }

   bool failed() const noexcept { return error_ != 0; }
   // Hands everything to the file and flushes that. 0, or the errno of the first write that failed.
   int finish() noexcept;

private:
   template<class Part>
   void append(Part const& part) {
      if constexpr (std::same_as<Part, char>) {
         reserve(1);
         *end_++ = part;
      } else if constexpr (std::same_as<Part, bool>) {
         appendText(part ? "true" : "false");
      } else if constexpr (std::unsigned_integral<Part>) {
         appendNumber(part);
      } else if constexpr (std::same_as<Part, Ipv4>) {
         appendAddress(part);
      } else if constexpr (std::same_as<Part, Milliseconds>) {
         appendTime(part);
      } else if constexpr (std::same_as<Part, KeyText>) {
         appendText(part.text());
         append('}');
      } else {
         appendText(part);
      }
   }

   void reserve(std::size_t size) {
      if (static_cast<std::size_t>(limit_ - end_) < size) {
         drain();
      }
   }
   void appendNumber(std::uint64_t number) {
      reserve(20);
      end_ = std::to_chars(end_, limit_, number).ptr;
   }
   void appendText(std::string_view text);
   void appendAddress(Ipv4 address);
   void appendTime(Milliseconds time);
   void drain() noexcept;

   std::FILE* file_;
   std::unique_ptr<char[]> buffer_;
   char* end_;
   char* limit_;
   int error_ = 0;
};

// The rows of a table: each but the first stands behind a comma, each on a line of its own.
class Rows {
public:
   explicit Rows(Sink& sink) noexcept : sink_(sink) {}
   Sink& next() {
      sink_.put(first_ ? std::string_view("\n") : std::string_view(",\n"));
      first_ = false;
      return sink_;
   }

private:
   Sink& sink_;
   bool first_ = true;
};

// What stands in front of the elements of one list: nothing, and then commas.
class Commas {
public:
   std::string_view next() noexcept {
      std::string_view const separator = first_ ? "" : ",";
      first_ = false;
      return separator;
   }

private:
   bool first_ = true;
};

} // namespace Host::Synth
