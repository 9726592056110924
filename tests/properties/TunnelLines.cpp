#include "tests/properties/DamagedStates.h"
#include "tests/properties/Lines.h"

#include <cmath>

namespace Tests {

namespace {

template<char const* member>
std::string text(Block const& block) {
   return block.text(member);
}
template<char const* member>
std::string number(Block const& block) {
   return block.digits(member);
}
template<char const* member>
std::string bandwidth(Block const& block) {
   return bandwidthWords(block.number(member));
}
template<char const* member>
std::string word(Block const& block) {
   return otherWord(block, member);
}

constexpr char source[] = "source";
constexpr char destination[] = "destination";
constexpr char configSource[] = "configSource";
constexpr char setupPriority[] = "setupPriority";
constexpr char holdPriority[] = "holdPriority";
constexpr char frrMode[] = "frrMode";
constexpr char sessionId[] = "sessionId";
constexpr char tunnelIndex[] = "tunnelIndex";
constexpr char lspCount[] = "lspCount";
constexpr char activePathType[] = "activePathType";
constexpr char quantum[] = "quantum";
constexpr char subTunnelMinimum[] = "subTunnelMinimum";
constexpr char subTunnelLimit[] = "subTunnelLimit";
constexpr char subTunnelInitial[] = "subTunnelInitial";
constexpr char minBandwidth[] = "minBandwidth";
constexpr char maxBandwidth[] = "maxBandwidth";
constexpr char lastSampledBandwidth[] = "lastSampledBandwidth";
constexpr char currentBandwidth[] = "currentBandwidth";

std::string enabledWords(bool enabled) {
   return enabled ? "enabled" : "disabled";
}

std::string profileWords(Block const& block) {
   return block.text("profile") + otherWord(block, "profileState");
}

std::string endpointWords(Block const& block) {
   std::string words;
   for (Json const& endpoint : block.list("aliasTeps").elements)
      words += "\n      " + shownText(endpoint);
   return words;
}

std::string p2mpIdWords(Block const& block) {
   return block.has("p2mpId") ? block.digits("p2mpId") : "?";
}

std::string colorWords(Block const& block) {
   return (block.has("color") ? block.digits("color") : "-") + ", Metric: " + block.digits("metric") +
          otherWord(block, "metricMode");
}

std::string stateWords(Block const& block) {
   return block.text("state") + (block.flag("mbb") ? ", re-establishing" : "");
}

std::string splitWords(Block const& block) {
   return enabledWords(block.flag("splitTunnel"));
}

void readSplit(TextReader& reader, Block const& block, Pass& pass) {
   Block const params = block.block("splitTunnelParams");
   bool const limits = reader.rest().find("      Minimum bandwidth: ") == 0;
   if (limits != (params.number("quantum") == 0))
      reader.fail("a quantum or limits");
   readLines(reader, params, splitLines, pass);
}

// Without signalling the text shows what is configured, which JSON doesn't have.
void readBandwidth(TextReader& reader, Block const& block, Pass& pass) {
   std::string const mode = std::string(", mode ") + (block.flag("autoBandwidth") ? "auto" : "explicit");
   if (block.flag("signalBandwidth")) {
      std::uint64_t const current = block.number("currentBandwidth");
      std::uint64_t const requested = block.number("requestedBandwidth");
      std::string const change = current == requested ? "" : ", updating to " + bandwidthWords(requested);
      reader.expect(bandwidthWords(current) + change + mode + '\n');
   } else if (reader.until(mode + ", signaling disabled\n").find('\n') != std::string_view::npos) {
      reader.fail("a bandwidth that isn't signalled");
   }
   if (block.has("autoBandwidthParams"))
      readLines(reader, block.block("autoBandwidthParams"), autoBwLines, pass);
}

std::string optimizationWords(Block const& block) {
   std::uint64_t const interval = block.number("optimizationInterval");
   return interval == 0 ? "disabled" : "enabled, interval: " + std::to_string(interval) + " seconds";
}

std::string ldpWords(Block const& block) {
   return enabledWords(block.flag("ldpTunneling")) + (block.flag("ldpTunnelingUcmp") ? ", UCMP enabled" : "");
}

std::string shortcutWords(Block const& block) {
   return enabledWords(block.flag("igpShortcut"));
}

// A duration of any size, cut to whole seconds that 64 bits hold.
std::string periodWords(Block const& block) {
   double const seconds = block.seconds("adjustmentPeriod");
   return std::to_string(seconds > 0 ? static_cast<std::uint64_t>(seconds) : 0) + " seconds";
}

std::string reductionWords(Block const& block) {
   return intervalWords(block.number("reductionDelay"));
}

// JSON has the moment and the text how far away it is, to the nearest second.
void readAdjustment(TextReader& reader, Block const& block, Pass&) {
   if (!block.has("nextAdjustmentTime"))
      return reader.expect("-\n");
   double const distance = std::max(0.0, block.seconds("nextAdjustmentTime") - utcNow);
   reader.expect("in ");
   double const shown = std::stod(std::string(reader.until(" seconds\n")));
   if (std::abs(shown - distance) > 0.5 + distance * 1e-15)
      reader.fail("an adjustment in " + std::to_string(distance) + " seconds");
}

void readPrimaryPath(TextReader& reader, Block const& block, Pass& pass) {
   readPath(reader, block, pass, true);
}

void readSecondaryPath(TextReader& reader, Block const& block, Pass& pass) {
   readPath(reader, block, pass, false);
}

constexpr Line tunnelRows[] = {
      {"   Source address: ", text<source>},
      {"   Destination address: ", text<destination>},
      {"   Config source: ", word<configSource>},
      {"   Profile: ", profileWords},
      {"   Additional endpoints:", endpointWords},
      {"   P2MP ID: ", p2mpIdWords},
      {"   Color: ", colorWords},
      {"   State: ", stateWords},
      {"   Split-tunnel: ", splitWords, readSplit},
      {"   Bandwidth: ", nullptr, readBandwidth},
      {"      Setup priority: ", number<setupPriority>},
      {"      Hold priority: ", number<holdPriority>},
      {"   Fast re-route mode: ", word<frrMode>},
      {"   Periodic optimization: ", optimizationWords},
      {"   Session #", number<sessionId>},
      {"   Tunnel index: ", number<tunnelIndex>},
      {"   LSPs: ", number<lspCount>},
      {"   LSP IDs:", lspIdWords},
      {"   LDP tunneling: ", ldpWords},
      {"   IGP shortcut: ", shortcutWords},
      {"   Active path: ", text<activePathType>},
      {"   Primary path: ", nullptr, readPrimaryPath},
      {"   Secondary path: ", nullptr, readSecondaryPath},
      {"   Active tree: ", nullptr, readTree},
      {"   LSP ", nullptr, readLsp, true},
};

constexpr Line splitRows[] = {
      {"      Quantum: ", bandwidth<quantum>},
      {"      Minimum bandwidth: ", bandwidth<minBandwidth>},
      {"      Maximum bandwidth: ", bandwidth<maxBandwidth>},
      {"      Sub-tunnels minimum: ", number<subTunnelMinimum>},
      {"      Sub-tunnels limit: ", number<subTunnelLimit>},
      {"      Sub-tunnels initial: ", number<subTunnelInitial>},
      {"      Sub-tunnels reduction delay: ", reductionWords},
};

constexpr Line autoBwRows[] = {
      {"      Adjustment period: ", periodWords},
      {"      Next adjustment: ", nullptr, readAdjustment},
      {"      Minimum bandwidth: ", bandwidth<minBandwidth>},
      {"      Maximum bandwidth: ", bandwidth<maxBandwidth>},
      {"      Last sampled bandwidth: ", bandwidth<lastSampledBandwidth>},
};

constexpr Line subTunnelRows[] = {
      {"   Bandwidth: ", bandwidth<currentBandwidth>},
      {"      Next adjustment: ", nullptr, readAdjustment},
      {"      Last sampled bandwidth: ", bandwidth<lastSampledBandwidth>},
      {"   Session #", number<sessionId>},
      {"   Tunnel index: ", number<tunnelIndex>},
      {"   State: ", stateWords},
      {"   LSPs: ", number<lspCount>},
      {"   LSP IDs:", lspIdWords},
      {"   Active path: ", text<activePathType>},
      {"   Primary path: ", nullptr, readPrimaryPath},
      {"   Secondary path: ", nullptr, readSecondaryPath},
      {"   LSP ", nullptr, readLsp, true},
};

} // namespace

LineTable const tunnelLines = {"tunnel", tunnelRows};
LineTable const subTunnelLines = {"sub-tunnel", subTunnelRows};
LineTable const splitLines = {"split", splitRows};
LineTable const autoBwLines = {"auto bandwidth", autoBwRows};

} // namespace Tests
