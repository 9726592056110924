#include "vane/TraceHandle.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <mutex>
#include <vector>

namespace Vane {

namespace {

constinit std::atomic<TraceSink> traceSink = nullptr;

// Is never taken down: a facility may be used until the last thread has ended.
struct Facilities {
   std::mutex mutex;
   std::vector<std::unique_ptr<TraceHandle>> handles;
};

Facilities& facilities() {
   static Facilities* const all = new Facilities;
   return *all;
}

} // namespace

TraceHandle& TraceHandle::named(std::string_view name) {
   Facilities& all = facilities();
   std::lock_guard const lock(all.mutex);
   auto const found = std::ranges::find(all.handles, name, [](auto const& handle) { return handle->name(); });
   if (found != all.handles.end())
      return **found;
   return *all.handles.emplace_back(new TraceHandle(name));
}

void TraceHandle::levelIs(unsigned level) noexcept {
   levels_.store(static_cast<std::uint32_t>((std::uint64_t{2} << std::min(level, 31u)) - 1), std::memory_order_relaxed);
}

void TraceHelper::write(std::string_view text) const noexcept {
   if (!facility.enabled(level))
      return;
   if (TraceSink const sink = traceSink.load(std::memory_order_acquire))
      sink(*this, text);
   else
      std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
}

void traceSinkIs(TraceSink sink) noexcept {
   traceSink.store(sink, std::memory_order_release);
}

} // namespace Vane
