#include "RsvpLer/detail/TunnelAttributes.h"
#include "tests/detail/SectionCheck.h"

#include <limits>

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

using Config = RsvpLerSuperTunnelConfig;
using ConfigRow = SectionRow<Config>;

void setSplit(Config& config) {
   config.splitBwEnabled = true;
   config.minBandwidth = 125000;
   config.maxBandwidth = 1250000;
   config.reductionDelay = Brindle::Duration(300.9);
   config.subTunnelMinimum = 1;
   config.subTunnelLimit = 8;
   config.subTunnelInitial = 2;
}

TEST(TunnelSplit, flagIsJsonOnly) {
   ConfigRow const rows[] = {
         {nullptr, "", R"("splitTunnel":false)"},
         {[](Config&) {}, "", R"("splitTunnel":false)"},
         {setSplit, "", R"("splitTunnel":true)"},
   };
   expectRows<Config>([](auto* renderer, auto const& config, bool) { renderTunnelSplitTunnel(renderer, config); },
                      rows);
}

TEST(TunnelSplit, attributes) {
   ConfigRow const rows[] = {
         {nullptr, "", ""},
         {[](Config& config) {
             setSplit(config);
             config.splitBwEnabled = false;
          },
          "", ""},
         // By a quantum: the delay is in JSON alone.
         {[](Config& config) {
             setSplit(config);
             config.quantum = 1;
          },
          "   Split-tunnel: enabled\n"
          "      Quantum: 8 bps\n"
          "      Sub-tunnels minimum: 1\n"
          "      Sub-tunnels limit: 8\n"
          "      Sub-tunnels initial: 2\n",
          R"("splitTunnelParams":{"quantum":8,"subTunnelMinimum":1,"subTunnelLimit":8,"subTunnelInitial":2,)"
          R"("minBandwidth":1000000,"maxBandwidth":10000000,"reductionDelay":300})"},
         // Between two limits.
         {setSplit,
          "   Split-tunnel: enabled\n"
          "      Minimum bandwidth: 1.00 Mbps\n"
          "      Maximum bandwidth: 10.00 Mbps\n"
          "      Sub-tunnels minimum: 1\n"
          "      Sub-tunnels limit: 8\n"
          "      Sub-tunnels initial: 2\n"
          "      Sub-tunnels reduction delay: 5 minutes\n",
          R"("splitTunnelParams":{"quantum":0,"subTunnelMinimum":1,"subTunnelLimit":8,"subTunnelInitial":2,)"
          R"("minBandwidth":1000000,"maxBandwidth":10000000,"reductionDelay":300})"},
         {[](Config& config) { config.splitBwEnabled = true; },
          "   Split-tunnel: enabled\n"
          "      Minimum bandwidth: 0 bps\n"
          "      Maximum bandwidth: 0 bps\n"
          "      Sub-tunnels minimum: 0\n"
          "      Sub-tunnels limit: 0\n"
          "      Sub-tunnels initial: 0\n"
          "      Sub-tunnels reduction delay: 0 seconds\n",
          R"("splitTunnelParams":{"quantum":0,"subTunnelMinimum":0,"subTunnelLimit":0,"subTunnelInitial":0,)"
          R"("minBandwidth":0,"maxBandwidth":0,"reductionDelay":0})"},
         // A quantum that is 0 in bits per second counts as none.
         {[](Config& config) {
             config.splitBwEnabled = true;
             config.quantum = std::uint64_t{1} << 61;
          },
          "   Split-tunnel: enabled\n"
          "      Minimum bandwidth: 0 bps\n"
          "      Maximum bandwidth: 0 bps\n"
          "      Sub-tunnels minimum: 0\n"
          "      Sub-tunnels limit: 0\n"
          "      Sub-tunnels initial: 0\n"
          "      Sub-tunnels reduction delay: 0 seconds\n",
          R"("splitTunnelParams":{"quantum":0,"subTunnelMinimum":0,"subTunnelLimit":0,"subTunnelInitial":0,)"
          R"("minBandwidth":0,"maxBandwidth":0,"reductionDelay":0})"},
   };
   expectRows<Config>(renderTunnelSplitAttrs, rows);
}

TEST(TunnelSplit, reductionDelayIsCutToWholeSeconds) {
   struct Row {
      double seconds;
      std::string_view shown;
      std::string_view member;
   };
   Row const rows[] = {
         {0.999, "0 seconds", "0"},
         {1.5, "1 second", "1"},
         {90061, "1 day 1 hour 1 minute 1 second", "90061"},
         {-5, "0 seconds", "0"},
         {std::numeric_limits<double>::quiet_NaN(), "0 seconds", "0"},
         {1e30, "49710 days 6 hours 28 minutes 15 seconds", "4294967295"},
   };
   for (Row const& row : rows) {
      auto const config = Brindle::makeNode<Config>();
      config->splitBwEnabled = true;
      config->reductionDelay = Brindle::Duration(row.seconds);
      std::string const lines = "   Split-tunnel: enabled\n"
                                "      Minimum bandwidth: 0 bps\n"
                                "      Maximum bandwidth: 0 bps\n"
                                "      Sub-tunnels minimum: 0\n"
                                "      Sub-tunnels limit: 0\n"
                                "      Sub-tunnels initial: 0\n"
                                "      Sub-tunnels reduction delay: " +
                                std::string(row.shown) + "\n";
      std::string const members =
            R"("splitTunnelParams":{"quantum":0,"subTunnelMinimum":0,"subTunnelLimit":0,"subTunnelInitial":0,)"
            R"("minBandwidth":0,"maxBandwidth":0,"reductionDelay":)" +
            std::string(row.member) + "}";
      expectSection([&](auto* renderer, bool showText) { renderTunnelSplitAttrs(renderer, config, showText); }, lines,
                    members);
   }
}

} // namespace
