#include "RsvpLer/state/HistoryRecords.h"

namespace Rsvp {

std::uint32_t RsvpLerTunnelHistoryKey::hash(std::uint32_t seed) const noexcept {
   std::uint64_t const both = std::uint64_t{tunnelIndex} << 32 | entryIndex;
   std::uint64_t const product = (both ^ seed) * 0x9e3779b97f4a7c15;
   return static_cast<std::uint32_t>(product ^ product >> 32);
}

} // namespace Rsvp
