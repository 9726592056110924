#include "RsvpLer/lsp/LspIds.h"

#include "tests/lsp/LspState.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

using Id = Vane::Optional<std::uint16_t>;
Id const none;

struct RenderRow {
   char const* name;
   LspIds ids;
   LspIds sorted;
   char const* text;
   char const* json;
};

TEST(LspIds, AreShownSorted) {
   RenderRow const rows[] = {
         {"none", {}, {}, "   LSP IDs:\n", R"("lspIds":[])"},
         {"one", {Id(7)}, {Id(7)}, "   LSP IDs: 7\n", R"("lspIds":[7])"},
         {"without an id first",
          {Id(7), none, Id(2)},
          {none, Id(2), Id(7)},
          "   LSP IDs: ?, 2, 7\n",
          R"("lspIds":[2,7])"},
         {"0 is an id", {Id(0), none}, {none, Id(0)}, "   LSP IDs: ?, 0\n", R"("lspIds":[0])"},
         {"duplicates stay",
          {Id(3), none, Id(3), none},
          {none, none, Id(3), Id(3)},
          "   LSP IDs: ?, ?, 3, 3\n",
          R"("lspIds":[3,3])"},
         {"by number",
          {Id(65535), Id(10), Id(9)},
          {Id(9), Id(10), Id(65535)},
          "   LSP IDs: 9, 10, 65535\n",
          R"("lspIds":[9,10,65535])"},
         {"only without an id", {none}, {none}, "   LSP IDs: ?\n", R"("lspIds":[])"},
   };
   for (auto const& row : rows) {
      SCOPED_TRACE(row.name);
      for (bool text : {true, false}) {
         LspIds inText = row.ids;
         EXPECT_EQ(rendered(textFormat, [&](auto* renderer) { renderLspIds(renderer, inText, text); }),
                   text ? row.text : "");
         EXPECT_EQ(inText, row.sorted);
         LspIds inJson = row.ids;
         EXPECT_EQ(rendered(jsonFormat, [&](auto* renderer) { renderLspIds(renderer, inJson, text); }), row.json);
         EXPECT_EQ(inJson, row.sorted);
      }
   }
}

struct RequestRow {
   char const* name;
   std::function<void(Router&)> change;
   RsvpLerLspRequestConfigId request;
   Id expected;
};

TEST(LspIds, OfOneRequest) {
   RequestRow const rows[] = {
         {"all there", [](Router&) {}, requestId("t"), Id(4)},
         {"no table", [](Router& router) { router.status->lspRequestStatusCollTable.set(nullptr); }, requestId("t"),
          none},
         {"no collection", [](Router& router) { router.status->lspRequestStatusCollTable.get()->clear(); },
          requestId("t"), none},
         {"no status", [](Router&) {}, requestId("t", 2), none},
         {"no id in the status", [](Router& router) { router.lspRequestStatus(requestId("t"), [](auto&) {}); },
          requestId("t"), none},
         {"id 0", [](Router& router) { router.lspRequestStatus(requestId("t"), [](auto& r) { r.lspId = 0; }); },
          requestId("t"), Id(0)},
         // Even a table that knows the default key isn't asked.
         {"default key", [](Router& router) { router.lspRequestStatus({}, [](auto& r) { r.lspId = 9; }); },
          RsvpLerLspRequestConfigId(), none},
         {"default key without a table", [](Router& router) { router.status->lspRequestStatusCollTable.set(nullptr); },
          RsvpLerLspRequestConfigId(), none},
   };
   for (auto const& row : rows) {
      SCOPED_TRACE(row.name);
      Router router;
      router.lspRequestStatus(requestId("t"), [](auto& record) { record.lspId = 4; });
      row.change(router);
      EXPECT_EQ(getLspIdForLspRequest(row.request, router.status->lspRequestStatusCollTable.get()), row.expected);
   }
}

struct InstanceRow {
   char const* name;
   std::function<void(Router&)> change;
   LspIds ofInstance; // of epoch 1, in the order of the groups
};

TEST(LspIds, OfOneInstance) {
   InstanceRow const rows[] = {
         {"no group", [](Router&) {}, {}},
         {"no group table", [](Router& router) { router.status->lspGroupStatusCollTable.set(nullptr); }, {}},
         {"active",
          [](Router& router) {
             addLsp(router, requestId("t", 1), 5, {});
             addGroup(router, requestId("t", 1));
          },
          {Id(5)}},
         {"active and pending",
          [](Router& router) {
             addLsp(router, requestId("t", 1), 5, {});
             addLsp(router, requestId("t", 2), 3, {});
             addGroup(router, requestId("t", 1), requestId("t", 2));
          },
          {Id(5), Id(3)}},
         {"a pending one without status counts",
          [](Router& router) {
             addLsp(router, requestId("t", 1), 5, {});
             addGroup(router, requestId("t", 1), requestId("t", 2));
          },
          {Id(5), none}},
         {"nor does the request table matter to the count",
          [](Router& router) {
             addGroup(router, requestId("t", 1), requestId("t", 2));
             router.status->lspRequestStatusCollTable.set(nullptr);
          },
          {none, none}},
         {"only pending",
          [](Router& router) {
             addLsp(router, requestId("t", 2), 6, {});
             router.lspGroupStatus(groupId("t"), [](auto& r) { r.pendingLspRequestConfigId = requestId("t", 2); });
          },
          {Id(6)}},
         {"by group, whatever came first",
          [](Router& router) {
             addLsp(router, requestId("t", 1, 1), 2, {});
             addLsp(router, requestId("t", 1, 0), 8, {});
             addGroup(router, requestId("t", 1, 1));
             addGroup(router, requestId("t", 1, 0));
          },
          {Id(8), Id(2)}},
         {"of groups of any number",
          [](Router& router) {
             for (std::uint8_t const group : {std::uint8_t{9}, std::uint8_t{255}}) {
                addLsp(router, requestId("t", 1, group), group, {});
                addGroup(router, requestId("t", 1, group));
             }
          },
          {Id(9), Id(255)}},
         {"another instance's",
          [](Router& router) {
             addLsp(router, requestId("t", 1, 0, 2), 5, {});
             addGroup(router, requestId("t", 1, 0, 2));
          },
          {}},
   };
   for (auto const& row : rows) {
      SCOPED_TRACE(row.name);
      Router router;
      row.change(router);
      EXPECT_EQ(getLspIdsForTunnel(mbbId("t", 1), router.status->lspGroupStatusCollTable.get(),
                                   router.status->lspRequestStatusCollTable.get()),
                row.ofInstance);
   }
}

LspIds sortedIdsOf(Router const& router, std::string_view tunnel) {
   LspIds ids = getLspIdsForSuperTunnel(tunnelId(tunnel), router.status->subTunnelStatusCollTable.get(),
                                        router.status->lspGroupStatusCollTable.get(),
                                        router.status->lspRequestStatusCollTable.get());
   std::sort(ids.begin(), ids.end());
   return ids;
}

TEST(LspIds, OfAllSubTunnelsOfATunnel) {
   Router router;
   EXPECT_EQ(sortedIdsOf(router, "t"), LspIds());
   // Sub-tunnel 1 is being replaced, sub-tunnel 2 isn't, sub-tunnel 3 has no instance.
   for (std::uint32_t subTunnel : {1u, 2u}) {
      for (std::uint32_t epoch : {1u, 2u}) {
         auto const id = requestId("t", 1, 0, epoch, subTunnel);
         addLsp(router, id, static_cast<std::uint16_t>(10 * subTunnel + epoch), {});
         addGroup(router, id);
      }
   }
   router.subTunnelStatus(subTunnelId("t", 1), [](auto& record) {
      record.activeMbbTunnelConfigId = mbbId("t", 1, 1);
      record.pendingMbbTunnelConfigId = mbbId("t", 2, 1);
   });
   router.subTunnelStatus(subTunnelId("t", 2), [](auto& record) { record.activeMbbTunnelConfigId = mbbId("t", 1, 2); });
   router.subTunnelStatus(subTunnelId("t", 3), [](auto&) {});
   EXPECT_EQ(sortedIdsOf(router, "t"), (LspIds{Id(11), Id(12), Id(21)}));
   EXPECT_EQ(sortedIdsOf(router, "another"), LspIds());
   router.status->subTunnelStatusCollTable.set(nullptr);
   EXPECT_EQ(sortedIdsOf(router, "t"), LspIds());
}

} // namespace
