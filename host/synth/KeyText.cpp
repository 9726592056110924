#include "host/synth/KeyText.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace Host::Synth {

KeyText& KeyText::append(std::string_view text) noexcept {
   std::size_t const size = std::min(text.size(), text_.size() - size_);
   std::memcpy(text_.data() + size_, text.data(), size);
   size_ += size;
   return *this;
}

KeyText& KeyText::append(std::uint64_t number) noexcept {
   std::array<char, 20> digits;
   char* const end = std::to_chars(digits.begin(), digits.end(), number).ptr;
   return append(std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data())));
}

} // namespace Host::Synth
