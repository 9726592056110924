#pragma once

#include "host/state/JsonReader.h"
#include "host/state/RouterState.h"
#include "host/state/StateError.h"
#include "host/state/StateText.h"

#include <string_view>

namespace Host {

// Loads a whole state or nothing. `name` is that of the file, for messages. Throws StateError for whatever isn't a
// state file from its first byte to its last.
RouterState loadState(std::string_view name, StateText const& text);

// Reads a whole state that stands in a larger document. Throws StateError.
RouterState readState(JsonReader& in, JsonValue& value);

} // namespace Host
