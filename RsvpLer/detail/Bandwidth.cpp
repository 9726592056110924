#include "RsvpLer/detail/Bandwidth.h"

#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/Lines.h"
#include "RsvpLer/text/Rates.h"
#include "RsvpLer/text/RsvpShowUtils.h"
#include "RsvpLer/text/TimeText.h"

// The bandwidth of a tunnel or sub-tunnel, and its automatic bandwidth.
//
//                                                           "currentBandwidth":1000000,
//                                                           "requestedBandwidth":2000000,"autoBandwidth":true,
//       Bandwidth: 1.00 Mbps, updating to 2.00 Mbps, mode auto
//                                                           "signalBandwidth":true,
//          Adjustment period: 300 seconds                   "autoBandwidthParams":{"adjustmentPeriod":300.000000,
//          Next adjustment: in 100 seconds                     "nextAdjustmentTime":1700000100.000000,
//          Minimum bandwidth: 100.00 Kbps                      "minBandwidth":100000,
//          Maximum bandwidth: 10.00 Mbps                       "maxBandwidth":10000000,
//          Last sampled bandwidth: 1.00 Mbps                   "lastSampledBandwidth":1000000}

namespace Rsvp::Cli {

namespace {

using OptionalMoment = Vane::Optional<Brindle::Duration>;

void addBandwidth(scrivo::RendererV2* renderer, std::string_view prefix, std::uint64_t bandwidth) {
   renderer->addText(prefix, RsvpShowUtils::bandwidthText(bandwidth, false).view());
}

void addBandwidthLine(scrivo::RendererV2* renderer, bool showText, std::string_view prefix, std::uint64_t bandwidth) {
   scrivo::addLine(renderer, showText, prefix, RsvpShowUtils::bandwidthText(bandwidth, false).view());
}

std::uint64_t currentBandwidth(Handle<RsvpLerSuperTunnelStatus> const& status) {
   return status ? bitsPerSecond(status->currentBandwidth) : 0;
}

Handle<RsvpLerBwSamplingStats> samplingStats(Handle<RsvpLerAutoBwStats> const& autoBwStats,
                                             RsvpLerTunnelSpecId const& tunnelSpecId) {
   return autoBwStats ? autoBwStats->bwSamplingStat(tunnelSpecId) : nullptr;
}

Handle<RsvpLerBwSamplingStatus> samplingStatus(Handle<RsvpLerBwSamplingStatusColl> const& bwSamplingStatusColl,
                                               RsvpLerTunnelSpecId const& tunnelSpecId) {
   return bwSamplingStatusColl ? bwSamplingStatusColl->bwSamplingStatus(tunnelSpecId) : nullptr;
}

// The member is left out when no adjustment is planned.
void renderNextAdjustment(scrivo::RendererV2* renderer, OptionalMoment const& moment, bool showText) {
   if (moment.hasValue())
      renderer->addJsonKeyValuePair("nextAdjustmentTime", RsvpShowUtils::toUtcTime(moment.value()));
   if (!showText)
      return;
   if (moment.hasValue()) {
      renderer->addText("      Next adjustment: in ", static_cast<std::uint64_t>(timeDelta(moment.value())));
      renderer->addFrill(" seconds");
   } else {
      renderer->addText("      Next adjustment: ", "-");
   }
   renderer->eol();
}

} // namespace

std::uint64_t
ShowRsvpLerTunnel::getRequestedBwBpsForSuperTunnel(Handle<RsvpLerSubTunnelStatusColl> const& subTunnelColl) const {
   RSVP_LER_TRACE();
   std::uint64_t requested = 0;
   if (!subTunnelColl)
      return requested;
   subTunnelColl->walk([&](RsvpLerSubTunnelConfigId const&, Handle<RsvpLerSubTunnelStatus> const& subTunnel) {
      auto const active = getMbbTunnelConfig(subTunnel->activeMbbTunnelConfigId);
      auto const pending = getMbbTunnelConfig(subTunnel->pendingMbbTunnelConfigId);
      if (pending)
         requested += pending->requestedBandwidth;
      else if (active)
         requested += active->requestedBandwidth;
   });
   return bitsPerSecond(requested);
}

void ShowRsvpLerTunnel::renderTunnelBandwidth(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                                              Handle<RsvpLerSuperTunnelStatus> const& superTunnelStatus,
                                              Handle<RsvpLerAutoBwConfig> const& autoBwConfigTable,
                                              Handle<RsvpLerSubTunnelStatusColl> const& subTunnelStatusColl,
                                              bool) const {
   RSVP_LER_TRACE(tunnelSpecId);
   if (!renderer->isJson())
      return; // spares a text view the walk over the sub-tunnels
   renderer->addJsonKeyValuePair("currentBandwidth", currentBandwidth(superTunnelStatus));
   renderer->addJsonKeyValuePair("requestedBandwidth", getRequestedBwBpsForSuperTunnel(subTunnelStatusColl));
   renderer->addJsonKeyValuePair("autoBandwidth", findAutoBwConfig(autoBwConfigTable, tunnelSpecId).enabled);
}

void ShowRsvpLerTunnel::renderTunnelBandwidthDetails(scrivo::RendererV2* renderer,
                                                     RsvpLerTunnelSpecId const& tunnelSpecId,
                                                     Handle<RsvpLerSuperTunnelConfig> const& superTunnelConfig,
                                                     Handle<RsvpLerSuperTunnelStatus> const& superTunnelStatus,
                                                     Handle<RsvpLerAutoBwConfig> const& autoBwConfigTable,
                                                     Handle<RsvpLerSubTunnelStatusColl> const& subTunnelStatusColl,
                                                     bool showText) const {
   RSVP_LER_TRACE(tunnelSpecId);
   bool const signal = superTunnelConfig && superTunnelConfig->signalBandwidth;
   renderer->addJsonKeyValuePair("signalBandwidth", signal);
   if (!showText || !renderer->isText())
      return; // likewise
   char const* const mode = findAutoBwConfig(autoBwConfigTable, tunnelSpecId).enabled ? "auto" : "explicit";
   if (signal) {
      std::uint64_t const current = currentBandwidth(superTunnelStatus);
      std::uint64_t const requested = getRequestedBwBpsForSuperTunnel(subTunnelStatusColl);
      addBandwidth(renderer, "   Bandwidth: ", current);
      if (requested != current)
         addBandwidth(renderer, ", updating to ", requested);
      renderer->addText(", mode ", mode);
   } else {
      std::uint64_t const configured = superTunnelConfig ? superTunnelConfig->configuredBandwidth : 0;
      addBandwidth(renderer, "   Bandwidth: ", bitsPerSecond(configured));
      renderer->addText(", mode ", mode);
      renderer->addFrill(", signaling disabled");
   }
   renderer->eol();
}

void renderTunnelBandwidthParams(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                                 Handle<RsvpLerAutoBwConfig> const& autoBwConfig,
                                 Handle<RsvpLerAutoBwStats> const& autoBwStats,
                                 Handle<RsvpLerBwSamplingStatusColl> const& bwSamplingStatusColl, bool showText) {
   RSVP_LER_TRACE(tunnelSpecId);
   RsvpLerTunnelAutoBwConfig const config = findAutoBwConfig(autoBwConfig, tunnelSpecId);
   if (!config.enabled)
      return;
   std::uint64_t const minBandwidth = bitsPerSecond(config.minBandwidth);
   std::uint64_t const maxBandwidth = bitsPerSecond(config.maxBandwidth);
   auto const status = samplingStatus(bwSamplingStatusColl, tunnelSpecId);
   std::uint64_t const lastSampled = status ? bitsPerSecond(status->lastSampledBandwidth) : 0;
   auto const stats = samplingStats(autoBwStats, tunnelSpecId);
   OptionalMoment const nextAdjustment = stats ? stats->nextAdjustmentTime : OptionalMoment();

   renderer->startJsonDict("autoBandwidthParams");
   if (showText) {
      renderer->addText("      Adjustment period: ", wholeSeconds<std::uint64_t>(config.adjustmentPeriod));
      renderer->addFrill(" seconds");
      renderer->eol();
   }
   renderer->addJsonKeyValuePair("adjustmentPeriod", config.adjustmentPeriod);
   renderNextAdjustment(renderer, nextAdjustment, showText);
   addBandwidthLine(renderer, showText, "      Minimum bandwidth: ", minBandwidth);
   renderer->addJsonKeyValuePair("minBandwidth", minBandwidth);
   addBandwidthLine(renderer, showText, "      Maximum bandwidth: ", maxBandwidth);
   renderer->addJsonKeyValuePair("maxBandwidth", maxBandwidth);
   addBandwidthLine(renderer, showText, "      Last sampled bandwidth: ", lastSampled);
   renderer->addJsonKeyValuePair("lastSampledBandwidth", lastSampled);
   renderer->endJsonDict();
}

void renderSubTunnelBandwidth(scrivo::RendererV2* renderer, Handle<RsvpLerSubTunnelStatus> const& subTunnelStatus,
                              bool showText) {
   RSVP_LER_TRACE();
   std::uint64_t const bandwidth = subTunnelStatus ? bitsPerSecond(subTunnelStatus->currentBandwidth) : 0;
   addBandwidthLine(renderer, showText, "   Bandwidth: ", bandwidth);
   renderer->addJsonKeyValuePair("currentBandwidth", bandwidth);
}

void ShowRsvpLerTunnel::renderSubTunnelBwNextAdjustment(scrivo::RendererV2* renderer,
                                                        RsvpLerTunnelSpecId const& tunnelSpecId,
                                                        RsvpLerSubTunnelConfigId const& subTunnelConfigId,
                                                        Handle<RsvpLerAutoBwStats> const& stats, bool showText) const {
   RSVP_LER_TRACE(subTunnelConfigId);
   if (!findAutoBwConfig(autoBwConfig(), tunnelSpecId).enabled)
      return;
   auto const ofTunnel = samplingStats(stats, tunnelSpecId);
   auto const* const ofSubTunnel = ofTunnel ? ofTunnel->subTunnelBwSamplingStats.valueOf(subTunnelConfigId) : nullptr;
   renderNextAdjustment(renderer, ofSubTunnel != nullptr ? ofSubTunnel->nextAdjustmentTime : OptionalMoment(),
                        showText);
}

void ShowRsvpLerTunnel::renderSubTunnelSampledBandwidth(scrivo::RendererV2* renderer,
                                                        RsvpLerTunnelSpecId const& tunnelSpecId,
                                                        RsvpLerSubTunnelConfigId const& subTunnelConfigId,
                                                        Handle<RsvpLerBwSamplingStatusColl> const& samplingColl,
                                                        bool showText) const {
   RSVP_LER_TRACE(subTunnelConfigId);
   if (!findAutoBwConfig(autoBwConfig(), tunnelSpecId).enabled)
      return;
   auto const ofTunnel = samplingStatus(samplingColl, tunnelSpecId);
   auto const* const ofSubTunnel = ofTunnel ? ofTunnel->subTunnelBwSamplingStatus.valueOf(subTunnelConfigId) : nullptr;
   std::uint64_t const bandwidth = ofSubTunnel != nullptr ? bitsPerSecond(ofSubTunnel->lastSampledBandwidth) : 0;
   addBandwidthLine(renderer, showText, "      Last sampled bandwidth: ", bandwidth);
   renderer->addJsonKeyValuePair("lastSampledBandwidth", bandwidth);
}

} // namespace Rsvp::Cli
