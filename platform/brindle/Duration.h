#pragma once

#include <compare>

namespace Brindle {

// A count of seconds, or a moment as seconds since the epoch of its clock.
class Duration {
public:
   constexpr Duration() noexcept = default;
   constexpr explicit Duration(double seconds) noexcept : seconds_(seconds) {}

   constexpr double seconds() const noexcept { return seconds_; }

   friend constexpr bool operator==(Duration, Duration) noexcept = default;
   friend constexpr std::partial_ordering operator<=>(Duration, Duration) noexcept = default;
   friend constexpr Duration operator+(Duration a, Duration b) noexcept { return Duration(a.seconds_ + b.seconds_); }
   friend constexpr Duration operator-(Duration a, Duration b) noexcept { return Duration(a.seconds_ - b.seconds_); }

private:
   double seconds_ = 0;
};

} // namespace Brindle
