#pragma once

#include "tests/properties/Block.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The three tables of the summary views.

namespace Tests {

// What a row is made from.
struct Row {
   std::string_view name; // of the tunnel, or the number of the sub-tunnel
   Block block;
   bool twoDecimals; // the table holds a reserved bandwidth above 1000 bits per second
};

struct Column {
   std::string_view title;
   bool left;                       // the side at which its texts stand
   std::string (*cell)(Row const&); // none for what JSON doesn't have
};
using Columns = std::span<Column const>;
extern Columns const p2pColumns;
extern Columns const p2mpColumns;
extern Columns const subTunnelColumns;

// A table with the widths of its columns.
struct Table {
   Columns columns;
   std::vector<std::size_t> widths;
   bool measured; // the widths are those of its rows
};
// One without a heading, for rows that nobody has measured: the widths are those of the titles.
Table tableWithoutHeading(Columns columns);
// Reads the titles and the dashes below them, whose lengths are the widths.
Table readHeading(TextReader& reader, Columns columns);
// Reads one row. Where the columns are measured every cell has room, but for the name of a tunnel, which is cut.
void readRow(TextReader& reader, Table const& table, Row const& row);

} // namespace Tests
