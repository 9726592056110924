#include "RsvpLer/frame/ShowTunnelVariant.h"

#include <ostream>

namespace Rsvp::Cli {

Brindle::String stringValue(ShowTunnelVariant variant) {
   return showTunnelVariantType.stringValue(static_cast<std::uint8_t>(variant));
}

std::ostream& operator<<(std::ostream& out, ShowTunnelVariant variant) {
   return out << stringValue(variant);
}

std::optional<ShowTunnelVariant> sequenceToValue(std::string_view name) {
   auto const number = showTunnelVariantType.numberOf(name);
   return number ? std::optional(static_cast<ShowTunnelVariant>(*number)) : std::nullopt;
}

ShowTunnelVariantInstance::ShowTunnelVariantInstance(std::uint8_t number)
      : value_(static_cast<ShowTunnelVariant>(showTunnelVariantType.requireNumber(number))) {
}

ShowTunnelVariantInstance::ShowTunnelVariantInstance(std::string_view name)
      : value_(static_cast<ShowTunnelVariant>(showTunnelVariantType.requireName(name))) {
}

} // namespace Rsvp::Cli
