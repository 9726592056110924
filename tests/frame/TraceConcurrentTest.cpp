#include "RsvpLer/frame/Trace.h"
#include "tests/support/TraceDirectory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

// Several commands at once, each on its own thread, into one small ring that they overrun all the time.

namespace {

constexpr std::uint32_t threads = 4;
constexpr std::uint32_t rounds = 20000;

// The name tells the number, so that a record made of two would show.
Rsvp::RsvpLerSubTunnelConfigId key(std::uint32_t number) {
   return {{Fathom::String(std::string(number % 40, 'n') + std::to_string(number)), Rsvp::RsvpLerTunnelSource::cli},
           number};
}

std::string text(std::uint32_t number) {
   return "<name='" + std::string(key(number).tunnelSpecId.name.view()) +
          "'>_<source='1'>_<subTunnelId=" + std::to_string(number) + ">";
}

unsigned inner(Rsvp::RsvpLerSubTunnelConfigId const& subTunnelConfigId) {
   RSVP_LER_TRACE(subTunnelConfigId);
   return Rsvp::callDepth;
}

unsigned outer(Rsvp::RsvpLerSubTunnelConfigId const& subTunnelConfigId) {
   RSVP_LER_TRACE(subTunnelConfigId);
   return inner(subTunnelConfigId);
}

// Runs all threads' rounds. Returns how often a depth was wrong.
unsigned runThreads() {
   std::atomic<unsigned> wrongDepths = 0;
   std::vector<std::thread> running;
   for (std::uint32_t thread = 0; thread < threads; ++thread)
      running.emplace_back([thread, &wrongDepths] {
         for (std::uint32_t round = 0; round < rounds; ++round)
            wrongDepths += outer(key(round * threads + thread)) != 2 || Rsvp::callDepth != 0;
      });
   for (std::thread& thread : running)
      thread.join();
   return wrongDepths;
}

TEST(TraceConcurrent, recordsOfSeveralThreadsAreWhole) {
   Tests::TracingIntoFile const file({.descriptions = 8, .slots = 64});
   EXPECT_EQ(runThreads(), 0u);

   Skein::TraceReader const trace = file.read();
   EXPECT_EQ(trace.descriptions().size(), 5u); // three types and two functions
   std::uint64_t last = 0;
   for (Skein::TraceRecord const& record : Tests::soundRecords(trace)) {
      EXPECT_GT(record.number, last);
      last = record.number;
      EXPECT_EQ(record.depth, record.function == "outer" ? 1 : 2);
      EXPECT_TRUE(record.duration.has_value());
      std::string const number = record.arguments.substr(record.arguments.rfind('=') + 1);
      EXPECT_EQ(record.arguments, text(static_cast<std::uint32_t>(std::stoul(number))));
   }
   EXPECT_GT(trace.size(), 32u);
   EXPECT_LE(last, threads * rounds * 2);
   EXPECT_GE(last + trace.skippedRecords(), threads * rounds * 2);
}

TEST(TraceConcurrent, filesComeAndGoUnderTheWriters) {
   Tests::TraceDirectory const directory;
   std::atomic<bool> done = false;
   unsigned files = 0;
   std::thread owner([&] {
      for (; !done; ++files) {
         auto file =
               std::make_unique<Skein::TraceFile>(directory.file(), Skein::Geometry{.descriptions = 8, .slots = 8});
         Skein::defaultTraceFileIs(std::move(file));
         std::this_thread::yield();
         if (files % 3 == 0)
            Skein::defaultTraceFileIs(nullptr);
         Tests::soundRecords(Skein::TraceReader(directory.file()));
      }
      Skein::defaultTraceFileIs(nullptr);
   });
   EXPECT_EQ(runThreads(), 0u);
   done = true;
   owner.join();
   EXPECT_GT(files, 0u);
}

std::atomic<unsigned> lines = 0;

TEST(TraceConcurrent, linesOfSeveralThreads) {
   Vane::TraceHandle& facility = Vane::TraceHandle::named("RsvpLerCliCapi");
   Vane::traceSinkIs([](Vane::TraceHelper const&, std::string_view text) noexcept { lines += text.ends_with(">"); });
   facility.levelIs(8);
   EXPECT_EQ(runThreads(), 0u);
   facility.levelIs(0);
   Vane::traceSinkIs(nullptr);
   EXPECT_EQ(lines, threads * rounds * 2);
}

} // namespace
