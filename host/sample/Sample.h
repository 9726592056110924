#pragma once

#include <string_view>

// The built-in sample network: what is shown when no state file is named.

namespace Host {

// The bytes of sample.json, a state file: the tunnels of the router at Denver in a network of eleven cities, told in
// README.md beside it. The text lives as long as the program.
std::string_view sampleState() noexcept;

} // namespace Host
