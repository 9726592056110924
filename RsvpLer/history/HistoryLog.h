#pragma once

#include "RsvpLer/state/HistoryTables.h"

#include <cstdint>

namespace Rsvp::Cli {

// A copy of what a slot of a log holds; a slot that holds nothing, or is damaged, gives the default entry.
inline RsvpLerTunnelHistoryEntry readHistorySlot(RsvpLerTunnelHistoryEntryColl const& log, std::uint32_t index,
                                                 std::uint32_t slot) {
   return log.entries.safeLookup({index, slot});
}

// An entry that is the default in every field, its key too, can't be told from an empty slot.
inline bool isEmptySlot(RsvpLerTunnelHistoryEntry const& entry) {
   return RsvpLerTunnelHistoryEntry::isEq(entry, RsvpLerTunnelHistoryEntry());
}

} // namespace Rsvp::Cli
