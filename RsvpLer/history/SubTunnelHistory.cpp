#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/history/HistoryLog.h"
#include "RsvpLer/output/RendererV2.h"
#include "brindle/Assert.h"

#include <algorithm>

// The log of a sub-tunnel, by time: unlike that of a tunnel it doesn't follow the ring.
//
//    Sub tunnel 2                                         "subTunnelHistory":{"history":[
//    Wed 2023-04-05 06:07:08.250 Sub tunnel created          {"timestamp":...,"event":"Sub tunnel created"}]}
//

namespace Rsvp::Cli {

namespace {

std::vector<RsvpLerTunnelHistoryEntry> readByTime(Handle<RsvpLerTunnelHistoryEntryColl> const& log,
                                                  std::uint32_t index) {
   std::vector<RsvpLerTunnelHistoryEntry> entries;
   if (!log)
      return entries;
   for (std::uint32_t slot = 0; slot < p2pHistoryCapacity; ++slot) {
      RsvpLerTunnelHistoryEntry entry = readHistorySlot(*log, index, slot);
      if (!isEmptySlot(entry))
         entries.push_back(std::move(entry));
   }
   // Stable, so that two runs over the same log print the same bytes.
   std::ranges::stable_sort(entries, RsvpLerTunnelHistoryEntry::timestampLesser);
   return entries;
}

} // namespace

void ShowRsvpLerTunnel::renderSubTunnelHistory(scrivo::RendererV2* renderer,
                                               RsvpLerSubTunnelConfigId const& subTunnelConfigId,
                                               Handle<RsvpLerSubTunnelIndexMap> const& indexMap,
                                               Brindle::String const& heading, Brindle::String const& indent) const {
   RSVP_LER_TRACE(subTunnelConfigId);
   auto const index =
         indexMap ? indexMap->tunnelIndexForSubTunnelConfigId(subTunnelConfigId) : Vane::Optional<std::uint32_t>();
   if (!index.hasValue()) {
      renderer->eol();
      return;
   }
   auto const history = rsvpLerSubTunnelHistory();
   BRINDLE_ASSERT_TEXT(history, "rsvpLerSubTunnelHistory");

   renderer->startJsonDict("subTunnelHistory");
   renderer->addFrill(heading);
   renderer->eol();
   auto const entries = readByTime(history->subTunnelHistory(index.value()), index.value());
   renderer->startJsonList("history");
   for (RsvpLerTunnelHistoryEntry const& entry : entries)
      renderTunnelHistoryEntry(renderer, entry, true, RsvpSessionType::p2p, indent);
   renderer->endJsonList();
   renderer->endJsonDict();
   renderer->eol();
}

} // namespace Rsvp::Cli
