#pragma once

#include "RsvpLer/Export.h"
#include "RsvpLer/frame/ShowRsvpLerTunnelFilter.h"
#include "RsvpLer/frame/ShowTunnelVariant.h"
#include "RsvpLer/frame/Views.h"
#include "RsvpLer/state/FeatureConfig.h"
#include "RsvpLer/state/Lookups.h"
#include "ambit/FeatureConfigDir.h"
#include "brindle/Node.h"
#include "brindle/Ptr.h"
#include "brindle/String.h"

#include <cstdint>
#include <vector>

// The two show commands of the RSVP-TE label edge router.
//
// A command object holds read-only handles on the state, any of which may be empty, and is asked with `render` to
// answer into a descriptor: aligned text for an operator or one JSON document for a management client. The tables may
// change while it reads them. One object serves one caller at a time; it starts no thread and takes no lock.
//
// A function without RSVP_LER_EXPORT is the module's own: the library hides it, so no other program can call it.
//
// Throughout: an absent record is no error, it reads as the defaults of its fields; which tables must be there is said
// at `render`; a section that takes `showText` (or `text`) as its last argument writes its lines only when that is true
// and its JSON members always; stored bandwidths are in bytes per second and shown ones in bits per second.

namespace scrivo {
class RendererV2;
}

namespace Rsvp::Cli {

// What the type system knows of the two classes: the entries of the module's table of types with the numbers 2 and 3.
RSVP_LER_EXPORT Brindle::TypeData const* showRsvpLerTunnelTypeData() noexcept;
RSVP_LER_EXPORT Brindle::TypeData const* showRsvpLerTypeData() noexcept;

// All tunnel views.
class ShowRsvpLerTunnel : public Brindle::Node {
public:
   // Takes a use of each handle; none is rejected for being empty.
   RSVP_LER_EXPORT ShowRsvpLerTunnel(Handle<RsvpCliConfig> const& rsvpCliConfig_,
                                     Handle<RsvpLerCliConfig> const& rsvpLerCliConfig_,
                                     Handle<RsvpLerStatehubStatus> const& rsvpLerStatus_,
                                     Handle<RsvpLerFathomStatus> const& rsvpLerFathomStatus_);

   // Makes an object and hands it over.
   RSVP_LER_EXPORT static Brindle::Ptr<ShowRsvpLerTunnel>
   ShowRsvpLerTunnelIs(Handle<RsvpCliConfig> const& rsvpCliConfig, Handle<RsvpLerCliConfig> const& rsvpLerCliConfig,
                       Handle<RsvpLerStatehubStatus> const& rsvpLerStatus,
                       Handle<RsvpLerFathomStatus> const& rsvpLerFathomStatus);

   Brindle::TypeData const* typeData() const noexcept override { return showRsvpLerTunnelTypeData(); }

   // Lists the tunnels that the filter lets through on the descriptor `socket`, P2P tunnels first, in natural order of
   // their names. `format` is 1 for text and 2 for JSON; any other writes nothing. The flags choose the view:
   // getShowTunnelVariantEnum tells which combinations there are; another one ends the process. `subTunnel` restricts
   // the listing to split tunnels.
   //
   // No tunnel is shown unless eight tables are there, which may be empty: superTunnelConfigColl,
   // superTunnelStatusColl, subTunnelStatusCollTable, tunnelSpecColl, bwSamplingStatusColl, tunnelIndexMap,
   // autoBwConfig and autoBwStats. A history view of a tunnel with an index also needs rsvpLerTunnelHistory, and that
   // of a sub-tunnel with an index rsvpLerSubTunnelHistory: without it the process ends.
   //
   // Returns when all is written, or early, after the line "exiting ..." on standard output, when the user interrupts
   // or the client has gone. Throws std::bad_alloc, and what a corruption handler of a value map throws. A client that
   // takes nothing is waited for without limit: Vane::Interrupt::request() ends this command and every other one of the
   // process, until the caller clears it; shutting the socket down ends this one alone. Hold a Vane::CommandPin around
   // the call: each lookup then costs a count instead of a fence, and the pin rests while a client is waited for.
   RSVP_LER_EXPORT void render(std::uint32_t socket, std::uint32_t format, ShowRsvpLerTunnelFilter const& tunnelFilter,
                               bool summary, bool lspDetails, bool detail, bool history, bool subTunnel);

   // The variant for the flags; sessionType 0 selects the P2P half, every other value the P2MP half.
   RSVP_LER_EXPORT ShowTunnelVariant getShowTunnelVariantEnum(RsvpSessionType sessionType, bool summary,
                                                              bool lspDetails, bool detail, bool history,
                                                              bool subTunnel) const;

   // One tunnel of a listing. Writes nothing when one of the eight tables that are named at `render` is missing, nor
   // for a tunnel that isn't split when `subTunnel` is set.
   void renderTunnel(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId, bool summary,
                     bool lspDetails, bool detail, bool history, bool subTunnel);

   // ---- Handles, as the constructor got them.

   Handle<RsvpCliConfig> rsvpCliConfig;
   Handle<RsvpLerCliConfig> rsvpLerCliConfig;
   Handle<RsvpLerStatehubStatus> rsvpLerStatus;
   Handle<RsvpLerFathomStatus> rsvpLerFathomStatus;

   // ---- Widths of the summary tables, in bytes.
   // Each starts as the length of its heading. A listing only ever raises them, and they stay raised.

   std::uint8_t tunnelNameWidth = 11;
   static constexpr std::uint8_t tunnelNameMaxWidth = 40; // cap of both name columns
   std::uint8_t dstWidth = 11;
   std::uint8_t colorWidth = 5;
   std::uint8_t indexWidth = 5;
   static constexpr std::uint64_t activePathWidth = 11;
   std::uint8_t bwWidth = 11;
   bool bw1000 = false; // a bandwidth above 1000 bits per second has been seen
   std::uint8_t sampledBwWidth = 10;
   static constexpr std::uint64_t lspCountWidth = 4;
   std::uint8_t stateWidth = 5;
   std::uint8_t p2mpTunnelNameWidth = 11;
   std::uint8_t p2mpIdWidth = 7;
   std::uint8_t p2mpIndexWidth = 5;
   std::uint8_t p2mpBwWidth = 11;
   bool p2mpBw1000 = false;
   static constexpr std::uint64_t p2mpLspCountWidth = 4;
   std::uint8_t p2mpStateWidth = 5;
   std::uint8_t p2mpLeavesWidth = 6;
   std::uint8_t subTunnelIdWidth = 10;
   std::uint8_t sessionIdWidth = 10;

   // ---- Tables, read from the root at each call; empty when the root or its field is.

   RSVP_LER_EXPORT Handle<RsvpLerPathSpecConfigColl> pathSpecConfigColl() const;
   RSVP_LER_EXPORT Handle<RsvpLerTunnelSpecPtrConstColl> tunnelSpecColl() const;
   RSVP_LER_EXPORT Handle<RsvpLerSuperTunnelConfigColl> superTunnelConfigColl() const;
   RSVP_LER_EXPORT Handle<RsvpLerSuperTunnelStatusColl> superTunnelStatusColl() const;
   RSVP_LER_EXPORT Handle<RsvpLerSubTunnelConfigCollTable> subTunnelConfigCollTable() const;
   RSVP_LER_EXPORT Handle<RsvpLerSubTunnelStatusCollTable> subTunnelStatusCollTable() const;
   RSVP_LER_EXPORT Handle<RsvpLerMbbTunnelConfigCollTable> mbbTunnelConfigCollTable() const;
   RSVP_LER_EXPORT Handle<RsvpLerMbbTunnelStatusCollTable> mbbTunnelStatusCollTable() const;
   RSVP_LER_EXPORT Handle<RsvpLerTunnelIndexMap> tunnelIndexMap() const;
   RSVP_LER_EXPORT Handle<RsvpLerSubTunnelIndexMap> subTunnelIndexMap() const;
   RSVP_LER_EXPORT Handle<RsvpLerLspGroupStatusCollTable> lspGroupStatusCollTable() const;
   RSVP_LER_EXPORT Handle<RsvpLerLspRequestConfigCollTable> lspRequestConfigCollTable() const;
   RSVP_LER_EXPORT Handle<RsvpLerLspRequestStatusCollTable> lspRequestStatusCollTable() const;
   RSVP_LER_EXPORT Handle<RsvpLerBwSamplingStatusColl> bwSamplingStatusColl() const;
   RSVP_LER_EXPORT Handle<RsvpLerAutoBwStats> autoBwStats() const;
   RSVP_LER_EXPORT Handle<RsvpLerAutoBwConfig> autoBwConfig() const;
   RSVP_LER_EXPORT Handle<RsvpLerTunnelHistory> rsvpLerTunnelHistory() const;
   RSVP_LER_EXPORT Handle<RsvpLerSubTunnelHistory> rsvpLerSubTunnelHistory() const;
   RSVP_LER_EXPORT Handle<RsvpLerCspfPathKeyMapping> cspfPathKeyMapping() const;

   // ---- Lookups. Each gives an owned handle, empty wherever a link of the chain is missing (state/Lookups.h).

   RSVP_LER_EXPORT Handle<RsvpLerMbbTunnelConfig>
   getMbbTunnelConfig(RsvpLerMbbTunnelConfigId const& mbbTunnelConfigId) const;
   RSVP_LER_EXPORT Handle<RsvpLerMbbTunnelStatus>
   getMbbTunnelStatus(RsvpLerMbbTunnelConfigId const& mbbTunnelConfigId) const;
   RSVP_LER_EXPORT Handle<RsvpLerLspGroupStatus> getLspGroupStatus(RsvpLerLspGroupId const& lspGroupId) const;
   // The group of that number in the active instance when there is one, else in the pending instance.
   RSVP_LER_EXPORT Handle<RsvpLerLspGroupStatus>
   getLspGroupStatusByGroupId(RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                              RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId, std::uint8_t groupId) const;
   RSVP_LER_EXPORT Handle<RsvpLerLspRequestConfig>
   getLspRequestConfig(RsvpLerLspRequestConfigId const& lspRequestConfigId) const;
   RSVP_LER_EXPORT Handle<RsvpLerLspRequestStatus>
   getLspRequestStatus(RsvpLerLspRequestConfigId const& lspRequestConfigId) const;
   // The status of a sub-tunnel, through the collection of the tunnel; and that of the one sub-tunnel of a tunnel that
   // isn't split.
   Handle<RsvpLerSubTunnelStatus> getSubTunnelStatus(RsvpLerTunnelSpecId const& tunnelSpecId,
                                                     RsvpLerSubTunnelConfigId const& subTunnelConfigId) const;
   Handle<RsvpLerSubTunnelStatus> getNonSplitSubTunnelStatus(RsvpLerTunnelSpecId const& tunnelSpecId) const;
   // What the sub-tunnel runs on; all defaults with an empty handle.
   CurrentInstances getCurrentInstances(Handle<RsvpLerSubTunnelStatus> const& subTunnelStatus) const;
   // The specification the tunnel asks for, of the primary or the secondary path; the default when the record is
   // missing.
   RsvpLerPathSpecId getRequestedPathSpecId(RsvpLerTunnelSpecId const& tunnelSpecId, bool primary) const;

   // ---- Summary tables (summary/), text only.

   RSVP_LER_EXPORT void setP2pTunnelSummaryHeaderColSizes(RsvpLerTunnelSpecId const& tunnelSpecId);
   void renderP2pTunnelSummaryHeader(scrivo::RendererV2* renderer) const;
   void renderP2pTunnelSummary(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                               Handle<RsvpLerSuperTunnelConfig> const& superTunnelConfig,
                               Handle<RsvpLerSuperTunnelStatus> const& superTunnelStatus,
                               Handle<RsvpLerTunnelIndexMap> const& indexMap, RsvpLerLspGroupId const& lspGroupId,
                               std::uint32_t lspCount, bool notSplit, bool mbb) const;

   RSVP_LER_EXPORT void setP2mpTunnelSummaryHeaderColSizes(RsvpLerTunnelSpecId const& tunnelSpecId);
   void renderP2mpTunnelSummaryHeader(scrivo::RendererV2* renderer) const;
   void renderP2mpTunnelSummary(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                                Handle<RsvpLerSuperTunnelStatus> const& superTunnelStatus,
                                Handle<RsvpLerTunnelIndexMap> const& indexMap, std::uint32_t lspCount, bool mbb) const;

   RSVP_LER_EXPORT void
   setSubTunnelSummaryHeaderColSizes(RsvpLerTunnelSpecId const& tunnelSpecId,
                                     RsvpLerSubTunnelConfigId const& subTunnelConfigId,
                                     Handle<RsvpLerBwSamplingStatusColl> const& bwSamplingStatusColl,
                                     Handle<RsvpLerSubTunnelIndexMap> const& subTunnelIndexMap);
   void renderSubTunnelSummaryHeader(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId) const;
   void renderSubTunnelSummary(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                               RsvpLerSubTunnelConfigId const& subTunnelConfigId, RsvpLerLspGroupId const& lspGroupId,
                               Handle<RsvpLerSubTunnelStatus> const& subTunnelStatus,
                               Handle<RsvpLerBwSamplingStatusColl> const& bwSamplingStatusColl,
                               Handle<RsvpLerSubTunnelIndexMap> const& subTunnelIndexMap, std::uint32_t lspCount,
                               bool mbb) const;

   // ---- Bandwidth (detail/).

   // What all sub-tunnels together ask for, in bits per second; 0 with an empty handle. Where a sub-tunnel is being
   // replaced, its share is the replacement's.
   RSVP_LER_EXPORT std::uint64_t
   getRequestedBwBpsForSuperTunnel(Handle<RsvpLerSubTunnelStatusColl> const& subTunnelColl) const;
   // JSON only; the flag has no effect.
   void renderTunnelBandwidth(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                              Handle<RsvpLerSuperTunnelStatus> const& superTunnelStatus,
                              Handle<RsvpLerAutoBwConfig> const& autoBwConfig,
                              Handle<RsvpLerSubTunnelStatusColl> const& subTunnelStatusColl, bool showText) const;
   void renderTunnelBandwidthDetails(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                                     Handle<RsvpLerSuperTunnelConfig> const& superTunnelConfig,
                                     Handle<RsvpLerSuperTunnelStatus> const& superTunnelStatus,
                                     Handle<RsvpLerAutoBwConfig> const& autoBwConfig,
                                     Handle<RsvpLerSubTunnelStatusColl> const& subTunnelStatusColl,
                                     bool showText) const;
   void renderSubTunnelBwNextAdjustment(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                                        RsvpLerSubTunnelConfigId const& subTunnelConfigId,
                                        Handle<RsvpLerAutoBwStats> const& autoBwStats, bool showText) const;
   void renderSubTunnelSampledBandwidth(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                                        RsvpLerSubTunnelConfigId const& subTunnelConfigId,
                                        Handle<RsvpLerBwSamplingStatusColl> const& bwSamplingStatusColl,
                                        bool showText) const;

   // ---- Sub-tunnels (detail/).

   // Every sub-tunnel of a split tunnel, by rising number.
   void renderSubTunnelsForTunnel(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                                  Handle<RsvpLerSuperTunnelStatus> const& superTunnelStatus,
                                  Handle<RsvpLerSubTunnelStatusColl> const& subTunnelStatusColl,
                                  ShowTunnelVariant variant);
   // The id must name a sub-tunnel of a split tunnel, and the variant must be a P2P one: anything else ends the
   // process.
   void renderSubTunnel(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                        RsvpLerSubTunnelConfigId const& subTunnelConfigId,
                        Handle<RsvpLerAutoBwStats> const& autoBwStats,
                        Handle<RsvpLerBwSamplingStatusColl> const& bwSamplingStatusColl,
                        Handle<RsvpLerSubTunnelIndexMap> const& subTunnelIndexMap, ShowTunnelVariant variant);

   // ---- Paths and LSP groups (lsp/).

   void renderPaths(scrivo::RendererV2* renderer, RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                    RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId) const;
   void renderDetailedPaths(scrivo::RendererV2* renderer, RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                            RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId, bool text) const;
   void renderLspGroup(scrivo::RendererV2* renderer, RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                       RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId, std::uint8_t groupId) const;
   void renderDetailedLspGroup(scrivo::RendererV2* renderer, RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                               RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId, std::uint8_t groupId,
                               bool text) const;
   void renderLspGroupState(scrivo::RendererV2* renderer, Handle<RsvpLerLspGroupStatus> const& group,
                            RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                            RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId,
                            RsvpLerLspGroupId const& activeLspGroupId, std::uint8_t groupId, bool coldStandbyCandidate,
                            bool primary, bool text) const;
   void renderLspGroupMtuInfo(scrivo::RendererV2* renderer, Handle<RsvpLerLspGroupStatus> const& group,
                              bool text) const;
   void renderLspGroupCspfPathKey(scrivo::RendererV2* renderer, RsvpLerLspGroupId const& lspGroupId, bool text) const;
   void renderLspGroupCspfTreeId(scrivo::RendererV2* renderer, RsvpLerLspGroupId const& lspGroupId, bool text) const;
   void renderLspGroupHops(scrivo::RendererV2* renderer, Handle<RsvpLerPathSpecConfig> const& pathSpecConfig,
                           Handle<RsvpLerLspGroupStatus> const& group, bool text) const;
   void renderTreeSpecNameNoPathSpecConfig(scrivo::RendererV2* renderer,
                                           RsvpLerMbbTunnelConfigId const& mbbTunnelConfigId, bool text) const;
   // Has no flag: its lines come in every text view that reaches the block.
   void renderMissingPathSpecConfig(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                                    bool primary) const;
   // Holds the place of the tunnel's MTUs in the sequences and writes nothing: they stand in the path and tree blocks.
   void renderTunnelMtuInformation(scrivo::RendererV2* renderer,
                                   RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                                   RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId, bool showText) const;

   // ---- Errors (lsp/).

   // Adds the errors of one LSP to the set.
   RSVP_LER_EXPORT void aggregateLspErrors(RsvpLerLspRequestConfigId const& lspRequestConfigId,
                                           Brindle::Ptr<RsvpErrorWithNodeOrderedSet> const& aggregatedErrors) const;
   // Adds the errors of both requests of one group to the set. Unlike getLspGroupStatus it doesn't ask for the status
   // of the group's instance: errors are shown while the group's record stands.
   RSVP_LER_EXPORT void
   aggregateLspGroupErrors(RsvpLerLspGroupId const& lspGroupId,
                           Brindle::Ptr<RsvpErrorWithNodeOrderedSet> const& aggregatedErrors) const;
   void renderError(scrivo::RendererV2* renderer, RsvpErrorWithNode const& error, bool text) const;
   void renderLspGroupErrors(scrivo::RendererV2* renderer, RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                             RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId, std::uint8_t groupId,
                             bool text) const;
   void renderP2mpLspGroupTreeErrors(scrivo::RendererV2* renderer,
                                     RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                                     RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId, bool text) const;

   // ---- LSPs (lsp/).

   void renderLsps(scrivo::RendererV2* renderer, RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                   RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId) const;
   void renderP2mpLsps(scrivo::RendererV2* renderer, RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                       RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId) const;
   void renderLspsForTunnel(scrivo::RendererV2* renderer, RsvpLerMbbTunnelConfigId const& mbbTunnelConfigId,
                            bool active) const;
   void renderLsp(scrivo::RendererV2* renderer, RsvpLerLspRequestConfigId const& lspRequestConfigId, bool inUse) const;

   // ---- P2MP trees and leaves (lsp/).

   void renderP2mpLspGroup(scrivo::RendererV2* renderer, RsvpLerPathSpecId const& pathSpecId,
                           Handle<RsvpLerMbbTunnelStatus> const& activeMbbTunnelStatus,
                           Handle<RsvpLerMbbTunnelStatus> const& pendingMbbTunnelStatus, bool text) const;
   void renderDetailedP2mpLspGroup(scrivo::RendererV2* renderer, RsvpLerPathSpecId const& pathSpecId,
                                   Handle<RsvpLerMbbTunnelStatus> const& activeMbbTunnelStatus,
                                   Handle<RsvpLerMbbTunnelStatus> const& pendingMbbTunnelStatus, bool text) const;
   void renderP2mpTreeState(scrivo::RendererV2* renderer, Handle<RsvpLerMbbTunnelStatus> const& activeMbbTunnelStatus,
                            Handle<RsvpLerMbbTunnelStatus> const& pendingMbbTunnelStatus,
                            Handle<RsvpLerLspGroupStatus> const& group, bool text) const;
   void renderP2mpLspGroupPathMtus(scrivo::RendererV2* renderer, Handle<RsvpLerLspGroupStatus> const& group,
                                   bool text) const;
   void renderTreeLeaves(scrivo::RendererV2* renderer, Handle<RsvpLerPathSpecConfig> const& pathSpecConfig,
                         RsvpLerLspRequestConfigId const& lspRequestConfigId, bool text) const;
   void renderDetailedTreeLeaves(scrivo::RendererV2* renderer, Handle<RsvpLerPathSpecConfig> const& pathSpecConfig,
                                 RsvpLerLspRequestConfigId const& lspRequestConfigId, bool text) const;
   void renderLeaves(scrivo::RendererV2* renderer, RsvpLerLspRequestConfigId const& lspRequestConfigId,
                     bool text) const;
   void renderDetailedLeaves(scrivo::RendererV2* renderer, RsvpLerLspRequestConfigId const& lspRequestConfigId,
                             bool text) const;
   void renderLeafEntry(scrivo::RendererV2* renderer, RsvpDstId const& leaf,
                        Handle<RsvpLerLspRequestStatus> const& status, Handle<RsvpLerTree> const& tree,
                        bool text) const;
   void renderDetailedLeafEntry(scrivo::RendererV2* renderer, RsvpDstId const& leaf,
                                Handle<RsvpLerLspRequestStatus> const& status, Handle<RsvpLerTree> const& tree,
                                bool text) const;

   // ---- History (history/).

   // The tables of the logs must be there: an empty handle ends the process.
   void renderTunnelHistory(scrivo::RendererV2* renderer, RsvpLerTunnelSpecId const& tunnelSpecId,
                            Handle<RsvpLerTunnelIndexMap> const& tunnelIndexMap, RsvpSessionType sessionType,
                            Brindle::String const& heading, Brindle::String const& indent) const;
   void renderTunnelHistoryEntry(scrivo::RendererV2* renderer, RsvpLerTunnelHistoryEntry const& entry, bool isSubTunnel,
                                 RsvpSessionType sessionType, Brindle::String const& indent) const;
   // The replies of one tree computation; all entries must be CSPF replies, sorted by destination.
   void renderP2mpCspfReplyHistoryEntry(scrivo::RendererV2* renderer,
                                        std::vector<RsvpLerTunnelHistoryEntry> const& replies,
                                        Brindle::String const& indent) const;
   void renderSubTunnelHistory(scrivo::RendererV2* renderer, RsvpLerSubTunnelConfigId const& subTunnelConfigId,
                               Handle<RsvpLerSubTunnelIndexMap> const& subTunnelIndexMap,
                               Brindle::String const& heading, Brindle::String const& indent) const;
};

// The router-wide status view.
class ShowRsvpLer : public Brindle::Node {
public:
   // Takes a use of each handle; none is rejected for being empty.
   RSVP_LER_EXPORT ShowRsvpLer(Handle<RsvpLerConfig> const& rsvpLerConfig_,
                               Handle<RsvpLerCliConfig> const& rsvpLerCliConfig_,
                               Handle<RsvpLerStatehubStatus> const& rsvpLerStatus_,
                               Handle<RsvpLerFathomStatus> const& rsvpLerFathomStatus_,
                               Handle<Ambit::Tally::FeatureConfigDir> const& tallyFeatureConfigDir_);

   // Makes an object and hands it over.
   RSVP_LER_EXPORT static Brindle::Ptr<ShowRsvpLer>
   ShowRsvpLerIs(Handle<RsvpLerConfig> const& rsvpLerConfig, Handle<RsvpLerCliConfig> const& rsvpLerCliConfig,
                 Handle<RsvpLerStatehubStatus> const& rsvpLerStatus,
                 Handle<RsvpLerFathomStatus> const& rsvpLerFathomStatus,
                 Handle<Ambit::Tally::FeatureConfigDir> const& tallyFeatureConfigDir);

   Brindle::TypeData const* typeData() const noexcept override { return showRsvpLerTypeData(); }

   // Counts, then writes one fixed view on the descriptor `socket`; `format`, the early end, the exceptions, a slow
   // client and the pin are as in the tunnel views. tallyFeatureConfigDir must be there: an empty handle ends the
   // process. Any other table may be missing.
   RSVP_LER_EXPORT void render(std::uint32_t socket, std::uint32_t format);

   Handle<RsvpLerConfig> rsvpLerConfig;
   Handle<RsvpLerCliConfig> rsvpLerCliConfig;
   Handle<RsvpLerStatehubStatus> rsvpLerStatus;
   Handle<RsvpLerFathomStatus> rsvpLerFathomStatus;
   Handle<Ambit::Tally::FeatureConfigDir> tallyFeatureConfigDir;

   // Tables, as in the tunnel object.
   RSVP_LER_EXPORT Handle<RsvpLerSuperTunnelConfigColl> superTunnelConfigColl() const;
   RSVP_LER_EXPORT Handle<RsvpLerSuperTunnelStatusColl> superTunnelStatusColl() const;
   RSVP_LER_EXPORT Handle<RsvpLerSubTunnelConfigCollTable> subTunnelConfigCollTable() const;
   RSVP_LER_EXPORT Handle<RsvpLerSubTunnelStatusCollTable> subTunnelStatusCollTable() const;
   RSVP_LER_EXPORT Handle<RsvpLerMbbTunnelStatusCollTable> mbbTunnelStatusCollTable() const;
   RSVP_LER_EXPORT Handle<RsvpLerLspGroupStatusCollTable> lspGroupStatusCollTable() const;
   RSVP_LER_EXPORT Handle<RsvpLerLspRequestStatusCollTable> lspRequestStatusCollTable() const;

   RSVP_LER_EXPORT Handle<RsvpLerLspRequestStatus>
   getLspRequestStatus(RsvpLerLspRequestConfigId const& lspRequestConfigId) const;
};

// The free forms of the two factories.
RSVP_LER_EXPORT Brindle::Ptr<ShowRsvpLerTunnel>
showRsvpLerTunnelFactory(Handle<RsvpCliConfig> const& rsvpCliConfig, Handle<RsvpLerCliConfig> const& rsvpLerCliConfig,
                         Handle<RsvpLerStatehubStatus> const& rsvpLerStatus,
                         Handle<RsvpLerFathomStatus> const& rsvpLerFathomStatus);
RSVP_LER_EXPORT Brindle::Ptr<ShowRsvpLer>
showRsvpLerFactory(Handle<RsvpLerConfig> const& rsvpLerConfig, Handle<RsvpLerCliConfig> const& rsvpLerCliConfig,
                   Handle<RsvpLerStatehubStatus> const& rsvpLerStatus,
                   Handle<RsvpLerFathomStatus> const& rsvpLerFathomStatus,
                   Handle<Ambit::Tally::FeatureConfigDir> const& tallyFeatureConfigDir);

} // namespace Rsvp::Cli
