#pragma once

#include <string>
#include <vector>

// The figures. Each function prepares its material, checks that all sides give the right answer (an exception ends the
// run when one doesn't), measures them and returns its rows of the table.

namespace Bench {

struct Row {
   std::string figure;
   double measured;
   bool atLeast; // whether `wanted` is the least or the most
   double wanted;
   std::string note; // the times or counts behind the ratio
};

using Rows = std::vector<Row>;

Rows jsonWriter();
Rows textRows();
Rows naturalOrder();
Rows oneLookup();
Rows wholeViews();
Rows growth();
Rows allocation();
Rows loading();
Rows underWriter();
Rows longListing();

// Ends the run with a message.
void require(bool condition, std::string const& what);

} // namespace Bench
