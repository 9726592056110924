#include "RsvpLer/detail/TunnelAttributes.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/Lines.h"
#include "RsvpLer/text/EnumText.h"

// What tells a tunnel apart.
//
//    Tunnel tun1
//       Source address: 10.0.0.1                             "source":"10.0.0.1",
//       Destination address: 10.0.0.9                        "destination":"10.0.0.9",
//       Config source: CLI                                   "configSource":"cli",
//       Profile: gold (error: not found)                     "profile":"gold","profileState":"notFound",
//       Additional endpoints:                                "aliasTeps":["10.0.0.11","10.0.0.19"],
//          10.0.0.11
//          10.0.0.19
//       P2MP ID: 167772169                                   "p2mpId":167772169,
//       Session #12                                          "sessionId":12,
//       Tunnel index: 7                                      "tunnelIndex":7

namespace Rsvp::Cli {

namespace {

using scrivo::addLine;

constexpr std::uint8_t p2mpSession = 1; // the type of an RSVP session

char const* profileError(RsvpLerTunnelProfileState state) {
   if (state == RsvpLerTunnelProfileState::notFound)
      return " (error: not found)";
   return state == RsvpLerTunnelProfileState::wrongType ? " (error: wrong tunnel profile type)" : "";
}

void renderIndex(scrivo::RendererV2* renderer, std::uint32_t index, bool showText) {
   addLine(renderer, showText, "   Tunnel index: ", index);
   renderer->addJsonKeyValuePair("tunnelIndex", index);
}

void renderSessionNumber(scrivo::RendererV2* renderer, Handle<RsvpLerSubTunnelStatus> const& status, bool showText) {
   if (!status || status->sessionCliId == RsvpLerSubTunnelStatus::noSessionCliId)
      return;
   addLine(renderer, showText, "   Session #", status->sessionCliId);
   renderer->addJsonKeyValuePair("sessionId", status->sessionCliId);
}

} // namespace

void renderTunnelNameHeading(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId) {
   RSVP_LER_TRACE(tunnelSpecId);
   addLine(renderer, true, "Tunnel ", tunnelSpecId.name);
}

void renderSubTunnelId(scrivo::RendererV2* renderer, RsvpLerSubTunnelConfigId const& subTunnelConfigId) {
   RSVP_LER_TRACE(subTunnelConfigId);
   addLine(renderer, true, "Sub tunnel ", subTunnelConfigId.subTunnelId);
}

void renderTunnelSrc(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config, bool showText) {
   RSVP_LER_TRACE();
   Lattice::IpGenAddr const source = config ? config->source : Lattice::IpGenAddr();
   addLine(renderer, showText, "   Source address: ", source);
   renderer->addJsonKeyValuePair("source", source);
}

void renderTunnelDst(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config, bool showText) {
   RSVP_LER_TRACE();
   Lattice::IpGenAddr destination;
   bool const p2mp = config && config->sessionType == RsvpSessionType::p2mp;
   if (config && !p2mp && !config->destination.empty())
      destination = *config->destination.begin();
   addLine(renderer, showText && !p2mp, "   Destination address: ", destination);
   renderer->addJsonKeyValuePair("destination", destination);
}

void renderTunnelConfigSource(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId, bool showText) {
   RSVP_LER_TRACE(tunnelSpecId);
   addLine(renderer, showText, "   Config source: ", tunnelSourceToString(tunnelSpecId.source));
   renderer->addJsonKeyValuePair("configSource", tunnelSourceToEnumString(tunnelSpecId.source));
}

void renderTunnelProfileId(scrivo::RendererV2* renderer, Handle<RsvpLerTunnelSpec> const& tunnelSpec,
                           Handle<RsvpLerSuperTunnelConfig> const& config, bool showText) {
   RSVP_LER_TRACE();
   RsvpLerTunnelProfileId const profile = tunnelSpec ? tunnelSpec->profile : RsvpLerTunnelProfileId();
   if (RsvpLerTunnelProfileId::isEq(profile, RsvpLerTunnelProfileId()))
      return;
   auto const state = config ? config->profileState : RsvpLerTunnelProfileState::notSpecified;
   if (showText) {
      renderer->addText("   Profile: ", profile.name);
      renderer->addFrill(profileError(state));
      renderer->eol();
   }
   renderer->addJsonKeyValuePair("profile", profile.name);
   renderer->addJsonKeyValuePair("profileState", profileStateToEnumString(state));
}

void renderTunnelTeps(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelConfig> const& config, bool showText) {
   RSVP_LER_TRACE();
   if (!config || config->aliasTeps.empty())
      return;
   addLine(renderer, showText, "   Additional endpoints:", "");
   renderer->startJsonList("aliasTeps");
   for (Lattice::IpGenAddr const& endpoint : config->aliasTeps) {
      addLine(renderer, showText, "      ", endpoint);
      renderer->addJsonKeyValuePair("", endpoint);
   }
   renderer->endJsonList();
}

void renderTunnelP2mpId(scrivo::RendererV2* renderer, Handle<RsvpLerSuperTunnelStatus> const& status, bool showText) {
   RSVP_LER_TRACE();
   if (!status || status->sessionId.type != p2mpSession) {
      addLine(renderer, showText, "   P2MP ID: ", "?");
      return;
   }
   std::uint32_t const p2mpId = status->sessionId.p2mpId();
   addLine(renderer, showText, "   P2MP ID: ", p2mpId);
   renderer->addJsonKeyValuePair("p2mpId", p2mpId);
}

void renderTunnelIndex(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                       Handle<RsvpLerTunnelIndexMap> const& tunnelIndexMap, bool showText) {
   RSVP_LER_TRACE(tunnelSpecId);
   auto const index =
         tunnelIndexMap ? tunnelIndexMap->tunnelIndexForTunnelSpecId(tunnelSpecId) : Vane::Optional<std::uint32_t>();
   if (index.hasValue())
      renderIndex(renderer, index.value(), showText);
}

void renderSubTunnelIndex(scrivo::RendererV2* renderer, RsvpLerSubTunnelConfigId const& subTunnelConfigId,
                          Handle<RsvpLerSubTunnelIndexMap> const& subTunnelIndexMap, bool showText) {
   RSVP_LER_TRACE(subTunnelConfigId);
   std::uint32_t const index =
         subTunnelIndexMap ? subTunnelIndexMap->tunnelIndexForSubTunnelConfigId(subTunnelConfigId).valueOr(0) : 0;
   if (index != 0)
      renderIndex(renderer, index, showText);
}

void renderTunnelSessionCliId(scrivo::RendererV2* renderer, Handle<RsvpLerSubTunnelStatus> const& status,
                              bool showText) {
   RSVP_LER_TRACE();
   renderSessionNumber(renderer, status, showText);
}

void renderSubTunnelSessionId(scrivo::RendererV2* renderer, Handle<RsvpLerSubTunnelStatus> const& status,
                              bool showText) {
   RSVP_LER_TRACE();
   renderSessionNumber(renderer, status, showText);
}

} // namespace Rsvp::Cli
