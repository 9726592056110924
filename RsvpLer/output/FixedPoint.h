#pragma once

#include <cstddef>

namespace Kerf {

// Room for any double in the form of putFixedPoint: a sign, 309 digits, the point and six digits.
constexpr std::size_t maxFixedPointLength = 320;

// Writes the value with exactly six digits after the point, byte for byte as printf's "%lf" does (to the
// nearest, an exact half to the even digit), and returns the end. A value that is no finite number reads
// 0.000000. maxFixedPointLength bytes must be free at `at`; no NUL is stored.
char* putFixedPoint(char* at, double value) noexcept;

} // namespace Kerf
