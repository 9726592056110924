#pragma once

#include "tests/faults/FailingNew.h"

#include <cstdint>
#include <functional>
#include <string>

namespace Tests {

struct Attempt {
   bool reached = true; // the allocation was asked for; false ends the row of attempts
   std::string wrong;   // what went wrong besides; empty for nothing
};

struct OrdinalCounts {
   std::uint64_t tried = 0;
   std::uint64_t endedByDesign = 0; // ended the process: no room for what waits to be disposed of
};

// Calls attempt(ordinal) for 1, 2, 3, ... until an ordinal isn't reached, in child processes: an attempt may end the
// process, but only out of the one operation that must not fail, the retirement of what readers may still look at.
// Fails the test at the first attempt that goes wrong or ends the process in any other way.
OrdinalCounts atEachOrdinal(std::function<Attempt(std::uint64_t ordinal)> const& attempt);

} // namespace Tests
