#pragma once

#include "brindle/String.h"

#include <atomic>
#include <cstdint>
#include <string_view>

// The text trace: each part of the software has a facility of its own, whose level tells how much of it is written.

namespace Vane {

class TraceHandle {
public:
   // The facility of that name, which is made at the first call and stays until the process ends. Any thread may ask.
   static TraceHandle& named(std::string_view name);

   TraceHandle(TraceHandle const&) = delete;
   TraceHandle& operator=(TraceHandle const&) = delete;

   std::string_view name() const noexcept { return name_; }
   // Enables the lines up to that level and no other; 31 is the highest. A new facility stands at 0. Any thread may set
   // it.
   void levelIs(unsigned level) noexcept;
   bool enabled(unsigned level) const noexcept { return (levels_.load(std::memory_order_relaxed) >> level & 1) != 0; }

private:
   explicit TraceHandle(std::string_view name) : name_(name) {}

   Brindle::String name_;
   std::atomic<std::uint32_t> levels_ = 1; // bit n: level n is enabled
};

// One place in the source that writes lines, each at a level of a facility. Whoever makes one keeps the texts.
struct TraceHelper {
   TraceHandle const& facility;
   unsigned level;
   std::string_view sourcePath;
   std::uint32_t line;
   std::string_view function;

   // Hands the line, which has no line feed, to the sink of the process when its level is enabled.
   void write(std::string_view text) const noexcept;
};

// Takes the lines of all facilities; called by several threads at once.
using TraceSink = void (*)(TraceHelper const& origin, std::string_view text) noexcept;

// Where lines go from now on; none means standard error, where each is written as it is and ended by a line feed.
void traceSinkIs(TraceSink sink) noexcept;

} // namespace Vane
