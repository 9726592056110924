#pragma once

#include "tests/support/Router.h"

#include <cstdint>
#include <string>
#include <string_view>

// Entries of logs, and what the history sections write of them.

namespace Tests {

// Wed 2023-04-05 06:07:08.000 UTC, in seconds since the Unix epoch.
inline constexpr double sixSevenEight = 1680674828;

struct EventFields {
   double timestamp = sixSevenEight;
   Rsvp::LerTunnelHistoryData data;
   std::initializer_list<std::string_view> hops = {};
};

inline Rsvp::RsvpLerTunnelHistoryEntry entry(EventFields const& fields, Rsvp::RsvpLerTunnelHistoryKey key = {}) {
   return {key, Brindle::Duration(fields.timestamp), fields.data, hops(fields.hops)};
}

// Stores an entry in a slot of the log.
inline void put(Rsvp::RsvpLerTunnelHistoryEntryColl& log, std::uint32_t index, std::uint32_t slot,
                EventFields const& fields) {
   log.entries.set({index, slot}, entry(fields, {index, slot}));
}

// The reply for one leaf of a tree.
inline Rsvp::LerCspfReplyHistoryData leafReply(std::string_view destination, std::uint8_t changeType,
                                               std::uint16_t totalLeaves = 3, std::uint32_t count = 1) {
   return {count, totalLeaves, 0, address(destination), static_cast<Rsvp::RsvpLerP2mpPathChangeType>(changeType)};
}

inline constexpr auto p2p = Rsvp::RsvpSessionType::p2p;
inline constexpr auto p2mp = Rsvp::RsvpSessionType::p2mp;

// What the object writes of one entry.
inline std::string entryAnswer(std::uint32_t format, Rsvp::RsvpLerTunnelHistoryEntry const& event, bool isSubTunnel,
                               Rsvp::RsvpSessionType sessionType, std::string_view indent = "") {
   auto const command = Router().tunnelCommand();
   return rendered(format, [&](auto* renderer) {
      command->renderTunnelHistoryEntry(renderer, event, isSubTunnel, sessionType, Brindle::String(indent));
   });
}

// What the tunnel "t" shows of its log.
inline std::string tunnelHistory(Router const& router, std::uint32_t format, Rsvp::RsvpSessionType sessionType,
                                 std::string_view heading = "Tunnel t", std::string_view indent = "") {
   auto const command = router.tunnelCommand();
   return rendered(format, [&](auto* renderer) {
      command->renderTunnelHistory(renderer, tunnelId("t"), command->tunnelIndexMap(), sessionType,
                                   Brindle::String(heading), Brindle::String(indent));
   });
}

// What the sub-tunnel 2 of the tunnel "t" shows of its log.
inline std::string subTunnelHistory(Router const& router, std::uint32_t format,
                                    std::string_view heading = "Sub tunnel 2", std::string_view indent = "") {
   auto const command = router.tunnelCommand();
   return rendered(format, [&](auto* renderer) {
      command->renderSubTunnelHistory(renderer, subTunnelId("t", 2), command->subTunnelIndexMap(),
                                      Brindle::String(heading), Brindle::String(indent));
   });
}

} // namespace Tests
