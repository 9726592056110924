#pragma once

#include "brindle/Assert.h"

#include <compare>

namespace Vane {

// A value with a presence flag. An absent value is less than any present one; two absent values are equal.
template<class T>
class Optional {
public:
   constexpr Optional() noexcept = default;
   constexpr Optional(T value) noexcept : value_(value), present_(true) {}

   constexpr bool hasValue() const noexcept { return present_; }
   // The value; asking an absent one ends the process through an assertion.
   constexpr T value() const noexcept {
      BRINDLE_ASSERT(hasValue());
      return value_;
   }
   constexpr T valueOr(T fallback) const noexcept { return present_ ? value_ : fallback; }

   friend constexpr auto operator<=>(Optional const& a, Optional const& b) noexcept
         -> std::compare_three_way_result_t<T> {
      if (!a.present_ || !b.present_)
         return a.present_ <=> b.present_;
      return a.value_ <=> b.value_;
   }
   friend constexpr bool operator==(Optional const& a, Optional const& b) noexcept {
      return a.present_ == b.present_ && (!a.present_ || a.value_ == b.value_);
   }

private:
   T value_{};
   bool present_ = false;
};

} // namespace Vane
