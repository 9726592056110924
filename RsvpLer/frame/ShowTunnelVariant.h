#pragma once

#include "RsvpLer/Export.h"
#include "brindle/String.h"
#include "vane/EnumType.h"

#include <array>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string_view>

namespace Rsvp::Cli {

// The display variants of a tunnel. The names are part of the external interface.
enum class ShowTunnelVariant : std::uint8_t {
   showTunnelP2p = 0,
   showTunnelDetailP2p = 1,
   showTunnelLspP2p = 2,
   showTunnelSummaryP2p = 3,
   showTunnelSubTunnelSummaryP2p = 4,
   showTunnelHistoryP2p = 5,
   showTunnelHistoryDetailP2p = 6,
   showTunnelP2mp = 7,
   showTunnelDetailP2mp = 8,
   showTunnelLspP2mp = 9,
   showTunnelSummaryP2mp = 10,
   showTunnelHistoryP2mp = 11,
   showTunnelHistoryDetailP2mp = 12
};

// Its reflected names, which are the names of the enumerators, in the order of their values.
inline constexpr auto showTunnelVariantEnumerators = std::to_array<Vane::Enumerator>({
      {"showTunnelP2p", ShowTunnelVariant::showTunnelP2p},
      {"showTunnelDetailP2p", ShowTunnelVariant::showTunnelDetailP2p},
      {"showTunnelLspP2p", ShowTunnelVariant::showTunnelLspP2p},
      {"showTunnelSummaryP2p", ShowTunnelVariant::showTunnelSummaryP2p},
      {"showTunnelSubTunnelSummaryP2p", ShowTunnelVariant::showTunnelSubTunnelSummaryP2p},
      {"showTunnelHistoryP2p", ShowTunnelVariant::showTunnelHistoryP2p},
      {"showTunnelHistoryDetailP2p", ShowTunnelVariant::showTunnelHistoryDetailP2p},
      {"showTunnelP2mp", ShowTunnelVariant::showTunnelP2mp},
      {"showTunnelDetailP2mp", ShowTunnelVariant::showTunnelDetailP2mp},
      {"showTunnelLspP2mp", ShowTunnelVariant::showTunnelLspP2mp},
      {"showTunnelSummaryP2mp", ShowTunnelVariant::showTunnelSummaryP2mp},
      {"showTunnelHistoryP2mp", ShowTunnelVariant::showTunnelHistoryP2mp},
      {"showTunnelHistoryDetailP2mp", ShowTunnelVariant::showTunnelHistoryDetailP2mp},
});
inline constexpr Vane::EnumType showTunnelVariantType("Rsvp::Cli::ShowTunnelVariant", showTunnelVariantEnumerators);

// The enumerator's name; the decimal number of a value that has none.
RSVP_LER_EXPORT Brindle::String stringValue(ShowTunnelVariant variant);
RSVP_LER_EXPORT std::ostream& operator<<(std::ostream& out, ShowTunnelVariant variant);

// The value of an enumerator's exact name; nothing for any other text.
RSVP_LER_EXPORT std::optional<ShowTunnelVariant> sequenceToValue(std::string_view name);

// A variant made from its number or its name. Making one from anything else throws Brindle::Exception.
class RSVP_LER_EXPORT ShowTunnelVariantInstance {
public:
   explicit ShowTunnelVariantInstance(std::uint8_t number);
   explicit ShowTunnelVariantInstance(std::string_view name);

   ShowTunnelVariant value() const noexcept { return value_; }

private:
   ShowTunnelVariant value_;
};

} // namespace Rsvp::Cli
