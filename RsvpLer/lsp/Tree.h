#pragma once

#include "RsvpLer/state/Keys.h"

namespace scrivo {
class RendererV2;
}

namespace Rsvp::Cli {

// "   Active tree: to-all" and "specName":"to-all"; nothing for the default key.
void renderTreeSpecName(scrivo::RendererV2* renderer, RsvpLerPathSpecId const& pathSpecId, bool text);

} // namespace Rsvp::Cli
