#pragma once

#include "host/CommandLine.h"
#include "vane/TraceHandle.h"

namespace Host {

// Traces the show commands as a request wants it, for as long as this object lives.
class Tracing {
public:
   // Throws Skein::TraceError when the file can't be made.
   explicit Tracing(TraceRequest const& request);
   ~Tracing();
   Tracing(Tracing const&) = delete;
   Tracing& operator=(Tracing const&) = delete;

private:
   Vane::TraceHandle& facility_;
};

} // namespace Host
