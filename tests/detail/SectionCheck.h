#pragma once

#include "tests/support/Router.h"

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <string_view>

namespace Tests {

// What a section writes: `section` is called as section(renderer, showText). The lines are there when the flag is true
// and not when it is false; the JSON members are there in both cases.
template<class Section>
void expectSection(Section&& section, std::string_view lines, std::string_view members) {
   EXPECT_EQ(rendered(textFormat, [&](auto* renderer) { section(renderer, true); }), lines);
   EXPECT_EQ(rendered(textFormat, [&](auto* renderer) { section(renderer, false); }), "");
   EXPECT_EQ(rendered(jsonFormat, [&](auto* renderer) { section(renderer, true); }), members);
   EXPECT_EQ(rendered(jsonFormat, [&](auto* renderer) { section(renderer, false); }), members);
}

// A record of which `edit` sets some fields; an empty handle when there is no `edit`.
template<class Record>
Rsvp::Handle<Record> recordOf(void (*edit)(Record&)) {
   if (edit == nullptr)
      return {};
   auto record = Brindle::makeNode<Record>();
   edit(*record);
   return record;
}

// One fact about a section that shows a record.
template<class Record>
struct SectionRow {
   void (*edit)(Record&); // nullptr for an empty handle
   std::string_view lines;
   std::string_view members;
};

template<class Record, class Section>
void expectRows(Section&& section, std::span<SectionRow<Record> const> rows) {
   for (std::size_t i = 0; i < rows.size(); ++i) {
      SCOPED_TRACE("row " + std::to_string(i));
      auto const record = recordOf(rows[i].edit);
      expectSection([&](auto* renderer, bool showText) { section(renderer, record, showText); }, rows[i].lines,
                    rows[i].members);
   }
}

} // namespace Tests
