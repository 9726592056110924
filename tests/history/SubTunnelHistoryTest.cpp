#include "tests/history/Events.h"

#include <gtest/gtest.h>

using namespace Tests;
using namespace Rsvp;

namespace {

// The sub-tunnel 2 of "t" with the log 3.
Router routerWithSubTunnel() {
   Router router;
   router.subTunnelIndex(subTunnelId("t", 2), 3);
   return router;
}

} // namespace

TEST(SubTunnelHistory, entriesAreSortedByTime) {
   Router router = routerWithSubTunnel();
   auto const log = router.subTunnelLog(3);
   log->lastEntryIndex = 50; // not looked at
   put(*log, 3, 99, {sixSevenEight, LerCreationHistoryData()});
   put(*log, 3, 51, {sixSevenEight + 3, LerLspDelHistoryData{1}});
   put(*log, 3, 0, {sixSevenEight + 2, LerTunnelStateHistoryData{RsvpLerTunnelState::up, 1, 0, false}});
   put(*log, 3, 50, {sixSevenEight + 1, LerCspfQueryHistoryData{2, 0}});
   put(*log, 3, 100, {sixSevenEight, LerAgentRestartHistoryData()}); // past the ring
   EXPECT_EQ(subTunnelHistory(router, textFormat, "   History:", "      "),
             "   History:\n"
             "      Wed 2023-04-05 06:07:08.000 Sub tunnel created\n"
             "      Wed 2023-04-05 06:07:09.000 CSPF query on primary path (2 times)\n"
             "      Wed 2023-04-05 06:07:10.000 State change: up using secondary path\n"
             "      Wed 2023-04-05 06:07:11.000 LSP ID 1 removed\n"
             "\n");
   EXPECT_EQ(subTunnelHistory(router, jsonFormat),
             R"("subTunnelHistory":{"history":[{"timestamp":1680674828.000000,"event":"Sub tunnel created"},)"
             R"json({"timestamp":1680674829.000000,"event":"CSPF query on primary path (2 times)"},)json"
             R"({"timestamp":1680674830.000000,"event":"State change: up using secondary path"},)"
             R"({"timestamp":1680674831.000000,"event":"LSP ID 1 removed"}]})");
}

TEST(SubTunnelHistory, repliesAreNeverGrouped) {
   Router router = routerWithSubTunnel();
   auto const log = router.subTunnelLog(3);
   put(*log, 3, 0, {sixSevenEight, LerCspfReplyHistoryData{1, 0, 1, {}, {}}, {"10.1.1.2", "10.0.0.9"}});
   put(*log, 3, 1, {sixSevenEight, LerCspfReplyHistoryData{1, 0, 1, {}, {}}, {"10.1.1.2", "10.0.0.9"}});
   EXPECT_EQ(subTunnelHistory(router, textFormat),
             "Sub tunnel 2\n"
             "Wed 2023-04-05 06:07:08.000 CSPF reply for secondary path, path found\n"
             "   Path:\n"
             "      10.1.1.2\n"
             "      10.0.0.9\n"
             "Wed 2023-04-05 06:07:08.000 CSPF reply for secondary path, path found\n"
             "   Path:\n"
             "      10.1.1.2\n"
             "      10.0.0.9\n"
             "\n");
   std::string const reply = R"({"timestamp":1680674828.000000,"event":"CSPF reply for secondary path, path found",)"
                             R"("hops":["10.1.1.2","10.0.0.9"]})";
   EXPECT_EQ(subTunnelHistory(router, jsonFormat), R"("subTunnelHistory":{"history":[)" + reply + "," + reply + "]}");
}

TEST(SubTunnelHistory, aFullLogShowsItsHundredSlots) {
   Router router = routerWithSubTunnel();
   auto const log = router.subTunnelLog(3);
   std::string expected = "Sub tunnel 2\n";
   for (std::uint32_t slot = 0; slot < 100; ++slot) {
      // A later slot is older.
      put(*log, 3, slot, {sixSevenEight - slot / 1024.0, LerLspDelHistoryData{static_cast<std::uint16_t>(slot)}});
   }
   for (std::uint32_t slot = 100; slot-- > 0;) {
      auto const second = slot == 0 ? "08" : "07";
      std::string const fraction = std::to_string(slot == 0 ? 1000 : 1000 + (1024 - slot) * 1000 / 1024).substr(1);
      expected += "Wed 2023-04-05 06:07:" + std::string(second) + "." + fraction + " LSP ID " + std::to_string(slot) +
                  " removed\n";
   }
   EXPECT_EQ(subTunnelHistory(router, textFormat), expected + "\n");
}

TEST(SubTunnelHistory, aSubTunnelWithoutAnIndexHasOneEmptyLine) {
   Router router;
   router.subTunnelLog(0);
   auto const expectNothing = [](Router const& state) {
      EXPECT_EQ(subTunnelHistory(state, textFormat), "\n");
      EXPECT_EQ(subTunnelHistory(state, jsonFormat), "");
   };
   expectNothing(router);
   router.subTunnelIndex(subTunnelId("t", 1), 0);
   router.subTunnelIndex(subTunnelId("u", 2), 0);
   router.tunnelIndex(tunnelId("t"), 0);
   expectNothing(router);
   router.status->subTunnelIndexMap.set({});
   expectNothing(router);
   router.fathomStatus->rsvpLerSubTunnelHistory.set({});
   expectNothing(router);
}

TEST(SubTunnelHistory, withoutEntriesTheHeadingStands) {
   using Prepare = void (*)(Router&);
   Prepare const prepares[] = {
         [](Router&) {},
         [](Router& router) { router.subTunnelLog(2); },
         [](Router& router) { router.subTunnelLog(3); },
         [](Router& router) { put(*router.subTunnelLog(3), 2, 0, {.data = LerCreationHistoryData()}); },
         // The log of the tunnel of that index is another one.
         [](Router& router) { put(*router.tunnelLog(3), 3, 0, {.data = LerCreationHistoryData()}); },
         [](Router& router) {
            router.subTunnelLog(3)->entries.set({3, 0}, {});
         },
   };
   for (Prepare const prepare : prepares) {
      Router router = routerWithSubTunnel();
      prepare(router);
      EXPECT_EQ(subTunnelHistory(router, textFormat, "   History:", "      "), "   History:\n\n");
      EXPECT_EQ(subTunnelHistory(router, jsonFormat), R"("subTunnelHistory":{"history":[]})");
   }
}

TEST(SubTunnelHistoryDeathTest, theTableOfTheLogsMustBeThere) {
   Router router = routerWithSubTunnel();
   router.fathomStatus->rsvpLerSubTunnelHistory.set({});
   EXPECT_DEATH(subTunnelHistory(router, textFormat), "assertion failed: rsvpLerSubTunnelHistory\n");
   EXPECT_DEATH(subTunnelHistory(router, jsonFormat), "assertion failed: rsvpLerSubTunnelHistory\n");
}
