#pragma once

#include "RsvpLer/state/Keys.h"
#include "RsvpLer/state/RsvpErrorWithNode.h"
#include "brindle/Duration.h"
#include "brindle/Ptr.h"
#include "cask/TristateU32.h"
#include "fathom/Vector.h"
#include "host/state/EnumWords.h"
#include "host/state/JsonReader.h"
#include "lattice/Address.h"
#include "lattice/IntfId.h"
#include "vane/FlatMap.h"
#include "vane/Optional.h"

#include <cstdint>
#include <type_traits>
#include <utility>

// decode(in, value, target): reads a value of the file into a field, by the field's type. Whatever doesn't fit throws
// StateError and leaves the target in any state.

namespace Host {

void decode(JsonReader& in, JsonValue& value, bool& target);
void decode(JsonReader& in, JsonValue& value, std::uint8_t& target);
void decode(JsonReader& in, JsonValue& value, std::uint16_t& target);
void decode(JsonReader& in, JsonValue& value, std::uint32_t& target);
void decode(JsonReader& in, JsonValue& value, std::uint64_t& target);
// Seconds, with a fraction; below 0 too.
void decode(JsonReader& in, JsonValue& value, Brindle::Duration& target);
void decode(JsonReader& in, JsonValue& value, Fathom::String& target);
void decode(JsonReader& in, JsonValue& value, Lattice::IntfId& target);
// The text of either family, "" for the default address.
void decode(JsonReader& in, JsonValue& value, Lattice::IpGenAddr& target);
// Dotted decimal, "" for 0.0.0.0.
void decode(JsonReader& in, JsonValue& value, Lattice::IpAddr& target);
// null is not set.
void decode(JsonReader& in, JsonValue& value, Cask::TristateU32& target);

// A key is one flat object; what is left out of it has the default of the key.
void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpLerTunnelSpecId& target);
void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpLerPathSpecId& target);
void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpLerTunnelProfileId& target);
void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpLerSubTunnelConfigId& target);
void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpLerMbbTunnelConfigId& target);
void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpLerLspGroupId& target);
void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpLerLspRequestConfigId& target);

void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpErrorWithNode& target);
// An array; an error that stands in it twice counts once.
void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpErrors& target);
// An array; an address that stands in it twice counts once.
void decode(JsonReader& in, JsonValue& value, Vane::FlatSet<Lattice::IpGenAddr>& target);
void decode(JsonReader& in, JsonValue& value, Fathom::Vector<Lattice::IpGenAddr>& target);

// The number of an enumeration's value, or its word.
std::uint8_t decodeEnum(JsonReader& in, JsonValue& value, EnumWords const& words);
template<class Enum>
requires std::is_enum_v<Enum> &&(sizeof(Enum) == 1) void decode(JsonReader& in, JsonValue& value, Enum& target) {
   target = static_cast<Enum>(decodeEnum(in, value, enumWords<Enum>()));
}

// null is not set.
template<class T>
void decode(JsonReader& in, JsonValue& value, Vane::Optional<T>& target) {
   if (in.isNull(value))
      return;
   T present{};
   decode(in, value, present);
   target = present;
}

// A record or table behind a handle; null is the empty handle.
template<class T>
void decode(JsonReader& in, JsonValue& value, Brindle::Ptr<T>& target) {
   if (in.isNull(value))
      return;
   auto made = Brindle::makeNode<std::remove_const_t<T>>();
   decode(in, value, *made);
   target = std::move(made);
}

} // namespace Host
