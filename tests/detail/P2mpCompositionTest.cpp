#include "RsvpLer/detail/Bandwidth.h"
#include "RsvpLer/detail/Display.h"
#include "RsvpLer/detail/TunnelAttributes.h"
#include "tests/detail/CompositionCheck.h"

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

using Call = SectionCall<TunnelView>;
using Row = ExpectedRow<TunnelView>;

LspIds lspIds(Call const& c) {
   return getLspIdsForSuperTunnel(c.view.tunnelSpecId, c.command.subTunnelStatusCollTable(),
                                  c.command.lspGroupStatusCollTable(), c.command.lspRequestStatusCollTable());
}

RsvpLerPathSpecId treeSpecId(Call const& c) {
   return c.view.superTunnelConfig ? c.view.superTunnelConfig->primaryPathSpecId : RsvpLerPathSpecId();
}

RsvpSessionType sessionType(Call const& c) {
   return c.view.superTunnelConfig ? c.view.superTunnelConfig->sessionType : RsvpSessionType::p2p;
}

// The columns: P2mp, Detail, Lsp, Summary, History, HistoryDetail.
constexpr Row rows[] = {
      {"renderTunnelNameHeading", "yyy--y",
       [](Call const& c, bool) { renderTunnelNameHeading(c.renderer, c.view.tunnelSpecId); }},
      {"renderTunnelSrc", "TTTFFT",
       [](Call const& c, bool text) { renderTunnelSrc(c.renderer, c.view.superTunnelConfig, text); }},
      {"renderTunnelDst", "FFFFFF",
       [](Call const& c, bool text) { renderTunnelDst(c.renderer, c.view.superTunnelConfig, text); }},
      {"renderTunnelP2mpId", "TTTF-T",
       [](Call const& c, bool text) { renderTunnelP2mpId(c.renderer, c.view.superTunnelStatus, text); }},
      {"renderTunnelConfigSource", "FTFF-T",
       [](Call const& c, bool text) { renderTunnelConfigSource(c.renderer, c.view.tunnelSpecId, text); }},
      {"renderTunnelProfileId", "TTFF-T",
       [](Call const& c, bool text) {
          renderTunnelProfileId(c.renderer, c.view.tunnelSpec, c.view.superTunnelConfig, text);
       }},
      {"renderTunnelColorAndMetric", "TTFFFT",
       [](Call const& c, bool text) {
          renderTunnelColorAndMetric(c.renderer, c.view.superTunnelConfig, c.view.superTunnelStatus, text);
       }},
      {"renderTunnelState", "TTTFFT",
       [](Call const& c, bool text) { renderTunnelState(c.renderer, c.view.superTunnelStatus, c.view.mbb, text); }},
      {"renderTunnelSplitTunnel", "yyyyyy",
       [](Call const& c, bool) { renderTunnelSplitTunnel(c.renderer, c.view.superTunnelConfig); }},
      {"renderTunnelBandwidth", "TTTFFT",
       [](Call const& c, bool text) {
          c.command.renderTunnelBandwidth(c.renderer, c.view.tunnelSpecId, c.view.superTunnelStatus,
                                          c.view.autoBwConfig, c.view.subTunnelStatusColl, text);
       }},
      {"renderTunnelBandwidthDetails", "TTTF-T",
       [](Call const& c, bool text) {
          c.command.renderTunnelBandwidthDetails(c.renderer, c.view.tunnelSpecId, c.view.superTunnelConfig,
                                                 c.view.superTunnelStatus, c.view.autoBwConfig,
                                                 c.view.subTunnelStatusColl, text);
       }},
      {"renderTunnelBandwidthParams", "FTFF-T",
       [](Call const& c, bool text) {
          renderTunnelBandwidthParams(c.renderer, c.view.tunnelSpecId, c.view.autoBwConfig, c.view.autoBwStats,
                                      c.view.bwSamplingStatusColl, text);
       }},
      {"renderTunnelPriorities", "FTFF-T",
       [](Call const& c, bool text) { renderTunnelPriorities(c.renderer, c.view.superTunnelConfig, text); }},
      {"renderTunnelMtuInformation", "FTFF-T",
       [](Call const& c, bool text) {
          c.command.renderTunnelMtuInformation(c.renderer, c.view.activeMbbTunnelConfigId,
                                               c.view.pendingMbbTunnelConfigId, text);
       }},
      {"renderTunnelFrrMode", "FTFF-T",
       [](Call const& c, bool text) { renderTunnelFrrMode(c.renderer, c.view.superTunnelConfig, text); }},
      {"renderTunnelOptimization", "FTFF-T",
       [](Call const& c, bool text) { renderTunnelOptimization(c.renderer, c.view.superTunnelConfig, text); }},
      {"renderTunnelIndex", "FTFF-T",
       [](Call const& c, bool text) {
          renderTunnelIndex(c.renderer, c.view.tunnelSpecId, c.view.tunnelIndexMap, text);
       }},
      {"renderTunnelLspCount", "TTTFFT",
       [](Call const& c, bool text) {
          renderTunnelLspCount(c.renderer, static_cast<std::uint32_t>(lspIds(c).size()), text);
       }},
      {"renderLspIds", "FTFF-T",
       [](Call const& c, bool text) {
          LspIds ids = lspIds(c);
          renderLspIds(c.renderer, ids, text);
       }},
      {"renderP2mpActivePathType", "yyyyyy", [](Call const& c, bool) { renderP2mpActivePathType(c.renderer); }},
      {"renderP2mpLspGroup", "T-----",
       [](Call const& c, bool text) {
          c.command.renderP2mpLspGroup(c.renderer, treeSpecId(c), c.view.activeMbbTunnelStatus,
                                       c.view.pendingMbbTunnelStatus, text);
       }},
      {"renderDetailedP2mpLspGroup", "-TFF-T",
       [](Call const& c, bool text) {
          c.command.renderDetailedP2mpLspGroup(c.renderer, treeSpecId(c), c.view.activeMbbTunnelStatus,
                                               c.view.pendingMbbTunnelStatus, text);
       }},
      {"renderP2mpLsps", "--y---",
       [](Call const& c, bool) {
          c.command.renderP2mpLsps(c.renderer, c.view.activeMbbTunnelConfigId, c.view.pendingMbbTunnelConfigId);
       }},
      {"renderP2mpTunnelSummary", "---y--",
       [](Call const& c, bool) {
          c.command.renderP2mpTunnelSummary(c.renderer, c.view.tunnelSpecId, c.view.superTunnelStatus,
                                            c.view.tunnelIndexMap, static_cast<std::uint32_t>(lspIds(c).size()),
                                            c.view.mbb);
       }},
      {"renderTunnelHistory", "----yy",
       [](Call const& c, bool) {
          bool const plain = c.variant == ShowTunnelVariant::showTunnelHistoryP2mp;
          c.command.renderTunnelHistory(c.renderer, c.view.tunnelSpecId, c.view.tunnelIndexMap, sessionType(c),
                                        plain ? "Tunnel tree1" : "   History:", plain ? "" : "      ");
       }},
};

struct Column {
   ShowTunnelVariant variant;
   void (*display)(ShowRsvpLerTunnel&, scrivo::RendererV2*, TunnelView const&);
   bool summary, lspDetails, detail, history; // the flags of the command
};

constexpr Column columns[] = {
      {ShowTunnelVariant::showTunnelP2mp, renderShowTunnelP2mp, false, false, false, false},
      {ShowTunnelVariant::showTunnelDetailP2mp, renderShowTunnelDetailP2mp, false, false, true, false},
      {ShowTunnelVariant::showTunnelLspP2mp, renderShowTunnelLspP2mp, false, true, false, false},
      {ShowTunnelVariant::showTunnelSummaryP2mp, renderShowTunnelSummaryP2mp, true, false, false, false},
      {ShowTunnelVariant::showTunnelHistoryP2mp, renderShowTunnelHistoryP2mp, false, false, false, true},
      {ShowTunnelVariant::showTunnelHistoryDetailP2mp, renderShowTunnelHistoryDetailP2mp, false, false, true, true},
};

void expectViews(RichState& state) {
   for (std::size_t i = 0; i < std::size(columns); ++i) {
      SCOPED_TRACE(stringValue(columns[i].variant));
      for (std::uint32_t const format : {textFormat, jsonFormat})
         EXPECT_EQ(rendered(format, [&](auto* renderer) { columns[i].display(*state.command, renderer, state.p2mp); }),
                   composed<TunnelView>(format, rows, i, true, *state.command, state.p2mp, columns[i].variant));
   }
}

TEST(P2mpComposition, cells) {
   expectSameCells<P2mpSection, TunnelView>(p2mpSections(), rows);
}

TEST(P2mpComposition, everyRowCanBeSeen) {
   RichState state;
   expectDistinctRows<TunnelView>(rows, *state.command, state.p2mp, {"renderTunnelMtuInformation"},
                                  {"renderTunnelBandwidth", "renderTunnelDst"});
}

TEST(P2mpComposition, views) {
   RichState state;
   expectViews(state);
}

TEST(P2mpComposition, viewsWithMissingRecords) {
   RichState state;
   state.p2mp.pendingMbbTunnelStatus = nullptr;
   expectViews(state);
   state.p2mp.superTunnelStatus = nullptr;
   expectViews(state);
   state.p2mp.superTunnelConfig = nullptr;
   state.p2mp.activeMbbTunnelStatus = nullptr;
   state.p2mp.subTunnelStatusColl = nullptr;
   state.p2mp.tunnelSpec = nullptr;
   expectViews(state);
}

// A split changes nothing: P2MP tunnels have no sub-tunnel listing.
TEST(P2mpComposition, viewsOfASplitTunnel) {
   RichState state;
   state.router.superTunnelStatus(tunnelId("tree1"), [](RsvpLerSuperTunnelStatus& status) { status.split = true; });
   state.p2mp.superTunnelStatus = state.command->superTunnelStatusColl()->superTunnelStatus(tunnelId("tree1"));
   expectViews(state);
}

TEST(P2mpComposition, commandReachesEachView) {
   RichState state;
   for (std::size_t i = 0; i < std::size(columns); ++i) {
      Column const& column = columns[i];
      SCOPED_TRACE(stringValue(column.variant));
      auto const answer = [&](std::uint32_t format) {
         return rendered(format, [&](auto* renderer) {
            state.command->renderTunnel(renderer, tunnelId("tree1"), column.summary, column.lspDetails, column.detail,
                                        column.history, false);
         });
      };
      auto const expected = [&](std::uint32_t format) {
         return composed<TunnelView>(format, rows, i, true, *state.command, state.p2mp, column.variant);
      };
      EXPECT_EQ(answer(textFormat), expected(textFormat));
      EXPECT_EQ(answer(jsonFormat), R"("tree1":{)" + expected(jsonFormat) + "}");
   }
}

} // namespace
