#include "bench/Listing.h"

#include "RsvpLer/frame/TunnelLookahead.h"

namespace Bench {

using namespace Rsvp;

ListedTunnels listedTunnels(Cli::ShowRsvpLerTunnel const& command) {
   ListedTunnels tunnels;
   command.superTunnelConfigColl()->walk(
         [&](RsvpLerTunnelSpecId const& id, Handle<RsvpLerSuperTunnelConfig> const& config) {
            (config->sessionType == RsvpSessionType::p2p ? tunnels.p2p : tunnels.p2mp).push_back(id);
         });
   Cli::sortTunnels(tunnels.p2p);
   Cli::sortTunnels(tunnels.p2mp);
   return tunnels;
}

void list(Cli::ShowRsvpLerTunnel& command, scrivo::RendererV2& renderer, Tests::Flags const& flags) {
   ListedTunnels const tunnels = listedTunnels(command);
   auto const renderAll = [&](std::vector<RsvpLerTunnelSpecId> const& ids) {
      Cli::forEachTunnel(command, ids, [&](RsvpLerTunnelSpecId const& id) {
         command.renderTunnel(&renderer, id, flags.summary, flags.lspDetails, flags.detail, flags.history,
                              flags.subTunnel);
      });
   };
   bool const headings = flags.summary && renderer.isText();
   if (renderer.isJson())
      renderer.writeChar('{');
   if (headings) {
      Cli::forEachTunnel(command, tunnels.p2p,
                         [&](RsvpLerTunnelSpecId const& id) { command.setP2pTunnelSummaryHeaderColSizes(id); });
      command.renderP2pTunnelSummaryHeader(&renderer);
   }
   renderer.startJsonDict("tunnels");
   renderAll(tunnels.p2p);
   if (headings) {
      Cli::forEachTunnel(command, tunnels.p2mp,
                         [&](RsvpLerTunnelSpecId const& id) { command.setP2mpTunnelSummaryHeaderColSizes(id); });
      command.renderP2mpTunnelSummaryHeader(&renderer);
   }
   renderAll(tunnels.p2mp);
   renderer.endJsonDict();
   if (renderer.isJson())
      renderer.writeString("}\n");
}

void listDropped(Cli::ShowRsvpLerTunnel& command, std::uint32_t format, Tests::Flags const& flags) {
   DroppedBuffer buffer;
   scrivo::RendererV2 renderer(static_cast<scrivo::OutputFormat_t>(format), &buffer, true);
   list(command, renderer, flags);
}

} // namespace Bench
