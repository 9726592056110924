#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/frame/TunnelLookahead.h"
#include "RsvpLer/output/RenderCommand.h"
#include "RsvpLer/text/TunnelOrder.h"

// The listing of the tunnels that a command concerns.
//
//    text     the blocks of the tunnels; in a summary the heading of each table before its rows
//    JSON     {"tunnels":{"tun1":{...},"tun2":{...}}}

namespace Rsvp::Cli {

namespace {

// The tunnels of a listing by their kind, each list in its final order. Keys are held by value, so that the walk keeps
// no record alive.
struct ListedTunnels {
   std::vector<RsvpLerTunnelSpecId> p2p;
   std::vector<RsvpLerTunnelSpecId> p2mp;
};

ListedTunnels collectTunnels(Handle<RsvpLerSuperTunnelConfigColl> const& configs, ShowRsvpLerTunnelFilter const& filter,
                             Handle<RsvpLerStatehubStatus> const& rsvpLerStatus) {
   ListedTunnels tunnels;
   if (!configs)
      return tunnels;
   configs->walk([&](RsvpLerTunnelSpecId const& tunnelSpecId, Handle<RsvpLerSuperTunnelConfig> const& config) {
      if (filter.match(tunnelSpecId, rsvpLerStatus))
         (config->sessionType != RsvpSessionType::p2p ? tunnels.p2mp : tunnels.p2p).push_back(tunnelSpecId);
   });
   sortTunnels(tunnels.p2p);
   sortTunnels(tunnels.p2mp);
   return tunnels;
}

} // namespace

void ShowRsvpLerTunnel::render(std::uint32_t socket, std::uint32_t format, ShowRsvpLerTunnelFilter const& tunnelFilter,
                               bool summary, bool lspDetails, bool detail, bool history, bool subTunnel) {
   RSVP_LER_TRACE("format=", format);
   renderCommand(socket, format, [&](scrivo::RendererV2* renderer) {
      ListedTunnels const tunnels = collectTunnels(superTunnelConfigColl(), tunnelFilter, rsvpLerStatus);
      bool const summaryHeaders = summary && !subTunnel && renderer->isText();
      auto const renderTunnels = [&](std::vector<RsvpLerTunnelSpecId> const& ids) {
         forEachTunnel(*this, ids, [&](RsvpLerTunnelSpecId const& id) {
            renderTunnel(renderer, id, summary, lspDetails, detail, history, subTunnel);
         });
      };

      if (summaryHeaders) {
         forEachTunnel(*this, tunnels.p2p,
                       [&](RsvpLerTunnelSpecId const& id) { setP2pTunnelSummaryHeaderColSizes(id); });
         renderP2pTunnelSummaryHeader(renderer);
      }
      renderer->startJsonDict("tunnels");
      renderTunnels(tunnels.p2p);
      if (summaryHeaders) {
         forEachTunnel(*this, tunnels.p2mp,
                       [&](RsvpLerTunnelSpecId const& id) { setP2mpTunnelSummaryHeaderColSizes(id); });
         renderP2mpTunnelSummaryHeader(renderer);
      }
      renderTunnels(tunnels.p2mp);
      renderer->endJsonDict();
   });
}

} // namespace Rsvp::Cli
