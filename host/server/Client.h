#pragma once

#include "host/CommandLine.h"
#include "host/ExitStatus.h"

#include <string>

namespace Host {

// Asks the server at that socket with one line, and copies its answer to standard output as it comes. Returns
// `interrupted` when the user interrupts. Throws ServerError when no server can be reached, when it refuses, with what
// it says, or when its answer breaks off (which one without a byte has done, unless it may be empty); std::system_error
// when standard output takes no more.
ExitStatus askServer(std::string const& socketPath, std::string const& line, Format format, bool mayBeEmpty);

} // namespace Host
