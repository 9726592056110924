#include "RsvpLer/lsp/PathHops.h"

#include "tests/lsp/LspState.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

// The hops of the group 0 of instance 1 under the specification "north".
Shown shownGroupHops(Router const& router, bool text) {
   return shown(router, [&](ShowRsvpLerTunnel const& command, scrivo::RendererV2* renderer) {
      auto const pathSpecConfig = command.pathSpecConfigColl()->pathSpecConfig(pathSpecId("north"));
      command.renderLspGroupHops(renderer, pathSpecConfig, command.getLspGroupStatus(groupId("t")), text);
   });
}

struct GroupRow {
   char const* name;
   std::function<void(Router&)> change;
   char const* text;
   char const* json;
};

TEST(PathHops, OfAGroup) {
   GroupRow const rows[] = {
         {"a path", [](Router&) {}, "      Path (explicit):\n         10.1.1.2\n         10.0.0.9\n",
          R"("specType":"explicit","hops":["10.1.1.2","10.0.0.9"])"},
         {"dynamic",
          [](Router& router) { router.pathSpecConfig(pathSpecId("north"), RsvpLerPathSpecType::dynamicPath); },
          "      Path (dynamic):\n         10.1.1.2\n         10.0.0.9\n",
          R"("specType":"dynamic","hops":["10.1.1.2","10.0.0.9"])"},
         {"of no known type",
          [](Router& router) { router.pathSpecConfig(pathSpecId("north"), RsvpLerPathSpecType::unknown); },
          "      Path (unknown):\n         10.1.1.2\n         10.0.0.9\n",
          R"("specType":"unknown","hops":["10.1.1.2","10.0.0.9"])"},
         {"no specification", [](Router& router) { router.status->pathSpecConfigColl.get()->clear(); },
          "      Path (unknown):\n         10.1.1.2\n         10.0.0.9\n",
          R"("specType":"unknown","hops":["10.1.1.2","10.0.0.9"])"},
         {"no group", [](Router& router) { router.status->lspGroupStatusCollTable.get()->clear(); }, "",
          R"("specType":"explicit","hops":[])"},
         {"no group and no specification",
          [](Router& router) {
             router.status->lspGroupStatusCollTable.get()->clear();
             router.status->pathSpecConfigColl.get()->clear();
          },
          "", R"("specType":"unknown","hops":[])"},
         {"no request", [](Router& router) { router.status->lspRequestConfigCollTable.get()->clear(); },
          "      Path (explicit):\n", R"("specType":"explicit","hops":[])"},
         {"no tree", [](Router& router) { router.lspRequestConfig(requestId("t", 1), [](auto&) {}); },
          "      Path (explicit):\n", R"("specType":"explicit","hops":[])"},
         {"no path in the tree",
          [](Router& router) {
             router.lspRequestConfig(requestId("t", 1),
                                     [](auto& record) { record.tree = Brindle::makeNode<RsvpLerTree>(); });
          },
          "      Path (explicit):\n", R"("specType":"explicit","hops":[])"},
         {"not that of the pending request",
          [](Router& router) {
             addGroup(router, {groupId("t"), 3}, requestId("t", 2));
          },
          "      Path (explicit):\n", R"("specType":"explicit","hops":[])"},
         {"IPv6",
          [](Router& router) {
             addLsp(router, requestId("t", 1), 1, {"2001:db8::1", "10.0.0.9"});
          },
          "      Path (explicit):\n         2001:db8::1\n         10.0.0.9\n",
          R"("specType":"explicit","hops":["2001:db8::1","10.0.0.9"])"},
   };
   for (auto const& row : rows) {
      SCOPED_TRACE(row.name);
      Router router = twoPathRouter();
      addLsp(router, requestId("t", 1), 1, {"10.1.1.2", "10.0.0.9"});
      addLsp(router, requestId("t", 2), 2, {"10.9.9.9"});
      addGroup(router, requestId("t", 1), requestId("t", 2));
      row.change(router);
      EXPECT_EQ(shownGroupHops(router, true), (Shown{row.text, row.json}));
      EXPECT_EQ(shownGroupHops(router, false), (Shown{"", row.json}));
   }
}

TEST(PathHopsDeathTest, TypeOutOfRange) {
   Router router = twoPathRouter();
   router.pathSpecConfig(pathSpecId("north"), static_cast<RsvpLerPathSpecType>(3));
   EXPECT_EXIT(shownGroupHops(router, true), testing::KilledBySignal(SIGABRT), "This should be unreachable");
}

struct LeafRow {
   std::initializer_list<std::string_view> hops;
   char const* text;
   char const* json;
};

// "P:" and "n:" stand for the two prefixes.
LeafRow const leafRows[] = {
      {{}, "", R"("hops":[])"},
      {{"10.0.0.1"}, "P:10.0.0.1        \n", R"("hops":["10.0.0.1"])"},
      {{"10.0.0.1", "10.0.0.2"}, "P:10.0.0.1        10.0.0.2        \n", R"("hops":["10.0.0.1","10.0.0.2"])"},
      {{"10.0.0.1", "10.0.0.2", "10.0.0.3"},
       "P:10.0.0.1        10.0.0.2        10.0.0.3        \n",
       R"("hops":["10.0.0.1","10.0.0.2","10.0.0.3"])"},
      {{"10.0.0.1", "10.0.0.2", "10.0.0.3", "10.0.0.4"},
       "P:10.0.0.1        10.0.0.2        10.0.0.3        \n"
       "n:10.0.0.4        \n",
       R"("hops":["10.0.0.1","10.0.0.2","10.0.0.3","10.0.0.4"])"},
      {{"10.0.0.1", "10.0.0.2", "10.0.0.3", "10.0.0.4", "10.0.0.5"},
       "P:10.0.0.1        10.0.0.2        10.0.0.3        \n"
       "n:10.0.0.4        10.0.0.5        \n",
       R"("hops":["10.0.0.1","10.0.0.2","10.0.0.3","10.0.0.4","10.0.0.5"])"},
      {{"10.0.0.1", "10.0.0.2", "10.0.0.3", "10.0.0.4", "10.0.0.5", "10.0.0.6"},
       "P:10.0.0.1        10.0.0.2        10.0.0.3        \n"
       "n:10.0.0.4        10.0.0.5        10.0.0.6        \n",
       R"("hops":["10.0.0.1","10.0.0.2","10.0.0.3","10.0.0.4","10.0.0.5","10.0.0.6"])"},
      {{"10.0.0.1", "10.0.0.2", "10.0.0.3", "10.0.0.4", "10.0.0.5", "10.0.0.6", "10.0.0.7"},
       "P:10.0.0.1        10.0.0.2        10.0.0.3        \n"
       "n:10.0.0.4        10.0.0.5        10.0.0.6        \n"
       "n:10.0.0.7        \n",
       R"("hops":["10.0.0.1","10.0.0.2","10.0.0.3","10.0.0.4","10.0.0.5","10.0.0.6","10.0.0.7"])"},
      // Fifteen characters leave one blank, sixteen none, and more push the next hop on.
      {{"100.100.100.100", "2001:db8:1::1:11", "10.0.0.3"},
       "P:100.100.100.100 2001:db8:1::1:1110.0.0.3        \n",
       R"("hops":["100.100.100.100","2001:db8:1::1:11","10.0.0.3"])"},
      {{"2001:db8:1:2:3:4:5:6", "10.0.0.2"},
       "P:2001:db8:1:2:3:4:5:610.0.0.2        \n",
       R"("hops":["2001:db8:1:2:3:4:5:6","10.0.0.2"])"},
};

TEST(PathHops, OfALeafStandThreeToALine) {
   for (auto const& row : leafRows) {
      SCOPED_TRACE(row.json);
      for (bool text : {true, false}) {
         auto const body = [&](auto* renderer) { renderP2mpLeafHops(renderer, hops(row.hops), "P:", "n:", text); };
         EXPECT_EQ(rendered(textFormat, body), text ? row.text : "");
         EXPECT_EQ(rendered(jsonFormat, body), row.json);
      }
   }
}

} // namespace
