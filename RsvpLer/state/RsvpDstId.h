#pragma once

#include "brindle/String.h"
#include "lattice/Address.h"

#include <compare>

namespace Rsvp {

// A leaf of a P2MP tree. Equality and order are those of its address.
struct RsvpDstId {
   Lattice::IpGenAddr address;

   Brindle::String stringValue() const { return address.stringValue(); }
   friend bool operator==(RsvpDstId const&, RsvpDstId const&) noexcept = default;
   friend std::strong_ordering operator<=>(RsvpDstId const&, RsvpDstId const&) noexcept = default;
};

} // namespace Rsvp
