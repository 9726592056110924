#include "tests/host/server/LiveServer.h"
#include "tests/soak/Changes.h"
#include "tests/soak/Views.h"
#include "tests/support/Random.h"
#include "vane/Epoch.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <numeric>

// A live router under load:  soak [SECONDS [CHANGES_PER_SECOND]]
//
// For that time, or until every view has been answered, eight clients ask in a loop for every view while an agent in
// the server's process makes so many changes a second to half of 2,000 tunnels and another one feeds some over a
// connection; two more clients never read what they have asked for. Every answer has to be whole and to show the other
// half unchanged; at the end, when all tunnels are again as they were, every view has to be what it was at the
// beginning. The exit status is 0 when all that was so, and when the agent kept up.

namespace Soak {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Host::Test::LiveServer;
using Host::Test::Peer;

constexpr std::uint64_t tunnels = 2000;
constexpr std::size_t clients = 8;
constexpr std::size_t batchesASecond = 50;
constexpr std::size_t linesInABatch = 4; // of the feed

LiveServer* server = nullptr;

std::string ask(std::string const& request) {
   return Host::Test::ask(server->path(), request);
}

// Every other tunnel stays, by the last figure of its name.
bool stays(std::string_view name) {
   return !name.empty() && (name.back() - '0') % 2 == 0;
}

class Run {
public:
   Run(std::chrono::seconds time, std::size_t rate)
         : time_(time), rate_(rate), state_(Host::Test::synthText(tunnels)), views_(makeViews(&ask, &stays)),
           atRest_(askAll()), answers_(views_.size()) {}

   bool run() {
      std::vector<std::string> const lines = makeChanges(state_, Host::Test::synthText(tunnels, 1), &stays);
      std::vector<Host::Change> changes;
      std::transform(lines.begin(), lines.end(), std::back_inserter(changes), &readLine);
      // The feed is connected before, so that it keeps its rate where there are few processors.
      Peer agent(server->path());
      agent.send("feed\n{\"delete\":\"tunnelIndexMap\",\"key\":{}}\n");
      agent.receiveLines(1);
      server->favourThoseBefore();
      begin_ = Clock::now();
      std::vector<std::thread> threads;
      threads.emplace_back([&] { feed(agent, lines); });
      for (std::size_t i = 0; i < clients; ++i)
         threads.emplace_back([this, i] { askInALoop(i * views_.size() / clients); });
      for (int i = 0; i < 2; ++i)
         threads.emplace_back([this] { readNothing(); });
      change(changes);
      for (std::thread& thread : threads)
         thread.join();
      compareWithBeginning();
      report(changes.size());
      return !failed_;
   }

private:
   // The answers to all views.
   std::vector<std::string> askAll() const {
      std::vector<std::string> answers(views_.size());
      std::vector<std::thread> threads;
      for (std::size_t i = 0; i < clients; ++i)
         threads.emplace_back([&, i] {
            for (std::size_t at = i; at < views_.size(); at += clients)
               answers[at] = ask(views_[at].request);
         });
      for (std::thread& thread : threads)
         thread.join();
      return answers;
   }

   // Every view is to be answered, however slow the machine is.
   bool goesOn() const {
      Clock::time_point const now = Clock::now();
      bool const missing = std::count(answers_.begin(), answers_.end(), 0) != 0;
      return !failed_ && (now < begin_ + time_ || (missing && now < begin_ + 10 * time_));
   }
   void fail(std::string const& what) {
      if (!failed_.exchange(true))
         std::fprintf(stderr, "soak: %s\n", what.c_str());
   }

   void askInALoop(std::size_t at) {
      setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), 10);
      for (; goesOn(); at = (at + 1) % views_.size()) {
         std::string const answer = ask(views_[at].request);
         std::string const wrong = whatIsWrong(views_[at], answer);
         if (!wrong.empty())
            fail(views_[at].request + ": " + wrong);
         ++answers_[at];
         bytes_ += answer.size();
      }
   }

   // Asks, reads a little, and is cut off or leaves.
   void readNothing() {
      while (goesOn()) {
         Peer peer(server->path());
         peer.send("tunnel --history --detail --json\n");
         if (peer.receive(1) != "{")
            fail("an answer doesn't begin with a brace");
         std::this_thread::sleep_for(1500ms);
      }
   }

   // Calls it with a source of random numbers, batch after batch, each at its time or when the one before is done.
   template<class Body>
   void inBatches(unsigned seed, Body const& body) {
      Tests::Random random(seed);
      for (int i = 1; goesOn(); ++i) {
         body(random);
         std::this_thread::sleep_until(begin_ + i * 1000ms / static_cast<int>(batchesASecond));
      }
   }

   template<class T>
   static T const& anyOf(std::vector<T> const& all, Tests::Random& random) {
      return all[random.below(static_cast<std::uint32_t>(all.size()))];
   }

   void change(std::vector<Host::Change> const& changes) {
      inBatches(1, [&](Tests::Random& random) {
         for (std::size_t i = 0; i < rate_ / batchesASecond; ++i)
            server->server().state().apply(anyOf(changes, random));
         changed_ += rate_ / batchesASecond;
         mostRetired_ = std::max(mostRetired_, Vane::retiredCount());
      });
      changing_ = Clock::now() - begin_;
   }

   void feed(Peer& agent, std::vector<std::string> const& lines) {
      inBatches(2, [&](Tests::Random& random) {
         std::string batch;
         for (std::size_t i = 0; i < linesInABatch; ++i)
            batch += anyOf(lines, random);
         agent.send(batch);
         std::string const answer = agent.receiveLines(linesInABatch);
         if (answer.size() != std::string_view("ok\n").size() * linesInABatch)
            fail("a change was refused: " + answer.substr(answer.find("error")));
         fed_ += linesInABatch;
      });
      agent.endInput();
   }

   void compareWithBeginning() {
      if (Host::Test::feed(server->path(), "{\"load\":" + inOneLine(state_) + "}\n") != "ok\n")
         fail("the state at the beginning was refused");
      std::vector<std::string> const atEnd = askAll();
      for (std::size_t i = 0; i < views_.size(); ++i) {
         if (atEnd[i] != atRest_[i])
            fail(views_[i].request + ": it isn't what it was at the beginning");
         if (answers_[i] == 0)
            fail(views_[i].request + ": nobody came to ask for it; the time is too short");
      }
      if (ratePerSecond() < 0.9 * static_cast<double>(rate_))
         fail("the agent made only " + std::to_string(ratePerSecond()) + " changes a second");
      Vane::collectRetired();
      if (Vane::retiredCount() != 0)
         fail("something is held back for ever");
   }
   static std::string inOneLine(std::string text) {
      std::replace(text.begin(), text.end(), '\n', ' ');
      return text;
   }

   double ratePerSecond() const {
      return static_cast<double>(changed_) / std::chrono::duration<double>(changing_).count();
   }

   void report(std::size_t differentChanges) const {
      double const seconds = std::chrono::duration<double>(changing_).count();
      int const answers = std::accumulate(answers_.begin(), answers_.end(), 0);
      std::printf(
            "soak: %.0f s, %d answers of %zu views, %.0f MB; %zu changes (%zu different ones), %.0f a second, and "
            "%zu fed; at most %zu objects waited for their disposal\n",
            seconds, answers, views_.size(), double(bytes_) / 1e6, changed_, differentChanges, ratePerSecond(),
            fed_.load(), mostRetired_);
   }

   std::chrono::seconds time_;
   std::size_t rate_;
   std::string state_;
   std::vector<View> views_;
   std::vector<std::string> atRest_;
   Clock::time_point begin_;
   std::vector<std::atomic<int>> answers_; // to each view
   std::atomic<std::size_t> bytes_ = 0;
   std::size_t changed_ = 0;
   std::atomic<std::size_t> fed_ = 0;
   std::size_t mostRetired_ = 0;
   Clock::duration changing_{};
   std::atomic<bool> failed_ = false;
};

bool soak(std::chrono::seconds time, std::size_t rate) {
   Host::ServerOptions options;
   options.clientTimeout = 10s;
   LiveServer live(Host::Test::synthState(tunnels), options);
   server = &live;
   return Run(time, rate).run();
}

} // namespace

} // namespace Soak

int main(int argc, char** argv) {
   std::signal(SIGPIPE, SIG_IGN);
   // Without it the system's library looks at the time zone's file for each time that is shown, under a lock of its own
   // that a sanitizer doesn't know.
   setenv("TZ", "UTC", 1);
   std::chrono::seconds const time(argc > 1 ? std::atoi(argv[1]) : 30);
   std::size_t const rate = argc > 2 ? static_cast<std::size_t>(std::atoi(argv[2])) : 20'000;
   return Soak::soak(time, rate) ? 0 : 1;
}
