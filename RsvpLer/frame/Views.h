#pragma once

#include "RsvpLer/state/Lookups.h"

// What is gathered once for a tunnel or sub-tunnel and then handed to its display function. A view holds copies and
// handles of its own, so it stays as it was gathered while the tables go on changing. Every handle may be empty; every
// key may be the default.

namespace Rsvp::Cli {

// What a sub-tunnel runs on at present: its two make-before-break instances, the group that carries the traffic of the
// active one, and whether a replacement runs beside it.
struct CurrentInstances {
   RsvpLerMbbTunnelConfigId activeMbbTunnelConfigId;
   RsvpLerMbbTunnelConfigId pendingMbbTunnelConfigId;
   Handle<RsvpLerMbbTunnelStatus> activeMbbTunnelStatus;
   RsvpLerLspGroupId lspGroupId; // the activeLspGroupId of the active instance's status
   // Both instances are set, or else both LSP requests of that group are.
   bool mbb = false;
};

struct TunnelView {
   RsvpLerTunnelSpecId tunnelSpecId;
   RsvpLerMbbTunnelConfigId activeMbbTunnelConfigId;
   RsvpLerMbbTunnelConfigId pendingMbbTunnelConfigId;
   RsvpLerLspGroupId lspGroupId;
   Handle<RsvpLerAutoBwConfig> autoBwConfig;
   Handle<RsvpLerAutoBwStats> autoBwStats;
   Handle<RsvpLerBwSamplingStatusColl> bwSamplingStatusColl;
   Handle<RsvpLerTunnelIndexMap> tunnelIndexMap;
   Handle<RsvpLerSuperTunnelConfig> superTunnelConfig;
   Handle<RsvpLerSuperTunnelStatus> superTunnelStatus;
   Handle<RsvpLerSubTunnelStatusColl> subTunnelStatusColl;
   Handle<RsvpLerSubTunnelStatus> subTunnelStatus; // of the one sub-tunnel of a tunnel that isn't split
   Handle<RsvpLerMbbTunnelStatus> activeMbbTunnelStatus;
   Handle<RsvpLerMbbTunnelStatus> pendingMbbTunnelStatus;
   Handle<RsvpLerTunnelSpec> tunnelSpec;
   bool mbb = false;
};

struct SubTunnelView {
   RsvpLerTunnelSpecId tunnelSpecId;
   RsvpLerSubTunnelConfigId subTunnelConfigId;
   Handle<RsvpLerAutoBwStats> autoBwStats;
   Handle<RsvpLerBwSamplingStatusColl> bwSamplingStatusColl;
   Handle<RsvpLerSubTunnelIndexMap> subTunnelIndexMap;
   Handle<RsvpLerSubTunnelStatus> subTunnelStatus;
   RsvpLerMbbTunnelConfigId activeMbbTunnelConfigId;
   RsvpLerMbbTunnelConfigId pendingMbbTunnelConfigId;
   RsvpLerLspGroupId lspGroupId;
   bool mbb = false;
};

} // namespace Rsvp::Cli
