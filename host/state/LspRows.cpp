#include "host/state/Rows.h"

// Make-before-break instances, LSP groups, LSP requests and their paths:
//
//    {"lspGroupId": {"name": "tun1", "source": "cli", "subTunnelId": 0, "epoch": 1, "groupId": 0},
//     "lspRequestConfigColl": [
//       {"lspRequestConfigId": {"name": "tun1", "source": "cli", "epoch": 1, "configId": 1},
//        "tree": {"paths": {"10.0.0.9": {"version": 1, "hops": ["10.1.1.2", "10.0.0.9"]}}}}]}

namespace Host {

using namespace Rsvp;

namespace {

constexpr Member<RsvpPathWithVersion> pathMembers[] = {
      field<&RsvpPathWithVersion::version>("version"),
      field<&RsvpPathWithVersion::hops>("hops"),
};

constexpr Member<RsvpLerTree> treeMembers[] = {field<&RsvpLerTree::paths>("paths")};

} // namespace

static void decode(JsonReader& in, JsonValue& value, RsvpPathWithVersion& target) {
   decodeMembers<RsvpPathWithVersion>(in, value, pathMembers, target);
}

static void decode(JsonReader& in, JsonValue& value, RsvpLerTree& target) {
   decodeMembers<RsvpLerTree>(in, value, treeMembers, target);
}

namespace {

using NextHops = Vane::FlatMap<Lattice::IpGenAddr, RsvpNextHopInfo>;

constexpr Member<RsvpLerPathSpecConfig> pathSpecConfigMembers[] = {
      field<&RsvpLerPathSpecConfig::pathSpecType>("pathSpecType"),
};

constexpr Member<RsvpLerMbbTunnelConfig> mbbTunnelConfigMembers[] = {
      field<&RsvpLerMbbTunnelConfig::requestedBandwidth>("requestedBandwidth"),
};

constexpr Member<RsvpLerMbbTunnelStatus> mbbTunnelStatusMembers[] = {
      field<&RsvpLerMbbTunnelStatus::activeLspGroupId>("activeLspGroupId"),
};

constexpr Member<RsvpNextHopInfo> nextHopMembers[] = {
      field<&RsvpNextHopInfo::intfId>("intfId"),
      field<&RsvpNextHopInfo::intfMtu>("intfMtu"),
};

constexpr Member<RsvpLerLspGroupStatus> lspGroupStatusMembers[] = {
      field<&RsvpLerLspGroupStatus::isP2mp>("isP2mp"),
      field<&RsvpLerLspGroupStatus::lspGroupState>("lspGroupState"),
      field<&RsvpLerLspGroupStatus::nextHop>("nextHop"),
      field<&RsvpLerLspGroupStatus::activeLspRequestConfigId>("activeLspRequestConfigId"),
      field<&RsvpLerLspGroupStatus::pendingLspRequestConfigId>("pendingLspRequestConfigId"),
      field<&RsvpLerLspGroupStatus::pathMtu>("pathMtu"),
};

constexpr Member<RsvpLerLspRequestConfig> lspRequestConfigMembers[] = {
      field<&RsvpLerLspRequestConfig::sessionType>("sessionType"),
      field<&RsvpLerLspRequestConfig::bandwidth>("bandwidth"),
      field<&RsvpLerLspRequestConfig::tree>("tree"),
};

constexpr Member<RsvpLerLspRequestStatus> lspRequestStatusMembers[] = {
      field<&RsvpLerLspRequestStatus::lspState>("lspState"),
      field<&RsvpLerLspRequestStatus::lspId>("lspId"),
      field<&RsvpLerLspRequestStatus::errors>("errors"),
      field<&RsvpLerLspRequestStatus::subLspState>("subLspState"),
};

constexpr Member<RsvpLerCspfPathKey> cspfPathKeyMembers[] = {
      field<&RsvpLerCspfPathKey::kind>("kind"),
      field<&RsvpLerCspfPathKey::pathId>("pathId"),
      field<&RsvpLerCspfPathKey::treeId>("treeId"),
};

} // namespace

template<>
RowOf<RsvpLerPathSpecConfigColl> readRow<RsvpLerPathSpecConfigColl>(JsonReader& in, JsonValue& value) {
   return readRecordRow<RsvpLerPathSpecConfigColl, RsvpLerPathSpecConfig>(in, value,
                                                                          {"pathSpecId", pathSpecConfigMembers});
}

template<>
RowOf<RsvpLerMbbTunnelConfigCollForSubTunnel> readRow<RsvpLerMbbTunnelConfigCollForSubTunnel>(JsonReader& in,
                                                                                              JsonValue& value) {
   return readRecordRow<RsvpLerMbbTunnelConfigColl, RsvpLerMbbTunnelConfig, &RsvpLerMbbTunnelConfig::mbbTunnelConfigId>(
         in, value, {"mbbTunnelConfigId", mbbTunnelConfigMembers});
}

template<>
RowOf<RsvpLerMbbTunnelConfigCollTable> readRow<RsvpLerMbbTunnelConfigCollTable>(JsonReader& in, JsonValue& value) {
   return readCollRow<RsvpLerMbbTunnelConfigCollTable>(in, value, "subTunnelConfigId", "mbbTunnelConfigColl");
}

template<>
RowOf<RsvpLerMbbTunnelStatusCollForSubTunnel> readRow<RsvpLerMbbTunnelStatusCollForSubTunnel>(JsonReader& in,
                                                                                              JsonValue& value) {
   return readRecordRow<RsvpLerMbbTunnelStatusColl, RsvpLerMbbTunnelStatus, &RsvpLerMbbTunnelStatus::mbbTunnelConfigId>(
         in, value, {"mbbTunnelConfigId", mbbTunnelStatusMembers});
}

template<>
RowOf<RsvpLerMbbTunnelStatusCollTable> readRow<RsvpLerMbbTunnelStatusCollTable>(JsonReader& in, JsonValue& value) {
   return readCollRow<RsvpLerMbbTunnelStatusCollTable>(in, value, "subTunnelConfigId", "mbbTunnelStatusColl");
}

template<>
RowOf<NextHops> readRow<NextHops>(JsonReader& in, JsonValue& value) {
   RowOf<NextHops> row;
   decodeRow<Lattice::IpGenAddr, RsvpNextHopInfo>(in, value, {"address", nextHopMembers}, row.key, row.value);
   return row;
}

template<>
RowOf<RsvpLerLspGroupStatusCollForTunnel> readRow<RsvpLerLspGroupStatusCollForTunnel>(JsonReader& in,
                                                                                      JsonValue& value) {
   return readRecordRow<RsvpLerLspGroupStatusCollForTunnel, RsvpLerLspGroupStatus, &RsvpLerLspGroupStatus::lspGroupId>(
         in, value, {"lspGroupId", lspGroupStatusMembers});
}

template<>
RowOf<RsvpLerLspGroupStatusCollTable> readRow<RsvpLerLspGroupStatusCollTable>(JsonReader& in, JsonValue& value) {
   return readCollRow<RsvpLerLspGroupStatusCollTable>(in, value, "mbbTunnelConfigId", "lspGroupStatusColl");
}

template<>
RowOf<RsvpLerLspRequestConfigCollForLspGroup> readRow<RsvpLerLspRequestConfigCollForLspGroup>(JsonReader& in,
                                                                                              JsonValue& value) {
   return readRecordRow<RsvpLerLspRequestConfigColl, RsvpLerLspRequestConfig,
                        &RsvpLerLspRequestConfig::lspRequestConfigId>(in, value,
                                                                      {"lspRequestConfigId", lspRequestConfigMembers});
}

template<>
RowOf<RsvpLerLspRequestConfigCollTable> readRow<RsvpLerLspRequestConfigCollTable>(JsonReader& in, JsonValue& value) {
   return readCollRow<RsvpLerLspRequestConfigCollTable>(in, value, "lspGroupId", "lspRequestConfigColl");
}

template<>
RowOf<RsvpLerLspRequestStatusCollForLspGroup> readRow<RsvpLerLspRequestStatusCollForLspGroup>(JsonReader& in,
                                                                                              JsonValue& value) {
   return readRecordRow<RsvpLerLspRequestStatusColl, RsvpLerLspRequestStatus,
                        &RsvpLerLspRequestStatus::lspRequestConfigId>(in, value,
                                                                      {"lspRequestConfigId", lspRequestStatusMembers});
}

template<>
RowOf<RsvpLerLspRequestStatusCollTable> readRow<RsvpLerLspRequestStatusCollTable>(JsonReader& in, JsonValue& value) {
   return readCollRow<RsvpLerLspRequestStatusCollTable>(in, value, "lspGroupId", "lspRequestStatusColl");
}

template<>
RowOf<RsvpLerCspfPathKeyMapping> readRow<RsvpLerCspfPathKeyMapping>(JsonReader& in, JsonValue& value) {
   return readRecordRow<RsvpLerCspfPathKeyMapping, RsvpLerCspfPathKey>(in, value, {"lspGroupId", cspfPathKeyMembers});
}

} // namespace Host
