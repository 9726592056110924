#include "tests/properties/Lines.h"

#include <algorithm>

namespace Tests {

namespace {

// The element of a list that is the only one; none when the list is empty.
Json const* onlyElement(Block const& block, std::string_view name) {
   if (!block.has(name) || block.list(name).elements.empty())
      return nullptr;
   return &block.list(name).elements.front();
}

// The line of a path or a tree whose specification isn't there.
void readNotConfigured(TextReader& reader) {
   if (reader.skip("not specified\n"))
      return;
   if (reader.until(" (not configured)\n").size() > 100)
      reader.fail("no such path");
}

std::string stateWords(Block const& block) {
   if (block.text("state") == "coldStandby")
      return "cold standby";
   return block.text("state") + (block.flag("inUse") ? ", in use" : "") +
          (block.flag("mbb") ? ", re-establishing" : "");
}

std::string lspStateWords(Block const& block) {
   return otherWord(block, "state") + (block.flag("inUse") ? ", in use" : "");
}

std::string pathMtuWords(Block const& block) {
   bool const both = block.has("pathMtu") && block.has("intfMtu");
   bool const differ = both && block.number("pathMtu") != block.number("intfMtu");
   return (block.has("pathMtu") ? block.digits("pathMtu") + " bytes" : "-") +
          (differ ? " (not matching interface MTU)" : "");
}

std::string intfMtuWords(Block const& block) {
   return block.has("intfMtu") ? block.digits("intfMtu") + " bytes" : "?";
}

std::string treeMtuWords(Block const& block) {
   return block.digits("pathMtu") + " bytes";
}

// The last of the members of that name whose name stands next with a colon behind it.
Json const* readInterface(TextReader& reader, Json const& mtus) {
   std::string const* name = nullptr;
   for (auto const& [intf, mtu] : mtus.members)
      if (reader.rest().starts_with(intf + ": ") && (name == nullptr || intf.size() > name->size()))
         name = &intf;
   if (name == nullptr) {
      reader.until(": ");
      return nullptr;
   }
   reader.expect(*name + ": ");
   Json const* last = nullptr;
   for (auto const& [intf, mtu] : mtus.members) {
      mtu.shown = mtu.shown || intf == *name;
      last = intf == *name ? &mtu : last;
   }
   return last;
}

// The text has every interface once, with the MTU of its last next hop; JSON has one member for each next hop whose
// interface has a name and an MTU.
void readIntfMtus(TextReader& reader, Block const& block, Pass&) {
   Json const& mtus = block.object("intfMtus");
   while (reader.skip("         ")) {
      bool const nameless = reader.rest().starts_with(": ");
      Json const* const mtu = readInterface(reader, mtus);
      if (reader.skip("-\n"))
         continue;
      std::string const bytes = mtu != nullptr ? std::to_string(mtu->whole) : std::string(reader.until(" "));
      if (mtu == nullptr && !nameless)
         reader.fail("no such interface MTU");
      reader.expect(mtu != nullptr ? bytes + " bytes" : "bytes");
      bool const differ = block.has("pathMtu") && block.digits("pathMtu") != bytes;
      reader.expect(differ ? " (not matching path MTU)\n" : "\n");
   }
}

std::string pathIdWords(Block const& block) {
   return block.digits("cspfPathKeyId");
}

std::string treeIdWords(Block const& block) {
   return block.digits("cspfTreeId");
}

// The text has the words of an error too, which stand in front of its numbers.
void readErrors(TextReader& reader, Json const& errors) {
   if (errors.elements.empty())
      reader.fail("no errors");
   for (Json const& element : errors.elements) {
      Block const error(element);
      reader.expect("         ");
      std::string const numbers = " (" + error.digits("code") + '/' + error.digits("value") + ')';
      if (reader.until(numbers + " from " + error.text("node") + '\n').find('\n') != std::string_view::npos)
         reader.fail("the error" + numbers);
   }
}

void readPathErrors(TextReader& reader, Block const& block, Pass&) {
   readErrors(reader, block.list("pathErrors"));
}

void readTreeErrors(TextReader& reader, Block const& block, Pass&) {
   readErrors(reader, block.list("treeErrors"));
}

void readLspErrors(TextReader& reader, Block const& block, Pass&) {
   readErrors(reader, block.list("lspErrors"));
}

std::string hopLines(Block const& block, std::string_view typeMember) {
   std::string words = block.text(typeMember) + "):";
   for (Json const& hop : block.list("hops").elements)
      words += "\n         " + shownText(hop);
   return words;
}

std::string pathHopWords(Block const& block) {
   return hopLines(block, "specType");
}

std::string lspHopWords(Block const& block) {
   return hopLines(block, "pathSpecType");
}

std::string typeWords(Block const& block) {
   return block.text("specType") + "):";
}

// That a leaf is on its way out stands in the text alone.
void readLeaf(TextReader& reader, std::string const& address, Block const& leaf, bool detailed) {
   reader.expect("         " + address + ' ' + leaf.text("state"));
   bool const hasHops = leaf.has("hops");
   bool const removing = !hasHops && reader.skip(", removing");
   reader.expect(!hasHops && !removing && !detailed ? ", path not found\n" : "\n");
   if (!detailed)
      return;
   if (hasHops)
      readHopRows(reader, leaf.list("hops"), "            Path: ", "                  ");
   else
      reader.expect("            Path: Path not found\n");
}

void readLeaves(TextReader& reader, Block const& block, bool detailed) {
   for (auto const& [address, leaf] : block.object("treeLeaves").members)
      readLeaf(reader, address, Block(leaf), detailed);
}

void readTreeLeaves(TextReader& reader, Block const& block, Pass& pass) {
   readLeaves(reader, block, pass.showsDetails());
}

void readLspLeaves(TextReader& reader, Block const& block, Pass&) {
   readLeaves(reader, block, true);
}

std::string pathSpecWords(Block const& block) {
   std::string const type = block.has("pathType") ? ", " + block.text("pathType") : "";
   return block.text("pathSpecName") + type;
}

std::string lspBandwidthWords(Block const& block) {
   return bandwidthWords(block.number("bandwidth"));
}

constexpr Line pathRows[] = {
      {"      State: ", stateWords},
      {"      Path MTU: ", pathMtuWords},
      {"      Interface MTU: ", intfMtuWords},
      {"      CSPF Path ID: ", pathIdWords},
      {"      Errors:\n", nullptr, readPathErrors},
      {"      Path (", pathHopWords},
};

constexpr Line treeRows[] = {
      {"      State: ", stateWords},
      {"      Path MTU: ", treeMtuWords},
      {"      Interface MTU:\n", nullptr, readIntfMtus},
      {"      CSPF Tree ID: ", treeIdWords},
      {"      Errors:\n", nullptr, readTreeErrors},
      {"      Leaves (", typeWords, readTreeLeaves},
};

constexpr Line lspRows[] = {
      {"      Path specification: ", pathSpecWords},
      {"      CSPF Path ID: ", pathIdWords},
      {"      CSPF Tree ID: ", treeIdWords},
      {"      Bandwidth: ", lspBandwidthWords},
      {"      State: ", lspStateWords},
      {"      Errors:\n", nullptr, readLspErrors},
      {"      Path (", lspHopWords},
      {"      Leaves (", typeWords, readLspLeaves},
};

} // namespace

LineTable const pathLines = {"path", pathRows};
LineTable const treeLines = {"tree", treeRows};
LineTable const lspLines = {"LSP", lspRows};

void readPath(TextReader& reader, Block const& block, Pass& pass, bool primary) {
   Json const* path = nullptr;
   if (!primary)
      path = onlyElement(block, "secondaryPaths");
   else if (block.has("primaryPath"))
      path = &block.object("primaryPath");
   // The views that have no path blocks have the line of a missing specification nonetheless.
   if (path == nullptr)
      return readNotConfigured(reader);
   reader.expect(Block(*path).text("specName") + '\n');
   readLines(reader, Block(*path), pathLines, pass);
}

void readTree(TextReader& reader, Block const& block, Pass& pass) {
   if (!block.has("primaryTree"))
      return readNotConfigured(reader);
   reader.expect(block.block("primaryTree").text("specName") + '\n');
   readLines(reader, block.block("primaryTree"), treeLines, pass);
}

void readLsp(TextReader& reader, Block const& block, Pass& pass) {
   Json const& lsps = block.list(block.has("lsps") ? "lsps" : "p2mpLsps");
   if (pass.nextLsp == lsps.elements.size())
      reader.fail("no more LSPs");
   Block const lsp(lsps.elements[pass.nextLsp++]);
   // JSON has 0 for an LSP without an id.
   if (lsp.number("lspId") == 0)
      reader.expectAny({"?:\n", "0:\n"});
   else
      reader.expect(lsp.digits("lspId") + ":\n");
   readLines(reader, lsp, lspLines, pass);
}

} // namespace Tests
