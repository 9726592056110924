#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"

// The two command objects as such: construction, factories and the accessors of their tables.

namespace Rsvp::Cli {

namespace {

// The table in a field of a root, empty when the root is.
template<class Root, class Coll>
Handle<Coll> tableOf(Handle<Root> const& root, Vane::Slot<Coll> Root::*field) {
   return root ? ((*root).*field).get() : nullptr;
}

} // namespace

ShowRsvpLerTunnel::ShowRsvpLerTunnel(Handle<RsvpCliConfig> const& rsvpCliConfig_,
                                     Handle<RsvpLerCliConfig> const& rsvpLerCliConfig_,
                                     Handle<RsvpLerStatehubStatus> const& rsvpLerStatus_,
                                     Handle<RsvpLerFathomStatus> const& rsvpLerFathomStatus_)
      : rsvpCliConfig(rsvpCliConfig_), rsvpLerCliConfig(rsvpLerCliConfig_), rsvpLerStatus(rsvpLerStatus_),
        rsvpLerFathomStatus(rsvpLerFathomStatus_) {
}

Brindle::Ptr<ShowRsvpLerTunnel> ShowRsvpLerTunnel::ShowRsvpLerTunnelIs(
      Handle<RsvpCliConfig> const& cliConfig, Handle<RsvpLerCliConfig> const& lerCliConfig,
      Handle<RsvpLerStatehubStatus> const& lerStatus, Handle<RsvpLerFathomStatus> const& lerFathomStatus) {
   return Brindle::makeNode<ShowRsvpLerTunnel>(cliConfig, lerCliConfig, lerStatus, lerFathomStatus);
}

Brindle::Ptr<ShowRsvpLerTunnel> showRsvpLerTunnelFactory(Handle<RsvpCliConfig> const& rsvpCliConfig,
                                                         Handle<RsvpLerCliConfig> const& rsvpLerCliConfig,
                                                         Handle<RsvpLerStatehubStatus> const& rsvpLerStatus,
                                                         Handle<RsvpLerFathomStatus> const& rsvpLerFathomStatus) {
   return ShowRsvpLerTunnel::ShowRsvpLerTunnelIs(rsvpCliConfig, rsvpLerCliConfig, rsvpLerStatus, rsvpLerFathomStatus);
}

Handle<RsvpLerPathSpecConfigColl> ShowRsvpLerTunnel::pathSpecConfigColl() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::pathSpecConfigColl);
}

Handle<RsvpLerTunnelSpecPtrConstColl> ShowRsvpLerTunnel::tunnelSpecColl() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::tunnelSpecColl);
}

Handle<RsvpLerSuperTunnelConfigColl> ShowRsvpLerTunnel::superTunnelConfigColl() const {
   return tableOf(rsvpLerFathomStatus, &RsvpLerFathomStatus::superTunnelConfigColl);
}

Handle<RsvpLerSuperTunnelStatusColl> ShowRsvpLerTunnel::superTunnelStatusColl() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::superTunnelStatusColl);
}

Handle<RsvpLerSubTunnelConfigCollTable> ShowRsvpLerTunnel::subTunnelConfigCollTable() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::subTunnelConfigCollTable);
}

Handle<RsvpLerSubTunnelStatusCollTable> ShowRsvpLerTunnel::subTunnelStatusCollTable() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::subTunnelStatusCollTable);
}

Handle<RsvpLerMbbTunnelConfigCollTable> ShowRsvpLerTunnel::mbbTunnelConfigCollTable() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::mbbTunnelConfigCollTable);
}

Handle<RsvpLerMbbTunnelStatusCollTable> ShowRsvpLerTunnel::mbbTunnelStatusCollTable() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::mbbTunnelStatusCollTable);
}

Handle<RsvpLerTunnelIndexMap> ShowRsvpLerTunnel::tunnelIndexMap() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::tunnelIndexMap);
}

Handle<RsvpLerSubTunnelIndexMap> ShowRsvpLerTunnel::subTunnelIndexMap() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::subTunnelIndexMap);
}

Handle<RsvpLerLspGroupStatusCollTable> ShowRsvpLerTunnel::lspGroupStatusCollTable() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::lspGroupStatusCollTable);
}

Handle<RsvpLerLspRequestConfigCollTable> ShowRsvpLerTunnel::lspRequestConfigCollTable() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::lspRequestConfigCollTable);
}

Handle<RsvpLerLspRequestStatusCollTable> ShowRsvpLerTunnel::lspRequestStatusCollTable() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::lspRequestStatusCollTable);
}

Handle<RsvpLerBwSamplingStatusColl> ShowRsvpLerTunnel::bwSamplingStatusColl() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::bwSamplingStatusColl);
}

Handle<RsvpLerAutoBwStats> ShowRsvpLerTunnel::autoBwStats() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::autoBwStats);
}

Handle<RsvpLerAutoBwConfig> ShowRsvpLerTunnel::autoBwConfig() const {
   return tableOf(rsvpLerFathomStatus, &RsvpLerFathomStatus::autoBwConfig);
}

Handle<RsvpLerTunnelHistory> ShowRsvpLerTunnel::rsvpLerTunnelHistory() const {
   return tableOf(rsvpLerFathomStatus, &RsvpLerFathomStatus::rsvpLerTunnelHistory);
}

Handle<RsvpLerSubTunnelHistory> ShowRsvpLerTunnel::rsvpLerSubTunnelHistory() const {
   return tableOf(rsvpLerFathomStatus, &RsvpLerFathomStatus::rsvpLerSubTunnelHistory);
}

Handle<RsvpLerCspfPathKeyMapping> ShowRsvpLerTunnel::cspfPathKeyMapping() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::cspfPathKeyMapping);
}

ShowRsvpLer::ShowRsvpLer(Handle<RsvpLerConfig> const& rsvpLerConfig_, Handle<RsvpLerCliConfig> const& rsvpLerCliConfig_,
                         Handle<RsvpLerStatehubStatus> const& rsvpLerStatus_,
                         Handle<RsvpLerFathomStatus> const& rsvpLerFathomStatus_,
                         Handle<Ambit::Tally::FeatureConfigDir> const& tallyFeatureConfigDir_)
      : rsvpLerConfig(rsvpLerConfig_), rsvpLerCliConfig(rsvpLerCliConfig_), rsvpLerStatus(rsvpLerStatus_),
        rsvpLerFathomStatus(rsvpLerFathomStatus_), tallyFeatureConfigDir(tallyFeatureConfigDir_) {
}

Brindle::Ptr<ShowRsvpLer> ShowRsvpLer::ShowRsvpLerIs(Handle<RsvpLerConfig> const& lerConfig,
                                                     Handle<RsvpLerCliConfig> const& lerCliConfig,
                                                     Handle<RsvpLerStatehubStatus> const& lerStatus,
                                                     Handle<RsvpLerFathomStatus> const& lerFathomStatus,
                                                     Handle<Ambit::Tally::FeatureConfigDir> const& featureConfigDir) {
   return Brindle::makeNode<ShowRsvpLer>(lerConfig, lerCliConfig, lerStatus, lerFathomStatus, featureConfigDir);
}

Brindle::Ptr<ShowRsvpLer> showRsvpLerFactory(Handle<RsvpLerConfig> const& rsvpLerConfig,
                                             Handle<RsvpLerCliConfig> const& rsvpLerCliConfig,
                                             Handle<RsvpLerStatehubStatus> const& rsvpLerStatus,
                                             Handle<RsvpLerFathomStatus> const& rsvpLerFathomStatus,
                                             Handle<Ambit::Tally::FeatureConfigDir> const& tallyFeatureConfigDir) {
   return ShowRsvpLer::ShowRsvpLerIs(rsvpLerConfig, rsvpLerCliConfig, rsvpLerStatus, rsvpLerFathomStatus,
                                     tallyFeatureConfigDir);
}

Handle<RsvpLerSuperTunnelConfigColl> ShowRsvpLer::superTunnelConfigColl() const {
   return tableOf(rsvpLerFathomStatus, &RsvpLerFathomStatus::superTunnelConfigColl);
}

Handle<RsvpLerSuperTunnelStatusColl> ShowRsvpLer::superTunnelStatusColl() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::superTunnelStatusColl);
}

Handle<RsvpLerSubTunnelConfigCollTable> ShowRsvpLer::subTunnelConfigCollTable() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::subTunnelConfigCollTable);
}

Handle<RsvpLerSubTunnelStatusCollTable> ShowRsvpLer::subTunnelStatusCollTable() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::subTunnelStatusCollTable);
}

Handle<RsvpLerMbbTunnelStatusCollTable> ShowRsvpLer::mbbTunnelStatusCollTable() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::mbbTunnelStatusCollTable);
}

Handle<RsvpLerLspGroupStatusCollTable> ShowRsvpLer::lspGroupStatusCollTable() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::lspGroupStatusCollTable);
}

Handle<RsvpLerLspRequestStatusCollTable> ShowRsvpLer::lspRequestStatusCollTable() const {
   return tableOf(rsvpLerStatus, &RsvpLerStatehubStatus::lspRequestStatusCollTable);
}

Handle<RsvpLerLspRequestStatus>
ShowRsvpLer::getLspRequestStatus(RsvpLerLspRequestConfigId const& lspRequestConfigId) const {
   RSVP_LER_TRACE(lspRequestConfigId);
   return findLspRequestStatus(rsvpLerStatus, lspRequestConfigId);
}

} // namespace Rsvp::Cli
