#pragma once

#include "host/state/RouterState.h"

#include <cstdint>
#include <string>

namespace Host {

// What a state holds, in numbers. A missing table counts as an empty one.
struct StateSummary {
   std::uint64_t p2pTunnels = 0; // configured ones
   std::uint64_t p2mpTunnels = 0;
   std::uint64_t up = 0; // of the configured tunnels, by their status
   std::uint64_t down = 0;
   std::uint64_t otherwise = 0; // of unknown state, or without a status
   std::uint64_t subTunnels = 0;
   std::uint64_t lspGroups = 0;
   std::uint64_t lsps = 0;   // LSP requests that have a status
   std::uint64_t events = 0; // of all logs
};

StateSummary summarize(RouterState const& state);

// One line without a line feed:
//
//    13 tunnels (11 P2P, 2 P2MP; 10 up, 2 down, 1 other), 15 sub-tunnels, 20 LSP groups, 22 LSPs, 310 events,
//    taken at 2024-11-14 09:26:40 UTC
//
// The last part is there when the state tells its moment and it is a time that a calendar has.
std::string summaryText(RouterState const& state);

} // namespace Host
