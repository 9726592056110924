#pragma once

#include "brindle/Assert.h"
#include "brindle/Node.h"
#include "brindle/Ptr.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <utility>
#include <vector>

namespace Fathom {

// A vector of the shared state: immutable and counted. Copying one copies a pointer. The default vector is
// empty.
template<class T>
class Vector {
public:
   using value_type = T;
   using const_iterator = T const*;

   Vector() noexcept = default;
   Vector(std::initializer_list<T> items) : Vector(std::vector<T>(items)) {}
   explicit Vector(std::vector<T> items) {
      if (!items.empty())
         rep_ = Brindle::makeNode<Rep>(std::move(items));
   }

   std::size_t size() const noexcept { return rep_ ? rep_->items.size() : 0; }
   bool empty() const noexcept { return !rep_; }
   // The elements, good as long as a copy of this vector is left.
   T const* begin() const noexcept { return rep_ ? rep_->items.data() : nullptr; }
   T const* end() const noexcept { return begin() + size(); }
   // Asks the memory for what begin() reads, ahead of it.
   void prefetch() const noexcept { __builtin_prefetch(rep_.get()); }
   // An index at or past the size ends the process through an assertion.
   T const& operator[](std::size_t index) const noexcept {
      BRINDLE_ASSERT(index < size());
      return rep_->items[index];
   }

   friend bool operator==(Vector const& a, Vector const& b) {
      return a.rep_ == b.rep_ || std::equal(a.begin(), a.end(), b.begin(), b.end());
   }

private:
   struct Rep final : Brindle::Node {
      explicit Rep(std::vector<T> elements) noexcept : items(std::move(elements)) {}
      std::vector<T> const items;
   };

   Brindle::Ptr<Rep const> rep_; // empty for no elements
};

} // namespace Fathom
