#include "bench/Measure.h"

#include <cstdlib>
#include <new>

// Every `new` of the program is counted.

namespace {

thread_local std::size_t allocations = 0;

} // namespace

std::size_t Bench::allocationCount() noexcept {
   return allocations;
}

void* operator new(std::size_t size) {
   ++allocations;
   if (void* const memory = std::malloc(size == 0 ? 1 : size))
      return memory;
   throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
   std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
   std::free(memory);
}
