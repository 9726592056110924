#pragma once

#include "RsvpLer/state/HistoryTables.h"
#include "RsvpLer/state/LspTables.h"
#include "RsvpLer/state/TunnelTables.h"
#include "brindle/Node.h"
#include "vane/Slot.h"

// The two roots from which all state is reached. Each table field is a handle that can be empty, and that one writer
// may set while readers fetch it.

namespace Rsvp {

// The status side.
struct RsvpLerStatehubStatus : Brindle::Node {
   Vane::Slot<RsvpLerPathSpecConfigColl> pathSpecConfigColl;
   Vane::Slot<RsvpLerTunnelSpecPtrConstColl> tunnelSpecColl;
   Vane::Slot<RsvpLerAutoBwStats> autoBwStats;
   Vane::Slot<RsvpLerBwSamplingStatusColl> bwSamplingStatusColl;
   Vane::Slot<RsvpLerTunnelIndexMap> tunnelIndexMap;
   Vane::Slot<RsvpLerSubTunnelIndexMap> subTunnelIndexMap;
   Vane::Slot<RsvpLerSuperTunnelStatusColl> superTunnelStatusColl;
   Vane::Slot<RsvpLerSubTunnelConfigCollTable> subTunnelConfigCollTable;
   Vane::Slot<RsvpLerSubTunnelStatusCollTable> subTunnelStatusCollTable;
   Vane::Slot<RsvpLerMbbTunnelConfigCollTable> mbbTunnelConfigCollTable;
   Vane::Slot<RsvpLerMbbTunnelStatusCollTable> mbbTunnelStatusCollTable;
   Vane::Slot<RsvpLerLspGroupStatusCollTable> lspGroupStatusCollTable;
   Vane::Slot<RsvpLerLspRequestConfigCollTable> lspRequestConfigCollTable;
   Vane::Slot<RsvpLerLspRequestStatusCollTable> lspRequestStatusCollTable;
   Vane::Slot<RsvpLerCspfPathKeyMapping> cspfPathKeyMapping;
};

// The shared-state side.
struct RsvpLerFathomStatus : Brindle::Node {
   Vane::Slot<RsvpLerSuperTunnelConfigColl> superTunnelConfigColl;
   Vane::Slot<RsvpLerAutoBwConfig> autoBwConfig;
   Vane::Slot<RsvpLerTunnelHistory> rsvpLerTunnelHistory;
   Vane::Slot<RsvpLerSubTunnelHistory> rsvpLerSubTunnelHistory;
};

} // namespace Rsvp
