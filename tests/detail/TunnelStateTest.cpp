#include "RsvpLer/detail/TunnelAttributes.h"
#include "tests/detail/SectionCheck.h"

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

using Config = RsvpLerSuperTunnelConfig;
using Status = RsvpLerSuperTunnelStatus;

TEST(TunnelState, colorAndMetric) {
   struct Row {
      void (*editConfig)(Config&);
      void (*editStatus)(Status&);
      std::string_view line;
      std::string_view members;
   };
   auto const fixed = [](Config& config) { config.metric = 10; };
   auto const dynamic = [](Config& config) {
      config.metric = 10;
      config.metricFromIgp = true;
   };
   Row const rows[] = {
         {nullptr, nullptr, "   Color: -, Metric: 0\n", R"("metricMode":"static","metric":0)"},
         {nullptr, [](Status& status) { status.igpMetric = 20; }, "   Color: -, Metric: 0\n",
          R"("metricMode":"static","metric":0)"},
         {fixed, nullptr, "   Color: -, Metric: 10\n", R"("metricMode":"static","metric":10)"},
         {fixed, [](Status& status) { status.igpMetric = 20; }, "   Color: -, Metric: 10\n",
          R"("metricMode":"static","metric":10)"},
         {dynamic, nullptr, "   Color: -, Metric: 0 (from IGP)\n", R"("metricMode":"dynamic","metric":0)"},
         {dynamic, [](Status& status) { status.igpMetric = 20; }, "   Color: -, Metric: 20 (from IGP)\n",
          R"("metricMode":"dynamic","metric":20)"},
         {fixed, [](Status& status) { status.color = 0; }, "   Color: 0, Metric: 10\n",
          R"("color":0,"metricMode":"static","metric":10)"},
         {dynamic,
          [](Status& status) {
             status.color = 4294967295;
             status.igpMetric = 4294967295;
          },
          "   Color: 4294967295, Metric: 4294967295 (from IGP)\n",
          R"("color":4294967295,"metricMode":"dynamic","metric":4294967295)"},
   };
   for (Row const& row : rows) {
      auto const config = recordOf(row.editConfig);
      auto const status = recordOf(row.editStatus);
      expectSection(
            [&](auto* renderer, bool showText) { renderTunnelColorAndMetric(renderer, config, status, showText); },
            row.line, row.members);
   }
}

struct StateRow {
   bool present;
   RsvpLerTunnelState state;
   bool mbb;
   std::string_view line;
   std::string_view members;
};

constexpr StateRow stateRows[] = {
      {false, RsvpLerTunnelState::unknown, false, "   State: unknown\n", R"("state":"unknown","mbb":false)"},
      {false, RsvpLerTunnelState::unknown, true, "   State: unknown, re-establishing\n",
       R"("state":"unknown","mbb":true)"},
      {true, RsvpLerTunnelState::unknown, false, "   State: unknown\n", R"("state":"unknown","mbb":false)"},
      {true, RsvpLerTunnelState::down, false, "   State: down\n", R"("state":"down","mbb":false)"},
      {true, RsvpLerTunnelState::down, true, "   State: down, re-establishing\n", R"("state":"down","mbb":true)"},
      {true, RsvpLerTunnelState::up, false, "   State: up\n", R"("state":"up","mbb":false)"},
      {true, RsvpLerTunnelState::up, true, "   State: up, re-establishing\n", R"("state":"up","mbb":true)"},
};

template<class Record, class Section>
void expectStateRows(Section&& section) {
   for (StateRow const& row : stateRows) {
      Handle<Record> record;
      if (row.present) {
         auto const made = Brindle::makeNode<Record>();
         made->state = row.state;
         record = made;
      }
      expectSection([&](auto* renderer, bool showText) { section(renderer, record, row.mbb, showText); }, row.line,
                    row.members);
   }
}

TEST(TunnelState, stateOfTunnelsAndSubTunnels) {
   expectStateRows<RsvpLerSuperTunnelStatus>(renderTunnelState);
   expectStateRows<RsvpLerSubTunnelStatus>(renderSubTunnelState);
}

TEST(TunnelState, stateCommonTakesTheText) {
   expectSection([](auto* renderer, bool showText) { renderTunnelStateCommon(renderer, "any", true, showText); },
                 "   State: any, re-establishing\n", R"("state":"any","mbb":true)");
}

TEST(TunnelStateDeathTest, stateWithoutAWord) {
   Handle<Status> const status =
         recordOf<Status>([](Status& record) { record.state = static_cast<RsvpLerTunnelState>(3); });
   EXPECT_DEATH(rendered(textFormat, [&](auto* renderer) { renderTunnelState(renderer, status, false, true); }),
                "This should be unreachable");
}

TEST(TunnelState, lspCount) {
   struct Row {
      std::uint32_t count;
      std::string_view line;
      std::string_view member;
   };
   Row const rows[] = {
         {0, "   LSPs: 0\n", R"("lspCount":0)"},
         {2, "   LSPs: 2\n", R"("lspCount":2)"},
         {4294967295, "   LSPs: 4294967295\n", R"("lspCount":4294967295)"},
   };
   for (Row const& row : rows)
      for (auto const section : {renderTunnelLspCount, renderSubTunnelLspCount})
         expectSection([&](auto* renderer, bool showText) { section(renderer, row.count, showText); }, row.line,
                       row.member);
}

struct PathRow {
   RsvpLerLspGroupId id;
   std::string_view line;
   std::string_view member;
};

std::vector<PathRow> pathRows() {
   return {
         {{}, "", R"("activePathType":"unknown")"},
         {groupId("tun1", 0), "   Active path: primary\n", R"("activePathType":"primary")"},
         {groupId("tun1", 1), "   Active path: secondary\n", R"("activePathType":"secondary")"},
         {groupId("tun1", 255), "   Active path: secondary\n", R"("activePathType":"secondary")"},
         // Any field that is set makes a group.
         {{{}, 1}, "   Active path: secondary\n", R"("activePathType":"secondary")"},
         {{{{}, 1}, 0}, "   Active path: primary\n", R"("activePathType":"primary")"},
   };
}

TEST(TunnelState, activePath) {
   for (PathRow const& row : pathRows()) {
      expectSection([&](auto* renderer, bool showText) { renderActivePathType(renderer, row.id, true, showText); },
                    row.line, row.member);
      expectSection([&](auto* renderer, bool showText) { renderActivePathType(renderer, row.id, false, showText); },
                    "   Active path: split\n", R"("activePathType":"split")");
      expectSection([&](auto* renderer, bool showText) { renderSubTunnelActivePathType(renderer, row.id, showText); },
                    row.line, row.member);
   }
}

TEST(TunnelState, activePathOfP2mpTunnels) {
   expectSection([](auto* renderer, bool) { renderP2mpActivePathType(renderer); }, "", R"("activePathType":"primary")");
}

} // namespace
