#pragma once

#include "fathom/String.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Host {

// The names of one state: equal texts become one string, so that comparing two keys is mostly comparing two pointers.
// A name that comes again, or comes after the one that it came after at first, is found without a search.
class NameTable {
public:
   // The one string of this text, good until the next call.
   Fathom::String const& name(std::string_view text) {
      if (!isAt(current_, text))
         current_ = isAt(current_ + 1, text) ? current_ + 1 : search(text);
      return names_[current_];
   }

private:
   bool isAt(std::size_t place, std::string_view text) const noexcept {
      return place < names_.size() && names_[place].view() == text;
   }
   std::size_t search(std::string_view text) {
      if (auto const known = places_.find(text); known != places_.end())
         return known->second;
      names_.emplace_back(text);
      places_.emplace(names_.back().view(), names_.size() - 1);
      return names_.size() - 1;
   }

   std::vector<Fathom::String> names_; // in the order in which they came first
   // The views are of the strings in names_, whose text doesn't move.
   std::unordered_map<std::string_view, std::size_t> places_;
   std::size_t current_ = 0;
};

} // namespace Host
