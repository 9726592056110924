#pragma once

#include <unistd.h>

namespace Skein {

// Owns the descriptor of an open file; a negative one is none.
class Descriptor {
public:
   explicit Descriptor(int number) noexcept : number_(number) {}
   Descriptor(Descriptor const&) = delete;
   Descriptor& operator=(Descriptor const&) = delete;
   ~Descriptor() {
      if (number_ >= 0)
         close(number_);
   }
   int number() const noexcept { return number_; }

private:
   int number_;
};

} // namespace Skein
