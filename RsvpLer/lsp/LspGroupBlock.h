#pragma once

#include "RsvpLer/state/Keys.h"

namespace scrivo {
class RendererV2;
}

namespace Rsvp::Cli {

// Opens the JSON object of a path: the member "primaryPath", or an entry of the list of secondary paths.
void startLspGroupPathJson(scrivo::RendererV2* renderer, bool primary);
// Closes it; both kinds close alike.
void endLspGroupPathJson(scrivo::RendererV2* renderer, bool primary);

// "   Primary path: via-north" and "specName":"via-north".
void renderLspGroupPathSpec(scrivo::RendererV2* renderer, RsvpLerPathSpecId const& pathSpecId, bool primary, bool text);

} // namespace Rsvp::Cli
