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
