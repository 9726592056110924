#pragma once

#include "host/server/LiveState.h"

#include <string>
#include <string_view>
#include <vector>

namespace Soak {

// Lines of a feed, each of which sets or deletes one row of a tunnel that doesn't stay: rows of the two states, which
// have the same tunnels, and their keys. `stays` tells the other tunnels by their names.
std::vector<std::string> makeChanges(std::string const& state, std::string const& otherState,
                                     bool (*stays)(std::string_view name));

// What a server reads such a line as.
Host::Change readLine(std::string const& line);

} // namespace Soak
