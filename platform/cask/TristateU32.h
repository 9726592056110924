#pragma once

#include "brindle/String.h"

#include <cstdint>
#include <string>

namespace Cask {

// A number that may not have been set.
class TristateU32 {
public:
   constexpr TristateU32() noexcept = default;
   constexpr TristateU32(std::uint32_t value) noexcept : value_(value), isSet_(true) {}

   constexpr bool isSet() const noexcept { return isSet_; }
   // 0 when not set.
   constexpr std::uint32_t value() const noexcept { return value_; }
   // The decimal number.
   Brindle::String toStrep() const { return std::to_string(value_); }

   friend constexpr bool operator==(TristateU32 const&, TristateU32 const&) noexcept = default;

private:
   std::uint32_t value_ = 0;
   bool isSet_ = false;
};

} // namespace Cask
