#include "RsvpLer/RsvpLerCliCapi.h"
#include "vane/Epoch.h"

#include <unistd.h>

#include <cstdint>

// An agent's process with one tunnel: shows its summary as text and the tunnel as JSON, and the tunnel again when its
// bandwidth has changed.

using namespace Rsvp;

namespace {

// The eight tables that every view of a tunnel needs.
void makeTables(RsvpLerStatehubStatus& status, RsvpLerFathomStatus& fathom) {
   fathom.superTunnelConfigColl.set(Brindle::makeNode<RsvpLerSuperTunnelConfigColl>());
   fathom.autoBwConfig.set(Brindle::makeNode<RsvpLerAutoBwConfig>());
   status.superTunnelStatusColl.set(Brindle::makeNode<RsvpLerSuperTunnelStatusColl>());
   status.subTunnelStatusCollTable.set(Brindle::makeNode<RsvpLerSubTunnelStatusCollTable>());
   status.tunnelSpecColl.set(Brindle::makeNode<RsvpLerTunnelSpecPtrConstColl>());
   status.bwSamplingStatusColl.set(Brindle::makeNode<RsvpLerBwSamplingStatusColl>());
   status.tunnelIndexMap.set(Brindle::makeNode<RsvpLerTunnelIndexMap>());
   status.autoBwStats.set(Brindle::makeNode<RsvpLerAutoBwStats>());
}

Brindle::Ptr<RsvpLerSuperTunnelStatus> upWith(RsvpLerTunnelSpecId const& id, std::uint64_t bytesPerSecond) {
   auto status = Brindle::makeNode<RsvpLerSuperTunnelStatus>();
   status->tunnelSpecId = id;
   status->state = RsvpLerTunnelState::up;
   status->currentBandwidth = bytesPerSecond;
   return status;
}

} // namespace

int main() {
   RsvpLerTunnelSpecId const id{Fathom::String("den-nyc"), RsvpLerTunnelSource::cli};
   auto status = Brindle::makeNode<RsvpLerStatehubStatus>();
   auto fathom = Brindle::makeNode<RsvpLerFathomStatus>();
   makeTables(*status, *fathom);

   auto config = Brindle::makeNode<RsvpLerSuperTunnelConfig>();
   config->tunnelSpecId = id;
   config->destination.insert(Lattice::IpGenAddr(Lattice::IpAddr(10, 0, 0, 11)));
   fathom->superTunnelConfigColl.get()->set(id, config);
   status->superTunnelStatusColl.get()->set(id, upWith(id, 125'000));

   auto const command = Cli::ShowRsvpLerTunnel::ShowRsvpLerTunnelIs({}, {}, status, fathom);
   Cli::ShowRsvpLerTunnelFilter const all;
   {
      Vane::CommandPin const pin; // each lookup below it costs a count instead of a fence
      command->render(STDOUT_FILENO, 1, all, /*summary*/ true, false, false, false, false);
      command->render(STDOUT_FILENO, 2, all, false, false, false, false, false);
   }
   status->superTunnelStatusColl.get()->set(id, upWith(id, 250'000));
   Vane::collectRetired();
   command->render(STDOUT_FILENO, 2, all, false, false, false, false, false);
}
