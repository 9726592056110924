#include "RsvpLer/detail/Bandwidth.h"
#include "RsvpLer/detail/Display.h"
#include "RsvpLer/detail/TunnelAttributes.h"
#include "tests/detail/CompositionCheck.h"

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

using Call = SectionCall<SubTunnelView>;
using Row = ExpectedRow<SubTunnelView>;

LspIds lspIds(Call const& c) {
   LspIds ids = getLspIdsForTunnel(c.view.activeMbbTunnelConfigId, c.command.lspGroupStatusCollTable(),
                                   c.command.lspRequestStatusCollTable());
   for (auto const& id : getLspIdsForTunnel(c.view.pendingMbbTunnelConfigId, c.command.lspGroupStatusCollTable(),
                                            c.command.lspRequestStatusCollTable()))
      ids.push_back(id);
   return ids;
}

// The columns: SubTunnel, Detail, Lsp, Summary, TunnelSubTunnelSummary, History, HistoryDetail.
constexpr Row rows[] = {
      {"renderSubTunnelId", "yyy---y",
       [](Call const& c, bool) { renderSubTunnelId(c.renderer, c.view.subTunnelConfigId); }},
      {"renderSubTunnelBandwidth", "TTTFFFT",
       [](Call const& c, bool text) { renderSubTunnelBandwidth(c.renderer, c.view.subTunnelStatus, text); }},
      {"renderSubTunnelBwNextAdjustment", "FTFFF-T",
       [](Call const& c, bool text) {
          c.command.renderSubTunnelBwNextAdjustment(c.renderer, c.view.tunnelSpecId, c.view.subTunnelConfigId,
                                                    c.view.autoBwStats, text);
       }},
      {"renderSubTunnelSampledBandwidth", "FTFFF-T",
       [](Call const& c, bool text) {
          c.command.renderSubTunnelSampledBandwidth(c.renderer, c.view.tunnelSpecId, c.view.subTunnelConfigId,
                                                    c.view.bwSamplingStatusColl, text);
       }},
      {"renderSubTunnelSessionId", "TTTFF-T",
       [](Call const& c, bool text) { renderSubTunnelSessionId(c.renderer, c.view.subTunnelStatus, text); }},
      {"renderSubTunnelIndex", "FTFFF-T",
       [](Call const& c, bool text) {
          renderSubTunnelIndex(c.renderer, c.view.subTunnelConfigId, c.view.subTunnelIndexMap, text);
       }},
      {"renderSubTunnelState", "TTTFFFT",
       [](Call const& c, bool text) { renderSubTunnelState(c.renderer, c.view.subTunnelStatus, c.view.mbb, text); }},
      {"renderSubTunnelLspCount", "TTTFFFT",
       [](Call const& c, bool text) {
          renderSubTunnelLspCount(c.renderer, static_cast<std::uint32_t>(lspIds(c).size()), text);
       }},
      {"renderLspIds", "FTFFF-T",
       [](Call const& c, bool text) {
          LspIds ids = lspIds(c);
          renderLspIds(c.renderer, ids, text);
       }},
      {"renderSubTunnelActivePathType", "TTTFFFT",
       [](Call const& c, bool text) { renderSubTunnelActivePathType(c.renderer, c.view.lspGroupId, text); }},
      {"renderPaths", "y------",
       [](Call const& c, bool) {
          c.command.renderPaths(c.renderer, c.view.activeMbbTunnelConfigId, c.view.pendingMbbTunnelConfigId);
       }},
      {"renderDetailedPaths", "-TFFF-T",
       [](Call const& c, bool text) {
          c.command.renderDetailedPaths(c.renderer, c.view.activeMbbTunnelConfigId, c.view.pendingMbbTunnelConfigId,
                                        text);
       }},
      {"renderLsps", "--y----",
       [](Call const& c, bool) {
          c.command.renderLsps(c.renderer, c.view.activeMbbTunnelConfigId, c.view.pendingMbbTunnelConfigId);
       }},
      {"renderSubTunnelSummary", "----y--",
       [](Call const& c, bool) {
          c.command.renderSubTunnelSummary(c.renderer, c.view.tunnelSpecId, c.view.subTunnelConfigId, c.view.lspGroupId,
                                           c.view.subTunnelStatus, c.view.bwSamplingStatusColl,
                                           c.view.subTunnelIndexMap, static_cast<std::uint32_t>(lspIds(c).size()),
                                           c.view.mbb);
       }},
      {"renderSubTunnelHistory", "-----yy",
       [](Call const& c, bool) {
          bool const plain = c.variant == ShowTunnelVariant::showTunnelHistoryP2p;
          c.command.renderSubTunnelHistory(c.renderer, c.view.subTunnelConfigId, c.view.subTunnelIndexMap,
                                           plain ? "Sub tunnel 2" : "   History:", plain ? "" : "      ");
       }},
};

struct Column {
   ShowTunnelVariant variant; // of the tunnel
   void (*display)(ShowRsvpLerTunnel&, scrivo::RendererV2*, SubTunnelView const&);
};

constexpr Column columns[] = {
      {ShowTunnelVariant::showTunnelP2p, renderShowSubTunnel},
      {ShowTunnelVariant::showTunnelDetailP2p, renderShowSubTunnelDetail},
      {ShowTunnelVariant::showTunnelLspP2p, renderShowSubTunnelLsp},
      {ShowTunnelVariant::showTunnelSummaryP2p, renderShowSubTunnelSummary},
      {ShowTunnelVariant::showTunnelSubTunnelSummaryP2p, renderShowTunnelSubTunnelSummary},
      {ShowTunnelVariant::showTunnelHistoryP2p, renderShowSubTunnelHistory},
      {ShowTunnelVariant::showTunnelHistoryDetailP2p, renderShowSubTunnelHistoryDetail},
};

void expectViews(RichState& state) {
   for (std::size_t i = 0; i < std::size(columns); ++i) {
      SCOPED_TRACE(stringValue(columns[i].variant));
      for (std::uint32_t const format : {textFormat, jsonFormat})
         EXPECT_EQ(
               rendered(format, [&](auto* renderer) { columns[i].display(*state.command, renderer, state.subTunnel); }),
               composed<SubTunnelView>(format, rows, i, true, *state.command, state.subTunnel, columns[i].variant));
   }
}

TEST(SubTunnelComposition, cells) {
   expectSameCells<SubTunnelSection, SubTunnelView>(subTunnelSections(), rows);
}

TEST(SubTunnelComposition, everyRowCanBeSeen) {
   RichState state;
   expectDistinctRows<SubTunnelView>(rows, *state.command, state.subTunnel, {}, {});
}

TEST(SubTunnelComposition, views) {
   RichState state;
   expectViews(state);
}

TEST(SubTunnelComposition, viewsWithMissingRecords) {
   RichState state;
   state.subTunnel.subTunnelIndexMap = nullptr;
   expectViews(state);
   state.subTunnel.subTunnelStatus = nullptr;
   state.subTunnel.activeMbbTunnelConfigId = {};
   state.subTunnel.pendingMbbTunnelConfigId = {};
   state.subTunnel.lspGroupId = {};
   state.subTunnel.mbb = false;
   expectViews(state);
   state.subTunnel.autoBwStats = nullptr;
   state.subTunnel.bwSamplingStatusColl = nullptr;
   expectViews(state);
}

// As the listing of the tunnel reaches it.
TEST(SubTunnelComposition, listingReachesEachView) {
   RichState state;
   for (std::size_t i = 0; i < std::size(columns); ++i) {
      SCOPED_TRACE(stringValue(columns[i].variant));
      auto const answer = [&](std::uint32_t format) {
         return rendered(format, [&](auto* renderer) {
            state.command->renderSubTunnel(renderer, state.subTunnel.tunnelSpecId, state.subTunnel.subTunnelConfigId,
                                           state.subTunnel.autoBwStats, state.subTunnel.bwSamplingStatusColl,
                                           state.subTunnel.subTunnelIndexMap, columns[i].variant);
         });
      };
      auto const expected = [&](std::uint32_t format) {
         return composed<SubTunnelView>(format, rows, i, true, *state.command, state.subTunnel, columns[i].variant);
      };
      EXPECT_EQ(answer(textFormat), expected(textFormat));
      EXPECT_EQ(answer(jsonFormat), R"("2":{)" + expected(jsonFormat) + "}");
   }
}

} // namespace
