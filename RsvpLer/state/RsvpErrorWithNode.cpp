#include "RsvpLer/state/RsvpErrorWithNode.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Rsvp {

namespace {

// The error codes and values of RSVP, as RFC 2205 and RFC 3209 assign them. Both tables ascend.
struct CodeName {
   std::uint32_t code;
   std::string_view name;
};

constexpr auto codeNames = std::to_array<CodeName>({
      {0, "Confirmation"},
      {1, "Admission control failure"},
      {2, "Policy control failure"},
      {3, "No path information for this reservation"},
      {4, "No sender information for this reservation"},
      {5, "Conflicting reservation style"},
      {6, "Unknown reservation style"},
      {7, "Conflicting destination ports"},
      {8, "Conflicting sender ports"},
      {12, "Service preempted"},
      {13, "Unknown object class"},
      {14, "Unknown object C-Type"},
      {20, "Reserved for API"},
      {21, "Traffic control error"},
      {22, "Traffic control system error"},
      {23, "RSVP system error"},
      {24, "Routing problem"},
      {25, "Notify"},
});

struct ValueName {
   std::uint32_t code;
   std::uint16_t value;
   std::string_view name;
};

constexpr auto valueNames = std::to_array<ValueName>({
      {1, 1, "delay bound cannot be met"},
      {1, 2, "requested bandwidth unavailable"},
      {1, 3, "MTU in flowspec larger than interface MTU"},
      {21, 1, "service conflict"},
      {21, 2, "service unsupported"},
      {21, 3, "bad flowspec value"},
      {21, 4, "bad tspec value"},
      {21, 5, "bad adspec value"},
      {24, 1, "bad EXPLICIT_ROUTE object"},
      {24, 2, "bad strict node"},
      {24, 3, "bad loose node"},
      {24, 4, "bad initial subobject"},
      {24, 5, "no route available toward destination"},
      {24, 6, "unacceptable label value"},
      {24, 7, "RRO indicated routing loops"},
      {24, 8, "MPLS being negotiated, but a non-RSVP-capable router stands in the path"},
      {24, 9, "MPLS label allocation failure"},
      {24, 10, "unsupported L3PID"},
      {25, 1, "RRO too large for MTU"},
      {25, 2, "RRO notification"},
      {25, 3, "tunnel locally repaired"},
});

std::string_view nameOfCode(std::uint32_t code) noexcept {
   auto const found = std::ranges::find(codeNames, code, &CodeName::code);
   return found == codeNames.end() ? std::string_view() : found->name;
}

std::string_view nameOfValue(std::uint32_t code, std::uint16_t value) noexcept {
   auto const found =
         std::ranges::find_if(valueNames, [&](ValueName const& row) { return row.code == code && row.value == value; });
   return found == valueNames.end() ? std::string_view() : found->name;
}

} // namespace

Brindle::String RsvpErrorWithNode::errorStr(bool, bool) const {
   Brindle::String text;
   if (std::string_view const codeName = nameOfCode(errorCode); codeName.empty()) {
      text = "Unknown error";
   } else {
      text = codeName;
      if (std::string_view const valueName = nameOfValue(errorCode, errorValue); !valueName.empty())
         text.append(": ").append(valueName);
   }
   text.append(" (").append(std::to_string(errorCode)).append("/").append(std::to_string(errorValue));
   return text.append(") from ").append(node.stringValue());
}

void RsvpErrorWithNodeOrderedSet::errorIs(RsvpErrorWithNode const& error, bool present) {
   if (present)
      errors_.insert(error);
   else
      errors_.erase(error);
}

} // namespace Rsvp
