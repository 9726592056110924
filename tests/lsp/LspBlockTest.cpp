#include "tests/lsp/LspState.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

Shown shownLsps(Router const& router) {
   return shown(router, [](auto const& command, auto* renderer) {
      command.renderLsps(renderer, mbbId("t", 1), mbbId("t", 2));
   });
}

// One request on the primary path, which is up and in use.
Router oneLspRouter() {
   Router router = twoPathRouter();
   addLsp(router, requestId("t", 1), 7, {"10.1.1.2", "10.0.0.9"});
   addGroup(router, requestId("t", 1));
   return router;
}

// The block of an LSP of addLsp, with one hop.
std::string blockText(char const* heading, char const* path, char const* stateLine, char const* type, char const* hop) {
   return std::string("   ") + heading + ":\n      Path specification: " + path +
          "\n      Bandwidth: 1.00 Mbps\n      State: " + stateLine + "\n      Path (" + type + "):\n         " + hop +
          "\n";
}
std::string blockJson(char const* lspId, char const* path, char const* state, char const* type, char const* hop) {
   return std::string(R"({"lspId":)") + lspId + "," + path + R"(,"bandwidth":1000000,)" + state +
          R"(,"lspErrors":[],"pathSpecType":")" + type + R"(","hops":[")" + hop + R"("]})";
}
char const* const northText = "north, primary";
char const* const northJson = R"("pathSpecName":"north","pathType":"primary")";
char const* const southText = "south, secondary";
char const* const southJson = R"("pathSpecName":"south","pathType":"secondary")";
char const* const upInUse = R"("state":"up","inUse":true)";
char const* const up = R"("state":"up","inUse":false)";

TEST(LspBlock, OneLspWithAll) {
   Router router = oneLspRouter();
   addLsp(router, requestId("t", 1), 7, {"10.1.1.2", "10.0.0.9"}, {error(2), error(1)});
   router.cspfPathKey(groupId("t"), [](auto& record) {
      record.kind = 1;
      record.pathId = 5;
   });
   EXPECT_EQ(
         shownLsps(router),
         (Shown{"   LSP 7:\n"
                "      Path specification: north, primary\n"
                "      CSPF Path ID: 5\n"
                "      Bandwidth: 1.00 Mbps\n"
                "      State: up, in use\n"
                "      Errors:\n"
                "         Unknown error (100/1) from 10.0.0.1\n"
                "         Unknown error (100/2) from 10.0.0.1\n"
                "      Path (explicit):\n"
                "         10.1.1.2\n"
                "         10.0.0.9\n",
                R"("lsps":[{"lspId":7,"pathSpecName":"north","pathType":"primary","cspfPathKeyId":5,)"
                R"("bandwidth":1000000,"state":"up","inUse":true,)"
                R"("lspErrors":[{"code":100,"value":1,"node":"10.0.0.1"},{"code":100,"value":2,"node":"10.0.0.1"}],)"
                R"("pathSpecType":"explicit","hops":["10.1.1.2","10.0.0.9"]}])"}));
}

struct StateRow {
   char const* name;
   unsigned state;
   char const* text;
   char const* json;
};

TEST(LspBlock, States) {
   StateRow const rows[] = {
         {"unknown", 0, "unknown", R"("state":"unknown","inUse":false)"},
         {"establishing", 1, "establishing", R"("state":"establishing","inUse":false)"},
         {"unverified", 2, "establishing (waiting for self-ping)", R"("state":"unverified","inUse":false)"},
         {"up", 3, "up, in use", upInUse},
         {"up and verified", 4, "up, in use", upInUse},
         {"down", 5, "down", R"("state":"down","inUse":false)"},
   };
   for (auto const& row : rows) {
      SCOPED_TRACE(row.name);
      Router router = oneLspRouter();
      addLsp(router, requestId("t", 1), 7, {"10.1.1.2"});
      router.lspRequestStatus(requestId("t", 1), [&](auto& record) {
         record.lspId = 7;
         record.lspState = static_cast<RsvpLerLspState>(row.state);
      });
      EXPECT_EQ(shownLsps(router),
                (Shown{blockText("LSP 7", northText, row.text, "explicit", "10.1.1.2"),
                       R"("lsps":[)" + blockJson("7", northJson, row.json, "explicit", "10.1.1.2") + "]"}));
   }
}

struct ChangeRow {
   char const* name;
   std::function<void(Router&)> change;
   Shown expected;
};

// What takes an LSP out of the view altogether.
TEST(LspBlock, MissingRecordsThatSilenceIt) {
   struct Row {
      char const* name;
      std::function<void(RsvpLerStatehubStatus&)> change;
   };
   Row const rows[] = {
         {"no instance table", [](auto& status) { status.mbbTunnelStatusCollTable.set(nullptr); }},
         {"no instance collection", [](auto& status) { status.mbbTunnelStatusCollTable.get()->clear(); }},
         {"no instance status",
          [](auto& status) { status.mbbTunnelStatusCollTable.get()->find(subTunnelId("t"))->clear(); }},
         {"no group table", [](auto& status) { status.lspGroupStatusCollTable.set(nullptr); }},
         {"no group collection", [](auto& status) { status.lspGroupStatusCollTable.get()->clear(); }},
         {"no group", [](auto& status) { status.lspGroupStatusCollTable.get()->find(mbbId("t"))->clear(); }},
         {"no sub-tunnel table", [](auto& status) { status.subTunnelConfigCollTable.set(nullptr); }},
         {"no sub-tunnel collection", [](auto& status) { status.subTunnelConfigCollTable.get()->clear(); }},
         {"no sub-tunnel", [](auto& status) { status.subTunnelConfigCollTable.get()->find(tunnelId("t"))->clear(); }},
         {"no request table", [](auto& status) { status.lspRequestConfigCollTable.set(nullptr); }},
         {"no request collection", [](auto& status) { status.lspRequestConfigCollTable.get()->clear(); }},
         {"no request", [](auto& status) { status.lspRequestConfigCollTable.get()->find(groupId("t"))->clear(); }},
         {"no request status table", [](auto& status) { status.lspRequestStatusCollTable.set(nullptr); }},
         {"no request status collection", [](auto& status) { status.lspRequestStatusCollTable.get()->clear(); }},
   };
   for (auto const& row : rows) {
      SCOPED_TRACE(row.name);
      Router router = oneLspRouter();
      row.change(*router.status);
      EXPECT_EQ(shownLsps(router), (Shown{"", R"("lsps":[])"}));
   }
   Router router = oneLspRouter();
   router.status = nullptr;
   EXPECT_EQ(shownLsps(router), (Shown{"", R"("lsps":[])"}));
}

TEST(LspBlock, AGroupThatHasGoneSilencesItsRequests) {
   Router router = oneLspRouter();
   router.status->lspGroupStatusCollTable.get()->find(mbbId("t"))->erase(groupId("t"));
   addGroup(router, requestId("t", 1, 1));
   EXPECT_EQ(shown(router,
                   [](auto const& command, auto* renderer) {
                      command.renderLsp(renderer, requestId("t", 1), true);
                      command.renderLsp(renderer, RsvpLerLspRequestConfigId(), true);
                   }),
             Shown());
}

TEST(LspBlock, MissingRecordsThatLeaveDefaults) {
   ChangeRow const rows[] = {
         {"no status",
          [](Router& router) { router.status->lspRequestStatusCollTable.get()->find(groupId("t"))->clear(); },
          {blockText("LSP ?", northText, "unknown", "explicit", "10.1.1.2"),
           blockJson("0", northJson, R"("state":"unknown","inUse":false)", "explicit", "10.1.1.2")}},
         {"no id yet",
          [](Router& router) {
             router.lspRequestStatus(requestId("t", 1), [](auto& r) { r.lspState = RsvpLerLspState::up; });
          },
          {blockText("LSP ?", northText, "up, in use", "explicit", "10.1.1.2"),
           blockJson("0", northJson, upInUse, "explicit", "10.1.1.2")}},
         {"id 0",
          [](Router& router) { addLsp(router, requestId("t", 1), 0, {"10.1.1.2"}); },
          {blockText("LSP 0", northText, "up, in use", "explicit", "10.1.1.2"),
           blockJson("0", northJson, upInUse, "explicit", "10.1.1.2")}},
         {"no path table",
          [](Router& router) { router.status->pathSpecConfigColl.set(nullptr); },
          {blockText("LSP 7", northText, "up, in use", "unknown", "10.1.1.2"),
           blockJson("7", northJson, upInUse, "unknown", "10.1.1.2")}},
         {"no path specification",
          [](Router& router) { router.status->pathSpecConfigColl.get()->erase(pathSpecId("north")); },
          {blockText("LSP 7", northText, "up, in use", "unknown", "10.1.1.2"),
           blockJson("7", northJson, upInUse, "unknown", "10.1.1.2")}},
         {"no path named",
          [](Router& router) { router.subTunnelConfig(subTunnelId("t"), [](auto&) {}); },
          {blockText("LSP 7", ", primary", "up, in use", "unknown", "10.1.1.2"),
           blockJson("7", R"("pathSpecName":"","pathType":"primary")", upInUse, "unknown", "10.1.1.2")}},
         {"no tree",
          [](Router& router) { router.lspRequestConfig(requestId("t", 1), [](auto&) {}); },
          {"   LSP 7:\n      Path specification: north, primary\n      Bandwidth: 0 bps\n      State: up, in use\n"
           "      Path (explicit):\n",
           R"({"lspId":7,"pathSpecName":"north","pathType":"primary","bandwidth":0,"state":"up","inUse":true,)"
           R"("lspErrors":[],"pathSpecType":"explicit","hops":[]})"}},
         {"bandwidth beyond 64 bits",
          [](Router& router) {
             router.lspRequestConfig(requestId("t", 1), [](auto& record) {
                record.bandwidth = 0x2000000000000001;
                record.tree = p2pTree({"2001:db8::1"});
             });
          },
          {"   LSP 7:\n      Path specification: north, primary\n      Bandwidth: 8 bps\n      State: up, in use\n"
           "      Path (explicit):\n         2001:db8::1\n",
           R"({"lspId":7,"pathSpecName":"north","pathType":"primary","bandwidth":8,"state":"up","inUse":true,)"
           R"("lspErrors":[],"pathSpecType":"explicit","hops":["2001:db8::1"]})"}},
   };
   for (auto const& row : rows) {
      SCOPED_TRACE(row.name);
      Router router = oneLspRouter();
      addLsp(router, requestId("t", 1), 7, {"10.1.1.2"});
      row.change(router);
      EXPECT_EQ(shownLsps(router), (Shown{row.expected.text, R"("lsps":[)" + row.expected.json + "]"}));
   }
}

TEST(LspBlock, TheActiveRequestComesBeforeThePendingOne) {
   Router router = twoPathRouter();
   addLsp(router, requestId("t", 5), 9, {"10.1.1.2"});
   addLsp(router, requestId("t", 2), 3, {"10.2.1.2"});
   addGroup(router, requestId("t", 5), requestId("t", 2));
   EXPECT_EQ(shownLsps(router), (Shown{blockText("LSP 9", northText, "up, in use", "explicit", "10.1.1.2") +
                                             blockText("LSP 3", northText, "up", "explicit", "10.2.1.2"),
                                       R"("lsps":[)" + blockJson("9", northJson, upInUse, "explicit", "10.1.1.2") +
                                             "," + blockJson("3", northJson, up, "explicit", "10.2.1.2") + "]"}));
}

// Both instances with both paths: by instance, group and request. In the pending instance nothing is in use.
TEST(LspBlock, TheActiveInstanceComesBeforeThePendingOne) {
   Router router = twoPathRouter();
   router.mbbTunnelStatus(mbbId("t", 2), groupId("t", 0, 2));
   std::uint16_t lspId = 1;
   for (std::uint32_t epoch : {1u, 2u}) {
      for (std::uint8_t const group : {std::uint8_t{0}, std::uint8_t{1}}) {
         addLsp(router, requestId("t", 1, group, epoch), lspId++, {"10.1.1.2"});
         addGroup(router, requestId("t", 1, group, epoch));
      }
   }
   EXPECT_EQ(shownLsps(router), (Shown{blockText("LSP 1", northText, "up, in use", "explicit", "10.1.1.2") +
                                             blockText("LSP 2", southText, "up", "dynamic", "10.1.1.2") +
                                             blockText("LSP 3", northText, "up", "explicit", "10.1.1.2") +
                                             blockText("LSP 4", southText, "up", "dynamic", "10.1.1.2"),
                                       R"("lsps":[)" + blockJson("1", northJson, upInUse, "explicit", "10.1.1.2") +
                                             "," + blockJson("2", southJson, up, "dynamic", "10.1.1.2") + "," +
                                             blockJson("3", northJson, up, "explicit", "10.1.1.2") + "," +
                                             blockJson("4", southJson, up, "dynamic", "10.1.1.2") + "]"}));
}

TEST(LspBlock, ASecondaryPathInUse) {
   Router router = twoPathRouter();
   router.mbbTunnelStatus(mbbId("t", 1), groupId("t", 1, 1));
   for (std::uint8_t const group : {std::uint8_t{1}, std::uint8_t{0}}) {
      addLsp(router, requestId("t", 1, group), static_cast<std::uint16_t>(group + 1), {"10.1.1.2"});
      addGroup(router, requestId("t", 1, group));
   }
   EXPECT_EQ(shownLsps(router), (Shown{blockText("LSP 1", northText, "up", "explicit", "10.1.1.2") +
                                             blockText("LSP 2", southText, "up, in use", "dynamic", "10.1.1.2"),
                                       R"("lsps":[)" + blockJson("1", northJson, up, "explicit", "10.1.1.2") + "," +
                                             blockJson("2", southJson, upInUse, "dynamic", "10.1.1.2") + "]"}));
}

TEST(LspBlock, EveryGroupBut0IsOnTheSecondaryPath) {
   Router router = twoPathRouter();
   for (std::uint8_t const group : {std::uint8_t{2}, std::uint8_t{255}}) {
      addLsp(router, requestId("t", 1, group), group, {"10.1.1.2"});
      addGroup(router, requestId("t", 1, group));
   }
   EXPECT_EQ(shownLsps(router), (Shown{blockText("LSP 2", southText, "up", "dynamic", "10.1.1.2") +
                                             blockText("LSP 255", southText, "up", "dynamic", "10.1.1.2"),
                                       R"("lsps":[)" + blockJson("2", southJson, up, "dynamic", "10.1.1.2") + "," +
                                             blockJson("255", southJson, up, "dynamic", "10.1.1.2") + "]"}));
}

// The request that a group lacks is looked up like any other. A block stands for it where the records are, strange as
// they may be.
TEST(LspBlock, OfTheDefaultRequest) {
   Router router = oneLspRouter();
   addLsp(router, requestId("t", 1), 7, {"10.1.1.2"});
   router.subTunnelConfig({}, [](auto& record) { record.primaryPathSpecId = pathSpecId("north"); });
   addGroup(router, {});
   addLsp(router, {}, 8, {"10.2.1.2"});
   EXPECT_EQ(shownLsps(router), (Shown{blockText("LSP 7", northText, "up, in use", "explicit", "10.1.1.2") +
                                             blockText("LSP 8", northText, "up", "explicit", "10.2.1.2"),
                                       R"("lsps":[)" + blockJson("7", northJson, upInUse, "explicit", "10.1.1.2") +
                                             "," + blockJson("8", northJson, up, "explicit", "10.2.1.2") + "]"}));
}

struct P2mpRow {
   char const* name;
   std::uint8_t sessionType;
   std::uint8_t group;
   char const* pathName;
   char const* pathType;
};

// A P2MP block has no path type, and leaves in the place of hops.
TEST(LspBlock, OfAP2mpTunnel) {
   P2mpRow const rows[] = {
         {"P2MP", 1, 0, "north", "explicit"},
         {"every type but 0 is P2MP", 200, 0, "north", "explicit"},
         {"another group takes the secondary path, and doesn't say so", 1, 1, "south", "dynamic"},
         {"whatever its number", 1, 9, "south", "dynamic"},
   };
   for (auto const& row : rows) {
      SCOPED_TRACE(row.name);
      Router router = twoPathRouter();
      router.mbbTunnelStatus(mbbId("t", 1), groupId("t", row.group));
      auto const id = requestId("t", 1, row.group);
      addLsp(router, id, 7, {"10.1.1.2", "10.0.0.9"}, {error(1)});
      router.lspRequestConfig(id, [&](auto& record) {
         record.sessionType = static_cast<RsvpSessionType>(row.sessionType);
         record.bandwidth = 125000;
         record.tree = p2pTree({"10.1.1.2", "10.0.0.9"});
      });
      addGroup(router, id);
      router.cspfPathKey(id.lspGroupId, [](auto& record) {
         record.kind = 2;
         record.treeId = 6;
      });
      std::string const name = row.pathName;
      std::string const type = row.pathType;
      EXPECT_EQ(
            shown(router, [](auto const& command,
                             auto* renderer) { command.renderP2mpLsps(renderer, mbbId("t", 1), mbbId("t", 2)); }),
            (Shown{"   LSP 7:\n      Path specification: " + name +
                         "\n      CSPF Tree ID: 6\n"
                         "      Bandwidth: 1.00 Mbps\n"
                         "      State: up, in use\n"
                         "      Errors:\n"
                         "         Unknown error (100/1) from 10.0.0.1\n"
                         "      Leaves (" +
                         type +
                         "):\n"
                         "         10.0.0.9 down\n"
                         "            Path: 10.1.1.2        10.0.0.9        \n",
                   R"("p2mpLsps":[{"lspId":7,"pathSpecName":")" + name +
                         R"(","cspfTreeId":6,"bandwidth":1000000,"state":"up","inUse":true,)"
                         R"("lspErrors":[{"code":100,"value":1,"node":"10.0.0.1"}],"specType":")" +
                         type + R"(","treeLeaves":{"10.0.0.9":{"state":"down","hops":["10.1.1.2","10.0.0.9"]}}}])"}));
   }
}

TEST(LspBlock, TheListIsOpenedWithoutLsps) {
   EXPECT_EQ(shown(Router(),
                   [](auto const& command, auto* renderer) {
                      command.renderP2mpLsps(renderer, RsvpLerMbbTunnelConfigId(), RsvpLerMbbTunnelConfigId());
                   }),
             (Shown{"", R"("p2mpLsps":[])"}));
   EXPECT_EQ(shownLsps(Router()), (Shown{"", R"("lsps":[])"}));
}

TEST(LspBlockDeathTest, StateOutOfRange) {
   Router router = oneLspRouter();
   router.lspRequestStatus(requestId("t", 1), [](auto& r) { r.lspState = static_cast<RsvpLerLspState>(6); });
   EXPECT_EXIT(shownLsps(router), testing::KilledBySignal(SIGABRT), "This should be unreachable");
}

} // namespace
