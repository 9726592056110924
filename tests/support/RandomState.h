#pragma once

#include "tests/support/Random.h"
#include "tests/support/Router.h"

#include <vector>

namespace Tests {

// A router with a handful of tunnels, P2P and P2MP, split and not, in which any record may be missing, any handle that
// a router can do without may be empty, and each field has any of the values that it may hold. The same seed gives the
// same state. Two tunnels never have the same name.
class RandomState {
public:
   explicit RandomState(std::uint32_t seed);

   Router router;
   std::vector<Rsvp::RsvpLerTunnelSpecId> tunnels; // all that any table knows

private:
   bool chance(std::uint32_t percent) { return random_.below(100) < percent; }
   template<class Enum>
   Enum anyOf(std::uint32_t count) {
      return static_cast<Enum>(random_.below(count));
   }
   std::uint64_t bandwidth();
   Brindle::Duration duration();
   Lattice::IpGenAddr anyAddress();
   Rsvp::RsvpLerPathSpecId anyPathSpec();

   void addTunnel(Rsvp::RsvpLerTunnelSpecId const& id, std::uint32_t number);
   void addConfig(Rsvp::RsvpLerTunnelSpecId const& id, Rsvp::RsvpSessionType sessionType);
   void addStatus(Rsvp::RsvpLerTunnelSpecId const& id, Rsvp::RsvpSessionType sessionType, bool split);
   void addAutoBw(Rsvp::RsvpLerTunnelSpecId const& id);
   void addSubTunnel(Rsvp::RsvpLerSubTunnelConfigId const& id, bool p2mp, std::uint32_t logIndex);
   void addInstance(Rsvp::RsvpLerMbbTunnelConfigId const& id, bool p2mp);
   void addGroup(Rsvp::RsvpLerLspGroupId const& id, bool p2mp);
   void addRequest(Rsvp::RsvpLerLspRequestConfigId const& id, bool p2mp);
   void addLog(Rsvp::RsvpLerTunnelHistoryEntryColl& log, std::uint32_t index, std::uint32_t capacity);

   Random random_;
};

} // namespace Tests
