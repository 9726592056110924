#include "host/state/LoadState.h"

#include "host/state/FeatureRecords.h"
#include "host/state/Rows.h"

// {"clock": {"currentTime": 86400.0, "utcTime": 1700000000.0},
//  "rsvpCliConfig": {...}, "rsvpLerCliConfig": {...}, "rsvpLerConfig": {...}, "tallyFeatureConfigDir": {...},
//  "rsvpLerStatus": {"tunnelIndexMap": [...], ...},
//  "rsvpLerFathomStatus": {"superTunnelConfigColl": [...], ...}}

namespace Host {

using namespace Rsvp;

namespace {

constexpr Member<ClockMoment> clockMembers[] = {
      field<&ClockMoment::currentTime>("currentTime"),
      field<&ClockMoment::utcTime>("utcTime"),
};

void readClock(JsonReader& in, JsonValue& value, RouterState& state) {
   if (!in.isNull(value))
      decodeMembers<ClockMoment>(in, value, clockMembers, state.clock.emplace());
}

constexpr Member<RsvpLerStatehubStatus> statusMembers[] = {
      field<&RsvpLerStatehubStatus::pathSpecConfigColl>("pathSpecConfigColl"),
      field<&RsvpLerStatehubStatus::tunnelSpecColl>("tunnelSpecColl"),
      field<&RsvpLerStatehubStatus::autoBwStats>("autoBwStats"),
      field<&RsvpLerStatehubStatus::bwSamplingStatusColl>("bwSamplingStatusColl"),
      field<&RsvpLerStatehubStatus::tunnelIndexMap>("tunnelIndexMap"),
      field<&RsvpLerStatehubStatus::subTunnelIndexMap>("subTunnelIndexMap"),
      field<&RsvpLerStatehubStatus::superTunnelStatusColl>("superTunnelStatusColl"),
      field<&RsvpLerStatehubStatus::subTunnelConfigCollTable>("subTunnelConfigCollTable"),
      field<&RsvpLerStatehubStatus::subTunnelStatusCollTable>("subTunnelStatusCollTable"),
      field<&RsvpLerStatehubStatus::mbbTunnelConfigCollTable>("mbbTunnelConfigCollTable"),
      field<&RsvpLerStatehubStatus::mbbTunnelStatusCollTable>("mbbTunnelStatusCollTable"),
      field<&RsvpLerStatehubStatus::lspGroupStatusCollTable>("lspGroupStatusCollTable"),
      field<&RsvpLerStatehubStatus::lspRequestConfigCollTable>("lspRequestConfigCollTable"),
      field<&RsvpLerStatehubStatus::lspRequestStatusCollTable>("lspRequestStatusCollTable"),
      field<&RsvpLerStatehubStatus::cspfPathKeyMapping>("cspfPathKeyMapping"),
};

constexpr Member<RsvpLerFathomStatus> fathomStatusMembers[] = {
      field<&RsvpLerFathomStatus::superTunnelConfigColl>("superTunnelConfigColl"),
      field<&RsvpLerFathomStatus::autoBwConfig>("autoBwConfig"),
      field<&RsvpLerFathomStatus::rsvpLerTunnelHistory>("rsvpLerTunnelHistory"),
      field<&RsvpLerFathomStatus::rsvpLerSubTunnelHistory>("rsvpLerSubTunnelHistory"),
};

void readStatus(JsonReader& in, JsonValue& value, RouterState& state) {
   if (in.isNull(value))
      return;
   state.rsvpLerStatus = Brindle::makeNode<RsvpLerStatehubStatus>();
   decodeMembers<RsvpLerStatehubStatus>(in, value, statusMembers, *state.rsvpLerStatus);
}

void readFathomStatus(JsonReader& in, JsonValue& value, RouterState& state) {
   if (in.isNull(value))
      return;
   state.rsvpLerFathomStatus = Brindle::makeNode<RsvpLerFathomStatus>();
   decodeMembers<RsvpLerFathomStatus>(in, value, fathomStatusMembers, *state.rsvpLerFathomStatus);
}

constexpr Member<RouterState> documentMembers[] = {
      {"clock", readClock},
      field<&RouterState::rsvpCliConfig>("rsvpCliConfig"),
      field<&RouterState::rsvpLerCliConfig>("rsvpLerCliConfig"),
      field<&RouterState::rsvpLerConfig>("rsvpLerConfig"),
      field<&RouterState::tallyFeatureConfigDir>("tallyFeatureConfigDir"),
      {"rsvpLerStatus", readStatus},
      {"rsvpLerFathomStatus", readFathomStatus},
};

// The show commands take these three for granted.
void addMissing(RouterState& state) {
   if (!state.tallyFeatureConfigDir)
      state.tallyFeatureConfigDir = Brindle::makeNode<Ambit::Tally::FeatureConfigDir>();
   if (!state.rsvpLerFathomStatus)
      return;
   if (!state.rsvpLerFathomStatus->rsvpLerTunnelHistory.get())
      state.rsvpLerFathomStatus->rsvpLerTunnelHistory.set(Brindle::makeNode<RsvpLerTunnelHistory>());
   if (!state.rsvpLerFathomStatus->rsvpLerSubTunnelHistory.get())
      state.rsvpLerFathomStatus->rsvpLerSubTunnelHistory.set(Brindle::makeNode<RsvpLerSubTunnelHistory>());
}

// `walk` calls the body it is given for each member of the state.
template<class Walk>
RouterState readMembers(JsonReader& in, Walk const& walk) {
   RouterState state;
   MemberTracker tracker(std::size(documentMembers));
   auto const nameOf = [](std::size_t index) { return documentMembers[index].name; };
   walk([&](JsonName member, JsonValue& value) {
      documentMembers[tracker.enter(in, member, nameOf)].decode(in, value, state);
   });
   addMissing(state);
   return state;
}

} // namespace

RouterState loadState(std::string_view name, StateText const& text) {
   JsonReader in(name, simdjson::padded_string_view(text.view(), text.capacity()));
   return readMembers(in, [&in](auto&& body) { in.forEachDocumentMember(body); });
}

RouterState readState(JsonReader& in, JsonValue& value) {
   return readMembers(in, [&in, &value](auto&& body) { in.forEachMember(value, body); });
}

} // namespace Host
