#include "host/state/Rows.h"

// Tunnels and sub-tunnels:
//
//    {"tunnelSpecId": {"name": "tun1", "source": "cli"}, "state": "up", "currentBandwidth": 125000, ...}
//    {"tunnelSpecId": {"name": "tun1", "source": "cli"},
//     "subTunnelStatusColl": [{"subTunnelConfigId": {"name": "tun1", "source": "cli", "subTunnelId": 1}, ...}]}

namespace Host {

using namespace Rsvp;

namespace {

constexpr Member<RsvpLerSuperTunnelConfig> superTunnelConfigMembers[] = {
      field<&RsvpLerSuperTunnelConfig::sessionType>("sessionType"),
      field<&RsvpLerSuperTunnelConfig::source>("source"),
      field<&RsvpLerSuperTunnelConfig::destination>("destination"),
      field<&RsvpLerSuperTunnelConfig::aliasTeps>("aliasTeps"),
      field<&RsvpLerSuperTunnelConfig::metric>("metric"),
      field<&RsvpLerSuperTunnelConfig::metricFromIgp>("metricFromIgp"),
      field<&RsvpLerSuperTunnelConfig::primaryPathSpecId>("primaryPathSpecId"),
      field<&RsvpLerSuperTunnelConfig::secondaryPathSpecId>("secondaryPathSpecId"),
      field<&RsvpLerSuperTunnelConfig::configuredBandwidth>("configuredBandwidth"),
      field<&RsvpLerSuperTunnelConfig::splitBwEnabled>("splitBwEnabled"),
      field<&RsvpLerSuperTunnelConfig::quantum>("quantum"),
      field<&RsvpLerSuperTunnelConfig::minBandwidth>("minBandwidth"),
      field<&RsvpLerSuperTunnelConfig::maxBandwidth>("maxBandwidth"),
      field<&RsvpLerSuperTunnelConfig::reductionDelay>("reductionDelay"),
      field<&RsvpLerSuperTunnelConfig::subTunnelMinimum>("subTunnelMinimum"),
      field<&RsvpLerSuperTunnelConfig::subTunnelLimit>("subTunnelLimit"),
      field<&RsvpLerSuperTunnelConfig::subTunnelInitial>("subTunnelInitial"),
      field<&RsvpLerSuperTunnelConfig::signalBandwidth>("signalBandwidth"),
      field<&RsvpLerSuperTunnelConfig::setupPriority>("setupPriority"),
      field<&RsvpLerSuperTunnelConfig::holdPriority>("holdPriority"),
      field<&RsvpLerSuperTunnelConfig::frrMode>("frrMode"),
      field<&RsvpLerSuperTunnelConfig::ldpTunneling>("ldpTunneling"),
      field<&RsvpLerSuperTunnelConfig::ldpTunnelingUcmp>("ldpTunnelingUcmp"),
      field<&RsvpLerSuperTunnelConfig::igpShortcut>("igpShortcut"),
      field<&RsvpLerSuperTunnelConfig::optimizationInterval>("optimizationInterval"),
      field<&RsvpLerSuperTunnelConfig::profileState>("profileState"),
};

constexpr Member<RsvpSessionId> sessionIdMembers[] = {
      field<&RsvpSessionId::type>("type"),
      field<&RsvpSessionId::address>("address"),
      field<&RsvpSessionId::id>("id"),
      field<&RsvpSessionId::extendedAddress>("extendedAddress"),
};

void readSessionId(JsonReader& in, JsonValue& value, RsvpLerSuperTunnelStatus& status) {
   decodeMembers<RsvpSessionId>(in, value, sessionIdMembers, status.sessionId);
}

constexpr Member<RsvpLerSuperTunnelStatus> superTunnelStatusMembers[] = {
      field<&RsvpLerSuperTunnelStatus::isP2mp>("isP2mp"),
      {"sessionId", readSessionId},
      field<&RsvpLerSuperTunnelStatus::state>("state"),
      field<&RsvpLerSuperTunnelStatus::color>("color"),
      field<&RsvpLerSuperTunnelStatus::currentBandwidth>("currentBandwidth"),
      field<&RsvpLerSuperTunnelStatus::split>("split"),
      field<&RsvpLerSuperTunnelStatus::igpMetric>("igpMetric"),
      field<&RsvpLerSuperTunnelStatus::subLspState>("subLspState"),
};

constexpr Member<RsvpLerTunnelSpec> tunnelSpecMembers[] = {
      field<&RsvpLerTunnelSpec::primaryPathSpecId>("primaryPathSpecId"),
      field<&RsvpLerTunnelSpec::secondaryPathSpecId>("secondaryPathSpecId"),
      field<&RsvpLerTunnelSpec::profile>("profile"),
};

constexpr Member<RsvpLerSubTunnelConfig> subTunnelConfigMembers[] = {
      field<&RsvpLerSubTunnelConfig::primaryPathSpecId>("primaryPathSpecId"),
      field<&RsvpLerSubTunnelConfig::secondaryPathSpecId>("secondaryPathSpecId"),
      field<&RsvpLerSubTunnelConfig::secondaryPreSignaled>("secondaryPreSignaled"),
};

constexpr Member<RsvpLerSubTunnelStatus> subTunnelStatusMembers[] = {
      field<&RsvpLerSubTunnelStatus::state>("state"),
      field<&RsvpLerSubTunnelStatus::activeMbbTunnelConfigId>("activeMbbTunnelConfigId"),
      field<&RsvpLerSubTunnelStatus::pendingMbbTunnelConfigId>("pendingMbbTunnelConfigId"),
      field<&RsvpLerSubTunnelStatus::currentBandwidth>("currentBandwidth"),
      field<&RsvpLerSubTunnelStatus::sessionCliId>("sessionCliId"),
};

struct LogIndex {
   std::uint32_t tunnelIndex = 0;
};

constexpr Member<LogIndex> logIndexMembers[] = {field<&LogIndex::tunnelIndex>("tunnelIndex")};

template<class Table>
RowOf<Table> readIndexRow(JsonReader& in, JsonValue& value, std::string_view keyName) {
   RowOf<Table> row;
   LogIndex index;
   decodeRow(in, value, RowSchema<LogIndex>{keyName, logIndexMembers}, row.key, index);
   row.value = index.tunnelIndex;
   return row;
}

} // namespace

template<>
RowOf<RsvpLerSuperTunnelConfigColl> readRow<RsvpLerSuperTunnelConfigColl>(JsonReader& in, JsonValue& value) {
   return readRecordRow<RsvpLerSuperTunnelConfigColl, RsvpLerSuperTunnelConfig,
                        &RsvpLerSuperTunnelConfig::tunnelSpecId>(in, value, {"tunnelSpecId", superTunnelConfigMembers});
}

template<>
RowOf<RsvpLerSuperTunnelStatusColl> readRow<RsvpLerSuperTunnelStatusColl>(JsonReader& in, JsonValue& value) {
   return readRecordRow<RsvpLerSuperTunnelStatusColl, RsvpLerSuperTunnelStatus,
                        &RsvpLerSuperTunnelStatus::tunnelSpecId>(in, value, {"tunnelSpecId", superTunnelStatusMembers});
}

template<>
RowOf<RsvpLerTunnelSpecPtrConstColl> readRow<RsvpLerTunnelSpecPtrConstColl>(JsonReader& in, JsonValue& value) {
   return readRecordRow<RsvpLerTunnelSpecPtrConstColl, RsvpLerTunnelSpec>(in, value,
                                                                          {"tunnelSpecId", tunnelSpecMembers});
}

template<>
RowOf<RsvpLerTunnelIndexMap> readRow<RsvpLerTunnelIndexMap>(JsonReader& in, JsonValue& value) {
   return readIndexRow<RsvpLerTunnelIndexMap>(in, value, "tunnelSpecId");
}

template<>
RowOf<RsvpLerSubTunnelIndexMap> readRow<RsvpLerSubTunnelIndexMap>(JsonReader& in, JsonValue& value) {
   return readIndexRow<RsvpLerSubTunnelIndexMap>(in, value, "subTunnelConfigId");
}

template<>
RowOf<RsvpLerSubTunnelConfigColl> readRow<RsvpLerSubTunnelConfigColl>(JsonReader& in, JsonValue& value) {
   return readRecordRow<RsvpLerSubTunnelConfigColl, RsvpLerSubTunnelConfig, &RsvpLerSubTunnelConfig::subTunnelConfigId>(
         in, value, {"subTunnelConfigId", subTunnelConfigMembers});
}

template<>
RowOf<RsvpLerSubTunnelConfigCollTable> readRow<RsvpLerSubTunnelConfigCollTable>(JsonReader& in, JsonValue& value) {
   return readCollRow<RsvpLerSubTunnelConfigCollTable>(in, value, "tunnelSpecId", "subTunnelConfigColl");
}

template<>
RowOf<RsvpLerSubTunnelStatusColl> readRow<RsvpLerSubTunnelStatusColl>(JsonReader& in, JsonValue& value) {
   return readRecordRow<RsvpLerSubTunnelStatusColl, RsvpLerSubTunnelStatus, &RsvpLerSubTunnelStatus::subTunnelConfigId>(
         in, value, {"subTunnelConfigId", subTunnelStatusMembers});
}

template<>
RowOf<RsvpLerSubTunnelStatusCollTable> readRow<RsvpLerSubTunnelStatusCollTable>(JsonReader& in, JsonValue& value) {
   return readCollRow<RsvpLerSubTunnelStatusCollTable>(in, value, "tunnelSpecId", "subTunnelStatusColl");
}

} // namespace Host
