#include "host/trace/Tracing.h"

#include "skein/TraceFile.h"

#include <memory>

namespace Host {

Tracing::Tracing(TraceRequest const& request) : facility_(Vane::TraceHandle::named("RsvpLerCliCapi")) {
   if (!request.file.empty())
      Skein::defaultTraceFileIs(std::make_unique<Skein::TraceFile>(request.file));
   if (request.text)
      facility_.levelIs(8);
}

Tracing::~Tracing() {
   Skein::defaultTraceFileIs(nullptr);
   facility_.levelIs(0);
}

} // namespace Host
