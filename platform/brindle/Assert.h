#pragma once

// Assertions for programming faults. They hold in release builds.

namespace Brindle {

// Prints "<file>:<line>: assertion failed: <text>" on standard error and ends the process through abort().
[[noreturn]] void assertionFailed(char const* text, char const* file, int line) noexcept;

} // namespace Brindle

#define BRINDLE_ASSERT_TEXT(condition, text)                                                                           \
   (__builtin_expect(static_cast<bool>(condition), 1) ? static_cast<void>(0)                                           \
                                                      : Brindle::assertionFailed(text, __FILE__, __LINE__))

// The text of the assertion is the condition as it stands in the source.
#define BRINDLE_ASSERT(condition) BRINDLE_ASSERT_TEXT(condition, #condition)

// For the place behind a switch over an enumeration that names every value: reached by a byte outside of it.
#define BRINDLE_UNREACHABLE() Brindle::assertionFailed("This should be unreachable", __FILE__, __LINE__)
