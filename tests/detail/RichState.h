#pragma once

#include "RsvpLer/frame/Views.h"
#include "tests/support/Router.h"

namespace Tests {

// A router in which each section of a view has something of its own to show: the P2P tunnel tun1 with both instances,
// both paths and the sub-tunnel 2, and the P2MP tunnel tree1. The status of tun1 says that it isn't split. The views
// are what is gathered for the two tunnels and the sub-tunnel.
struct RichState {
   RichState();

   Router router;
   Brindle::Ptr<Rsvp::Cli::ShowRsvpLerTunnel> command;
   Rsvp::Cli::TunnelView p2p;
   Rsvp::Cli::TunnelView p2mp;
   Rsvp::Cli::SubTunnelView subTunnel;
};

} // namespace Tests
