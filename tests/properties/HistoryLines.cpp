#include "tests/properties/Lines.h"

namespace Tests {

namespace {

// JSON has six digits behind the point, which can lift a moment over the border of a millisecond that the text's stays
// below, or the other way round.
void readTimestamp(TextReader& reader, Block const& entry) {
   double const moment = entry.seconds("timestamp");
   reader.expectAny({timestampWords(moment), timestampWords(moment - 1e-6), timestampWords(moment + 1e-6)});
}

void readLeafChange(TextReader& reader, std::string const& address, Block const& leaf, std::string const& indent) {
   reader.expect(indent + "Leaf " + address + ": " + otherWord(leaf, "changeType") + '\n');
   if (leaf.has("hops"))
      readHopRows(reader, leaf.list("hops"), indent + "   ", indent + "   ");
}

// The sentence of JSON says in one what the text says in two lines.
void readReplyGroup(TextReader& reader, Block const& entry, std::string const& indent) {
   std::string const& event = entry.text("event");
   std::size_t const head = event.find("; ");
   std::size_t const tail = event.find("; ", head + 1);
   std::string const total = event.substr(head + 2, tail == std::string::npos ? tail : tail - head - 2);
   bool const changes = tail == std::string::npos;
   if (!changes && event.substr(tail) != "; no changes")
      reader.fail("a sentence about a tree");
   reader.expect(indent);
   readTimestamp(reader, entry);
   reader.expect(' ' + event.substr(0, head) + '\n');
   reader.expect(indent + "   " + total + (changes ? "; changes:\n" : "; no changes\n"));
   if (changes != entry.has("tree"))
      reader.fail("a tree when there are changes");
   if (changes)
      for (auto const& [address, leaf] : entry.object("tree").members)
         readLeafChange(reader, address, Block(leaf), indent + "   ");
}

void readEvent(TextReader& reader, Block const& entry, std::string const& indent) {
   reader.expect(indent);
   readTimestamp(reader, entry);
   reader.expect(' ' + entry.text("event") + '\n');
   if (!entry.has("hops"))
      return;
   reader.expect(indent + "   Path:\n");
   for (Json const& hop : entry.list("hops").elements)
      reader.expect(indent + "      " + shownText(hop) + '\n');
}

} // namespace

void readHistory(TextReader& reader, Block const& history, std::string const& indent) {
   for (Json const& element : history.list("history").elements) {
      Block const entry(element);
      std::string const& event = entry.text("event");
      // An event of an unknown kind has no line.
      if (event.starts_with("CSPF reply, tree"))
         readReplyGroup(reader, entry, indent);
      else if (!event.empty())
         readEvent(reader, entry, indent);
   }
}

} // namespace Tests
