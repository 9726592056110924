#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace Host {

// The text of a state file, with zero bytes behind it over which the parser may read.
class StateText {
public:
   // The whole file; "-" is standard input. Throws StateError when it can't be read or has 4 GiB or more.
   static StateText read(std::string_view fileName);
   // A copy of the text.
   explicit StateText(std::string_view text);

   // Good as long as this object.
   std::string_view view() const noexcept { return {bytes_.get(), size_}; }
   // The bytes of the text and behind it.
   std::size_t capacity() const noexcept { return capacity_; }

private:
   struct Free {
      void operator()(char* bytes) const noexcept { std::free(bytes); }
   };

   StateText() = default;
   // Makes room for this many bytes and those behind them.
   void reserve(std::size_t size);
   void append(int descriptor, std::string_view fileName);
   void zeroRest() noexcept;

   std::unique_ptr<char, Free> bytes_;
   std::size_t size_ = 0;
   std::size_t capacity_ = 0;
};

} // namespace Host
