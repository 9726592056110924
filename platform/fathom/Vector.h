#pragma once

#include "brindle/Assert.h"
#include "brindle/Node.h"
#include "brindle/Ptr.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <new>
#include <type_traits>
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
   explicit Vector(std::vector<T> items) { fill(std::make_move_iterator(items.data()), items.size()); }
   // Copies the items.
   Vector(T const* items, std::size_t count) requires std::is_trivially_copyable_v<T> { fill(items, count); }

   std::size_t size() const noexcept { return rep_ ? rep_->count : 0; }
   bool empty() const noexcept { return !rep_; }
   // The elements, good as long as a copy of this vector is left.
   T const* begin() const noexcept { return rep_ ? rep_->items() : nullptr; }
   T const* end() const noexcept { return begin() + size(); }
   // Asks the memory for what begin() reads, ahead of it.
   void prefetch() const noexcept { __builtin_prefetch(rep_.get()); }
   // An index at or past the size ends the process through an assertion.
   T const& operator[](std::size_t index) const noexcept {
      BRINDLE_ASSERT(index < size());
      return rep_->items()[index];
   }

   friend bool operator==(Vector const& a, Vector const& b) {
      return a.rep_ == b.rep_ || std::equal(a.begin(), a.end(), b.begin(), b.end());
   }

private:
   // The items follow the object.
   struct Rep final : Brindle::Node {
      explicit Rep(std::size_t count_) noexcept : count(count_) {}
      T* items() noexcept { return reinterpret_cast<T*>(this + 1); }
      T const* items() const noexcept { return reinterpret_cast<T const*>(this + 1); }
      void lastUserGone() const noexcept override {
         std::destroy_n(items(), count);
         this->~Rep();
         ::operator delete(const_cast<Rep*>(this));
      }

      std::size_t const count;
   };

   template<class Iterator>
   void fill(Iterator first, std::size_t count) {
      static_assert(alignof(T) <= alignof(Rep) && std::is_nothrow_move_constructible_v<T>);
      if (count == 0)
         return;
      auto* const rep = new (::operator new(sizeof(Rep) + count * sizeof(T))) Rep(count);
      std::uninitialized_copy_n(first, count, rep->items());
      rep_ = Brindle::Ptr<Rep const>::adopt(rep);
   }

   Brindle::Ptr<Rep const> rep_; // empty for no elements
};

} // namespace Fathom
