#include "RsvpLer/frame/Trace.h"

namespace Rsvp::Cli {

Vane::TraceHandle& traceFacility = Vane::TraceHandle::named("RsvpLerCliCapi");

} // namespace Rsvp::Cli
