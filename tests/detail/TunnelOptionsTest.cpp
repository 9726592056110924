#include "RsvpLer/detail/TunnelAttributes.h"
#include "tests/detail/SectionCheck.h"

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

using Config = RsvpLerSuperTunnelConfig;
using ConfigRow = SectionRow<Config>;

TEST(TunnelOptions, priorities) {
   ConfigRow const rows[] = {
         {nullptr, "      Setup priority: 0\n      Hold priority: 0\n", R"("setupPriority":0,"holdPriority":0)"},
         {[](Config& config) {
             config.setupPriority = 7;
             config.holdPriority = 3;
          },
          "      Setup priority: 7\n      Hold priority: 3\n", R"("setupPriority":7,"holdPriority":3)"},
         // Numbers, not characters.
         {[](Config& config) {
             config.setupPriority = 65;
             config.holdPriority = 255;
          },
          "      Setup priority: 65\n      Hold priority: 255\n", R"("setupPriority":65,"holdPriority":255)"},
   };
   expectRows<Config>(renderTunnelPriorities, rows);
}

TEST(TunnelOptions, fastReroute) {
   ConfigRow const rows[] = {
         {nullptr, "   Fast re-route mode: none\n", R"("frrMode":"none")"},
         {[](Config&) {}, "   Fast re-route mode: none\n", R"("frrMode":"none")"},
         {[](Config& config) { config.frrMode = FrrMode::linkProtection; }, "   Fast re-route mode: link protection\n",
          R"("frrMode":"linkProtection")"},
         {[](Config& config) { config.frrMode = FrrMode::nodeProtection; }, "   Fast re-route mode: node protection\n",
          R"("frrMode":"nodeProtection")"},
   };
   expectRows<Config>(renderTunnelFrrMode, rows);
}

TEST(TunnelOptions, optimization) {
   ConfigRow const rows[] = {
         {nullptr, "   Periodic optimization: disabled\n", R"("optimizationInterval":0)"},
         {[](Config&) {}, "   Periodic optimization: disabled\n", R"("optimizationInterval":0)"},
         {[](Config& config) { config.optimizationInterval = 1; },
          "   Periodic optimization: enabled, interval: 1 seconds\n", R"("optimizationInterval":1)"},
         {[](Config& config) { config.optimizationInterval = 3600; },
          "   Periodic optimization: enabled, interval: 3600 seconds\n", R"("optimizationInterval":3600)"},
   };
   expectRows<Config>(renderTunnelOptimization, rows);
}

TEST(TunnelOptions, ldpTunneling) {
   ConfigRow const rows[] = {
         {nullptr, "   LDP tunneling: disabled\n", R"("ldpTunneling":false,"ldpTunnelingUcmp":false)"},
         {[](Config& config) { config.ldpTunneling = true; }, "   LDP tunneling: enabled\n",
          R"("ldpTunneling":true,"ldpTunnelingUcmp":false)"},
         {[](Config& config) { config.ldpTunnelingUcmp = true; }, "   LDP tunneling: disabled, UCMP enabled\n",
          R"("ldpTunneling":false,"ldpTunnelingUcmp":true)"},
         {[](Config& config) {
             config.ldpTunneling = true;
             config.ldpTunnelingUcmp = true;
          },
          "   LDP tunneling: enabled, UCMP enabled\n", R"("ldpTunneling":true,"ldpTunnelingUcmp":true)"},
   };
   expectRows<Config>(renderTunnelLdpTunneling, rows);
}

TEST(TunnelOptions, igpShortcut) {
   ConfigRow const rows[] = {
         {nullptr, "   IGP shortcut: disabled\n", R"("igpShortcut":false)"},
         {[](Config&) {}, "   IGP shortcut: disabled\n", R"("igpShortcut":false)"},
         {[](Config& config) { config.igpShortcut = true; }, "   IGP shortcut: enabled\n", R"("igpShortcut":true)"},
   };
   expectRows<Config>(renderTunnelIgpShortcut, rows);
}

TEST(TunnelOptions, mtuHasNoLine) {
   Router router;
   auto const command = router.tunnelCommand();
   expectSection(
         [&](auto* renderer, bool showText) {
            command->renderTunnelMtuInformation(renderer, mbbId("tun1"), mbbId("tun1", 2), showText);
         },
         "", "");
}

} // namespace
