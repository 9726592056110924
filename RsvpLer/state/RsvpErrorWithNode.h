#pragma once

#include "brindle/Node.h"
#include "brindle/String.h"
#include "lattice/Address.h"
#include "vane/OrderedColl.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <set>

namespace Rsvp {

// An RSVP error as it was received, with the node that reported it. Ordered by code, value, node.
struct RsvpErrorWithNode {
   std::uint32_t errorCode = 0;
   std::uint16_t errorValue = 0;
   Lattice::IpGenAddr node;

   // One line, without a line feed: "<code name>: <value name> (<code>/<value>) from <node>", without the value's name
   // when it has none, and "Unknown error (<code>/<value>) from <node>" when the code has none. The two flags belong to
   // callers outside this feature; all calls here pass false, and they change nothing.
   Brindle::String errorStr(bool, bool) const;

   static bool isEq(RsvpErrorWithNode const& a, RsvpErrorWithNode const& b) noexcept { return a == b; }
   friend bool operator==(RsvpErrorWithNode const&, RsvpErrorWithNode const&) noexcept = default;
   friend std::strong_ordering operator<=>(RsvpErrorWithNode const&, RsvpErrorWithNode const&) noexcept = default;
};

// Errors in ascending order, each once. Walked with Vane::orderedWalk, which survives changes on the way.
using RsvpErrors = Vane::OrderedColl<RsvpErrorWithNode, Vane::NoValue>;

// A set of errors on its own, such as the one in which a path block gathers those of all its LSPs. The first dozen
// stand in the object itself. For one thread.
class RsvpErrorWithNodeOrderedSet : public Brindle::Node {
public:
   // Adds the error when present is true, takes it away when it is false.
   void errorIs(RsvpErrorWithNode const& error, bool present);
   // In ascending order.
   std::pmr::set<RsvpErrorWithNode> const& errors() const noexcept { return errors_; }
   std::uint32_t size() const noexcept { return static_cast<std::uint32_t>(errors_.size()); }

private:
   alignas(std::max_align_t) std::byte room_[1024];
   std::pmr::monotonic_buffer_resource memory_{room_, sizeof room_};
   std::pmr::set<RsvpErrorWithNode> errors_{&memory_};
};

} // namespace Rsvp
