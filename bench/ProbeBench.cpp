#include "RsvpLer/frame/Trace.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>

// What a probe adds to a function: with all tracing off, and into a trace file. The price of a probe is the difference
// to the function without one.

namespace {

using Rsvp::RsvpLerLspGroupId;

[[gnu::noinline]] std::uint32_t bare(RsvpLerLspGroupId const& lspGroupId) {
   return lspGroupId.groupId;
}

[[gnu::noinline]] std::uint32_t tracedWithoutArguments(RsvpLerLspGroupId const& lspGroupId) {
   RSVP_LER_TRACE();
   return lspGroupId.groupId;
}

[[gnu::noinline]] std::uint32_t tracedWithKey(RsvpLerLspGroupId const& lspGroupId) {
   RSVP_LER_TRACE(lspGroupId);
   return lspGroupId.groupId;
}

template<std::uint32_t (*function)(RsvpLerLspGroupId const&)>
void call(benchmark::State& state) {
   RsvpLerLspGroupId lspGroupId;
   lspGroupId.mbbTunnelConfigId.subTunnelConfigId.tunnelSpecId.name = "den-atl-1";
   for (auto _ : state)
      benchmark::DoNotOptimize(function(lspGroupId));
}

void callTracedIntoFile(benchmark::State& state) {
   char const* const fileName = "ProbeBench.trace";
   Skein::defaultTraceFileIs(std::make_unique<Skein::TraceFile>(fileName));
   call<tracedWithKey>(state);
   Skein::defaultTraceFileIs(nullptr);
   std::remove(fileName);
}

BENCHMARK(call<bare>)->Name("without probe");
BENCHMARK(call<tracedWithoutArguments>)->Name("probe, tracing off");
BENCHMARK(call<tracedWithKey>)->Name("probe with a key, tracing off");
BENCHMARK(callTracedIntoFile)->Name("probe with a key, into a file");

} // namespace

BENCHMARK_MAIN();
