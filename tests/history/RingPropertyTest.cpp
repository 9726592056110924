#include "tests/history/Events.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

using namespace Tests;
using namespace Rsvp;

// Random rings, shown by the module and by a plain model that keeps the ring as a list and finds the groups in the list
// written out twice.

namespace {

constexpr std::string_view calendar[] = {"Wed 2023-04-05 06:07:08.000", "Wed 2023-04-05 06:07:09.000"};
constexpr std::string_view number[] = {"1680674828.000000", "1680674829.000000"};

struct ModelSlot {
   bool used = false;
   bool reply = false;
   std::uint32_t instant = 0; // 0 or 1
   std::uint32_t leaf = 0;    // unlike that of every other slot
   std::uint32_t changeType = 0;
   std::uint32_t hopCount = 0;
};

using Ring = std::vector<ModelSlot>;

std::string leafText(std::uint32_t leaf) {
   return "10.9." + std::to_string(leaf / 256) + "." + std::to_string(leaf % 256);
}

Ring randomRing(Random& random, std::uint32_t capacity) {
   Ring ring(capacity);
   std::uint32_t const density = 1 + random.below(10);
   std::uint32_t const stride = 1 + 2 * random.below(20) * 5; // odd and no multiple of 5: it has no part in a capacity
   std::uint32_t const origin = random.below(capacity);
   for (std::uint32_t i = 0; i < capacity; ++i) {
      ring[i] = {random.below(10) < density,       random.below(3) != 0, random.below(4) / 3,
                 (origin + i * stride) % capacity, random.below(6),      random.below(8)};
   }
   return ring;
}

void store(RsvpLerTunnelHistoryEntryColl& log, Ring const& ring) {
   for (std::uint32_t slot = 0; slot < ring.size(); ++slot) {
      ModelSlot const& model = ring[slot];
      if (!model.used)
         continue;
      EventFields fields{sixSevenEight + model.instant, LerLspDelHistoryData{static_cast<std::uint16_t>(model.leaf)}};
      if (model.reply)
         fields.data = leafReply(leafText(model.leaf), static_cast<std::uint8_t>(model.changeType), 12, 2);
      RsvpLerTunnelHistoryEntry event = entry(fields, {7, slot});
      if (model.reply)
         event.hops = Fathom::Vector<Lattice::IpGenAddr>(std::vector(model.hopCount, address("10.1.1.1")));
      log.entries.set({7, slot}, event);
   }
}

// What the two formats show of one entry of the list.
struct Shown {
   std::string text;
   std::string json;
};

std::string listOf(std::string_view element, std::uint32_t count) {
   std::string list;
   for (std::uint32_t i = 0; i < count; ++i)
      list += std::string(i == 0 ? "" : ",") + std::string(element);
   return list;
}

Shown showAlone(ModelSlot const& slot) {
   std::string sentence = "LSP ID " + std::to_string(slot.leaf) + " removed";
   std::string textHops;
   std::string jsonHops;
   if (slot.reply) {
      sentence = "CSPF reply for primary path, path " + std::string(slot.hopCount == 0 ? "not found" : "found") +
                 " (2 times)";
      if (slot.hopCount != 0) {
         textHops = "   Path:\n";
         for (std::uint32_t i = 0; i < slot.hopCount; ++i)
            textHops += "      10.1.1.1\n";
         jsonHops = ",\"hops\":[" + listOf("\"10.1.1.1\"", slot.hopCount) + "]";
      }
   }
   return {std::string(calendar[slot.instant]) + " " + sentence + "\n" + textHops,
           "{\"timestamp\":" + std::string(number[slot.instant]) + ",\"event\":\"" + sentence + "\"" + jsonHops + "}"};
}

Shown showGroup(std::vector<ModelSlot> group) {
   std::sort(group.begin(), group.end(), [](auto const& a, auto const& b) { return a.leaf < b.leaf; });
   constexpr char const* words[] = {"path changed", "new path",       "path changed",
                                    "path removed", "path not found", "path changed"};
   constexpr char const* enums[] = {"changed", "new", "changed", "removed", "notFound", "changed"};
   ModelSlot const& first = group.front();
   std::string const head = std::string(calendar[first.instant]) + " CSPF reply, tree found";
   std::string const json = "{\"timestamp\":" + std::string(number[first.instant]);
   if (first.changeType == 0)
      return {head + " (2 times)\n   12 leaves in total; no changes\n",
              json + R"(,"event":"CSPF reply, tree found (2 times); 12 leaves in total; no changes"})"};
   std::string textLeaves;
   std::string jsonLeaves;
   for (ModelSlot const& leaf : group) {
      bool const hasPath = leaf.changeType == 1 || leaf.changeType == 2;
      textLeaves += "   Leaf " + leafText(leaf.leaf) + ": " + words[leaf.changeType] + "\n";
      for (std::uint32_t done = 0; hasPath && done < leaf.hopCount; done += 3) {
         std::uint32_t const inRow = std::min(leaf.hopCount - done, 3u);
         textLeaves += "      ";
         for (std::uint32_t i = 0; i < inRow; ++i)
            textLeaves += "10.1.1.1        ";
         textLeaves += "\n";
      }
      jsonLeaves += std::string(jsonLeaves.empty() ? "" : ",") + "\"" + leafText(leaf.leaf) + "\":{\"changeType\":\"" +
                    enums[leaf.changeType] + "\"" +
                    (hasPath ? ",\"hops\":[" + listOf("\"10.1.1.1\"", leaf.hopCount) + "]" : "") + "}";
   }
   return {head + "\n   12 leaves in total; changes:\n" + textLeaves,
           json + ",\"tree\":{" + jsonLeaves + R"(},"event":"CSPF reply, tree found; 12 leaves in total"})"};
}

Shown show(Ring const& ring, std::uint32_t lastEntryIndex, RsvpSessionType sessionType) {
   // Oldest first, and then all once more for the groups that run past the newest.
   Ring unrolled;
   auto const capacity = static_cast<std::uint32_t>(ring.size());
   for (std::uint32_t i = 0; i < 2 * capacity; ++i)
      unrolled.push_back(ring[(lastEntryIndex % capacity + 1 + i) % capacity]);

   Shown all{"Tunnel t\n", ""};
   for (std::size_t at = 0; at < capacity;) {
      ModelSlot const& slot = unrolled[at];
      std::size_t next = at + 1;
      if (slot.used) {
         Shown shown = showAlone(slot);
         if (sessionType == p2mp && slot.reply) {
            std::vector<ModelSlot> group{slot};
            auto const joins = [&](ModelSlot const& other) { return other.reply && other.instant == slot.instant; };
            for (; next < at + capacity && (!unrolled[next].used || joins(unrolled[next])); ++next)
               if (unrolled[next].used)
                  group.push_back(unrolled[next]);
            shown = showGroup(group);
         }
         all.text += shown.text;
         all.json += (all.json.empty() ? "" : ",") + shown.json;
      }
      at = next;
   }
   return {all.text + "\n", R"("tunnelHistory":{"history":[)" + all.json + "]}"};
}

} // namespace

TEST(RingProperty, aRandomRingReadsLikeItsModel) {
   Random random(8301);
   for (int round = 0; round < 120; ++round) {
      auto const sessionType = static_cast<RsvpSessionType>(random.below(3));
      std::uint32_t const capacity = sessionType == p2p ? 100 : 1000;
      Ring const ring = randomRing(random, capacity);
      // Also above the capacity, but not so far up that a slot's number would overflow.
      std::uint32_t const lastEntryIndex = random.below(3 * capacity);
      Router router;
      router.tunnelIndex(tunnelId("t"), 7);
      auto const log = router.tunnelLog(7);
      log->lastEntryIndex = lastEntryIndex;
      store(*log, ring);
      Shown const expected = show(ring, lastEntryIndex, sessionType);
      ASSERT_EQ(tunnelHistory(router, textFormat, sessionType), expected.text) << round;
      ASSERT_EQ(tunnelHistory(router, jsonFormat, sessionType), expected.json) << round;
   }
}
