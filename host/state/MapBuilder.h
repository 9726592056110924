#pragma once

#include "vane/FlatMap.h"

#include <set>
#include <utility>
#include <vector>

namespace Host {

// Collects the items of a sorted map. Appending in ascending order, as files usually do, is cheap; the worst order
// costs no more than a sort.
template<class Key, class Value>
class MapBuilder {
public:
   // Returns false when the key has come before.
   bool add(Key key, Value value) {
      if (ascending_ && !items_.empty() && !(items_.back().key < key)) {
         ascending_ = false;
         for (auto const& item : items_)
            seen_.insert(item.key);
      }
      if (!ascending_ && !seen_.insert(key).second)
         return false;
      items_.push_back({std::move(key), std::move(value)});
      return true;
   }

   // Gives the map, which takes no more room than it needs.
   Vane::FlatMap<Key, Value> take() {
      items_.shrink_to_fit();
      return Vane::FlatMap<Key, Value>(std::move(items_));
   }

private:
   std::vector<typename Vane::FlatMap<Key, Value>::Item> items_;
   bool ascending_ = true;
   std::set<Key> seen_; // empty while ascending
};

} // namespace Host
