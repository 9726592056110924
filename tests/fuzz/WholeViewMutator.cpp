#include "host/synth/Damage.h"
#include "tests/fuzz/Fuzz.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstring>
#include <string>

// Most changes of a byte make a state that doesn't load. So libFuzzer mostly gets changes that keep it one: those that
// `lershow state synth --damage` makes.

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

// Empty for what is no state to begin with.
std::string damaged(std::string_view text, unsigned seed) {
   constexpr double rates[] = {0.003, 0.01, 0.05, 0.2};
   try {
      auto state = nlohmann::ordered_json::parse(text);
      if (!state.is_object())
         return "";
      Host::Synth::damage(state, rates[seed / 8 % std::size(rates)], seed);
      return state.dump();
   } catch (nlohmann::json::exception const&) {
      return "";
   }
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
   std::string const state = seed % 8 == 0 ? "" : damaged(Fuzz::textOf(data, size), seed);
   if (state.empty() || state.size() > maxSize)
      return LLVMFuzzerMutate(data, size, maxSize);
   std::copy(state.begin(), state.end(), data);
   return state.size();
}
