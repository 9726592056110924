#pragma once

#include "host/server/LineReader.h"
#include "host/server/LiveState.h"

namespace Host {

// Reads one line of a feed:
//
//    {"set":"<table>","row":{...}}       inserts or replaces a row, which is one of the state file
//    {"delete":"<table>","key":{...}}    takes the row of that key out, if there is one
//    {"load":{...}}                      replaces the whole state by that of a state file
//
// Throws StateError, whose text begins with the path of the member that is wrong.
Change readChange(Line const& line);

} // namespace Host
