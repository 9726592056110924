#include "host/synth/Synth.h"

#include "host/synth/Damage.h"
#include "host/synth/Tables.h"

#include <nlohmann/json.hpp>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <string_view>

namespace Host {
namespace {

using namespace Synth;

constexpr std::array statusTables = {
      Table{"tunnelSpecColl", writeTunnelSpec},
      Table{"autoBwStats", writeAutoBwStats},
      Table{"bwSamplingStatusColl", writeBwSamplingStatus},
      Table{"tunnelIndexMap", writeTunnelIndex},
      Table{"subTunnelIndexMap", writeSubTunnelIndexes},
      Table{"superTunnelStatusColl", writeSuperTunnelStatus},
      Table{"subTunnelConfigCollTable", writeSubTunnelConfigs},
      Table{"subTunnelStatusCollTable", writeSubTunnelStatuses},
      Table{"mbbTunnelConfigCollTable", writeMbbTunnelConfigs},
      Table{"mbbTunnelStatusCollTable", writeMbbTunnelStatuses},
      Table{"lspGroupStatusCollTable", writeLspGroupStatuses},
      Table{"lspRequestConfigCollTable", writeLspRequestConfigs},
      Table{"lspRequestStatusCollTable", writeLspRequestStatuses},
      Table{"cspfPathKeyMapping", writeCspfPathKeys},
};

constexpr std::array fathomTables = {
      Table{"superTunnelConfigColl", writeSuperTunnelConfig},
      Table{"autoBwConfig", writeAutoBwConfig},
      Table{"rsvpLerTunnelHistory", writeTunnelHistory},
      Table{"rsvpLerSubTunnelHistory", writeSubTunnelHistories},
};

void writeRouter(Sink& sink, SynthOptions const& options) {
   sink.put("{\n\"clock\":{\"currentTime\":", Milliseconds{uptimeMilliseconds},
            ",\"utcTime\":", Milliseconds{utcMilliseconds}, "},\n\"rsvpCliConfig\":{\"mtuSignalingEnabled\":true},\n");
   sink.put("\"rsvpLerConfig\":{\"localIntf\":\"lo0\",\"localIntfIp\":",
            edgeLoopback(SynthTunnel(options.seed, 0).headEnd),
            ",\"optimizationInterval\":3600},\n\"tallyFeatureConfigDir\":{\"feature\":{\"47\":1}},\n");
}

void writePathSpecs(Sink& sink, SynthOptions const& options) {
   sink.put("\"pathSpecConfigColl\":[");
   if (options.tunnels != 0) {
      sink.put("\n{\"pathSpecId\":{\"name\":\"dynamic\",\"source\":\"default\"},\"pathSpecType\":\"dynamic\"}");
      for (std::uint32_t i = 1; i <= pathSpecCount; i++) {
         sink.put(",\n{\"pathSpecId\":{\"name\":\"via-", i, "\",\"source\":\"cli\"},\"pathSpecType\":\"explicit\"}");
      }
   }
   sink.put("]");
}

void writeTables(Sink& sink, Commas& commas, std::span<Table const> tables, SynthOptions const& options) {
   for (Table const& table : tables) {
      sink.put(commas.next(), "\n\"", table.name, "\":[");
      Rows rows(sink);
      for (std::uint64_t number = 0; number < options.tunnels && !sink.failed(); number++) {
         table.writeRows(rows, SynthTunnel(options.seed, number));
      }
      sink.put("]");
   }
}

int writeWhole(std::FILE* file, SynthOptions const& options) {
   Sink sink(file);
   writeRouter(sink, options);
   Commas status;
   sink.put("\"rsvpLerStatus\":{", status.next(), "\n");
   writePathSpecs(sink, options);
   writeTables(sink, status, statusTables, options);
   Commas fathom;
   sink.put("},\n\"rsvpLerFathomStatus\":{");
   writeTables(sink, fathom, fathomTables, options);
   sink.put("}\n}\n");
   return sink.finish();
}

std::string wholeText(SynthOptions const& options) {
   char* text = nullptr;
   std::size_t size = 0;
   std::FILE* const memory = open_memstream(&text, &size);
   if (memory == nullptr)
      throw std::bad_alloc();
   int const error = writeWhole(memory, options);
   std::fclose(memory);
   std::unique_ptr<char, decltype(&std::free)> const owner(text, &std::free);
   if (error != 0)
      throw std::bad_alloc();
   return std::string(text, size);
}

int writeDamaged(std::FILE* file, SynthOptions const& options) {
   nlohmann::ordered_json state = nlohmann::ordered_json::parse(wholeText(options));
   damage(state, options.damage, options.seed);
   Sink sink(file);
   sink.put(std::string_view(state.dump()), '\n');
   return sink.finish();
}

} // namespace

int writeSynth(std::FILE* file, SynthOptions const& options) {
   if (options.tunnels > maxSynthTunnels) {
      return ERANGE;
   }
   return options.damage > 0 ? writeDamaged(file, options) : writeWhole(file, options);
}

} // namespace Host
