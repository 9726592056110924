#include "bench/Figures.h"
#include "bench/Listing.h"
#include "bench/SynthRouter.h"
#include "bench/Text.h"
#include "vane/Epoch.h"

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <thread>

// A listing of 200,000 tunnels through a pipe: how long the first byte takes, and what memory the listing needs.

namespace Bench {

namespace {

double residentBytes() {
   unsigned long pages = 0;
   unsigned long resident = 0;
   std::FILE* const file = std::fopen("/proc/self/statm", "r");
   require(file != nullptr && std::fscanf(file, "%lu %lu", &pages, &resident) == 2, "no /proc/self/statm");
   std::fclose(file);
   return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

struct Observed {
   double firstByte = 0; // seconds
   double mostMemory = 0;
   std::size_t bytes = 0;
};

} // namespace

Rows longListing() {
   constexpr double tunnels = 200'000;
   auto const router = synthRouter(static_cast<std::uint64_t>(tunnels));
   auto const command = router->tunnelCommand();
   double firstByte = 0;
   double memory = 0;
   for (int round = 0; round < 5; ++round) {
      int ends[2];
      require(pipe(ends) == 0, "no pipe");
      double const atRest = residentBytes();
      Observed seen;
      auto const start = std::chrono::steady_clock::now();
      std::thread reader([&] {
         char chunk[65536];
         while (ssize_t const size = read(ends[0], chunk, sizeof chunk)) {
            if (seen.bytes == 0)
               seen.firstByte = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
            if (seen.bytes / 1'000'000 != (seen.bytes + static_cast<std::size_t>(size)) / 1'000'000)
               seen.mostMemory = std::max(seen.mostMemory, residentBytes());
            seen.bytes += static_cast<std::size_t>(size);
         }
      });
      command->render(static_cast<std::uint32_t>(ends[1]), Tests::jsonFormat, {}, false, false, false, false, false);
      close(ends[1]);
      reader.join();
      close(ends[0]);
      firstByte = round == 0 ? seen.firstByte : std::min(firstByte, seen.firstByte);
      memory = std::max(memory, seen.mostMemory - atRest);
   }
   return {
         {"200,000 tunnels: milliseconds to the first byte", firstByte * 1e3, false, 150, ""},
         {"200,000 tunnels: bytes a tunnel over rest and 16 MiB", std::max(0.0, memory - 16 * 1048576) / tunnels, false,
          64, shown(memory / 1048576, "MiB over rest")},
   };
}

} // namespace Bench
