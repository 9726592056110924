#pragma once

#include "RsvpLer/state/CallDepth.h"
#include "RsvpLer/state/KeyFormats.h"
#include "skein/TraceFormat.h"
#include "vane/Epoch.h"
#include "vane/TraceHandle.h"

#include <atomic>
#include <cstdint>
#include <new>
#include <string_view>
#include <type_traits>

// The trace of calls. A display function starts with a probe, which counts the call in Rsvp::callDepth until the
// function is left, whichever way. When the process has a trace file, the call is a record in it, with its arguments
// and its duration; when the facility "RsvpLerCliCapi" is enabled at level 8, it is a line of text:
//
//    [3] renderLspsForTunnel <name='tun1'>_<source='1'>_<subTunnelId=0>_<epoch=2>
//
// With both off a probe costs about a nanosecond. It never touches the answer and never fails.

// The first statement of the function. The arguments are keys, numbers, Skein::Hex of one, or words between them; they
// are looked at only when something is written.
#define RSVP_LER_TRACE(...)                                                                                            \
   static constinit Rsvp::Cli::TracePoint tracePoint{__func__, __LINE__};                                              \
   Rsvp::Cli::Probe const probe(tracePoint __VA_OPT__(, ) __VA_ARGS__)

namespace Rsvp::Cli {

// The facility; set while the library is loaded.
extern Vane::TraceHandle& traceFacility __attribute__((visibility("hidden")));
inline constexpr unsigned traceLevel = 8;
// The same for all functions, whose lines tell them apart.
inline constexpr std::string_view traceSourcePath = "/src/RsvpLer/RsvpLerCliCapi";

// What is kept of a traced function between its calls.
struct TracePoint {
   char const* function;
   std::uint32_t line;
   std::atomic<Skein::MessageId> message = Skein::unsetMessageId; // of the last file that was traced into
};

template<class... Arguments>
Skein::MessageId messageOf(TracePoint& point, Skein::TraceFile& file, Arguments const&... arguments) noexcept {
   Skein::MessageId message = point.message.load(std::memory_order_relaxed);
   if (file.knows(message))
      return message;
   Skein::MsgDesc description(file, traceSourcePath, point.line, point.function);
   (Skein::Argument<Arguments>::describe(description, file, arguments), ...);
   message = description.finishMessage();
   point.message.store(message, std::memory_order_relaxed);
   return message;
}

template<class... Arguments>
Skein::BlockTimerMsg traceIntoFile(TracePoint& point, Arguments const&... arguments) noexcept {
   Vane::Pin const pin;
   Skein::TraceFile* const file = Skein::defaultTraceFile();
   if (file == nullptr)
      return {};
   Skein::MessageId const message = messageOf(point, *file, arguments...);
   Skein::Msg record = file->ringBuf().startMsg(Skein::TraceFile::descriptionOf(message), callDepth);
   (Skein::Argument<Arguments>::put(record, arguments), ...);
   return {*file, record.end()};
}

// Writes "[", the depth, "] ", the function and a blank, with what append(text) adds.
template<class Append>
void traceIntoText(TracePoint const& point, Append&& append) noexcept {
   if (!traceFacility.enabled(traceLevel))
      return;
   try {
      Twine::Text text;
      text.add("[");
      text.put(std::uint32_t{callDepth});
      text.add("] ");
      text.add(point.function);
      text.add(" ");
      append(text);
      Vane::TraceHelper{traceFacility, traceLevel, traceSourcePath, point.line, point.function}.write(text.text());
   } catch (std::bad_alloc const&) {
      // A command goes on without its trace.
   }
}

// One traced call. The timer is none when the call has no record.
template<class... Arguments>
[[gnu::cold, gnu::noinline]] Skein::BlockTimerMsg traceCall(TracePoint& point, Arguments... arguments) noexcept {
   Skein::BlockTimerMsg const timer = traceIntoFile<std::remove_cvref_t<Arguments>...>(point, arguments...);
   traceIntoText(point, [&](Twine::Text& text) {
      (Skein::Argument<std::remove_cvref_t<Arguments>>::put(text, arguments), ...);
   });
   return timer;
}

// How an argument travels to the trace: words as such, what is small by value, keys by reference.
template<class T>
using Traced = std::conditional_t<std::is_array_v<T>, std::string_view,
                                  std::conditional_t<std::is_trivially_copyable_v<T>, T, T const&>>;

class Probe {
public:
   template<class... Arguments>
   explicit Probe(TracePoint& point, Arguments const&... arguments) noexcept : depthBefore_(callDepth) {
      callDepth = static_cast<std::uint16_t>(depthBefore_ + 1);
      if (Skein::hasDefaultTraceFile() || traceFacility.enabled(traceLevel)) [[unlikely]]
         timer_ = traceCall<Traced<Arguments>...>(point, arguments...);
   }
   Probe(Probe const&) = delete;
   Probe& operator=(Probe const&) = delete;
   ~Probe() {
      if (timer_) [[unlikely]]
         timer_.end();
      callDepth = depthBefore_; // subtracting would have to wait for the memory
   }

private:
   std::uint16_t depthBefore_;
   Skein::BlockTimerMsg timer_;
};

} // namespace Rsvp::Cli
