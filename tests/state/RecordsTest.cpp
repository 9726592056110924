#include "tests/support/Router.h"

#include <gtest/gtest.h>

using namespace Rsvp;
using namespace Tests;

TEST(Records, errorText) {
   struct {
      std::uint32_t code;
      std::uint16_t value;
      char const* node;
      char const* text;
   } const rows[] = {
         {24, 5, "10.0.0.3", "Routing problem: no route available toward destination (24/5) from 10.0.0.3"},
         {0, 0, "10.0.0.1", "Confirmation (0/0) from 10.0.0.1"},
         {1, 2, "10.0.0.1", "Admission control failure: requested bandwidth unavailable (1/2) from 10.0.0.1"},
         {1, 4, "10.0.0.1", "Admission control failure (1/4) from 10.0.0.1"},
         {24, 8, "10.0.0.1",
          "Routing problem: MPLS being negotiated, but a non-RSVP-capable router stands in the path (24/8) from "
          "10.0.0.1"},
         {25, 3, "2001:db8::7", "Notify: tunnel locally repaired (25/3) from 2001:db8::7"},
         {23, 65535, "", "RSVP system error (23/65535) from ::"},
         {9, 1, "10.0.0.1", "Unknown error (9/1) from 10.0.0.1"},
         {4294967295, 0, "10.0.0.1", "Unknown error (4294967295/0) from 10.0.0.1"},
   };
   for (auto const& test : rows)
      EXPECT_EQ((RsvpErrorWithNode{test.code, test.value, address(test.node)}.errorStr(false, false)), test.text);
}

TEST(Records, errorsAscendByCodeValueNodeAndStandOnce) {
   auto const set = Brindle::makeNode<RsvpErrorWithNodeOrderedSet>();
   RsvpErrorWithNode const ordered[] = {
         {1, 2, address("10.0.0.2")},  {24, 1, address("10.0.0.9")},    {24, 5, address("10.0.0.1")},
         {24, 5, address("10.0.0.3")}, {24, 5, address("2001:db8::1")},
   };
   for (int i : {3, 0, 4, 2, 1, 3, 0})
      set->errorIs(ordered[i], true);
   EXPECT_EQ(set->size(), 5u);
   std::size_t at = 0;
   for (RsvpErrorWithNode const& error : set->errors()) {
      ASSERT_LT(at, std::size(ordered));
      EXPECT_TRUE(RsvpErrorWithNode::isEq(error, ordered[at++]));
   }
   EXPECT_EQ(at, 5u);
   set->errorIs(ordered[2], false);
   EXPECT_EQ(set->size(), 4u);
}

TEST(Records, p2mpIdOfASession) {
   EXPECT_EQ((RsvpSessionId{1, address("1.2.3.4"), 0, {}}.p2mpId()), 0x01020304u);
   EXPECT_EQ((RsvpSessionId{1, address("255.255.255.255"), 0, {}}.p2mpId()), 4294967295u);
   EXPECT_EQ((RsvpSessionId{1, address("2001:db8::1"), 0, {}}.p2mpId()), 0u);
   EXPECT_EQ(RsvpSessionId().p2mpId(), 0u);
   EXPECT_TRUE((RsvpSessionId{1, {}, 2, {}}.isEq({1, {}, 2, {}})));
   EXPECT_FALSE((RsvpSessionId{1, {}, 2, {}}.isEq({1, {}, 2, address("10.0.0.1")})));
}

TEST(Records, theSinglePathIsThatOfTheLowestLeaf) {
   RsvpLerTree tree;
   EXPECT_TRUE(tree.p2pPath().hops.empty());
   EXPECT_EQ(tree.p2pPath().version, 0u);
   RsvpPathWithVersion low(3);
   low.hops = hops({"10.1.1.2", "10.0.0.9"});
   tree.paths.insert({address("10.0.0.10")}, RsvpPathWithVersion(4));
   tree.paths.insert({address("10.0.0.9")}, low);
   EXPECT_EQ(tree.p2pPath().version, 3u);
   EXPECT_EQ(tree.p2pPath().hops, low.hops);
}

TEST(Records, defaults) {
   EXPECT_EQ(RsvpLerSubTunnelStatus().sessionCliId, 1000000u);
   EXPECT_FALSE(RsvpLerSuperTunnelStatus().color.isSet());
   auto const id = requestId("t");
   RsvpLerLspRequestStatus const substitute(id, RsvpSessionType::p2mp);
   EXPECT_EQ(substitute.lspRequestConfigId, id);
   EXPECT_FALSE(substitute.lspId.hasValue());
   EXPECT_EQ(substitute.lspState, RsvpLerLspState::unknown);
}

TEST(Records, historyEntriesCompareInAllFields) {
   RsvpLerTunnelHistoryEntry const empty;
   EXPECT_EQ(empty.data.index(), 0u);
   EXPECT_TRUE(RsvpLerTunnelHistoryEntry::isEq(empty, RsvpLerTunnelHistoryEntry()));
   RsvpLerTunnelHistoryEntry entries[5];
   entries[0].key = {1, 0};
   entries[1].key = {0, 1};
   entries[2].timestamp = Brindle::Duration(1);
   entries[3].data = LerCreationHistoryData();
   entries[4].hops = hops({"10.0.0.1"});
   for (auto const& entry : entries)
      EXPECT_FALSE(RsvpLerTunnelHistoryEntry::isEq(entry, empty));
   EXPECT_TRUE(RsvpLerTunnelHistoryEntry::timestampLesser(empty, entries[2]));
   EXPECT_FALSE(RsvpLerTunnelHistoryEntry::timestampLesser(entries[2], empty));
   EXPECT_FALSE(RsvpLerTunnelHistoryEntry::timestampLesser(empty, empty));
}

TEST(Records, historyAlternativesHaveTheirIndices) {
   static_assert(std::variant_size_v<LerTunnelHistoryData> == 17);
   EXPECT_EQ(LerTunnelHistoryData(LerAgentRestartHistoryData()).index(), 1u);
   EXPECT_EQ(LerTunnelHistoryData(LerTunnelStateHistoryData()).index(), 3u);
   EXPECT_EQ(LerTunnelHistoryData(LerLspAddHistoryData()).index(), 6u);
   EXPECT_EQ(LerTunnelHistoryData(LerLspErrorHistoryData()).index(), 11u);
   EXPECT_EQ(LerTunnelHistoryData(LerCspfReplyHistoryData()).index(), 13u);
   EXPECT_EQ(LerTunnelHistoryData(LerP2mpLeafStateHistoryData()).index(), 16u);
}
