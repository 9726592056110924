#pragma once

#include "vane/Key.h"
#include "vane/Outline.h"
#include "vane/Stored.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace Vane::Impl {

// What a HashMap2018 keeps its keys and values in: slots that are filled in the order in which the keys come, and, when
// they are more than a few, cells that lead from a hash to a slot. One writer changes it while readers search and
// walk it. A slot belongs to one key as long as the array lives; the key stays where it is, the value is exchanged.
//
//    cells (none in a small array) | this object | slots
//
// The array owns the keys; the values are its user's.
template<class Key, class Value>
class HashArray {
public:
   using Object = typename Stored<Value>::Object;

   struct Slot {
      Slot(Key k, KeptOutline<Object> const& kept, Object* o) noexcept : key(std::move(k)), outline(kept), object(o) {}

      [[no_unique_address]] Key const key;
      [[no_unique_address]] KeptOutline<Object> outline; // of the object, or already of the one that replaces it
      std::atomic<Object*> object;                       // absent() when the key has been erased
   };

   // The value of a key that isn't there. Not the null pointer, which is an empty handle.
   static Object* absent() noexcept { return reinterpret_cast<Object*>(std::uintptr_t{1}); }

   // The most keys that an array is made for.
   static constexpr std::size_t mostKeys = std::size_t{3} << 30;

   // For one key. Its user has room for the slot right behind it.
   HashArray() noexcept : HashArray(0) {}
   HashArray(HashArray const&) = delete;
   HashArray& operator=(HashArray const&) = delete;
   ~HashArray() {
      for (Slot& slot : *this)
         std::destroy_at(&slot);
   }

   // An array for so many keys or some more, to be given to release(). Throws std::bad_alloc.
   static HashArray* make(std::size_t keys) {
      if (keys > mostKeys)
         throw std::bad_alloc();
      std::size_t capacity = 1;
      while (limit(capacity) < keys)
         capacity *= 2;
      std::size_t const cells = isSmall(capacity) ? 0 : capacity;
      void* const storage = ::operator new(cells * sizeof(Cell) + sizeof(HashArray) + limit(capacity) * sizeof(Slot));
      auto* const first = static_cast<Cell*>(storage);
      std::uninitialized_value_construct_n(first, cells);
      return new (first + cells) HashArray(static_cast<std::uint32_t>(capacity - 1));
   }
   static void release(HashArray const* array) noexcept {
      void const* const storage = array->isSmall() ? static_cast<void const*>(array) : array->cells();
      array->~HashArray();
      ::operator delete(const_cast<void*>(storage));
   }

   // Readers.

   // The slots that belong to a key.
   std::uint32_t used() const noexcept { return used_.load(std::memory_order_acquire); }
   Slot const& operator[](std::uint32_t place) const noexcept { return slots()[place]; }
   Slot const* begin() const noexcept { return slots(); }
   Slot const* end() const noexcept { return slots() + used(); }
   Slot* begin() noexcept { return slots(); }
   Slot* end() noexcept { return slots() + used(); }

   // The slot of a key, or nullptr.
   Slot const* search(Key const& key) const noexcept {
      if (!isSmall())
         return searchCells(key);
      Slot const* const last = end(); // another key may come meanwhile
      Slot const* const slot = std::find_if(begin(), last, [&](Slot const& each) { return keysEqual(each.key, key); });
      return slot != last ? slot : nullptr;
   }

   // The slot of a key, if it is among the 32 from a place on and isSame() tells so; else nullptr.
   Slot const* searchNear(Key const& key, std::uint32_t place) const noexcept {
      std::uint32_t const last = std::min(used(), place + 32);
      for (; place < last; ++place) {
         if (slots()[place].key.isSame(key))
            return &slots()[place];
      }
      return nullptr;
   }
   std::uint32_t placeOf(Slot const& slot) const noexcept { return static_cast<std::uint32_t>(&slot - slots()); }

   // Ask the memory for what a search reads: first the cell, then the slot together with the object.
   void prefetchCell(Key const& key) const noexcept {
      if (!isSmall())
         __builtin_prefetch(&firstCell(keptHash(key)));
   }
   void prefetchSlot(Key const& key) const noexcept {
      if (isSmall())
         return;
      std::uint32_t const hash = keptHash(key);
      Cell const& cell = firstCell(hash);
      if (cell.hash.load(std::memory_order_acquire) != hash)
         return;
      Slot const& slot = slots()[cell.place.load(std::memory_order_relaxed)];
      __builtin_prefetch(&slot);
      __builtin_prefetch(&slot.object); // which may lie in the next line
      prefetch(cell.object.load(std::memory_order_relaxed));
   }
   void prefetchFirst() const noexcept {
      __builtin_prefetch(this);
      __builtin_prefetch(slots() + 2);
   }
   // Asks for two lines of an object, for whoever can't say what of it will be read.
   static void prefetchObject(Object const& object) noexcept { prefetch(&object); }

   // The writer.

   bool isFull() const noexcept { return !holds(used() + std::size_t(1)); }
   // Whether there is room for so many keys in all.
   bool holds(std::size_t keys) const noexcept { return keys <= limit(capacity()); }
   // Takes a new key. There is room.
   void insert(Key key, Object* object) noexcept { insert(std::move(key), KeptOutline<Object>(object), object); }
   // Takes what another array has of a key, without a look at the object.
   void insert(Key key, KeptOutline<Object> const& outline, Object* object) noexcept {
      std::uint32_t const place = used_.load(std::memory_order_relaxed);
      Slot const* const slot = new (slots() + place) Slot(std::move(key), outline, object);
      if (!isSmall())
         lead(keptHash(slot->key), place, object);
      used_.store(place + 1, std::memory_order_release);
   }
   // Returns the former value.
   Object* exchange(Slot& slot, Object* object) noexcept {
      if (!isSmall())
         cellOf(slot).object.store(object, std::memory_order_relaxed);
      if (object != absent() && object != nullptr)
         slot.outline.set(object);
      return slot.object.exchange(object, std::memory_order_acq_rel);
   }
   Slot* search(Key const& key) noexcept { return const_cast<Slot*>(std::as_const(*this).search(key)); }

private:
   struct Cell {
      std::atomic<std::uint32_t> hash; // set at last, and then for good; 0 in a cell that leads nowhere
      std::atomic<std::uint32_t> place;
      // What the slot has, so that the memory can be asked for both at once. It may be wrong for a moment.
      std::atomic<Object*> object;
   };

   explicit HashArray(std::uint32_t mask) noexcept : mask_(mask) {}

   // The hint of a cell needn't lead to an object.
   static void prefetch(Object const* object) noexcept {
      __builtin_prefetch(object);
      __builtin_prefetch(reinterpret_cast<void const*>(reinterpret_cast<std::uintptr_t>(object) + 64));
   }

   static std::uint32_t keptHash(Key const& key) noexcept {
      std::uint32_t const hash = hashOf(key);
      return hash == 0 ? 1 : hash;
   }
   static constexpr bool isSmall(std::size_t capacity) noexcept { return capacity <= 4; }
   // The keys that an array takes. A small one is searched from end to end; cells must not all lead somewhere.
   static constexpr std::size_t limit(std::size_t capacity) noexcept {
      return isSmall(capacity) ? capacity : capacity - capacity / 4;
   }
   std::size_t capacity() const noexcept { return std::size_t(mask_) + 1; }
   bool isSmall() const noexcept { return isSmall(capacity()); }

   Slot* slots() noexcept { return reinterpret_cast<Slot*>(this + 1); }
   Slot const* slots() const noexcept { return reinterpret_cast<Slot const*>(this + 1); }
   Cell* cells() noexcept { return reinterpret_cast<Cell*>(this) - capacity(); }
   Cell const* cells() const noexcept { return reinterpret_cast<Cell const*>(this) - capacity(); }
   Cell const& firstCell(std::uint32_t hash) const noexcept { return cells()[hash & mask_]; }

   Slot const* searchCells(Key const& key) const noexcept {
      std::uint32_t const hash = keptHash(key);
      for (std::uint32_t at = hash & mask_;; at = (at + 1) & mask_) {
         Cell const& cell = cells()[at];
         std::uint32_t const kept = cell.hash.load(std::memory_order_acquire);
         if (kept == 0)
            return nullptr;
         if (kept != hash)
            continue;
         prefetch(cell.object.load(std::memory_order_relaxed));
         std::uint32_t const place = cell.place.load(std::memory_order_relaxed);
         if (place >= used()) // it is just coming: a walk doesn't show it yet either
            return nullptr;
         if (keysEqual(slots()[place].key, key))
            return &slots()[place];
      }
   }
   // Lets the first free cell of a hash lead to a slot.
   void lead(std::uint32_t hash, std::uint32_t place, Object* object) noexcept {
      std::uint32_t at = hash & mask_;
      while (cells()[at].hash.load(std::memory_order_relaxed) != 0)
         at = (at + 1) & mask_;
      cells()[at].place.store(place, std::memory_order_relaxed);
      cells()[at].object.store(object, std::memory_order_relaxed);
      cells()[at].hash.store(hash, std::memory_order_release);
   }
   Cell& cellOf(Slot const& slot) noexcept {
      std::uint32_t at = keptHash(slot.key) & mask_;
      while (cells()[at].place.load(std::memory_order_relaxed) != placeOf(slot))
         at = (at + 1) & mask_;
      return cells()[at];
   }

   static_assert(std::is_nothrow_copy_constructible_v<Key> && std::is_nothrow_move_constructible_v<Key>);
   static_assert(alignof(Slot) <= alignof(std::uint64_t), "a slot stands right behind the object");
   static_assert(sizeof(Cell) == 16, "a cell doesn't straddle two cache lines");

   alignas(std::uint64_t) std::uint32_t const mask_; // one less than the capacity, a power of two
   std::atomic<std::uint32_t> used_ = 0;
};

} // namespace Vane::Impl
