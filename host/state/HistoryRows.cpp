#include "host/state/HistoryEvent.h"
#include "host/state/Rows.h"

// The logs of tunnels and sub-tunnels:
//
//    {"tunnelIndex": 7, "lastEntryIndex": 1,
//     "entries": [{"entryIndex": 0, "timestamp": 1699999990.25, "event": {"kind": "creation"}}]}

namespace Host {

using namespace Rsvp;

namespace {

using Log = RsvpLerTunnelHistoryEntryColl;
using LogHandle = Brindle::Ptr<Log>;

// An entry without the index of its log. A slot past the end of the ring is kept, and nobody reads it.
constexpr Member<RsvpLerTunnelHistoryEntry> entryMembers[] = {
      field<&RsvpLerTunnelHistoryEntry::timestamp>("timestamp"),
      field<&RsvpLerTunnelHistoryEntry::data>("event"),
      field<&RsvpLerTunnelHistoryEntry::hops>("hops"),
};

RsvpLerTunnelHistoryEntry readEntry(JsonReader& in, JsonValue& value, std::uint32_t tunnelIndex) {
   RsvpLerTunnelHistoryEntry entry;
   decodeRow<std::uint32_t, RsvpLerTunnelHistoryEntry>(in, value, {"entryIndex", entryMembers}, entry.key.entryIndex,
                                                       entry);
   entry.key.tunnelIndex = tunnelIndex;
   return entry;
}

// A log in the making. Without entries, or with null, it is as if there were no log.
struct LogRow {
   std::uint32_t tunnelIndex = 0;
   std::uint32_t lastEntryIndex = 0;
   LogHandle log;
};

void readEntries(JsonReader& in, JsonValue& value, LogRow& row) {
   if (in.isNull(value))
      return;
   row.log = Brindle::makeNode<Log>();
   in.forEachElement(value, [&](JsonValue& element) {
      RsvpLerTunnelHistoryEntry entry = readEntry(in, element, row.tunnelIndex);
      RsvpLerTunnelHistoryKey const key = entry.key;
      if (!row.log->entries.set(key, std::move(entry)))
         failRepeatedKey(in, element);
   });
}

constexpr Member<LogRow> logMembers[] = {
      field<&LogRow::tunnelIndex>("tunnelIndex"),
      field<&LogRow::lastEntryIndex>("lastEntryIndex"),
      {"entries", readEntries},
};

// The entries are keyed by the index of their log, which may stand behind them.
template<class Table>
RowOf<Table> readLogRow(JsonReader& in, JsonValue& value) {
   LogRow row;
   MemberTracker tracker(std::size(logMembers));
   auto const nameOf = [](std::size_t index) { return logMembers[index].name; };
   auto const lookAtIndex = [&](JsonValue& member) {
      logMembers[0].decode(in, member, row);
      tracker.take(0);
   };
   in.forEachMemberKnowing("tunnelIndex", value, lookAtIndex, [&](JsonName name, JsonValue& member) {
      logMembers[tracker.enter(in, name, nameOf)].decode(in, member, row);
   });
   if (!tracker.has(0))
      in.failMissing(value, "tunnelIndex");
   if (row.log)
      row.log->lastEntryIndex = row.lastEntryIndex;
   return {row.tunnelIndex, std::move(row.log)};
}

} // namespace

template<>
RowOf<RsvpLerTunnelHistory> readRow<RsvpLerTunnelHistory>(JsonReader& in, JsonValue& value) {
   return readLogRow<RsvpLerTunnelHistory>(in, value);
}

template<>
RowOf<RsvpLerSubTunnelHistory> readRow<RsvpLerSubTunnelHistory>(JsonReader& in, JsonValue& value) {
   return readLogRow<RsvpLerSubTunnelHistory>(in, value);
}

} // namespace Host
