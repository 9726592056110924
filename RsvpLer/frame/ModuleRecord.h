#pragma once

#include "RsvpLer/Export.h"
#include "brindle/ModuleInspectData.h"

// The module's record: its four types by number (the enumeration ShowTunnelVariant, the value ShowRsvpLerTunnelFilter,
// the classes ShowRsvpLerTunnel and ShowRsvpLer), what they hold and how they are operated on. It is announced to the
// type system when the library is loaded and withdrawn when it is unloaded. The number in the name never changes.
extern "C" {
RSVP_LER_EXPORT extern Brindle::ModuleInspectData const _RsvpLerCliCapi_35b5d92e19a7383a_vaneModule;
}
