#pragma once

#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/output/RendererV2.h"

namespace Rsvp::Cli {

// The errors of an LSP in ascending order under the heading "      Errors:", which stands only when there are any; in
// JSON a list of that key, which is there always. An error that comes or goes meanwhile may be shown or not.
void renderErrorList(ShowRsvpLerTunnel const& command, scrivo::RendererV2* renderer, scrivo::JsonKey key,
                     RsvpErrors const& errors, bool text);

} // namespace Rsvp::Cli
