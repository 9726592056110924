#include "host/state/EnumWords.h"

#include <array>

namespace Host {

namespace {

template<std::size_t N>
using Words = std::array<std::string_view, N>;

// For an enumeration without values beyond its words.
template<std::size_t N>
constexpr EnumWords closed(Words<N> const& words) noexcept {
   return {static_cast<std::uint8_t>(N - 1), words};
}

// For one that may hold any byte.
template<std::size_t N>
constexpr EnumWords open(Words<N> const& words) noexcept {
   return {255, words};
}

constexpr Words<2> sessionTypes{"p2p", "p2mp"};
constexpr Words<3> tunnelStates{"unknown", "down", "up"};
constexpr Words<5> tunnelSources{"unknown", "cli", "mvpn", "frrBypass", "default"};
constexpr Words<5> lspGroupStates{"unknown", "establishing", "up", "up", "down"};
constexpr Words<6> lerLspStates{"unknown", "establishing", "unverified", "up", "up", "down"};
constexpr Words<3> lspStates{"unknown", "up", "down"};
constexpr Words<3> pathSpecTypes{"unknown", "explicit", "dynamic"};
constexpr Words<5> changeTypes{"none", "new", "changed", "removed", "notFound"};
constexpr Words<4> profileStates{"notSpecified", "notFound", "wrongType", "applied"};
constexpr Words<3> frrModes{"none", "linkProtection", "nodeProtection"};

} // namespace

template<>
EnumWords enumWords<Rsvp::RsvpSessionType>() noexcept {
   return open(sessionTypes);
}
template<>
EnumWords enumWords<Rsvp::RsvpLerTunnelState>() noexcept {
   return closed(tunnelStates);
}
template<>
EnumWords enumWords<Rsvp::RsvpLerTunnelSource>() noexcept {
   return closed(tunnelSources);
}
template<>
EnumWords enumWords<Rsvp::RsvpLerLspGroupState>() noexcept {
   return closed(lspGroupStates);
}
template<>
EnumWords enumWords<Rsvp::RsvpLerLspState>() noexcept {
   return closed(lerLspStates);
}
template<>
EnumWords enumWords<Rsvp::RsvpLspState>() noexcept {
   return closed(lspStates);
}
template<>
EnumWords enumWords<Rsvp::RsvpLerPathSpecType>() noexcept {
   return closed(pathSpecTypes);
}
template<>
EnumWords enumWords<Rsvp::RsvpLerP2mpPathChangeType>() noexcept {
   return open(changeTypes);
}
template<>
EnumWords enumWords<Rsvp::RsvpLerTunnelProfileState>() noexcept {
   return closed(profileStates);
}
template<>
EnumWords enumWords<Rsvp::Cli::FrrMode>() noexcept {
   return closed(frrModes);
}

} // namespace Host
