#include "host/state/LoadState.h"

#include "host/state/StateSummary.h"
#include "tests/fuzz/Fuzz.h"
#include "vane/Epoch.h"

// Any bytes are a state or one line of complaint.

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
   Host::StateText const text(Fuzz::textOf(data, size));
   try {
      Host::RouterState const state = Host::loadState("f", text);
      Fuzz::require(Fuzz::isPlainLine(Host::summaryText(state)), "a state can be summed up in one line");
   } catch (Host::StateError const& error) {
      std::string_view const message = error.what();
      Fuzz::require(message.starts_with("f:") && Fuzz::isPlainLine(message), "the complaint is one line");
   }
   Vane::collectRetired(); // or libFuzzer takes what waits for it to have leaked
   return 0;
}
