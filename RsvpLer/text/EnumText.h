#pragma once

#include "RsvpLer/Export.h"
#include "RsvpLer/state/Enumerations.h"
#include "RsvpLer/state/Keys.h"

#include <cstdint>

// The vocabulary of states: every word that stands for an enumeration in a view. The text format takes the human text
// (...ToString), JSON the enum word, one token in lower camel case (...ToEnumString, or `json` true). Where the two
// would be equal one function serves both.
//
// All give static text that nobody frees. A byte that the enumeration doesn't name ends the process through
// the assertion "This should be unreachable", except where a function says otherwise.

namespace Rsvp::Cli {

// Both formats: unknown, down, up.
RSVP_LER_EXPORT char const* tunnelStateToString(RsvpLerTunnelState state) noexcept;

// Where a tunnel, a path specification or a profile came from.
RSVP_LER_EXPORT char const* tunnelSourceToString(RsvpLerTunnelSource source) noexcept;
RSVP_LER_EXPORT char const* tunnelSourceToEnumString(RsvpLerTunnelSource source) noexcept;

RSVP_LER_EXPORT char const* frrModeToString(FrrMode mode, bool json) noexcept;

// The tail of the sentence that tells a tunnel's state, beginning with its blank: " using primary path".
// Empty for a tunnel that isn't up, whatever the group; a group other than 0 and 1 of a tunnel that is up
// ends the process through the assertion "groupId == 1". Any byte is allowed as the state.
RSVP_LER_EXPORT char const* pathTypeForTunnelState(RsvpLerTunnelState state, std::uint8_t groupId) noexcept;

// Both formats. Both up values read "up".
RSVP_LER_EXPORT char const* lspGroupStateToString(RsvpLerLspGroupState state) noexcept;

// Both up values read "up"; only `unverified` differs between the formats.
RSVP_LER_EXPORT char const* lerLspStateToString(RsvpLerLspState state, bool json) noexcept;

// Both formats: unknown, up, down.
RSVP_LER_EXPORT char const* lspStateToString(RsvpLspState state) noexcept;

// Both formats: unknown, explicit, dynamic.
RSVP_LER_EXPORT char const* pathSpecTypeToString(RsvpLerPathSpecType type) noexcept;

// Any byte is allowed: what isn't an added, removed or missing path reads as a changed one, `none` included.
RSVP_LER_EXPORT char const* pathChangeTypeToString(RsvpLerP2mpPathChangeType type) noexcept;
RSVP_LER_EXPORT char const* pathChangeTypeToEnumString(RsvpLerP2mpPathChangeType type) noexcept;

// For JSON alone; the attribute lines of a tunnel write the sentence that the text format has instead.
RSVP_LER_EXPORT char const* profileStateToEnumString(RsvpLerTunnelProfileState state) noexcept;

// The path that a sub-tunnel runs on, told by the group in use and not by any state: "unknown" for the
// default key, which stands for no group, "primary" for group 0, "secondary" for every other.
RSVP_LER_EXPORT char const* getSubTunnelActivePathType(RsvpLerLspGroupId const& groupId) noexcept;

} // namespace Rsvp::Cli
