#pragma once

#include "brindle/Assert.h"

#include <cstddef>
#include <string_view>

namespace Vane {

// Text that is being read from its start. It doesn't own the characters; any byte may be among them.
class CharRange {
public:
   constexpr CharRange(std::string_view text) noexcept : rest_(text), length_(text.size()) {}

   constexpr bool empty() const noexcept { return rest_.empty(); }
   // The characters that haven't been read.
   constexpr std::string_view rest() const noexcept { return rest_; }
   // The number of characters that have been read.
   constexpr std::size_t position() const noexcept { return length_ - rest_.size(); }

   // Reads the expected characters if they come next, and nothing otherwise.
   constexpr bool skip(std::string_view expected) noexcept {
      if (!rest_.starts_with(expected))
         return false;
      rest_.remove_prefix(expected.size());
      return true;
   }

   // Reads one character. There must be one.
   constexpr char take() noexcept {
      BRINDLE_ASSERT(!rest_.empty());
      char const next = rest_.front();
      rest_.remove_prefix(1);
      return next;
   }

private:
   std::string_view rest_;
   std::size_t length_;
};

} // namespace Vane
