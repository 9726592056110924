#pragma once

#include "RsvpLer/state/Roots.h"

// Lookups along a chain of tables. None fails: wherever a link is missing, a root and a table included, the result is
// an empty handle.

namespace Rsvp {

template<class T>
using Handle = Brindle::Ptr<T const>;

// The record of an instance, through the collection of its sub-tunnel.
Handle<RsvpLerMbbTunnelConfig> findMbbTunnelConfig(Handle<RsvpLerStatehubStatus> const& root,
                                                   RsvpLerMbbTunnelConfigId const& id);
Handle<RsvpLerMbbTunnelStatus> findMbbTunnelStatus(Handle<RsvpLerStatehubStatus> const& root,
                                                   RsvpLerMbbTunnelConfigId const& id);

// The group's record, through the collection of its instance. Empty also when the instance has no status: a group can't
// be seen once its instance's status has gone, even if its own record is still there.
Handle<RsvpLerLspGroupStatus> findLspGroupStatus(Handle<RsvpLerStatehubStatus> const& root,
                                                 RsvpLerLspGroupId const& id);

// The record of a request, through the collection of its group.
Handle<RsvpLerLspRequestConfig> findLspRequestConfig(Handle<RsvpLerStatehubStatus> const& root,
                                                     RsvpLerLspRequestConfigId const& id);
Handle<RsvpLerLspRequestStatus> findLspRequestStatus(Handle<RsvpLerStatehubStatus> const& root,
                                                     RsvpLerLspRequestConfigId const& id);

// The configuration of a sub-tunnel, through the collection of its tunnel.
Handle<RsvpLerSubTunnelConfig> findSubTunnelConfig(Handle<RsvpLerStatehubStatus> const& root,
                                                   RsvpLerSubTunnelConfigId const& id);

// The settings of a tunnel's automatic bandwidth. A tunnel without an entry, or with a damaged one, and an empty handle
// read as the default: automatic bandwidth is off.
RsvpLerTunnelAutoBwConfig findAutoBwConfig(Handle<RsvpLerAutoBwConfig> const& autoBwConfig,
                                           RsvpLerTunnelSpecId const& id);

} // namespace Rsvp
