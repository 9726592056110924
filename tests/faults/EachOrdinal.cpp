#include "tests/faults/EachOrdinal.h"

#include "vane/Epoch.h"

#include <dlfcn.h>
#include <execinfo.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <string_view>

namespace Tests {

namespace {

// What a child leaves to its parent.
struct Progress {
   std::uint64_t ordinal;
   char wrong[1000];
};

constexpr int wentWrong = 3;
constexpr int endedByDesign = 4;
constexpr int endedOtherwise = 5;

// The file of the program or library that the address is in.
std::string_view fileOf(void const* address) {
   Dl_info info{};
   return dladdr(address, &info) == 0 || info.dli_fname == nullptr ? "" : info.dli_fname;
}

// Where the exception has met a function that must not throw the stack still stands. The library with the retirement
// has no other such function that allocates; its inner functions have no names that could be looked up.
[[noreturn]] void whenTerminated() {
   std::string_view const library = fileOf(reinterpret_cast<void const*>(&Vane::retire));
   void* frames[60];
   int const count = backtrace(frames, static_cast<int>(std::size(frames)));
   for (int i = 0; i < count; ++i)
      if (fileOf(frames[i]) == library)
         _exit(endedByDesign);
   _exit(endedOtherwise);
}

[[noreturn]] void runFrom(std::uint64_t first, Progress& progress,
                          std::function<Attempt(std::uint64_t)> const& attempt) {
   std::set_terminate(whenTerminated);
   for (progress.ordinal = first;; ++progress.ordinal) {
      Attempt const result = attempt(progress.ordinal);
      if (!result.wrong.empty()) {
         std::strncpy(progress.wrong, result.wrong.c_str(), sizeof progress.wrong - 1);
         _exit(wentWrong);
      }
      if (!result.reached)
         _exit(EXIT_SUCCESS);
   }
}

} // namespace

OrdinalCounts atEachOrdinal(std::function<Attempt(std::uint64_t)> const& attempt) {
   void* const memory = mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
   Progress& progress = *new (memory) Progress{};
   OrdinalCounts counts;
   int status = 0;
   for (std::uint64_t first = 1;; first = progress.ordinal + 1) {
      pid_t const child = fork();
      if (child == 0)
         runFrom(first, progress, attempt);
      waitpid(child, &status, 0);
      if (!WIFEXITED(status) || WEXITSTATUS(status) != endedByDesign)
         break;
      ++counts.endedByDesign;
   }
   counts.tried = progress.ordinal - 1;
   EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS)
         << "ordinal " << progress.ordinal << " gives status " << status << ": " << progress.wrong;
   munmap(memory, sizeof(Progress));
   return counts;
}

} // namespace Tests
