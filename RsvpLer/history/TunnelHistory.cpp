#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/history/HistoryLog.h"
#include "RsvpLer/output/RendererV2.h"
#include "brindle/Assert.h"

#include <algorithm>

// The log of a tunnel, oldest event first.
//
//    Tunnel tun1                                          "tunnelHistory":{"history":[
//    Wed 2023-04-05 06:07:08.250 Tunnel created              {"timestamp":...,"event":"Tunnel created"},
//    Wed 2023-04-05 06:07:09.000 LSP ID 3 added              {"timestamp":...,"event":"LSP ID 3 added"}]}
//

namespace Rsvp::Cli {

namespace {

bool isReply(RsvpLerTunnelHistoryEntry const& entry) {
   return std::holds_alternative<LerCspfReplyHistoryData>(entry.data);
}

// The ring of one log, read from a slot onwards.
class Ring {
public:
   Ring(RsvpLerTunnelHistoryEntryColl const& log, std::uint32_t index, std::uint32_t capacity)
         : log_(log), index_(index), capacity_(capacity), newest_(log.lastEntryIndex.load()) {}

   std::uint32_t capacity() const { return capacity_; }
   // The slot that lies `distance` behind the newest one; those after it wrap around to the oldest.
   std::uint32_t slotAfterNewest(std::uint32_t distance) const { return (newest_ + distance) % capacity_; }
   RsvpLerTunnelHistoryEntry entryAt(std::uint32_t slot) const { return readHistorySlot(log_, index_, slot); }

   // The replies of one instant, from the one in `slot` on, by destination. Empty slots between them don't end the
   // group. Adds to `i` the number of slots that the group took besides the first. The scan is limited by the capacity
   // and not by the end of the walk, so it may run on past the newest slot.
   std::vector<RsvpLerTunnelHistoryEntry> takeReplyGroup(RsvpLerTunnelHistoryEntry first, std::uint32_t slot,
                                                         std::uint32_t& i) const {
      Brindle::Duration const instant = first.timestamp;
      std::vector<RsvpLerTunnelHistoryEntry> replies;
      replies.push_back(std::move(first));
      std::uint32_t j = 1;
      for (; j < capacity_; ++j) {
         RsvpLerTunnelHistoryEntry entry = entryAt((slot + j) % capacity_);
         if (isEmptySlot(entry))
            continue;
         if (entry.timestamp != instant || !isReply(entry))
            break;
         replies.push_back(std::move(entry));
      }
      i += j - 1;
      std::ranges::stable_sort(replies, {}, [](RsvpLerTunnelHistoryEntry const& entry) -> Lattice::IpGenAddr const& {
         return std::get<LerCspfReplyHistoryData>(entry.data).destination;
      });
      return replies;
   }

private:
   RsvpLerTunnelHistoryEntryColl const& log_;
   std::uint32_t index_;
   std::uint32_t capacity_;
   std::uint32_t newest_;
};

} // namespace

void ShowRsvpLerTunnel::renderTunnelHistory(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                                            Handle<RsvpLerTunnelIndexMap> const& indexMap, RsvpSessionType sessionType,
                                            Brindle::String const& heading, Brindle::String const& indent) const {
   RSVP_LER_TRACE(tunnelSpecId);
   auto const index = indexMap ? indexMap->tunnelIndexForTunnelSpecId(tunnelSpecId) : Vane::Optional<std::uint32_t>();
   if (!index.hasValue()) {
      renderer->eol();
      return;
   }
   auto const history = rsvpLerTunnelHistory();
   BRINDLE_ASSERT_TEXT(history, "rsvpLerTunnelHistory");

   renderer->startJsonDict("tunnelHistory");
   renderer->addFrill(heading);
   renderer->eol();
   renderer->startJsonList("history");
   if (auto const log = history->tunnelHistory(index.value())) {
      Ring const ring(*log, index.value(),
                      sessionType == RsvpSessionType::p2p ? p2pHistoryCapacity : p2mpHistoryCapacity);
      for (std::uint32_t i = 1; i <= ring.capacity(); ++i) {
         std::uint32_t const slot = ring.slotAfterNewest(i);
         RsvpLerTunnelHistoryEntry entry = ring.entryAt(slot);
         if (isEmptySlot(entry))
            continue;
         if (sessionType == RsvpSessionType::p2mp && isReply(entry))
            renderP2mpCspfReplyHistoryEntry(renderer, ring.takeReplyGroup(std::move(entry), slot, i), indent);
         else
            renderTunnelHistoryEntry(renderer, entry, false, sessionType, indent);
      }
   }
   renderer->endJsonList();
   renderer->endJsonDict();
   renderer->eol();
}

} // namespace Rsvp::Cli
