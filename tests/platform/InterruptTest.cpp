#include "vane/Interrupt.h"

#include <gtest/gtest.h>

#include <csignal>

namespace {

TEST(Interrupt, IsPendingFromARequestUntilItIsCleared) {
   EXPECT_FALSE(Vane::Interrupt::pending());
   Vane::Interrupt::clear();
   EXPECT_FALSE(Vane::Interrupt::pending());
   Vane::Interrupt::request();
   Vane::Interrupt::request();
   EXPECT_TRUE(Vane::Interrupt::pending());
   Vane::Interrupt::clear();
   EXPECT_FALSE(Vane::Interrupt::pending());
}

TEST(Interrupt, ComesFromASignalHandler) {
   auto* const before = std::signal(SIGINT, [](int) { Vane::Interrupt::request(); });
   std::raise(SIGINT);
   std::signal(SIGINT, before);
   EXPECT_TRUE(Vane::Interrupt::pending());
   Vane::Interrupt::clear();
}

} // namespace
