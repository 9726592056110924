#include "host/state/HistoryEvent.h"

#include "host/state/Schema.h"

#include <string>

namespace Host {

using namespace Rsvp;

namespace {

using EventMember = Member<LerTunnelHistoryData>;

// The member that is read into this field of the event's alternative.
template<auto Field>
struct EventFieldOf;
template<class Alternative, class Type, Type Alternative::*Field>
struct EventFieldOf<Field> {
   static void read(JsonReader& in, JsonValue& value, LerTunnelHistoryData& target) {
      decode(in, value, std::get<Alternative>(target).*Field);
   }
};
template<auto Field>
constexpr EventMember eventField(std::string_view name) {
   return {name, &EventFieldOf<Field>::read};
}

// The path in use is one of two; the groupId of a path computation isn't restricted.
void readPathInUse(JsonReader& in, JsonValue& value, LerTunnelHistoryData& target) {
   std::get<LerTunnelStateHistoryData>(target).groupId = static_cast<std::uint8_t>(in.wholeNumber(value, 1));
}

constexpr EventMember tunnelStateMembers[] = {
      eventField<&LerTunnelStateHistoryData::state>("state"),
      {"groupId", readPathInUse},
      eventField<&LerTunnelStateHistoryData::subTunnelCount>("subTunnelCount"),
      eventField<&LerTunnelStateHistoryData::splitBw>("splitBw"),
};
constexpr EventMember bandwidthMembers[] = {eventField<&LerBandwidthHistoryData::bandwidth>("bandwidth")};
constexpr EventMember bandwidthConfigMembers[] = {
      eventField<&LerBandwidthConfigHistoryData::bandwidth>("bandwidth"),
      eventField<&LerBandwidthConfigHistoryData::autoBw>("autoBw"),
};
constexpr EventMember lspAddMembers[] = {
      eventField<&LerLspAddHistoryData::lspId>("lspId"),
      eventField<&LerLspAddHistoryData::replacedLspId>("replacedLspId"),
};
constexpr EventMember lspDelMembers[] = {eventField<&LerLspDelHistoryData::lspId>("lspId")};
constexpr EventMember lspInUseMembers[] = {
      eventField<&LerLspInUseHistoryData::lspId>("lspId"),
      eventField<&LerLspInUseHistoryData::replacedLspId>("replacedLspId"),
};
constexpr EventMember lspNoLongerInUseMembers[] = {eventField<&LerLspNoLongerInUseHistoryData::lspId>("lspId")};
constexpr EventMember lspStateMembers[] = {
      eventField<&LerLspStateHistoryData::lspId>("lspId"),
      eventField<&LerLspStateHistoryData::state>("state"),
};
constexpr EventMember lspErrorMembers[] = {
      eventField<&LerLspErrorHistoryData::lspId>("lspId"),
      eventField<&LerLspErrorHistoryData::error>("error"),
};
constexpr EventMember cspfQueryMembers[] = {
      eventField<&LerCspfQueryHistoryData::count>("count"),
      eventField<&LerCspfQueryHistoryData::groupId>("groupId"),
};
constexpr EventMember cspfReplyMembers[] = {
      eventField<&LerCspfReplyHistoryData::count>("count"),
      eventField<&LerCspfReplyHistoryData::totalLeaves>("totalLeaves"),
      eventField<&LerCspfReplyHistoryData::groupId>("groupId"),
      eventField<&LerCspfReplyHistoryData::destination>("destination"),
      eventField<&LerCspfReplyHistoryData::changeType>("changeType"),
};
constexpr EventMember destinationAddedMembers[] = {
      eventField<&LerP2mpDestinationAddedHistoryData::destination>("destination"),
};
constexpr EventMember destinationRemovedMembers[] = {
      eventField<&LerP2mpDestinationRemovedHistoryData::destination>("destination"),
};
constexpr EventMember leafStateMembers[] = {
      eventField<&LerP2mpLeafStateHistoryData::destination>("destination"),
      eventField<&LerP2mpLeafStateHistoryData::state>("state"),
};

template<class Alternative>
LerTunnelHistoryData make() {
   return Alternative();
}

struct EventKind {
   std::string_view name;
   LerTunnelHistoryData (*make)();
   Members<LerTunnelHistoryData> members;
};

constexpr EventKind eventKinds[] = {
      {"unknown", make<LerUnknownHistoryData>, {}},
      {"agentRestart", make<LerAgentRestartHistoryData>, {}},
      {"creation", make<LerCreationHistoryData>, {}},
      {"tunnelState", make<LerTunnelStateHistoryData>, tunnelStateMembers},
      {"bandwidth", make<LerBandwidthHistoryData>, bandwidthMembers},
      {"bandwidthConfig", make<LerBandwidthConfigHistoryData>, bandwidthConfigMembers},
      {"lspAdd", make<LerLspAddHistoryData>, lspAddMembers},
      {"lspDel", make<LerLspDelHistoryData>, lspDelMembers},
      {"lspInUse", make<LerLspInUseHistoryData>, lspInUseMembers},
      {"lspNoLongerInUse", make<LerLspNoLongerInUseHistoryData>, lspNoLongerInUseMembers},
      {"lspState", make<LerLspStateHistoryData>, lspStateMembers},
      {"lspError", make<LerLspErrorHistoryData>, lspErrorMembers},
      {"cspfQuery", make<LerCspfQueryHistoryData>, cspfQueryMembers},
      {"cspfReply", make<LerCspfReplyHistoryData>, cspfReplyMembers},
      {"p2mpDestinationAdded", make<LerP2mpDestinationAddedHistoryData>, destinationAddedMembers},
      {"p2mpDestinationRemoved", make<LerP2mpDestinationRemovedHistoryData>, destinationRemovedMembers},
      {"p2mpLeafState", make<LerP2mpLeafStateHistoryData>, leafStateMembers},
};

std::string expectedKinds() {
   std::string expected = "one of the words";
   char const* separator = " ";
   for (EventKind const& kind : eventKinds) {
      expected.append(separator).append(kind.name);
      separator = ", ";
   }
   return expected;
}

EventKind const& readKind(JsonReader& in, JsonValue& value) {
   std::string_view const name = in.text(value);
   for (EventKind const& kind : eventKinds) {
      if (kind.name == name)
         return kind;
   }
   in.fail(value, expectedKinds());
}

} // namespace

void decode(JsonReader& in, JsonValue& value, LerTunnelHistoryData& target) {
   Members<LerTunnelHistoryData> members;
   MemberTracker tracker(1);
   auto const nameOf = [&members](std::size_t index) { return index == 0 ? "kind" : members[index - 1].name; };
   auto const lookAtKind = [&](JsonValue& member) {
      EventKind const& kind = readKind(in, member);
      target = kind.make();
      members = kind.members;
      tracker = MemberTracker(1 + members.size());
      tracker.take(0);
   };
   in.forEachMemberKnowing("kind", value, lookAtKind, [&](JsonName name, JsonValue& member) {
      members[tracker.enter(in, name, nameOf) - 1].decode(in, member, target);
   });
}

} // namespace Host
