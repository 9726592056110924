#include "host/trace/Dump.h"

#include "skein/TraceReader.h"

#include <cinttypes>

namespace Host {

namespace {

void dumpRecord(Skein::TraceRecord const& record, std::FILE* out) {
   std::fprintf(out, "%4" PRIu64 ".%06" PRIu64 " %6" PRIu32 " [%u] ", record.start / 1'000'000'000,
                record.start / 1'000 % 1'000'000, record.thread, unsigned{record.depth});
   std::fwrite(record.function.data(), 1, record.function.size(), out);
   if (!record.arguments.empty())
      std::fprintf(out, " %s", record.arguments.c_str());
   if (record.duration)
      std::fprintf(out, " (%" PRIu64 ".%03" PRIu64 " us)\n", *record.duration / 1'000, *record.duration % 1'000);
   else
      std::fputs(" (-)\n", out);
}

} // namespace

std::uint64_t dumpTrace(std::string const& fileName, std::FILE* out) {
   Skein::TraceReader const trace(fileName);
   std::size_t damaged = 0;
   for (std::size_t i = 0; i < trace.size() && std::ferror(out) == 0; ++i) {
      if (auto const record = trace.record(i))
         dumpRecord(*record, out);
      else
         ++damaged;
   }
   if (damaged != 0)
      throw Skein::TraceError(fileName + ": " + std::to_string(damaged) + " of its " + std::to_string(trace.size()) +
                              " records are damaged and were left out");
   return trace.skippedRecords();
}

} // namespace Host
