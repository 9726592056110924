#pragma once

#include <cstddef>
#include <string_view>

// The natural order of texts, which puts tunnel2 before tunnel10.
//
// - Runs of digits compare as integers of any length, leading zeros apart: 2 before 10, 007 beside 7. A run behind a
//   point is a fraction and compares digit by digit: 1.10 before 1.9, 1.5 beside 1.50.
// - Letters compare without regard to their case, in ASCII whatever the locale. All other bytes compare by code, those
//   from 128 up before all others.
// - A run of blanks (32 alone) counts as one, also at the start. A run of two and more at the end of a text ends in a
//   byte of value 0.
//
// Texts that the order holds equivalent ("beside" above) give false in both directions.

namespace SI::natural {

namespace detail {

// Whether the byte is none of the digits 0 to 9.
template<class Char>
bool is_not_digit(Char c) noexcept;

extern template bool is_not_digit<char>(char c) noexcept;

} // namespace detail

// Whether the text of the half-open range on the left sorts strictly before that on the right. Any byte is
// allowed in a text, a NUL too. Nothing is copied or allocated, and nothing at or behind an end is read.
template<class Char, class Position>
bool _compare(Position const& lhsBegin, Position const& lhsEnd, Position const& rhsBegin,
              Position const& rhsEnd) noexcept;

extern template bool _compare<char, char const*>(char const* const& lhsBegin, char const* const& lhsEnd,
                                                 char const* const& rhsBegin, char const* const& rhsEnd) noexcept;

// A key puts the order of a text into bytes: of two texts, the one whose key is less, byte by byte without a sign and
// the shorter first, is the one that sorts before the other, and equivalent texts have equal keys. Made once for each
// text, it makes a long sort cheap.

// The most bytes that the key of a text of that size has.
constexpr std::size_t sortKeyRoom(std::size_t size) noexcept {
   return 2 * size;
}

// Writes the key at `at`, where sortKeyRoom(text.size()) bytes must be free, and returns its end.
char* putSortKey(char* at, std::string_view text) noexcept;

} // namespace SI::natural
