#include "tests/lsp/LspState.h"

#include <gtest/gtest.h>

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

struct KindRow {
   std::uint8_t kind;
   char const* pathText;
   char const* pathJson;
   char const* treeText;
   char const* treeJson;
};

using Section = void (ShowRsvpLerTunnel::*)(scrivo::RendererV2*, RsvpLerLspGroupId const&, bool) const;
constexpr Section pathSection = &ShowRsvpLerTunnel::renderLspGroupCspfPathKey;
constexpr Section treeSection = &ShowRsvpLerTunnel::renderLspGroupCspfTreeId;

Shown shownId(Router const& router, Section section, RsvpLerLspGroupId const& id, bool text) {
   return shown(router, [&](ShowRsvpLerTunnel const& command, scrivo::RendererV2* renderer) {
      (command.*section)(renderer, id, text);
   });
}

TEST(CspfIds, AreShownByKind) {
   KindRow const rows[] = {
         {0, "", "", "", ""},
         {1, "      CSPF Path ID: 5\n", R"("cspfPathKeyId":5)", "", ""},
         {2, "", "", "      CSPF Tree ID: 9\n", R"("cspfTreeId":9)"},
         {3, "", "", "", ""},
         {255, "", "", "", ""},
   };
   for (auto const& row : rows) {
      SCOPED_TRACE(unsigned{row.kind});
      Router router;
      router.cspfPathKey(groupId("t"), [&](auto& record) {
         record.kind = row.kind;
         record.pathId = 5;
         record.treeId = 9;
      });
      EXPECT_EQ(shownId(router, pathSection, groupId("t"), true), (Shown{row.pathText, row.pathJson}));
      EXPECT_EQ(shownId(router, pathSection, groupId("t"), false), (Shown{"", row.pathJson}));
      EXPECT_EQ(shownId(router, treeSection, groupId("t"), true), (Shown{row.treeText, row.treeJson}));
      EXPECT_EQ(shownId(router, treeSection, groupId("t"), false), (Shown{"", row.treeJson}));
   }
}

TEST(CspfIds, OfAGroupThatIsNotKnown) {
   Router router;
   router.cspfPathKey(groupId("t"), [](auto& record) { record.kind = 1; });
   EXPECT_EQ(shownId(router, pathSection, groupId("t", 1), true), Shown());
   EXPECT_EQ(shownId(router, pathSection, RsvpLerLspGroupId(), true), Shown());
   router.status->cspfPathKeyMapping.set(nullptr);
   EXPECT_EQ(shownId(router, pathSection, groupId("t"), true), Shown());
}

} // namespace
