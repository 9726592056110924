#include "host/synth/StateMembers.h"

#include <limits>

namespace Host::Synth {
namespace {

constexpr std::uint64_t u8 = std::numeric_limits<std::uint8_t>::max();
constexpr std::uint64_t u16 = std::numeric_limits<std::uint16_t>::max();
constexpr std::uint64_t u32 = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint64_t u64 = std::numeric_limits<std::uint64_t>::max();

constexpr Member clock[] = {{"currentTime", Draw::seconds}, {"utcTime", Draw::utcSeconds}};
constexpr Member rsvpCliConfig[] = {{"mtuSignalingEnabled", Draw::flag}};
constexpr Member rsvpLerCliConfig[] = {{"localIntf", Draw::text}};
constexpr Member rsvpLerConfig[] = {
      {"localIntf", Draw::text}, {"localIntfIp", Draw::ipv4Address}, {"optimizationInterval", Draw::number, u32}};
constexpr Member feature[] = {{"47", Draw::number, u32}};
constexpr Member featureConfigDir[] = {{"feature", Draw::object, 0, feature}};

constexpr Member pathSpecConfig[] = {{"pathSpecType", Draw::number, 2}};
constexpr Member tunnelSpec[] = {{"primaryPathSpecId", Draw::pathSpecKey},
                                 {"secondaryPathSpecId", Draw::pathSpecKey},
                                 {"profile", Draw::profileKey}};
constexpr Member subTunnelStats[] = {{"nextAdjustmentTime", Draw::optionalSeconds}};
constexpr Member autoBwStats[] = {{"nextAdjustmentTime", Draw::optionalSeconds},
                                  {"subTunnelBwSamplingStats", Draw::rows, 0, subTunnelStats}};
constexpr Member subTunnelSample[] = {{"lastSampledBandwidth", Draw::number, u64}};
constexpr Member bwSamplingStatus[] = {{"lastSampledBandwidth", Draw::number, u64},
                                       {"subTunnelBwSamplingStatus", Draw::rows, 0, subTunnelSample}};
constexpr Member tunnelIndex[] = {{"tunnelIndex", Draw::number, u32}};
constexpr Member sessionId[] = {{"type", Draw::number, u8},
                                {"address", Draw::address},
                                {"id", Draw::number, u16},
                                {"extendedAddress", Draw::address}};
constexpr Member superTunnelStatus[] = {{"isP2mp", Draw::flag},
                                        {"sessionId", Draw::object, 0, sessionId},
                                        {"state", Draw::number, 2},
                                        {"color", Draw::optionalNumber, u32},
                                        {"currentBandwidth", Draw::number, u64},
                                        {"split", Draw::flag},
                                        {"igpMetric", Draw::number, u32},
                                        {"subLspState", Draw::leafStates, 2}};
constexpr Member subTunnelConfig[] = {{"primaryPathSpecId", Draw::pathSpecKey},
                                      {"secondaryPathSpecId", Draw::pathSpecKey},
                                      {"secondaryPreSignaled", Draw::flag}};
constexpr Member subTunnelConfigs[] = {{"subTunnelConfigColl", Draw::rows, 0, subTunnelConfig}};
constexpr Member subTunnelStatus[] = {{"state", Draw::number, 2},
                                      {"activeMbbTunnelConfigId", Draw::reference},
                                      {"pendingMbbTunnelConfigId", Draw::reference},
                                      {"currentBandwidth", Draw::number, u64},
                                      {"sessionCliId", Draw::number, u32}};
constexpr Member subTunnelStatuses[] = {{"subTunnelStatusColl", Draw::rows, 0, subTunnelStatus}};
constexpr Member mbbTunnelConfig[] = {{"requestedBandwidth", Draw::number, u64}};
constexpr Member mbbTunnelConfigs[] = {{"mbbTunnelConfigColl", Draw::rows, 0, mbbTunnelConfig}};
constexpr Member mbbTunnelStatus[] = {{"activeLspGroupId", Draw::reference}};
constexpr Member mbbTunnelStatuses[] = {{"mbbTunnelStatusColl", Draw::rows, 0, mbbTunnelStatus}};
constexpr Member nextHop[] = {{"intfId", Draw::text}, {"intfMtu", Draw::optionalNumber, u32}};
constexpr Member lspGroupStatus[] = {{"isP2mp", Draw::flag},
                                     {"lspGroupState", Draw::number, 4},
                                     {"nextHop", Draw::rows, 0, nextHop},
                                     {"activeLspRequestConfigId", Draw::reference},
                                     {"pendingLspRequestConfigId", Draw::reference},
                                     {"pathMtu", Draw::optionalNumber, u32}};
constexpr Member lspGroupStatuses[] = {{"lspGroupStatusColl", Draw::rows, 0, lspGroupStatus}};
constexpr Member path[] = {{"version", Draw::number, u32}, {"hops", Draw::hops}};
constexpr Member tree[] = {{"paths", Draw::objectByLeaf, 0, path}};
constexpr Member lspRequestConfig[] = {
      {"sessionType", Draw::number, u8}, {"bandwidth", Draw::number, u64}, {"tree", Draw::object, 0, tree}};
constexpr Member lspRequestConfigs[] = {{"lspRequestConfigColl", Draw::rows, 0, lspRequestConfig}};
constexpr Member lspRequestStatus[] = {{"lspState", Draw::number, 5},
                                       {"lspId", Draw::optionalNumber, u16},
                                       {"errors", Draw::errors},
                                       {"subLspState", Draw::leafStates, 2}};
constexpr Member lspRequestStatuses[] = {{"lspRequestStatusColl", Draw::rows, 0, lspRequestStatus}};
constexpr Member cspfPathKey[] = {
      {"kind", Draw::number, u8}, {"pathId", Draw::number, u32}, {"treeId", Draw::number, u32}};

constexpr Member superTunnelConfig[] = {{"sessionType", Draw::number, u8},
                                        {"source", Draw::address},
                                        {"destination", Draw::addressList},
                                        {"aliasTeps", Draw::addressList},
                                        {"metric", Draw::number, u32},
                                        {"metricFromIgp", Draw::flag},
                                        {"primaryPathSpecId", Draw::pathSpecKey},
                                        {"secondaryPathSpecId", Draw::pathSpecKey},
                                        {"configuredBandwidth", Draw::number, u64},
                                        {"splitBwEnabled", Draw::flag},
                                        {"quantum", Draw::number, u64},
                                        {"minBandwidth", Draw::number, u64},
                                        {"maxBandwidth", Draw::number, u64},
                                        {"reductionDelay", Draw::seconds},
                                        {"subTunnelMinimum", Draw::number, u32},
                                        {"subTunnelLimit", Draw::number, u32},
                                        {"subTunnelInitial", Draw::number, u32},
                                        {"signalBandwidth", Draw::flag},
                                        {"setupPriority", Draw::number, u8},
                                        {"holdPriority", Draw::number, u8},
                                        {"frrMode", Draw::number, 2},
                                        {"ldpTunneling", Draw::flag},
                                        {"ldpTunnelingUcmp", Draw::flag},
                                        {"igpShortcut", Draw::flag},
                                        {"optimizationInterval", Draw::number, u32},
                                        {"profileState", Draw::number, 3}};
constexpr Member autoBwConfig[] = {{"enabled", Draw::flag},
                                   {"adjustmentPeriod", Draw::seconds},
                                   {"minBandwidth", Draw::number, u64},
                                   {"maxBandwidth", Draw::number, u64}};
constexpr Member logEntry[] = {{"timestamp", Draw::utcSeconds}, {"event", Draw::event}, {"hops", Draw::hops}};
constexpr Member log[] = {{"lastEntryIndex", Draw::number, u32}, {"entries", Draw::rows, 0, logEntry}};

constexpr Member status[] = {{"pathSpecConfigColl", Draw::rows, 0, pathSpecConfig},
                             {"tunnelSpecColl", Draw::rows, 0, tunnelSpec},
                             {"autoBwStats", Draw::rows, 0, autoBwStats},
                             {"bwSamplingStatusColl", Draw::rows, 0, bwSamplingStatus},
                             {"tunnelIndexMap", Draw::rows, 0, tunnelIndex},
                             {"subTunnelIndexMap", Draw::rows, 0, tunnelIndex},
                             {"superTunnelStatusColl", Draw::rows, 0, superTunnelStatus},
                             {"subTunnelConfigCollTable", Draw::rows, 0, subTunnelConfigs},
                             {"subTunnelStatusCollTable", Draw::rows, 0, subTunnelStatuses},
                             {"mbbTunnelConfigCollTable", Draw::rows, 0, mbbTunnelConfigs},
                             {"mbbTunnelStatusCollTable", Draw::rows, 0, mbbTunnelStatuses},
                             {"lspGroupStatusCollTable", Draw::rows, 0, lspGroupStatuses},
                             {"lspRequestConfigCollTable", Draw::rows, 0, lspRequestConfigs},
                             {"lspRequestStatusCollTable", Draw::rows, 0, lspRequestStatuses},
                             {"cspfPathKeyMapping", Draw::rows, 0, cspfPathKey}};
constexpr Member fathomStatus[] = {{"superTunnelConfigColl", Draw::rows, 0, superTunnelConfig},
                                   {"autoBwConfig", Draw::rows, 0, autoBwConfig},
                                   {"rsvpLerTunnelHistory", Draw::rows, 0, log},
                                   {"rsvpLerSubTunnelHistory", Draw::rows, 0, log}};
constexpr Member document[] = {{"clock", Draw::object, 0, clock},
                               {"rsvpCliConfig", Draw::object, 0, rsvpCliConfig},
                               {"rsvpLerCliConfig", Draw::object, 0, rsvpLerCliConfig},
                               {"rsvpLerConfig", Draw::object, 0, rsvpLerConfig},
                               {"tallyFeatureConfigDir", Draw::object, 0, featureConfigDir},
                               {"rsvpLerStatus", Draw::object, 0, status},
                               {"rsvpLerFathomStatus", Draw::object, 0, fathomStatus}};

constexpr Member tunnelStateEvent[] = {{"state", Draw::number, 2},
                                       {"groupId", Draw::number, 1},
                                       {"subTunnelCount", Draw::number, u16},
                                       {"splitBw", Draw::flag}};
constexpr Member bandwidthEvent[] = {{"bandwidth", Draw::number, u64}};
constexpr Member bandwidthConfigEvent[] = {{"bandwidth", Draw::number, u64}, {"autoBw", Draw::flag}};
constexpr Member replacingLspEvent[] = {{"lspId", Draw::optionalNumber, u16},
                                        {"replacedLspId", Draw::optionalNumber, u16}};
constexpr Member lspEvent[] = {{"lspId", Draw::optionalNumber, u16}};
constexpr Member lspStateEvent[] = {{"lspId", Draw::optionalNumber, u16}, {"state", Draw::number, 5}};
constexpr Member error[] = {{"code", Draw::number, u32}, {"value", Draw::number, u16}, {"node", Draw::address}};
constexpr Member lspErrorEvent[] = {{"lspId", Draw::optionalNumber, u16}, {"error", Draw::object, 0, error}};
constexpr Member cspfQueryEvent[] = {{"count", Draw::number, u32}, {"groupId", Draw::number, u8}};
constexpr Member cspfReplyEvent[] = {{"count", Draw::number, u32},
                                     {"totalLeaves", Draw::number, u16},
                                     {"groupId", Draw::number, u8},
                                     {"destination", Draw::address},
                                     {"changeType", Draw::number, u8}};
constexpr Member destinationEvent[] = {{"destination", Draw::address}};
constexpr Member leafStateEvent[] = {{"destination", Draw::address}, {"state", Draw::number, 2}};

constexpr EventMembers events[] = {{"unknown", {}},
                                   {"agentRestart", {}},
                                   {"creation", {}},
                                   {"tunnelState", tunnelStateEvent},
                                   {"bandwidth", bandwidthEvent},
                                   {"bandwidthConfig", bandwidthConfigEvent},
                                   {"lspAdd", replacingLspEvent},
                                   {"lspDel", lspEvent},
                                   {"lspInUse", replacingLspEvent},
                                   {"lspNoLongerInUse", lspEvent},
                                   {"lspState", lspStateEvent},
                                   {"lspError", lspErrorEvent},
                                   {"cspfQuery", cspfQueryEvent},
                                   {"cspfReply", cspfReplyEvent},
                                   {"p2mpDestinationAdded", destinationEvent},
                                   {"p2mpDestinationRemoved", destinationEvent},
                                   {"p2mpLeafState", leafStateEvent}};

} // namespace

std::span<Member const> stateMembers() noexcept {
   return document;
}

std::span<EventMembers const> eventMembers() noexcept {
   return events;
}

} // namespace Host::Synth
