#pragma once

#include "host/server/LiveState.h"
#include "host/state/JsonReader.h"

#include <string_view>

namespace Host {

// A table that a feed can write to.
struct FeedTable {
   std::string_view name;    // of the member of the state file
   std::string_view keyName; // of the member of its rows that is their key

   // Read a row, or the key of one, whole before they give the change that writes it. A table that isn't there is made
   // for the first row. A row whose inner collection is left out takes the row of its key out, since the state file
   // knows no other meaning for it.
   Change (*set)(JsonReader& in, JsonValue& row);
   Change (*erase)(JsonReader& in, JsonValue& key);
};

// The table of that name, or nullptr.
FeedTable const* findFeedTable(std::string_view name) noexcept;

} // namespace Host
