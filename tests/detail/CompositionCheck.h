#pragma once

#include "RsvpLer/detail/Composition.h"
#include "tests/detail/RichState.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <span>
#include <string>
#include <string_view>

// Holds a table of sections against a second one, which a test has written out by hand, in two ways: cell by cell, and
// by what comes out when the display functions run and when the test calls the sections itself.

namespace Tests {

// Whose turn it is. `variant` is that of the tunnel.
template<class View>
struct SectionCall {
   Rsvp::Cli::ShowRsvpLerTunnel& command;
   scrivo::RendererV2* renderer;
   View const& view;
   Rsvp::Cli::ShowTunnelVariant variant;
};

template<class View>
struct ExpectedRow {
   std::string_view section;
   std::string_view cells; // T, F, y for a call without the flag and - for none, one for each variant
   void (*call)(SectionCall<View> const& call, bool showText);
   bool whenNotSplit = false;
};

inline char letterOf(Rsvp::Cli::Cell cell) {
   switch (cell) {
   case Rsvp::Cli::Cell::T:
      return 'T';
   case Rsvp::Cli::Cell::F:
      return 'F';
   case Rsvp::Cli::Cell::yes:
      return 'y';
   case Rsvp::Cli::Cell::dash:
      return '-';
   }
   return '?';
}

template<class Section, class View>
void expectSameCells(std::span<Section const> sections, std::span<ExpectedRow<View> const> rows) {
   ASSERT_EQ(sections.size(), rows.size());
   for (std::size_t i = 0; i < rows.size(); ++i) {
      std::string cells;
      for (auto const cell : sections[i].cells)
         cells += letterOf(cell);
      EXPECT_EQ(cells, rows[i].cells) << rows[i].section;
      EXPECT_EQ(sections[i].condition != nullptr, rows[i].whenNotSplit) << rows[i].section;
   }
}

// What the rows write in one column, one after the other.
template<class View>
std::string composed(std::uint32_t format, std::span<ExpectedRow<View> const> rows, std::size_t column, bool notSplit,
                     Rsvp::Cli::ShowRsvpLerTunnel& command, View const& view, Rsvp::Cli::ShowTunnelVariant variant) {
   return rendered(format, [&](auto* renderer) {
      for (auto const& row : rows)
         if (row.cells[column] != '-' && (notSplit || !row.whenNotSplit))
            row.call({command, renderer, view, variant}, row.cells[column] == 'T');
   });
}

// Makes sure that a section that is missing, stands in another place or gets another flag changes the output: each row
// writes something that no other row writes, and a flag decides over its lines. `withoutOutput` and `withoutLines` name
// the sections for which that is meant not to be so.
template<class View>
void expectDistinctRows(std::span<ExpectedRow<View> const> rows, Rsvp::Cli::ShowRsvpLerTunnel& command,
                        View const& view, std::set<std::string_view> const& withoutOutput,
                        std::set<std::string_view> const& withoutLines) {
   using Rsvp::Cli::ShowTunnelVariant;
   std::set<std::string> seen;
   for (auto const& row : rows) {
      auto const alone = [&](std::uint32_t format, bool showText) {
         return rendered(format, [&](auto* renderer) {
            row.call({command, renderer, view, ShowTunnelVariant::showTunnelP2p}, showText);
         });
      };
      std::string const lines = alone(textFormat, true);
      bool const hasFlag = row.cells.find_first_of("TF") != std::string_view::npos;
      EXPECT_EQ(lines.empty() && alone(jsonFormat, true).empty(), withoutOutput.contains(row.section)) << row.section;
      if (hasFlag) {
         EXPECT_EQ(lines.empty(), withoutOutput.contains(row.section) || withoutLines.contains(row.section))
               << row.section;
         EXPECT_EQ(alone(textFormat, false), "") << row.section;
      }
      bool const isNew = seen.insert(lines + '|' + alone(jsonFormat, true)).second;
      EXPECT_TRUE(isNew) << row.section;
   }
}

} // namespace Tests
