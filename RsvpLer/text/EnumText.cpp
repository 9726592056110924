#include "RsvpLer/text/EnumText.h"

#include "brindle/Assert.h"

namespace Rsvp::Cli {

char const* tunnelStateToString(RsvpLerTunnelState state) noexcept {
   switch (state) {
   case RsvpLerTunnelState::unknown:
      return "unknown";
   case RsvpLerTunnelState::down:
      return "down";
   case RsvpLerTunnelState::up:
      return "up";
   }
   BRINDLE_UNREACHABLE();
}

char const* tunnelSourceToString(RsvpLerTunnelSource source) noexcept {
   switch (source) {
   case RsvpLerTunnelSource::unknown:
      return "unknown";
   case RsvpLerTunnelSource::cli:
      return "CLI";
   case RsvpLerTunnelSource::mvpn:
      return "MVPN";
   case RsvpLerTunnelSource::frrBypass:
      return "FRR Bypass";
   case RsvpLerTunnelSource::defaultSource:
      return "default";
   }
   BRINDLE_UNREACHABLE();
}

char const* tunnelSourceToEnumString(RsvpLerTunnelSource source) noexcept {
   switch (source) {
   case RsvpLerTunnelSource::unknown:
      return "unknown";
   case RsvpLerTunnelSource::cli:
      return "cli";
   case RsvpLerTunnelSource::mvpn:
      return "mvpn";
   case RsvpLerTunnelSource::frrBypass:
      return "frrBypass";
   case RsvpLerTunnelSource::defaultSource:
      return "default";
   }
   BRINDLE_UNREACHABLE();
}

char const* frrModeToString(FrrMode mode, bool json) noexcept {
   switch (mode) {
   case FrrMode::none:
      return "none";
   case FrrMode::linkProtection:
      return json ? "linkProtection" : "link protection";
   case FrrMode::nodeProtection:
      return json ? "nodeProtection" : "node protection";
   }
   BRINDLE_UNREACHABLE();
}

char const* pathTypeForTunnelState(RsvpLerTunnelState state, std::uint8_t groupId) noexcept {
   if (state != RsvpLerTunnelState::up)
      return "";
   if (groupId == 0)
      return " using primary path";
   BRINDLE_ASSERT(groupId == 1);
   return " using secondary path";
}

char const* lspGroupStateToString(RsvpLerLspGroupState state) noexcept {
   switch (state) {
   case RsvpLerLspGroupState::unknown:
      return "unknown";
   case RsvpLerLspGroupState::establishing:
      return "establishing";
   case RsvpLerLspGroupState::up:
   case RsvpLerLspGroupState::upVerified:
      return "up";
   case RsvpLerLspGroupState::down:
      return "down";
   }
   BRINDLE_UNREACHABLE();
}

char const* lerLspStateToString(RsvpLerLspState state, bool json) noexcept {
   switch (state) {
   case RsvpLerLspState::unknown:
      return "unknown";
   case RsvpLerLspState::establishing:
      return "establishing";
   case RsvpLerLspState::unverified:
      return json ? "unverified" : "establishing (waiting for self-ping)";
   case RsvpLerLspState::up:
   case RsvpLerLspState::upVerified:
      return "up";
   case RsvpLerLspState::down:
      return "down";
   }
   BRINDLE_UNREACHABLE();
}

char const* lspStateToString(RsvpLspState state) noexcept {
   switch (state) {
   case RsvpLspState::unknown:
      return "unknown";
   case RsvpLspState::up:
      return "up";
   case RsvpLspState::down:
      return "down";
   }
   BRINDLE_UNREACHABLE();
}

char const* pathSpecTypeToString(RsvpLerPathSpecType type) noexcept {
   switch (type) {
   case RsvpLerPathSpecType::unknown:
      return "unknown";
   case RsvpLerPathSpecType::explicitPath:
      return "explicit";
   case RsvpLerPathSpecType::dynamicPath:
      return "dynamic";
   }
   BRINDLE_UNREACHABLE();
}

char const* pathChangeTypeToString(RsvpLerP2mpPathChangeType type) noexcept {
   switch (type) {
   case RsvpLerP2mpPathChangeType::added:
      return "new path";
   case RsvpLerP2mpPathChangeType::removed:
      return "path removed";
   case RsvpLerP2mpPathChangeType::notFound:
      return "path not found";
   case RsvpLerP2mpPathChangeType::none:
   case RsvpLerP2mpPathChangeType::changed:
      break;
   }
   return "path changed";
}

char const* pathChangeTypeToEnumString(RsvpLerP2mpPathChangeType type) noexcept {
   switch (type) {
   case RsvpLerP2mpPathChangeType::added:
      return "new";
   case RsvpLerP2mpPathChangeType::removed:
      return "removed";
   case RsvpLerP2mpPathChangeType::notFound:
      return "notFound";
   case RsvpLerP2mpPathChangeType::none:
   case RsvpLerP2mpPathChangeType::changed:
      break;
   }
   return "changed";
}

char const* profileStateToEnumString(RsvpLerTunnelProfileState state) noexcept {
   switch (state) {
   case RsvpLerTunnelProfileState::notSpecified:
      return "notSpecified";
   case RsvpLerTunnelProfileState::notFound:
      return "notFound";
   case RsvpLerTunnelProfileState::wrongType:
      return "wrongType";
   case RsvpLerTunnelProfileState::applied:
      return "applied";
   }
   BRINDLE_UNREACHABLE();
}

char const* getSubTunnelActivePathType(RsvpLerLspGroupId const& groupId) noexcept {
   if (groupId == RsvpLerLspGroupId())
      return "unknown";
   return groupId.groupId == 0 ? "primary" : "secondary";
}

} // namespace Rsvp::Cli
