#include "RsvpLer/output/DescriptorWriter.h"

#include "RsvpLer/output/SigIntException.h"
#include "tests/support/FaultyPeer.h"
#include "vane/Interrupt.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <optional>
#include <string>
#include <vector>

// The writer over system calls that fail as they are told to: each fault at each call.

using namespace Tests;

namespace {

// A descriptor of each kind that the writer tells apart.
class Descriptors : public testing::Test {
protected:
   Descriptors() {
      EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, sockets_), 0);
      EXPECT_EQ(pipe(pipe_), 0);
      EXPECT_EQ(openpty(&terminal_[0], &terminal_[1], nullptr, nullptr, nullptr), 0);
      file_ = memfd_create("answer", 0);
   }
   ~Descriptors() override {
      for (int descriptor : {sockets_[0], sockets_[1], pipe_[0], pipe_[1], terminal_[0], terminal_[1], file_})
         close(descriptor);
      Vane::Interrupt::clear();
   }
   std::vector<int> all() const { return {sockets_[0], pipe_[1], terminal_[1], file_}; }

   int sockets_[2];
   int pipe_[2];
   int terminal_[2];
   int file_;
};

// What writeAll threw, or "" when it came back.
std::string outcome(int descriptor, Peer& with, std::string const& data) {
   peer = &with;
   try {
      scrivo::DescriptorWriter(descriptor, calls).writeAll(data.data(), data.size());
   } catch (scrivo::SigIntException const& e) {
      return e.what();
   }
   return "";
}

std::string pattern(std::size_t size) {
   std::string data(size, ' ');
   for (std::size_t i = 0; i < size; ++i)
      data[i] = static_cast<char>(i * 7 + i / 251);
   return data;
}

// Runs the fault at call 0, 1, 2, ... until it isn't reached any more; returns at how many it was.
template<class Check>
int atEachCall(int descriptor, Fault const& fault, std::string const& data, std::size_t chunk, Check const& check) {
   for (int at = 0, reached = 0, missed = 0;; ++at) {
      Vane::Interrupt::clear();
      Peer with{.chunk = chunk, .at = at, .fault = fault};
      std::string const result = outcome(descriptor, with, data);
      Vane::Interrupt::clear();
      if (with.faults == 0) {
         EXPECT_EQ(result, "");
         EXPECT_EQ(with.taken, data);
         // A call of the other kind may have had this number.
         if (++missed > 1)
            return reached;
         continue;
      }
      missed = 0;
      ++reached;
      check(result, with);
   }
}

TEST_F(Descriptors, WhatPassesLeavesTheBytesWhole) {
   std::string const data = pattern(20000);
   std::vector<Fault> const faults{
         {"one byte", Call::write, 1},
         {"EINTR", Call::write, -1, EINTR},
         {"EAGAIN", Call::write, -1, EAGAIN},
         {"EINTR of poll", Call::poll, -1, EINTR},
         {"nothing within the time", Call::poll, 0},
         {"a hang-up while there is room", Call::poll, 1, 0, POLLOUT | POLLERR},
   };
   for (int descriptor : all())
      for (Fault const& fault : faults) {
         int const reached = atEachCall(descriptor, fault, data, 3000, [&](std::string const& result, Peer& with) {
            EXPECT_EQ(result, "") << fault.name;
            EXPECT_EQ(with.taken, data) << fault.name;
         });
         bool const polls = descriptor == pipe_[1];
         EXPECT_EQ(reached, fault.call == Call::write || polls ? 7 : 0) << fault.name << " on " << descriptor;
      }
}

TEST_F(Descriptors, WhatDoesNotPassIsAClientGone) {
   std::string const data = pattern(20000);
   std::vector<Fault> const faults{
         {"EPIPE", Call::write, -1, EPIPE},
         {"ECONNRESET", Call::write, -1, ECONNRESET},
         {"EBADF", Call::write, -1, EBADF},
         {"ENOSPC", Call::write, -1, ENOSPC},
         {"EIO", Call::write, -1, EIO},
         {"EFBIG", Call::write, -1, EFBIG},
         {"no byte taken", Call::write, 0},
         {"hang-up", Call::poll, 1, 0, POLLHUP},
         {"error", Call::poll, 1, 0, POLLERR},
         {"no descriptor", Call::poll, 1, 0, POLLNVAL},
         {"EINVAL of poll", Call::poll, -1, EINVAL},
   };
   for (int descriptor : all())
      for (Fault const& fault : faults)
         atEachCall(descriptor, fault, data, 3000, [&](std::string const& result, Peer& with) {
            EXPECT_EQ(result, "client gone") << fault.name;
            EXPECT_EQ(with.taken, data.substr(0, with.taken.size())) << fault.name;
            EXPECT_LT(with.taken.size(), data.size()) << fault.name;
         });
}

TEST_F(Descriptors, AnInterruptEndsAWriteThatHasToWait) {
   std::string const data = pattern(20000);
   std::vector<Fault> const faults{
         {"EINTR", Call::write, -1, EINTR, 0, true},
         {"EAGAIN", Call::write, -1, EAGAIN, 0, true},
         {"EINTR of poll", Call::poll, -1, EINTR, 0, true},
         {"nothing within the time", Call::poll, 0, 0, 0, true},
   };
   for (int descriptor : all())
      for (Fault const& fault : faults)
         atEachCall(descriptor, fault, data, 3000, [&](std::string const& result, Peer& with) {
            EXPECT_EQ(result, "interrupted") << fault.name;
            EXPECT_EQ(with.taken, data.substr(0, with.taken.size())) << fault.name;
         });
}

TEST_F(Descriptors, AnInterruptDoesNotStopAWriteThatNeedNotWait) {
   std::string const data = pattern(20000);
   for (int descriptor : all()) {
      Vane::Interrupt::request();
      Peer with{.chunk = 3000};
      EXPECT_EQ(outcome(descriptor, with, data), "");
      EXPECT_EQ(with.taken, data);
   }
}

int hangUps = 0;

// Reports room and a hang-up for ever, and takes nothing: that must not become an endless loop.
TEST_F(Descriptors, AHangUpWithoutProgressIsAClientGone) {
   static constexpr auto fail = [] {
      errno = EAGAIN;
      return ssize_t{-1};
   };
   scrivo::DescriptorCalls const stuck{[](int, void const*, std::size_t) { return fail(); },
                                       [](int, void const*, std::size_t, int) { return fail(); },
                                       [](pollfd* state, nfds_t, int) {
                                          state->revents = POLLOUT | POLLHUP;
                                          return ++hangUps <= 10 ? 1 : -1;
                                       }};
   for (int descriptor : all()) {
      hangUps = 0;
      try {
         scrivo::DescriptorWriter(descriptor, stuck).writeAll("data", 4);
         ADD_FAILURE() << "came back";
      } catch (scrivo::SigIntException const& e) {
         EXPECT_STREQ(e.what(), "client gone");
      }
      EXPECT_EQ(hangUps, 1);
   }
}

TEST_F(Descriptors, APipeIsAskedForRoomAndGivenNoMoreThanItTakesAtOnce) {
   std::string const data = pattern(10 * PIPE_BUF + 1);
   Peer with;
   EXPECT_EQ(outcome(pipe_[1], with, data), "");
   EXPECT_EQ(with.largestWrite, std::size_t{PIPE_BUF});
   EXPECT_EQ(with.writes, 11);
   EXPECT_EQ(with.polls, 11);
   EXPECT_EQ(with.taken, data);
}

TEST_F(Descriptors, WhatDoesNotBlockTakesAllInOneCall) {
   std::string const data = pattern(1 << 20);
   for (int descriptor : {sockets_[0], terminal_[1], file_}) {
      Peer with;
      EXPECT_EQ(outcome(descriptor, with, data), "");
      EXPECT_EQ(with.writes, 1);
      EXPECT_EQ(with.polls, 0);
      EXPECT_EQ(with.taken, data);
   }
}

// With all its descriptors in use a process can't open the terminal again: it is then asked for room like a pipe.
TEST_F(Descriptors, ATerminalThatCannotBeOpenedAgainIsAskedForRoom) {
   std::string const data = pattern(10 * PIPE_BUF + 1);
   rlimit before;
   ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
   rlimit const none{.rlim_cur = 0, .rlim_max = before.rlim_max};
   Peer with;
   int const terminal = terminal_[1]; // a sanitizer needs descriptors to check a member of the fixture
   ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
   std::string const result = outcome(terminal, with, data);
   ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
   EXPECT_EQ(result, "");
   EXPECT_EQ(with.largestWrite, std::size_t{PIPE_BUF});
   EXPECT_EQ(with.polls, 11);
   EXPECT_EQ(with.taken, data);
}

TEST_F(Descriptors, NothingToWriteMakesNoCall) {
   for (int descriptor : all()) {
      Peer with;
      EXPECT_EQ(outcome(descriptor, with, ""), "");
      EXPECT_EQ(with.calls, 0);
   }
}

} // namespace
