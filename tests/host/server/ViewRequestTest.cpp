#include "host/server/ViewRequest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Host {

namespace {

using testing::ElementsAre;

using Words = std::vector<std::string>;

TEST(SplitWords, AsAShell) {
   struct Row {
      std::string_view line;
      Words words;
   };
   for (Row const& row : std::initializer_list<Row>{
              {"", {}},
              {" \t ", {}},
              {"tunnel", {"tunnel"}},
              {"  tunnel\ta  b\r", {"tunnel", "a", "b"}},
              {"'a b' \"c d\" e\\ f", {"a b", "c d", "e f"}},
              {"'' \"\"", {"", ""}},
              {"a'b'\"c\"d", {"abcd"}},
              {R"('a\b' "a\b" a\b)", {R"(a\b)", R"(a\b)", "ab"}},
              {R"("a\"b\\c" 'it'\''s')", {R"(a"b\c)", "it's"}},
              {R"("a\$b\`c" '\$' \$)", {"a$b`c", R"(\$)", "$"}},
              {"a\\", {"a\\"}},
              {"\"'\" '\"'", {"'", "\""}},
        })
      EXPECT_EQ(splitWords(row.line), row.words) << row.line;
}

TEST(SplitWords, RefusesAnOpenQuote) {
   for (std::string_view const line : {"'", "\"", "a 'b", "\"a\\\"", "'a\\'b'"})
      EXPECT_THROW(splitWords(line), UsageError) << line;
}

TEST(ParseViewRequest, ReadsViewsOnly) {
   auto const tunnel =
         std::get<ShowTunnelRequest>(parseViewRequest("tunnel 'a b' --history --detail --sub-tunnel --json"));
   EXPECT_EQ(tunnel.tunnelName, "a b");
   EXPECT_TRUE(tunnel.history && tunnel.detail && tunnel.subTunnel && !tunnel.lsp && !tunnel.summary);
   EXPECT_EQ(tunnel.format, Format::json);
   EXPECT_EQ(std::get<ShowStatusRequest>(parseViewRequest("status")).format, Format::text);
   for (std::string_view const line : {"", "state sample", "serve --socket x", "--help", "--version", "tunnel --help",
                                       "status --state f", "status --state=f", "tunnel --connect x", "tunnel --watch 1",
                                       "tunnel --anything", "tunnel -x", "status x", "tunnel --format xml"})
      EXPECT_THROW(parseViewRequest(line), UsageError) << line;
}

// It goes to the terminal of the client.
TEST(ParseViewRequest, ComplainsWithoutControlBytes) {
   try {
      parseViewRequest("tunnel --\x1b[2Jclear\x9b");
      ADD_FAILURE() << "taken for a request";
   } catch (UsageError const& error) {
      EXPECT_STREQ(error.what(), "a request takes no option --\\x1b[2Jclear\\x9b; it takes those that select the view, "
                                 "and --format and --json");
   }
}

TEST(RequestLine, IsReadBackAsTheSameView) {
   for (std::string const name : {"", "a", "a b", "it's", "\"", "--json", "-", "\\", "\xff\x01", "feed"}) {
      for (unsigned flags = 0; flags < 64; ++flags) {
         ShowTunnelRequest request;
         request.tunnelName = name;
         unsigned const view = flags & 7;
         request.summary = view == 1;
         request.lsp = view == 2;
         request.detail = view == 3 || view == 4;
         request.history = view == 4 || view == 5;
         request.subTunnel = (flags & 8) != 0;
         request.format = (flags & 16) != 0 ? Format::json : Format::text;
         request.source = {"file", "socket", std::chrono::seconds(1)};
         auto const read = std::get<ShowTunnelRequest>(parseViewRequest(requestLine(request)));
         EXPECT_EQ(read.tunnelName, request.tunnelName);
         EXPECT_EQ(read.summary, request.summary);
         EXPECT_EQ(read.lsp, request.lsp);
         EXPECT_EQ(read.detail, request.detail);
         EXPECT_EQ(read.history, request.history);
         EXPECT_EQ(read.subTunnel, request.subTunnel);
         EXPECT_EQ(read.format, request.format);
         EXPECT_EQ(read.source.stateFile, "");
      }
   }
   ShowStatusRequest status;
   status.format = Format::json;
   EXPECT_EQ(requestLine(status), "status --json");
}

TEST(RequestLine, RefusesALineFeed) {
   ShowTunnelRequest request;
   request.tunnelName = "a\nb";
   EXPECT_THROW(requestLine(request), UsageError);
}

} // namespace

} // namespace Host
