#include "host/server/FeedLine.h"

#include "host/state/LoadState.h"
#include "host/state/StateError.h"
#include "tests/fuzz/Fuzz.h"
#include "tests/properties/Document.h"
#include "tests/properties/Views.h"

// Any line of a feed is a change or one line of complaint, and what the changes leave behind can be shown. The input
// has a line a line; each is applied to the state that the lines before it have left.

namespace {

using namespace Tests;

// The line in memory of its own, as a connection hands it over.
void apply(std::string_view text, Host::LiveState& live) {
   Host::StateText const memory(text);
   try {
      live.apply(Host::readChange({memory.view(), memory.capacity()}));
   } catch (Host::StateError const& error) {
      Fuzz::require(Fuzz::isPlainLine(error.what()), "the complaint is one line");
   }
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
   std::string_view rest = Fuzz::textOf(data, size);
   Host::LiveState live(Host::loadState("f", Host::StateText("{\"rsvpLerStatus\":{},\"rsvpLerFathomStatus\":{}}")));
   while (!rest.empty()) {
      std::size_t const end = std::min(rest.find('\n'), rest.size());
      apply(rest.substr(0, end), live);
      rest.remove_prefix(std::min(end + 1, rest.size()));
   }
   for (View const& view : tunnelViews)
      parsed(answer(*tunnelCommand(live.current()), view, Form::json));
   parsed(answer(*statusCommand(live.current()), Form::json));
   return 0;
}
