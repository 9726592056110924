#pragma once

#include "RsvpLer/output/PrintBuffer.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

namespace Tests {

// A print buffer that keeps every byte and gives out no more room than it is asked for, so that it is asked at nearly
// every token. It calls a hook each time, with what has been written so far: the place for a test to change the state
// in the middle of a rendering. Holds a mebibyte; more throws std::bad_alloc.
class HookedBuffer : public scrivo::PrintBuffer {
public:
   using Hook = std::function<void(std::string_view written)>;

   explicit HookedBuffer(Hook hook) : hook_(std::move(hook)) { chars.writePtr = chars.endPtr = storage_.get(); }

   // What has been written.
   std::string_view text() const { return {storage_.get(), chars.writePtr}; }
   void ioflush() override {}

protected:
   void allocateSpace(std::size_t required) override {
      hook_(text());
      if (required > capacity - text().size())
         throw std::bad_alloc();
      chars.endPtr = chars.writePtr + required;
   }

private:
   static constexpr std::size_t capacity = std::size_t{1} << 20;

   Hook hook_;
   std::unique_ptr<char[]> storage_ = std::make_unique<char[]>(capacity);
};

} // namespace Tests
