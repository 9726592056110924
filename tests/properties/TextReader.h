#pragma once

#include <cstddef>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Tests {

// Text and JSON don't agree; what() tells where and how.
class Disagreement : public std::runtime_error {
public:
   using runtime_error::runtime_error;
};

// A text view on its way from top to bottom. Names may hold line feeds and anything else, so it is read by what is
// expected and not cut into lines first.
class TextReader {
public:
   explicit TextReader(std::string_view text) : text_(text), rest_(text) {}

   bool atEnd() const noexcept { return rest_.empty(); }
   std::string_view rest() const noexcept { return rest_; }

   // Reads the characters if they come next.
   bool skip(std::string_view characters) noexcept;
   // The others throw a Disagreement unless what they expect comes next.
   void expect(std::string_view characters);
   void expectAny(std::initializer_list<std::string> alternatives);
   void expectEnd();
   // Everything before the next place where `end` stands, and `end` itself too.
   std::string_view until(std::string_view end);

   [[noreturn]] void fail(std::string const& expected) const;

private:
   std::string_view text_;
   std::string_view rest_;
};

} // namespace Tests
