#include "RsvpLer/lsp/Leaves.h"

#include "tests/lsp/LspState.h"

#include <gtest/gtest.h>

#include <csignal>
#include <optional>
#include <vector>

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

RsvpDstId leaf(std::string_view text) {
   return {address(text)};
}

std::vector<std::string> orderOf(std::vector<std::string_view> inTree, std::vector<std::string_view> signalled) {
   auto tree = Brindle::makeNode<RsvpLerTree>();
   for (auto const text : inTree)
      tree->paths.insert(leaf(text), path({}));
   auto status = Brindle::makeNode<RsvpLerLspRequestStatus>();
   for (auto const text : signalled)
      status->subLspState.insert(leaf(text), RsvpLspState::up);
   std::vector<std::string> texts;
   for (auto const& each : getOrderedLeaves(tree, status))
      texts.push_back(each.stringValue());
   return texts;
}

TEST(Leaves, AreTheUnionInAddressOrder) {
   using Texts = std::vector<std::string>;
   EXPECT_EQ(orderOf({}, {}), Texts());
   EXPECT_EQ(orderOf({"10.0.0.10", "10.0.0.9"}, {}), (Texts{"10.0.0.9", "10.0.0.10"}));
   EXPECT_EQ(orderOf({}, {"10.0.0.10", "10.0.0.9"}), (Texts{"10.0.0.9", "10.0.0.10"}));
   EXPECT_EQ(orderOf({"10.0.0.9"}, {"10.0.0.9"}), (Texts{"10.0.0.9"}));
   EXPECT_EQ(orderOf({"10.0.0.30", "10.0.0.10"}, {"10.0.0.20", "10.0.0.10", "9.0.0.1"}),
             (Texts{"9.0.0.1", "10.0.0.10", "10.0.0.20", "10.0.0.30"}));
   // The default address comes before IPv4, and IPv4 before IPv6.
   EXPECT_EQ(orderOf({"::1", "255.0.0.1"}, {"1::", "", "2.0.0.1"}),
             (Texts{"::", "2.0.0.1", "255.0.0.1", "::1", "1::"}));
}

// One leaf 10.0.0.9. Without `hops` the tree doesn't know it, without `state` the signalling doesn't.
struct LeafRow {
   char const* name;
   std::optional<std::vector<std::string_view>> hops;
   std::optional<unsigned> state;
   char const* plain;
   char const* detailed;
   char const* json;
};

LeafRow const leafRows[] = {
      {"up",
       {{"10.1.1.2", "10.0.0.9"}},
       1,
       "         10.0.0.9 up\n",
       "         10.0.0.9 up\n            Path: 10.1.1.2        10.0.0.9        \n",
       R"("10.0.0.9":{"state":"up","hops":["10.1.1.2","10.0.0.9"]})"},
      {"down",
       {{"10.0.0.9"}},
       2,
       "         10.0.0.9 down\n",
       "         10.0.0.9 down\n            Path: 10.0.0.9        \n",
       R"("10.0.0.9":{"state":"down","hops":["10.0.0.9"]})"},
      {"unknown reads down",
       {{"10.0.0.9"}},
       0,
       "         10.0.0.9 down\n",
       "         10.0.0.9 down\n            Path: 10.0.0.9        \n",
       R"("10.0.0.9":{"state":"down","hops":["10.0.0.9"]})"},
      {"not signalled",
       {{"10.0.0.9"}},
       {},
       "         10.0.0.9 down\n",
       "         10.0.0.9 down\n            Path: 10.0.0.9        \n",
       R"("10.0.0.9":{"state":"down","hops":["10.0.0.9"]})"},
      {"four hops",
       {{"10.1.1.2", "10.1.2.2", "10.1.3.2", "10.0.0.9"}},
       1,
       "         10.0.0.9 up\n",
       "         10.0.0.9 up\n"
       "            Path: 10.1.1.2        10.1.2.2        10.1.3.2        \n"
       "                  10.0.0.9        \n",
       R"("10.0.0.9":{"state":"up","hops":["10.1.1.2","10.1.2.2","10.1.3.2","10.0.0.9"]})"},
      {"no hops, up",
       {std::vector<std::string_view>()},
       1,
       "         10.0.0.9 up, path not found\n",
       "         10.0.0.9 up\n            Path: Path not found\n",
       R"("10.0.0.9":{"state":"up"})"},
      {"no hops, down",
       {std::vector<std::string_view>()},
       {},
       "         10.0.0.9 down, path not found\n",
       "         10.0.0.9 down\n            Path: Path not found\n",
       R"("10.0.0.9":{"state":"down"})"},
      {"removed, still up",
       {},
       1,
       "         10.0.0.9 up, removing\n",
       "         10.0.0.9 up, removing\n            Path: Path not found\n",
       R"("10.0.0.9":{"state":"up"})"},
      {"removed, down",
       {},
       2,
       "         10.0.0.9 down, removing\n",
       "         10.0.0.9 down, removing\n            Path: Path not found\n",
       R"("10.0.0.9":{"state":"down"})"},
      {"removed, unknown",
       {},
       0,
       "         10.0.0.9 down, removing\n",
       "         10.0.0.9 down, removing\n            Path: Path not found\n",
       R"("10.0.0.9":{"state":"down"})"},
      {"known to nobody",
       {},
       {},
       "         10.0.0.9 down, removing\n",
       "         10.0.0.9 down, removing\n            Path: Path not found\n",
       R"("10.0.0.9":{"state":"down"})"},
};

RsvpPathWithVersion pathOf(std::vector<std::string_view> const& texts) {
   std::vector<Lattice::IpGenAddr> addresses;
   for (auto const text : texts)
      addresses.push_back(address(text));
   RsvpPathWithVersion made(1);
   made.hops = Fathom::Vector<Lattice::IpGenAddr>(addresses);
   return made;
}

Shown shownLeaf(LeafRow const& row, bool detailed, bool text) {
   auto tree = Brindle::makeNode<RsvpLerTree>();
   auto status = Brindle::makeNode<RsvpLerLspRequestStatus>();
   if (row.hops)
      tree->paths.insert(leaf("10.0.0.9"), pathOf(*row.hops));
   if (row.state)
      status->subLspState.insert(leaf("10.0.0.9"), static_cast<RsvpLspState>(*row.state));
   return shown(Router(), [&](auto const& command, auto* renderer) {
      if (detailed)
         command.renderDetailedLeafEntry(renderer, leaf("10.0.0.9"), status, tree, text);
      else
         command.renderLeafEntry(renderer, leaf("10.0.0.9"), status, tree, text);
   });
}

TEST(Leaves, OneLeaf) {
   for (auto const& row : leafRows) {
      SCOPED_TRACE(row.name);
      EXPECT_EQ(shownLeaf(row, false, true), (Shown{row.plain, row.json}));
      EXPECT_EQ(shownLeaf(row, false, false), (Shown{"", row.json}));
      EXPECT_EQ(shownLeaf(row, true, true), (Shown{row.detailed, row.json}));
      EXPECT_EQ(shownLeaf(row, true, false), (Shown{"", row.json}));
   }
}

TEST(LeavesDeathTest, StateOutOfRange) {
   LeafRow const row{"", {}, 3, "", "", ""};
   EXPECT_EXIT(shownLeaf(row, false, true), testing::KilledBySignal(SIGABRT), "This should be unreachable");
   EXPECT_EXIT(shownLeaf(row, true, false), testing::KilledBySignal(SIGABRT), "This should be unreachable");
}

// The list under its heading, for a request "t" and the specification "north".
Shown shownList(Router const& router, bool detailed, bool text) {
   return shown(router, [&](auto const& command, auto* renderer) {
      auto const pathSpecConfig = command.pathSpecConfigColl()->pathSpecConfig(pathSpecId("north"));
      if (detailed)
         command.renderDetailedTreeLeaves(renderer, pathSpecConfig, requestId("t"), text);
      else
         command.renderTreeLeaves(renderer, pathSpecConfig, requestId("t"), text);
   });
}

Router leavesRouter() {
   Router router = twoPathRouter();
   router.lspRequestConfig(requestId("t"), [](auto& record) {
      auto tree = Brindle::makeNode<RsvpLerTree>();
      tree->paths.insert(leaf("10.0.0.10"), path({"10.1.1.2", "10.0.0.10"}));
      tree->paths.insert(leaf("10.0.0.9"), path({}));
      tree->paths.insert(leaf("2001:db8::9"), path({"2001:db8:1:2:3:4:5:6", "2001:db8::9"}));
      record.tree = tree;
   });
   router.lspRequestStatus(requestId("t"), [](auto& record) {
      record.subLspState.insert(leaf("10.0.0.10"), RsvpLspState::up);
      record.subLspState.insert(leaf("10.0.0.11"), RsvpLspState::up);
   });
   return router;
}

TEST(Leaves, OfARequest) {
   std::string const json = R"("specType":"explicit","treeLeaves":{"10.0.0.9":{"state":"down"},)"
                            R"("10.0.0.10":{"state":"up","hops":["10.1.1.2","10.0.0.10"]},"10.0.0.11":{"state":"up"},)"
                            R"("2001:db8::9":{"state":"down","hops":["2001:db8:1:2:3:4:5:6","2001:db8::9"]}})";
   Router const router = leavesRouter();
   EXPECT_EQ(shownList(router, false, true), (Shown{"      Leaves (explicit):\n"
                                                    "         10.0.0.9 down, path not found\n"
                                                    "         10.0.0.10 up\n"
                                                    "         10.0.0.11 up, removing\n"
                                                    "         2001:db8::9 down\n",
                                                    json}));
   EXPECT_EQ(shownList(router, true, true), (Shown{"      Leaves (explicit):\n"
                                                   "         10.0.0.9 down\n"
                                                   "            Path: Path not found\n"
                                                   "         10.0.0.10 up\n"
                                                   "            Path: 10.1.1.2        10.0.0.10       \n"
                                                   "         10.0.0.11 up, removing\n"
                                                   "            Path: Path not found\n"
                                                   "         2001:db8::9 down\n"
                                                   "            Path: 2001:db8:1:2:3:4:5:62001:db8::9     \n",
                                                   json}));
   EXPECT_EQ(shownList(router, false, false), (Shown{"", json}));
   EXPECT_EQ(shownList(router, true, false), (Shown{"", json}));
}

void expectBothForms(Router const& router, Shown const& expected) {
   EXPECT_EQ(shownList(router, false, true), expected);
   EXPECT_EQ(shownList(router, true, true), expected);
}

TEST(Leaves, WithoutRecords) {
   Router none = twoPathRouter();
   Shown const empty{"      Leaves (explicit):\n", R"("specType":"explicit","treeLeaves":{})"};
   expectBothForms(none, empty);
   none.lspRequestConfig(requestId("t"), [](auto&) {});
   expectBothForms(none, empty);
   none.lspRequestStatus(requestId("t"), [](auto&) {});
   expectBothForms(none, empty);
   none.status->pathSpecConfigColl.get()->clear();
   expectBothForms(none, {"      Leaves (unknown):\n", R"("specType":"unknown","treeLeaves":{})"});

   Router noConfig = leavesRouter();
   noConfig.status->lspRequestConfigCollTable.set(nullptr);
   EXPECT_EQ(shownList(noConfig, false, true),
             (Shown{"      Leaves (explicit):\n         10.0.0.10 up, removing\n         10.0.0.11 up, removing\n",
                    R"("specType":"explicit","treeLeaves":{"10.0.0.10":{"state":"up"},"10.0.0.11":{"state":"up"}})"}));

   Router noStatus = leavesRouter();
   noStatus.status->lspRequestStatusCollTable.set(nullptr);
   EXPECT_EQ(shownList(noStatus, false, true),
             (Shown{"      Leaves (explicit):\n"
                    "         10.0.0.9 down, path not found\n"
                    "         10.0.0.10 down\n"
                    "         2001:db8::9 down\n",
                    R"("specType":"explicit","treeLeaves":{"10.0.0.9":{"state":"down"},)"
                    R"("10.0.0.10":{"state":"down","hops":["10.1.1.2","10.0.0.10"]},)"
                    R"("2001:db8::9":{"state":"down","hops":["2001:db8:1:2:3:4:5:6","2001:db8::9"]}})"}));
}

} // namespace
