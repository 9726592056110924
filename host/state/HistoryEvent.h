#pragma once

#include "RsvpLer/state/HistoryRecords.h"
#include "host/state/JsonReader.h"

namespace Host {

// An event: {"kind": "lspState", "lspId": 3, "state": "up"}. `kind` names the alternative, wherever it stands; the
// other members are that alternative's fields. Without a kind it is the unknown event.
void decode(JsonReader& in, JsonValue& value, Rsvp::LerTunnelHistoryData& target);

} // namespace Host
