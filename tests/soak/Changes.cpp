#include "tests/soak/Changes.h"

#include "host/server/FeedLine.h"
#include "host/state/StateText.h"

#include <simdjson.h>

#include <cstdint>
#include <set>

namespace Soak {

namespace {

using simdjson::dom::element;

constexpr char const* roots[] = {"rsvpLerStatus", "rsvpLerFathomStatus"};

// The indices of the logs that belong to the tunnels that don't stay.
std::set<std::uint64_t> logsOf(element state, char const* indexTable, char const* key,
                               bool (*stays)(std::string_view)) {
   std::set<std::uint64_t> logs;
   for (element const row : state["rsvpLerStatus"][indexTable]) {
      if (!stays(row[key]["name"].get_string()))
         logs.insert(row["tunnelIndex"].get_uint64());
   }
   return logs;
}

class Maker {
public:
   Maker(element state, bool (*stays)(std::string_view))
         : stays_(stays), logs_(logsOf(state, "tunnelIndexMap", "tunnelSpecId", stays)),
           subLogs_(logsOf(state, "subTunnelIndexMap", "subTunnelConfigId", stays)) {}

   // `own`: the state is the one whose indices these are.
   void addState(element state, bool own) {
      for (char const* root : roots) {
         for (auto const& table : simdjson::dom::object(state[root])) {
            for (element const row : table.value)
               addRow(table.key, row, own);
         }
      }
   }
   std::vector<std::string> take() { return std::move(lines_); }

private:
   bool isTouched(std::string_view table, element row, bool own) const {
      if (table == "rsvpLerTunnelHistory")
         return logs_.contains(row["tunnelIndex"].get_uint64());
      if (table == "rsvpLerSubTunnelHistory")
         return subLogs_.contains(row["tunnelIndex"].get_uint64());
      // Tunnels share paths, and an index of the other state may be that of a tunnel that stays.
      if (table == "pathSpecConfigColl" || (!own && table.ends_with("IndexMap")))
         return false;
      return !stays_(simdjson::dom::object(row).begin().value()["name"].get_string());
   }
   void addRow(std::string_view table, element row, bool own) {
      if (!isTouched(table, row, own) || (table.ends_with("History") && ++histories_ % 20 != 0))
         return; // a log is as long as many other rows
      std::string const name(table);
      lines_.push_back("{\"set\":\"" + name + "\",\"row\":" + simdjson::to_string(row) + "}\n");
      auto const key = simdjson::dom::object(row).begin();
      if (own)
         lines_.push_back("{\"delete\":\"" + name + "\",\"key\":" + simdjson::to_string(key.value()) + "}\n");
   }

   bool (*stays_)(std::string_view);
   std::set<std::uint64_t> logs_;
   std::set<std::uint64_t> subLogs_;
   std::size_t histories_ = 0;
   std::vector<std::string> lines_;
};

} // namespace

std::vector<std::string> makeChanges(std::string const& state, std::string const& otherState,
                                     bool (*stays)(std::string_view)) {
   simdjson::dom::parser parser;
   simdjson::dom::parser otherParser;
   element const own = parser.parse(simdjson::padded_string(state));
   Maker maker(own, stays);
   maker.addState(own, true);
   maker.addState(otherParser.parse(simdjson::padded_string(otherState)), false);
   return maker.take();
}

Host::Change readLine(std::string const& line) {
   Host::StateText const memory(line);
   return Host::readChange({memory.view(), memory.capacity()});
}

} // namespace Soak
