#include "RsvpLer/frame/ModuleRecord.h"
#include "RsvpLer/frame/ShowRsvpLerTunnelFilter.h"
#include "brindle/Exception.h"
#include "tests/fuzz/Fuzz.h"

#include <string>

// The text form of a filter: whatever text is taken for one comes back unchanged, and so does every name.

namespace {

using Rsvp::Cli::ShowRsvpLerTunnelFilter;

Brindle::FunctionTable const& filterType = _RsvpLerCliCapi_35b5d92e19a7383a_vaneModule.functionTables[1];

ShowRsvpLerTunnelFilter decoded(std::string_view text) {
   Brindle::GenericValue result;
   filterType.inspectDecodeFromString(result, text);
   return result.get<ShowRsvpLerTunnelFilter>();
}

std::string encoded(ShowRsvpLerTunnelFilter const& filter) {
   return std::string(filterType.inspectEncodeToString(filter));
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
   std::string_view const text = Fuzz::textOf(data, size);
   try {
      Fuzz::require(encoded(decoded(text)) == text, "a text survives its filter");
   } catch (Brindle::Exception const& error) {
      Fuzz::require(Fuzz::isPlainLine(error.what()), "the complaint is one line");
   }
   ShowRsvpLerTunnelFilter const named{std::string(text)};
   Fuzz::require(decoded(encoded(named)) == named, "a name survives the text");
   return 0;
}
