#include "fathom/String.h"
#include "fathom/ValueMap.h"
#include "tests/support/Contention.h"
#include "tests/support/CountedRecord.h"
#include "tests/support/Random.h"
#include "vane/Epoch.h"
#include "vane/HashMap2018.h"
#include "vane/OrderedColl.h"
#include "vane/Slot.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

// Each container under a writer that never rests and readers that hold what they see against what must be so.

namespace {

using Tests::CountedPtr;
using Tests::countedRecord;
using Tests::CountedRecord;

using Tests::contend;
using Tests::Generations;
using Tests::keys;
using Tests::Round;
using Tests::stays;
using Tests::Verdict;

class TablesConcurrent : public testing::Test {
protected:
   void SetUp() override {
      Vane::collectRetired();
      ASSERT_EQ(CountedRecord::alive(), 0);
   }
   // Every container of the test has been destroyed.
   void TearDown() override {
      Vane::collectRetired();
      EXPECT_EQ(CountedRecord::alive(), 0);
      EXPECT_EQ(Vane::retiredCount(), 0u);
   }
   Verdict verdict_;
};

TEST_F(TablesConcurrent, Slot) {
   Vane::Slot<CountedRecord const> slot(countedRecord(2, 0));
   std::uint64_t generation = 0;
   contend(
         verdict_, [&](Tests::Random&) { slot.set(countedRecord(2, ++generation)); },
         [&] {
            return [&, seen = Generations(verdict_)](Tests::Random&) mutable {
               for (int i = 0; i < 20; ++i)
                  seen.see(2, slot.get());
            };
         });
}

// One round of a writer on a hash map or an ordered collection.
template<class Coll>
void change(Coll& coll, Tests::Random& random, std::uint64_t generation) {
   std::uint32_t const key = random.below(keys);
   if (stays(key) || random.below(2) == 0)
      coll.set(key, countedRecord(key, generation));
   else
      coll.erase(key);
}

template<class Coll>
void fill(Coll& coll) {
   for (std::uint32_t key = 0; key < keys; key += 2)
      coll.set(key, countedRecord(key));
}

template<class Coll>
void lookUp(Coll const& coll, Tests::Random& random, Generations& seen, Verdict& verdict) {
   for (int i = 0; i < 20; ++i) {
      std::uint32_t const key = random.below(keys);
      CountedPtr const record = coll.find(key);
      verdict.require(record || !stays(key), "a key that stays wasn't found");
      if (record)
         seen.see(key, record);
   }
}

// What a walk has shown so far.
class Shown {
public:
   explicit Shown(Verdict& verdict) : verdict_(verdict) {}
   void show(std::uint32_t key) {
      verdict_.require(!shown_[key], "a key was shown twice");
      shown_[key] = true;
   }
   void end() {
      for (std::uint32_t key = 0; key < keys; key += 2)
         verdict_.require(shown_[key], "a key that stays wasn't shown");
   }

private:
   Verdict& verdict_;
   std::array<bool, keys> shown_{};
};

using HashMap = Vane::HashMap2018<std::uint32_t, CountedPtr>;

Round hashMapReader(HashMap const& map, Verdict& verdict) {
   return [&, seen = Generations(verdict)](Tests::Random& random) mutable {
      if (random.below(8) != 0)
         return lookUp(map, random, seen, verdict);
      Shown shown(verdict);
      switch (random.below(3)) {
      case 0:
         map.walk([&](std::uint32_t key, CountedPtr const& record) {
            if (key >= keys) // one that only passes
               return;
            shown.show(key);
            seen.see(key, record);
         });
         break;
      case 1: {
         Vane::Pin const pin;
         map.inspectOutlines([&](std::uint32_t key, std::uint8_t outline) {
            if (key >= keys)
               return;
            shown.show(key);
            verdict.require(outline % 16 == key % 16, "an outline isn't the record's");
         });
         break;
      }
      default:
         Vane::Pin const pin;
         map.inspectAll([&](std::uint32_t key, CountedRecord const& record) {
            if (key >= keys)
               return;
            shown.show(key);
            verdict.require(record.isWhole(key), "a record isn't whole");
         });
      }
      shown.end();
   };
}

TEST_F(TablesConcurrent, HashMap2018) {
   HashMap map;
   fill(map);
   std::uint64_t generation = 0;
   contend(
         verdict_, [&](Tests::Random& random) { change(map, random, ++generation); },
         [&] { return hashMapReader(map, verdict_); });
}

// A key that leaves room behind its last field, where the outline stands.
struct NamedKey {
   Fathom::String name;
   std::uint8_t number = 0;
   std::uint32_t hash(std::uint32_t seed) const noexcept { return seed + name.hash(); }
   bool isSame(NamedKey const& other) const noexcept { return number == other.number && name.isSame(other.name); }
   friend bool operator==(NamedKey const&, NamedKey const&) noexcept = default;
};

TEST_F(TablesConcurrent, HashMap2018OfNamedKeys) {
   std::vector<NamedKey> named;
   for (std::uint32_t key = 0; key < keys; ++key)
      named.push_back({Fathom::String(std::to_string(key)), static_cast<std::uint8_t>(key)});
   Vane::HashMap2018<NamedKey, CountedPtr> map;
   std::uint64_t generation = 0;
   contend(
         verdict_,
         [&](Tests::Random& random) {
            std::uint32_t const key = random.below(keys);
            switch (random.below(32)) {
            case 0:
               map.clear();
               break;
            case 1:
               map.reserve(2 * map.size() + 1);
               break;
            case 2:
            case 3:
            case 4:
            case 5:
               map.erase(named[key]);
               break;
            default:
               map.set(named[key], countedRecord(key, ++generation));
            }
         },
         [&] {
            return [&](Tests::Random&) {
               Vane::Pin const pin;
               map.inspectOutlines([&](NamedKey const& key, std::uint8_t outline) {
                  verdict_.require(NamedKey(key) == named[key.number], "a key isn't whole");
                  verdict_.require(outline % 16 == key.number % 16, "an outline isn't the record's");
               });
               decltype(map)::Place place = 0;
               for (std::uint32_t key = 0; key < keys; ++key) {
                  CountedRecord const* record = map.peekNear(named[key], place);
                  if (record == nullptr)
                     record = map.peek(named[key], place);
                  verdict_.require(record == nullptr || record->isWhole(key), "a record isn't whole");
                  record = map.peekIf(named[key], [key](std::uint8_t outline) { return outline % 16 == key % 16; });
                  verdict_.require(record == nullptr || record->isWhole(key), "a record isn't whole");
               }
            };
         });
}

// Keys that come once and never again use the array up, so that the map moves to another one every few changes.
TEST_F(TablesConcurrent, HashMap2018ThatKeepsMoving) {
   HashMap map;
   fill(map);
   std::uint64_t generation = 0;
   std::uint32_t passing = keys;
   contend(
         verdict_,
         [&](Tests::Random& random) {
            change(map, random, ++generation);
            for (int i = 0; i < 60; ++i) {
               ++passing;
               map.set(passing, countedRecord(passing));
               map.erase(passing);
            }
         },
         [&] { return hashMapReader(map, verdict_); });
}

// Maps of one to three keys, which are made anew all the time: the array inside the map, and the small ones after it.
TEST_F(TablesConcurrent, HashMap2018OfAFewKeys) {
   struct Few : Brindle::Node {
      HashMap map;
   };
   Vane::Slot<Few const> slot;
   contend(
         verdict_,
         [&](Tests::Random& random) {
            auto const few = Brindle::makeNode<Few>();
            few->map.set(0, countedRecord(0));
            slot.set(few);
            for (std::uint64_t generation = 1; generation <= 20; ++generation) {
               few->map.set(0, countedRecord(0, generation));
               std::uint32_t const key = 1 + random.below(2);
               if (random.below(2) == 0)
                  few->map.set(key, countedRecord(key, generation));
               else
                  few->map.erase(key);
            }
         },
         [&] {
            return [&](Tests::Random&) {
               auto const few = slot.get();
               if (!few)
                  return;
               Generations seen(verdict_);
               for (int i = 0; i < 10; ++i) {
                  CountedPtr const record = few->map.find(0);
                  verdict_.require(record != nullptr, "a key that stays wasn't found");
                  seen.see(0, record);
                  std::array<bool, 3> shown{};
                  few->map.walk([&](std::uint32_t key, CountedPtr const& each) {
                     verdict_.require(!shown[key], "a key was shown twice");
                     shown[key] = true;
                     verdict_.require(each->isWhole(key), "a record isn't whole");
                     if (key == 0)
                        seen.see(0, each);
                  });
                  verdict_.require(shown[0], "a key that stays wasn't shown");
               }
            };
         });
}

TEST_F(TablesConcurrent, HashMap2018ThatIsCleared) {
   HashMap map;
   std::uint64_t generation = 0;
   contend(
         verdict_,
         [&](Tests::Random& random) {
            change(map, random, ++generation);
            if (random.below(64) == 0)
               map.clear();
         },
         [&] {
            return [&](Tests::Random& random) {
               std::uint32_t const key = random.below(keys);
               if (CountedPtr const record = map.find(key))
                  verdict_.require(record->isWhole(key), "a record isn't whole");
               Shown shown(verdict_);
               map.walk([&](std::uint32_t each, CountedPtr const& record) {
                  shown.show(each);
                  verdict_.require(record->isWhole(each), "a record isn't whole");
               });
            };
         });
}

// As a command does it whose client is slow: the pin rests between reads, and handles taken before stay good.
TEST_F(TablesConcurrent, HashMap2018UnderACommandPinThatRests) {
   HashMap map;
   fill(map);
   std::uint64_t generation = 0;
   contend(
         verdict_,
         [&](Tests::Random& random) {
            change(map, random, ++generation);
            Vane::collectRetired();
         },
         [&] {
            return [&, reader = hashMapReader(map, verdict_)](Tests::Random& random) {
               Vane::CommandPin const command;
               for (int i = 0; i < 4; ++i) {
                  std::uint32_t const key = random.below(keys);
                  CountedPtr const kept = map.find(key);
                  {
                     Vane::PinRest const rest;
                     std::this_thread::yield();
                  }
                  verdict_.require(!kept || kept->isWhole(key), "a record isn't whole");
                  reader(random);
               }
            };
         });
}

using OrderedColl = Vane::OrderedColl<std::uint32_t, CountedPtr>;

void walkInOrder(OrderedColl const& coll, Generations& seen, Verdict& verdict) {
   Shown shown(verdict);
   std::int64_t last = -1;
   Vane::orderedWalk(coll, [&](std::uint32_t key, CountedPtr const& record) {
      verdict.require(last < std::int64_t(key), "a walk went back");
      last = key;
      shown.show(key);
      seen.see(key, record);
   });
   shown.end();
}

void askAfter(OrderedColl const& coll, Tests::Random& random, Generations& seen, Verdict& verdict) {
   std::uint32_t const key = random.below(keys);
   auto const item = coll.after(key);
   std::uint32_t const stayer = key + 2 - key % 2;
   verdict.require(stayer >= keys || item, "a key that stays wasn't found above another");
   if (!item)
      return;
   verdict.require(item->key > key && item->key <= stayer, "not the smallest key above another");
   seen.see(item->key, item->value);
}

Round orderedReader(OrderedColl const& coll, Verdict& verdict) {
   return [&, seen = Generations(verdict)](Tests::Random& random) mutable {
      switch (random.below(8)) {
      case 0:
         walkInOrder(coll, seen, verdict);
         break;
      case 1:
         askAfter(coll, random, seen, verdict);
         break;
      default:
         lookUp(coll, random, seen, verdict);
      }
   };
}

TEST_F(TablesConcurrent, OrderedColl) {
   OrderedColl coll;
   fill(coll);
   std::uint64_t generation = 0;
   contend(
         verdict_, [&](Tests::Random& random) { change(coll, random, ++generation); },
         [&] { return orderedReader(coll, verdict_); });
}

// As a command does it: one pin around many reads.
TEST_F(TablesConcurrent, OrderedCollUnderALongPin) {
   OrderedColl coll;
   fill(coll);
   std::uint64_t generation = 0;
   contend(
         verdict_, [&](Tests::Random& random) { change(coll, random, ++generation); },
         [&] {
            return [&, reader = orderedReader(coll, verdict_)](Tests::Random& random) {
               Vane::Pin const pin;
               for (int i = 0; i < 4; ++i)
                  reader(random);
            };
         });
}

TEST_F(TablesConcurrent, OrderedCollThatIsCleared) {
   OrderedColl coll;
   std::uint64_t generation = 0;
   contend(
         verdict_,
         [&](Tests::Random& random) {
            change(coll, random, ++generation);
            if (random.below(64) == 0)
               coll.clear();
         },
         [&] {
            return [&](Tests::Random&) {
               std::int64_t last = -1;
               Vane::orderedWalk(coll, [&](std::uint32_t key, CountedPtr const& record) {
                  verdict_.require(last < std::int64_t(key), "a walk went back");
                  last = key;
                  verdict_.require(record->isWhole(key), "a record isn't whole");
               });
            };
         });
}

// What goes is freed at once, while the walks rest in their bodies.
TEST_F(TablesConcurrent, OrderedCollOfAFewKeys) {
   OrderedColl coll;
   std::uint64_t generation = 0;
   contend(
         verdict_,
         [&](Tests::Random& random) {
            std::uint32_t const key = random.below(3);
            if (!coll.erase(key))
               coll.set(key, countedRecord(key, ++generation));
            Vane::collectRetired();
         },
         [&] {
            return [&](Tests::Random&) {
               Vane::orderedWalk(coll, [&](std::uint32_t key, CountedPtr const& record) {
                  std::this_thread::yield();
                  verdict_.require(record->isWhole(key), "a record isn't whole");
               });
            };
         });
}

// A value that holds itself together: the text repeats the number.
struct Event {
   std::uint32_t number = 0;
   Fathom::String text = "0";
};

TEST_F(TablesConcurrent, ValueMap) {
   Fathom::FathomValueMap<std::uint32_t, Event> map;
   std::atomic<std::uint64_t> reported = 0;
   map.setCorruptionHandler([&](Brindle::String const& message, Fathom::FathomValueMapBase const& manager) {
      verdict_.require(message == "bad sum" && &manager == &map, "a wrong report");
      ++reported;
   });
   contend(
         verdict_,
         [&](Tests::Random& random) {
            std::uint32_t const key = random.below(keys);
            switch (random.below(8)) {
            case 0:
               map.markDamaged(key, "bad sum");
               break;
            case 1:
               map.erase(key);
               break;
            default:
               std::uint32_t const number = random.below(1u << 31);
               map.set(key, {number, std::to_string(number).c_str()});
            }
         },
         [&] {
            return [&](Tests::Random& random) {
               for (int i = 0; i < 20; ++i) {
                  Event const event = map.safeLookup(random.below(keys));
                  verdict_.require(event.text.view() == std::to_string(event.number), "an event isn't whole");
               }
            };
         });
   EXPECT_GT(reported.load(), 0u);
   EXPECT_EQ(map.corruptionCount(), reported.load());
}

// A table of tables whose tables are replaced while they are walked, each container with a writer of its own. There are
// enough of them for a walk to look ahead.
constexpr std::uint32_t tables = 40;

struct Nested : Brindle::Node, OrderedColl {};

TEST_F(TablesConcurrent, TwoWritersOnNestedTables) {
   HashMap plain;
   Vane::HashMap2018<std::uint32_t, Brindle::Ptr<Nested const>> outer;
   std::atomic<bool> stop = false;
   std::thread second([&] {
      Tests::Random random(7);
      for (std::uint64_t generation = 1; !stop.load(); ++generation)
         change(plain, random, generation);
   });
   contend(
         verdict_,
         [&](Tests::Random& random) {
            Brindle::Ptr<Nested> const nested = Brindle::makeNode<Nested>();
            outer.set(random.below(tables), nested);
            for (int i = 0; i < 30; ++i)
               change(*nested, random, 1);
            outer.erase(random.below(tables));
         },
         [&] {
            return [&](Tests::Random& random) {
               std::uint32_t const key = random.below(keys);
               if (CountedPtr const record = plain.find(key))
                  verdict_.require(record->isWhole(key), "a record isn't whole");
               outer.walk([&](std::uint32_t, Brindle::Ptr<Nested const> const& each) {
                  if (auto const first = each->first())
                     verdict_.require(first->value->isWhole(first->key), "a record isn't whole");
               });
               {
                  Vane::Pin const pin;
                  outer.inspectAll(
                        [](Nested const& each) { each.prefetch(); },
                        [&](std::uint32_t, Nested const& each) {
                           each.inspectAll([&](std::uint32_t inner, CountedRecord const& record, std::uint8_t outline) {
                              verdict_.require(record.isWhole(inner), "a record isn't whole");
                              verdict_.require(record.outline() == outline, "an outline isn't the record's");
                           });
                        });
               }
               Brindle::Ptr<Nested const> const nested = outer.find(random.below(tables));
               if (!nested)
                  return;
               Vane::orderedWalk(*nested, [&](std::uint32_t each, CountedPtr const& record) {
                  verdict_.require(record->isWhole(each), "a record isn't whole");
               });
            };
         });
   stop = true;
   second.join();
}

} // namespace
