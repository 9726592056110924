#pragma once

#include "brindle/Node.h"
#include "lattice/Address.h"
#include "lattice/IntfId.h"

#include <cstdint>

// The configuration of the feature as a whole, as far as the show commands read it.

namespace Rsvp {

struct RsvpCliConfig : Brindle::Node {
   bool mtuSignalingEnabled = false; // gates every MTU line and key
};

struct RsvpLerCliConfig : Brindle::Node {
   Lattice::IntfId localIntf; // named by the operator; the default id means none
};

struct RsvpLerConfig : Brindle::Node {
   Lattice::IntfId localIntf; // its address serves as the router's local address
   Lattice::IpAddr localIntfIp;
   std::uint32_t optimizationInterval = 0; // seconds; 0 means disabled
};

} // namespace Rsvp
