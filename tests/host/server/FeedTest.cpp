#include "host/sample/Sample.h"
#include "host/server/FeedSession.h"
#include "host/state/LoadState.h"
#include "tests/host/server/LiveServer.h"
#include "vane/System.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <set>

// Changes as an agent sends them.

namespace Host::Test {

namespace {

using namespace std::chrono_literals;
using testing::EndsWith;
using testing::StartsWith;
using Json = nlohmann::ordered_json;

constexpr char const* views[] = {"status",
                                 "status --json",
                                 "tunnel",
                                 "tunnel --json",
                                 "tunnel --detail",
                                 "tunnel --detail --json",
                                 "tunnel --lsp",
                                 "tunnel --lsp --json",
                                 "tunnel --summary",
                                 "tunnel --history --detail",
                                 "tunnel --history --json",
                                 "tunnel --sub-tunnel --detail --history",
                                 "tunnel --sub-tunnel --lsp --json"};

std::vector<std::string> answers(LiveServer const& server) {
   std::vector<std::string> all;
   for (char const* view : views)
      all.push_back(ask(server.path(), view));
   return all;
}

RouterState stateOf(Json const& document) {
   return loadState("f", StateText(document.dump()));
}

std::string repeated(std::string const& text, std::size_t count) {
   std::string all;
   for (std::size_t i = 0; i < count; ++i)
      all += text;
   return all;
}

class Feed : public testing::Test {
protected:
   ~Feed() override { Vane::System::releaseClocks(); }

   Json const sample_ = Json::parse(sampleState());
   static constexpr char const* roots_[] = {"rsvpLerStatus", "rsvpLerFathomStatus"};
};

// Each table is filled row by row, from nothing, and emptied again.
TEST_F(Feed, BuildsTheStateOfAFileRowByRow) {
   Json rest = sample_;
   Json empty = sample_;
   std::string set;
   std::string erase;
   std::size_t count = 0;
   std::set<std::string> tables;
   for (char const* root : roots_) {
      for (auto const& [table, rows] : sample_[root].items()) {
         ASSERT_FALSE(rows.empty()) << table;
         tables.insert(table);
         for (Json const& row : rows) {
            set += Json{{"set", table}, {"row", row}}.dump() + '\n';
            // The key stands first in each row of the sample. It may come bare or as the member.
            auto const key = row.begin();
            Json const member = Json{{key.key(), key.value()}};
            erase += Json{{"key", ++count % 2 == 0 ? key.value() : member}, {"delete", table}}.dump() + '\n';
         }
      }
      rest.erase(root);
      for (auto const& [table, rows] : sample_[root].items())
         empty[root][table] = Json::array();
   }
   EXPECT_EQ(tables.size(), 19u);

   std::vector<std::string> const full = answers(LiveServer(stateOf(sample_)));
   std::vector<std::string> const none = answers(LiveServer(stateOf(empty)));
   ASSERT_NE(full, none);
   LiveServer server(stateOf(rest));
   EXPECT_EQ(feed(server.path(), set), repeated("ok\n", count));
   EXPECT_EQ(answers(server), full);
   EXPECT_EQ(feed(server.path(), set), repeated("ok\n", count)); // each replaces itself
   EXPECT_EQ(answers(server), full);
   EXPECT_EQ(feed(server.path(), erase), repeated("ok\n", count));
   EXPECT_EQ(answers(server), none);
   EXPECT_EQ(feed(server.path(), erase), repeated("ok\n", count)); // nothing is there any more
   EXPECT_EQ(answers(server), none);
}

TEST_F(Feed, ARowWithoutItsCollectionTakesItOut) {
   Json without = sample_;
   Json const row = without["rsvpLerStatus"]["lspGroupStatusCollTable"][0];
   without["rsvpLerStatus"]["lspGroupStatusCollTable"].erase(0);
   std::string const expected = ask(LiveServer(stateOf(without)).path(), "tunnel --detail");
   LiveServer server(stateOf(sample_));
   EXPECT_NE(ask(server.path(), "tunnel --detail"), expected);
   Json const line{{"set", "lspGroupStatusCollTable"}, {"row", {{"mbbTunnelConfigId", row["mbbTunnelConfigId"]}}}};
   EXPECT_EQ(feed(server.path(), line.dump()), "ok\n");
   EXPECT_EQ(ask(server.path(), "tunnel --detail"), expected);
}

TEST_F(Feed, SaysWhatIsWrongAndChangesNothing) {
   LiveServer server(stateOf(sample_));
   std::vector<std::string> const before = answers(server);
   struct Row {
      std::string line;
      std::string error;
   };
   for (Row const& row : std::initializer_list<Row>{
              {"", "expected an object, found the end of the file"},
              {"[]", "expected an object, found an array"},
              {"nonsense", "expected an object, found nonsense"},
              {"{}", "expected the members set and row, delete and key, or load alone"},
              {R"({"set":"tunnelIndexMap"})", "row: expected the row to set, found none"},
              {R"({"delete":"tunnelIndexMap"})", "key: expected the key of the row to delete, found none"},
              {R"({"row":{}})", "expected the members set and row, delete and key, or load alone"},
              {R"({"set":"tunnelIndexMap","row":{},"load":{}})",
               "expected the members set and row, delete and key, or load alone"},
              {R"({"set":"tunnelIndexMap","key":{}})",
               "expected the members set and row, delete and key, or load alone"},
              {R"({"put":"x"})", "put: expected one of the members set, row, delete, key, load, found \"put\""},
              {R"({"set":"nope","row":{}})", R"(set: expected the name of a table of the state file, found "nope")"},
              {R"({"set":"rsvpLerConfig","row":{}})",
               R"(set: expected the name of a table of the state file, found "rsvpLerConfig")"},
              {R"({"delete":7,"key":{}})", "delete: expected a string, found 7"},
              {R"({"set":"tunnelIndexMap","row":{"tunnelIndex":1}})",
               "row: expected the member tunnelSpecId, found an object without it"},
              {R"({"row":{"tunnelSpecId":{"name":"x"},"tunnelIndex":"y"},"set":"tunnelIndexMap"})",
               R"(row.tunnelIndex: expected a whole number from 0 to 4294967295, found "y")"},
              {R"({"set":"tunnelIndexMap","row":{"tunnelSpecId":{"name":"den-atl-1","source":"cli"},"bad":1}})",
               R"(row.bad: expected one of the members tunnelSpecId, tunnelIndex, found "bad")"},
              {R"({"set":"superTunnelStatusColl","row":{"tunnelSpecId":{"name":"den-atl-1"},"state":9}})",
               "row.state: expected "},
              {R"({"delete":"tunnelIndexMap","key":{"nam":"x"}})",
               R"(key.nam: expected one of the members name, source, found "nam")"},
              {R"({"delete":"tunnelIndexMap","key":{"tunnelSpecId":{"name":"x"},"name":"x"}})",
               R"(key.name: expected only the member tunnelSpecId, found "name")"},
              {R"({"delete":"tunnelIndexMap","key":3})", "key: expected an object, found 3"},
              {R"({"delete":"rsvpLerTunnelHistory","key":{"name":"x"}})",
               "key: expected a whole number from 0 to 4294967295"},
              {R"({"load":7})", "load: expected an object, found 7"},
              {R"({"load":{"rsvpLerStatus":{"tunnelIndexMap":[{"tunnelSpecId":{"name":"x"}},3]}}})",
               "load.rsvpLerStatus.tunnelIndexMap[1]: expected an object, found 3"},
              {R"({"load":{}} {"load":{}})", "expected the end of the file, found an object"},
              {"\xff", "expected UTF-8 text, found \\xff"},
              {R"({"delete":"tunnelIndexMap","key":)", "expected"},
        }) {
      std::string const answer = feed(server.path(), row.line + '\n');
      EXPECT_THAT(answer, StartsWith("error: " + row.error)) << row.line;
      EXPECT_EQ(answer.find('\n'), answer.size() - 1) << row.line;
   }
   EXPECT_EQ(answers(server), before);
}

TEST_F(Feed, LoadsAWholeStateAndItsClock) {
   LiveServer server(stateOf(sample_));
   std::string const synth = synthText(20);
   std::vector<std::string> const expected = answers(LiveServer(synthState(20)));
   Json const line{{"load", Json::parse(synth)}};
   EXPECT_EQ(feed(server.path(), line.dump() + '\n'), "ok\n");
   EXPECT_EQ(answers(server), expected);
   double const fixed = Vane::System::utcTime().seconds();
   EXPECT_EQ(fixed, line["load"]["clock"]["utcTime"].get<double>());
   EXPECT_EQ(feed(server.path(), "{\"load\":{}}\n"), "ok\n");
   EXPECT_NE(Vane::System::utcTime().seconds(), fixed);
   EXPECT_EQ(ask(server.path(), "tunnel --json"), "{\"tunnels\":{}}\n");
}

TEST_F(Feed, ARunningAnswerEndsOnTheStateItBeganWith) {
   LiveServer server(synthState(1000));
   std::string const whole = ask(server.path(), "tunnel --json");
   Peer running(server.path());
   running.send("tunnel --json\n");
   ASSERT_EQ(running.receive(1), "{");
   Json const line{{"load", {{"clock", Json::parse(synthText(1))["clock"]}}}};
   EXPECT_EQ(feed(server.path(), line.dump()), "ok\n");
   EXPECT_EQ(ask(server.path(), "tunnel --json"), "{\"tunnels\":{}}\n");
   EXPECT_EQ(running.receiveAll(), whole.substr(1));
}

constexpr char const* someChange = "{\"set\":\"tunnelIndexMap\",\"row\":{\"tunnelSpecId\":{\"name\":\"x\"}}}\n";

TEST_F(Feed, AnAgentMaySendOnBeforeItReads) {
   LiveServer server(stateOf(sample_));
   EXPECT_EQ(feed(server.path(), repeated(someChange, 100'000)), repeated("ok\n", 100'000));
}

TEST_F(Feed, AcknowledgesEachLineAtOnceAndWaitsForTheNext) {
   ServerOptions options;
   options.clientTimeout = 200ms;
   LiveServer server(stateOf(sample_), options);
   Peer agent(server.path());
   agent.send("feed\n");
   for (int i = 0; i < 3; ++i) {
      std::this_thread::sleep_for(300ms); // an agent may have nothing to say for as long as it likes
      agent.send(std::string_view(someChange).substr(0, 20));
      agent.send(std::string_view(someChange).substr(20));
      EXPECT_EQ(agent.receiveLines(1), "ok\n");
   }
   agent.send("{\"set\":"); // but not in the middle of a line
   EXPECT_EQ(agent.receiveAll(), "");
}

TEST_F(Feed, CutsOffAnAgentThatReadsNothing) {
   ServerOptions options;
   options.clientTimeout = 300ms;
   LiveServer server(stateOf(sample_), options);
   Peer agent(server.path());
   agent.send("feed\n");
   std::string const lines = repeated("[]\n", 10'000);
   bool taken = true;
   for (int i = 0; taken && i < 100; ++i)
      taken = agent.send(lines);
   EXPECT_FALSE(taken);
   EXPECT_THAT(ask(server.path(), "status --json"), StartsWith("{"));
}

TEST_F(Feed, ALineMayBeLong) {
   LiveServer server(stateOf(sample_));
   std::string const blanks(10'000'000, ' ');
   EXPECT_EQ(
         feed(server.path(), "{\"set\":" + blanks + "\"tunnelIndexMap\",\"row\":{\"tunnelSpecId\":{\"name\":\"x\"}}}"),
         "ok\n");
}

} // namespace

} // namespace Host::Test
