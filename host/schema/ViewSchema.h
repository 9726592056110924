#pragma once

#include <string_view>

// The contract of the JSON views.

namespace Host {

// The bytes of docs/schema/tunnel.schema.json, a JSON Schema of what every tunnel view prints as JSON. The text lives
// as long as the program.
std::string_view tunnelSchema() noexcept;

// The same of docs/schema/status.schema.json and the status view.
std::string_view statusSchema() noexcept;

} // namespace Host
