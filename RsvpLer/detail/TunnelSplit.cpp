#include "RsvpLer/detail/TunnelAttributes.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/Lines.h"
#include "RsvpLer/text/Rates.h"
#include "RsvpLer/text/RsvpShowUtils.h"
#include "RsvpLer/text/TimeText.h"

// How a tunnel splits its bandwidth over sub-tunnels: by a fixed quantum, or between two limits.
//
//       Split-tunnel: enabled                      "splitTunnel":true,
//          Quantum: 8.00 Mbps                      "splitTunnelParams":{"quantum":8000000,
//          Sub-tunnels minimum: 1                     "subTunnelMinimum":1,
//          Sub-tunnels limit: 8                       "subTunnelLimit":8,
//          Sub-tunnels initial: 2                     "subTunnelInitial":2,"minBandwidth":0,"maxBandwidth":0,
//                                                     "reductionDelay":0}
//
//       Split-tunnel: enabled                      the same members
//          Minimum bandwidth: 1.00 Mbps
//          Maximum bandwidth: 10.00 Mbps
//          Sub-tunnels minimum: 1
//          Sub-tunnels limit: 8
//          Sub-tunnels initial: 2
//          Sub-tunnels reduction delay: 5 minutes

namespace Rsvp::Cli {

namespace {

using scrivo::addLine;

// Bandwidths in bits per second, the delay in seconds.
struct SplitAttrs {
   std::uint64_t quantum;
   std::uint32_t subTunnelMinimum;
   std::uint32_t subTunnelLimit;
   std::uint32_t subTunnelInitial;
   std::uint64_t minBandwidth;
   std::uint64_t maxBandwidth;
   std::uint32_t reductionDelay;
};

SplitAttrs gatherSplitAttrs(RsvpLerSuperTunnelConfig const& config) {
   return {.quantum = bitsPerSecond(config.quantum),
           .subTunnelMinimum = config.subTunnelMinimum,
           .subTunnelLimit = config.subTunnelLimit,
           .subTunnelInitial = config.subTunnelInitial,
           .minBandwidth = bitsPerSecond(config.minBandwidth),
           .maxBandwidth = bitsPerSecond(config.maxBandwidth),
           .reductionDelay = wholeSeconds<std::uint32_t>(config.reductionDelay)};
}

void renderJson(scrivo::RendererV2* renderer, SplitAttrs const& attrs) {
   renderer->startJsonDict("splitTunnelParams");
   renderer->addJsonKeyValuePair("quantum", attrs.quantum);
   renderer->addJsonKeyValuePair("subTunnelMinimum", attrs.subTunnelMinimum);
   renderer->addJsonKeyValuePair("subTunnelLimit", attrs.subTunnelLimit);
   renderer->addJsonKeyValuePair("subTunnelInitial", attrs.subTunnelInitial);
   renderer->addJsonKeyValuePair("minBandwidth", attrs.minBandwidth);
   renderer->addJsonKeyValuePair("maxBandwidth", attrs.maxBandwidth);
   renderer->addJsonKeyValuePair("reductionDelay", attrs.reductionDelay);
   renderer->endJsonDict();
}

void addBandwidthLine(scrivo::RendererV2* renderer, std::string_view prefix, std::uint64_t bandwidth) {
   addLine(renderer, true, prefix, RsvpShowUtils::bandwidthText(bandwidth, false).view());
}

void renderLines(scrivo::RendererV2* renderer, SplitAttrs const& attrs) {
   bool const limits = attrs.quantum == 0;
   addLine(renderer, true, "   Split-tunnel: ", "enabled");
   if (limits) {
      addBandwidthLine(renderer, "      Minimum bandwidth: ", attrs.minBandwidth);
      addBandwidthLine(renderer, "      Maximum bandwidth: ", attrs.maxBandwidth);
   } else {
      addBandwidthLine(renderer, "      Quantum: ", attrs.quantum);
   }
   addLine(renderer, true, "      Sub-tunnels minimum: ", attrs.subTunnelMinimum);
   addLine(renderer, true, "      Sub-tunnels limit: ", attrs.subTunnelLimit);
   addLine(renderer, true, "      Sub-tunnels initial: ", attrs.subTunnelInitial);
   // With a quantum the delay is shown in JSON alone.
   if (limits)
      addLine(renderer, true,
              "      Sub-tunnels reduction delay: ", RsvpShowUtils::intervalText(attrs.reductionDelay).view());
}

} // namespace

void renderTunnelSplitTunnel(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config) {
   RSVP_LER_TRACE();
   renderer->addJsonKeyValuePair("splitTunnel", config && config->splitBwEnabled);
}

void renderTunnelSplitAttrs(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config,
                            bool showText) {
   RSVP_LER_TRACE();
   if (!config || !config->splitBwEnabled)
      return;
   SplitAttrs const attrs = gatherSplitAttrs(*config);
   renderJson(renderer, attrs);
   if (showText)
      renderLines(renderer, attrs);
}

} // namespace Rsvp::Cli
