#pragma once

#include "RsvpLer/output/PrintBuffer.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <string_view>

namespace Tests {

// A print buffer that keeps every byte and grows as it must.
class MemoryBuffer : public scrivo::PrintBuffer {
public:
   // `capacity` in bytes is what it begins with.
   explicit MemoryBuffer(std::size_t capacity = 4096) { resize(capacity); }
   ~MemoryBuffer() override { std::free(storage_); }

   // What has been written. Valid until the next write.
   std::string_view text() const { return {storage_, chars.writePtr}; }
   // Forgets what has been written; the capacity stays.
   void clear() { chars.writePtr = storage_; }

   int flushes() const { return flushes_; }
   void ioflush() override { ++flushes_; }

protected:
   void allocateSpace(std::size_t required) override {
      std::size_t const used = text().size();
      resize(std::max(used + required, 2 * used));
   }

private:
   void resize(std::size_t capacity) {
      std::size_t const used = text().size();
      storage_ = static_cast<char*>(std::realloc(storage_, std::max<std::size_t>(capacity, 1)));
      if (storage_ == nullptr)
         throw std::bad_alloc();
      chars.writePtr = storage_ + used;
      chars.endPtr = storage_ + capacity;
   }

   char* storage_ = nullptr;
   int flushes_ = 0;
};

} // namespace Tests
