#include "vane/HashMap2018.h"

#include "fathom/String.h"
#include "tests/support/CountedRecord.h"
#include "tests/support/Random.h"
#include "vane/Epoch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <new>
#include <set>
#include <string>
#include <vector>

namespace {

using Tests::countedRecord;
using Tests::CountedRecord;

// A composite key whose hash takes few values, so that different keys meet in the table.
struct CrowdedKey {
   std::uint32_t number = 0;
   std::uint32_t hash(std::uint32_t seed) const noexcept { return seed + number % 3; }
   static bool isEq(CrowdedKey const& a, CrowdedKey const& b) noexcept { return a.number == b.number; }
};

// A key whose mixed hash is 0, which no cell can keep.
struct ZeroHashKey {
   std::uint32_t number = 0;
   std::uint32_t hash(std::uint32_t) const noexcept { return 0; }
   friend bool operator==(ZeroHashKey, ZeroHashKey) noexcept = default;
};

template<class Key>
struct Make {
   static Key key(std::uint32_t number) { return Key{number}; }
   static std::uint32_t number(Key const& key) {
      if constexpr (requires { key.number; })
         return key.number;
      else
         return static_cast<std::uint32_t>(key);
   }
};

using Model = std::map<std::uint32_t, std::uint64_t>;

template<class Key>
Model contentOf(Vane::HashMap2018<Key, std::uint64_t> const& map) {
   Model content;
   map.walk([&content](Key const& key, std::uint64_t value) {
      EXPECT_TRUE(content.emplace(Make<Key>::number(key), value).second) << "shown twice";
   });
   return content;
}

template<class Key>
class HashMap : public testing::Test {
public:
   using Map = Vane::HashMap2018<Key, std::uint64_t>;
   using K = Make<Key>;

   static void expectSame(Map const& map, Model const& model, std::uint32_t keys) {
      ASSERT_EQ(map.size(), model.size());
      ASSERT_EQ(contentOf(map), model);
      for (std::uint32_t number = 0; number < keys; ++number) {
         auto const at = model.find(number);
         std::uint64_t out = 77;
         ASSERT_EQ(map.contains(K::key(number)), at != model.end());
         ASSERT_EQ(map.find(K::key(number)), at != model.end() ? at->second : 0);
         ASSERT_EQ(map.find(K::key(number), out), at != model.end());
         ASSERT_EQ(out, at != model.end() ? at->second : 77);
      }
   }

   // One random operation on both.
   static void change(Map& map, Model& model, Tests::Random& random, std::uint32_t keys, std::uint64_t value) {
      std::uint32_t const number = random.below(keys);
      std::uint32_t const what = random.below(1000);
      if (what < 500) {
         ASSERT_EQ(map.set(K::key(number), value), !model.contains(number));
         model[number] = value;
      } else if (what < 990) {
         ASSERT_EQ(map.erase(K::key(number)), model.erase(number) == 1);
      } else if (what < 995) {
         map.clear();
         model.clear();
      } else {
         map.reserve(random.below(2 * keys));
      }
   }
};

using Keys = testing::Types<std::uint32_t, std::uint64_t, CrowdedKey, ZeroHashKey>;
TYPED_TEST_SUITE(HashMap, Keys);

TYPED_TEST(HashMap, DoesWhatAModelDoes) {
   for (std::uint32_t const keys : {1u, 2u, 3u, 5u, 40u, 300u}) {
      for (std::uint32_t seed = 1; seed <= 4; ++seed) {
         Tests::Random random(seed);
         typename TestFixture::Map map;
         Model model;
         for (std::uint64_t step = 1; step <= 1000; ++step) {
            TestFixture::change(map, model, random, keys, step);
            if (step % 16 == 0)
               TestFixture::expectSame(map, model, keys);
            if (this->HasFatalFailure())
               return;
         }
      }
   }
}

// Each body makes some random changes. Whatever they are: what is shown is there, with its value of that moment;
// nothing is shown twice; and what stayed from the beginning to the end is shown.
TYPED_TEST(HashMap, AWalkSurvivesChangesFromInside) {
   for (std::uint32_t const keys : {1u, 2u, 4u, 5u, 12u, 100u}) {
      for (std::uint32_t seed = 1; seed <= 40; ++seed) {
         Tests::Random random(seed);
         typename TestFixture::Map map;
         Model model;
         for (std::uint32_t number = 0; number < keys; ++number) {
            map.set(TestFixture::K::key(number), number + 1);
            model[number] = number + 1;
         }
         std::set<std::uint32_t> stayed;
         for (auto const& [number, value] : model)
            stayed.insert(number);
         std::set<std::uint32_t> shown;
         map.walk([&](TypeParam const& key, std::uint64_t const& value) {
            std::uint32_t const number = TestFixture::K::number(key);
            ASSERT_TRUE(shown.insert(number).second) << "shown twice: " << number;
            ASSERT_TRUE(model.contains(number)) << "gone: " << number;
            ASSERT_EQ(value, model[number]);
            std::uint64_t const before = value;
            for (std::uint32_t i = random.below(6); i > 0; --i) {
               TestFixture::change(map, model, random, 2 * keys, 1000 * i + seed);
               std::erase_if(stayed, [&](std::uint32_t each) { return !model.contains(each); });
            }
            Vane::collectRetired();
            ASSERT_EQ(value, before) << "the walk's pin keeps what it shows";
         });
         if (this->HasFatalFailure())
            return;
         for (std::uint32_t const number : stayed)
            ASSERT_TRUE(shown.contains(number)) << number;
         TestFixture::expectSame(map, model, 2 * keys);
      }
   }
}

constexpr std::uint32_t insertedLater = 1000;

void insertMany(Vane::HashMap2018<std::uint32_t, std::uint64_t>& map) {
   for (std::uint32_t key = insertedLater; key < insertedLater + 400; ++key)
      map.set(key, key);
}

struct WalkCase {
   char const* name;
   // Called in the body of the first element, with the keys in the order of the walk.
   std::function<void(Vane::HashMap2018<std::uint32_t, std::uint64_t>&, std::vector<std::uint32_t> const&)> change;
   // Positions of the keys that are shown, in order; the last ones in `rest` follow when it is true.
   std::vector<std::size_t> shown;
   bool rest;
};

class HashMapWalk : public testing::TestWithParam<WalkCase> {};

// Of a walk(map, body).
template<class Walk>
void expectShown(WalkCase const& test, Walk const& walk) {
   for (std::uint32_t const size : {3u, 4u, 5u, 20u, 90u}) {
      Vane::HashMap2018<std::uint32_t, std::uint64_t> map;
      for (std::uint32_t key = 0; key < size; ++key)
         map.set(key, key);
      std::vector<std::uint32_t> order;
      walk(map, [&order](std::uint32_t key, std::uint64_t) { order.push_back(key); });
      ASSERT_EQ(order.size(), size);

      std::vector<std::uint32_t> expected;
      for (std::size_t const position : test.shown)
         expected.push_back(order[position]);
      if (test.rest)
         expected.insert(expected.end(), order.begin() + 3, order.end());
      std::vector<std::uint32_t> shown;
      walk(map, [&](std::uint32_t key, std::uint64_t) {
         if (key >= insertedLater) // may be shown or not
            return;
         shown.push_back(key);
         if (shown.size() == 1)
            test.change(map, order);
      });
      EXPECT_EQ(shown, expected) << size;
   }
}

TEST_P(HashMapWalk, ChangedInTheFirstBody) {
   expectShown(GetParam(), [](auto const& map, auto const& body) { map.walk(body); });
}

TEST_P(HashMapWalk, InPlaceChangedInTheFirstBody) {
   Vane::Pin const pin;
   expectShown(GetParam(), [](auto const& map, auto const& body) { map.inspectAll(body); });
}

INSTANTIATE_TEST_SUITE_P(
      All, HashMapWalk,
      testing::Values(WalkCase{"Nothing", [](auto&, auto&) {}, {0, 1, 2}, true},
                      WalkCase{"CurrentErased", [](auto& map, auto& order) { map.erase(order[0]); }, {0, 1, 2}, true},
                      WalkCase{"NextErased", [](auto& map, auto& order) { map.erase(order[1]); }, {0, 2}, true},
                      WalkCase{"CurrentErasedAndInserted",
                               [](auto& map, auto& order) {
                                  map.erase(order[0]);
                                  map.set(order[0], 9);
                               },
                               {0, 1, 2},
                               true},
                      WalkCase{"NextErasedAndInserted",
                               [](auto& map, auto& order) {
                                  map.erase(order[1]);
                                  map.set(order[1], 9);
                               },
                               {0, 1, 2},
                               true},
                      WalkCase{"Grown", [](auto& map, auto&) { insertMany(map); }, {0, 1, 2}, true},
                      WalkCase{"GrownAndNextErased",
                               [](auto& map, auto& order) {
                                  insertMany(map);
                                  map.erase(order[1]);
                               },
                               {0, 2},
                               true},
                      WalkCase{"NextErasedAndGrown",
                               [](auto& map, auto& order) {
                                  map.erase(order[1]);
                                  insertMany(map);
                               },
                               {0, 2},
                               true},
                      WalkCase{"CurrentErasedGrownAndInserted",
                               [](auto& map, auto& order) {
                                  map.erase(order[0]);
                                  insertMany(map);
                                  map.set(order[0], 9);
                               },
                               {0, 1, 2},
                               true},
                      WalkCase{"Cleared", [](auto& map, auto&) { map.clear(); }, {0}, false},
                      WalkCase{"ClearedAndNextInserted",
                               [](auto& map, auto& order) {
                                  map.clear();
                                  map.set(order[1], 9);
                               },
                               {0, 1},
                               false}),
      [](auto const& test) { return std::string(test.param.name); });

TEST(HashMap2018, AReplacedValueIsShownAsItIsNow) {
   Vane::HashMap2018<std::uint32_t, std::uint64_t> map;
   map.set(1, 10);
   map.set(2, 20);
   std::vector<std::uint64_t> shown;
   map.walk([&](std::uint32_t key, std::uint64_t value) {
      if (key >= insertedLater)
         return;
      shown.push_back(value);
      insertMany(map);
      map.set(3 - key, 30);
   });
   ASSERT_EQ(shown.size(), 2u);
   EXPECT_EQ(shown[1], 30u);
}

TEST(HashMap2018, ABodyMayEndTheWalk) {
   Vane::HashMap2018<std::uint32_t, std::uint64_t> map;
   for (std::uint32_t key = 0; key < 10; ++key)
      map.set(key, key);
   int calls = 0;
   map.walk([&calls](std::uint32_t, std::uint64_t) { return ++calls < 4; });
   EXPECT_EQ(calls, 4);
}

TEST(HashMap2018, AnEmptyMapShowsNothing) {
   Vane::HashMap2018<std::uint32_t, std::uint64_t> map;
   EXPECT_TRUE(map.begin() == map.end());
   EXPECT_TRUE(map.empty());
   EXPECT_FALSE(map.erase(1));
   map.clear();
   EXPECT_EQ(map.find(1), 0u);
}

TEST(HashMap2018, RefusesRoomForMoreKeysThanItCanHave) {
   Vane::HashMap2018<std::uint32_t, std::uint64_t> map;
   map.set(1, 10);
   for (std::size_t const count :
        {std::size_t{1} << 32, std::numeric_limits<std::size_t>::max() / 2, std::numeric_limits<std::size_t>::max()})
      EXPECT_THROW(map.reserve(count), std::bad_alloc);
   EXPECT_EQ(map.find(1), 10u);
}

TEST(HashMap2018, PeekReadsInPlace) {
   Vane::HashMap2018<std::uint32_t, std::string> map;
   map.set(1, "one");
   Vane::Pin const pin;
   std::string const* const one = map.peek(1);
   ASSERT_NE(one, nullptr);
   EXPECT_EQ(*one, "one");
   EXPECT_EQ(map.peek(2), nullptr);
   map.set(1, "another one");
   EXPECT_EQ(*one, "one") << "the pin keeps it";
   map.erase(1);
   EXPECT_EQ(map.peek(1), nullptr);
}

TEST(HashMap2018, PeekFollowsAHandleWithoutAUse) {
   Vane::HashMap2018<std::uint32_t, Tests::CountedPtr> map;
   map.set(1, countedRecord(1));
   Vane::Pin const pin;
   EXPECT_TRUE(map.peek(1)->isWhole(1));
   EXPECT_EQ(map.peek(1)->userCount(), 1u);
   map.walk([](std::uint32_t, Tests::CountedPtr const& record) { EXPECT_EQ(record->userCount(), 1u); });
   map.inspectAll([](std::uint32_t, CountedRecord const& record) { EXPECT_EQ(record.userCount(), 1u); });
   EXPECT_EQ(map.peek(2), nullptr);
}

// A key whose equality can be told from itself, but only of two that share their name.
struct NamedKey {
   Fathom::String name;
   std::uint32_t hash(std::uint32_t seed) const noexcept { return seed + name.hash(); }
   bool isSame(NamedKey const& other) const noexcept { return name.isSame(other.name); }
   friend bool operator==(NamedKey const&, NamedKey const&) noexcept = default;
};

TEST(HashMap2018, PeekTellsWhereAKeyStands) {
   std::vector<NamedKey> keys;
   Vane::HashMap2018<NamedKey, std::uint32_t> map;
   Vane::Pin const pin;
   decltype(map)::Place place = 0;
   EXPECT_EQ(map.peek(NamedKey(), place), nullptr);
   EXPECT_EQ(map.peekNear(NamedKey(), place), nullptr);
   for (std::uint32_t at = 0; at < 200; ++at) {
      keys.push_back({Fathom::String(std::to_string(at))});
      map.set(keys.back(), at);
   }
   auto const near = [&](std::uint32_t at) {
      auto const* const value = map.peekNear(keys[at], place);
      return value != nullptr && *value == at;
   };
   // The keys from the place on, which moves to them, but none that stands before it or far away.
   for (std::uint32_t const at : {0u, 1u, 1u, 5u, 36u})
      EXPECT_TRUE(near(at)) << at;
   EXPECT_FALSE(near(35));
   EXPECT_FALSE(near(190));
   EXPECT_TRUE(near(36)) << "the place is where it was";
   EXPECT_EQ(*map.peek(keys[190], place), 190u);
   EXPECT_TRUE(near(199));
   EXPECT_FALSE(near(198)) << "behind the last one there is nothing";

   // Another string of the same text is the same key for all but this.
   NamedKey const alike{Fathom::String("199")};
   EXPECT_EQ(map.peekNear(alike, place), nullptr);
   EXPECT_EQ(*map.peek(alike, place), 199u);
   map.erase(keys[199]);
   EXPECT_FALSE(near(199));
   EXPECT_EQ(map.peek(keys[199], place), nullptr);
   // A place of a map that has become smaller is nowhere.
   map.clear();
   map.set(keys[3], 3);
   EXPECT_FALSE(near(3));
   EXPECT_EQ(*map.peek(keys[3], place), 3u);
   EXPECT_TRUE(near(3));
}

// The walk in place tells of each object before it shows it, of those in the beginning excepted.
TEST(HashMap2018, LooksAheadInOrder) {
   Vane::HashMap2018<std::uint32_t, Tests::CountedPtr> map;
   for (std::uint32_t key = 0; key < 60; ++key)
      map.set(key, countedRecord(key));
   map.erase(30);
   map.set(31, {});
   map.set(31, countedRecord(31));
   Vane::Pin const pin;
   std::vector<CountedRecord const*> ahead;
   std::vector<CountedRecord const*> shown;
   map.inspectAll(
         [&](CountedRecord const& record) {
            EXPECT_EQ(std::count(shown.begin(), shown.end(), &record), 0);
            ahead.push_back(&record);
         },
         [&](std::uint32_t, CountedRecord const& record) { shown.push_back(&record); });
   ASSERT_EQ(shown.size(), 59u);
   ASSERT_GT(ahead.size(), 30u);
   EXPECT_TRUE(std::equal(ahead.rbegin(), ahead.rend(), shown.rbegin()));
}

// Each body makes some random changes. Whatever they are, the outline that is shown next is that of a record that the
// map has at that moment.
TEST(HashMap2018, OutlinesAreThoseOfTheRecordsThatAreThere) {
   Vane::Pin const pin;
   for (std::uint32_t const keys : {1u, 3u, 40u}) {
      for (std::uint32_t seed = 1; seed <= 40; ++seed) {
         Tests::Random random(seed);
         Vane::HashMap2018<std::uint32_t, Tests::CountedPtr> map;
         Model model; // the records' generations
         std::uint64_t generation = 0;
         auto const change = [&] {
            std::uint32_t const key = random.below(keys);
            switch (random.below(12)) {
            case 0:
            case 1:
            case 2:
               map.erase(key);
               model.erase(key);
               break;
            case 3:
               map.reserve(2 * map.size() + 1); // so that the map moves on
               break;
            default:
               map.set(key, countedRecord(key, ++generation));
               model[key] = generation;
            }
         };
         for (std::uint32_t i = 0; i < 2 * keys; ++i)
            change();
         for (int walks = 0; walks < 10; ++walks) {
            change();
            map.inspectOutlines([&](std::uint32_t key, std::uint8_t outline) {
               ASSERT_TRUE(model.contains(key));
               ASSERT_EQ(outline, CountedRecord::outlineOf(key, model[key])) << "seed " << seed << ", key " << key;
               for (std::uint32_t i = random.below(4); i > 0; --i)
                  change();
            });
            if (HasFatalFailure())
               return;
         }
         std::size_t shown = 0;
         map.inspectOutlines([&shown](std::uint32_t, std::uint8_t) { ++shown; });
         ASSERT_EQ(shown, model.size());
         for (std::uint32_t key = 0; key < keys; ++key) {
            auto const isOfModel = [&](std::uint8_t outline) {
               return model.contains(key) && outline == CountedRecord::outlineOf(key, model[key]);
            };
            ASSERT_EQ(map.peekIf(key, isOfModel), map.peek(key)) << "seed " << seed << ", key " << key;
            ASSERT_EQ(map.peekIf(key, std::not_fn(isOfModel)), nullptr) << "seed " << seed << ", key " << key;
         }
      }
   }
}

// An empty handle is a value like any other: its key is there.
TEST(HashMap2018, HoldsEmptyHandles) {
   Vane::HashMap2018<std::uint32_t, Tests::CountedPtr> map;
   for (std::uint32_t key = 0; key < 40; ++key) {
      EXPECT_TRUE(map.set(key, {}));
      EXPECT_FALSE(map.set(key, {}));
      EXPECT_TRUE(map.contains(key));
      EXPECT_EQ(map.find(key), nullptr);
      EXPECT_EQ(map.peek(key), nullptr);
   }
   EXPECT_EQ(map.size(), 40u);
   int shown = 0;
   map.walk([&shown](std::uint32_t, Tests::CountedPtr const& record) {
      EXPECT_EQ(record, nullptr);
      ++shown;
   });
   EXPECT_EQ(shown, 40);
   EXPECT_TRUE(map.erase(7));
   EXPECT_FALSE(map.contains(7));
   EXPECT_FALSE(map.erase(7));
   EXPECT_EQ(map.size(), 39u);
}

TEST(HashMap2018, KeysThatDifferInHighBitsOnlyDontCrowd) {
   // The low bits choose the cell: keys with equal low bits must still spread.
   for (int const shift : {0, 8, 16, 24, 32, 48}) {
      std::set<std::uint32_t> places;
      for (std::uint64_t key = 0; key < 256; ++key)
         places.insert(Vane::hashOf(key << shift) & 1023);
      EXPECT_GT(places.size(), 180u) << shift;
   }
}

TEST(HashMap2018, DropsEachUseOfARecordOnce) {
   Vane::collectRetired();
   ASSERT_EQ(CountedRecord::alive(), 0);
   {
      Vane::HashMap2018<std::uint32_t, Tests::CountedPtr> map;
      for (std::uint32_t key = 0; key < 100; ++key)
         map.set(key, countedRecord(key));
      EXPECT_EQ(CountedRecord::alive(), 100);
      for (std::uint32_t key = 0; key < 50; ++key)
         map.erase(key);
      map.set(99, countedRecord(99, 1));
      Vane::collectRetired();
      EXPECT_EQ(CountedRecord::alive(), 50);
      Tests::CountedPtr const kept = map.find(70);
      EXPECT_EQ(kept->userCount(), 2u);
      map.clear();
      Vane::collectRetired();
      EXPECT_EQ(CountedRecord::alive(), 1);
      EXPECT_TRUE(kept->isWhole(70));
      for (std::uint32_t key = 0; key < 30; ++key)
         map.set(key, countedRecord(key));
   }
   Vane::collectRetired();
   EXPECT_EQ(CountedRecord::alive(), 0);
}

// The first key of a map stands in the map itself, the ones after it don't.
TEST(HashMap2018, AMapOfOneKeyDropsEachUseOfARecordOnce) {
   Vane::collectRetired();
   ASSERT_EQ(CountedRecord::alive(), 0);
   for (int keys : {1, 2}) {
      Vane::HashMap2018<std::uint32_t, Tests::CountedPtr> map;
      map.set(1, countedRecord(1));
      map.set(1, countedRecord(1, 1));
      if (keys == 2)
         map.set(2, countedRecord(2));
      Vane::collectRetired();
      EXPECT_EQ(CountedRecord::alive(), keys);
      EXPECT_EQ(map.find(1)->generation(), 1u);
      map.erase(1);
      map.clear();
      Vane::collectRetired();
      EXPECT_EQ(CountedRecord::alive(), 0);
      EXPECT_EQ(map.find(1), nullptr);
      map.set(3, countedRecord(3));
      EXPECT_TRUE(map.find(3)->isWhole(3));
      map.clear();
      map.set(4, countedRecord(4));
      EXPECT_EQ(map.find(3), nullptr);
      EXPECT_TRUE(map.find(4)->isWhole(4));
   }
   Vane::collectRetired();
   EXPECT_EQ(CountedRecord::alive(), 0);
}

TEST(HashMap2018, ALookupOfAnAbsentKeyGivesAnEmptyHandle) {
   Vane::HashMap2018<std::uint32_t, Tests::CountedPtr> map;
   map.set(1, countedRecord(1));
   EXPECT_EQ(map.find(2), nullptr);
   map.erase(1);
   EXPECT_EQ(map.find(1), nullptr);
}

TEST(HashMap2018DeathTest, AWalkInPlaceFollowsNoEmptyHandle) {
   Vane::HashMap2018<std::uint32_t, Tests::CountedPtr> map;
   map.set(1, {});
   Vane::Pin const pin;
   EXPECT_DEATH(map.inspectAll([](std::uint32_t, CountedRecord const&) {}), "assertion failed: object\n");
   EXPECT_DEATH(map.inspectOutlines([](std::uint32_t, std::uint8_t) {}), "assertion failed: object\n");
}

TEST(HashMap2018DeathTest, AnIteratorAssertsAtTheEnd) {
   Vane::HashMap2018<std::uint32_t, std::uint64_t> map;
   map.set(1, 1);
   auto const runPast = [&map] {
      auto at = map.begin();
      ++at;
      ++at;
   };
   auto const follow = [&map] {
      auto at = map.begin();
      ++at;
      static_cast<void>(*at);
   };
   EXPECT_DEATH(runPast(), "assertion failed: iter_\n");
   EXPECT_DEATH(follow(), "assertion failed: iter_\n");
}

} // namespace
