#include "tests/properties/Agreement.h"

#include "tests/properties/DamagedStates.h"

#include <gtest/gtest.h>

// Text and JSON agree on every value that both show.

using namespace Tests;

namespace {

TEST(Agreement, ofTheTunnelViews) {
   std::set<Line const*> seen;
   forEachState([&](DamagedState const& state) {
      for (View const& view : tunnelViews) {
         std::string const text = answer(*tunnelCommand(state.router), view, Form::text);
         std::string const json = answer(*tunnelCommand(state.router), view, Form::json);
         try {
            requireAgreement(view, text, parsed(json), seen);
         } catch (std::runtime_error const& error) {
            ADD_FAILURE() << view.name << ": " << error.what();
         }
      }
   });
   // A label that never comes would say nothing; a short run doesn't meet them all.
   if (stateCount() < 1000)
      return;
   for (LineTable const* table :
        {&tunnelLines, &subTunnelLines, &splitLines, &autoBwLines, &pathLines, &treeLines, &lspLines})
      for (Line const& line : table->lines)
         EXPECT_TRUE(seen.contains(&line)) << table->name << ": " << line.label;
}

TEST(Agreement, ofTheStatusView) {
   forEachState([&](DamagedState const& state) {
      std::string const text = answer(*statusCommand(state.router), Form::text);
      std::string const json = answer(*statusCommand(state.router), Form::json);
      try {
         requireStatusAgreement(text, parsed(json));
      } catch (std::runtime_error const& error) {
         ADD_FAILURE() << error.what();
      }
   });
}

} // namespace
