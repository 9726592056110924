#pragma once

#include "brindle/Assert.h"
#include "vane/Epoch.h"
#include "vane/HashArray.h"
#include "vane/Key.h"
#include "vane/Stored.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <new>
#include <utility>

namespace Vane {

// A hash map with unique keys for one writer and any number of readers at once. Readers never wait. The value is a
// handle or any other type that can be copied. A lookup gives a copy; a walk, and what is told to do so, shows it in
// place. The order of a walk means nothing to whoever walks; it is that in which the keys came.
//
// The keys stand in an array, each in a slot of its own as long as the array is in use, which is why a walk never
// meets a key twice. Replacing a value exchanges the pointer in the slot, and so does erasing a key. A full array is
// replaced by another one with the keys that are there. A new map has no array.
//
// No reader may be in a map that is destroyed. Writer operations that run out of memory throw std::bad_alloc and leave
// the map as it was, but for Vane::retire, by which they give up what they replace.
template<class Key, class Value>
class HashMap2018 {
   using Array = Impl::HashArray<Key, Value>;
   using Slot = typename Array::Slot;

public:
   // What a handle points to, or the value itself.
   using Object = typename Stored<Value>::Object;

   // An element as a walk shows it. The references hold until the iterator's next step, or as long as the call of the
   // body.
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
         return {iter_->key, shown_.value()};
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
         std::uint32_t const used = array_ != nullptr ? array_->used() : 0;
         while (iter_ == nullptr && next_ < used) {
            Slot const& slot = (*array_)[next_];
            lookAhead(slot, used - next_++, &Array::prefetchObject);
            if (Object* const object = map_->loadOf(*array_, slot); object != Array::absent()) {
               shown_.show(object);
               iter_ = &slot;
            }
         }
      }

      Pin pin_;
      HashMap2018 const* map_;
      Array const* array_;
      std::uint32_t next_ = 0; // the next slot's place
      Slot const* iter_ = nullptr;
      typename Stored<Value>::Shown shown_;
   };

   HashMap2018() noexcept { new (own_) Array; }
   HashMap2018(HashMap2018 const&) = delete;
   HashMap2018& operator=(HashMap2018 const&) = delete;
   ~HashMap2018() {
      if (Array const* const array = array_.load(std::memory_order_relaxed)) {
         dropValues(*array);
         if (!isOwn(array))
            Array::release(array);
      }
      std::destroy_at(ownArray());
   }

   // Readers.

   // A copy of the key's value; a default value when the key is absent.
   Value find(Key const& key) const {
      Pin const pin;
      Object* const object = load(key);
      return object != Array::absent() ? Stored<Value>::get(object) : Value{};
   }
   // Copies the key's value into `out`. Returns false, and leaves `out` alone, when the key is absent.
   bool find(Key const& key, Value& out) const {
      Pin const pin;
      Object* const object = load(key);
      if (object == Array::absent())
         return false;
      out = Stored<Value>::get(object);
      return true;
   }
   // What the key's handle points to, or its value in place; nullptr when the key is absent or the handle empty. It is
   // good as long as the map, and a pin that the caller has taken before.
   Object* peek(Key const& key) const noexcept {
      Object* const object = load(key);
      return object != Array::absent() ? object : nullptr;
   }
   // Where in a map a lookup has found its key. Keys that came one after the other stand side by side.
   using Place = std::uint32_t;
   // peek(), which sets `place` to where the key stands, and leaves it alone when the key has no place.
   Object* peek(Key const& key, Place& place) const noexcept {
      Array const* const array = array_.load(std::memory_order_acquire);
      return array != nullptr ? peekAt(*array, array->search(key), place) : nullptr;
   }
   // The same for a key that stands at the place or a little behind it, told by Key's `isSame` alone, without its hash.
   // nullptr says nothing of any other key.
   Object* peekNear(Key const& key, Place& place) const noexcept {
      Array const* const array = array_.load(std::memory_order_acquire);
      return array != nullptr ? peekAt(*array, array->searchNear(key, place), place) : nullptr;
   }
   // peek() of a key whose object's outline() is as wanted(outline) says; nullptr of any other, without a look at the
   // object.
   template<class Wanted>
   Object* peekIf(Key const& key, Wanted&& wanted) const noexcept {
      Array const* const array = array_.load(std::memory_order_acquire);
      Slot const* const slot = array != nullptr ? array->search(key) : nullptr;
      return slot != nullptr && wanted(slot->outline.get()) ? objectOf(*slot) : nullptr;
   }
   bool contains(Key const& key) const noexcept {
      Pin const pin;
      return load(key) != Array::absent();
   }
   // The number of keys at this moment.
   std::size_t size() const noexcept { return size_.load(std::memory_order_relaxed); }
   bool empty() const noexcept { return size() == 0; }

   // Two steps ahead of a lookup, for whoever knows early what it will look up: each asks the memory for what the next
   // step, and at last the lookup, will read first, and itself reads only what the step before has asked for. A map of
   // a few keys, which is searched in place, needs neither. Under a pin of the caller's.
   void prefetchCell(Key const& key) const noexcept {
      if (Array const* const array = array_.load(std::memory_order_acquire))
         array->prefetchCell(key);
   }
   void prefetchSlot(Key const& key) const noexcept {
      if (Array const* const array = array_.load(std::memory_order_acquire))
         array->prefetchSlot(key);
   }
   // Asks the memory for what a lookup or a walk reads of the map itself.
   void prefetch() const noexcept {
      __builtin_prefetch(&array_);
      __builtin_prefetch(own_ + sizeof(own_) - 1);
   }
   // For a map that has never had but one key, whatever it is: calls ahead(object), to ask for what will be read of it.
   template<class Ahead>
   void lookAheadToOnly(Ahead&& ahead) const noexcept {
      Array const* const array = array_.load(std::memory_order_acquire);
      if (isOwn(array) && array->used() != 0)
         withObject(*array->begin(), ahead);
   }
   void prefetchOnlyObject() const noexcept { lookAheadToOnly(&Array::prefetchObject); }
   // For a map that has or had more: asks the memory for where its first keys stand.
   void prefetchFirst() const noexcept {
      Array const* const array = array_.load(std::memory_order_acquire);
      if (array != nullptr && !isOwn(array))
         array->prefetchFirst();
   }

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

   // Calls body(key, object) for each element that a walk would show, with what its handle points to, or with its
   // value. Both are good as long as the map, and a pin that the caller has taken before. An empty handle ends the
   // process, as it does wherever one is followed. With `ahead`, calls ahead(object) some elements before, to ask the
   // memory for what body will read of the object; it must not read that itself.
   template<class Ahead, class Body>
   void inspectAll(Ahead&& ahead, Body&& body) const {
      Array const* const array = array_.load(std::memory_order_acquire);
      std::uint32_t const used = array != nullptr ? array->used() : 0;
      for (std::uint32_t place = 0; place < used; ++place) {
         Slot const& slot = (*array)[place];
         lookAhead(slot, used - place, ahead);
         if (Object* const object = loadOf(*array, slot); object != Array::absent()) {
            BRINDLE_ASSERT(object);
            body(slot.key, *object);
         }
      }
   }
   template<class Body>
   void inspectAll(Body&& body) const {
      inspectAll(&Array::prefetchObject, body);
   }
   // The same with what the objects' outline() says in their place, and without look-ahead. An object is read only if
   // the map has moved on to another array meanwhile.
   template<class Body>
   void inspectOutlines(Body&& body) const {
      Array const* const array = array_.load(std::memory_order_acquire);
      std::uint32_t const used = array != nullptr ? array->used() : 0;
      for (std::uint32_t place = 0; place < used; ++place) {
         Slot const& slot = (*array)[place];
         if (Object* const object = loadOf(*array, slot); object != Array::absent()) {
            BRINDLE_ASSERT(object);
            body(slot.key, isCurrent(*array) ? slot.outline.get() : object->outline());
         }
      }
   }

   // The writer.

   // Inserts the key or replaces its value. Returns whether the key was absent.
   bool set(Key key, Value value) {
      if (Slot* const slot = findSlot(key))
         return exchange(*slot, Stored<Value>::put(std::move(value)));
      Array const* const array = array_.load(std::memory_order_relaxed);
      if (array == nullptr || array->isFull())
         rehash(size() + 1);
      array_.load(std::memory_order_relaxed)->insert(std::move(key), Stored<Value>::put(std::move(value)));
      grow(1);
      return true;
   }

   // Returns whether the key was there.
   bool erase(Key const& key) noexcept {
      Slot* const slot = findSlot(key);
      if (slot == nullptr || slot->object.load(std::memory_order_relaxed) == Array::absent())
         return false;
      exchange(*slot, Array::absent());
      return true;
   }

   void clear() noexcept {
      Array* const array = array_.exchange(nullptr, std::memory_order_acq_rel);
      size_.store(0, std::memory_order_relaxed);
      if (isOwn(array)) {
         for (Slot& slot : *array)
            retireValue(array->exchange(slot, Array::absent()));
      } else if (array != nullptr) {
         retire(array, [](void const* dead) noexcept {
            auto const* const deadArray = static_cast<Array const*>(dead);
            dropValues(*deadArray);
            Array::release(deadArray);
         });
      }
   }

   // Makes room for `count` keys in all: a map from which nothing is or was erased then keeps its array until it has
   // more.
   void reserve(std::size_t count) {
      Array const* const array = array_.load(std::memory_order_relaxed);
      if (count != 0 && (array == nullptr || !array->holds(count)))
         rehash(count);
   }

private:
   // What stands for the key: its value, or absent().
   Object* load(Key const& key) const noexcept {
      Array const* const array = array_.load(std::memory_order_acquire);
      Slot const* const slot = array != nullptr ? array->search(key) : nullptr;
      return slot != nullptr ? slot->object.load(std::memory_order_acquire) : Array::absent();
   }
   static Object* peekAt(Array const& array, Slot const* slot, Place& place) noexcept {
      if (slot == nullptr)
         return nullptr;
      place = array.placeOf(*slot);
      return objectOf(*slot);
   }
   // nullptr when the key has been erased, too.
   static Object* objectOf(Slot const& slot) noexcept {
      Object* const object = slot.object.load(std::memory_order_acquire);
      return object != Array::absent() ? object : nullptr;
   }
   bool isCurrent(Array const& array) const noexcept { return array_.load(std::memory_order_acquire) == &array; }
   // What stands for the key of a slot in an array from which the map may have moved on.
   Object* loadOf(Array const& array, Slot const& slot) const noexcept {
      Object* const object = slot.object.load(std::memory_order_acquire);
      if (object == Array::absent() || isCurrent(array))
         return object;
      return load(slot.key);
   }
   // Asks the memory for what a walk that has come to the slot, with so many before its end, will read some slots on:
   // ahead(object) what a handle points to, and nearer, when that is a collection, what stands first in it.
   template<class Ahead>
   static void lookAhead(Slot const& slot, std::uint32_t left, Ahead&& ahead) noexcept {
      if (left > 16)
         withObject((&slot)[16], ahead);
      if constexpr (requires { std::declval<Object&>().prefetchFirst(); }) {
         if (left > 8)
            withObject((&slot)[8], [](Object& object) { object.prefetchFirst(); });
      }
      if constexpr (requires { std::declval<Object&>().prefetchSecond(); }) {
         if (left > 4)
            withObject((&slot)[4], [](Object& object) { object.prefetchSecond(); });
      }
   }
   template<class Body>
   static void withObject(Slot const& slot, Body&& body) noexcept {
      Object* const object = slot.object.load(std::memory_order_acquire);
      if (object != Array::absent() && object != nullptr)
         body(*object);
   }
   // The writer's: the slot that belongs to a key, or nullptr.
   Slot* findSlot(Key const& key) noexcept {
      Array* const array = array_.load(std::memory_order_relaxed);
      return array != nullptr ? array->search(key) : nullptr;
   }

   void grow(std::size_t by) noexcept { size_.store(size() + by, std::memory_order_relaxed); }

   // Puts another value into a slot. Returns whether this made the key present.
   bool exchange(Slot& slot, Object* object) noexcept {
      Object* const former = array_.load(std::memory_order_relaxed)->exchange(slot, object);
      retireValue(former);
      bool const inserted = former == Array::absent();
      if (inserted)
         grow(1);
      else if (object == Array::absent())
         grow(std::size_t(0) - 1);
      return inserted;
   }
   static void retireValue(Object* object) noexcept {
      if (object != Array::absent())
         Stored<Value>::retire(object);
   }
   static void dropValues(Array const& array) noexcept {
      for (Slot const& slot : array) {
         Object* const object = slot.object.load(std::memory_order_relaxed);
         if (object != Array::absent())
            Stored<Value>::drop(object);
      }
   }

   // Moves to an array for `count` keys and some more, since erased keys keep their slots.
   void rehash(std::size_t count) {
      Array* const next = makeArray(count <= 4 || count > Array::mostKeys ? count : count + count / 4);
      Array* const former = array_.load(std::memory_order_relaxed);
      if (former != nullptr) {
         for (Slot const& slot : *former) {
            Object* const object = slot.object.load(std::memory_order_relaxed);
            if (object != Array::absent())
               next->insert(slot.key, slot.outline, object);
         }
      }
      array_.store(next, std::memory_order_release);
      if (former != nullptr && !isOwn(former))
         retire(former, [](void const* dead) noexcept { Array::release(static_cast<Array const*>(dead)); });
   }

   Array* ownArray() noexcept { return std::launder(reinterpret_cast<Array*>(own_)); }
   bool isOwn(Array const* array) const noexcept { return static_cast<void const*>(array) == own_; }
   // One's own once only: a reader may stand in it long after the map has moved on.
   Array* makeArray(std::size_t keys) { return keys == 1 && ownArray()->used() == 0 ? ownArray() : Array::make(keys); }

   std::atomic<Array*> array_ = nullptr;
   // An array for one key, which many maps never need more than, with its slot behind it.
   alignas(Array) std::byte own_[sizeof(Array) + sizeof(Slot)];
   std::atomic<std::size_t> size_ = 0;
};

} // namespace Vane
