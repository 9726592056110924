#pragma once

#include "brindle/Node.h"
#include "brindle/Ptr.h"

#include <atomic>
#include <cstdint>

namespace Tests {

// A record of a table that knows whether it is whole, and how many of its kind there are.
class CountedRecord : public Brindle::Node {
public:
   CountedRecord(std::uint32_t key, std::uint64_t generation) noexcept
         : key_(key), generation_(generation), check_(checkOf(key, generation)) {
      alive_.fetch_add(1, std::memory_order_relaxed);
   }
   ~CountedRecord() override {
      check_ = 0;
      alive_.fetch_sub(1, std::memory_order_relaxed);
   }

   std::uint32_t key() const noexcept { return key_; }
   std::uint64_t generation() const noexcept { return generation_; }
   // False for a record of another key, one half written and one already destroyed.
   bool isWhole(std::uint32_t key) const noexcept { return key_ == key && check_ == checkOf(key_, generation_); }
   // Something of the key and something of the generation.
   static std::uint8_t outlineOf(std::uint32_t key, std::uint64_t generation) noexcept {
      return static_cast<std::uint8_t>(generation % 16 << 4 | key % 16);
   }
   std::uint8_t outline() const noexcept { return outlineOf(key_, generation_); }
   // The number of records that exist.
   static int alive() noexcept { return alive_.load(std::memory_order_relaxed); }

private:
   static std::uint64_t checkOf(std::uint32_t key, std::uint64_t generation) noexcept {
      return (generation << 32 ^ key) * 0x9e3779b97f4a7c15 + 1;
   }

   std::uint32_t key_;
   std::uint64_t generation_;
   std::uint64_t check_;
   static inline std::atomic<int> alive_ = 0;
};

using CountedPtr = Brindle::Ptr<CountedRecord const>;

inline CountedPtr countedRecord(std::uint32_t key, std::uint64_t generation = 0) {
   return Brindle::makeNode<CountedRecord>(key, generation);
}

} // namespace Tests
