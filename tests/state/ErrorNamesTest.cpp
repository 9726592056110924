#include "RsvpLer/state/RsvpErrorWithNode.h"
#include "tests/support/Router.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Rsvp;

namespace {

struct CodeRow {
   std::uint32_t code;
   std::string name;
};
CodeRow const codes[] = {
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
};

struct ValueRow {
   std::uint32_t code;
   std::uint16_t value;
   std::string name;
};
ValueRow const values[] = {
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
};

std::string expected(std::uint32_t code, std::uint16_t value) {
   auto const codeRow = std::ranges::find(codes, code, &CodeRow::code);
   auto const valueRow =
         std::ranges::find_if(values, [&](ValueRow const& row) { return row.code == code && row.value == value; });
   std::string text = codeRow == std::end(codes) ? "Unknown error" : codeRow->name;
   if (valueRow != std::end(values))
      text += ": " + valueRow->name;
   return text + " (" + std::to_string(code) + "/" + std::to_string(value) + ") from 10.0.0.3";
}

} // namespace

TEST(ErrorNames, ofEveryCodeAndValue) {
   for (std::uint32_t code = 0; code < 300; ++code)
      for (std::uint16_t value = 0; value < 20; ++value)
         EXPECT_EQ((RsvpErrorWithNode{code, value, Tests::address("10.0.0.3")}.errorStr(false, false)),
                   expected(code, value));
}

TEST(ErrorNames, onlyTheWholeNumbersCount) {
   EXPECT_EQ((RsvpErrorWithNode{256 + 24, 5, Tests::address("10.0.0.3")}.errorStr(false, false)),
             "Unknown error (280/5) from 10.0.0.3");
   EXPECT_EQ((RsvpErrorWithNode{24, 256 + 5, Tests::address("10.0.0.3")}.errorStr(false, false)),
             "Routing problem (24/261) from 10.0.0.3");
}
