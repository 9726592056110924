#pragma once

#include "host/CommandLine.h"
#include "host/state/RouterState.h"

namespace Host {

// Serves a router that begins with this state, until the process gets SIGTERM or SIGINT and the running answers have
// ended; a second signal cuts those off. Throws ServerError and ModuleError.
void serve(ServeRequest const& request, RouterState state);

} // namespace Host
