#include "tests/history/Events.h"

#include <gtest/gtest.h>

using namespace Tests;
using namespace Rsvp;

namespace {

constexpr auto otherSession = static_cast<RsvpSessionType>(2);

// The tunnel "t" with the log 7, in which each of the slots holds the creation of an LSP whose id is the slot.
Router routerWithSlots(std::uint32_t lastEntryIndex, std::initializer_list<std::uint16_t> slots) {
   Router router;
   router.tunnelIndex(tunnelId("t"), 7);
   auto const log = router.tunnelLog(7);
   log->lastEntryIndex = lastEntryIndex;
   for (std::uint16_t slot : slots)
      put(*log, 7, slot, {.data = LerLspAddHistoryData{slot, {}}});
   return router;
}

std::string linesOfSlots(std::initializer_list<std::uint16_t> slots) {
   std::string lines = "Tunnel t\n";
   for (std::uint16_t slot : slots)
      lines += "Wed 2023-04-05 06:07:08.000 LSP ID " + std::to_string(slot) + " added\n";
   return lines + "\n";
}

std::string jsonOfSlots(std::initializer_list<std::uint16_t> slots) {
   std::string list;
   for (std::uint16_t slot : slots)
      list += std::string(list.empty() ? "" : ",") + R"({"timestamp":1680674828.000000,"event":"LSP ID )" +
              std::to_string(slot) + R"( added"})";
   return R"("tunnelHistory":{"history":[)" + list + "]}";
}

} // namespace

TEST(TunnelHistory, theRingIsReadFromBehindTheNewestSlot) {
   struct {
      RsvpSessionType sessionType;
      std::uint32_t lastEntryIndex;
      std::initializer_list<std::uint16_t> slots;
      std::initializer_list<std::uint16_t> shown;
   } const rows[] = {
         {p2p, 2, {0, 1, 2}, {0, 1, 2}},
         {p2p, 0, {0, 1, 2, 99}, {1, 2, 99, 0}},
         {p2p, 50, {0, 49, 50, 51, 99}, {51, 99, 0, 49, 50}},
         {p2p, 99, {0, 1, 98, 99}, {0, 1, 98, 99}},
         {p2p, 98, {0, 1, 98, 99}, {99, 0, 1, 98}},
         // Slots at or past the capacity are no part of the ring.
         {p2p, 99, {0, 99, 100, 999}, {0, 99}},
         // An index above the capacity counts modulo the capacity; 4294967295 and 1 is 0.
         {p2p, 100, {0, 1, 99}, {1, 99, 0}},
         {p2p, 4294967295, {0, 1, 94, 95, 96, 99}, {0, 1, 94, 95, 96, 99}},
         // 4294967294 and 1 is the slot 95, and 2 is 0: the walk meets 95 twice and never gets to 99.
         {p2p, 4294967294, {0, 94, 95, 96, 98, 99}, {95, 0, 94, 95, 96, 98}},
         {p2mp, 2, {0, 1, 2}, {0, 1, 2}},
         {p2mp, 0, {0, 1, 999}, {1, 999, 0}},
         {p2mp, 100, {0, 99, 100, 101, 999}, {101, 999, 0, 99, 100}},
         {p2mp, 999, {0, 999, 1000}, {0, 999}},
         {p2mp, 4294967295, {0, 295, 999}, {0, 295, 999}},
         // Only 0 has the short ring.
         {otherSession, 100, {0, 99, 100, 101, 999}, {101, 999, 0, 99, 100}},
         {static_cast<RsvpSessionType>(255), 0, {0, 500}, {500, 0}},
   };
   for (auto const& row : rows) {
      Router const router = routerWithSlots(row.lastEntryIndex, row.slots);
      EXPECT_EQ(tunnelHistory(router, textFormat, row.sessionType), linesOfSlots(row.shown)) << row.lastEntryIndex;
      EXPECT_EQ(tunnelHistory(router, jsonFormat, row.sessionType), jsonOfSlots(row.shown)) << row.lastEntryIndex;
   }
}

TEST(TunnelHistory, aFullRingShowsEachSlotOnce) {
   struct {
      RsvpSessionType sessionType;
      std::uint32_t capacity;
   } const rows[] = {{p2p, 100}, {p2mp, 1000}, {otherSession, 1000}};
   for (auto const& row : rows) {
      Router router = routerWithSlots(41, {});
      auto const log = router.tunnelLog(7);
      std::string expected = "Tunnel t\n";
      for (std::uint32_t slot = 0; slot < row.capacity; ++slot)
         put(*log, 7, slot, {.data = LerLspDelHistoryData{static_cast<std::uint16_t>(slot)}});
      for (std::uint32_t age = 0; age < row.capacity; ++age)
         expected += "Wed 2023-04-05 06:07:08.000 LSP ID " + std::to_string((42 + age) % row.capacity) + " removed\n";
      EXPECT_EQ(tunnelHistory(router, textFormat, row.sessionType), expected + "\n");
   }
}

TEST(TunnelHistory, theOrderIsThatOfTheRingAndNotOfTheTimes) {
   Router router = routerWithSlots(2, {});
   auto const log = router.tunnelLog(7);
   put(*log, 7, 0, {sixSevenEight + 2, LerCreationHistoryData()});
   put(*log, 7, 1, {sixSevenEight + 1, LerAgentRestartHistoryData()});
   put(*log, 7, 2, {sixSevenEight, LerCspfQueryHistoryData{1, 1}});
   EXPECT_EQ(tunnelHistory(router, textFormat, p2p, "   History:", "      "),
             "   History:\n"
             "      Wed 2023-04-05 06:07:10.000 Tunnel created\n"
             "      Wed 2023-04-05 06:07:09.000 === RsvpTunnel agent restarted; history logging resumed ===\n"
             "      Wed 2023-04-05 06:07:08.000 CSPF query on secondary path\n"
             "\n");
   // The kind of session reaches the sentence.
   EXPECT_EQ(tunnelHistory(router, jsonFormat, p2mp),
             R"("tunnelHistory":{"history":[{"timestamp":1680674830.000000,"event":"Tunnel created"},)"
             R"({"timestamp":1680674829.000000,)"
             R"("event":"=== RsvpTunnel agent restarted; history logging resumed ==="},)"
             R"({"timestamp":1680674828.000000,"event":"CSPF query"}]})");
}

TEST(TunnelHistory, aTunnelWithoutAnIndexHasOneEmptyLine) {
   Router router;
   router.tunnelLog(0);
   auto const expectNothing = [](Router const& state) {
      EXPECT_EQ(tunnelHistory(state, textFormat, p2p), "\n");
      EXPECT_EQ(tunnelHistory(state, jsonFormat, p2p), "");
      EXPECT_EQ(tunnelHistory(state, textFormat, p2mp), "\n");
      EXPECT_EQ(tunnelHistory(state, jsonFormat, p2mp), "");
   };
   expectNothing(router);
   // The name alone isn't the key.
   router.tunnelIndex(tunnelId("t", RsvpLerTunnelSource::mvpn), 0);
   expectNothing(router);
   router.status->tunnelIndexMap.set({});
   expectNothing(router);
   // The logs aren't asked for, so their table may be missing.
   router.fathomStatus->rsvpLerTunnelHistory.set({});
   expectNothing(router);
}

TEST(TunnelHistory, withoutEntriesTheHeadingStands) {
   using Prepare = void (*)(Router&);
   Prepare const prepares[] = {
         [](Router&) {},                              // no log
         [](Router& router) { router.tunnelLog(6); }, // the log of another index
         [](Router& router) { router.tunnelLog(7); }, // a log with no entry
         [](Router& router) { put(*router.tunnelLog(7), 6, 3, {.data = LerCreationHistoryData()}); },
         [](Router& router) { put(*router.subTunnelLog(7), 7, 3, {.data = LerCreationHistoryData()}); },
   };
   for (Prepare const prepare : prepares) {
      Router router;
      router.tunnelIndex(tunnelId("t"), 7);
      prepare(router);
      for (RsvpSessionType const sessionType : {p2p, p2mp, otherSession}) {
         EXPECT_EQ(tunnelHistory(router, textFormat, sessionType, "   History:", "      "), "   History:\n\n");
         EXPECT_EQ(tunnelHistory(router, jsonFormat, sessionType), R"("tunnelHistory":{"history":[]})");
      }
   }
}

TEST(TunnelHistory, anIndexOfZeroIsAnIndex) {
   Router router;
   router.tunnelIndex(tunnelId("t"), 0);
   put(*router.tunnelLog(0), 0, 5, {.data = LerCreationHistoryData()});
   EXPECT_EQ(tunnelHistory(router, textFormat, p2p), "Tunnel t\n"
                                                     "Wed 2023-04-05 06:07:08.000 Tunnel created\n"
                                                     "\n");
}

TEST(TunnelHistory, whatCannotBeToldFromAnEmptySlot) {
   Lattice::IpGenAddr const hop = address("10.0.0.1");
   struct {
      RsvpLerTunnelHistoryEntry stored;
      char const* json; // empty for an entry that isn't shown
   } const rows[] = {
         {{}, ""},
         {{{0, 1}, {}, {}, {}}, R"({"timestamp":0.000000,"event":""})"},
         {{{1, 0}, {}, {}, {}}, R"({"timestamp":0.000000,"event":""})"},
         {{{}, Brindle::Duration(0.5), {}, {}}, R"({"timestamp":0.500000,"event":""})"},
         {{{}, {}, LerAgentRestartHistoryData(), {}},
          R"({"timestamp":0.000000,"event":"=== RsvpTunnel agent restarted; history logging resumed ==="})"},
         {{{}, {}, {}, {hop}}, R"({"timestamp":0.000000,"event":""})"},
   };
   for (auto const& row : rows) {
      Router router;
      router.tunnelIndex(tunnelId("t"), 0);
      router.tunnelLog(0)->entries.set({0, 0}, row.stored);
      EXPECT_EQ(tunnelHistory(router, jsonFormat, p2p),
                R"("tunnelHistory":{"history":[)" + std::string(row.json) + "]}");
   }
}

TEST(TunnelHistory, repliesOfOneInstantStandApartUnlessTheSessionIsP2mp) {
   Router router = routerWithSlots(1, {});
   put(*router.tunnelLog(7), 7, 0, {.data = leafReply("10.0.0.2", 0)});
   put(*router.tunnelLog(7), 7, 1, {.data = leafReply("10.0.0.1", 0)});
   for (RsvpSessionType const sessionType : {p2p, otherSession}) {
      EXPECT_EQ(tunnelHistory(router, textFormat, sessionType),
                "Tunnel t\n"
                "Wed 2023-04-05 06:07:08.000 CSPF reply for primary path, path not found\n"
                "Wed 2023-04-05 06:07:08.000 CSPF reply for primary path, path not found\n"
                "\n");
   }
   EXPECT_EQ(tunnelHistory(router, textFormat, p2mp), "Tunnel t\n"
                                                      "Wed 2023-04-05 06:07:08.000 CSPF reply, tree found\n"
                                                      "   3 leaves in total; no changes\n"
                                                      "\n");
}

TEST(TunnelHistoryDeathTest, theTableOfTheLogsMustBeThere) {
   Router router;
   router.tunnelIndex(tunnelId("t"), 7);
   router.fathomStatus->rsvpLerTunnelHistory.set({});
   EXPECT_DEATH(tunnelHistory(router, textFormat, p2p), "assertion failed: rsvpLerTunnelHistory\n");
   router.fathomStatus = nullptr;
   EXPECT_DEATH(tunnelHistory(router, jsonFormat, p2mp), "assertion failed: rsvpLerTunnelHistory\n");
}
