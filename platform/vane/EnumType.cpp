#include "vane/EnumType.h"

#include "brindle/Exception.h"

#include <algorithm>

namespace Vane {

Brindle::String EnumType::stringValue(std::uint8_t number) const {
   auto const found = std::ranges::find(enumerators_, number, &Enumerator::number);
   return found == enumerators_.end() ? std::to_string(number) : Brindle::String(found->name);
}

bool EnumType::hasNumber(std::uint8_t number) const noexcept {
   return std::ranges::find(enumerators_, number, &Enumerator::number) != enumerators_.end();
}

std::optional<std::uint8_t> EnumType::numberOf(std::string_view name) const noexcept {
   auto const found = std::ranges::find(enumerators_, name, &Enumerator::name);
   if (found == enumerators_.end())
      return std::nullopt;
   return found->number;
}

std::uint8_t EnumType::requireName(std::string_view name) const {
   if (auto const number = numberOf(name))
      return *number;
   throw Brindle::Exception("no " + Brindle::String(name_) + " has the name " + Brindle::String(name));
}

std::uint8_t EnumType::requireNumber(std::uint8_t number) const {
   if (hasNumber(number))
      return number;
   throw Brindle::Exception("no " + Brindle::String(name_) + " has the number " + std::to_string(number));
}

} // namespace Vane
