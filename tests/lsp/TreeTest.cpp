#include "RsvpLer/lsp/Tree.h"

#include "tests/lsp/LspState.h"

#include <gtest/gtest.h>

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

// The tree of the specification, with the instances 1 and 2 as they stand in the state.
Shown shownTree(Router const& router, bool detailed, bool text, RsvpLerPathSpecId const& spec = pathSpecId("south")) {
   return shown(router, [&](auto const& command, auto* renderer) {
      auto const active = command.getMbbTunnelStatus(mbbId("t", 1));
      auto const pending = command.getMbbTunnelStatus(mbbId("t", 2));
      if (detailed)
         command.renderDetailedP2mpLspGroup(renderer, spec, active, pending, text);
      else
         command.renderP2mpLspGroup(renderer, spec, active, pending, text);
   });
}

void expectEverywhere(Router const& router, Shown const& expected,
                      RsvpLerPathSpecId const& spec = pathSpecId("south")) {
   for (bool detailed : {false, true}) {
      SCOPED_TRACE(detailed);
      EXPECT_EQ(shownTree(router, detailed, true, spec), expected);
      EXPECT_EQ(shownTree(router, detailed, false, spec), (Shown{"", expected.json}));
   }
}

Router treeRouter() {
   Router router = twoPathRouter();
   router.cliConfig->mtuSignalingEnabled = true;
   addLsp(router, requestId("t", 1), 7, {"10.1.1.2", "10.0.0.9"}, {error(1)});
   router.lspGroupStatus(groupId("t"), [](auto& record) {
      record.isP2mp = true;
      record.lspGroupState = RsvpLerLspGroupState::up;
      record.activeLspRequestConfigId = requestId("t", 1);
      record.pathMtu = 1500;
      record.nextHop.insert(address("10.1.1.2"), RsvpNextHopInfo{Lattice::IntfId("eth1"), 9000});
   });
   router.cspfPathKey(groupId("t"), [](auto& record) {
      record.kind = 2;
      record.treeId = 6;
   });
   return router;
}

TEST(Tree, WithAll) {
   Router const router = treeRouter();
   std::string const json =
         R"("primaryTree":{"specName":"south","state":"up","mbb":false,"inUse":true,"pathMtu":1500,)"
         R"("intfMtus":{"eth1":9000},"cspfTreeId":6,"treeErrors":[{"code":100,"value":1,"node":"10.0.0.1"}],)"
         R"("specType":"dynamic","treeLeaves":{"10.0.0.9":{"state":"down","hops":["10.1.1.2","10.0.0.9"]}}})";
   // The plain block has the tree id, but neither MTUs nor hops.
   EXPECT_EQ(shownTree(router, false, true), (Shown{"   Active tree: south\n"
                                                    "      State: up, in use\n"
                                                    "      CSPF Tree ID: 6\n"
                                                    "      Errors:\n"
                                                    "         Unknown error (100/1) from 10.0.0.1\n"
                                                    "      Leaves (dynamic):\n"
                                                    "         10.0.0.9 down\n",
                                                    json}));
   EXPECT_EQ(shownTree(router, true, true), (Shown{"   Active tree: south\n"
                                                   "      State: up, in use\n"
                                                   "      Path MTU: 1500 bytes\n"
                                                   "      Interface MTU:\n"
                                                   "         eth1: 9000 bytes (not matching path MTU)\n"
                                                   "      CSPF Tree ID: 6\n"
                                                   "      Errors:\n"
                                                   "         Unknown error (100/1) from 10.0.0.1\n"
                                                   "      Leaves (dynamic):\n"
                                                   "         10.0.0.9 down\n"
                                                   "            Path: 10.1.1.2        10.0.0.9        \n",
                                                   json}));
   EXPECT_EQ(shownTree(router, false, false), (Shown{"", json}));
   EXPECT_EQ(shownTree(router, true, false), (Shown{"", json}));
}

TEST(Tree, WithoutAGroup) {
   expectEverywhere(twoPathRouter(),
                    {"   Active tree: south\n      State: unknown\n      Leaves (dynamic):\n",
                     R"("primaryTree":{"specName":"south","state":"unknown","mbb":false,"inUse":false,)"
                     R"("treeErrors":[],"specType":"dynamic","treeLeaves":{}})"});
}

// The group of the pending instance stands in when the active one has none.
TEST(Tree, OfThePendingInstance) {
   Router router = twoPathRouter();
   router.mbbTunnelStatus(mbbId("t", 2), groupId("t", 0, 2));
   router.lspRequestConfig(requestId("t", 1, 0, 2), [](auto& record) {
      auto tree = Brindle::makeNode<RsvpLerTree>();
      tree->paths.insert(RsvpDstId{address("10.0.0.9")}, path({}));
      record.tree = tree;
   });
   addGroup(router, requestId("t", 1, 0, 2));
   EXPECT_EQ(shownTree(router, false, true),
             (Shown{"   Active tree: south\n"
                    "      State: up\n"
                    "      Leaves (dynamic):\n"
                    "         10.0.0.9 down, path not found\n",
                    R"("primaryTree":{"specName":"south","state":"up","mbb":false,"inUse":false,)"
                    R"("treeErrors":[],"specType":"dynamic","treeLeaves":{"10.0.0.9":{"state":"down"}}})"}));
}

TEST(Tree, IsSilentWithoutASpecificationOrAnActiveInstance) {
   expectEverywhere(treeRouter(), {}, RsvpLerPathSpecId());
   Router router = treeRouter();
   router.status->mbbTunnelStatusCollTable.get()->clear();
   router.mbbTunnelStatus(mbbId("t", 2), groupId("t", 0, 2));
   expectEverywhere(router, {});
}

TEST(Tree, WithoutAConfiguredSpecification) {
   Router router = treeRouter();
   router.status->pathSpecConfigColl.get()->clear();
   expectEverywhere(router, {"   Active tree: north (not configured)\n", ""});
   router.status->pathSpecConfigColl.set(nullptr);
   expectEverywhere(router, {"   Active tree: north (not configured)\n", ""});
   router.tunnelSpec(tunnelId("t"), [](auto&) {});
   expectEverywhere(router, {"   Active tree: not specified\n", ""});
   router.status->tunnelSpecColl.get()->clear();
   expectEverywhere(router, {"   Active tree: not specified\n", ""});
   router.status->tunnelSpecColl.set(nullptr);
   expectEverywhere(router, {"   Active tree: not specified\n", ""});
}

// A specification is one by its name or by its source.
TEST(Tree, OfASpecificationWithoutAName) {
   Router router = twoPathRouter();
   router.pathSpecConfig(pathSpecId(""), RsvpLerPathSpecType::dynamicPath);
   expectEverywhere(router,
                    {"   Active tree: \n      State: unknown\n      Leaves (dynamic):\n",
                     R"("primaryTree":{"specName":"","state":"unknown","mbb":false,"inUse":false,)"
                     R"("treeErrors":[],"specType":"dynamic","treeLeaves":{}})"},
                    pathSpecId(""));
   router.status->pathSpecConfigColl.get()->clear();
   router.tunnelSpec(tunnelId("t"), [](auto& record) { record.primaryPathSpecId = pathSpecId(""); });
   expectEverywhere(router, {"   Active tree:  (not configured)\n", ""}, pathSpecId(""));
   router.tunnelSpec(tunnelId("t"), [](auto& record) { record.primaryPathSpecId.name = Fathom::String("east"); });
   expectEverywhere(router, {"   Active tree: east (not configured)\n", ""}, {Fathom::String("east"), {}});
}

TEST(Tree, AnInstanceThatIsNoneHasNoNameToMiss) {
   Router router = twoPathRouter();
   router.tunnelSpec({}, [](auto& record) { record.primaryPathSpecId = pathSpecId("north"); });
   EXPECT_EQ(shown(router,
                   [](auto const& command, auto* renderer) {
                      command.renderTreeSpecNameNoPathSpecConfig(renderer, RsvpLerMbbTunnelConfigId(), true);
                   }),
             Shown());
}

TEST(Tree, SpecificationName) {
   for (bool text : {true, false}) {
      auto const body = [&](auto* renderer) { renderTreeSpecName(renderer, pathSpecId("to-all"), text); };
      EXPECT_EQ(rendered(textFormat, body), text ? "   Active tree: to-all\n" : "");
      EXPECT_EQ(rendered(jsonFormat, body), R"("specName":"to-all")");
      auto const none = [&](auto* renderer) { renderTreeSpecName(renderer, RsvpLerPathSpecId(), text); };
      EXPECT_EQ(rendered(textFormat, none), "");
      EXPECT_EQ(rendered(jsonFormat, none), "");
   }
}

} // namespace
