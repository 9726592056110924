#include "tests/history/Events.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Tests;
using namespace Rsvp;
using testing::ElementsAre;

namespace {

// The messages that a map's handler was given, in order.
class Reports {
public:
   explicit Reports(Fathom::FathomValueMapBase& map) {
      map.setCorruptionHandler([this, &map](Brindle::String const& message, Fathom::FathomValueMapBase const& manager) {
         EXPECT_EQ(&manager, &map);
         messages.emplace_back(message);
      });
   }
   std::vector<std::string> messages;
};

} // namespace

TEST(DamagedSlot, readsAsEmptyInATunnelLog) {
   Router router;
   router.tunnelIndex(tunnelId("t"), 7);
   auto const log = router.tunnelLog(7);
   log->lastEntryIndex = 2;
   put(*log, 7, 0, {sixSevenEight, LerCreationHistoryData()});
   put(*log, 7, 1, {sixSevenEight + 1, LerLspAddHistoryData{1, {}}});
   put(*log, 7, 2, {sixSevenEight + 2, LerLspAddHistoryData{2, 1}});
   log->entries.markDamaged({7, 1}, "checksum of slot 1");
   Reports reports(log->entries);

   EXPECT_EQ(tunnelHistory(router, textFormat, p2p),
             "Tunnel t\n"
             "Wed 2023-04-05 06:07:08.000 Tunnel created\n"
             "Wed 2023-04-05 06:07:10.000 LSP ID 2 added (MBB, replacing LSP ID 1)\n"
             "\n");
   EXPECT_THAT(reports.messages, ElementsAre("checksum of slot 1"));
   EXPECT_EQ(tunnelHistory(router, jsonFormat, p2p),
             R"("tunnelHistory":{"history":[{"timestamp":1680674828.000000,"event":"Tunnel created"},)"
             R"json({"timestamp":1680674830.000000,"event":"LSP ID 2 added (MBB, replacing LSP ID 1)"}]})json");
   EXPECT_THAT(reports.messages, ElementsAre("checksum of slot 1", "checksum of slot 1"));
   EXPECT_EQ(log->entries.corruptionCount(), 2u);
}

TEST(DamagedSlot, doesNotEndAGroupOfReplies) {
   Router router;
   router.tunnelIndex(tunnelId("t"), 7);
   auto const log = router.tunnelLog(7);
   log->lastEntryIndex = 3;
   put(*log, 7, 0, {sixSevenEight, leafReply("10.0.0.1", 3)});
   log->entries.markDamaged({7, 1}, "first");
   log->entries.markDamaged({7, 2}, "second");
   put(*log, 7, 3, {sixSevenEight, leafReply("10.0.0.4", 3)});
   put(*log, 7, 4, {sixSevenEight, LerCreationHistoryData()}); // the oldest, which ends the scan past the newest
   Reports reports(log->entries);
   EXPECT_EQ(tunnelHistory(router, textFormat, p2mp), "Tunnel t\n"
                                                      "Wed 2023-04-05 06:07:08.000 Tunnel created\n"
                                                      "Wed 2023-04-05 06:07:08.000 CSPF reply, tree found\n"
                                                      "   3 leaves in total; changes:\n"
                                                      "   Leaf 10.0.0.1: path removed\n"
                                                      "   Leaf 10.0.0.4: path removed\n"
                                                      "\n");
   // The walk goes on behind the group, so each was read once.
   EXPECT_THAT(reports.messages, ElementsAre("first", "second"));
}

TEST(DamagedSlot, readsAsEmptyInASubTunnelLog) {
   Router router;
   router.subTunnelIndex(subTunnelId("t", 2), 3);
   auto const log = router.subTunnelLog(3);
   put(*log, 3, 0, {sixSevenEight, LerCreationHistoryData()});
   log->entries.markDamaged({3, 1}, "torn");
   log->entries.markDamaged({3, 99}, "worn");
   log->entries.markDamaged({3, 100}, "never read");
   Reports reports(log->entries);
   EXPECT_EQ(subTunnelHistory(router, textFormat), "Sub tunnel 2\n"
                                                   "Wed 2023-04-05 06:07:08.000 Sub tunnel created\n"
                                                   "\n");
   EXPECT_THAT(reports.messages, ElementsAre("torn", "worn"));
   // Writing the slot mends it.
   put(*log, 3, 1, {sixSevenEight + 1, LerLspDelHistoryData{4}});
   EXPECT_EQ(subTunnelHistory(router, jsonFormat),
             R"("subTunnelHistory":{"history":[{"timestamp":1680674828.000000,"event":"Sub tunnel created"},)"
             R"({"timestamp":1680674829.000000,"event":"LSP ID 4 removed"}]})");
   EXPECT_THAT(reports.messages, ElementsAre("torn", "worn", "worn"));
}

TEST(DamagedSlot, ofTheAutomaticBandwidthReadsAsDisabled) {
   Router router;
   auto const id = subTunnelId("t", 1);
   router.autoBwConfig(tunnelId("t"), [](auto& config) { config.enabled = true; });
   router.bwSamplingStatus(tunnelId("t"), [&](auto& samples) { samples.subTunnelBwSamplingStatus.insert(id, {125}); });
   auto const row = [&] {
      auto const command = router.tunnelCommand();
      return rendered(textFormat, [&](auto* renderer) {
         command->renderSubTunnelSummary(renderer, tunnelId("t"), id, {}, {}, command->bwSamplingStatusColl(),
                                         command->subTunnelIndexMap(), 0, false);
      });
   };
   EXPECT_EQ(row(), "         1          -     - unknown           0 bps  1.00 Kbps    0 unknown\n");
   auto const configs = router.fathomStatus->autoBwConfig.get();
   configs->markDamaged(tunnelId("t"), "autoBw of t");
   Reports reports(*configs);
   EXPECT_EQ(row(), "         1          -     - unknown           0 bps          -    0 unknown\n");
   EXPECT_THAT(reports.messages, ElementsAre("autoBw of t"));
}
