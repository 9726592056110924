#include "RsvpLer/state/HistoryRecords.h"

#include "tests/support/Router.h"

#include <gtest/gtest.h>

using namespace Rsvp;

namespace {

RsvpLerTunnelHistoryEntry entry(LerTunnelHistoryData data) {
   RsvpLerTunnelHistoryEntry entry;
   entry.data = std::move(data);
   return entry;
}

// The empty entry, and behind it one for each field there is, in which that field alone isn't the default.
std::vector<RsvpLerTunnelHistoryEntry> entries() {
   auto const node = Tests::address("10.0.0.3");
   std::vector<RsvpLerTunnelHistoryEntry> all(5);
   all[1].key.tunnelIndex = 1;
   all[2].key.entryIndex = 1;
   all[3].timestamp = Brindle::Duration(1);
   all[4].hops = Tests::hops({"10.0.0.3"});
   LerTunnelHistoryData const events[] = {LerAgentRestartHistoryData(),
                                          LerCreationHistoryData(),
                                          LerTunnelStateHistoryData(),
                                          LerTunnelStateHistoryData{.state = RsvpLerTunnelState::up},
                                          LerTunnelStateHistoryData{.groupId = 1},
                                          LerTunnelStateHistoryData{.subTunnelCount = 1},
                                          LerTunnelStateHistoryData{.splitBw = true},
                                          LerBandwidthHistoryData(),
                                          LerBandwidthHistoryData{1},
                                          LerBandwidthConfigHistoryData(),
                                          LerBandwidthConfigHistoryData{.bandwidth = 1},
                                          LerBandwidthConfigHistoryData{.autoBw = true},
                                          LerLspAddHistoryData(),
                                          LerLspAddHistoryData{1, {}},
                                          LerLspAddHistoryData{{}, 1},
                                          LerLspDelHistoryData(),
                                          LerLspDelHistoryData{1},
                                          LerLspDelHistoryData{0},
                                          LerLspInUseHistoryData(),
                                          LerLspInUseHistoryData{1, {}},
                                          LerLspInUseHistoryData{{}, 1},
                                          LerLspNoLongerInUseHistoryData(),
                                          LerLspNoLongerInUseHistoryData{1},
                                          LerLspStateHistoryData(),
                                          LerLspStateHistoryData{1, {}},
                                          LerLspStateHistoryData{{}, RsvpLerLspState::up},
                                          LerLspErrorHistoryData(),
                                          LerLspErrorHistoryData{1, {}},
                                          LerLspErrorHistoryData{{}, {24, 5, node}},
                                          LerCspfQueryHistoryData(),
                                          LerCspfQueryHistoryData{.count = 1},
                                          LerCspfQueryHistoryData{.groupId = 1},
                                          LerCspfReplyHistoryData(),
                                          LerCspfReplyHistoryData{1, 0, 0, {}, {}},
                                          LerCspfReplyHistoryData{0, 1, 0, {}, {}},
                                          LerCspfReplyHistoryData{0, 0, 1, {}, {}},
                                          LerCspfReplyHistoryData{0, 0, 0, node, {}},
                                          LerCspfReplyHistoryData{0, 0, 0, {}, RsvpLerP2mpPathChangeType{3}},
                                          LerP2mpDestinationAddedHistoryData(),
                                          LerP2mpDestinationAddedHistoryData{node},
                                          LerP2mpDestinationRemovedHistoryData(),
                                          LerP2mpDestinationRemovedHistoryData{node},
                                          LerP2mpLeafStateHistoryData(),
                                          LerP2mpLeafStateHistoryData{node, {}},
                                          LerP2mpLeafStateHistoryData{{}, RsvpLspState::up}};
   for (LerTunnelHistoryData const& event : events)
      all.push_back(entry(event));
   return all;
}

} // namespace

TEST(HistoryRecords, equalityTakesEveryField) {
   auto const left = entries();
   auto const right = entries();
   for (std::size_t i = 0; i < left.size(); ++i)
      for (std::size_t j = 0; j < right.size(); ++j)
         EXPECT_EQ(RsvpLerTunnelHistoryEntry::isEq(left[i], right[j]), i == j) << i << ' ' << j;
}
