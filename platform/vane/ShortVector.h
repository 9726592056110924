#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <utility>
#include <vector>

namespace Vane {

// A list that is mostly short: up to `ownRoom` items stand in the object itself, and only a longer list has memory of
// its own. The items must have a default value. It is a plain value.
template<class T, std::size_t ownRoom>
class ShortVector {
public:
   using value_type = T;
   using iterator = T*;
   using const_iterator = T const*;

   ShortVector() = default;
   ShortVector(std::initializer_list<T> items) {
      for (T const& item : items)
         push_back(item);
   }

   std::size_t size() const noexcept { return size_; }
   bool empty() const noexcept { return size_ == 0; }
   // Good until an item is added.
   T* begin() noexcept { return isLong() ? long_.data() : own_.data(); }
   T* end() noexcept { return begin() + size_; }
   T const* begin() const noexcept { return isLong() ? long_.data() : own_.data(); }
   T const* end() const noexcept { return begin() + size_; }

   void push_back(T item) {
      if (size_ == ownRoom)
         long_.assign(std::make_move_iterator(own_.begin()), std::make_move_iterator(own_.end()));
      if (size_ < ownRoom)
         own_[size_] = std::move(item);
      else
         long_.push_back(std::move(item));
      ++size_;
   }

   friend bool operator==(ShortVector const& a, ShortVector const& b) {
      return std::equal(a.begin(), a.end(), b.begin(), b.end());
   }

private:
   bool isLong() const noexcept { return size_ > ownRoom; }

   std::array<T, ownRoom> own_{};
   std::vector<T> long_; // all the items, once they are more than ownRoom
   std::size_t size_ = 0;
};

} // namespace Vane
