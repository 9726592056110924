#include "host/sample/Sample.h"
#include "host/state/LoadState.h"
#include "tests/host/server/LiveServer.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>

#include <atomic>
#include <cerrno>
#include <functional>
#include <thread>

// What happens when one system call of the server goes wrong, each in its turn. This program's send() and poll() stand
// before those of the system, for the threads of the server; every send() takes few bytes, so that there are many.

namespace {

enum class Fault { none, shortWrite, interrupted, again, reset, clientGone, pollInterrupted };

std::thread::id const testThread = std::this_thread::get_id();
std::atomic<Fault> fault = Fault::none;
std::atomic<int> faultAt = -1; // the ordinal of the call that goes wrong
std::atomic<int> calls = 0;
std::function<void()> killClient;

template<class Function>
Function* systems(char const* name) {
   return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool strikes(bool isPoll) {
   if (std::this_thread::get_id() == testThread || fault == Fault::none || (fault == Fault::pollInterrupted) != isPoll)
      return false;
   return calls.fetch_add(1) == faultAt;
}

} // namespace

extern "C" ssize_t send(int descriptor, void const* data, std::size_t size, int flags) {
   static auto* const real = systems<ssize_t(int, void const*, std::size_t, int)>("send");
   if (std::this_thread::get_id() != testThread)
      size = std::min<std::size_t>(size, 150);
   if (strikes(false)) {
      switch (fault) {
      case Fault::none:
      case Fault::pollInterrupted:
         break;
      case Fault::shortWrite:
         size = std::min<std::size_t>(size, 1);
         break;
      case Fault::interrupted:
         errno = EINTR;
         return -1;
      case Fault::again:
         errno = EAGAIN;
         return -1;
      case Fault::reset:
         errno = ECONNRESET;
         return -1;
      case Fault::clientGone:
         killClient();
         break;
      }
   }
   return real(descriptor, data, size, flags);
}

extern "C" int poll(pollfd* descriptors, nfds_t count, int timeout) {
   static auto* const real = systems<int(pollfd*, nfds_t, int)>("poll");
   if (strikes(true)) {
      errno = EINTR;
      return -1;
   }
   return real(descriptors, count, timeout);
}

namespace Host::Test {

namespace {

struct Case {
   char const* name;
   std::string lines; // what the client sends
};

class Faults : public testing::TestWithParam<Case> {
protected:
   Faults() : server_(loadState("sample.json", StateText(sampleState()))) {}
   ~Faults() override { fault = Fault::none; }

   std::string answer() {
      Peer peer(server_.path());
      peer.send(GetParam().lines);
      peer.endInput();
      return peer.receiveAll();
   }
   // Whether there was a call of this ordinal.
   bool strike(Fault what, int at) {
      Peer peer(server_.path());
      killClient = [&peer] { shutdown(peer.descriptor(), SHUT_RDWR); };
      calls = 0;
      faultAt = at;
      fault = what;
      std::string_view lines = GetParam().lines;
      if (what == Fault::pollInterrupted)
         lines.remove_prefix(sendHaltingly(peer, lines));
      peer.send(lines);
      peer.endInput();
      std::string const got = peer.receiveAll();
      fault = Fault::none;
      if (what == Fault::reset || what == Fault::clientGone)
         EXPECT_TRUE(expected_.starts_with(got)) << at;
      else
         EXPECT_EQ(got, expected_) << at;
      EXPECT_EQ(answer(), expected_) << at;
      return calls > at;
   }
   // Sends so little that the server has to poll for more, and waits until it does. Returns the size of what was sent.
   static std::size_t sendHaltingly(Peer& peer, std::string_view lines) {
      peer.send(lines.substr(0, 1));
      for (int i = 0; i < 20'000 && calls == 0; ++i)
         std::this_thread::sleep_for(std::chrono::milliseconds(1));
      return 1;
   }
   void strikeEach(Fault what, int atLeast) {
      int ordinal = 0;
      while (strike(what, ordinal))
         ++ordinal;
      EXPECT_GE(ordinal, atLeast);
   }

   LiveServer server_;
   std::size_t const openBefore_ = openDescriptors();
   std::string const expected_ = answer();
};

TEST_P(Faults, AtEachCallLeaveLaterAnswersRight) {
   ASSERT_FALSE(expected_.empty());
   int const sends = static_cast<int>((expected_.size() + 149) / 150);
   for (Fault const what : {Fault::shortWrite, Fault::interrupted, Fault::again, Fault::reset, Fault::clientGone})
      strikeEach(what, sends);
   strikeEach(Fault::pollInterrupted, 1);
   for (int i = 0; i < 1000 && openDescriptors() != openBefore_; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
   EXPECT_EQ(openDescriptors(), openBefore_);
}

std::string manyLines() {
   std::string lines = "feed\n";
   for (int i = 0; i < 20; ++i)
      lines += "{\"set\":\"tunnelIndexMap\",\"row\":{\"tunnelSpecId\":{\"name\":\"x\"}}}\n[]\n";
   return lines;
}

INSTANTIATE_TEST_SUITE_P(Answers, Faults,
                         testing::Values(Case{"text", "tunnel --detail den-atl-1\n"},
                                         Case{"json", "tunnel --json den-lax-split\n"}, Case{"status", "status\n"},
                                         Case{"refusal", "nonsense\n"}, Case{"feed", manyLines()}),
                         [](auto const& one) { return one.param.name; });

} // namespace

} // namespace Host::Test
