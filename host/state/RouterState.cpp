#include "host/state/RouterState.h"

namespace Host {

std::vector<std::string_view> missingTables(RouterState const& state) {
   std::vector<std::string_view> missing;
   auto const need = [&missing](std::string_view name, auto const& root, auto table) {
      if (!root || !((*root).*table).get())
         missing.push_back(name);
   };
   need("superTunnelConfigColl", state.rsvpLerFathomStatus, &Rsvp::RsvpLerFathomStatus::superTunnelConfigColl);
   need("superTunnelStatusColl", state.rsvpLerStatus, &Rsvp::RsvpLerStatehubStatus::superTunnelStatusColl);
   need("subTunnelStatusCollTable", state.rsvpLerStatus, &Rsvp::RsvpLerStatehubStatus::subTunnelStatusCollTable);
   need("tunnelSpecColl", state.rsvpLerStatus, &Rsvp::RsvpLerStatehubStatus::tunnelSpecColl);
   need("bwSamplingStatusColl", state.rsvpLerStatus, &Rsvp::RsvpLerStatehubStatus::bwSamplingStatusColl);
   need("tunnelIndexMap", state.rsvpLerStatus, &Rsvp::RsvpLerStatehubStatus::tunnelIndexMap);
   need("autoBwConfig", state.rsvpLerFathomStatus, &Rsvp::RsvpLerFathomStatus::autoBwConfig);
   need("autoBwStats", state.rsvpLerStatus, &Rsvp::RsvpLerStatehubStatus::autoBwStats);
   return missing;
}

} // namespace Host
