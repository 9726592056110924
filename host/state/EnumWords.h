#pragma once

#include "RsvpLer/state/Enumerations.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace Host {

// How an enumeration is written in a state file: a number up to `highest`, or the word of a value. The words stand in
// the order of the values, from 0; where two values share a word it means the smaller one.
struct EnumWords {
   std::uint8_t highest;
   std::span<std::string_view const> words;
};

template<class Enum>
EnumWords enumWords() noexcept;

template<>
EnumWords enumWords<Rsvp::RsvpSessionType>() noexcept;
template<>
EnumWords enumWords<Rsvp::RsvpLerTunnelState>() noexcept;
template<>
EnumWords enumWords<Rsvp::RsvpLerTunnelSource>() noexcept;
template<>
EnumWords enumWords<Rsvp::RsvpLerLspGroupState>() noexcept;
template<>
EnumWords enumWords<Rsvp::RsvpLerLspState>() noexcept;
template<>
EnumWords enumWords<Rsvp::RsvpLspState>() noexcept;
template<>
EnumWords enumWords<Rsvp::RsvpLerPathSpecType>() noexcept;
template<>
EnumWords enumWords<Rsvp::RsvpLerP2mpPathChangeType>() noexcept;
template<>
EnumWords enumWords<Rsvp::RsvpLerTunnelProfileState>() noexcept;
template<>
EnumWords enumWords<Rsvp::Cli::FrrMode>() noexcept;

} // namespace Host
