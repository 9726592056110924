#pragma once

#include <unistd.h>

#include <utility>

namespace Host {

// An open descriptor, closed when its owner goes; -1 for none.
class Descriptor {
public:
   Descriptor() noexcept = default;
   explicit Descriptor(int number) noexcept : number_(number) {}
   Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
   Descriptor& operator=(Descriptor&& other) noexcept {
      std::swap(number_, other.number_);
      return *this;
   }
   ~Descriptor() {
      if (number_ >= 0)
         close(number_);
   }

   int get() const noexcept { return number_; }
   explicit operator bool() const noexcept { return number_ >= 0; }

private:
   int number_ = -1;
};

} // namespace Host
