#include "tests/history/Events.h"

#include <gtest/gtest.h>

using namespace Tests;
using namespace Rsvp;

namespace {

constexpr double later = sixSevenEight + 1;

// The P2MP tunnel "t" with the log 7, whose newest slot is 10.
struct TreeLog {
   TreeLog() {
      router.tunnelIndex(tunnelId("t"), 7);
      log->lastEntryIndex = 10;
   }
   void put(std::uint32_t slot, EventFields const& fields) { Tests::put(*log, 7, slot, fields); }
   // Without the heading and the closing empty line.
   std::string text() const {
      std::string answer = tunnelHistory(router, textFormat, p2mp, "T", "");
      EXPECT_EQ(answer.substr(0, 2), "T\n");
      EXPECT_EQ(answer.substr(answer.size() - 1), "\n");
      return answer.substr(2, answer.size() - 3);
   }
   // The elements of the list.
   std::string json() const {
      constexpr std::string_view opening = R"("tunnelHistory":{"history":[)";
      std::string answer = tunnelHistory(router, jsonFormat, p2mp);
      EXPECT_EQ(answer.substr(0, opening.size()), opening);
      EXPECT_EQ(answer.substr(answer.size() - 2), "]}");
      return answer.substr(opening.size(), answer.size() - opening.size() - 2);
   }

   Router router;
   Brindle::Ptr<RsvpLerTunnelHistoryEntryColl> log = router.tunnelLog(7);
};

// The group of one reply that has changes.
std::string blockOf(EventFields const& reply) {
   TreeLog tree;
   tree.put(10, reply);
   return tree.text();
}

} // namespace

TEST(ReplyGroup, aBlockWithChanges) {
   TreeLog tree;
   tree.put(3, {sixSevenEight + 0.25, leafReply("10.0.0.2", 3)});
   tree.put(4, {sixSevenEight + 0.25, leafReply("10.0.0.1", 1), {"10.1.1.1", "10.1.1.2", "10.1.1.3", "10.1.1.4"}});
   EXPECT_EQ(tunnelHistory(tree.router, textFormat, p2mp, "   History:", "      "),
             "   History:\n"
             "      Wed 2023-04-05 06:07:08.250 CSPF reply, tree found\n"
             "         3 leaves in total; changes:\n"
             "         Leaf 10.0.0.1: new path\n"
             "            10.1.1.1        10.1.1.2        10.1.1.3        \n"
             "            10.1.1.4        \n"
             "         Leaf 10.0.0.2: path removed\n"
             "\n");
   EXPECT_EQ(tunnelHistory(tree.router, jsonFormat, p2mp),
             R"("tunnelHistory":{"history":[{"timestamp":1680674828.250000,"tree":{)"
             R"("10.0.0.1":{"changeType":"new","hops":["10.1.1.1","10.1.1.2","10.1.1.3","10.1.1.4"]},)"
             R"("10.0.0.2":{"changeType":"removed"}},)"
             R"("event":"CSPF reply, tree found; 3 leaves in total"}]})");
}

TEST(ReplyGroup, anUnchangedTree) {
   struct {
      std::uint16_t totalLeaves;
      std::uint32_t count;
      char const* text;
      char const* event;
   } const rows[] = {
         {3, 0, "tree found\n   3 leaves in total; ", "tree found; 3 leaves in total"},
         {3, 1, "tree found\n   3 leaves in total; ", "tree found; 3 leaves in total"},
         {3, 2, "tree found (2 times)\n   3 leaves in total; ", "tree found (2 times); 3 leaves in total"},
         {1, 1, "tree found\n   1 leaves in total; ", "tree found; 1 leaves in total"},
         {65535, 4294967295, "tree found (4294967295 times)\n   65535 leaves in total; ",
          "tree found (4294967295 times); 65535 leaves in total"},
         {0, 1, "tree not found\n   0 leaves in total; ", "tree not found; 0 leaves in total"},
         {0, 4, "tree not found (4 times)\n   0 leaves in total; ", "tree not found (4 times); 0 leaves in total"},
   };
   for (auto const& row : rows) {
      TreeLog tree;
      tree.put(10, {sixSevenEight, leafReply("10.0.0.1", 0, row.totalLeaves, row.count), {"10.1.1.1"}});
      EXPECT_EQ(tree.text(), "Wed 2023-04-05 06:07:08.000 CSPF reply, " + std::string(row.text) + "no changes\n");
      EXPECT_EQ(tree.json(), R"({"timestamp":1680674828.000000,"event":"CSPF reply, )" + std::string(row.event) +
                                   R"(; no changes"})");
   }
}

TEST(ReplyGroup, aTreeWithChangesHasNoTimes) {
   for (std::uint8_t const changeType : std::initializer_list<std::uint8_t>{1, 2, 3, 4, 5, 255}) {
      TreeLog tree;
      tree.put(10, {sixSevenEight, leafReply("10.0.0.1", changeType, 0, 9)});
      std::string const text = tree.text();
      EXPECT_EQ(text.substr(0, text.find("   Leaf")), "Wed 2023-04-05 06:07:08.000 CSPF reply, tree not found\n"
                                                      "   0 leaves in total; changes:\n");
      std::string const json = tree.json();
      EXPECT_EQ(json.substr(json.find("\"event\"")), R"("event":"CSPF reply, tree not found; 0 leaves in total"})");
   }
}

TEST(ReplyGroup, theLowestLeafSpeaksForTheGroup) {
   TreeLog tree;
   tree.put(3, {sixSevenEight, leafReply("10.0.0.9", 1, 5, 7), {"10.1.1.1"}});
   tree.put(4, {sixSevenEight, leafReply("10.0.0.1", 0, 2, 3)});
   tree.put(5, {sixSevenEight, leafReply("10.0.0.5", 3, 6, 8)});
   EXPECT_EQ(tree.text(), "Wed 2023-04-05 06:07:08.000 CSPF reply, tree found (3 times)\n"
                          "   2 leaves in total; no changes\n");
   EXPECT_EQ(tree.json(), R"({"timestamp":1680674828.000000,)"
                          R"("event":"CSPF reply, tree found (3 times); 2 leaves in total; no changes"})");
}

TEST(ReplyGroup, wordsOfTheChanges) {
   struct {
      std::uint8_t changeType;
      char const* text;
      char const* json;
      bool hasHops;
   } const rows[] = {
         {0, "path changed", "changed", false},    {1, "new path", "new", true},
         {2, "path changed", "changed", true},     {3, "path removed", "removed", false},
         {4, "path not found", "notFound", false}, {5, "path changed", "changed", false},
         {255, "path changed", "changed", false},
   };
   for (auto const& row : rows) {
      TreeLog tree;
      // The leaf below it keeps the group from being an unchanged one.
      tree.put(9, {sixSevenEight, leafReply("10.0.0.1", 4), {"10.1.1.1"}});
      tree.put(10, {sixSevenEight, leafReply("10.0.0.2", row.changeType), {"10.1.1.2"}});
      EXPECT_EQ(tree.text(), "Wed 2023-04-05 06:07:08.000 CSPF reply, tree found\n"
                             "   3 leaves in total; changes:\n"
                             "   Leaf 10.0.0.1: path not found\n"
                             "   Leaf 10.0.0.2: " +
                                   std::string(row.text) + (row.hasHops ? "\n      10.1.1.2        \n" : "\n"));
      EXPECT_EQ(tree.json(), R"({"timestamp":1680674828.000000,"tree":{"10.0.0.1":{"changeType":"notFound"},)"
                             R"("10.0.0.2":{"changeType":")" +
                                   std::string(row.json) + (row.hasHops ? R"(","hops":["10.1.1.2"]}})" : "\"}}") +
                                   R"(,"event":"CSPF reply, tree found; 3 leaves in total"})");
   }
}

TEST(ReplyGroup, threeHopsARow) {
   constexpr std::string_view head = "Wed 2023-04-05 06:07:08.000 CSPF reply, tree found\n"
                                     "   3 leaves in total; changes:\n"
                                     "   Leaf 10.0.0.1: path changed\n";
   struct {
      std::initializer_list<std::string_view> hops;
      char const* text;
      char const* json;
   } const rows[] = {
         {{}, "", ""},
         {{"10.1.1.1"}, "      10.1.1.1        \n", R"("10.1.1.1")"},
         {{"10.1.1.1", "255.255.255.255"},
          "      10.1.1.1        255.255.255.255 \n",
          R"("10.1.1.1","255.255.255.255")"},
         {{"1.1.1.1", "1.1.1.2", "1.1.1.3"},
          "      1.1.1.1         1.1.1.2         1.1.1.3         \n",
          R"("1.1.1.1","1.1.1.2","1.1.1.3")"},
         {{"1.1.1.1", "1.1.1.2", "1.1.1.3", "1.1.1.4"},
          "      1.1.1.1         1.1.1.2         1.1.1.3         \n"
          "      1.1.1.4         \n",
          R"("1.1.1.1","1.1.1.2","1.1.1.3","1.1.1.4")"},
         {{"1.1.1.6", "1.1.1.5", "1.1.1.4", "1.1.1.3", "1.1.1.2", "1.1.1.1"},
          "      1.1.1.6         1.1.1.5         1.1.1.4         \n"
          "      1.1.1.3         1.1.1.2         1.1.1.1         \n",
          R"("1.1.1.6","1.1.1.5","1.1.1.4","1.1.1.3","1.1.1.2","1.1.1.1")"},
         // An address of the width of the column or wider is never cut, and nothing parts it from the next.
         {{"2001:db8:1:2::11", "2001:db8:1:2:3:4:5:6", "1.1.1.1"},
          "      2001:db8:1:2::112001:db8:1:2:3:4:5:61.1.1.1         \n",
          R"("2001:db8:1:2::11","2001:db8:1:2:3:4:5:6","1.1.1.1")"},
   };
   for (auto const& row : rows) {
      TreeLog tree;
      tree.put(10, {sixSevenEight, leafReply("10.0.0.1", 2), row.hops});
      EXPECT_EQ(tree.text(), std::string(head) + row.text);
      EXPECT_EQ(tree.json(), R"({"timestamp":1680674828.000000,"tree":{"10.0.0.1":{"changeType":"changed","hops":[)" +
                                   std::string(row.json) +
                                   R"(]}},"event":"CSPF reply, tree found; 3 leaves in total"})");
   }
}

TEST(ReplyGroup, leavesAreOrderedByAddress) {
   TreeLog tree;
   tree.put(1, {sixSevenEight, leafReply("2001:db8::2", 3)});
   tree.put(2, {sixSevenEight, leafReply("10.0.0.10", 3)});
   tree.put(3, {sixSevenEight, leafReply("::", 3)});
   tree.put(4, {sixSevenEight, leafReply("10.0.0.9", 3)});
   tree.put(5, {sixSevenEight, leafReply("", 3)});
   EXPECT_EQ(tree.text(), "Wed 2023-04-05 06:07:08.000 CSPF reply, tree found\n"
                          "   3 leaves in total; changes:\n"
                          "   Leaf ::: path removed\n" // the default address, of no family
                          "   Leaf 10.0.0.9: path removed\n"
                          "   Leaf 10.0.0.10: path removed\n"
                          "   Leaf ::: path removed\n"
                          "   Leaf 2001:db8::2: path removed\n");
   EXPECT_EQ(tree.json(), R"({"timestamp":1680674828.000000,"tree":{"::":{"changeType":"removed"},)"
                          R"("10.0.0.9":{"changeType":"removed"},"10.0.0.10":{"changeType":"removed"},)"
                          R"("::":{"changeType":"removed"},"2001:db8::2":{"changeType":"removed"}},)"
                          R"("event":"CSPF reply, tree found; 3 leaves in total"})");
}

TEST(ReplyGroup, emptySlotsDoNotEndIt) {
   TreeLog tree;
   tree.put(1, {sixSevenEight, leafReply("10.0.0.1", 3)});
   tree.put(4, {sixSevenEight, leafReply("10.0.0.2", 3)});
   tree.put(10, {sixSevenEight, leafReply("10.0.0.3", 3)});
   EXPECT_EQ(tree.text(), "Wed 2023-04-05 06:07:08.000 CSPF reply, tree found\n"
                          "   3 leaves in total; changes:\n"
                          "   Leaf 10.0.0.1: path removed\n"
                          "   Leaf 10.0.0.2: path removed\n"
                          "   Leaf 10.0.0.3: path removed\n");
}

TEST(ReplyGroup, anotherEventOrInstantEndsIt) {
   std::string const reply = " CSPF reply, tree found\n   3 leaves in total; no changes\n";
   std::string const state = " State change: up\n";
   std::string const now = "Wed 2023-04-05 06:07:08.000";
   std::string const then = "Wed 2023-04-05 06:07:09.000";
   struct {
      std::initializer_list<EventFields> events; // in the slots from 1 on
      std::string text;
   } const rows[] = {
         {{{sixSevenEight, leafReply("10.0.0.1", 0)},
           {sixSevenEight, LerTunnelStateHistoryData{RsvpLerTunnelState::up, 0, 0, false}},
           {sixSevenEight, leafReply("10.0.0.2", 0)},
           {sixSevenEight, leafReply("10.0.0.3", 0)},
           {sixSevenEight, LerTunnelStateHistoryData{RsvpLerTunnelState::up, 0, 0, false}}},
          now + reply + now + state + now + reply + now + state},
         {{{sixSevenEight, leafReply("10.0.0.1", 0)},
           {later, leafReply("10.0.0.2", 0)},
           {sixSevenEight, leafReply("10.0.0.3", 0)}},
          now + reply + then + reply + now + reply},
         // The instants must be equal to the last bit, not to the millisecond that is shown.
         {{{sixSevenEight, leafReply("10.0.0.1", 0)}, {sixSevenEight + 0.0001, leafReply("10.0.0.2", 0)}},
          now + reply + now + reply},
         // An event without words ends it, too.
         {{{sixSevenEight, leafReply("10.0.0.1", 0)},
           {sixSevenEight, LerUnknownHistoryData()},
           {sixSevenEight, leafReply("10.0.0.2", 0)}},
          now + reply + now + reply},
   };
   for (auto const& row : rows) {
      TreeLog tree;
      std::uint32_t slot = 0;
      for (EventFields const& event : row.events)
         tree.put(++slot, event);
      EXPECT_EQ(tree.text(), row.text);
   }
}

TEST(ReplyGroup, theScanRunsOnPastTheNewestSlot) {
   TreeLog tree;
   // The newest slot is 10, so 11 is the oldest. The group of slot 10 takes 11 and 12 again.
   tree.put(11, {sixSevenEight, leafReply("10.0.0.3", 3)});
   tree.put(12, {sixSevenEight, leafReply("10.0.0.1", 3)});
   tree.put(13, {later, LerCreationHistoryData()});
   tree.put(10, {sixSevenEight, leafReply("10.0.0.2", 3)});
   EXPECT_EQ(tree.text(), "Wed 2023-04-05 06:07:08.000 CSPF reply, tree found\n"
                          "   3 leaves in total; changes:\n"
                          "   Leaf 10.0.0.1: path removed\n"
                          "   Leaf 10.0.0.3: path removed\n"
                          "Wed 2023-04-05 06:07:09.000 Tunnel created\n"
                          "Wed 2023-04-05 06:07:08.000 CSPF reply, tree found\n"
                          "   3 leaves in total; changes:\n"
                          "   Leaf 10.0.0.1: path removed\n"
                          "   Leaf 10.0.0.2: path removed\n"
                          "   Leaf 10.0.0.3: path removed\n");
}

TEST(ReplyGroup, aRingFullOfOneInstantIsOneGroup) {
   TreeLog tree;
   std::string expected = "Wed 2023-04-05 06:07:08.000 CSPF reply, tree found\n   1000 leaves in total; changes:\n";
   for (std::uint32_t slot = 0; slot < 1000; ++slot) {
      std::string const leaf = "10.0." + std::to_string(slot / 250) + "." + std::to_string(slot % 250);
      tree.put(slot, {sixSevenEight, leafReply(leaf, 4, 1000)});
      expected += "   Leaf " + leaf + ": path not found\n";
   }
   EXPECT_EQ(tree.text(), expected);
}

TEST(ReplyGroup, aSingleSlotIsAGroup) {
   EXPECT_EQ(blockOf({sixSevenEight, leafReply("2001:db8::1", 1), {"2001:db8::2"}}),
             "Wed 2023-04-05 06:07:08.000 CSPF reply, tree found\n"
             "   3 leaves in total; changes:\n"
             "   Leaf 2001:db8::1: new path\n"
             "      2001:db8::2     \n");
}

TEST(ReplyGroup, anEntryThatIsNoReplyIsRefused) {
   auto const command = Router().tunnelCommand();
   std::vector<RsvpLerTunnelHistoryEntry> const entries{entry({.data = LerCreationHistoryData()})};
   EXPECT_THROW(
         rendered(textFormat, [&](auto* renderer) { command->renderP2mpCspfReplyHistoryEntry(renderer, entries, {}); }),
         std::bad_variant_access);
}
