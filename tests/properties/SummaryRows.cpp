#include "tests/properties/SummaryRows.h"

#include <algorithm>

namespace Tests {

namespace {

std::string optionalDigits(Row const& row, std::string_view member, char const* missing) {
   return row.block.has(member) ? row.block.digits(member) : missing;
}

std::string nameCell(Row const& row) {
   return std::string(row.name);
}
std::string destinationCell(Row const& row) {
   return row.block.text("destination");
}
std::string colorCell(Row const& row) {
   return optionalDigits(row, "color", "-");
}
// An index of 0 counts as none.
std::string indexCell(Row const& row) {
   std::string const index = optionalDigits(row, "tunnelIndex", "-");
   return index == "0" ? "-" : index;
}
std::string activePathCell(Row const& row) {
   return row.block.text("activePathType");
}
std::string bandwidthCell(Row const& row) {
   return bandwidthWords(row.block.number("currentBandwidth"), row.twoDecimals);
}
std::string lspCountCell(Row const& row) {
   return row.block.digits("lspCount");
}
std::string stateCell(Row const& row) {
   return row.block.text("state") + (row.block.flag("mbb") ? " (MBB)" : "");
}
std::string p2mpIdCell(Row const& row) {
   return optionalDigits(row, "p2mpId", "?");
}
std::string sessionCell(Row const& row) {
   return optionalDigits(row, "sessionId", "-");
}
std::string sampleCell(Row const& row) {
   bool const sampled = row.block.has("lastSampledBandwidth");
   return sampled ? bandwidthWords(row.block.number("lastSampledBandwidth")) : "-";
}

constexpr Column p2pTable[] = {
      {"Tunnel Name", true, nameCell},       {"Destination", true, destinationCell},
      {"Color", false, colorCell},           {"Index", false, indexCell},
      {"Active Path", true, activePathCell}, {"Reserved BW", false, bandwidthCell},
      {"LSPs", false, lspCountCell},         {"State", true, stateCell},
};

constexpr Column p2mpTable[] = {
      {"Tunnel Name", true, nameCell}, {"P2MP ID", false, p2mpIdCell},
      {"Index", false, indexCell},     {"Reserved BW", false, bandwidthCell},
      {"LSPs", false, lspCountCell},   {"State", true, stateCell},
      {"Leaves", true, nullptr},
};

constexpr Column subTunnelTable[] = {
      {"Sub Tunnel", false, nameCell},       {"Session ID", false, sessionCell},
      {"Index", false, indexCell},           {"Active Path", true, activePathCell},
      {"Reserved BW", false, bandwidthCell}, {"Sampled BW", false, sampleCell},
      {"LSPs", false, lspCountCell},         {"State", true, stateCell},
};

std::string padded(std::string const& text, Column const& column, std::size_t width) {
   std::string const blanks(width > text.size() ? width - text.size() : 0, ' ');
   return column.left ? text + blanks : blanks + text;
}

std::size_t readDigits(TextReader& reader) {
   std::size_t const count = std::min(reader.rest().find_first_not_of("0123456789"), reader.rest().size());
   if (count == 0)
      reader.fail("a number");
   std::size_t const number = std::stoul(std::string(reader.rest().substr(0, count)));
   reader.skip(reader.rest().substr(0, count));
   return number;
}

// "5/8 up"
void readLeafCounts(TextReader& reader) {
   std::size_t const up = readDigits(reader);
   reader.expect("/");
   if (up > readDigits(reader))
      reader.fail("no more leaves up than there are");
   reader.expect(" up");
}

void readCell(TextReader& reader, Column const& column, std::size_t width, bool measured, Row const& row) {
   std::string const cell = column.cell(row);
   if (column.cell == nameCell && cell.size() > width)
      return reader.expect(cell.substr(0, width - 3) + "... ");
   if (measured && cell.size() > width)
      reader.fail("a column of " + std::to_string(width) + " for " + cell);
   reader.expect(padded(cell, column, width) + ' ');
}

} // namespace

Columns const p2pColumns = p2pTable;
Columns const p2mpColumns = p2mpTable;
Columns const subTunnelColumns = subTunnelTable;

Table tableWithoutHeading(Columns columns) {
   Table table{columns, {}, false};
   for (Column const& column : columns)
      table.widths.push_back(column.title.size());
   return table;
}

Table readHeading(TextReader& reader, Columns columns) {
   Table table{columns, {}, true};
   std::string_view const titles = reader.until("\n");
   std::string expected;
   for (Column const& column : columns) {
      bool const last = &column == &columns.back();
      std::size_t const width = std::min(reader.rest().find_first_not_of('-'), reader.rest().size());
      reader.expect(std::string(width, '-') + (last ? '\n' : ' '));
      table.widths.push_back(width);
      std::string const title(column.title);
      expected += last ? title : padded(title, column, width) + ' ';
   }
   if (titles != expected)
      reader.fail("the titles \"" + expected + "\" instead of \"" + std::string(titles) + '"');
   return table;
}

void readRow(TextReader& reader, Table const& table, Row const& row) {
   for (std::size_t i = 0; i + 1 < table.columns.size(); ++i)
      readCell(reader, table.columns[i], table.widths[i], table.measured, row);
   Column const& last = table.columns.back();
   if (last.cell == nullptr)
      readLeafCounts(reader);
   else
      reader.expect(last.cell(row));
   reader.expect("\n");
}

} // namespace Tests
