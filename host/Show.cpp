#include "host/Show.h"

#include "brindle/Inspect.h"
#include "vane/Epoch.h"
#include "vane/System.h"

namespace Host {

namespace {

using Brindle::GenericValue;

template<class Record>
Brindle::Ptr<Record const> readOnly(Brindle::Ptr<Record> const& root) {
   return root;
}

GenericValue filterFor(std::string const& tunnelName) {
   Brindle::TypeData const& type = Brindle::typeNamed("Rsvp::Cli::ShowRsvpLerTunnelFilter");
   GenericValue filter = Brindle::construct(type, {});
   Brindle::write(type, filter, "tunnelName", tunnelName);
   return filter;
}

} // namespace

void setClocks(RouterState const& state) {
   if (state.clock)
      Vane::System::fixClocks(state.clock->currentTime, state.clock->utcTime);
   else
      Vane::System::releaseClocks();
}

void showTunnels(ShowTunnelRequest const& request, RouterState const& state, int descriptor) {
   Vane::CommandPin const pin;
   Brindle::TypeData const& type = Brindle::typeNamed("Rsvp::Cli::ShowRsvpLerTunnel");
   GenericValue command =
         Brindle::construct(type, {state.rsvpCliConfig, state.rsvpLerCliConfig, readOnly(state.rsvpLerStatus),
                                   readOnly(state.rsvpLerFathomStatus)});
   Brindle::call(type, command, "render",
                 {static_cast<std::uint32_t>(descriptor), static_cast<std::uint32_t>(request.format),
                  filterFor(request.tunnelName), request.summary, request.lsp, request.detail, request.history,
                  request.subTunnel});
}

void showStatus(ShowStatusRequest const& request, RouterState const& state, int descriptor) {
   Vane::CommandPin const pin;
   Brindle::TypeData const& type = Brindle::typeNamed("Rsvp::Cli::ShowRsvpLer");
   GenericValue command =
         Brindle::construct(type, {state.rsvpLerConfig, state.rsvpLerCliConfig, readOnly(state.rsvpLerStatus),
                                   readOnly(state.rsvpLerFathomStatus), state.tallyFeatureConfigDir});
   Brindle::call(type, command, "render",
                 {static_cast<std::uint32_t>(descriptor), static_cast<std::uint32_t>(request.format)});
}

} // namespace Host
