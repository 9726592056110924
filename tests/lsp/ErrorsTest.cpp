#include "tests/lsp/LspState.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

struct ErrorRow {
   RsvpErrorWithNode error;
   char const* text;
   char const* json;
};

TEST(Errors, OneErrorInWordsAndInNumbers) {
   ErrorRow const rows[] = {
         {{24, 5, address("10.0.0.3")},
          "         Routing problem: no route available toward destination (24/5) from 10.0.0.3\n",
          R"({"code":24,"value":5,"node":"10.0.0.3"})"},
         {{2, 9, address("10.0.0.3")},
          "         Policy control failure (2/9) from 10.0.0.3\n",
          R"({"code":2,"value":9,"node":"10.0.0.3"})"},
         {{100, 65535, address("2001:db8::7")},
          "         Unknown error (100/65535) from 2001:db8::7\n",
          R"({"code":100,"value":65535,"node":"2001:db8::7"})"},
         {{4294967295, 0, Lattice::IpGenAddr()},
          "         Unknown error (4294967295/0) from ::\n",
          R"({"code":4294967295,"value":0,"node":"::"})"},
   };
   for (auto const& row : rows) {
      SCOPED_TRACE(row.json);
      for (bool text : {true, false}) {
         EXPECT_EQ(shown(Router(),
                         [&](auto const& command, auto* renderer) { command.renderError(renderer, row.error, text); }),
                   (Shown{text ? row.text : "", row.json}));
      }
   }
}

// The errors of the group in instances 1 and 2, as a path and as a tree.
Shown shownPathErrors(Router const& router, std::uint8_t group, bool text) {
   return shown(router, [&](auto const& command, auto* renderer) {
      command.renderLspGroupErrors(renderer, mbbId("t", 1), mbbId("t", 2), group, text);
   });
}
Shown shownTreeErrors(Router const& router, bool text) {
   return shown(router, [&](auto const& command, auto* renderer) {
      command.renderP2mpLspGroupTreeErrors(renderer, mbbId("t", 1), mbbId("t", 2), text);
   });
}

struct GatherRow {
   char const* name;
   std::function<void(Router&)> arrange;
   char const* text; // of group 0, as those below
   char const* entries;
};

GatherRow const gatherRows[] = {
      {"no group", [](Router&) {}, "", ""},
      {"no error",
       [](Router& router) {
          addLsp(router, requestId("t", 1), 1, {});
          addGroup(router, requestId("t", 1));
       },
       "", ""},
      {"ascending by code, value and node",
       [](Router& router) {
          addLsp(router, requestId("t", 1), 1, {},
                 {{200, 1, address("10.0.0.1")},
                  {100, 10, address("10.0.0.1")},
                  {100, 9, address("2001:db8::1")},
                  {100, 9, address("10.0.0.10")},
                  {100, 9, address("10.0.0.9")}});
          addGroup(router, requestId("t", 1));
       },
       "      Errors:\n"
       "         Unknown error (100/9) from 10.0.0.9\n"
       "         Unknown error (100/9) from 10.0.0.10\n"
       "         Unknown error (100/9) from 2001:db8::1\n"
       "         Unknown error (100/10) from 10.0.0.1\n"
       "         Unknown error (200/1) from 10.0.0.1\n",
       R"({"code":100,"value":9,"node":"10.0.0.9"},{"code":100,"value":9,"node":"10.0.0.10"},)"
       R"({"code":100,"value":9,"node":"2001:db8::1"},{"code":100,"value":10,"node":"10.0.0.1"},)"
       R"({"code":200,"value":1,"node":"10.0.0.1"})"},
      {"both requests of a group, the common one once",
       [](Router& router) {
          addLsp(router, requestId("t", 1), 1, {}, {error(3), error(1)});
          addLsp(router, requestId("t", 2), 2, {}, {error(3), error(2)});
          addGroup(router, requestId("t", 1), requestId("t", 2));
       },
       "      Errors:\n"
       "         Unknown error (100/1) from 10.0.0.1\n"
       "         Unknown error (100/2) from 10.0.0.1\n"
       "         Unknown error (100/3) from 10.0.0.1\n",
       R"({"code":100,"value":1,"node":"10.0.0.1"},{"code":100,"value":2,"node":"10.0.0.1"},)"
       R"({"code":100,"value":3,"node":"10.0.0.1"})"},
      {"both instances, the common one once",
       [](Router& router) {
          addLsp(router, requestId("t", 1, 0, 1), 1, {}, {error(3)});
          addLsp(router, requestId("t", 1, 0, 2), 2, {}, {error(2), error(3)});
          addGroup(router, requestId("t", 1, 0, 1));
          addGroup(router, requestId("t", 1, 0, 2));
       },
       "      Errors:\n"
       "         Unknown error (100/2) from 10.0.0.1\n"
       "         Unknown error (100/3) from 10.0.0.1\n",
       R"({"code":100,"value":2,"node":"10.0.0.1"},{"code":100,"value":3,"node":"10.0.0.1"})"},
      {"from another node it is another error",
       [](Router& router) {
          addLsp(router, requestId("t", 1), 1, {}, {error(3, "10.0.0.2"), error(3, "10.0.0.1")});
          addGroup(router, requestId("t", 1));
       },
       "      Errors:\n"
       "         Unknown error (100/3) from 10.0.0.1\n"
       "         Unknown error (100/3) from 10.0.0.2\n",
       R"({"code":100,"value":3,"node":"10.0.0.1"},{"code":100,"value":3,"node":"10.0.0.2"})"},
      {"an instance without status gives its errors",
       [](Router& router) {
          addLsp(router, requestId("t", 1), 1, {}, {error(3)});
          addGroup(router, requestId("t", 1));
          router.status->mbbTunnelStatusCollTable.set(nullptr);
       },
       "      Errors:\n         Unknown error (100/3) from 10.0.0.1\n", R"({"code":100,"value":3,"node":"10.0.0.1"})"},
      {"a request without configuration gives its errors",
       [](Router& router) {
          addLsp(router, requestId("t", 1), 1, {}, {error(3)});
          addGroup(router, requestId("t", 1));
          router.status->lspRequestConfigCollTable.set(nullptr);
       },
       "      Errors:\n         Unknown error (100/3) from 10.0.0.1\n", R"({"code":100,"value":3,"node":"10.0.0.1"})"},
      {"no group record",
       [](Router& router) {
          addLsp(router, requestId("t", 1), 1, {}, {error(3)});
          addGroup(router, requestId("t", 1, 1));
       },
       "", ""},
      {"no group table",
       [](Router& router) {
          addLsp(router, requestId("t", 1), 1, {}, {error(3)});
          router.status->lspGroupStatusCollTable.set(nullptr);
       },
       "", ""},
      {"no request table",
       [](Router& router) {
          addGroup(router, requestId("t", 1));
          router.status->lspRequestStatusCollTable.set(nullptr);
       },
       "", ""},
      {"no request collection, no request status",
       [](Router& router) {
          addLsp(router, requestId("t", 1, 0, 2), 1, {}, {error(3)});
          addGroup(router, requestId("t", 1), requestId("t", 2));
          addGroup(router, requestId("t", 9, 0, 2));
       },
       "", ""},
};

TEST(Errors, OfAPathAndOfATree) {
   for (auto const& row : gatherRows) {
      SCOPED_TRACE(row.name);
      Router router = twoPathRouter();
      row.arrange(router);
      std::string const pathErrors = std::string(R"("pathErrors":[)") + row.entries + "]";
      std::string const treeErrors = std::string(R"("treeErrors":[)") + row.entries + "]";
      EXPECT_EQ(shownPathErrors(router, 0, true), (Shown{row.text, pathErrors}));
      EXPECT_EQ(shownPathErrors(router, 0, false), (Shown{"", pathErrors}));
      EXPECT_EQ(shownTreeErrors(router, true), (Shown{row.text, treeErrors}));
      EXPECT_EQ(shownTreeErrors(router, false), (Shown{"", treeErrors}));
   }
}

TEST(Errors, ATreeLooksAtGroup0Only) {
   Router router = twoPathRouter();
   for (std::uint32_t epoch : {1u, 2u}) {
      addLsp(router, requestId("t", 1, 1, epoch), 1, {}, {error(static_cast<std::uint16_t>(epoch))});
      addGroup(router, requestId("t", 1, 1, epoch));
   }
   EXPECT_EQ(shownTreeErrors(router, true), (Shown{"", R"("treeErrors":[])"}));
   EXPECT_EQ(shownPathErrors(router, 1, true), (Shown{"      Errors:\n"
                                                      "         Unknown error (100/1) from 10.0.0.1\n"
                                                      "         Unknown error (100/2) from 10.0.0.1\n",
                                                      R"("pathErrors":[{"code":100,"value":1,"node":"10.0.0.1"},)"
                                                      R"({"code":100,"value":2,"node":"10.0.0.1"}])"}));
}

TEST(Errors, AreAddedToWhatTheSetHolds) {
   Router router;
   addLsp(router, requestId("t", 1), 1, {}, {error(3)});
   auto const command = router.tunnelCommand();
   auto const set = Brindle::makeNode<RsvpErrorWithNodeOrderedSet>();
   set->errorIs(error(1), true);
   command->aggregateLspErrors(requestId("t", 1), set);
   command->aggregateLspErrors(RsvpLerLspRequestConfigId(), set);
   command->aggregateLspGroupErrors(RsvpLerLspGroupId(), set);
   EXPECT_EQ(set->size(), 2u);
   EXPECT_TRUE(set->errors().contains(error(1)));
   EXPECT_TRUE(set->errors().contains(error(3)));
}

} // namespace
