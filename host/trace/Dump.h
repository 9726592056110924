#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace Host {

// Writes what a trace file holds, a line for each call in the order of their starts:
//
//    time  thread  [depth] function arguments (duration)
//
// The time is in seconds since the file was made, the duration in microseconds, or "-" for a call that had not ended.
// Throws Skein::TraceError when the file can't be read, and after the last line when records are damaged. Returns how
// many calls the trace had to leave out. Whether the lines have arrived is for the caller to ask of the stream.
std::uint64_t dumpTrace(std::string const& fileName, std::FILE* out);

} // namespace Host
