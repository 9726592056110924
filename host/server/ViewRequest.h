#pragma once

#include "host/CommandLine.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

// The request of a client: the command line of a view in one line, as it would be written to a shell.

namespace Host {

using ViewRequest = std::variant<ShowTunnelRequest, ShowStatusRequest>;

// The words of a line: blanks separate them, and quotes and backslashes keep blanks as a shell does. Throws UsageError
// when a quote isn't closed.
std::vector<std::string> splitWords(std::string_view line);

// Reads a request. Throws UsageError when it isn't the command line of a view, or when it asks for what concerns the
// client's side alone, such as another state.
ViewRequest parseViewRequest(std::string_view line);

// The line that asks for the same view, without a line feed; what concerns the client's side is left out. Throws
// UsageError for a tunnel name that no line can hold.
std::string requestLine(ShowTunnelRequest const& request);
std::string requestLine(ShowStatusRequest const& request);

// Whether the whole answer may have no byte: a text view without headings, of tunnels that aren't there.
bool mayBeEmpty(ShowTunnelRequest const& request) noexcept;
bool mayBeEmpty(ShowStatusRequest const& request) noexcept;

} // namespace Host
