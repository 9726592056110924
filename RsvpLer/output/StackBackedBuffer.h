#pragma once

#include "RsvpLer/output/DynamicBufferInterface.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>

namespace Kerf {

// A buffer for one sentence, on the stack of the routine that assembles it. It holds `inlineSize` bytes in
// place and moves to the heap beyond that. The capacity doubles while twice the used size is within
// `doublingCeiling` bytes, and after that grows by exactly what is asked for. Throws std::bad_alloc when
// there is no memory, keeping its text.
template<std::size_t inlineSize, std::size_t doublingCeiling>
class StackBackedBuffer : public DynamicBufferInterface {
public:
   StackBackedBuffer() noexcept {
      writePtr = inline_;
      endPtr = inline_ + inlineSize;
   }
   ~StackBackedBuffer() override {
      if (onHeap())
         std::free(bufferStart);
   }

   void allocateSpace(std::size_t required) override {
      std::size_t const used = static_cast<std::size_t>(writePtr - bufferStart);
      // At least one byte: realloc to none would free the storage.
      std::size_t const capacity = std::max({used + required, std::min(2 * used, doublingCeiling), std::size_t{1}});
      void* const storage = onHeap() ? std::realloc(bufferStart, capacity) : std::malloc(capacity);
      if (storage == nullptr)
         throw std::bad_alloc();
      if (!onHeap())
         std::memcpy(storage, inline_, used);
      bufferStart = static_cast<char*>(storage);
      writePtr = bufferStart + used;
      endPtr = bufferStart + capacity;
   }

   // What has been written so far, without a NUL. Valid until the next write.
   std::string_view view() const noexcept { return {bufferStart, writePtr}; }

   char* bufferStart = inline_; // the first byte of the text

private:
   bool onHeap() const noexcept { return bufferStart != inline_; }

   char inline_[inlineSize];
};

} // namespace Kerf
