#pragma once

#include <functional>
#include <string>
#include <vector>

namespace Bench {

// One of the programs that are compared: its name, what it does once, and what is done after it without being timed.
struct Side {
   std::string name;
   std::function<void()> run;
   std::function<void()> cleanUp = {};
};

enum class Clock { cpu, wall };

// Times the sides under Google Benchmark, their repetitions in random turns so that a disturbance from outside meets
// all of them alike. Returns the seconds of one run of each, of its fastest repetition.
std::vector<double> measure(std::vector<Side> const& sides, int repetitions = 11, Clock clock = Clock::cpu);

// How often the calling thread has allocated memory with `new`.
std::size_t allocationCount() noexcept;

} // namespace Bench
