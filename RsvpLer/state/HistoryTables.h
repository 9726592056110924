#pragma once

#include "RsvpLer/state/HistoryRecords.h"
#include "RsvpLer/state/Table.h"
#include "fathom/ValueMap.h"

#include <atomic>
#include <cstdint>

// The logs, by the index that the index maps give a tunnel or sub-tunnel.

namespace Rsvp {

// One log: a ring whose slots are read by (index of the log, slot). A slot that holds nothing, or is damaged, reads as
// the default entry.
//
// For its writer: the log of a tunnel is read from the slot lastEntryIndex + 1 on, modulo its capacity, and shown in
// that order, so the newest entry has to stand in lastEntryIndex. The log of a sub-tunnel is read slot by slot and
// shown by timestamp; its lastEntryIndex is ignored. Slots at or above the capacity aren't read. An entry that is the
// default in every field, its key too, counts as an empty slot; what an entry says its key is means nothing otherwise.
struct RsvpLerTunnelHistoryEntryColl : Brindle::Node {
   std::atomic<std::uint32_t> lastEntryIndex = 0; // the slot of the newest entry of a tunnel log
   Fathom::FathomValueMap<RsvpLerTunnelHistoryKey, RsvpLerTunnelHistoryEntry> entries;
};

struct RsvpLerTunnelHistory : CollTable<std::uint32_t, RsvpLerTunnelHistoryEntryColl> {
   Brindle::Ptr<RsvpLerTunnelHistoryEntryColl const> tunnelHistory(std::uint32_t index) const { return find(index); }
};

struct RsvpLerSubTunnelHistory : CollTable<std::uint32_t, RsvpLerTunnelHistoryEntryColl> {
   Brindle::Ptr<RsvpLerTunnelHistoryEntryColl const> subTunnelHistory(std::uint32_t index) const { return find(index); }
};

} // namespace Rsvp
