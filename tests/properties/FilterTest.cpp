#include "tests/properties/DamagedStates.h"
#include "tests/properties/Document.h"
#include "tests/properties/Views.h"

#include <gtest/gtest.h>

// A tunnel that is asked for by its name looks as it does among the others.

using namespace Tests;

namespace {

using Rsvp::Cli::ShowRsvpLerTunnel;

std::vector<std::string> listedNames(ShowRsvpLerTunnel& command, View const& view) {
   std::vector<std::string> names;
   // Held, since the members are walked.
   Json const document = parsed(answer(command, view, Form::json));
   for (auto const& [name, tunnel] : document.find("tunnels")->members)
      names.push_back(name);
   return names;
}

// The block without the frame of the document.
std::string jsonBlock(std::string const& document) {
   constexpr std::string_view front = "{\"tunnels\":{";
   constexpr std::string_view back = "}}\n";
   EXPECT_TRUE(document.starts_with(front) && document.ends_with(back)) << document;
   return document.substr(front.size(), document.size() - front.size() - back.size());
}

// What the table headings of a summary look like at the widths that the object has come to.
struct Headings {
   explicit Headings(ShowRsvpLerTunnel& command, View const& view) {
      if (!view.summary || view.subTunnel)
         return;
      std::string const both = answer(command, view, Form::text, "\n no tunnel has this name");
      std::size_t const second = both.find("\nP2MP\n");
      p2p = both.substr(0, second);
      p2mp = both.substr(second);
   }

   // The rows of each table.
   std::pair<std::string, std::string> rows(std::string const& text) const {
      std::size_t const second = p2mp.empty() ? text.size() : text.find(p2mp);
      EXPECT_TRUE(text.starts_with(p2p) && second != std::string::npos) << text;
      return {text.substr(p2p.size(), second - p2p.size()), text.substr(std::min(second + p2mp.size(), text.size()))};
   }

   std::string p2p;
   std::string p2mp;
};

TEST(Filter, byNameGivesTheSameBlockAsTheWholeListing) {
   std::size_t blocks = 0;
   forEachState([&](DamagedState const& state) {
      for (View const& view : tunnelViews) {
         SCOPED_TRACE(view.name);
         auto const command = tunnelCommand(state.router);
         // Raises the widths to what they stay at.
         static_cast<void>(answer(*command, view, Form::text));
         auto const names = listedNames(*command, view);
         Headings const headings(*command, view);
         auto const whole = headings.rows(answer(*command, view, Form::text));
         std::pair<std::string, std::string> parts;
         std::string json;
         for (std::string const& name : names) {
            ASSERT_NE(name, "") << "an empty name asks for all";
            auto const rows = headings.rows(answer(*command, view, Form::text, name));
            parts.first += rows.first;
            parts.second += rows.second;
            json.append(json.empty() ? "" : ",").append(jsonBlock(answer(*command, view, Form::json, name)));
            ++blocks;
         }
         EXPECT_EQ(parts, whole);
         EXPECT_EQ(json, jsonBlock(answer(*command, view, Form::json)));
      }
   });
   EXPECT_GT(blocks, 10 * std::size_t{stateCount()});
}

} // namespace
