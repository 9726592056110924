#pragma once

#include "host/synth/Tables.h"

#include <cstdint>
#include <string_view>

namespace Host::Synth {

// How long before the moment of the state a log begins, in milliseconds: one hour to 30 days.
constexpr std::uint64_t logAge(std::uint64_t draw) noexcept {
   constexpr std::uint64_t hour = 3600000;
   return hour + draw % (30 * 24 * hour - hour);
}

// One row of a history table, written event by event: the clock moves on between them.
class EventLog {
public:
   // Opens the row. The first event takes `firstSlot` of a ring of 100, or of 1000 for a P2MP tunnel; `start` is its
   // time.
   EventLog(Rows& rows, std::uint32_t index, std::uint32_t firstSlot, std::uint32_t capacity, Milliseconds start);
   EventLog(EventLog const&) = delete;
   EventLog& operator=(EventLog const&) = delete;
   // Closes the row.
   ~EventLog();

   // The time passes, but never to or past the moment of the state.
   void wait(std::uint64_t milliseconds) noexcept;
   // The members of the event: event("\"kind\":\"creation\"").
   template<class... Parts>
   void event(Parts const&... parts) {
      startEvent();
      sink_.put(parts..., "}}");
   }
   // An event with the hops of a path.
   template<class... Parts>
   void eventWithHops(Path const& path, Parts const&... parts) {
      startEvent();
      sink_.put(parts..., "},\"hops\":");
      writeHops(sink_, path);
      sink_.put("}");
   }

   void lspState(std::uint32_t lspId, std::string_view state) {
      event("\"kind\":\"lspState\",\"lspId\":", lspId, ",\"state\":\"", state, "\"");
   }
   void lspError(std::uint32_t lspId, std::uint32_t code, std::uint32_t value, Ipv4 node) {
      event("\"kind\":\"lspError\",\"lspId\":", lspId, ",\"error\":{\"code\":", code, ",\"value\":", value,
            ",\"node\":", node, "}");
   }

   std::uint32_t count() const noexcept { return count_; }

private:
   void startEvent();

   Sink& sink_;
   std::uint32_t firstSlot_;
   std::uint32_t capacity_;
   std::uint32_t count_ = 0;
   std::uint64_t time_; // milliseconds
};

// Writes the log of a P2MP tunnel.
void writeP2mpHistory(Rows& rows, SynthTunnel const& tunnel);

} // namespace Host::Synth
