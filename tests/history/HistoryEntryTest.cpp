#include "tests/history/Events.h"

#include <gtest/gtest.h>

using namespace Tests;
using namespace Rsvp;

TEST(HistoryEntry, linesWithAnIndentOfSix) {
   struct {
      EventFields event;
      char const* line;
   } const rows[] = {
         {{sixSevenEight + 0.25, LerLspAddHistoryData{3, 2}},
          "      Wed 2023-04-05 06:07:08.250 LSP ID 3 added (MBB, replacing LSP ID 2)\n"},
         {{sixSevenEight + 1, LerTunnelStateHistoryData{RsvpLerTunnelState::up, 0, 0, false}},
          "      Wed 2023-04-05 06:07:09.000 State change: up using primary path\n"},
         {{sixSevenEight + 2.5, LerCspfReplyHistoryData{4, 0, 1, {}, {}}},
          "      Wed 2023-04-05 06:07:10.500 CSPF reply for secondary path, path not found (4 times)\n"},
   };
   for (auto const& row : rows)
      EXPECT_EQ(entryAnswer(textFormat, entry(row.event), false, p2p, "      "), row.line);
}

TEST(HistoryEntry, thePathOfAReplyInText) {
   EventFields const reply{sixSevenEight, LerCspfReplyHistoryData{1, 0, 1, {}, {}}, {"10.1.1.2", "2001:db8::1"}};
   EXPECT_EQ(entryAnswer(textFormat, entry(reply), false, p2p, ""),
             "Wed 2023-04-05 06:07:08.000 CSPF reply for secondary path, path found\n"
             "   Path:\n"
             "      10.1.1.2\n"
             "      2001:db8::1\n");
   EXPECT_EQ(entryAnswer(textFormat, entry(reply), true, p2p, "      "),
             "      Wed 2023-04-05 06:07:08.000 CSPF reply for secondary path, path found\n"
             "         Path:\n"
             "            10.1.1.2\n"
             "            2001:db8::1\n");
}

TEST(HistoryEntry, thePathOfAReplyInJson) {
   // In stored order, not sorted; the times clause follows the words for the path.
   EventFields const reply{sixSevenEight + 0.5,
                           LerCspfReplyHistoryData{2, 0, 0, {}, {}},
                           {"10.1.1.9", "10.1.1.2", "10.1.1.9", "10.1.1.3"}};
   EXPECT_EQ(entryAnswer(jsonFormat, entry(reply), false, p2p, "      "),
             R"json({"timestamp":1680674828.500000,"event":"CSPF reply for primary path, path found (2 times)",)json"
             R"("hops":["10.1.1.9","10.1.1.2","10.1.1.9","10.1.1.3"]})");
}

TEST(HistoryEntry, onlyAReplyShowsItsHops) {
   EventFields const query{sixSevenEight, LerCspfQueryHistoryData{1, 0}, {"10.1.1.2"}};
   EXPECT_EQ(entryAnswer(textFormat, entry(query), false, p2p),
             "Wed 2023-04-05 06:07:08.000 CSPF query on primary path\n");
   EXPECT_EQ(entryAnswer(jsonFormat, entry(query), false, p2p),
             R"({"timestamp":1680674828.000000,"event":"CSPF query on primary path"})");
   EventFields const unknown{sixSevenEight, LerUnknownHistoryData(), {"10.1.1.2"}};
   EXPECT_EQ(entryAnswer(textFormat, entry(unknown), false, p2p), "");
   EXPECT_EQ(entryAnswer(jsonFormat, entry(unknown), false, p2p), R"({"timestamp":1680674828.000000,"event":""})");
}

TEST(HistoryEntry, times) {
   struct {
      double timestamp;
      char const* text;
      char const* number;
   } const rows[] = {
         {0, "Thu 1970-01-01 00:00:00.000", "0.000000"},
         {1.5, "Thu 1970-01-01 00:00:01.500", "1.500000"},
         {1.9996, "Thu 1970-01-01 00:00:01.999", "1.999600"},
         // A year of six digits has no calendar text.
         {1e13, "", "10000000000000.000000"},
   };
   for (auto const& row : rows) {
      RsvpLerTunnelHistoryEntry const event = entry({row.timestamp, LerCreationHistoryData()});
      EXPECT_EQ(entryAnswer(textFormat, event, false, p2p, " "), std::string(" ") + row.text + " Tunnel created\n");
      EXPECT_EQ(entryAnswer(jsonFormat, event, false, p2p),
                R"({"timestamp":)" + std::string(row.number) + R"(,"event":"Tunnel created"})");
   }
}
