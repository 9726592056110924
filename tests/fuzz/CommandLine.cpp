#include "host/CommandLine.h"

#include "tests/fuzz/Fuzz.h"

// Any words are a request or one line of complaint. The input has a word a line.

namespace {

std::vector<std::string> wordsOf(std::string_view text) {
   std::vector<std::string> words;
   for (std::size_t at = 0; at < text.size();) {
      std::size_t const end = std::min(text.find('\n', at), text.size());
      words.emplace_back(text.substr(at, end - at));
      at = end + 1;
   }
   return words;
}

// What the frame takes for granted.
void checkFlags(Host::ShowTunnelRequest const& request) {
   bool const detailOrHistory = request.detail || request.history;
   Fuzz::require(request.summary + request.lsp + detailOrHistory <= 1, "at most one view is asked for");
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
   try {
      Host::Request const request = Host::parseCommandLine(wordsOf(Fuzz::textOf(data, size)));
      if (auto const* const tunnel = std::get_if<Host::ShowTunnelRequest>(&request))
         checkFlags(*tunnel);
   } catch (Host::UsageError const& error) {
      std::string_view const message = error.what();
      Fuzz::require(!message.empty() && message.find_first_of("\n\r\x1b") == message.npos, "the complaint is one line");
   }
   return 0;
}
