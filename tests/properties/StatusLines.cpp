#include "tests/properties/Agreement.h"

namespace Tests {

namespace {

std::string interfaceWords(Block const& status) {
   std::string const& name = status.text("localIntf");
   bool const configured = status.flag("localIntfConfigured");
   if (name.empty())
      return "";
   return name + (configured ? " (configured)" : " (automatically chosen)");
}

std::string addressWords(Block const& status) {
   return status.text("localIntfIp");
}

std::string supportWords(Block const& status) {
   return status.flag("autoBwSupported") ? "supported" : "unsupported";
}

std::string optimizationWords(Block const& status) {
   std::uint64_t const interval = status.number("optimizationInterval");
   return interval == 0 ? "disabled" : "enabled, interval: " + std::to_string(interval) + " seconds";
}

// The lines in their order; those with a member show its number, and those without a member or words are headings.
struct StatusLine {
   std::string_view label;
   std::string_view member;
   std::string (*words)(Block const&) = nullptr;
   bool ofSplitTunnels = false; // only where there are any
};

constexpr StatusLine lines[] = {
      {"Local interface: ", "", interfaceWords},
      {"IP address: ", "", addressWords},
      {"Auto bandwidth: ", "", supportWords},
      {"Periodic optimization: ", "", optimizationWords},
      {"", ""},
      {"P2P", ""},
      {"   Number of tunnels: ", "tunnelCount"},
      {"      Operational: ", "tunnelUpCount"},
      {"   Secondary path enabled: ", "tunnelSecondaryEnabledCount"},
      {"   Secondary path in use: ", "tunnelSecondaryInUseCount"},
      {"   Number of split bandwidth enabled tunnels: ", "splitBwTunnelCount", nullptr, true},
      {"   Number of sub tunnels: ", "subTunnelCount", nullptr, true},
      {"      Operational: ", "subTunnelUpCount", nullptr, true},
      {"   Secondary path in use: ", "subTunnelSecondaryInUseCount", nullptr, true},
      {"   Number of LSPs: ", "lspCount"},
      {"      Operational: ", "lspUpCount"},
      {"", ""},
      {"P2MP", ""},
      {"   Number of tunnels: ", "p2mpTunnelCount"},
      {"      Operational: ", "p2mpTunnelUpCount"},
      {"   Number of LSPs: ", "p2mpLspCount"},
      {"      Operational: ", "p2mpLspUpCount"},
      {"   Number of sub-LSPs: ", "p2mpSubLspCount"},
      {"      Operational: ", "p2mpSubLspUpCount"},
};

} // namespace

void requireStatusAgreement(std::string_view text, Json const& document) {
   TextReader reader(text);
   Block const status(document);
   for (StatusLine const& line : lines) {
      if (line.ofSplitTunnels && !status.has("splitBwTunnelCount"))
         continue;
      reader.expect(line.label);
      if (line.words != nullptr)
         reader.expect(line.words(status));
      else if (!line.member.empty())
         reader.expect(status.digits(line.member));
      reader.expect("\n");
   }
   reader.expectEnd();
   for (auto const& [member, value] : document.members)
      if (!value.shown)
         throw Disagreement("no text shows " + member);
}

} // namespace Tests
