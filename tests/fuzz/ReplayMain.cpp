#include "tests/fuzz/Fuzz.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

// Runs each file of a directory through the fuzz target:  PROGRAM CORPUS

int main(int argc, char** argv) {
   if (argc != 2) {
      std::fprintf(stderr, "give one directory of inputs\n");
      return 2;
   }
   std::size_t count = 0;
   for (auto const& file : std::filesystem::directory_iterator(argv[1])) {
      std::ifstream in(file.path(), std::ios::binary);
      std::vector<char> const bytes{std::istreambuf_iterator<char>(in), {}};
      std::printf("%s\n", file.path().c_str());
      std::fflush(stdout);
      // Of its own size, so that a read behind its end is noticed.
      std::vector<std::uint8_t> const input(bytes.begin(), bytes.end());
      LLVMFuzzerTestOneInput(input.data(), input.size());
      ++count;
   }
   std::printf("%zu inputs\n", count);
   return count == 0 ? 1 : 0;
}
