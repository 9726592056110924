#pragma once

#include "host/synth/Sink.h"
#include "host/synth/SynthTunnel.h"

#include <cstdint>
#include <string_view>

// The rows that one tunnel has in each table.

namespace Host::Synth {

// The moment of the state, and how long the router has been running then.
inline constexpr std::uint64_t utcMilliseconds = 1731576400000;
inline constexpr std::uint64_t uptimeMilliseconds = 3456000000;

struct Table {
   std::string_view name;
   void (*writeRows)(Rows& rows, SynthTunnel const& tunnel);
};

// The explicit path specifications are via-1 to via-200.
inline constexpr std::uint32_t pathSpecCount = 200;
// Writes ,"primaryPathSpecId":{...} and, where the tunnel has a secondary path, ,"secondaryPathSpecId":{...}.
void writePathSpecIds(Sink& sink, SynthTunnel const& tunnel);

// ConfigTables.cpp
void writeSuperTunnelConfig(Rows& rows, SynthTunnel const& tunnel);
void writeTunnelSpec(Rows& rows, SynthTunnel const& tunnel);
void writeAutoBwConfig(Rows& rows, SynthTunnel const& tunnel);
void writeSubTunnelConfigs(Rows& rows, SynthTunnel const& tunnel);

// StatusTables.cpp
void writeAutoBwStats(Rows& rows, SynthTunnel const& tunnel);
void writeBwSamplingStatus(Rows& rows, SynthTunnel const& tunnel);
void writeTunnelIndex(Rows& rows, SynthTunnel const& tunnel);
void writeSubTunnelIndexes(Rows& rows, SynthTunnel const& tunnel);
void writeSuperTunnelStatus(Rows& rows, SynthTunnel const& tunnel);
void writeSubTunnelStatuses(Rows& rows, SynthTunnel const& tunnel);
void writeMbbTunnelConfigs(Rows& rows, SynthTunnel const& tunnel);
void writeMbbTunnelStatuses(Rows& rows, SynthTunnel const& tunnel);
// The member subLspState with its comma; a state word per leaf.
void writeSubLspState(Sink& sink, SynthTunnel const& tunnel);

// LspTables.cpp
void writeLspGroupStatuses(Rows& rows, SynthTunnel const& tunnel);
void writeLspRequestConfigs(Rows& rows, SynthTunnel const& tunnel);
void writeLspRequestStatuses(Rows& rows, SynthTunnel const& tunnel);
void writeCspfPathKeys(Rows& rows, SynthTunnel const& tunnel);

// HistoryTables.cpp
void writeTunnelHistory(Rows& rows, SynthTunnel const& tunnel);
void writeSubTunnelHistories(Rows& rows, SynthTunnel const& tunnel);

// The addresses of a path as a JSON list.
void writeHops(Sink& sink, Path const& path);

} // namespace Host::Synth
