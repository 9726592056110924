#include "RsvpLer/text/NaturalOrder.h"

#include <algorithm>

namespace SI::natural {

namespace detail {

template<class Char>
bool is_not_digit(Char c) noexcept {
   return c < '0' || c > '9';
}

template bool is_not_digit<char>(char c) noexcept;

} // namespace detail

namespace {

// Negative, zero or positive as the left side is smaller, equal or greater.
using Order = int;

struct Run {
   char const* begin;
   char const* end;
};

// A place in one of the two texts.
class Cursor {
public:
   Cursor(char const* begin, char const* end) noexcept : begin_(begin), at_(begin), end_(end) {}

   bool atEnd() const noexcept { return at_ == end_; }

   // The byte to compare next. Behind a blank all further blanks are skipped; at the end that leads to, the
   // byte is the NUL that terminates the text.
   char take() noexcept {
      if (afterBlank_)
         while (at_ != end_ && *at_ == ' ')
            ++at_;
      char const byte = at_ == end_ ? '\0' : *at_;
      afterBlank_ = byte == ' ';
      return byte;
   }

   // Moves over the byte just taken, but never past the end.
   void advance() noexcept {
      if (at_ != end_)
         ++at_;
   }
   void moveTo(char const* position) noexcept { at_ = position; }

   // The run of digits that begins here.
   Run digits() const noexcept { return {at_, std::find_if(at_, end_, detail::is_not_digit<char>)}; }
   bool behindPoint() const noexcept { return at_ != begin_ && at_[-1] == '.'; }

private:
   char const* begin_;
   char const* at_;
   char const* end_;
   bool afterBlank_ = false;
};

bool isDigit(char c) noexcept {
   return !detail::is_not_digit(c);
}

// The byte as a signed value, whatever `char` is here.
int lowered(char c) noexcept {
   auto const value = static_cast<signed char>(c);
   return value >= 'A' && value <= 'Z' ? value - 'A' + 'a' : value;
}

char const* skipZeros(Run run) noexcept {
   return std::find_if(run.begin, run.end, [](char c) { return c != '0'; });
}

Order compareIntegers(Run left, Run right) noexcept {
   left.begin = skipZeros(left);
   right.begin = skipZeros(right);
   auto const leftLength = left.end - left.begin;
   auto const rightLength = right.end - right.begin;
   if (leftLength != rightLength)
      return leftLength < rightLength ? -1 : 1;
   auto const [l, r] = std::mismatch(left.begin, left.end, right.begin);
   return l == left.end ? 0 : *l - *r;
}

Order compareFractions(Run left, Run right) noexcept {
   auto const [l, r] = std::mismatch(left.begin, left.end, right.begin, right.end);
   if (l != left.end && r != right.end)
      return *l - *r;
   if (skipZeros({l, left.end}) != left.end)
      return 1;
   return skipZeros({r, right.end}) != right.end ? -1 : 0;
}

// Compares the digit runs at both cursors and moves the cursors behind them. The bytes before the runs have
// compared equal, so that both are fractions or neither is.
Order compareRuns(Cursor& left, Cursor& right) noexcept {
   Run const leftRun = left.digits();
   Run const rightRun = right.digits();
   Order const order = left.behindPoint() ? compareFractions(leftRun, rightRun) : compareIntegers(leftRun, rightRun);
   left.moveTo(leftRun.end);
   right.moveTo(rightRun.end);
   return order;
}

Order compareNext(Cursor& left, Cursor& right) noexcept {
   char const l = left.take();
   char const r = right.take();
   if (isDigit(l) && isDigit(r))
      return compareRuns(left, right);
   left.advance();
   right.advance();
   return lowered(l) - lowered(r);
}

// Where a byte stands among all, from 0 to 255. In a key none but a run of digits begins with the place of a digit.
char placeOf(char c) noexcept {
   return static_cast<char>(lowered(c) + 128);
}

char* putDigits(char* at, Run digits) noexcept {
   return std::copy(digits.begin, digits.end, at);
}

// Up to eight digits the first byte tells how many there are; it ranges over the places of the digits 0 to 8. That of
// the 9 stands before a length of four bytes.
char* putInteger(char* at, Run digits) noexcept {
   digits.begin = skipZeros(digits);
   auto const length = static_cast<std::size_t>(digits.end - digits.begin);
   if (length < 9) {
      *at++ = static_cast<char>(placeOf('0') + static_cast<char>(length));
   } else {
      *at++ = placeOf('9');
      for (int shift = 24; shift >= 0; shift -= 8)
         *at++ = static_cast<char>(length >> shift);
   }
   return putDigits(at, digits);
}

// The byte at the end is less than any digit that the other side may have there.
char* putFraction(char* at, Run digits) noexcept {
   while (digits.end != digits.begin && digits.end[-1] == '0')
      --digits.end;
   *at++ = placeOf('0');
   at = putDigits(at, digits);
   *at++ = '\0';
   return at;
}

} // namespace

template<class Char, class Position>
bool _compare(Position const& lhsBegin, Position const& lhsEnd, Position const& rhsBegin,
              Position const& rhsEnd) noexcept {
   Cursor left(lhsBegin, lhsEnd);
   Cursor right(rhsBegin, rhsEnd);
   while (!left.atEnd() && !right.atEnd()) {
      Order const order = compareNext(left, right);
      if (order != 0)
         return order < 0;
   }
   return left.atEnd() && !right.atEnd();
}

template bool _compare<char, char const*>(char const* const& lhsBegin, char const* const& lhsEnd,
                                          char const* const& rhsBegin, char const* const& rhsEnd) noexcept;

char* putSortKey(char* at, std::string_view text) noexcept {
   Cursor cursor(text.data(), text.data() + text.size());
   while (!cursor.atEnd()) {
      char const byte = cursor.take();
      if (isDigit(byte)) {
         Run const run = cursor.digits();
         at = cursor.behindPoint() ? putFraction(at, run) : putInteger(at, run);
         cursor.moveTo(run.end);
      } else {
         *at++ = placeOf(byte);
         cursor.advance();
      }
   }
   return at;
}

} // namespace SI::natural
