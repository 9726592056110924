#include "skein/TraceReader.h"
#include "tests/fuzz/Fuzz.h"

#include <sys/mman.h>
#include <unistd.h>

#include <string>

// Any bytes are a trace file or one line of complaint, and each of its records is whole or none.

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
   int const file = memfd_create("trace", MFD_CLOEXEC);
   Fuzz::require(write(file, data, size) == static_cast<ssize_t>(size), "there is room for a file in memory");
   try {
      Skein::TraceReader const reader("/proc/self/fd/" + std::to_string(file));
      std::size_t text = 0;
      for (std::size_t i = 0; i < reader.size(); ++i)
         if (auto const record = reader.record(i))
            text += record->function.size() + record->sourcePath.size() + record->arguments.size();
      Fuzz::require(text < (std::size_t{1} << 32), "the texts of the records are of some size");
   } catch (Skein::TraceError const& error) {
      Fuzz::require(Fuzz::isPlainLine(error.what()), "the complaint is one line");
   }
   close(file);
   return 0;
}
