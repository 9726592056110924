#pragma once

#include "brindle/String.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <type_traits>

namespace Vane {

// One value of an enumeration and its name.
struct Enumerator {
   template<class Enum>
   constexpr Enumerator(std::string_view name_, Enum value) noexcept
         : name(name_), number(static_cast<std::uint8_t>(value)) {
      static_assert(std::is_same_v<std::underlying_type_t<Enum>, std::uint8_t>);
   }

   std::string_view name;
   std::uint8_t number;
};

// An enumeration over U8: its full name and its enumerators. It refers to both, and they have to outlive it.
class EnumType {
public:
   constexpr EnumType(std::string_view name, std::span<Enumerator const> enumerators) noexcept
         : name_(name), enumerators_(enumerators) {}

   constexpr std::string_view name() const noexcept { return name_; }
   constexpr std::span<Enumerator const> enumerators() const noexcept { return enumerators_; }

   // The enumerator's name; the decimal number when none has it.
   Brindle::String stringValue(std::uint8_t number) const;
   bool hasNumber(std::uint8_t number) const noexcept;
   // The number of an enumerator's exact name; nothing for any other text.
   std::optional<std::uint8_t> numberOf(std::string_view name) const noexcept;

   // As numberOf, and the number itself if an enumerator has it; throw Brindle::Exception when there is none.
   std::uint8_t requireName(std::string_view name) const;
   std::uint8_t requireNumber(std::uint8_t number) const;

private:
   std::string_view name_;
   std::span<Enumerator const> enumerators_;
};

} // namespace Vane
