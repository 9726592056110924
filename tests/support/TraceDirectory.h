#pragma once

#include "skein/TraceFile.h"
#include "skein/TraceReader.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace Tests {

// A directory for trace files, which goes with this object.
class TraceDirectory {
public:
   TraceDirectory() {
      std::string name = (std::filesystem::temp_directory_path() / "lertrace.XXXXXX").string();
      if (mkdtemp(name.data()) == nullptr)
         throw std::runtime_error("cannot make a directory for traces");
      path_ = name;
   }
   TraceDirectory(TraceDirectory const&) = delete;
   TraceDirectory& operator=(TraceDirectory const&) = delete;
   ~TraceDirectory() { std::filesystem::remove_all(path_); }

   std::string file(std::string const& name = "trace") const { return (path_ / name).string(); }

private:
   std::filesystem::path path_;
};

// While it lives, the process traces into a file in a directory of its own.
class TracingIntoFile {
public:
   explicit TracingIntoFile(Skein::Geometry geometry = {}) {
      Skein::defaultTraceFileIs(std::make_unique<Skein::TraceFile>(directory_.file(), geometry));
   }
   TracingIntoFile(TracingIntoFile const&) = delete;
   TracingIntoFile& operator=(TracingIntoFile const&) = delete;
   ~TracingIntoFile() { Skein::defaultTraceFileIs(nullptr); }

   Skein::TraceReader read() const { return Skein::TraceReader(directory_.file()); }

private:
   TraceDirectory directory_;
};

// All records, none of which may be damaged.
inline std::vector<Skein::TraceRecord> soundRecords(Skein::TraceReader const& trace) {
   std::vector<Skein::TraceRecord> records;
   for (std::size_t i = 0; i < trace.size(); ++i)
      records.push_back(trace.record(i).value());
   return records;
}

// The functions and their arguments, as "function arguments".
inline std::vector<std::string> calls(Skein::TraceReader const& trace) {
   std::vector<std::string> texts;
   for (Skein::TraceRecord const& record : soundRecords(trace))
      texts.push_back(std::string(record.function) + ' ' + record.arguments);
   return texts;
}

} // namespace Tests
