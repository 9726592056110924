#pragma once

#include <cstdint>

// The enumerations that records hold. Each is one byte wide, and the same word stands at different numbers in them on
// purpose: down is 1 for a tunnel, 2 for an LSP, 4 for an LSP group and 5 for a LER LSP. Their words are in
// text/EnumText.h. A record may hold any byte; only the values named here have a word.

namespace Rsvp {

// 0 is P2P; every other value counts as P2MP where a rule doesn't ask for exactly 1.
enum class RsvpSessionType : std::uint8_t { p2p = 0, p2mp = 1 };

enum class RsvpLerTunnelState : std::uint8_t { unknown = 0, down = 1, up = 2 };

// Where a tunnel, a path specification or a profile came from.
enum class RsvpLerTunnelSource : std::uint8_t { unknown = 0, cli = 1, mvpn = 2, frrBypass = 3, defaultSource = 4 };

// Both up values read "up".
enum class RsvpLerLspGroupState : std::uint8_t { unknown = 0, establishing = 1, up = 2, upVerified = 3, down = 4 };

// The state that the LER keeps of an LSP. Both up values read "up".
enum class RsvpLerLspState : std::uint8_t {
   unknown = 0,
   establishing = 1,
   unverified = 2, // waiting for self-ping
   up = 3,
   upVerified = 4,
   down = 5
};

// The state of one leaf of a P2MP LSP, as the signalling knows it.
enum class RsvpLspState : std::uint8_t { unknown = 0, up = 1, down = 2 };

enum class RsvpLerPathSpecType : std::uint8_t { unknown = 0, explicitPath = 1, dynamicPath = 2 };

enum class RsvpLerP2mpPathChangeType : std::uint8_t { none = 0, added = 1, changed = 2, removed = 3, notFound = 4 };

// How the profile of a tunnel resolved.
enum class RsvpLerTunnelProfileState : std::uint8_t { notSpecified = 0, notFound = 1, wrongType = 2, applied = 3 };

namespace Cli {

// Fast re-route mode.
enum class FrrMode : std::uint8_t { none = 0, linkProtection = 1, nodeProtection = 2 };

} // namespace Cli
} // namespace Rsvp
