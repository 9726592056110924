#include "RsvpLer/detail/TunnelAttributes.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/Lines.h"
#include "RsvpLer/text/EnumText.h"

// What a tunnel does now.
//
//       Color: 100, Metric: 20 (from IGP)          "color":100,"metricMode":"dynamic","metric":20,
//       State: up, re-establishing                 "state":"up","mbb":true,
//       LSPs: 2                                    "lspCount":2,
//       Active path: primary                       "activePathType":"primary"

namespace Rsvp::Cli {

namespace {

using scrivo::addLine;

void renderLspCount(scrivo::RendererV2* renderer, std::uint32_t lspCount, bool showText) {
   addLine(renderer, showText, "   LSPs: ", lspCount);
   renderer->addJsonKeyValuePair("lspCount", lspCount);
}

void renderPathType(scrivo::RendererV2* renderer, char const* pathType, bool known, bool showText) {
   addLine(renderer, showText && known, "   Active path: ", pathType);
   renderer->addJsonKeyValuePair("activePathType", pathType);
}

} // namespace

void renderTunnelColorAndMetric(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config,
                                Handle<RsvpLerSuperTunnelStatus> const& status, bool showText) {
   RSVP_LER_TRACE();
   Cask::TristateU32 const color = status ? status->color : Cask::TristateU32();
   bool const dynamic = config && config->metricFromIgp;
   std::uint32_t metric = 0;
   if (dynamic)
      metric = status ? status->igpMetric : 0;
   else if (config)
      metric = config->metric;

   if (color.isSet())
      renderer->addJsonKeyValuePair("color", color.value());
   renderer->addJsonKeyValuePair("metricMode", dynamic ? "dynamic" : "static");
   renderer->addJsonKeyValuePair("metric", metric);
   if (!showText)
      return;
   if (color.isSet())
      renderer->addText("   Color: ", color.value());
   else
      renderer->addText("   Color: ", "-");
   renderer->addText(", Metric: ", metric);
   if (dynamic)
      renderer->addFrill(" (from IGP)");
   renderer->eol();
}

void renderTunnelState(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelStatus> const& status, bool mbb,
                       bool showText) {
   RSVP_LER_TRACE();
   auto const state = status ? status->state : RsvpLerTunnelState::unknown;
   renderTunnelStateCommon(renderer, tunnelStateToString(state), mbb, showText);
}

void renderSubTunnelState(scrivo::RendererV2* renderer, Handle<RsvpLerSubTunnelStatus> const& status, bool mbb,
                          bool showText) {
   RSVP_LER_TRACE();
   auto const state = status ? status->state : RsvpLerTunnelState::unknown;
   renderTunnelStateCommon(renderer, tunnelStateToString(state), mbb, showText);
}

void renderTunnelStateCommon(scrivo::RendererV2* renderer, char const* state, bool mbb, bool showText) {
   RSVP_LER_TRACE();
   renderer->addJsonKeyValuePair("state", state);
   renderer->addJsonKeyValuePair("mbb", mbb);
   if (!showText)
      return;
   renderer->addText("   State: ", state);
   if (mbb)
      renderer->addFrill(", re-establishing");
   renderer->eol();
}

void renderTunnelLspCount(scrivo::RendererV2* renderer, std::uint32_t lspCount, bool showText) {
   RSVP_LER_TRACE();
   renderLspCount(renderer, lspCount, showText);
}

void renderSubTunnelLspCount(scrivo::RendererV2* renderer, std::uint32_t lspCount, bool showText) {
   RSVP_LER_TRACE();
   renderLspCount(renderer, lspCount, showText);
}

void renderActivePathType(scrivo::RendererV2* renderer, RsvpLerLspGroupId const& lspGroupId, bool notSplit,
                          bool showText) {
   RSVP_LER_TRACE(lspGroupId);
   if (notSplit)
      renderSubTunnelActivePathType(renderer, lspGroupId, showText);
   else
      renderPathType(renderer, "split", true, showText);
}

void renderSubTunnelActivePathType(scrivo::RendererV2* renderer, RsvpLerLspGroupId const& lspGroupId, bool showText) {
   RSVP_LER_TRACE(lspGroupId);
   bool const known = !RsvpLerLspGroupId::isEq(lspGroupId, RsvpLerLspGroupId());
   renderPathType(renderer, getSubTunnelActivePathType(lspGroupId), known, showText);
}

void renderP2mpActivePathType(scrivo::RendererV2* renderer) {
   RSVP_LER_TRACE();
   renderer->addJsonKeyValuePair("activePathType", "primary");
}

} // namespace Rsvp::Cli
