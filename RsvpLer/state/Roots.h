#pragma once

#include "RsvpLer/state/HistoryTables.h"
#include "RsvpLer/state/LspTables.h"
#include "RsvpLer/state/TunnelTables.h"
#include "brindle/Node.h"
#include "vane/Slot.h"

// The two roots from which all state is reached. Each table field is a handle that can be empty, and that one writer
// may set while readers fetch it. No tunnel is shown unless the eight tables that are marked as needed are there; they
// may be empty.

namespace Rsvp {

// The status side.
struct RsvpLerStatehubStatus : Brindle::Node {
   Vane::Slot<RsvpLerPathSpecConfigColl> pathSpecConfigColl;
   Vane::Slot<RsvpLerTunnelSpecPtrConstColl> tunnelSpecColl;     // needed
   Vane::Slot<RsvpLerAutoBwStats> autoBwStats;                   // needed
   Vane::Slot<RsvpLerBwSamplingStatusColl> bwSamplingStatusColl; // needed
   Vane::Slot<RsvpLerTunnelIndexMap> tunnelIndexMap;             // needed
   Vane::Slot<RsvpLerSubTunnelIndexMap> subTunnelIndexMap;
   Vane::Slot<RsvpLerSuperTunnelStatusColl> superTunnelStatusColl; // needed
   Vane::Slot<RsvpLerSubTunnelConfigCollTable> subTunnelConfigCollTable;
   Vane::Slot<RsvpLerSubTunnelStatusCollTable> subTunnelStatusCollTable; // needed
   Vane::Slot<RsvpLerMbbTunnelConfigCollTable> mbbTunnelConfigCollTable;
   Vane::Slot<RsvpLerMbbTunnelStatusCollTable> mbbTunnelStatusCollTable;
   Vane::Slot<RsvpLerLspGroupStatusCollTable> lspGroupStatusCollTable;
   Vane::Slot<RsvpLerLspRequestConfigCollTable> lspRequestConfigCollTable;
   Vane::Slot<RsvpLerLspRequestStatusCollTable> lspRequestStatusCollTable;
   Vane::Slot<RsvpLerCspfPathKeyMapping> cspfPathKeyMapping;
};

// The shared-state side.
struct RsvpLerFathomStatus : Brindle::Node {
   Vane::Slot<RsvpLerSuperTunnelConfigColl> superTunnelConfigColl; // needed
   Vane::Slot<RsvpLerAutoBwConfig> autoBwConfig;                   // needed
   Vane::Slot<RsvpLerTunnelHistory> rsvpLerTunnelHistory;
   Vane::Slot<RsvpLerSubTunnelHistory> rsvpLerSubTunnelHistory;
};

} // namespace Rsvp
