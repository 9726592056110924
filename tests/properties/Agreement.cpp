#include "tests/properties/Agreement.h"

#include "tests/properties/SummaryRows.h"
#include "tests/properties/Unshown.h"

#include <algorithm>

namespace Tests {

namespace {

constexpr std::uint64_t twoDecimalsAbove = 1000; // bits per second

bool isP2p(Json const& tunnel) {
   return tunnel.find("subTunnels") != nullptr;
}

bool raisesDecimals(Json const& tunnel) {
   return Block(tunnel).number("currentBandwidth") > twoDecimalsAbove;
}

// An LSP view shows every LSP; the others have none.
void readBlockLines(TextReader& reader, Json const& json, LineTable const& table, Pass& pass) {
   pass.nextLsp = 0;
   readLines(reader, Block(json), table, pass);
   Json const* const p2p = json.find("lsps");
   Json const* const lsps = p2p != nullptr ? p2p : json.find("p2mpLsps");
   if (lsps != nullptr && pass.nextLsp != lsps->elements.size())
      reader.fail("another LSP");
}

// The log below the attributes, or the empty line in its place.
void readLog(TextReader& reader, Json const& json, std::string_view member, std::string const& heading,
             std::string const& indent) {
   if (json.find(member) != nullptr) {
      reader.expect(heading);
      readHistory(reader, Block(json).block(member), indent);
   }
   reader.expect("\n");
}

void readTunnel(TextReader& reader, std::string const& name, Json const& tunnel, Pass& pass) {
   reader.expect("Tunnel " + name + '\n');
   readBlockLines(reader, tunnel, tunnelLines, pass);
   if (pass.view.history)
      readLog(reader, tunnel, "tunnelHistory", "   History:\n", "      ");
   if (!isP2p(tunnel))
      return;
   for (auto const& [number, subTunnel] : Block(tunnel).object("subTunnels").members) {
      reader.expect("Sub tunnel " + number + '\n');
      readBlockLines(reader, subTunnel, subTunnelLines, pass);
      if (pass.view.history)
         readLog(reader, subTunnel, "subTunnelHistory", "   History:\n", "      ");
   }
}

void readTunnelHistory(TextReader& reader, std::string const& name, Json const& tunnel) {
   readLog(reader, tunnel, "tunnelHistory", "Tunnel " + name + '\n', "");
   if (isP2p(tunnel))
      for (auto const& [number, subTunnel] : Block(tunnel).object("subTunnels").members)
         readLog(reader, subTunnel, "subTunnelHistory", "Sub tunnel " + number + '\n', "");
}

// A summary has these lines among its rows for a path whose specification isn't there.
void readMissingPaths(TextReader& reader, Json const& json, Pass& pass) {
   Block const block(json);
   if (!block.has("primaryPath") && reader.skip("   Primary path: "))
      readPath(reader, block, pass, true);
   bool const secondary = block.has("secondaryPaths") && !block.list("secondaryPaths").elements.empty();
   if (!secondary && reader.skip("   Secondary path: "))
      readPath(reader, block, pass, false);
}

void readP2pRow(TextReader& reader, Table const& table, Row const& row, Json const& tunnel, Pass& pass) {
   readMissingPaths(reader, tunnel, pass);
   readRow(reader, table, row);
   for (auto const& [number, subTunnel] : row.block.object("subTunnels").members)
      readMissingPaths(reader, subTunnel, pass);
}

void readSummary(TextReader& reader, Json const& tunnels, Pass& pass) {
   bool twoDecimals[] = {false, false}; // in the P2MP and in the P2P table
   for (auto const& [name, tunnel] : tunnels.members)
      twoDecimals[isP2p(tunnel)] = twoDecimals[isP2p(tunnel)] || raisesDecimals(tunnel);
   reader.expect("P2P\n");
   Table table = readHeading(reader, p2pColumns);
   for (auto const& [name, tunnel] : tunnels.members)
      if (isP2p(tunnel))
         readP2pRow(reader, table, {name, Block(tunnel), twoDecimals[true]}, tunnel, pass);
   reader.expect("\nP2MP\n");
   table = readHeading(reader, p2mpColumns);
   for (auto const& [name, tunnel] : tunnels.members)
      if (!isP2p(tunnel))
         readRow(reader, table, {name, Block(tunnel), twoDecimals[false]});
}

// A P2MP tunnel that is split has a row of its own, without a heading.
void readSubTunnelSummary(TextReader& reader, Json const& tunnels, Pass& pass) {
   bool twoDecimals = false; // once a table has such a bandwidth, those after it have the decimals too
   for (auto const& [name, tunnel] : tunnels.members) {
      if (!isP2p(tunnel)) {
         readRow(reader, tableWithoutHeading(p2mpColumns), {name, Block(tunnel), false});
         continue;
      }
      auto const& subTunnels = Block(tunnel).object("subTunnels").members;
      twoDecimals =
            twoDecimals || std::ranges::any_of(subTunnels, [](auto const& one) { return raisesDecimals(one.value); });
      if (subTunnels.empty() && !reader.rest().starts_with("\nTunnel: " + name + "\nSub Tunnel"))
         continue;
      reader.expect("\nTunnel: " + name + '\n');
      Table const table = readHeading(reader, subTunnelColumns);
      for (auto const& [number, subTunnel] : subTunnels) {
         readMissingPaths(reader, subTunnel, pass);
         readRow(reader, table, {number, Block(subTunnel), twoDecimals});
      }
   }
}

} // namespace

void requireAgreement(View const& view, std::string_view text, Json const& document, std::set<Line const*>& seen) {
   TextReader reader(text);
   Pass pass{view, seen};
   Json const& tunnels = Block(document).object("tunnels");
   if (view.summary) {
      view.subTunnel ? readSubTunnelSummary(reader, tunnels, pass) : readSummary(reader, tunnels, pass);
   } else {
      for (auto const& [name, tunnel] : tunnels.members)
         view.history && !view.detail ? readTunnelHistory(reader, name, tunnel)
                                      : readTunnel(reader, name, tunnel, pass);
   }
   reader.expectEnd();
   if (view.detail)
      requireShown(document);
}

} // namespace Tests
