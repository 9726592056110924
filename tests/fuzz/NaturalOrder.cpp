#include "RsvpLer/text/NaturalOrder.h"

#include "tests/fuzz/Fuzz.h"

#include <algorithm>
#include <vector>

// The natural order is a strict weak one, of whatever bytes. The input's first two bytes tell where its three texts
// end.

namespace {

using Text = std::vector<char>; // in memory of its own size, so that a read behind its end is noticed

bool isBefore(Text const& left, Text const& right) {
   return SI::natural::_compare<char, char const*>(left.data(), left.data() + left.size(), right.data(),
                                                   right.data() + right.size());
}

bool areBeside(Text const& left, Text const& right) {
   return !isBefore(left, right) && !isBefore(right, left);
}

void checkLaws(Text const& a, Text const& b, Text const& c) {
   Fuzz::require(!isBefore(a, a), "no text is before itself");
   Fuzz::require(!isBefore(a, b) || !isBefore(b, a), "of two texts one at most is before the other");
   Fuzz::require(!isBefore(a, b) || !isBefore(b, c) || isBefore(a, c), "the order is transitive");
   Fuzz::require(!areBeside(a, b) || !areBeside(b, c) || areBeside(a, c), "equivalence is transitive");
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
   if (size < 2)
      return 0;
   std::size_t const first = std::min<std::size_t>(2u + data[0], size);
   std::size_t const second = std::min<std::size_t>(first + data[1], size);
   Text const texts[] = {{data + 2, data + first}, {data + first, data + second}, {data + second, data + size}};
   int order[] = {0, 1, 2};
   do
      checkLaws(texts[order[0]], texts[order[1]], texts[order[2]]);
   while (std::next_permutation(std::begin(order), std::end(order)));
   return 0;
}
