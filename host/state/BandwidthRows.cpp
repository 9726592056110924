#include "host/state/Rows.h"

// Automatic bandwidth, its schedule and its samples:
//
//    {"tunnelSpecId": {"name": "tun1", "source": "cli"}, "lastSampledBandwidth": 125000,
//     "subTunnelBwSamplingStatus": [
//       {"subTunnelConfigId": {"name": "tun1", "source": "cli", "subTunnelId": 1}, "lastSampledBandwidth": 62500}]}

namespace Host {

using namespace Rsvp;

namespace {

using SubTunnelStats = Vane::FlatMap<RsvpLerSubTunnelConfigId, RsvpLerSubTunnelBwSamplingStats>;
using SubTunnelSamples = Vane::FlatMap<RsvpLerSubTunnelConfigId, RsvpLerSubTunnelBwSamplingStatus>;

constexpr Member<RsvpLerTunnelAutoBwConfig> autoBwConfigMembers[] = {
      field<&RsvpLerTunnelAutoBwConfig::enabled>("enabled"),
      field<&RsvpLerTunnelAutoBwConfig::adjustmentPeriod>("adjustmentPeriod"),
      field<&RsvpLerTunnelAutoBwConfig::minBandwidth>("minBandwidth"),
      field<&RsvpLerTunnelAutoBwConfig::maxBandwidth>("maxBandwidth"),
};

constexpr Member<RsvpLerSubTunnelBwSamplingStats> subTunnelStatsMembers[] = {
      field<&RsvpLerSubTunnelBwSamplingStats::nextAdjustmentTime>("nextAdjustmentTime"),
};

constexpr Member<RsvpLerBwSamplingStats> statsMembers[] = {
      field<&RsvpLerBwSamplingStats::nextAdjustmentTime>("nextAdjustmentTime"),
      field<&RsvpLerBwSamplingStats::subTunnelBwSamplingStats>("subTunnelBwSamplingStats"),
};

constexpr Member<RsvpLerSubTunnelBwSamplingStatus> subTunnelSampleMembers[] = {
      field<&RsvpLerSubTunnelBwSamplingStatus::lastSampledBandwidth>("lastSampledBandwidth"),
};

constexpr Member<RsvpLerBwSamplingStatus> sampleMembers[] = {
      field<&RsvpLerBwSamplingStatus::lastSampledBandwidth>("lastSampledBandwidth"),
      field<&RsvpLerBwSamplingStatus::subTunnelBwSamplingStatus>("subTunnelBwSamplingStatus"),
};

} // namespace

template<>
RowOf<RsvpLerAutoBwConfig> readRow<RsvpLerAutoBwConfig>(JsonReader& in, JsonValue& value) {
   RowOf<RsvpLerAutoBwConfig> row;
   decodeRow<RsvpLerTunnelSpecId, RsvpLerTunnelAutoBwConfig>(in, value, {"tunnelSpecId", autoBwConfigMembers}, row.key,
                                                             row.value);
   row.value.tunnelSpecId = row.key;
   return row;
}

template<>
RowOf<SubTunnelStats> readRow<SubTunnelStats>(JsonReader& in, JsonValue& value) {
   RowOf<SubTunnelStats> row;
   decodeRow<RsvpLerSubTunnelConfigId, RsvpLerSubTunnelBwSamplingStats>(
         in, value, {"subTunnelConfigId", subTunnelStatsMembers}, row.key, row.value);
   return row;
}

template<>
RowOf<RsvpLerAutoBwStats> readRow<RsvpLerAutoBwStats>(JsonReader& in, JsonValue& value) {
   return readRecordRow<RsvpLerAutoBwStats, RsvpLerBwSamplingStats>(in, value, {"tunnelSpecId", statsMembers});
}

template<>
RowOf<SubTunnelSamples> readRow<SubTunnelSamples>(JsonReader& in, JsonValue& value) {
   RowOf<SubTunnelSamples> row;
   decodeRow<RsvpLerSubTunnelConfigId, RsvpLerSubTunnelBwSamplingStatus>(
         in, value, {"subTunnelConfigId", subTunnelSampleMembers}, row.key, row.value);
   return row;
}

template<>
RowOf<RsvpLerBwSamplingStatusColl> readRow<RsvpLerBwSamplingStatusColl>(JsonReader& in, JsonValue& value) {
   return readRecordRow<RsvpLerBwSamplingStatusColl, RsvpLerBwSamplingStatus>(in, value,
                                                                              {"tunnelSpecId", sampleMembers});
}

} // namespace Host
