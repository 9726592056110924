#pragma once

#include "brindle/String.h"
#include "fathom/String.h"

namespace Lattice {

// An interface, known by its name. The default id has an empty name and means none.
class IntfId {
public:
   IntfId() noexcept = default;
   explicit IntfId(Fathom::String name) noexcept : name_(std::move(name)) {}

   Brindle::String stringValue() const { return Brindle::String(name_.view()); }
   // The same text in place; it lives as long as the id.
   Fathom::String const& name() const noexcept { return name_; }

   friend bool operator==(IntfId const&, IntfId const&) noexcept = default;

private:
   Fathom::String name_;
};

} // namespace Lattice
