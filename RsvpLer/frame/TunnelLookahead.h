#pragma once

#include "RsvpLer/RsvpLerCliCapi.h"

#include <cstddef>
#include <vector>

namespace Rsvp::Cli {

// What a tunnel shows lies scattered over the memory, and each record has to arrive before the next one is known: a
// long listing would wait most of the time. So while a tunnel is rendered, the memory is asked for what the next
// tunnels will need, each a step further on its way the nearer it is: its places in the tables, then the slots that
// they lead to with what is in them, and so on to the hops of its paths. Nothing that is asked for has to exist or to
// stay.
class TunnelLookahead {
public:
   // Both must outlive the object.
   TunnelLookahead(ShowRsvpLerTunnel const& command, std::vector<RsvpLerTunnelSpecId> const& tunnels) noexcept
         : command_(command), tunnels_(tunnels) {}

   // To be called before each tunnel of the listing is rendered, in their order. Keeps nothing of the tables between
   // two calls.
   void advance() noexcept;

private:
   ShowRsvpLerTunnel const& command_;
   std::vector<RsvpLerTunnelSpecId> const& tunnels_;
   std::size_t next_ = 0; // the tunnel that is rendered next
};

// The walk of a listing: calls body(tunnelSpecId) for each tunnel in its order.
template<class Body>
void forEachTunnel(ShowRsvpLerTunnel const& command, std::vector<RsvpLerTunnelSpecId> const& tunnels, Body&& body) {
   TunnelLookahead lookahead(command, tunnels);
   for (RsvpLerTunnelSpecId const& tunnel : tunnels) {
      lookahead.advance();
      body(tunnel);
   }
}

} // namespace Rsvp::Cli
