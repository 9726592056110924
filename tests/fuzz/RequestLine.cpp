#include "host/server/ViewRequest.h"
#include "tests/fuzz/Fuzz.h"

// Any request line is the request of a view or one line of complaint, and what it is taken for comes back when the line
// for it is written and read again.

namespace {

std::string lineOf(Host::ViewRequest const& request) {
   return std::visit([](auto const& view) { return Host::requestLine(view); }, request);
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
   try {
      std::string const line = lineOf(Host::parseViewRequest(Fuzz::textOf(data, size)));
      Fuzz::require(line.find('\n') == line.npos, "a request is one line");
      Fuzz::require(lineOf(Host::parseViewRequest(line)) == line, "a request survives its line");
   } catch (Host::UsageError const& error) {
      std::string_view const message = error.what();
      Fuzz::require(!message.empty() && message.find_first_of("\n\r\x1b") == message.npos, "the complaint is one line");
   }
   return 0;
}
