#pragma once

#include "fathom/String.h"

#include <string_view>
#include <unordered_map>

namespace Host {

// The names of one state: equal texts become one string, so that comparing two keys is mostly comparing two pointers.
class NameTable {
public:
   // The one string of this text.
   Fathom::String name(std::string_view text) {
      if (last_.view() != text) {
         auto const known = names_.find(text);
         last_ = known != names_.end() ? known->second : add(text);
      }
      return last_;
   }

private:
   Fathom::String add(std::string_view text) {
      Fathom::String const name(text);
      names_.emplace(name.view(), name);
      return name;
   }

   // The views are of the strings beside them, whose text doesn't move.
   std::unordered_map<std::string_view, Fathom::String> names_;
   Fathom::String last_;
};

} // namespace Host
