#pragma once

#include <cstddef>
#include <cstdint>

// Memory that runs out when a test says so: the program is linked with an operator new of its own, in every form.

namespace Tests {

// How the allocations fail: one alone, or that one and all after it.
enum class Shortage { once, fromThenOn };

// While it lives, the allocation of that ordinal (the first is 1) fails, in this thread and any other.
class FailingNew {
public:
   FailingNew(std::uint64_t ordinal, Shortage shortage) noexcept;
   FailingNew(FailingNew const&) = delete;
   FailingNew& operator=(FailingNew const&) = delete;
   ~FailingNew();

   // Whether the allocation has been asked for.
   static bool reached() noexcept;
};

// The number of pieces of memory that operator new has given out and that haven't been given back.
std::int64_t piecesInUse() noexcept;

} // namespace Tests
