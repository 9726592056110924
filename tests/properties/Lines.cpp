#include "tests/properties/Lines.h"

namespace Tests {

namespace {

// The line with the longest label that comes next.
Line const* lineAt(TextReader const& reader, LineTable const& table) {
   Line const* found = nullptr;
   for (Line const& line : table.lines)
      if (reader.rest().starts_with(line.label) && (found == nullptr || line.label.size() > found->label.size()))
         found = &line;
   return found;
}

} // namespace

void readLines(TextReader& reader, Block const& block, LineTable const& table, Pass& pass) {
   std::set<Line const*> before;
   while (Line const* const line = lineAt(reader, table)) {
      if (!before.insert(line).second && !line->repeats)
         reader.fail("this line once");
      pass.seen.insert(line);
      reader.expect(line->label);
      if (line->value != nullptr)
         reader.expect(line->value(block) + '\n');
      if (line->rest != nullptr)
         line->rest(reader, block, pass);
   }
}

std::string lspIdWords(Block const& block) {
   Json const& ids = block.list("lspIds");
   std::string text;
   for (std::size_t i = ids.elements.size(); i < block.number("lspCount"); ++i)
      text += text.empty() ? " ?" : ", ?";
   for (Json const& id : ids.elements) {
      id.shown = true;
      text += (text.empty() ? " " : ", ") + std::to_string(id.whole);
   }
   return text;
}

void readHopRows(TextReader& reader, Json const& hops, std::string const& first, std::string const& next) {
   std::string text;
   for (std::size_t i = 0; i < hops.elements.size(); ++i) {
      std::string const& hop = shownText(hops.elements[i]);
      bool const rowEnds = i % 3 == 2 || i + 1 == hops.elements.size();
      text += i == 0 ? first : i % 3 == 0 ? next : "";
      text += hop + std::string(hop.size() < 16 ? 16 - hop.size() : 0, ' ') + (rowEnds ? "\n" : "");
   }
   reader.expect(text);
}

} // namespace Tests
