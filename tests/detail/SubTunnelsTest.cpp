#include "tests/support/Router.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

RsvpLerTunnelSpecId const tun1 = tunnelId("tun1");

constexpr ShowTunnelVariant p2pVariants[] = {
      ShowTunnelVariant::showTunnelP2p,
      ShowTunnelVariant::showTunnelDetailP2p,
      ShowTunnelVariant::showTunnelLspP2p,
      ShowTunnelVariant::showTunnelSummaryP2p,
      ShowTunnelVariant::showTunnelSubTunnelSummaryP2p,
      ShowTunnelVariant::showTunnelHistoryP2p,
      ShowTunnelVariant::showTunnelHistoryDetailP2p,
};

class SubTunnels : public testing::Test {
protected:
   SubTunnels() {
      router.superTunnelStatus(tun1, [](RsvpLerSuperTunnelStatus& status) { status.split = true; });
   }

   // A sub-tunnel that is up, without an instance.
   void addUp(std::uint32_t number) {
      router.subTunnelStatus(subTunnelId("tun1", number),
                             [](RsvpLerSubTunnelStatus& status) { status.state = RsvpLerTunnelState::up; });
   }
   Handle<RsvpLerSuperTunnelStatus> superTunnelStatus() const {
      return router.status->superTunnelStatusColl.get()->superTunnelStatus(tun1);
   }
   Handle<RsvpLerSubTunnelStatusColl> coll() const {
      return router.status->subTunnelStatusCollTable.get()->subTunnelStatusColl(tun1);
   }
   std::string listing(std::uint32_t format, ShowTunnelVariant variant, Handle<RsvpLerSuperTunnelStatus> const& status,
                       Handle<RsvpLerSubTunnelStatusColl> const& subTunnels) const {
      auto const command = router.tunnelCommand();
      return rendered(format, [&](auto* renderer) {
         command->renderSubTunnelsForTunnel(renderer, tun1, status, subTunnels, variant);
      });
   }
   std::string listing(std::uint32_t format, ShowTunnelVariant variant) const {
      return listing(format, variant, superTunnelStatus(), coll());
   }

   Router router;
};

constexpr std::string_view tableHeader = "\n"
                                         "Tunnel: tun1\n"
                                         "Sub Tunnel Session ID Index Active Path Reserved BW Sampled BW LSPs State\n"
                                         "---------- ---------- ----- ----------- ----------- ---------- ---- -----\n";

TEST_F(SubTunnels, tunnelThatIsNotSplitListsNone) {
   addUp(0);
   for (ShowTunnelVariant const variant : p2pVariants) {
      bool const table = variant == ShowTunnelVariant::showTunnelSubTunnelSummaryP2p;
      EXPECT_EQ(listing(textFormat, variant), table ? tableHeader : "") << variant;
      EXPECT_EQ(listing(jsonFormat, variant), "") << variant;
   }
}

struct ListingRow {
   ShowTunnelVariant variant;
   std::string_view ofOne; // what stands for the number N of a sub-tunnel
   std::string_view members;
};

constexpr std::string_view attributes =
      R"("currentBandwidth":0,"state":"up","mbb":false,"lspCount":0,"lspIds":[],"activePathType":"unknown",)"
      R"("secondaryPaths":[])";
constexpr std::string_view lspAttributes =
      R"("currentBandwidth":0,"state":"up","mbb":false,"lspCount":0,"lspIds":[],"activePathType":"unknown",)"
      R"("secondaryPaths":[],"lsps":[])";
constexpr std::string_view historyAttributes =
      R"("currentBandwidth":0,"state":"up","mbb":false,"lspCount":0,"activePathType":"unknown")";

constexpr ListingRow listingRows[] = {
      {ShowTunnelVariant::showTunnelP2p, "Sub tunnel N\n   Bandwidth: 0 bps\n   State: up\n   LSPs: 0\n", attributes},
      {ShowTunnelVariant::showTunnelDetailP2p,
       "Sub tunnel N\n   Bandwidth: 0 bps\n   State: up\n   LSPs: 0\n   LSP IDs:\n", attributes},
      {ShowTunnelVariant::showTunnelLspP2p, "Sub tunnel N\n   Bandwidth: 0 bps\n   State: up\n   LSPs: 0\n",
       lspAttributes},
      {ShowTunnelVariant::showTunnelSummaryP2p, "", attributes},
      {ShowTunnelVariant::showTunnelHistoryP2p, "\n", historyAttributes}, // without an index there is no log
      {ShowTunnelVariant::showTunnelHistoryDetailP2p,
       "Sub tunnel N\n   Bandwidth: 0 bps\n   State: up\n   LSPs: 0\n   LSP IDs:\n\n", attributes},
};

std::string numbered(std::string_view text, std::string_view number) {
   std::string result;
   for (char const c : text)
      c == 'N' ? result.append(number) : result.append(1, c);
   return result;
}

TEST_F(SubTunnels, listedByNumber) {
   for (std::uint32_t const number : {10u, 2u, 0u, 1u})
      addUp(number);
   for (ListingRow const& row : listingRows) {
      EXPECT_EQ(listing(textFormat, row.variant),
                numbered(row.ofOne, "1") + numbered(row.ofOne, "2") + numbered(row.ofOne, "10"))
            << row.variant;
      std::string const members(row.members);
      EXPECT_EQ(listing(jsonFormat, row.variant),
                R"("1":{)" + members + R"(},"2":{)" + members + R"(},"10":{)" + members + "}")
            << row.variant;
   }
}

TEST_F(SubTunnels, listedByNumberInTheTable) {
   for (std::uint32_t const number : {10u, 2u, 0u, 1u})
      addUp(number);
   ShowTunnelVariant const variant = ShowTunnelVariant::showTunnelSubTunnelSummaryP2p;
   EXPECT_EQ(listing(textFormat, variant),
             std::string(tableHeader) + "         1          -     - unknown           0 bps          -    0 up\n"
                                        "         2          -     - unknown           0 bps          -    0 up\n"
                                        "        10          -     - unknown           0 bps          -    0 up\n");
   std::string const members(attributes);
   EXPECT_EQ(listing(jsonFormat, variant),
             R"("1":{)" + members + R"(},"2":{)" + members + R"(},"10":{)" + members + "}");
}

// The number decides only between sub-tunnels of one name and source.
TEST_F(SubTunnels, listedByTheWholeKey) {
   auto const given = Brindle::makeNode<RsvpLerSubTunnelStatusColl>();
   for (RsvpLerSubTunnelConfigId const& id :
        {RsvpLerSubTunnelConfigId{tunnelId("tun2"), 1}, RsvpLerSubTunnelConfigId{tunnelId("tun1"), 3},
         RsvpLerSubTunnelConfigId{tunnelId("tun1", RsvpLerTunnelSource::mvpn), 2},
         RsvpLerSubTunnelConfigId{tunnelId("tun10"), 4}})
      given->set(id, Brindle::makeNode<RsvpLerSubTunnelStatus>());
   std::string const shown =
         listing(jsonFormat, ShowTunnelVariant::showTunnelSubTunnelSummaryP2p, superTunnelStatus(), given);
   std::vector<std::size_t> const places = {shown.find(R"("3":{)"), shown.find(R"("2":{)"), shown.find(R"("4":{)"),
                                            shown.find(R"("1":{)")};
   EXPECT_TRUE(std::is_sorted(places.begin(), places.end())) << shown;
   EXPECT_NE(places.back(), std::string::npos) << shown;
}

TEST_F(SubTunnels, tableIsSizedBeforeItsHeader) {
   addUp(1);
   addUp(4294967295);
   router.subTunnelStatus(subTunnelId("tun1", 2), [](RsvpLerSubTunnelStatus&) {}); // its state reads "unknown"
   EXPECT_EQ(listing(textFormat, ShowTunnelVariant::showTunnelSubTunnelSummaryP2p),
             "\n"
             "Tunnel: tun1\n"
             "Sub Tunnel Session ID Index Active Path Reserved BW Sampled BW LSPs State\n"
             "---------- ---------- ----- ----------- ----------- ---------- ---- -------\n"
             "         1          -     - unknown           0 bps          -    0 up\n"
             "         2          -     - unknown           0 bps          -    0 unknown\n"
             "4294967295          -     - unknown           0 bps          -    0 up\n");
}

TEST_F(SubTunnels, missingTablesSilenceTheListing) {
   addUp(1);
   auto const expectNothing = [&](Handle<RsvpLerSuperTunnelStatus> const& status,
                                  Handle<RsvpLerSubTunnelStatusColl> const& subTunnels) {
      for (ShowTunnelVariant const variant : p2pVariants) {
         EXPECT_EQ(listing(textFormat, variant, status, subTunnels), "") << variant;
         EXPECT_EQ(listing(jsonFormat, variant, status, subTunnels), "") << variant;
      }
   };
   expectNothing(superTunnelStatus(), nullptr);
   expectNothing(nullptr, coll());
   auto const samples = router.status->bwSamplingStatusColl.get();
   router.status->bwSamplingStatusColl.set(nullptr);
   expectNothing(superTunnelStatus(), coll());
   router.status->bwSamplingStatusColl.set(samples);
   router.status->autoBwStats.set(nullptr);
   expectNothing(superTunnelStatus(), coll());
}

TEST_F(SubTunnels, listingGoesOnWithoutIndexes) {
   addUp(1);
   router.status->subTunnelIndexMap.set(nullptr);
   for (ListingRow const& row : listingRows) {
      EXPECT_EQ(listing(textFormat, row.variant), numbered(row.ofOne, "1")) << row.variant;
      EXPECT_EQ(listing(jsonFormat, row.variant), R"("1":{)" + std::string(row.members) + "}") << row.variant;
   }
}

// The keys come from the collection that is given, the records from the table.
TEST_F(SubTunnels, recordsAreLookedUpInTheTable) {
   auto const given = Brindle::makeNode<RsvpLerSubTunnelStatusColl>();
   auto const record = Brindle::makeNode<RsvpLerSubTunnelStatus>();
   record->state = RsvpLerTunnelState::down;
   record->currentBandwidth = 125000;
   given->set(subTunnelId("tun1", 1), record);
   given->set(subTunnelId("tun1", 2), record);
   addUp(2);
   EXPECT_EQ(listing(textFormat, ShowTunnelVariant::showTunnelP2p, superTunnelStatus(), given),
             "Sub tunnel 1\n   Bandwidth: 0 bps\n   State: unknown\n   LSPs: 0\n"
             "Sub tunnel 2\n   Bandwidth: 0 bps\n   State: up\n   LSPs: 0\n");
   router.status->subTunnelStatusCollTable.set(nullptr);
   EXPECT_EQ(listing(textFormat, ShowTunnelVariant::showTunnelP2p, superTunnelStatus(), given),
             "Sub tunnel 1\n   Bandwidth: 0 bps\n   State: unknown\n   LSPs: 0\n"
             "Sub tunnel 2\n   Bandwidth: 0 bps\n   State: unknown\n   LSPs: 0\n");
}

struct MbbRow {
   bool active;         // the sub-tunnel has this instance
   bool pending;        // likewise
   bool instanceStatus; // the active instance has a status
   bool group;          // its group has a record
   bool activeRequest;  // the group has this request
   bool pendingRequest; // likewise
   bool mbb;
};

TEST_F(SubTunnels, replacementAtEitherLevel) {
   MbbRow const rows[] = {
         {false, false, false, false, false, false, false}, {true, false, false, false, false, false, false},
         {false, true, false, false, false, false, false},  {true, true, false, false, false, false, true},
         {true, true, true, true, true, false, true},       {true, false, true, true, true, true, true},
         {true, false, true, true, true, false, false},     {true, false, true, true, false, true, false},
         {true, false, true, false, true, true, false},     {true, false, false, true, true, true, false},
         {false, true, true, true, true, true, false}, // the pending instance's requests take no part
   };
   for (std::size_t i = 0; i < std::size(rows); ++i) {
      SCOPED_TRACE("row " + std::to_string(i));
      MbbRow const& row = rows[i];
      Router fresh;
      fresh.superTunnelStatus(tun1, [](RsvpLerSuperTunnelStatus& status) { status.split = true; });
      fresh.subTunnelStatus(subTunnelId("tun1", 1), [&](RsvpLerSubTunnelStatus& status) {
         if (row.active)
            status.activeMbbTunnelConfigId = mbbId("tun1", 1, 1);
         if (row.pending)
            status.pendingMbbTunnelConfigId = mbbId("tun1", 2, 1);
      });
      std::uint32_t const epoch = row.active ? 1 : 2;
      if (row.instanceStatus)
         fresh.mbbTunnelStatus(mbbId("tun1", epoch, 1), groupId("tun1", 0, epoch, 1));
      if (row.group)
         fresh.lspGroupStatus(groupId("tun1", 0, epoch, 1), [&](RsvpLerLspGroupStatus& group) {
            if (row.activeRequest)
               group.activeLspRequestConfigId = requestId("tun1", 1, 0, epoch, 1);
            if (row.pendingRequest)
               group.pendingLspRequestConfigId = requestId("tun1", 2, 0, epoch, 1);
         });
      auto const command = fresh.tunnelCommand();
      std::string const answer = rendered(jsonFormat, [&](auto* renderer) {
         command->renderSubTunnel(renderer, tun1, subTunnelId("tun1", 1), nullptr, nullptr, nullptr,
                                  ShowTunnelVariant::showTunnelHistoryP2p);
      });
      bool const groupIsShown = row.active && row.instanceStatus;
      int const lspCount = row.group ? row.activeRequest + row.pendingRequest : 0;
      EXPECT_EQ(answer, R"("1":{"currentBandwidth":0,"state":"unknown","mbb":)" +
                              std::string(row.mbb ? "true" : "false") + R"(,"lspCount":)" + std::to_string(lspCount) +
                              R"(,"activePathType":")" + (groupIsShown ? "primary" : "unknown") + R"("})");
   }
}

TEST_F(SubTunnels, answerOfACommand) {
   router.superTunnelConfig(tun1);
   for (std::uint32_t const number : {10u, 2u})
      addUp(number);
   auto const command = router.tunnelCommand();
   std::string const members(historyAttributes);
   EXPECT_EQ(rendered(jsonFormat,
                      [&](auto* renderer) { command->renderTunnel(renderer, tun1, false, false, false, true, false); }),
             R"("tun1":{"source":"::","destination":"::","metricMode":"static","metric":0,"state":"unknown",)"
             R"("mbb":false,"splitTunnel":false,"currentBandwidth":0,"requestedBandwidth":0,"autoBandwidth":false,)"
             R"("lspCount":0,"activePathType":"split","subTunnels":{"2":{)" +
                   members + R"(},"10":{)" + members + "}}}");
}

using SubTunnelsDeathTest = SubTunnels;

TEST_F(SubTunnelsDeathTest, ownSubTunnelOfATunnel) {
   auto const command = router.tunnelCommand();
   EXPECT_DEATH(rendered(jsonFormat,
                         [&](auto* renderer) {
                            command->renderSubTunnel(renderer, tun1, subTunnelId("tun1", 0), nullptr, nullptr, nullptr,
                                                     ShowTunnelVariant::showTunnelP2p);
                         }),
                "assertion failed: subTunnelConfigId.isSplit\\(\\)");
}

TEST_F(SubTunnelsDeathTest, p2mpVariants) {
   auto const command = router.tunnelCommand();
   for (int variant = 7; variant <= 12; ++variant)
      EXPECT_DEATH(rendered(jsonFormat,
                            [&](auto* renderer) {
                               command->renderSubTunnel(renderer, tun1, subTunnelId("tun1", 1), nullptr, nullptr,
                                                        nullptr, static_cast<ShowTunnelVariant>(variant));
                            }),
                   "assertion failed: Only P2P variants are supported");
}

} // namespace
