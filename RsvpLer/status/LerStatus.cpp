#include "RsvpLer/status/LerStatus.h"

#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/Lines.h"
#include "RsvpLer/output/RenderCommand.h"

// The router-wide view.
//
//    Local interface: lo0 (configured)          {"localIntf":"lo0","localIntfConfigured":true,
//    IP address: 10.0.0.1                        "localIntfIp":"10.0.0.1",
//    Auto bandwidth: supported                   "autoBwSupported":true,
//    Periodic optimization: disabled             "tunnelCount":7,...,"optimizationInterval":0,
//
//    P2P
//       Number of tunnels: 7
//          Operational: 6
//    ...                                         "lspCount":9,...}

namespace Rsvp::Cli {

namespace {

using scrivo::addLine;

// What the view shows besides its counts.
struct LerFacts {
   Lattice::IntfId localIntf;
   bool localIntfConfigured = false;
   Lattice::IpAddr localIntfIp;
   bool autoBwSupported = false;
   std::uint32_t optimizationInterval = 0; // seconds
};

bool isAutoBwSupported(Handle<Ambit::Tally::FeatureConfigDir> const& tallyFeatureConfigDir) {
   BRINDLE_ASSERT(tallyFeatureConfigDir);
   Ambit::Tally::ConfigState state{};
   return tallyFeatureConfigDir->feature.find(Tallies::FeatureId::rsvpLerAutoBw, state) &&
          state == Ambit::Tally::ConfigState::inForce;
}

LerFacts gatherFacts(ShowRsvpLer const& command) {
   LerFacts facts;
   if (command.rsvpLerConfig) {
      facts.localIntf = command.rsvpLerConfig->localIntf;
      facts.localIntfIp = command.rsvpLerConfig->localIntfIp;
      facts.optimizationInterval = command.rsvpLerConfig->optimizationInterval;
   }
   facts.localIntfConfigured = command.rsvpLerCliConfig && command.rsvpLerCliConfig->localIntf != Lattice::IntfId();
   facts.autoBwSupported = isAutoBwSupported(command.tallyFeatureConfigDir);
   return facts;
}

void renderFactsText(scrivo::RendererV2* renderer, LerFacts const& facts) {
   renderer->addText("Local interface: ", facts.localIntf.name().view());
   if (facts.localIntf != Lattice::IntfId())
      renderer->addFrill(facts.localIntfConfigured ? " (configured)" : " (automatically chosen)");
   renderer->eol();
   addLine(renderer, true, "IP address: ", facts.localIntfIp);
   addLine(renderer, true, "Auto bandwidth: ", facts.autoBwSupported ? "supported" : "unsupported");
   if (facts.optimizationInterval != 0) {
      renderer->addText("Periodic optimization: enabled, interval: ", facts.optimizationInterval);
      renderer->addFrill(" seconds");
   } else {
      renderer->addFrill("Periodic optimization: disabled");
   }
   renderer->eol();
   renderer->eol();
}

void renderCountsText(scrivo::RendererV2* renderer, LerCounts const& counts) {
   renderer->addFrill("P2P\n");
   addLine(renderer, true, "   Number of tunnels: ", counts.tunnelCount);
   addLine(renderer, true, "      Operational: ", counts.tunnelUpCount);
   addLine(renderer, true, "   Secondary path enabled: ", counts.tunnelSecondaryEnabledCount);
   addLine(renderer, true, "   Secondary path in use: ", counts.tunnelSecondaryInUseCount);
   if (counts.splitBwTunnelCount != 0) {
      addLine(renderer, true, "   Number of split bandwidth enabled tunnels: ", counts.splitBwTunnelCount);
      addLine(renderer, true, "   Number of sub tunnels: ", counts.subTunnelCount);
      addLine(renderer, true, "      Operational: ", counts.subTunnelUpCount);
      addLine(renderer, true, "   Secondary path in use: ", counts.subTunnelSecondaryInUseCount);
   }
   addLine(renderer, true, "   Number of LSPs: ", counts.lspCount);
   addLine(renderer, true, "      Operational: ", counts.lspUpCount);
   renderer->eol();
   renderer->addFrill("P2MP\n");
   addLine(renderer, true, "   Number of tunnels: ", counts.p2mpTunnelCount);
   addLine(renderer, true, "      Operational: ", counts.p2mpTunnelUpCount);
   addLine(renderer, true, "   Number of LSPs: ", counts.p2mpLspCount);
   addLine(renderer, true, "      Operational: ", counts.p2mpLspUpCount);
   addLine(renderer, true, "   Number of sub-LSPs: ", counts.p2mpSubLspCount);
   addLine(renderer, true, "      Operational: ", counts.p2mpSubLspUpCount);
}

void renderJson(scrivo::RendererV2* renderer, LerFacts const& facts, LerCounts const& counts) {
   renderer->addJsonKeyValuePair("localIntf", facts.localIntf.name().view());
   renderer->addJsonKeyValuePair("localIntfConfigured", facts.localIntfConfigured);
   renderer->addJsonKeyValuePair("localIntfIp", facts.localIntfIp);
   renderer->addJsonKeyValuePair("autoBwSupported", facts.autoBwSupported);
   renderer->addJsonKeyValuePair("tunnelCount", counts.tunnelCount);
   renderer->addJsonKeyValuePair("tunnelUpCount", counts.tunnelUpCount);
   renderer->addJsonKeyValuePair("p2mpTunnelCount", counts.p2mpTunnelCount);
   renderer->addJsonKeyValuePair("p2mpTunnelUpCount", counts.p2mpTunnelUpCount);
   renderer->addJsonKeyValuePair("tunnelSecondaryEnabledCount", counts.tunnelSecondaryEnabledCount);
   renderer->addJsonKeyValuePair("tunnelSecondaryInUseCount", counts.tunnelSecondaryInUseCount);
   renderer->addJsonKeyValuePair("optimizationInterval", facts.optimizationInterval);
   if (counts.splitBwTunnelCount != 0) {
      renderer->addJsonKeyValuePair("splitBwTunnelCount", counts.splitBwTunnelCount);
      renderer->addJsonKeyValuePair("subTunnelCount", counts.subTunnelCount);
      renderer->addJsonKeyValuePair("subTunnelUpCount", counts.subTunnelUpCount);
      renderer->addJsonKeyValuePair("subTunnelSecondaryInUseCount", counts.subTunnelSecondaryInUseCount);
   }
   renderer->addJsonKeyValuePair("lspCount", counts.lspCount);
   renderer->addJsonKeyValuePair("lspUpCount", counts.lspUpCount);
   renderer->addJsonKeyValuePair("p2mpLspCount", counts.p2mpLspCount);
   renderer->addJsonKeyValuePair("p2mpLspUpCount", counts.p2mpLspUpCount);
   renderer->addJsonKeyValuePair("p2mpSubLspCount", counts.p2mpSubLspCount);
   renderer->addJsonKeyValuePair("p2mpSubLspUpCount", counts.p2mpSubLspUpCount);
}

} // namespace

void ShowRsvpLer::render(std::uint32_t socket, std::uint32_t format) {
   RSVP_LER_TRACE("format=", format);
   renderCommand(socket, format, [&](scrivo::RendererV2* renderer) {
      LerFacts const facts = gatherFacts(*this);
      LerCounts const counts = countLer(*this);
      // The order of the keys isn't that of the lines, so the two forms are written one after the other.
      renderFactsText(renderer, facts);
      renderCountsText(renderer, counts);
      renderJson(renderer, facts, counts);
   });
}

} // namespace Rsvp::Cli
