#pragma once

namespace Tests {

// The names of the variants by their numbers.
inline constexpr char const* variantNames[] = {
      "showTunnelP2p",
      "showTunnelDetailP2p",
      "showTunnelLspP2p",
      "showTunnelSummaryP2p",
      "showTunnelSubTunnelSummaryP2p",
      "showTunnelHistoryP2p",
      "showTunnelHistoryDetailP2p",
      "showTunnelP2mp",
      "showTunnelDetailP2mp",
      "showTunnelLspP2mp",
      "showTunnelSummaryP2mp",
      "showTunnelHistoryP2mp",
      "showTunnelHistoryDetailP2mp",
};

} // namespace Tests
