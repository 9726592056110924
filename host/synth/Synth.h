#pragma once

#include <cstdint>
#include <cstdio>

// Synthetic states: the material of benchmarks and soak runs.

namespace Host {

struct SynthOptions {
   std::uint64_t tunnels = 0; // at most 100 million, so that every index of the state fits its 32 bits
   std::uint64_t seed = 0;
   double damage = 0; // from 0 to 1: how much is left out or has any value that it may have
};

inline constexpr std::uint64_t maxSynthTunnels = 100'000'000;

// Writes a state file of so many tunnels to the file, which stays the caller's, and flushes it. The same options give
// the same bytes. The memory needed doesn't depend on the number of tunnels, unless there is to be damage. Some 6 KB a
// tunnel: a twentieth are P2MP with 2 to 12 leaves, a tenth are split into 2 to 6 sub-tunnels, the others P2P, mostly
// with two paths. 0, or the errno of the first write that failed, after which nothing more was written; ERANGE, with
// nothing written at all, for more tunnels than the maximum. A file whose reader has gone gives EPIPE if the process
// ignores SIGPIPE.
int writeSynth(std::FILE* file, SynthOptions const& options);

} // namespace Host
