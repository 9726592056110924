#pragma once

#include "RsvpLer/state/LspRecords.h"
#include "RsvpLer/state/Table.h"
#include "vane/OrderedColl.h"

// The tables of make-before-break instances, LSP groups and LSP requests. All but one are tables of tables: the outer
// key is the parent's, the inner one the whole. The named accessor of each is its lookup: an owned handle, empty when
// the key is absent.

namespace Rsvp {

struct RsvpLerMbbTunnelConfigColl : RecordTable<RsvpLerMbbTunnelConfigId, RsvpLerMbbTunnelConfig> {
   auto mbbTunnelConfig(RsvpLerMbbTunnelConfigId const& id) const { return find(id); }
};

// Those of one sub-tunnel.
struct RsvpLerMbbTunnelConfigCollForSubTunnel : RsvpLerMbbTunnelConfigColl {};

struct RsvpLerMbbTunnelConfigCollTable : CollTable<RsvpLerSubTunnelConfigId, RsvpLerMbbTunnelConfigCollForSubTunnel> {
   Brindle::Ptr<RsvpLerMbbTunnelConfigColl const> mbbTunnelConfigColl(RsvpLerSubTunnelConfigId const& id) const {
      return find(id);
   }
};

struct RsvpLerMbbTunnelStatusColl : RecordTable<RsvpLerMbbTunnelConfigId, RsvpLerMbbTunnelStatus> {
   auto mbbTunnelStatus(RsvpLerMbbTunnelConfigId const& id) const { return find(id); }
};

// Those of one sub-tunnel.
struct RsvpLerMbbTunnelStatusCollForSubTunnel : RsvpLerMbbTunnelStatusColl {};

struct RsvpLerMbbTunnelStatusCollTable : CollTable<RsvpLerSubTunnelConfigId, RsvpLerMbbTunnelStatusCollForSubTunnel> {
   Brindle::Ptr<RsvpLerMbbTunnelStatusColl const> mbbTunnelStatusColl(RsvpLerSubTunnelConfigId const& id) const {
      return find(id);
   }
};

// The groups of one instance, in the order of their keys. Its walks survive changes on the way.
struct RsvpLerLspGroupStatusCollForTunnel
      : Brindle::Node,
        Vane::OrderedColl<RsvpLerLspGroupId, Brindle::Ptr<RsvpLerLspGroupStatus const>> {};

using RsvpLerLspGroupStatusColl = RsvpLerLspGroupStatusCollForTunnel;

struct RsvpLerLspGroupStatusCollTable : CollTable<RsvpLerMbbTunnelConfigId, RsvpLerLspGroupStatusCollForTunnel> {
   Brindle::Ptr<RsvpLerLspGroupStatusColl const> lspGroupStatusColl(RsvpLerMbbTunnelConfigId const& id) const {
      return find(id);
   }
};

struct RsvpLerLspRequestConfigColl : RecordTable<RsvpLerLspRequestConfigId, RsvpLerLspRequestConfig> {
   auto lspRequestConfig(RsvpLerLspRequestConfigId const& id) const { return find(id); }
};

// Those of one group.
struct RsvpLerLspRequestConfigCollForLspGroup : RsvpLerLspRequestConfigColl {};

struct RsvpLerLspRequestConfigCollTable : CollTable<RsvpLerLspGroupId, RsvpLerLspRequestConfigCollForLspGroup> {
   Brindle::Ptr<RsvpLerLspRequestConfigColl const> lspRequestConfigColl(RsvpLerLspGroupId const& id) const {
      return find(id);
   }
};

struct RsvpLerLspRequestStatusColl : RecordTable<RsvpLerLspRequestConfigId, RsvpLerLspRequestStatus> {
   auto lspRequestStatus(RsvpLerLspRequestConfigId const& id) const { return find(id); }
};

// Those of one group.
struct RsvpLerLspRequestStatusCollForLspGroup : RsvpLerLspRequestStatusColl {};

struct RsvpLerLspRequestStatusCollTable : CollTable<RsvpLerLspGroupId, RsvpLerLspRequestStatusCollForLspGroup> {
   Brindle::Ptr<RsvpLerLspRequestStatusColl const> lspRequestStatusColl(RsvpLerLspGroupId const& id) const {
      return find(id);
   }
};

struct RsvpLerCspfPathKeyMapping : RecordTable<RsvpLerLspGroupId, RsvpLerCspfPathKey> {
   auto pathKeyForLspGroupId(RsvpLerLspGroupId const& id) const { return find(id); }
};

} // namespace Rsvp
