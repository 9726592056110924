#include "host/state/LoadState.h"
#include "tests/fuzz/Fuzz.h"
#include "tests/properties/Document.h"
#include "tests/properties/Views.h"
#include "vane/Epoch.h"
#include "vane/System.h"

// Every view of whatever state a file can hold, in both formats.

namespace {

using namespace Tests;

void checkAnswer(std::string const& answer, Form form) {
   Fuzz::require(answer.empty() || answer.ends_with('\n'), "an answer ends in a line feed");
   if (form == Form::text)
      return;
   try {
      Fuzz::require(repeatedMember(parsed(answer)).empty(), "no member stands twice");
   } catch (std::runtime_error const& error) {
      std::fprintf(stderr, "%s in %s", error.what(), answer.c_str());
      Fuzz::require(false, "JSON is what a parser takes for it");
   }
}

void checkViews(Host::RouterState const& state) {
   if (state.clock)
      Vane::System::fixClocks(state.clock->currentTime, state.clock->utcTime);
   for (Form const form : forms) {
      for (View const& view : tunnelViews)
         checkAnswer(answer(*tunnelCommand(state), view, form), form);
      checkAnswer(answer(*statusCommand(state), form), form);
   }
   Vane::System::releaseClocks();
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
   Host::StateText const text(Fuzz::textOf(data, size));
   try {
      checkViews(Host::loadState("f", text));
   } catch (Host::StateError const&) {
   }
   Vane::collectRetired(); // or libFuzzer takes what waits for it to have leaked
   return 0;
}
