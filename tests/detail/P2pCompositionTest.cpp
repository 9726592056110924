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

bool isNotSplit(TunnelView const& view) {
   return !view.superTunnelStatus || !view.superTunnelStatus->split;
}

LspIds lspIds(Call const& c) {
   return getLspIdsForSuperTunnel(c.view.tunnelSpecId, c.command.subTunnelStatusCollTable(),
                                  c.command.lspGroupStatusCollTable(), c.command.lspRequestStatusCollTable());
}

RsvpSessionType sessionType(Call const& c) {
   return c.view.superTunnelConfig ? c.view.superTunnelConfig->sessionType : RsvpSessionType::p2p;
}

// The columns: P2p, Detail, Lsp, Summary, SubTunnelSummary, History, HistoryDetail.
constexpr Row rows[] = {
      {"renderTunnelNameHeading", "yyy---y",
       [](Call const& c, bool) { renderTunnelNameHeading(c.renderer, c.view.tunnelSpecId); }},
      {"renderTunnelSrc", "TTTFFFT",
       [](Call const& c, bool text) { renderTunnelSrc(c.renderer, c.view.superTunnelConfig, text); }},
      {"renderTunnelDst", "TTTFFFT",
       [](Call const& c, bool text) { renderTunnelDst(c.renderer, c.view.superTunnelConfig, text); }},
      {"renderTunnelConfigSource", "FTFFF-T",
       [](Call const& c, bool text) { renderTunnelConfigSource(c.renderer, c.view.tunnelSpecId, text); }},
      {"renderTunnelProfileId", "TTTFF-T",
       [](Call const& c, bool text) {
          renderTunnelProfileId(c.renderer, c.view.tunnelSpec, c.view.superTunnelConfig, text);
       }},
      {"renderTunnelTeps", "FTFFF-T",
       [](Call const& c, bool text) { renderTunnelTeps(c.renderer, c.view.superTunnelConfig, text); }},
      {"renderTunnelColorAndMetric", "TTTFFFT",
       [](Call const& c, bool text) {
          renderTunnelColorAndMetric(c.renderer, c.view.superTunnelConfig, c.view.superTunnelStatus, text);
       }},
      {"renderTunnelState", "TTTFFFT",
       [](Call const& c, bool text) { renderTunnelState(c.renderer, c.view.superTunnelStatus, c.view.mbb, text); }},
      {"renderTunnelSplitTunnel", "yyyyyyy",
       [](Call const& c, bool) { renderTunnelSplitTunnel(c.renderer, c.view.superTunnelConfig); }},
      {"renderTunnelSplitAttrs", "TTTFF-T",
       [](Call const& c, bool text) { renderTunnelSplitAttrs(c.renderer, c.view.superTunnelConfig, text); }},
      {"renderTunnelBandwidth", "TTTFFFT",
       [](Call const& c, bool text) {
          c.command.renderTunnelBandwidth(c.renderer, c.view.tunnelSpecId, c.view.superTunnelStatus,
                                          c.view.autoBwConfig, c.view.subTunnelStatusColl, text);
       }},
      {"renderTunnelBandwidthDetails", "TTTFF-T",
       [](Call const& c, bool text) {
          c.command.renderTunnelBandwidthDetails(c.renderer, c.view.tunnelSpecId, c.view.superTunnelConfig,
                                                 c.view.superTunnelStatus, c.view.autoBwConfig,
                                                 c.view.subTunnelStatusColl, text);
       }},
      {"renderTunnelBandwidthParams", "FTFFF-T",
       [](Call const& c, bool text) {
          renderTunnelBandwidthParams(c.renderer, c.view.tunnelSpecId, c.view.autoBwConfig, c.view.autoBwStats,
                                      c.view.bwSamplingStatusColl, text);
       }},
      {"renderTunnelPriorities", "FTFFF-T",
       [](Call const& c, bool text) { renderTunnelPriorities(c.renderer, c.view.superTunnelConfig, text); }},
      {"renderTunnelMtuInformation", "FTFFF-T",
       [](Call const& c, bool text) {
          c.command.renderTunnelMtuInformation(c.renderer, c.view.activeMbbTunnelConfigId,
                                               c.view.pendingMbbTunnelConfigId, text);
       }},
      {"renderTunnelFrrMode", "FTFFF-T",
       [](Call const& c, bool text) { renderTunnelFrrMode(c.renderer, c.view.superTunnelConfig, text); }},
      {"renderTunnelOptimization", "FTFFF-T",
       [](Call const& c, bool text) { renderTunnelOptimization(c.renderer, c.view.superTunnelConfig, text); }},
      {"renderTunnelSessionCliId", "TTTFF-T",
       [](Call const& c, bool text) { renderTunnelSessionCliId(c.renderer, c.view.subTunnelStatus, text); }},
      {"renderTunnelIndex", "FTFFF-T",
       [](Call const& c, bool text) {
          renderTunnelIndex(c.renderer, c.view.tunnelSpecId, c.view.tunnelIndexMap, text);
       }},
      {"renderTunnelLspCount", "TTTFFFT",
       [](Call const& c, bool text) {
          renderTunnelLspCount(c.renderer, static_cast<std::uint32_t>(lspIds(c).size()), text);
       }},
      {"renderLspIds", "FTFFF-T",
       [](Call const& c, bool text) {
          LspIds ids = lspIds(c);
          renderLspIds(c.renderer, ids, text);
       },
       true},
      {"renderTunnelLdpTunneling", "FTFFF-T",
       [](Call const& c, bool text) { renderTunnelLdpTunneling(c.renderer, c.view.superTunnelConfig, text); }},
      {"renderTunnelIgpShortcut", "FTFFF-T",
       [](Call const& c, bool text) { renderTunnelIgpShortcut(c.renderer, c.view.superTunnelConfig, text); }},
      {"renderActivePathType", "TTTFFFT",
       [](Call const& c, bool text) { renderActivePathType(c.renderer, c.view.lspGroupId, isNotSplit(c.view), text); }},
      {"renderPaths", "y------",
       [](Call const& c, bool) {
          c.command.renderPaths(c.renderer, c.view.activeMbbTunnelConfigId, c.view.pendingMbbTunnelConfigId);
       },
       true},
      {"renderDetailedPaths", "-TFFF-T",
       [](Call const& c, bool text) {
          c.command.renderDetailedPaths(c.renderer, c.view.activeMbbTunnelConfigId, c.view.pendingMbbTunnelConfigId,
                                        text);
       },
       true},
      {"renderLsps", "--y----",
       [](Call const& c, bool) {
          c.command.renderLsps(c.renderer, c.view.activeMbbTunnelConfigId, c.view.pendingMbbTunnelConfigId);
       },
       true},
      {"renderP2pTunnelSummary", "---y---",
       [](Call const& c, bool) {
          c.command.renderP2pTunnelSummary(c.renderer, c.view.tunnelSpecId, c.view.superTunnelConfig,
                                           c.view.superTunnelStatus, c.view.tunnelIndexMap, c.view.lspGroupId,
                                           static_cast<std::uint32_t>(lspIds(c).size()), isNotSplit(c.view),
                                           c.view.mbb);
       }},
      {"renderTunnelHistory", "-----yy",
       [](Call const& c, bool) {
          bool const plain = c.variant == ShowTunnelVariant::showTunnelHistoryP2p;
          c.command.renderTunnelHistory(c.renderer, c.view.tunnelSpecId, c.view.tunnelIndexMap, sessionType(c),
                                        plain ? "Tunnel tun1" : "   History:", plain ? "" : "      ");
       }},
      {"renderSubTunnels", "yyyyyyy",
       [](Call const& c, bool) {
          c.renderer->startJsonDict("subTunnels");
          c.command.renderSubTunnelsForTunnel(c.renderer, c.view.tunnelSpecId, c.view.superTunnelStatus,
                                              c.view.subTunnelStatusColl, c.variant);
          c.renderer->endJsonDict();
       }},
};

struct Column {
   ShowTunnelVariant variant;
   void (*display)(ShowRsvpLerTunnel&, scrivo::RendererV2*, TunnelView const&);
   bool summary, lspDetails, detail, history, subTunnel; // the flags of the command
};

constexpr Column columns[] = {
      {ShowTunnelVariant::showTunnelP2p, renderShowTunnelP2p, false, false, false, false, false},
      {ShowTunnelVariant::showTunnelDetailP2p, renderShowTunnelDetailP2p, false, false, true, false, false},
      {ShowTunnelVariant::showTunnelLspP2p, renderShowTunnelLspP2p, false, true, false, false, false},
      {ShowTunnelVariant::showTunnelSummaryP2p, renderShowTunnelSummaryP2p, true, false, false, false, false},
      {ShowTunnelVariant::showTunnelSubTunnelSummaryP2p, renderShowTunnelSubTunnelSummaryP2p, true, false, false, false,
       true},
      {ShowTunnelVariant::showTunnelHistoryP2p, renderShowTunnelHistoryP2p, false, false, false, true, false},
      {ShowTunnelVariant::showTunnelHistoryDetailP2p, renderShowTunnelHistoryDetailP2p, false, false, true, true,
       false},
};

void expectViews(RichState& state) {
   bool const notSplit = isNotSplit(state.p2p);
   for (std::size_t i = 0; i < std::size(columns); ++i) {
      SCOPED_TRACE(stringValue(columns[i].variant));
      for (std::uint32_t const format : {textFormat, jsonFormat})
         EXPECT_EQ(rendered(format, [&](auto* renderer) { columns[i].display(*state.command, renderer, state.p2p); }),
                   composed<TunnelView>(format, rows, i, notSplit, *state.command, state.p2p, columns[i].variant));
   }
}

TEST(P2pComposition, cells) {
   expectSameCells<P2pSection, TunnelView>(p2pSections(), rows);
}

TEST(P2pComposition, everyRowCanBeSeen) {
   RichState state;
   expectDistinctRows<TunnelView>(rows, *state.command, state.p2p, {"renderTunnelMtuInformation"},
                                  {"renderTunnelBandwidth"});
}

TEST(P2pComposition, views) {
   RichState state;
   expectViews(state);
}

TEST(P2pComposition, viewsOfASplitTunnel) {
   RichState state;
   state.router.superTunnelStatus(tunnelId("tun1"), [](RsvpLerSuperTunnelStatus& status) { status.split = true; });
   state.p2p.superTunnelStatus = state.command->superTunnelStatusColl()->superTunnelStatus(tunnelId("tun1"));
   expectViews(state);
}

TEST(P2pComposition, viewsWithoutStatusOrConfiguration) {
   RichState state;
   state.p2p.superTunnelStatus = nullptr;
   expectViews(state);
   state.p2p.superTunnelConfig = nullptr;
   expectViews(state);
   state.p2p.subTunnelStatusColl = nullptr;
   state.p2p.subTunnelStatus = nullptr;
   state.p2p.tunnelSpec = nullptr;
   expectViews(state);
}

// From the flags of a command on, with the records gathered by the command.
TEST(P2pComposition, commandReachesEachView) {
   RichState state;
   for (std::size_t i = 0; i < std::size(columns); ++i) {
      Column const& column = columns[i];
      SCOPED_TRACE(stringValue(column.variant));
      bool const split = column.subTunnel; // that flag shows split tunnels only
      state.router.superTunnelStatus(tunnelId("tun1"), [&](RsvpLerSuperTunnelStatus& status) { status.split = split; });
      state.p2p.superTunnelStatus = state.command->superTunnelStatusColl()->superTunnelStatus(tunnelId("tun1"));
      auto const answer = [&](std::uint32_t format) {
         return rendered(format, [&](auto* renderer) {
            state.command->renderTunnel(renderer, tunnelId("tun1"), column.summary, column.lspDetails, column.detail,
                                        column.history, column.subTunnel);
         });
      };
      auto const expected = [&](std::uint32_t format) {
         return composed<TunnelView>(format, rows, i, !split, *state.command, state.p2p, column.variant);
      };
      EXPECT_EQ(answer(textFormat), expected(textFormat));
      EXPECT_EQ(answer(jsonFormat), R"("tun1":{)" + expected(jsonFormat) + "}");
   }
}

} // namespace
