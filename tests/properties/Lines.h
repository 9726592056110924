#pragma once

#include "tests/properties/Block.h"
#include "tests/properties/TextReader.h"
#include "tests/properties/Views.h"

#include <set>
#include <span>
#include <string>
#include <string_view>

// The lines that a text view can have, table by table: what stands at their beginning, and how the rest comes out of
// the JSON of the same view.

namespace Tests {

struct Line;

// One view on its way from top to bottom.
struct Pass {
   View const& view;
   std::set<Line const*>& seen; // the lines that occurred
   std::size_t nextLsp = 0;     // of the tunnel or sub-tunnel: the element of its list of LSPs that comes next

   bool showsDetails() const noexcept { return view.detail; }
};

struct Line {
   std::string_view label;
   std::string (*value)(Block const& block); // the rest of the line; none when `rest` reads that too
   void (*rest)(TextReader& reader, Block const& block, Pass& pass) = nullptr; // reads what else the line begins
   bool repeats = false;                                                       // may come again in the same block
};

struct LineTable {
   std::string_view name;
   std::span<Line const> lines;
};
extern LineTable const tunnelLines;    // of a tunnel of either kind
extern LineTable const subTunnelLines; // of a sub-tunnel
extern LineTable const splitLines;     // below "Split-tunnel"
extern LineTable const autoBwLines;    // below "Bandwidth"
extern LineTable const pathLines;      // below "Primary path" and "Secondary path"
extern LineTable const treeLines;      // below "Active tree"
extern LineTable const lspLines;       // below "LSP 3:"

// Reads lines of the table for as long as one comes next, in any order, and each once unless it repeats.
void readLines(TextReader& reader, Block const& block, LineTable const& table, Pass& pass);

// What tables share.
void readPath(TextReader& reader, Block const& block, Pass& pass, bool primary);
void readTree(TextReader& reader, Block const& block, Pass& pass);
void readLsp(TextReader& reader, Block const& block, Pass& pass);
// " ?, 2, 7": those without an id are those of lspCount that lspIds doesn't have.
std::string lspIdWords(Block const& block);
// The list of events behind their heading.
void readHistory(TextReader& reader, Block const& history, std::string const& indent);
// Addresses in columns of sixteen, three to a line.
void readHopRows(TextReader& reader, Json const& hops, std::string const& first, std::string const& next);

} // namespace Tests
