#pragma once

#include "RsvpLer/state/Lookups.h"

namespace Rsvp::Cli {

// The group's record as it stands in its collection; empty when it, its collection or the table is missing. Unlike
// getLspGroupStatus this doesn't ask whether the group's instance has a status.
Handle<RsvpLerLspGroupStatus> findGroupRecord(Handle<RsvpLerLspGroupStatusCollTable> const& lspGroupStatusCollTable,
                                              RsvpLerLspGroupId const& lspGroupId);

} // namespace Rsvp::Cli
