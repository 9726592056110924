#include "tests/lsp/LspState.h"
#include "tests/support/HookedBuffer.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

// Collections that change while a view walks them: the change is made from inside the rendering of one element.

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

// What body(command, renderer) writes when `change` happens as soon as `mark` has been written.
template<class Body>
std::string renderedWithChange(Router const& router, std::uint32_t format, std::string_view mark,
                               std::function<void()> const& change, Body&& body) {
   bool changed = false;
   HookedBuffer buffer([&](std::string_view written) {
      if (!changed && written.find(mark) != std::string_view::npos) {
         changed = true;
         change();
      }
   });
   scrivo::RendererV2 renderer(static_cast<scrivo::OutputFormat_t>(format), &buffer, true);
   auto const command = router.tunnelCommand();
   body(*command, &renderer);
   EXPECT_TRUE(changed);
   return std::string(buffer.text());
}

constexpr std::uint8_t initial[] = {10, 20, 30, 40};
constexpr std::uint8_t everUsed[] = {10, 15, 20, 25, 30, 35, 40, 50};

// The initial numbers are walked, and while 20 is being shown some come or go.
struct ChangeRow {
   char const* name;
   std::vector<std::uint8_t> removed;
   std::vector<std::uint8_t> added;
   std::vector<std::uint8_t> shown;
};

ChangeRow const changeRows[] = {
      {"one before the place removed", {10}, {}, {10, 20, 30, 40}},
      {"the current one removed", {20}, {}, {10, 20, 30, 40}},
      {"the next one removed", {30}, {}, {10, 20, 40}},
      {"the last one removed", {40}, {}, {10, 20, 30}},
      {"the current and the next one removed", {20, 30}, {}, {10, 20, 40}},
      {"all removed", {10, 20, 30, 40}, {}, {10, 20}},
      {"one added before the place", {}, {15}, {10, 20, 30, 40}},
      {"one added behind the place", {}, {25}, {10, 20, 25, 30, 40}},
      {"one added at the end", {}, {50}, {10, 20, 30, 40, 50}},
      {"added on both sides of the removed one", {20}, {15, 25}, {10, 20, 25, 30, 40}},
      {"removed and added again", {20, 30}, {20, 30}, {10, 20, 30, 40}},
      {"the rest replaced", {30, 40}, {35}, {10, 20, 35}},
};

TEST(ChangeOnTheWay, Errors) {
   for (auto const& row : changeRows) {
      SCOPED_TRACE(row.name);
      std::string text = "   LSP 7:\n"
                         "      Path specification: north, primary\n"
                         "      Bandwidth: 1.00 Mbps\n"
                         "      State: up\n"
                         "      Errors:\n";
      std::string json = R"({"lspId":7,"pathSpecName":"north","pathType":"primary","bandwidth":1000000,)"
                         R"("state":"up","inUse":false,"lspErrors":[)";
      for (auto const value : row.shown) {
         text.append("         Unknown error (100/").append(std::to_string(value)).append(") from 10.0.0.1\n");
         json.append(R"({"code":100,"value":)").append(std::to_string(value)).append(R"(,"node":"10.0.0.1"})");
         json.append(value == row.shown.back() ? "" : ",");
      }
      text += "      Path (explicit):\n";
      json += R"(],"pathSpecType":"explicit","hops":[]})";

      for (auto const format : {textFormat, jsonFormat}) {
         Router router = twoPathRouter();
         addLsp(router, requestId("t"), 7, {});
         addGroup(router, requestId("t"));
         RsvpErrors* errors = nullptr;
         router.lspRequestStatus(requestId("t"), [&](RsvpLerLspRequestStatus& record) {
            record.lspState = RsvpLerLspState::up;
            record.lspId = 7;
            errors = &record.errors;
            for (std::uint8_t const value : initial)
               errors->set(error(value), {});
         });
         auto const change = [&] {
            for (auto const value : row.removed)
               EXPECT_TRUE(errors->erase(error(value)));
            for (auto const value : row.added)
               EXPECT_TRUE(errors->set(error(value), {}));
         };
         EXPECT_EQ(renderedWithChange(router, format, format == textFormat ? "(100/20)" : R"("value":20)", change,
                                      [](auto const& command, auto* renderer) {
                                         command.renderLsp(renderer, requestId("t"), false);
                                      }),
                   format == textFormat ? text : json);
      }
   }
}

// Groups with those numbers, of which each has one LSP that carries the number as its id.
TEST(ChangeOnTheWay, Groups) {
   for (auto const& row : changeRows) {
      SCOPED_TRACE(row.name);
      std::string text;
      std::string json;
      for (auto const number : row.shown) {
         std::string const id = std::to_string(number);
         text.append("   LSP ").append(id).append(":\n"
                                                  "      Path specification: south, secondary\n"
                                                  "      Bandwidth: 1.00 Mbps\n"
                                                  "      State: up\n"
                                                  "      Path (dynamic):\n"
                                                  "         10.1.1.2\n");
         json.append(number == row.shown.front() ? "" : ",").append(R"({"lspId":)").append(id);
         json.append(R"(,"pathSpecName":"south","pathType":"secondary","bandwidth":1000000,"state":"up",)"
                     R"("inUse":false,"lspErrors":[],"pathSpecType":"dynamic","hops":["10.1.1.2"]})");
      }
      for (auto const format : {textFormat, jsonFormat}) {
         Router router = twoPathRouter();
         for (std::uint8_t const number : everUsed)
            addLsp(router, requestId("t", 1, number), number, {"10.1.1.2"});
         for (std::uint8_t const number : initial)
            addGroup(router, requestId("t", 1, number));
         auto const groups = router.status->lspGroupStatusCollTable.get()->find(mbbId("t"));
         auto const change = [&] {
            for (auto const number : row.removed)
               EXPECT_TRUE(groups->erase(groupId("t", number)));
            for (auto const number : row.added)
               addGroup(router, requestId("t", 1, number));
         };
         EXPECT_EQ(renderedWithChange(router, format, format == textFormat ? "LSP 20:" : R"("lspId":20)", change,
                                      [](auto const& command, auto* renderer) {
                                         command.renderLspsForTunnel(renderer, mbbId("t"), true);
                                      }),
                   format == textFormat ? text : json);
      }
   }
}

// A table that is taken away under the walk stays alive for it, but no LSP after that is found.
TEST(ChangeOnTheWay, TheWholeTableGoes) {
   Router router = twoPathRouter();
   for (std::uint8_t const number : {initial[0], initial[1]}) {
      addLsp(router, requestId("t", 1, number), number, {});
      addGroup(router, requestId("t", 1, number));
   }
   EXPECT_EQ(
         renderedWithChange(
               router, textFormat, "LSP 10:", [&] { router.status->lspGroupStatusCollTable.set(nullptr); },
               [](auto const& command, auto* renderer) { command.renderLspsForTunnel(renderer, mbbId("t"), true); }),
         "   LSP 10:\n"
         "      Path specification: south, secondary\n"
         "      Bandwidth: 1.00 Mbps\n"
         "      State: up\n"
         "      Path (dynamic):\n");
}

} // namespace
