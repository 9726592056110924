#pragma once

#include "host/server/Descriptor.h"
#include "host/server/ServerError.h"

#include <sys/eventfd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string>

namespace Host {

// Wakes a thread that polls.
class WakeUp {
public:
   WakeUp() : descriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
      if (!descriptor_)
         throw ServerError(std::string("cannot make an event: ") + std::strerror(errno));
   }

   // To be polled for input.
   int descriptor() const noexcept { return descriptor_.get(); }
   // Safe in a signal handler and from any thread.
   void call() const noexcept {
      std::uint64_t const one = 1;
      [[maybe_unused]] ssize_t const written = write(descriptor_.get(), &one, sizeof one);
   }
   void takeBack() const noexcept {
      std::uint64_t calls = 0;
      [[maybe_unused]] ssize_t const got = read(descriptor_.get(), &calls, sizeof calls);
   }

private:
   Descriptor descriptor_;
};

} // namespace Host
