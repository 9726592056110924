#include "fathom/ValueMap.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct Event {
   std::uint32_t number = 0;
   std::string text = "default";
   friend bool operator==(Event const&, Event const&) = default;
};

using Map = Fathom::FathomValueMap<std::uint32_t, Event>;

std::string damageOf(Map const& map, std::uint32_t key) {
   try {
      static_cast<void>(map[key]);
   } catch (Brindle::CorruptionDetectedException const& damage) {
      return damage.what();
   }
   return "no damage";
}

TEST(ValueMap, TheDefaultRecordIsOneObject) {
   Event const& value = Fathom::FathomValueBase::defaultValue<Event>();
   EXPECT_EQ(&value, &Fathom::FathomValueBase::defaultValue<Event>());
   EXPECT_EQ(value, (Event{0, "default"}));
}

TEST(ValueMap, AnAbsentSlotReadsAsTheDefaultRecord) {
   Map map;
   map.set(1, {1, "one"});
   EXPECT_EQ(map[2], (Event{0, "default"}));
   EXPECT_EQ(map.safeLookup(2), (Event{0, "default"}));
   EXPECT_EQ(map.corruptionCount(), 0u);
   EXPECT_FALSE(map.contains(2));
}

TEST(ValueMap, ASlotReadsAsWhatWasWrittenLast) {
   Map map;
   EXPECT_TRUE(map.set(1, {1, "one"}));
   EXPECT_FALSE(map.set(1, {1, "another"}));
   EXPECT_TRUE(map.set(2, {2, "two"}));
   EXPECT_EQ(map[1], (Event{1, "another"}));
   EXPECT_EQ(map.safeLookup(2), (Event{2, "two"}));
   EXPECT_EQ(map.size(), 2u);
   EXPECT_TRUE(map.erase(1));
   EXPECT_FALSE(map.erase(1));
   EXPECT_EQ(map[1], Event{});
   map.clear();
   EXPECT_EQ(map.size(), 0u);
   EXPECT_EQ(map[2], Event{});
}

TEST(ValueMap, ADamagedSlotThrowsItsMessage) {
   Map map;
   map.set(1, {1, "one"});
   map.markDamaged(1, "bad sum in slot 1");
   map.markDamaged(2, "bad sum in slot 2");
   map.markDamaged(3, "");
   EXPECT_EQ(damageOf(map, 1), "bad sum in slot 1");
   EXPECT_EQ(damageOf(map, 2), "bad sum in slot 2");
   EXPECT_EQ(damageOf(map, 3), "");
   EXPECT_EQ(damageOf(map, 4), "no damage");
   EXPECT_TRUE(map.contains(2));
   EXPECT_EQ(map.corruptionCount(), 0u) << "only the safe lookup reports";
}

TEST(ValueMap, WritingOrErasingASlotMendsIt) {
   Map map;
   map.markDamaged(1, "bad sum");
   map.markDamaged(2, "bad sum");
   EXPECT_FALSE(map.set(1, {1, "one"}));
   EXPECT_TRUE(map.erase(2));
   EXPECT_EQ(map.safeLookup(1), (Event{1, "one"}));
   EXPECT_EQ(map.safeLookup(2), Event{});
   EXPECT_EQ(map.corruptionCount(), 0u);
}

TEST(ValueMap, TheSafeLookupReportsOncePerReadAndGivesTheDefault) {
   Map map;
   std::vector<std::string> told;
   Fathom::FathomValueMapBase const* manager = nullptr;
   map.setCorruptionHandler([&](Brindle::String const& message, Fathom::FathomValueMapBase const& from) {
      told.push_back(message);
      manager = &from;
      EXPECT_EQ(map.lastCorruption(), message) << "the handler may ask the map";
   });
   map.markDamaged(1, "bad sum 1");
   map.markDamaged(2, "bad sum 2");
   EXPECT_EQ(map.safeLookup(1), Event{});
   EXPECT_EQ(map.safeLookup(2), Event{});
   EXPECT_EQ(map.safeLookup(1), Event{});
   EXPECT_EQ(told, (std::vector<std::string>{"bad sum 1", "bad sum 2", "bad sum 1"}));
   EXPECT_EQ(manager, &map);
   EXPECT_EQ(map.corruptionCount(), 3u);
   EXPECT_EQ(map.lastCorruption(), "bad sum 1");

   map.setCorruptionHandler({});
   EXPECT_EQ(map.safeLookup(2), Event{});
   EXPECT_EQ(told.size(), 3u);
   EXPECT_EQ(map.corruptionCount(), 4u);
   EXPECT_EQ(map.lastCorruption(), "bad sum 2");
}

TEST(ValueMap, AnotherMapIsNotTold) {
   Map damaged;
   Map sound;
   damaged.markDamaged(1, "bad sum");
   damaged.safeLookup(1);
   EXPECT_EQ(damaged.corruptionCount(), 1u);
   EXPECT_EQ(sound.corruptionCount(), 0u);
   EXPECT_EQ(sound.lastCorruption(), "");
}

struct OwnHandling : Map {
   void handleCorruptionDetected(Brindle::String const& message, FathomValueMapBase const& manager) const override {
      told += message + (&manager == this ? "!" : "?");
   }
   mutable std::string told;
};

TEST(ValueMap, AClassMayHandleDamageItself) {
   OwnHandling map;
   map.markDamaged(1, "bad sum");
   EXPECT_EQ(map.safeLookup(1), Event{});
   EXPECT_EQ(map.told, "bad sum!");
   EXPECT_EQ(map.corruptionCount(), 0u);
}

// A record that can't be copied out.
struct Refusing {
   Refusing() = default;
   explicit Refusing(bool refuses) : refuse(refuses) {}
   Refusing(Refusing const& other) { *this = other; }
   Refusing(Refusing&&) noexcept = default;
   Refusing& operator=(Refusing const& other) {
      if (other.refuse)
         throw std::length_error("refused");
      return *this;
   }
   bool refuse = false;
};

TEST(ValueMap, AnyOtherExceptionPasses) {
   Fathom::FathomValueMap<std::uint32_t, Refusing> map;
   map.set(1, Refusing(true));
   EXPECT_THROW(map.safeLookup(1), std::length_error);
   EXPECT_EQ(map.corruptionCount(), 0u);
}

TEST(ValueMap, WhatAHandlerThrowsPasses) {
   Map map;
   map.setCorruptionHandler([](auto const&, auto const&) { throw std::logic_error("handler"); });
   map.markDamaged(1, "bad sum");
   EXPECT_THROW(map.safeLookup(1), std::logic_error);
   EXPECT_EQ(map.corruptionCount(), 1u);
}

} // namespace
