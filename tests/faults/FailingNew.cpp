#include "tests/faults/FailingNew.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace Tests {

namespace {

std::atomic<std::int64_t> inUse = 0;
std::atomic<std::uint64_t> asked = 0;
std::atomic<std::uint64_t> failing = 0; // the ordinal; 0 for none
std::atomic<Shortage> kind = Shortage::once;

bool mayAllocate() noexcept {
   std::uint64_t const ordinal = failing.load();
   if (ordinal == 0)
      return true;
   std::uint64_t const number = ++asked;
   return number < ordinal || (number > ordinal && kind.load() == Shortage::once);
}

void* allocate(std::size_t size, std::size_t alignment) noexcept {
   if (!mayAllocate())
      return nullptr;
   void* const memory = alignment == 0 ? std::malloc(size == 0 ? 1 : size)
                                       : std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
   if (memory != nullptr)
      ++inUse;
   return memory;
}

void* require(void* memory) {
   if (memory == nullptr)
      throw std::bad_alloc();
   return memory;
}

void release(void* memory) noexcept {
   if (memory != nullptr)
      --inUse;
   std::free(memory);
}

} // namespace

FailingNew::FailingNew(std::uint64_t ordinal, Shortage shortage) noexcept {
   asked = 0;
   kind = shortage;
   failing = ordinal;
}

FailingNew::~FailingNew() {
   failing = 0;
}

bool FailingNew::reached() noexcept {
   return asked.load() >= failing.load();
}

std::int64_t piecesInUse() noexcept {
   return inUse.load();
}

} // namespace Tests

using Tests::allocate;
using Tests::release;

void* operator new(std::size_t size) {
   return Tests::require(allocate(size, 0));
}
void* operator new[](std::size_t size) {
   return Tests::require(allocate(size, 0));
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
   return allocate(size, 0);
}
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
   return allocate(size, 0);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
   return Tests::require(allocate(size, static_cast<std::size_t>(alignment)));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
   return Tests::require(allocate(size, static_cast<std::size_t>(alignment)));
}
void* operator new(std::size_t size, std::align_val_t alignment, std::nothrow_t const&) noexcept {
   return allocate(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment, std::nothrow_t const&) noexcept {
   return allocate(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* memory) noexcept {
   release(memory);
}
void operator delete[](void* memory) noexcept {
   release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
   release(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
   release(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
   release(memory);
}
void operator delete[](void* memory, std::align_val_t) noexcept {
   release(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
   release(memory);
}
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept {
   release(memory);
}
void operator delete(void* memory, std::nothrow_t const&) noexcept {
   release(memory);
}
void operator delete[](void* memory, std::nothrow_t const&) noexcept {
   release(memory);
}
