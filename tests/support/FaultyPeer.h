#pragma once

#include "RsvpLer/output/DescriptorWriter.h"
#include "vane/Interrupt.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <optional>
#include <string>

// System calls that fail as they are told to.

namespace Tests {

enum class Call { write, poll };

struct Fault {
   char const* name;
   Call call;
   ssize_t result;
   int error = 0;     // errno when the result is -1
   short revents = 0; // for poll
   bool interrupt = false;
};

// Takes at most `chunk` bytes a call; the call with number `at` suffers the fault.
struct Peer {
   std::size_t chunk = SIZE_MAX;
   int at = -1;
   Fault fault{};
   int calls = 0;
   int writes = 0;
   int polls = 0;
   int faults = 0;
   std::size_t largestWrite = 0;
   std::string taken{};

   std::optional<ssize_t> fail(Call call) {
      if (calls++ != at || fault.call != call)
         return std::nullopt;
      ++faults;
      if (fault.interrupt)
         Vane::Interrupt::request();
      errno = fault.error;
      return fault.result;
   }

   ssize_t write(void const* data, std::size_t size) {
      ++writes;
      largestWrite = std::max(largestWrite, size);
      std::size_t accepted = std::min(size, chunk);
      if (auto const result = fail(Call::write)) {
         if (*result <= 0)
            return *result;
         accepted = std::min(size, static_cast<std::size_t>(*result));
      }
      taken.append(static_cast<char const*>(data), accepted);
      return static_cast<ssize_t>(accepted);
   }

   int poll(pollfd* state) {
      ++polls;
      state->revents = POLLOUT;
      if (auto const result = fail(Call::poll)) {
         state->revents = fault.revents;
         return static_cast<int>(*result);
      }
      return 1;
   }
};

inline Peer* peer = nullptr; // that of the calls below

inline scrivo::DescriptorCalls const calls{
      [](int, void const* data, std::size_t size) { return peer->write(data, size); },
      [](int, void const* data, std::size_t size, int flags) {
         EXPECT_EQ(flags, MSG_NOSIGNAL | MSG_DONTWAIT);
         return peer->write(data, size);
      },
      [](pollfd* state, nfds_t count, int timeoutMs) {
         EXPECT_EQ(count, 1u);
         EXPECT_EQ(state->events, POLLOUT);
         EXPECT_TRUE(0 <= timeoutMs && timeoutMs <= 200) << timeoutMs;
         return peer->poll(state);
      }};

} // namespace Tests
