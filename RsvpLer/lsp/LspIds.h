#pragma once

#include "RsvpLer/state/Lookups.h"
#include "vane/Optional.h"
#include "vane/ShortVector.h"

#include <cstdint>

namespace scrivo {
class RendererV2;
}

namespace Rsvp::Cli {

// The ids of some LSPs. An element without a value stands for an LSP that has no id yet; it counts, so the size of the
// list is the number of LSPs.
using LspIds = Vane::ShortVector<Vane::Optional<std::uint16_t>, 16>;

// The id of one LSP: absent for the default key, when a record on the way to it is missing, or when it has none.
Vane::Optional<std::uint16_t>
getLspIdForLspRequest(RsvpLerLspRequestConfigId const& lspRequestConfigId,
                      Handle<RsvpLerLspRequestStatusCollTable> const& lspRequestStatusCollTable);

// Those of one instance, by group, the active request of a group before the pending one. A request that is the default
// key adds nothing.
LspIds getLspIdsForTunnel(RsvpLerMbbTunnelConfigId const& mbbTunnelConfigId,
                          Handle<RsvpLerLspGroupStatusCollTable> const& lspGroupStatusCollTable,
                          Handle<RsvpLerLspRequestStatusCollTable> const& lspRequestStatusCollTable);

// Adds those of the active instance to a list, and then those of the pending one.
void appendLspIdsOfInstances(LspIds& lspIds, RsvpLerMbbTunnelConfigId const& activeMbbTunnelConfigId,
                             RsvpLerMbbTunnelConfigId const& pendingMbbTunnelConfigId,
                             Handle<RsvpLerLspGroupStatusCollTable> const& lspGroupStatusCollTable,
                             Handle<RsvpLerLspRequestStatusCollTable> const& lspRequestStatusCollTable);

// Those of both instances of all sub-tunnels of a tunnel, in no order that means anything.
LspIds getLspIdsForSuperTunnel(RsvpLerTunnelSpecId const& tunnelSpecId,
                               Handle<RsvpLerSubTunnelStatusCollTable> const& subTunnelStatusCollTable,
                               Handle<RsvpLerLspGroupStatusCollTable> const& lspGroupStatusCollTable,
                               Handle<RsvpLerLspRequestStatusCollTable> const& lspRequestStatusCollTable);

// "   LSP IDs: ?, 2, 7" and "lspIds":[2,7]. Sorts the list in place, ascending, those without an id first.
void renderLspIds(scrivo::RendererV2* renderer, LspIds& lspIds, bool text);

} // namespace Rsvp::Cli
