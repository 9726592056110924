#include "host/state/StateSummary.h"

#include <ctime>

namespace Host {

using namespace Rsvp;

namespace {

void countTunnels(RouterState const& state, StateSummary& summary) {
   auto const configs = state.rsvpLerFathomStatus ? state.rsvpLerFathomStatus->superTunnelConfigColl.get() : nullptr;
   auto const statuses = state.rsvpLerStatus ? state.rsvpLerStatus->superTunnelStatusColl.get() : nullptr;
   if (!configs)
      return;
   for (auto const& [key, config] : *configs) {
      ++(config->sessionType == RsvpSessionType::p2p ? summary.p2pTunnels : summary.p2mpTunnels);
      auto const status = statuses ? statuses->superTunnelStatus(key) : nullptr;
      RsvpLerTunnelState const tunnelState = status ? status->state : RsvpLerTunnelState::unknown;
      if (tunnelState == RsvpLerTunnelState::up)
         ++summary.up;
      else
         ++(tunnelState == RsvpLerTunnelState::down ? summary.down : summary.otherwise);
   }
}

// The records in all the collections of a table of tables.
template<class Table>
std::uint64_t innerRecords(Brindle::Ptr<Table> const& table) {
   std::uint64_t count = 0;
   if (table)
      table->walk([&count](auto const&, auto const& coll) { count += coll->size(); });
   return count;
}

template<class History>
std::uint64_t events(Brindle::Ptr<History> const& history) {
   std::uint64_t count = 0;
   if (history)
      history->walk([&count](std::uint32_t, auto const& log) { count += log->entries.size(); });
   return count;
}

std::string counted(std::uint64_t count, char const* one, char const* many) {
   return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

// Empty for a time that no calendar has.
std::string calendarText(Brindle::Duration utcTime) {
   double const seconds = utcTime.seconds();
   if (!(seconds > -1e15 && seconds < 1e15))
      return {};
   auto const time = static_cast<std::time_t>(seconds);
   std::tm parts{};
   char text[64];
   if (gmtime_r(&time, &parts) == nullptr)
      return {};
   return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S UTC", &parts)};
}

} // namespace

StateSummary summarize(RouterState const& state) {
   StateSummary summary;
   countTunnels(state, summary);
   if (auto const& root = state.rsvpLerStatus) {
      summary.subTunnels = innerRecords(root->subTunnelStatusCollTable.get());
      summary.lspGroups = innerRecords(root->lspGroupStatusCollTable.get());
      summary.lsps = innerRecords(root->lspRequestStatusCollTable.get());
   }
   if (auto const& root = state.rsvpLerFathomStatus)
      summary.events = events(root->rsvpLerTunnelHistory.get()) + events(root->rsvpLerSubTunnelHistory.get());
   return summary;
}

std::string summaryText(RouterState const& state) {
   StateSummary const summary = summarize(state);
   std::string text = counted(summary.p2pTunnels + summary.p2mpTunnels, "tunnel", "tunnels");
   text += " (" + std::to_string(summary.p2pTunnels) + " P2P, " + std::to_string(summary.p2mpTunnels) + " P2MP; ";
   text += std::to_string(summary.up) + " up, " + std::to_string(summary.down) + " down, ";
   text += std::to_string(summary.otherwise) + " other), ";
   text += counted(summary.subTunnels, "sub-tunnel", "sub-tunnels") + ", ";
   text += counted(summary.lspGroups, "LSP group", "LSP groups") + ", ";
   text += counted(summary.lsps, "LSP", "LSPs") + ", " + counted(summary.events, "event", "events");
   std::string const taken = state.clock ? calendarText(state.clock->utcTime) : std::string();
   return taken.empty() ? text : text + ", taken at " + taken;
}

} // namespace Host
