#include "tests/properties/DamagedStates.h"
#include "tests/properties/Document.h"
#include "tests/properties/Views.h"

#include <gtest/gtest.h>

// What holds of every answer by itself, and of answers to the same question.

using namespace Tests;

namespace {

// The whole document as another parser reads it.
void expectDocument(std::string const& json) {
   try {
      Json const document = parsed(json);
      EXPECT_EQ(document.kind, Json::Kind::object);
      EXPECT_EQ(repeatedMember(document), "");
   } catch (std::runtime_error const& error) {
      ADD_FAILURE() << error.what() << " in " << json;
   }
   EXPECT_TRUE(json.ends_with("}\n"));
   EXPECT_EQ(json.find('\n'), json.size() - 1) << json;
}

TEST(Answers, jsonIsOneDocumentInOneLine) {
   forEachState([](DamagedState const& state) {
      for (View const& view : tunnelViews) {
         SCOPED_TRACE(view.name);
         expectDocument(answer(*tunnelCommand(state.router), view, Form::json));
      }
      expectDocument(answer(*statusCommand(state.router), Form::json));
   });
}

TEST(Answers, textEndsInALineFeed) {
   forEachState([](DamagedState const& state) {
      for (View const& view : tunnelViews) {
         std::string const text = answer(*tunnelCommand(state.router), view, Form::text);
         EXPECT_TRUE(text.empty() || text.ends_with('\n')) << view.name << ": " << text;
         EXPECT_EQ(text.find_first_of(std::string_view("\r\0", 2)), std::string::npos) << view.name << ": " << text;
      }
      EXPECT_TRUE(answer(*statusCommand(state.router), Form::text).ends_with('\n'));
   });
}

// The widths of the columns stay with the object, and the sub-tunnel summary raises them from table to table: there the
// second answer is that of columns already at their widest.
TEST(Answers, areTheSameEachTime) {
   forEachState([](DamagedState const& state) {
      for (View const& view : tunnelViews)
         for (Form const form : forms) {
            auto const command = tunnelCommand(state.router);
            std::string const first = answer(*command, view, form);
            std::string const second = answer(*command, view, form);
            bool const widens = view.summary && view.subTunnel && form == Form::text;
            EXPECT_EQ(widens ? answer(*command, view, form) : first, second) << view.name;
            EXPECT_EQ(answer(*tunnelCommand(state.router), view, form), first) << view.name;
         }
      for (Form const form : forms) {
         auto const command = statusCommand(state.router);
         std::string const first = answer(*command, form);
         EXPECT_EQ(answer(*command, form), first);
         EXPECT_EQ(answer(*statusCommand(state.router), form), first);
      }
   });
}

} // namespace
