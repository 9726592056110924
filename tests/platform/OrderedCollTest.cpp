#include "vane/OrderedColl.h"

#include "tests/support/CountedRecord.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <compare>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

using Tests::countedRecord;
using Tests::CountedRecord;
using Coll = Vane::OrderedColl<std::uint32_t, std::uint64_t>;
using Model = std::map<std::uint32_t, std::uint64_t>;

Model contentOf(Coll const& coll) {
   Model content;
   Vane::orderedWalk(coll, [&content](std::uint32_t key, std::uint64_t value) {
      EXPECT_TRUE(content.empty() || content.rbegin()->first < key) << "out of order";
      content.emplace(key, value);
   });
   return content;
}

void expectSame(Coll const& coll, Model const& model, std::uint32_t keys) {
   ASSERT_EQ(coll.size(), model.size());
   ASSERT_EQ(contentOf(coll), model);
   ASSERT_EQ(coll.first().has_value(), !model.empty());
   if (!model.empty()) {
      ASSERT_EQ(coll.first()->key, model.begin()->first);
      ASSERT_EQ(coll.first()->value, model.begin()->second);
   }
   for (std::uint32_t key = 0; key < keys; ++key) {
      auto const at = model.find(key);
      std::uint64_t out = 77;
      ASSERT_EQ(coll.contains(key), at != model.end());
      ASSERT_EQ(coll.find(key), at != model.end() ? at->second : 0);
      ASSERT_EQ(coll.find(key, out), at != model.end());
      ASSERT_EQ(out, at != model.end() ? at->second : 77);
      auto const above = model.upper_bound(key);
      auto const item = coll.after(key);
      ASSERT_EQ(item.has_value(), above != model.end());
      if (item) {
         ASSERT_EQ(item->key, above->first);
         ASSERT_EQ(item->value, above->second);
      }
   }
}

// One random operation on both.
void change(Coll& coll, Model& model, Tests::Random& random, std::uint32_t keys, std::uint64_t value) {
   std::uint32_t const key = random.below(keys);
   std::uint32_t const what = random.below(1000);
   std::uint64_t const version = coll.version();
   bool changed = true;
   if (what < 500) {
      ASSERT_EQ(coll.set(key, value), !model.contains(key));
      model[key] = value;
   } else if (what < 995) {
      changed = model.erase(key) == 1;
      ASSERT_EQ(coll.erase(key), changed);
   } else {
      changed = !model.empty();
      coll.clear();
      model.clear();
   }
   ASSERT_EQ(coll.version() > version, changed);
}

TEST(OrderedColl, DoesWhatAModelDoes) {
   for (std::uint32_t const keys : {1u, 2u, 5u, 40u, 1000u}) {
      for (std::uint32_t seed = 1; seed <= 8; ++seed) {
         Tests::Random random(seed);
         Coll coll;
         Model model;
         for (std::uint64_t step = 1; step <= 2000; ++step) {
            change(coll, model, random, keys, step);
            if (step % 64 == 0)
               expectSame(coll, model, keys);
            if (testing::Test::HasFatalFailure())
               return;
         }
      }
   }
}

// Whatever a body does, what comes next is the smallest key above the one just shown.
TEST(OrderedColl, AWalkSurvivesChangesFromInside) {
   for (std::uint32_t const keys : {1u, 2u, 4u, 20u, 200u}) {
      for (std::uint32_t seed = 1; seed <= 50; ++seed) {
         Tests::Random random(seed);
         Coll coll;
         Model model;
         for (std::uint32_t key = 0; key < keys; key += 2) {
            coll.set(key, key + 1);
            model[key] = key + 1;
         }
         auto expected = model.begin();
         Vane::orderedWalk(coll, [&](std::uint32_t key, std::uint64_t value) {
            ASSERT_NE(expected, model.end());
            ASSERT_EQ(key, expected->first);
            ASSERT_EQ(value, expected->second);
            for (std::uint32_t i = random.below(6); i > 0; --i)
               change(coll, model, random, keys, 1000 * i + seed);
            Vane::collectRetired();
            expected = model.upper_bound(key);
         });
         ASSERT_EQ(expected, model.end());
         if (testing::Test::HasFatalFailure())
            return;
      }
   }
}

struct WalkCase {
   char const* name;
   std::function<void(Coll&)> change; // made in the body of key 30 of 10, 20, 30, 40, 50
   std::vector<std::uint32_t> shown;
};

class OrderedWalk : public testing::TestWithParam<WalkCase> {};

// The keys that walk(coll, body) shows.
template<class Walk>
std::vector<std::uint32_t> shownBy(Walk const& walk, std::function<void(Coll&)> const& change) {
   Coll coll;
   for (std::uint32_t const key : {10u, 20u, 30u, 40u, 50u})
      coll.set(key, key);
   std::vector<std::uint32_t> shown;
   walk(coll, [&](std::uint32_t key, std::uint64_t) {
      shown.push_back(key);
      if (key == 30)
         change(coll);
      Vane::collectRetired();
   });
   return shown;
}

TEST_P(OrderedWalk, ChangedInTheBody) {
   auto const walk = [](Coll& coll, auto const& body) { Vane::orderedWalk(coll, body); };
   EXPECT_EQ(shownBy(walk, GetParam().change), GetParam().shown);
}

TEST_P(OrderedWalk, InPlaceChangedInTheBody) {
   Vane::Pin const pin;
   auto const walk = [](Coll& coll, auto const& body) { coll.inspectAll(body); };
   EXPECT_EQ(shownBy(walk, GetParam().change), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
      All, OrderedWalk,
      testing::Values(WalkCase{"Nothing", [](Coll&) {}, {10, 20, 30, 40, 50}},
                      WalkCase{"CurrentRemoved", [](Coll& coll) { coll.erase(30); }, {10, 20, 30, 40, 50}},
                      WalkCase{"NextRemoved", [](Coll& coll) { coll.erase(40); }, {10, 20, 30, 50}},
                      WalkCase{"FormerRemoved", [](Coll& coll) { coll.erase(20); }, {10, 20, 30, 40, 50}},
                      WalkCase{"LastRemoved", [](Coll& coll) { coll.erase(50); }, {10, 20, 30, 40}},
                      WalkCase{"CurrentAndAllBehindRemoved",
                               [](Coll& coll) {
                                  for (std::uint32_t const key : {30u, 40u, 50u})
                                     coll.erase(key);
                               },
                               {10, 20, 30}},
                      WalkCase{"InsertedBehindThePlace", [](Coll& coll) { coll.set(35, 1); }, {10, 20, 30, 35, 40, 50}},
                      WalkCase{"InsertedBeforeThePlace", [](Coll& coll) { coll.set(25, 1); }, {10, 20, 30, 40, 50}},
                      WalkCase{"InsertedAtTheEnd", [](Coll& coll) { coll.set(60, 1); }, {10, 20, 30, 40, 50, 60}},
                      WalkCase{"CurrentReplaced", [](Coll& coll) { coll.set(30, 1); }, {10, 20, 30, 40, 50}},
                      WalkCase{"CurrentRemovedAndInserted",
                               [](Coll& coll) {
                                  coll.erase(30);
                                  coll.set(30, 1);
                               },
                               {10, 20, 30, 40, 50}},
                      WalkCase{"Cleared", [](Coll& coll) { coll.clear(); }, {10, 20, 30}},
                      WalkCase{"ClearedAndFilled",
                               [](Coll& coll) {
                                  coll.clear();
                                  for (std::uint32_t const key : {10u, 30u, 31u})
                                     coll.set(key, 1);
                               },
                               {10, 20, 30, 31}}),
      [](auto const& test) { return std::string(test.param.name); });

TEST(OrderedColl, OutlinesAreThoseOfTheRecordsThatAreThere) {
   Vane::Pin const pin;
   Vane::OrderedColl<std::uint32_t, Tests::CountedPtr> coll;
   for (std::uint32_t key = 0; key < 20; ++key)
      coll.set(key, countedRecord(key, 1));
   std::uint32_t next = 0;
   coll.inspectAll([&](std::uint32_t key, CountedRecord const& record, std::uint8_t outline) {
      ASSERT_EQ(key, next++);
      std::uint64_t const generation = key % 3 == 1 ? 2 : 1;
      EXPECT_EQ(outline, CountedRecord::outlineOf(key, generation));
      EXPECT_TRUE(record.isWhole(key));
      EXPECT_EQ(record.generation(), generation);
      if (key % 3 == 0 && key < 19)
         coll.set(key + 1, countedRecord(key + 1, 2));
   });
   EXPECT_EQ(next, 20u);
}

TEST(OrderedColl, ABodyRunsWithoutAPinAndHoldsCopies) {
   Vane::OrderedColl<std::uint32_t, Tests::CountedPtr> coll;
   for (std::uint32_t key = 0; key < 4; ++key)
      coll.set(key, countedRecord(key));
   Vane::collectRetired();
   int calls = 0;
   Vane::orderedWalk(coll, [&](std::uint32_t key, Tests::CountedPtr const& record) {
      ++calls;
      coll.erase(key);
      EXPECT_EQ(Vane::collectRetired(), 1u);
      EXPECT_TRUE(record->isWhole(key));
      EXPECT_EQ(record->userCount(), 1u);
   });
   EXPECT_EQ(calls, 4);
   EXPECT_EQ(CountedRecord::alive(), 0);
}

TEST(OrderedColl, ABodyMayEndTheWalk) {
   Coll coll;
   for (std::uint32_t key = 0; key < 10; ++key)
      coll.set(key, key);
   int calls = 0;
   Vane::orderedWalk(coll, [&calls](std::uint32_t, std::uint64_t) { return ++calls < 4; });
   EXPECT_EQ(calls, 4);
}

// A key that, the moment it is compared with another one, lets something happen to the collection.
struct Trap {
   std::uint32_t number = 0;
   friend bool operator==(Trap a, Trap b) noexcept { return a.number == b.number; }
   friend std::strong_ordering operator<=>(Trap a, Trap b) {
      if (std::max(a.number, b.number) == armedFor)
         std::exchange(spring, nullptr)(std::exchange(armedFor, 0));
      return a.number <=> b.number;
   }
   static inline std::uint32_t armedFor = 0;
   static inline std::function<void(std::uint32_t)> spring;
};

TEST(OrderedColl, AnElementMayGoWhileTheWalkLooksForIt) {
   Vane::OrderedColl<Trap, Vane::NoValue> coll;
   for (std::uint32_t const number : {10u, 20u, 30u})
      coll.set({number}, {});
   std::vector<std::uint32_t> shown;
   Vane::orderedWalk(coll, [&](Trap key, Vane::NoValue) {
      shown.push_back(key.number);
      if (key.number != 10)
         return;
      coll.set({5}, {}); // makes the walk look for the key above 10
      Trap::spring = [&coll](std::uint32_t number) {
         coll.erase({number});
         coll.set({25}, {});
      };
      Trap::armedFor = 20;
   });
   Vane::collectRetired();
   EXPECT_EQ(shown, (std::vector<std::uint32_t>{10, 20, 25, 30}));
}

// A key whose equality is told by isEq.
struct Name {
   std::string text;
   static bool isEq(Name const& a, Name const& b) { return a.text == b.text; }
   friend std::strong_ordering operator<=>(Name const&, Name const&) = default;
};

TEST(OrderedColl, HoldsASetOfAnyKey) {
   Vane::OrderedColl<Name, Vane::NoValue> set;
   EXPECT_TRUE(set.set({"c"}, {}));
   EXPECT_TRUE(set.set({"a"}, {}));
   EXPECT_FALSE(set.set({"c"}, {}));
   EXPECT_TRUE(set.set({"b"}, {}));
   EXPECT_TRUE(set.erase({"b"}));
   std::string all;
   Vane::orderedWalk(set, [&all](Name const& name, Vane::NoValue) { all += name.text; });
   EXPECT_EQ(all, "ac");
   EXPECT_TRUE(set.contains({"a"}));
   EXPECT_FALSE(set.contains({"b"}));
   EXPECT_EQ(set.after({"a"})->key.text, "c");
}

TEST(OrderedColl, AscendingAndDescendingInsertsBuildTheSame) {
   constexpr std::uint32_t count = 50'000;
   Coll ascending;
   Coll descending;
   Model model;
   for (std::uint32_t key = 0; key < count; ++key) {
      ascending.set(key, key);
      descending.set(count - 1 - key, count - 1 - key);
      model.emplace(key, key);
   }
   EXPECT_EQ(contentOf(ascending), model);
   EXPECT_EQ(contentOf(descending), model);
}

TEST(OrderedColl, AppendsBehindTheLastKeyThatIsLeft) {
   Coll coll;
   for (std::uint32_t const key : {1u, 2u, 3u})
      coll.set(key, key);
   coll.set(3, 30);
   coll.erase(3);
   coll.erase(2);
   coll.set(4, 4);
   coll.set(2, 2);
   coll.clear();
   coll.set(5, 5);
   coll.erase(5);
   coll.set(1, 10);
   coll.set(6, 6);
   EXPECT_EQ(contentOf(coll), (Model{{1, 10}, {6, 6}}));
}

TEST(OrderedColl, DropsEachUseOfARecordOnce) {
   Vane::collectRetired();
   ASSERT_EQ(CountedRecord::alive(), 0);
   {
      Vane::OrderedColl<std::uint32_t, Tests::CountedPtr> coll;
      for (std::uint32_t key = 0; key < 100; ++key)
         coll.set(key, countedRecord(key));
      for (std::uint32_t key = 0; key < 50; ++key)
         coll.erase(key);
      coll.set(99, countedRecord(99, 1));
      Vane::collectRetired();
      EXPECT_EQ(CountedRecord::alive(), 50);
      EXPECT_EQ(coll.find(99)->generation(), 1u);
      EXPECT_EQ(coll.find(1), nullptr);
      coll.clear();
      Vane::collectRetired();
      EXPECT_EQ(CountedRecord::alive(), 0);
      coll.set(1, countedRecord(1));
      coll.set(2, countedRecord(2));
   }
   EXPECT_EQ(CountedRecord::alive(), 0);
}

TEST(OrderedCollDeathTest, AWalkInPlaceFollowsNoEmptyHandle) {
   Vane::OrderedColl<std::uint32_t, Tests::CountedPtr> coll;
   coll.set(1, {});
   Vane::Pin const pin;
   auto const noBody = [](std::uint32_t, CountedRecord const&, std::uint8_t) {};
   EXPECT_DEATH(coll.inspectAll(noBody), "assertion failed: object\n");
}

} // namespace
