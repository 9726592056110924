#include "RsvpLer/lsp/LspGroupBlock.h"

#include "tests/lsp/LspState.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

Shown shownPlain(Router const& router) {
   return shown(router, [](auto const& command, auto* renderer) {
      command.renderPaths(renderer, mbbId("t", 1), mbbId("t", 2));
   });
}
Shown shownDetailed(Router const& router, bool text) {
   return shown(router, [&](auto const& command, auto* renderer) {
      command.renderDetailedPaths(renderer, mbbId("t", 1), mbbId("t", 2), text);
   });
}

void addPrimary(Router& router) {
   addLsp(router, requestId("t", 1, 0), 1, {"10.1.1.2", "10.0.0.9"});
   addGroup(router, requestId("t", 1, 0));
}
void addSecondary(Router& router) {
   addLsp(router, requestId("t", 1, 1), 2, {"10.2.1.2"});
   addGroup(router, requestId("t", 1, 1));
}
void setColdStandby(Router& router) {
   router.subTunnelConfig(subTunnelId("t"), [](auto& record) {
      record.primaryPathSpecId = pathSpecId("north");
      record.secondaryPathSpecId = pathSpecId("south");
   });
}

char const* const primaryText = "   Primary path: north\n"
                                "      State: up, in use\n"
                                "      Path (explicit):\n"
                                "         10.1.1.2\n"
                                "         10.0.0.9\n";
char const* const primaryJson = R"("primaryPath":{"specName":"north","state":"up","mbb":false,"inUse":true,)"
                                R"("pathErrors":[],"specType":"explicit","hops":["10.1.1.2","10.0.0.9"]})";

struct PathsRow {
   char const* name;
   std::function<void(Router&)> change; // of a tunnel whose primary path is up
   std::string text;
   std::string json;
   std::string textWhenSilent; // the lines that come even when the block is asked for JSON alone
};

std::string const north = primaryText;
std::string const northJson = primaryJson;

TEST(LspGroupBlock, PathsOfATunnel) {
   PathsRow const rows[] = {
         {"a pre-signalled secondary path without a group", [](Router&) {}, north,
          northJson + R"(,"secondaryPaths":[])", ""},
         {"a secondary path that is up", addSecondary,
          north + "   Secondary path: south\n      State: up\n      Path (dynamic):\n         10.2.1.2\n",
          northJson + R"(,"secondaryPaths":[{"specName":"south","preSignaled":true,"state":"up","mbb":false,)"
                      R"("inUse":false,"pathErrors":[],"specType":"dynamic","hops":["10.2.1.2"]}])",
          ""},
         {"cold standby", setColdStandby, north + "   Secondary path: south\n      State: cold standby\n",
          northJson + R"(,"secondaryPaths":[{"specName":"south","preSignaled":false,"state":"coldStandby",)"
                      R"("mbb":false,"inUse":false,"pathErrors":[],"specType":"dynamic","hops":[]}])",
          ""},
         {"cold standby no more",
          [](Router& router) {
             setColdStandby(router);
             addSecondary(router);
          },
          north + "   Secondary path: south\n      State: up\n      Path (dynamic):\n         10.2.1.2\n",
          northJson + R"(,"secondaryPaths":[{"specName":"south","preSignaled":false,"state":"up","mbb":false,)"
                      R"("inUse":false,"pathErrors":[],"specType":"dynamic","hops":["10.2.1.2"]}])",
          ""},
         {"cold standby keeps the errors of an instance that lost its status",
          [](Router& router) {
             setColdStandby(router);
             addLsp(router, requestId("t", 1, 1, 2), 2, {}, {error(1)});
             addGroup(router, requestId("t", 1, 1, 2));
          },
          north + "   Secondary path: south\n"
                  "      State: cold standby\n"
                  "      Errors:\n"
                  "         Unknown error (100/1) from 10.0.0.1\n",
          northJson + R"(,"secondaryPaths":[{"specName":"south","preSignaled":false,"state":"coldStandby",)"
                      R"("mbb":false,"inUse":false,"pathErrors":[{"code":100,"value":1,"node":"10.0.0.1"}],)"
                      R"("specType":"dynamic","hops":[]}])",
          ""},
         {"no primary group", [](Router& router) { router.status->lspGroupStatusCollTable.get()->clear(); }, "",
          R"("secondaryPaths":[])", ""},
         {"the group of the pending instance",
          [](Router& router) {
             router.status->lspGroupStatusCollTable.get()->clear();
             router.mbbTunnelStatus(mbbId("t", 2), groupId("t", 0, 2));
             addLsp(router, requestId("t", 1, 0, 2), 3, {"10.3.1.2"});
             addGroup(router, requestId("t", 1, 0, 2));
          },
          "   Primary path: north\n      State: up\n      Path (explicit):\n         10.3.1.2\n",
          R"("primaryPath":{"specName":"north","state":"up","mbb":false,"inUse":false,"pathErrors":[],)"
          R"("specType":"explicit","hops":["10.3.1.2"]},"secondaryPaths":[])",
          ""},
         {"the active instance's group wins",
          [](Router& router) {
             router.mbbTunnelStatus(mbbId("t", 2), groupId("t", 0, 2));
             addLsp(router, requestId("t", 1, 0, 2), 3, {"10.3.1.2"});
             addGroup(router, requestId("t", 1, 0, 2));
          },
          "   Primary path: north\n"
          "      State: up, in use, re-establishing\n"
          "      Path (explicit):\n"
          "         10.1.1.2\n"
          "         10.0.0.9\n",
          R"("primaryPath":{"specName":"north","state":"up","mbb":true,"inUse":true,"pathErrors":[],)"
          R"("specType":"explicit","hops":["10.1.1.2","10.0.0.9"]},"secondaryPaths":[])",
          ""},
         {"no primary path configured",
          [](Router& router) { router.status->pathSpecConfigColl.get()->erase(pathSpecId("north")); },
          "   Primary path: north (not configured)\n", R"("secondaryPaths":[])",
          "   Primary path: north (not configured)\n"},
         {"no path table", [](Router& router) { router.status->pathSpecConfigColl.set(nullptr); },
          "   Primary path: north (not configured)\n   Secondary path: south (not configured)\n",
          R"("secondaryPaths":[])",
          "   Primary path: north (not configured)\n   Secondary path: south (not configured)\n"},
         {"no path configured, none asked for",
          [](Router& router) {
             router.status->pathSpecConfigColl.get()->clear();
             router.tunnelSpec(tunnelId("t"), [](auto&) {});
          },
          "   Primary path: not specified\n", R"("secondaryPaths":[])", "   Primary path: not specified\n"},
         {"no path configured, no request known",
          [](Router& router) {
             router.status->pathSpecConfigColl.get()->clear();
             router.status->tunnelSpecColl.get()->clear();
          },
          "   Primary path: not specified\n", R"("secondaryPaths":[])", "   Primary path: not specified\n"},
         {"no path configured, no table of requests",
          [](Router& router) {
             router.status->pathSpecConfigColl.get()->clear();
             router.status->tunnelSpecColl.set(nullptr);
          },
          "   Primary path: not specified\n", R"("secondaryPaths":[])", "   Primary path: not specified\n"},
         {"no path configured, paths asked for by their source alone",
          [](Router& router) {
             router.status->pathSpecConfigColl.get()->clear();
             router.tunnelSpec(tunnelId("t"), [](auto& record) {
                record.primaryPathSpecId = pathSpecId("");
                record.secondaryPathSpecId = pathSpecId("");
             });
          },
          "   Primary path:  (not configured)\n   Secondary path:  (not configured)\n", R"("secondaryPaths":[])",
          "   Primary path:  (not configured)\n   Secondary path:  (not configured)\n"},
         {"no path configured, paths asked for by their name alone",
          [](Router& router) {
             router.status->pathSpecConfigColl.get()->clear();
             router.tunnelSpec(tunnelId("t"), [](auto& record) {
                record.primaryPathSpecId.name = Fathom::String("east");
                record.secondaryPathSpecId.name = Fathom::String("west");
             });
          },
          "   Primary path: east (not configured)\n   Secondary path: west (not configured)\n",
          R"("secondaryPaths":[])",
          "   Primary path: east (not configured)\n   Secondary path: west (not configured)\n"},
         {"the names of the lines are those asked for",
          [](Router& router) {
             router.status->pathSpecConfigColl.get()->clear();
             router.tunnelSpec(tunnelId("t"), [](auto& record) {
                record.primaryPathSpecId = pathSpecId("east");
                record.secondaryPathSpecId = pathSpecId("west");
             });
          },
          "   Primary path: east (not configured)\n   Secondary path: west (not configured)\n",
          R"("secondaryPaths":[])",
          "   Primary path: east (not configured)\n   Secondary path: west (not configured)\n"},
         {"no sub-tunnel table", [](Router& router) { router.status->subTunnelConfigCollTable.set(nullptr); }, "",
          R"("secondaryPaths":[])", ""},
         {"no sub-tunnel collection", [](Router& router) { router.status->subTunnelConfigCollTable.get()->clear(); },
          "", R"("secondaryPaths":[])", ""},
         {"no sub-tunnel",
          [](Router& router) {
             router.status->subTunnelConfigCollTable.get()->find(tunnelId("t"))->erase(subTunnelId("t"));
          },
          "", R"("secondaryPaths":[])", ""},
         {"no status of the active instance",
          [](Router& router) {
             router.status->mbbTunnelStatusCollTable.get()->clear();
             router.mbbTunnelStatus(mbbId("t", 2), groupId("t", 0, 2));
             addGroup(router, requestId("t", 1, 0, 2));
          },
          "", R"("secondaryPaths":[])", ""},
   };
   for (auto const& row : rows) {
      SCOPED_TRACE(row.name);
      Router router = twoPathRouter();
      addPrimary(router);
      row.change(router);
      EXPECT_EQ(shownPlain(router), (Shown{row.text, row.json}));
      EXPECT_EQ(shownDetailed(router, true), (Shown{row.text, row.json}));
      EXPECT_EQ(shownDetailed(router, false), (Shown{row.textWhenSilent, row.json}));
   }
}

Router fullRouter() {
   Router router = twoPathRouter();
   router.cliConfig->mtuSignalingEnabled = true;
   addLsp(router, requestId("t", 1), 1, {"10.1.1.2", "10.0.0.9"}, {error(1)});
   addLsp(router, requestId("t", 2), 2, {"10.3.1.2"});
   router.lspGroupStatus(groupId("t"), [](auto& record) {
      record.lspGroupState = RsvpLerLspGroupState::up;
      record.activeLspRequestConfigId = requestId("t", 1);
      record.pendingLspRequestConfigId = requestId("t", 2);
      record.pathMtu = 1500;
      record.nextHop.insert(address("10.1.1.2"), RsvpNextHopInfo{Lattice::IntfId("eth1"), 9000});
   });
   router.cspfPathKey(groupId("t"), [](auto& record) {
      record.kind = 1;
      record.pathId = 5;
   });
   return router;
}

char const* const fullJson =
      R"("primaryPath":{"specName":"north","state":"up","mbb":true,"inUse":true,"pathMtu":1500,"intfMtu":9000,)"
      R"("cspfPathKeyId":5,"pathErrors":[{"code":100,"value":1,"node":"10.0.0.1"}],"specType":"explicit",)"
      R"("hops":["10.1.1.2","10.0.0.9"]},"secondaryPaths":[])";

TEST(LspGroupBlock, ThePlainBlockHasNoMtusAndNoCspfId) {
   EXPECT_EQ(shownPlain(fullRouter()), (Shown{"   Primary path: north\n"
                                              "      State: up, in use, re-establishing\n"
                                              "      Errors:\n"
                                              "         Unknown error (100/1) from 10.0.0.1\n"
                                              "      Path (explicit):\n"
                                              "         10.1.1.2\n"
                                              "         10.0.0.9\n",
                                              fullJson}));
}

TEST(LspGroupBlock, TheDetailedBlockHasAll) {
   EXPECT_EQ(shownDetailed(fullRouter(), true), (Shown{"   Primary path: north\n"
                                                       "      State: up, in use, re-establishing\n"
                                                       "      Path MTU: 1500 bytes (not matching interface MTU)\n"
                                                       "      Interface MTU: 9000 bytes\n"
                                                       "      CSPF Path ID: 5\n"
                                                       "      Errors:\n"
                                                       "         Unknown error (100/1) from 10.0.0.1\n"
                                                       "      Path (explicit):\n"
                                                       "         10.1.1.2\n"
                                                       "         10.0.0.9\n",
                                                       fullJson}));
   EXPECT_EQ(shownDetailed(fullRouter(), false), (Shown{"", fullJson}));
}

TEST(LspGroupBlock, AGroupOfATreesKindHasNoPathId) {
   Router router = twoPathRouter();
   addPrimary(router);
   router.cspfPathKey(groupId("t"), [](auto& record) { record.kind = 2; });
   EXPECT_EQ(shownDetailed(router, true), (Shown{north, northJson + R"(,"secondaryPaths":[])"}));
}

// A cold standby path has no group, and the default key must not lead it to an id.
TEST(LspGroupBlock, ColdStandbyHasNoCspfId) {
   Router router = twoPathRouter();
   setColdStandby(router);
   router.cspfPathKey(groupId("t", 1), [](auto& record) { record.kind = 1; });
   EXPECT_EQ(shownDetailed(router, true),
             (Shown{"   Secondary path: south\n      State: cold standby\n",
                    R"("secondaryPaths":[{"specName":"south","preSignaled":false,"state":"coldStandby",)"
                    R"("mbb":false,"inUse":false,"pathErrors":[],"specType":"dynamic","hops":[]}])"}));
}

// Every group but 0 is a secondary one.
TEST(LspGroupBlock, OnePath) {
   Router router = twoPathRouter();
   addLsp(router, requestId("t", 1, 9), 2, {"10.2.1.2"});
   addGroup(router, requestId("t", 1, 9));
   std::string const text = "   Secondary path: south\n      State: up\n      Path (dynamic):\n         10.2.1.2\n";
   std::string const json = R"({"specName":"south","preSignaled":true,"state":"up","mbb":false,"inUse":false,)"
                            R"("pathErrors":[],"specType":"dynamic","hops":["10.2.1.2"]})";
   EXPECT_EQ(shown(router, [](auto const& command,
                              auto* renderer) { command.renderLspGroup(renderer, mbbId("t", 1), mbbId("t", 2), 9); }),
             (Shown{text, json}));
   for (bool flag : {true, false}) {
      EXPECT_EQ(shown(router,
                      [&](auto const& command, auto* renderer) {
                         command.renderDetailedLspGroup(renderer, mbbId("t", 1), mbbId("t", 2), 9, flag);
                      }),
                (Shown{flag ? text : "", json}));
   }
}

TEST(LspGroupBlock, FreeParts) {
   for (bool primary : {true, false}) {
      auto const body = [&](auto* renderer) {
         startLspGroupPathJson(renderer, primary);
         endLspGroupPathJson(renderer, primary);
      };
      EXPECT_EQ(rendered(jsonFormat, body), primary ? R"("primaryPath":{})" : "{}");
      EXPECT_EQ(rendered(textFormat, body), "");
      for (bool text : {true, false}) {
         auto const spec = [&](auto* renderer) { renderLspGroupPathSpec(renderer, pathSpecId("a\"b"), primary, text); };
         EXPECT_EQ(rendered(textFormat, spec), !text     ? ""
                                               : primary ? "   Primary path: a\"b\n"
                                                         : "   Secondary path: a\"b\n");
         EXPECT_EQ(rendered(jsonFormat, spec), R"("specName":"a\"b")");
      }
   }
}

} // namespace
