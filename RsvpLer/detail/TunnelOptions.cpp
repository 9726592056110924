#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/detail/TunnelAttributes.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/Lines.h"
#include "RsvpLer/text/EnumText.h"

// How a tunnel is signalled, and which protocols use it.
//
//          Setup priority: 7                                    "setupPriority":7,
//          Hold priority: 0                                     "holdPriority":0,
//       Fast re-route mode: link protection                     "frrMode":"linkProtection",
//       Periodic optimization: enabled, interval: 60 seconds    "optimizationInterval":60,
//       LDP tunneling: enabled, UCMP enabled                    "ldpTunneling":true,"ldpTunnelingUcmp":true,
//       IGP shortcut: disabled                                  "igpShortcut":false

namespace Rsvp::Cli {

namespace {

using scrivo::addLine;

char const* enabledOrDisabled(bool enabled) {
   return enabled ? "enabled" : "disabled";
}

} // namespace

void renderTunnelPriorities(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config,
                            bool showText) {
   RSVP_LER_TRACE();
   std::uint8_t const setupPriority = config ? config->setupPriority : std::uint8_t{0};
   std::uint8_t const holdPriority = config ? config->holdPriority : std::uint8_t{0};
   addLine(renderer, showText, "      Setup priority: ", setupPriority);
   addLine(renderer, showText, "      Hold priority: ", holdPriority);
   renderer->addJsonKeyValuePair("setupPriority", setupPriority);
   renderer->addJsonKeyValuePair("holdPriority", holdPriority);
}

void ShowRsvpLerTunnel::renderTunnelMtuInformation(scrivo::RendererV2*,
                                                   RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                                                   RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId,
                                                   bool) const {
   RSVP_LER_TRACE(activeMbbTunnelConfigId, pendingMbbTunnelConfigId);
}

void renderTunnelFrrMode(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config, bool showText) {
   RSVP_LER_TRACE();
   FrrMode const mode = config ? config->frrMode : FrrMode::none;
   addLine(renderer, showText, "   Fast re-route mode: ", frrModeToString(mode, false));
   renderer->addJsonKeyValuePair("frrMode", frrModeToString(mode, true));
}

void renderTunnelOptimization(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config,
                              bool showText) {
   RSVP_LER_TRACE();
   std::uint32_t const interval = config ? config->optimizationInterval : 0;
   renderer->addJsonKeyValuePair("optimizationInterval", interval);
   if (!showText)
      return;
   if (interval == 0) {
      renderer->addFrill("   Periodic optimization: disabled");
   } else {
      renderer->addText("   Periodic optimization: enabled, interval: ", interval);
      renderer->addFrill(" seconds");
   }
   renderer->eol();
}

void renderTunnelLdpTunneling(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config,
                              bool showText) {
   RSVP_LER_TRACE();
   bool const ldpTunneling = config && config->ldpTunneling;
   bool const ucmp = config && config->ldpTunnelingUcmp;
   renderer->addJsonKeyValuePair("ldpTunneling", ldpTunneling);
   renderer->addJsonKeyValuePair("ldpTunnelingUcmp", ucmp);
   if (!showText)
      return;
   renderer->addText("   LDP tunneling: ", enabledOrDisabled(ldpTunneling));
   if (ucmp)
      renderer->addFrill(", UCMP enabled");
   renderer->eol();
}

void renderTunnelIgpShortcut(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config,
                             bool showText) {
   RSVP_LER_TRACE();
   bool const igpShortcut = config && config->igpShortcut;
   addLine(renderer, showText, "   IGP shortcut: ", enabledOrDisabled(igpShortcut));
   renderer->addJsonKeyValuePair("igpShortcut", igpShortcut);
}

} // namespace Rsvp::Cli
