#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <utility>
#include <vector>

// The maps and sets inside immutable records: sorted vectors, which iterate in ascending order of the keys'
// operator<=>. They are plain values; changing one is no business of two threads at once.

namespace Vane {

namespace Impl {

// What the map and the set have in common. `Order` tells the key of an item.
template<class Item, class Key, class Order>
class SortedVector {
public:
   using value_type = Item;
   using const_iterator = typename std::vector<Item>::const_iterator;

   SortedVector() noexcept = default;
   SortedVector(std::initializer_list<Item> items) : SortedVector(std::vector<Item>(items)) {}
   // Sorts the items; of those with one key it keeps the first.
   explicit SortedVector(std::vector<Item> items) : items_(std::move(items)) {
      auto const isBehind = [](Item const& a, Item const& b) { return !(Order::key(a) < Order::key(b)); };
      if (std::adjacent_find(items_.begin(), items_.end(), isBehind) == items_.end())
         return;
      std::stable_sort(items_.begin(), items_.end(),
                       [](Item const& a, Item const& b) { return Order::key(a) < Order::key(b); });
      auto const sameKey = [](Item const& a, Item const& b) { return Order::key(a) == Order::key(b); };
      items_.erase(std::unique(items_.begin(), items_.end(), sameKey), items_.end());
   }

   const_iterator begin() const noexcept { return items_.begin(); }
   const_iterator end() const noexcept { return items_.end(); }
   std::size_t size() const noexcept { return items_.size(); }
   bool empty() const noexcept { return items_.empty(); }
   bool contains(Key const& key) const { return find(key) != end(); }
   // The item of the key; end() when there is none.
   const_iterator find(Key const& key) const {
      auto const at = lowerBound(key);
      return at != end() && Order::key(*at) == key ? at : end();
   }
   // Returns false, and leaves the item that stands there alone, when its key is already present. Appending
   // is cheap.
   bool insert(Item item) {
      auto const at =
            items_.empty() || Order::key(items_.back()) < Order::key(item) ? end() : lowerBound(Order::key(item));
      if (at != end() && Order::key(*at) == Order::key(item))
         return false;
      items_.insert(at, std::move(item));
      return true;
   }
   // Returns whether the key was there.
   bool erase(Key const& key) {
      auto const at = find(key);
      if (at == end())
         return false;
      items_.erase(at);
      return true;
   }
   void clear() noexcept { items_.clear(); }
   void reserve(std::size_t count) { items_.reserve(count); }

   friend bool operator==(SortedVector const& a, SortedVector const& b) { return a.items_ == b.items_; }

private:
   const_iterator lowerBound(Key const& key) const {
      return std::lower_bound(begin(), end(), key,
                              [](Item const& item, Key const& sought) { return Order::key(item) < sought; });
   }

   std::vector<Item> items_;
};

template<class Key, class Value>
struct FlatMapItem {
   Key key;
   Value value;
   friend bool operator==(FlatMapItem const&, FlatMapItem const&) = default;
};

struct KeyOfItem {
   template<class Item>
   static auto const& key(Item const& item) noexcept {
      return item.key;
   }
};

struct KeyIsItem {
   template<class Item>
   static Item const& key(Item const& item) noexcept {
      return item;
   }
};

} // namespace Impl

// Iterates over items with the fields `key` and `value`.
template<class Key, class Value>
class FlatMap : public Impl::SortedVector<Impl::FlatMapItem<Key, Value>, Key, Impl::KeyOfItem> {
public:
   using Item = Impl::FlatMapItem<Key, Value>;
   using Impl::SortedVector<Item, Key, Impl::KeyOfItem>::SortedVector;
   using Impl::SortedVector<Item, Key, Impl::KeyOfItem>::insert;

   bool insert(Key key, Value value) { return insert(Item{std::move(key), std::move(value)}); }
   // The key's value inside the map, good until the map changes; nullptr when the key is absent.
   Value const* valueOf(Key const& key) const {
      auto const at = this->find(key);
      return at != this->end() ? &at->value : nullptr;
   }
};

// Iterates over the keys.
template<class Key>
class FlatSet : public Impl::SortedVector<Key, Key, Impl::KeyIsItem> {
public:
   using Impl::SortedVector<Key, Key, Impl::KeyIsItem>::SortedVector;
};

} // namespace Vane
