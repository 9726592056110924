#pragma once

#include "brindle/Assert.h"
#include "brindle/String.h"

#include <charconv>
#include <concepts>
#include <cstddef>
#include <string_view>
#include <system_error>

namespace Rsvp::Cli {

// A short text of at most `capacity` bytes that is held in place, so that making one allocates nothing.
// Adding more than fits ends the process through an assertion.
template<std::size_t capacity>
class FixedText {
public:
   void append(std::string_view text) noexcept {
      BRINDLE_ASSERT(text.size() <= capacity - size_);
      size_ += text.copy(bytes_ + size_, text.size());
   }
   // Adds the decimal number, with leading zeros up to `minDigits` digits.
   template<std::unsigned_integral Number>
   void appendNumber(Number number, std::size_t minDigits = 1) noexcept {
      char digits[20];
      auto const [end, error] = std::to_chars(digits, digits + sizeof digits, number);
      BRINDLE_ASSERT(error == std::errc());
      auto const count = static_cast<std::size_t>(end - digits);
      for (std::size_t i = count; i < minDigits; ++i)
         append("0");
      append({digits, count});
   }

   // Valid as long as this object is.
   std::string_view view() const noexcept { return {bytes_, size_}; }
   std::size_t size() const noexcept { return size_; }
   Brindle::String string() const { return Brindle::String(view()); }

private:
   char bytes_[capacity];
   std::size_t size_ = 0;
};

} // namespace Rsvp::Cli
