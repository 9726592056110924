#include "RsvpLer/detail/Composition.h"
#include "tests/properties/DamagedStates.h"
#include "tests/properties/Views.h"
#include "tests/support/RandomState.h"
#include "vane/System.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

// What holds of the views of any state.

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

using Json = nlohmann::ordered_json;

constexpr std::uint32_t seeds = 50;

// Two answers can only be compared while the clocks stand still.
class ShowText : public testing::Test {
protected:
   ShowText() { Vane::System::fixClocks(Brindle::Duration(100000), Brindle::Duration(1700000000)); }
   ~ShowText() override { Vane::System::releaseClocks(); }
};

// One tunnel as the command shows it.
std::string tunnelAnswer(ShowRsvpLerTunnel& command, std::uint32_t format, RsvpLerTunnelSpecId const& id,
                         View const& view) {
   return rendered(format, [&](auto* renderer) {
      command.renderTunnel(renderer, id, view.summary, view.lspDetails, view.detail, view.history, view.subTunnel);
   });
}

// The same with the braces around it that a whole answer has.
std::string tunnelDocument(ShowRsvpLerTunnel& command, RsvpLerTunnelSpecId const& id, View const& view) {
   std::string document(1, '{');
   return document.append(tunnelAnswer(command, jsonFormat, id, view)).append(1, '}');
}

// What the dispatch gathers. The tables that it needs must be there.
TunnelView gather(ShowRsvpLerTunnel const& command, RsvpLerTunnelSpecId const& id) {
   TunnelView view;
   view.tunnelSpecId = id;
   view.autoBwConfig = command.autoBwConfig();
   view.autoBwStats = command.autoBwStats();
   view.bwSamplingStatusColl = command.bwSamplingStatusColl();
   view.tunnelIndexMap = command.tunnelIndexMap();
   view.superTunnelConfig = command.superTunnelConfigColl()->superTunnelConfig(id);
   view.superTunnelStatus = command.superTunnelStatusColl()->superTunnelStatus(id);
   view.subTunnelStatusColl = command.subTunnelStatusCollTable()->subTunnelStatusColl(id);
   view.subTunnelStatus = command.getNonSplitSubTunnelStatus(id);
   CurrentInstances const current = command.getCurrentInstances(view.subTunnelStatus);
   view.activeMbbTunnelConfigId = current.activeMbbTunnelConfigId;
   view.pendingMbbTunnelConfigId = current.pendingMbbTunnelConfigId;
   view.lspGroupId = current.lspGroupId;
   view.activeMbbTunnelStatus = current.activeMbbTunnelStatus;
   view.pendingMbbTunnelStatus = command.getMbbTunnelStatus(current.pendingMbbTunnelConfigId);
   view.tunnelSpec = command.tunnelSpecColl()->tunnelSpec(id);
   view.mbb = current.mbb;
   return view;
}

SubTunnelView gather(ShowRsvpLerTunnel const& command, RsvpLerSubTunnelConfigId const& id) {
   SubTunnelView view;
   view.tunnelSpecId = id.tunnelSpecId;
   view.subTunnelConfigId = id;
   view.autoBwStats = command.autoBwStats();
   view.bwSamplingStatusColl = command.bwSamplingStatusColl();
   view.subTunnelIndexMap = command.subTunnelIndexMap();
   view.subTunnelStatus = command.getSubTunnelStatus(id.tunnelSpecId, id);
   CurrentInstances const current = command.getCurrentInstances(view.subTunnelStatus);
   view.activeMbbTunnelConfigId = current.activeMbbTunnelConfigId;
   view.pendingMbbTunnelConfigId = current.pendingMbbTunnelConfigId;
   view.lspGroupId = current.lspGroupId;
   view.mbb = current.mbb;
   return view;
}

// `makePass` makes what the sections share, for a renderer.
template<class Section, class MakePass>
void expectFlagLeavesJsonAlone(std::span<Section const> sections, MakePass&& makePass) {
   for (std::size_t i = 0; i < sections.size(); ++i) {
      auto const members = [&](bool showText) {
         return rendered(jsonFormat, [&](auto* renderer) {
            auto pass = makePass(renderer);
            sections[i].render(pass, showText);
         });
      };
      EXPECT_EQ(members(false), members(true)) << "section " << i;
   }
}

void expectFlagLeavesTunnelAlone(ShowRsvpLerTunnel& command, RsvpLerTunnelSpecId const& id) {
   constexpr auto variant = ShowTunnelVariant::showTunnelHistoryDetailP2p;
   TunnelView const view = gather(command, id);
   auto const makePass = [&](auto* renderer) { return tunnelPass(command, renderer, view, variant); };
   expectFlagLeavesJsonAlone(p2pSections(), makePass);
   expectFlagLeavesJsonAlone(p2mpSections(), makePass);
   for (std::uint32_t const subTunnel : {1u, 2u, 3u}) {
      SubTunnelView const ofSubTunnel = gather(command, RsvpLerSubTunnelConfigId{id, subTunnel});
      expectFlagLeavesJsonAlone(subTunnelSections(), [&](auto* renderer) {
         return SubTunnelPass{command, renderer, ofSubTunnel, variant, {}};
      });
   }
}

TEST_F(ShowText, neverChangesJson) {
   for (std::uint32_t seed = 0; seed < seeds; ++seed) {
      SCOPED_TRACE("seed " + std::to_string(seed));
      RandomState state(seed);
      auto const command = state.router.tunnelCommand();
      for (auto const& id : state.tunnels)
         expectFlagLeavesTunnelAlone(*command, id);
   }
}

bool canShowTunnels(Host::RouterState const& router) {
   return Host::missingTables(router).empty();
}

TEST_F(ShowText, neverChangesJsonOfDamagedStates) {
   std::size_t tunnels = 0;
   forEachState([&](DamagedState const& state) {
      if (!canShowTunnels(state.router))
         return;
      auto const command = tunnelCommand(state.router);
      command->superTunnelConfigColl()->walk(
            [&](RsvpLerTunnelSpecId const& id, Handle<RsvpLerSuperTunnelConfig> const&) {
               expectFlagLeavesTunnelAlone(*command, id);
               ++tunnels;
            });
   });
   EXPECT_GT(tunnels, stateCount());
}

// Takes out what only some variants add.
Json withoutAdditions(Json tunnel) {
   for (char const* key : {"lsps", "p2mpLsps", "tunnelHistory"})
      tunnel.erase(key);
   if (tunnel.contains("subTunnels"))
      for (Json& subTunnel : tunnel["subTunnels"])
         for (char const* key : {"lsps", "subTunnelHistory"})
            subTunnel.erase(key);
   return tunnel;
}

// So the views of a family that show all attributes have the same members, whatever their text shows.
TEST_F(ShowText, variantsDifferInJsonByWhatTheyAdd) {
   for (std::uint32_t seed = 0; seed < seeds; ++seed) {
      SCOPED_TRACE("seed " + std::to_string(seed));
      RandomState state(seed);
      auto const command = state.router.tunnelCommand();
      for (auto const& id : state.tunnels) {
         std::string const key(id.name.view());
         std::string const plain =
               withoutAdditions(Json::parse(tunnelDocument(*command, id, tunnelViews[0]))[key]).dump();
         for (View const& view : tunnelViews) {
            SCOPED_TRACE(view.name);
            Json const answer = Json::parse(tunnelDocument(*command, id, view));
            bool const onlyHistory = view.history && !view.detail;
            if (onlyHistory || !answer.contains(key)) // the sub-tunnel views leave out tunnels that aren't split
               continue;
            EXPECT_EQ(withoutAdditions(answer[key]).dump(), plain);
         }
      }
   }
}

TEST_F(ShowText, everyViewIsWhole) {
   for (std::uint32_t seed = 0; seed < seeds; ++seed) {
      SCOPED_TRACE("seed " + std::to_string(seed));
      RandomState state(seed);
      auto const command = state.router.tunnelCommand();
      for (auto const& id : state.tunnels) {
         for (View const& view : tunnelViews) {
            SCOPED_TRACE(view.name);
            std::string const text = tunnelAnswer(*command, textFormat, id, view);
            EXPECT_TRUE(text.empty() || text.back() == '\n') << text;
            std::string const json = tunnelDocument(*command, id, view);
            EXPECT_TRUE(Json::accept(json)) << json;
         }
      }
   }
}

} // namespace
