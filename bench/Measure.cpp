#include "bench/Measure.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <limits>
#include <map>

namespace Bench {

namespace {

// Keeps the fastest repetition of each benchmark and prints nothing.
class Fastest final : public benchmark::BenchmarkReporter {
public:
   explicit Fastest(Clock clock) : clock_(clock) {}

   bool ReportContext(Context const&) override { return true; }
   void ReportRuns(std::vector<Run> const& runs) override {
      for (Run const& run : runs) {
         if (run.run_type != Run::RT_Iteration)
            continue;
         double const total = clock_ == Clock::cpu ? run.cpu_accumulated_time : run.real_accumulated_time;
         double& fastest =
               seconds_.try_emplace(run.run_name.function_name, std::numeric_limits<double>::max()).first->second;
         fastest = std::min(fastest, total / static_cast<double>(run.iterations));
      }
   }

   double of(std::string const& name) const { return seconds_.at(name); }

private:
   Clock clock_;
   std::map<std::string, double> seconds_;
};

} // namespace

std::vector<double> measure(std::vector<Side> const& sides, int repetitions, Clock clock) {
   for (Side const& side : sides) {
      auto* const registered = benchmark::RegisterBenchmark(side.name.c_str(), [&side](benchmark::State& state) {
         for ([[maybe_unused]] auto _ : state) {
            side.run();
            if (!side.cleanUp)
               continue;
            state.PauseTiming();
            side.cleanUp();
            state.ResumeTiming();
         }
      });
      registered->Repetitions(repetitions)->MinTime(0.02);
      if (clock == Clock::wall)
         registered->UseRealTime();
   }
   Fastest fastest(clock);
   benchmark::RunSpecifiedBenchmarks(&fastest);
   benchmark::ClearRegisteredBenchmarks();

   std::vector<double> seconds;
   for (Side const& side : sides)
      seconds.push_back(fastest.of(side.name));
   return seconds;
}

} // namespace Bench
