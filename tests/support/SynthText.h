#pragma once

#include "host/synth/Synth.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

namespace Tests {

// A synthetic state as the text of its file. Throws std::runtime_error when it can't be written.
inline std::string synthText(Host::SynthOptions const& options) {
   char* bytes = nullptr;
   std::size_t size = 0;
   std::FILE* const file = open_memstream(&bytes, &size);
   if (file == nullptr)
      throw std::runtime_error("no file in memory");
   int const error = Host::writeSynth(file, options);
   std::fclose(file);
   std::unique_ptr<char, decltype(&std::free)> const owner(bytes, &std::free);
   if (error != 0)
      throw std::runtime_error("the state can't be written");
   return {bytes, size};
}

} // namespace Tests
