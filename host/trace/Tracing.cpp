#include "host/trace/Tracing.h"

#include "skein/TraceFile.h"
#include "vane/TraceHandle.h"

#include <memory>

namespace Host {

namespace {

void traceTextUpTo(unsigned level) {
   Vane::TraceHandle::named("RsvpLerCliCapi").levelIs(level);
}

} // namespace

Tracing::Tracing(TraceRequest const& request) {
   if (!request.file.empty())
      Skein::defaultTraceFileIs(std::make_unique<Skein::TraceFile>(request.file));
   if (request.text)
      traceTextUpTo(8);
}

Tracing::~Tracing() {
   Skein::defaultTraceFileIs(nullptr);
   traceTextUpTo(0);
}

} // namespace Host
