#include "host/Show.h"
#include "host/sample/Sample.h"
#include "host/server/ListeningSocket.h"
#include "host/state/LoadState.h"
#include "tests/host/server/LiveServer.h"
#include "vane/Epoch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <thread>

// The server as its clients see it.

namespace Host::Test {

namespace {

using namespace std::chrono_literals;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

using Clock = std::chrono::steady_clock;

RouterState sampleRouter() {
   return loadState("sample.json", StateText(sampleState()));
}

ServerOptions timeout(std::chrono::milliseconds time) {
   ServerOptions options;
   options.clientTimeout = time;
   return options;
}

template<class Condition>
bool becomesTrue(Condition const& condition) {
   for (auto const end = Clock::now() + 20s; Clock::now() < end; std::this_thread::sleep_for(5ms)) {
      if (condition())
         return true;
   }
   return false;
}

TEST(Server, AnswersAView) {
   LiveServer server(sampleRouter());
   EXPECT_THAT(ask(server.path(), "tunnel den-atl-1"), StartsWith("Tunnel den-atl-1\n   Source address: 10.0.0.4\n"));
   EXPECT_THAT(ask(server.path(), "status --json"), StartsWith("{\"localIntf\":\"lo0\","));
   EXPECT_THAT(ask(server.path(), "status --json"), EndsWith("}\n"));
   EXPECT_EQ(ask(server.path(), "tunnel 'no such' --format=json"), "{\"tunnels\":{}}\n");
}

TEST(Server, RefusesInOneLine) {
   LiveServer server(sampleRouter());
   for (std::string const request : {"", "show", "state sample", "serve --socket x", "feeds", "tunnel --state x",
                                     "tunnel --connect=x", "status --watch 1", "tunnel --trace x", "tunnel --help",
                                     "tunnel 'a", "tunnel a b", "tunnel --summary --lsp", "\x01\xff"}) {
      std::string const answer = ask(server.path(), request);
      EXPECT_THAT(answer, StartsWith("error: ")) << request;
      EXPECT_EQ(answer.find('\n'), answer.size() - 1) << request;
   }
}

TEST(Server, TakesRequestsOf64KiB) {
   LiveServer server(sampleRouter());
   std::string const request = "status --json";
   EXPECT_THAT(ask(server.path(), request + std::string(maxRequest - request.size(), ' ')),
               StartsWith("{\"localIntf\""));
   EXPECT_EQ(ask(server.path(), request + std::string(maxRequest - request.size() + 1, ' ')),
             "error: a request may have 65536 bytes\n");
   Peer endless(server.path());
   endless.send(std::string(maxRequest + 1, 'x'));
   EXPECT_EQ(endless.receiveAll(), "error: a request may have 65536 bytes\n");
}

TEST(Server, TakesARequestInPartsAndWithoutALineFeedAtTheEnd) {
   LiveServer server(sampleRouter());
   Peer slow(server.path());
   for (char const c : std::string_view("tunnel none --json")) {
      slow.send({&c, 1});
      std::this_thread::sleep_for(1ms);
   }
   slow.endInput();
   EXPECT_EQ(slow.receiveAll(), "{\"tunnels\":{}}\n");
   Peer silent(server.path());
   silent.endInput();
   EXPECT_EQ(silent.receiveAll(), "");
}

TEST(Server, CutsOffWhoAsksNothingInTime) {
   LiveServer server(sampleRouter(), timeout(200ms));
   Peer silent(server.path());
   EXPECT_EQ(silent.receiveAll(), "error: no request came in time\n");
   Peer trickling(server.path());
   auto const begin = Clock::now();
   while (Clock::now() < begin + 10s && trickling.send("x"))
      std::this_thread::sleep_for(20ms);
   EXPECT_LT(Clock::now(), begin + 10s);
}

// An answer that is longer than what the socket and the buffers hold.
std::string bigRequest() {
   return "tunnel --detail --json";
}

TEST(Server, CutsOffWhoReadsNothing) {
   LiveServer server(synthState(2000), timeout(500ms));
   Peer peer(server.path());
   peer.send(bigRequest() + '\n');
   ASSERT_EQ(peer.receive(1), "{");
   std::size_t const before = openDescriptors();
   EXPECT_TRUE(becomesTrue([&] { return openDescriptors() == before - 1; }));
   std::string const rest = peer.receiveAll();
   EXPECT_LT(rest.size(), 1'000'000u); // what was in the socket
   EXPECT_FALSE(rest.ends_with("}\n"));
   EXPECT_THAT(ask(server.path(), bigRequest()), EndsWith("}\n"));
}

TEST(Server, CutsOffWhoReadsAByteNowAndThen) {
   LiveServer server(synthState(2000), timeout(500ms));
   Peer peer(server.path());
   peer.send(bigRequest() + '\n');
   ASSERT_EQ(peer.receive(1), "{");
   std::size_t const before = openDescriptors();
   // The server's end of the connection is closed while the client goes on reading.
   EXPECT_TRUE(becomesTrue([&] { return peer.receive(1).size() == 1 && openDescriptors() == before - 1; }));
}

TEST(Server, ServesASlowReaderWhoGoesOn) {
   LiveServer server(synthState(2000), timeout(2s));
   std::string const whole = ask(server.path(), bigRequest());
   Peer peer(server.path());
   peer.send(bigRequest() + '\n');
   std::string slowly;
   // In bursts, between which the socket is full, for longer than the timeout.
   std::size_t const burst = whole.size() / 12;
   while (true) {
      std::string part;
      while (part.size() < burst) {
         std::string const piece = peer.receive();
         if (piece.empty())
            break;
         part += piece;
      }
      if (part.empty())
         break;
      slowly += part;
      std::this_thread::sleep_for(250ms);
   }
   EXPECT_EQ(slowly.size(), whole.size());
   EXPECT_EQ(slowly, whole);
}

TEST(Server, AStalledClientHoldsNoDisposalBack) {
   LiveServer server(synthState(2000));
   Peer stalled(server.path());
   stalled.send(bigRequest() + '\n');
   ASSERT_EQ(stalled.receive(1), "{");
   std::this_thread::sleep_for(300ms);
   std::string lines;
   for (int i = 0; i < 5000; ++i)
      lines +=
            R"({"set":"tunnelIndexMap","row":{"tunnelSpecId":{"name":"x"},"tunnelIndex":)" + std::to_string(i) + "}}\n";
   feed(server.path(), lines);
   EXPECT_LT(Vane::retiredCount(), 1000u);
}

TEST(Server, RefusesMoreClientsThanItTakes) {
   ServerOptions options;
   options.maxClients = 2;
   LiveServer server(sampleRouter(), options);
   {
      Peer first(server.path());
      Peer second(server.path());
      first.send("feed\n");
      second.send("feed\n");
      EXPECT_EQ(ask(server.path(), "status"),
                "error: there are as many clients as the server takes; try again later\n");
      for (Peer* const peer : {&first, &second}) {
         peer->endInput();
         EXPECT_EQ(peer->receiveAll(), "");
      }
   }
   // Whoever has seen its end can come back at once.
   for (int i = 0; i < 200; ++i) {
      std::thread other([&] { EXPECT_THAT(ask(server.path(), "status --json"), StartsWith("{")); });
      EXPECT_THAT(ask(server.path(), "status --json"), StartsWith("{"));
      other.join();
   }
}

TEST(Server, LetsTheRunningAnswerEndWhenItIsStopped) {
   LiveServer server(synthState(2000));
   std::string const whole = ask(server.path(), bigRequest());
   Peer running(server.path());
   running.send(bigRequest() + '\n');
   ASSERT_EQ(running.receive(1), "{");
   Peer agent(server.path());
   agent.send("feed\n{\"delete\":\"tunnelIndexMap\",\"key\":{}}\n");
   EXPECT_EQ(agent.receiveLines(1), "ok\n");
   server.server().stop();
   EXPECT_TRUE(becomesTrue([&] { return !std::filesystem::exists(server.path()); }));
   EXPECT_THROW(connectTo(server.path()), ServerError);
   EXPECT_EQ(agent.receiveAll(), "");
   EXPECT_EQ(running.receiveAll(), whole.substr(1));
   server.join();
}

TEST(Server, TimesAStalledAnswerOutWhenItIsStopped) {
   LiveServer server(synthState(2000), timeout(500ms));
   Peer stalled(server.path());
   stalled.send(bigRequest() + '\n');
   ASSERT_EQ(stalled.receive(1), "{");
   server.server().stop();
   server.join();
}

TEST(Server, EndsAtOnceWhenItIsStoppedTwice) {
   LiveServer server(synthState(2000));
   Peer stalled(server.path());
   stalled.send(bigRequest() + '\n');
   ASSERT_EQ(stalled.receive(1), "{");
   auto const begin = Clock::now();
   server.server().stop();
   server.server().stop();
   server.join();
   EXPECT_LT(Clock::now() - begin, 10s);
}

TEST(Server, SaysWhenAClientHasGone) {
   testing::internal::CaptureStdout();
   {
      LiveServer server(synthState(2000));
      Peer leaving(server.path());
      leaving.send(bigRequest() + '\n');
      ASSERT_EQ(leaving.receive(1), "{");
      leaving.close();
   }
   EXPECT_EQ(testing::internal::GetCapturedStdout(), "exiting client gone\n");
}

TEST(Server, LeavesNoDescriptorOpen) {
   LiveServer server(sampleRouter());
   std::size_t const before = openDescriptors();
   for (int i = 0; i < 50; ++i) {
      ask(server.path(), "status");
      ask(server.path(), "nonsense");
      feed(server.path(), "{}\n");
      Peer(server.path()).send("tunnel --detail\n");
   }
   EXPECT_TRUE(becomesTrue([&] { return openDescriptors() == before; }));
}

} // namespace

} // namespace Host::Test
