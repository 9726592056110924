#pragma once

#include "brindle/Assert.h"
#include "vane/Epoch.h"
#include "vane/Key.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <new>
#include <utility>

namespace Vane {

// A hash map with unique keys for one writer and any number of readers at once. Readers never wait. The value
// is a handle or any other type that can be copied; what a reader gets is a copy. The order of a walk means
// nothing to whoever walks; it is that in which the keys came, since what was made one after the other mostly lies so
// in memory too.
//
// The entries stand behind an array of cells that is searched linearly. An entry is never changed: replacing
// a value publishes another entry in the cell, and so does erasing a key, with an entry that only keeps the
// key. A cell thus belongs to one key as long as the array is in use, which is why a walk never meets a key
// twice. A full array is replaced by another one with the live entries. An empty map that never held anything
// has no array.
//
// No reader may be in a map that is destroyed. Writer operations that run out of memory throw std::bad_alloc
// and leave the map as it was.
template<class Key, class Value>
class HashMap2018 {
   struct Entry;
   struct Array;

public:
   // An element as a walk shows it; the references hold while the iterator, or the call of the body, lasts.
   struct Item {
      Key const& key;
      Value const& value;
   };

   // A walk. It holds a pin from its beginning to its end, survives every change of the map meanwhile, and
   // shows no key twice; what comes or goes meanwhile may be shown or not, but never a value that is known to
   // have gone.
   class Iterator {
   public:
      explicit Iterator(HashMap2018 const& map) noexcept
            : map_(&map), array_(map.array_.load(std::memory_order_acquire)) {
         advance();
      }
      Iterator(Iterator const&) = delete;
      Iterator& operator=(Iterator const&) = delete;

      // Both end the process through an assertion on `iter_` at the end of the map.
      Item operator*() const noexcept {
         BRINDLE_ASSERT(iter_);
         return {iter_->key, iter_->value};
      }
      Iterator& operator++() noexcept {
         BRINDLE_ASSERT(iter_);
         advance();
         return *this;
      }
      friend bool operator==(Iterator const& a, std::default_sentinel_t) noexcept { return a.iter_ == nullptr; }

   private:
      void advance() noexcept {
         iter_ = nullptr;
         while (iter_ == nullptr && array_ != nullptr && key_ < array_->used.load(std::memory_order_acquire)) {
            lookAhead();
            Entry const* const entry = entryOf(key_++);
            if (entry->live)
               iter_ = current(entry);
         }
      }
      // Asks the memory for what the walk will read some keys on: first the cell, then the entry and what its value
      // points to, and nearer, when that is a collection, what stands first in it.
      void lookAhead() const noexcept {
         if (isAhead(24))
            __builtin_prefetch(&array_->cellOf(key_ + 24));
         if (isAhead(16))
            array_->cellOf(key_ + 16).prefetch();
         if constexpr (holdsHandle) {
            if (Value const* const value = valueAhead(8))
               prefetchContents(**value);
            if constexpr (requires(Value const& value) { value->prefetchFirstObject(); }) {
               if (Value const* const value = valueAhead(4))
                  (*value)->prefetchFirstObject();
            }
         }
      }
      bool isAhead(std::uint32_t keys) const noexcept {
         return array_->used.load(std::memory_order_acquire) - key_ > keys;
      }
      Entry const* entryOf(std::uint32_t key) const noexcept {
         return array_->cellOf(key).entry.load(std::memory_order_acquire);
      }
      // A handle that isn't empty, or nullptr.
      Value const* valueAhead(std::uint32_t keys) const noexcept {
         Entry const* const entry = isAhead(keys) ? entryOf(key_ + keys) : nullptr;
         return entry != nullptr && entry->value != nullptr ? &entry->value : nullptr;
      }
      template<class Pointee>
      static void prefetchContents(Pointee const& pointee) noexcept {
         if constexpr (requires { pointee.prefetchEntries(); })
            pointee.prefetchEntries();
         else if constexpr (requires { pointee.prefetchFirst(); })
            pointee.prefetchFirst();
      }
      // This array is no longer written to when the map has moved to another one.
      Entry const* current(Entry const* entry) const noexcept {
         bool const moved = map_->array_.load(std::memory_order_acquire) != array_;
         return moved ? map_->findEntry(entry->key) : entry;
      }

      Pin pin_;
      HashMap2018 const* map_;
      Array const* array_;
      std::uint32_t key_ = 0; // the next one's place in the order of the array
      Entry const* iter_ = nullptr;
   };

   HashMap2018() noexcept = default;
   HashMap2018(HashMap2018 const&) = delete;
   HashMap2018& operator=(HashMap2018 const&) = delete;
   ~HashMap2018() {
      Array* const array = array_.load(std::memory_order_relaxed);
      if (isOwn(array))
         delete ownCell_.entry.load(std::memory_order_relaxed);
      else if (array != nullptr)
         disposeAll(array);
   }

   // Readers.

   // A copy of the key's value; a default value when the key is absent.
   Value find(Key const& key) const {
      Pin const pin;
      Entry const* const entry = findEntry(key);
      return entry != nullptr ? entry->value : Value{};
   }
   // Copies the key's value into `out`. Returns false, and leaves `out` alone, when the key is absent.
   bool find(Key const& key, Value& out) const {
      return inspect(key, [&out](Value const& value) { out = value; });
   }
   // The key's value in place, nullptr when the key is absent; it is good as long as a pin that the caller has taken
   // before.
   Value const* peek(Key const& key) const noexcept {
      Entry const* const entry = findEntry(key);
      return entry != nullptr ? &entry->value : nullptr;
   }
   // Two steps ahead of a lookup, for whoever knows early what it will look up: each asks the memory for what the next
   // step, and at last the lookup, will read first, and waits for nothing that the step before has asked for. Under a
   // pin of the caller's.
   void prefetchCell(Key const& key) const noexcept {
      if (Cell const* const cell = firstCell(keptHash(key)))
         __builtin_prefetch(cell);
   }
   void prefetchEntry(Key const& key) const noexcept {
      std::uint32_t const hash = keptHash(key);
      Cell const* const cell = firstCell(hash);
      if (cell != nullptr && cell->hash.load(std::memory_order_relaxed) == hash)
         cell->prefetch();
   }
   // The same for the entries of a map of a few keys, whatever they are.
   void prefetchEntries() const noexcept {
      Array const* const array = array_.load(std::memory_order_acquire);
      for (std::uint32_t i = 0; array != nullptr && i <= std::min(array->mask, std::uint32_t{3}); ++i)
         array->cells()[i].prefetch();
   }
   // Calls `body` with the key's value, in place and under a pin. Returns false when the key is absent.
   template<class Body>
   bool inspect(Key const& key, Body&& body) const {
      Pin const pin;
      Entry const* const entry = findEntry(key);
      if (entry == nullptr)
         return false;
      body(entry->value);
      return true;
   }
   bool contains(Key const& key) const noexcept {
      Pin const pin;
      return findEntry(key) != nullptr;
   }
   // The number of keys at this moment.
   std::size_t size() const noexcept { return size_.load(std::memory_order_relaxed); }
   bool empty() const noexcept { return size() == 0; }

   Iterator begin() const noexcept { return Iterator(*this); }
   std::default_sentinel_t end() const noexcept { return {}; }
   // Calls body(key, value) for each element, in the manner of Iterator. A body that returns false ends the
   // walk.
   template<class Body>
   void walk(Body&& body) const {
      for (auto const& [key, value] : *this) {
         if (!goesOn(body, key, value))
            return;
      }
   }

   // The writer.

   // Inserts the key or replaces its value. Returns whether the key was absent.
   bool set(Key key, Value value) {
      std::uint32_t const hash = keptHash(key);
      Cell* const cell = findCell(key, hash);
      auto entry = std::make_unique<Entry>(std::move(key), std::move(value), true);
      if (cell != nullptr)
         return replace(*cell, entry.release());
      if (usedCells() == limit(capacity()))
         rehash(size() + 1);
      place(*array_.load(std::memory_order_relaxed), hash, entry.release());
      grow(1);
      return true;
   }

   // Returns whether the key was there.
   bool erase(Key const& key) {
      Cell* const cell = findCell(key, keptHash(key));
      if (cell == nullptr || !cell->entry.load(std::memory_order_relaxed)->live)
         return false;
      replace(*cell, new Entry(key, Value{}, false));
      return true;
   }

   void clear() noexcept {
      Array* const array = array_.exchange(nullptr, std::memory_order_acq_rel);
      size_.store(0, std::memory_order_relaxed);
      if (isOwn(array))
         retireObject(ownCell_.entry.load(std::memory_order_relaxed));
      else if (array != nullptr)
         retire(array, [](void const* dead) noexcept { disposeAll(static_cast<Array const*>(dead)); });
   }

   // Makes room for `count` keys in all: a map from which nothing is erased then keeps its array until it has more.
   void reserve(std::size_t count) {
      if (count > limit(capacity()))
         rehash(count);
   }

private:
   struct Entry {
      Entry(Key k, Value v, bool isLive) : key(std::move(k)), value(std::move(v)), live(isLive) {}
      Key const key;
      [[no_unique_address]] Value const value;
      bool const live; // false: the key has been erased
   };

   static constexpr bool holdsHandle = requires(Value const& value) { value.get(); };

   // The hash is set once, before the first entry; 0 in a cell that no key has.
   struct Cell {
      std::atomic<std::uint32_t> hash = 0;
      // How far behind the entry the object lies that its value is a handle on, in units of 16 bytes. With it the
      // memory can be asked for both at once. It may be wrong for a moment while another entry is published.
      std::atomic<std::int32_t> objectOffset = 0;
      std::atomic<Entry const*> entry = nullptr;

      void publish(Entry const* next) noexcept {
         if constexpr (holdsHandle) {
            std::intptr_t const offset = (addressOf(next->value.get()) - addressOf(next)) / 16;
            bool const fits = std::in_range<std::int32_t>(offset) && next->value != nullptr;
            objectOffset.store(fits ? static_cast<std::int32_t>(offset) : 0, std::memory_order_relaxed);
         }
         entry.store(next, std::memory_order_release);
      }
      // Asks the memory for the entry and the object.
      void prefetch() const noexcept {
         Entry const* const next = entry.load(std::memory_order_relaxed);
         __builtin_prefetch(next);
         if constexpr (holdsHandle)
            prefetchObject(next);
      }
      void prefetchObject(Entry const* next) const noexcept {
         std::intptr_t const object =
               addressOf(next) + std::intptr_t{16} * objectOffset.load(std::memory_order_relaxed);
         __builtin_prefetch(reinterpret_cast<void const*>(object));
         __builtin_prefetch(reinterpret_cast<void const*>(object + 64));
      }
      static std::intptr_t addressOf(void const* at) noexcept { return reinterpret_cast<std::intptr_t>(at); }
   };

   // The cells follow the object, and behind them the order: the numbers of the cells that belong to a key, live or
   // erased, as the keys came. The number of cells is a power of two, `mask` one less.
   struct alignas(16) Array {
      std::uint32_t mask;
      std::atomic<std::uint32_t> used = 0; // cells that belong to a key
      Cell* cells() noexcept { return reinterpret_cast<Cell*>(this + 1); }
      Cell const* cells() const noexcept { return reinterpret_cast<Cell const*>(this + 1); }
      std::uint32_t* order() noexcept { return reinterpret_cast<std::uint32_t*>(cells() + capacity()); }
      std::uint32_t const* order() const noexcept {
         return reinterpret_cast<std::uint32_t const*>(cells() + capacity());
      }
      // That of one of the `used` keys.
      Cell const& cellOf(std::uint32_t key) const noexcept { return cells()[order()[key]]; }
      std::size_t capacity() const noexcept { return std::size_t(mask) + 1; }
   };

   static std::uint32_t keptHash(Key const& key) noexcept {
      std::uint32_t const hash = hashOf(key);
      return hash == 0 ? 1 : hash;
   }

   // Keys that fit into an array. A small one may be full: the search is bounded by its size.
   static constexpr std::size_t limit(std::size_t capacity) noexcept {
      return capacity <= 4 ? capacity : capacity - capacity / 4;
   }

   // Where the search for a hash begins; nullptr in a map without an array.
   Cell const* firstCell(std::uint32_t hash) const noexcept {
      Array const* const array = array_.load(std::memory_order_acquire);
      return array == nullptr ? nullptr : &array->cells()[hash & array->mask];
   }
   // The live entry of a key, or nullptr.
   Entry const* findEntry(Key const& key) const noexcept {
      Array const* const array = array_.load(std::memory_order_acquire);
      if (array == nullptr)
         return nullptr;
      Cell const* const cell = search(*array, key, keptHash(key));
      if (cell == nullptr)
         return nullptr;
      Entry const* const entry = cell->entry.load(std::memory_order_acquire);
      return entry->live ? entry : nullptr;
   }
   // The writer's: the cell that belongs to a key, or nullptr.
   Cell* findCell(Key const& key, std::uint32_t hash) noexcept {
      Array* const array = array_.load(std::memory_order_relaxed);
      return array == nullptr ? nullptr : const_cast<Cell*>(search(*array, key, hash));
   }
   static Cell const* search(Array const& array, Key const& key, std::uint32_t hash) noexcept {
      Cell const* const cells = array.cells();
      for (std::uint32_t step = 0; step <= array.mask; ++step) {
         Cell const& cell = cells[(hash + step) & array.mask];
         std::uint32_t const kept = cell.hash.load(std::memory_order_relaxed);
         if (kept == 0)
            return nullptr;
         if (kept != hash)
            continue;
         Entry const* const entry = cell.entry.load(std::memory_order_acquire);
         if (entry == nullptr) // its insertion isn't complete
            return nullptr;
         if constexpr (holdsHandle)
            cell.prefetchObject(entry);
         if (keysEqual(entry->key, key))
            return &cell;
      }
      return nullptr;
   }

   std::size_t capacity() const noexcept {
      Array const* const array = array_.load(std::memory_order_relaxed);
      return array == nullptr ? 0 : array->capacity();
   }
   std::size_t usedCells() const noexcept {
      Array const* const array = array_.load(std::memory_order_relaxed);
      return array == nullptr ? 0 : array->used.load(std::memory_order_relaxed);
   }
   void grow(std::size_t by) noexcept { size_.store(size() + by, std::memory_order_relaxed); }

   // Publishes another entry in the cell of its key. Returns whether this made the key present.
   bool replace(Cell& cell, Entry const* entry) noexcept {
      Entry const* const former = cell.entry.load(std::memory_order_relaxed);
      cell.publish(entry);
      bool const inserted = entry->live && !former->live;
      if (inserted)
         grow(1);
      else if (!entry->live)
         grow(std::size_t(0) - 1);
      retireObject(former);
      return inserted;
   }

   // Puts an entry into the first free cell of its hash. There is one.
   static void place(Array& array, std::uint32_t hash, Entry const* entry) noexcept {
      std::uint32_t at = hash & array.mask;
      while (array.cells()[at].hash.load(std::memory_order_relaxed) != 0)
         at = (at + 1) & array.mask;
      array.cells()[at].hash.store(hash, std::memory_order_relaxed);
      array.cells()[at].publish(entry);
      std::uint32_t const used = array.used.load(std::memory_order_relaxed);
      array.order()[used] = at;
      array.used.store(used + 1, std::memory_order_release);
   }

   // Moves to an array for `count` live keys and some more, since erased keys fill cells too.
   void rehash(std::size_t count) {
      Array* const next = makeArray(count <= 4 ? count : count + count / 4);
      Array* const former = array_.load(std::memory_order_relaxed);
      forEachEntry(former, [&](Cell const& cell, Entry const* entry) {
         if (entry->live)
            place(*next, cell.hash.load(std::memory_order_relaxed), entry);
      });
      array_.store(next, std::memory_order_release);
      forEachEntry(former, [](Cell const&, Entry const* entry) {
         if (!entry->live)
            retireObject(entry);
      });
      if (former != nullptr && !isOwn(former))
         retire(former, [](void const* dead) noexcept { ::operator delete(const_cast<void*>(dead)); });
   }

   bool isOwn(Array const* array) const noexcept { return array == &ownArray_; }

   Array* makeArray(std::size_t count) {
      // Once only: a reader may stand in it long after the map has moved on.
      if (count == 1 && !std::exchange(ownArrayTaken_, true))
         return &ownArray_;
      std::size_t size = 1;
      while (limit(size) < count)
         size *= 2;
      void* const storage = ::operator new(sizeof(Array) + size * sizeof(Cell) + limit(size) * sizeof(std::uint32_t));
      auto* const array = new (storage) Array{static_cast<std::uint32_t>(size - 1)};
      std::uninitialized_default_construct_n(array->cells(), size);
      return array;
   }

   template<class Body>
   static void forEachEntry(Array const* array, Body body) noexcept {
      for (std::uint32_t key = 0; array != nullptr && key < array->used.load(std::memory_order_relaxed); ++key) {
         Cell const& cell = array->cellOf(key);
         body(cell, cell.entry.load(std::memory_order_relaxed));
      }
   }

   static void disposeAll(Array const* array) noexcept {
      forEachEntry(array, [](Cell const&, Entry const* entry) { delete entry; });
      ::operator delete(const_cast<Array*>(array));
   }

   static_assert(sizeof(Cell) == 16, "a cell doesn't straddle two cache lines");

   Array ownArray_{0};
   Cell ownCell_;               // that of ownArray_, which finds it behind itself
   std::uint32_t ownOrder_ = 0; // and this behind that
   bool ownArrayTaken_ = false;
   std::atomic<Array*> array_ = nullptr;
   std::atomic<std::size_t> size_ = 0;
};

} // namespace Vane
