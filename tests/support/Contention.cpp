#include "tests/support/Contention.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <vector>

namespace Tests {

namespace {

constexpr int readers = 3;
constexpr std::uint64_t roundsOfAReader = 1'000'000;
constexpr std::chrono::seconds longest(2);

} // namespace

std::string Verdict::text() const {
   char const* const wrong = wrong_.load();
   return wrong == nullptr ? "" : wrong;
}

void Generations::see(std::uint32_t key, CountedPtr const& record) {
   verdict_.require(record->isWhole(key), "a record isn't whole");
   if (!stays(key))
      return;
   verdict_.require(record->generation() >= last_[key], "a generation went back");
   last_[key] = record->generation();
}

void contend(Verdict const& verdict, Round const& writerRound, std::function<Round()> const& makeReader) {
   std::atomic<int> reading = readers;
   std::atomic<std::uint64_t> rounds = 0;
   std::vector<std::thread> threads;
   auto const end = std::chrono::steady_clock::now() + longest;
   for (int i = 0; i < readers; ++i)
      threads.emplace_back([&, i] {
         Random random(static_cast<std::uint32_t>(i));
         Round const round = makeReader();
         std::uint64_t done = 0;
         for (; done < roundsOfAReader && std::chrono::steady_clock::now() < end; ++done)
            round(random);
         rounds += done;
         --reading;
      });
   Random random(99);
   std::uint64_t writes = 0;
   for (; reading.load() > 0; ++writes)
      writerRound(random);
   for (std::thread& thread : threads)
      thread.join();
   EXPECT_EQ(verdict.text(), "");
   EXPECT_GT(writes, 100u);
   EXPECT_GT(rounds.load(), 100u);
}

} // namespace Tests
