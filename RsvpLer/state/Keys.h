#pragma once

#include "RsvpLer/state/Enumerations.h"
#include "brindle/String.h"
#include "fathom/String.h"

#include <compare>
#include <cstdint>
#include <iosfwd>
#include <utility>

// The composite keys. Each extends the one before it by one field, so a record's key leads to every record above it:
//
//    RsvpLerTunnelSpecId          name, source      a tunnel
//    RsvpLerSubTunnelConfigId     + subTunnelId     a sub-tunnel
//    RsvpLerMbbTunnelConfigId     + epoch           a make-before-break instance
//    RsvpLerLspGroupId            + groupId         a path alternative: 0 primary (or the tree), 1 secondary
//    RsvpLerLspRequestConfigId    + configId        one LSP that was asked for
//
// They are plain values, cheap to copy (the name is counted). A default key means that there is none. Order is field by
// field in declaration order, numbers by value. Equal keys have equal hashes; hash(seed) covers all fields.
//
// Tables hold them by the million, so each has its field in what the one before it leaves of its last word, where it
// fits. Equality begins with that field, which lies in the key, and ends with the name, which lies elsewhere. isSame(),
// which tunnels, path specifications and sub-tunnels have, tells from the keys alone that two are equal: they share
// their name too. Equal keys need not.

namespace Rsvp {

namespace Impl {

// One round of mixing per field of a key; the tables finish with a mix of their own.
constexpr std::uint32_t mixField(std::uint32_t hash, std::uint32_t field) noexcept {
   std::uint64_t const product = (std::uint64_t{hash} ^ field) * 0x9e3779b97f4a7c15 + field;
   return static_cast<std::uint32_t>(product ^ product >> 32);
}

} // namespace Impl

// What a tunnel, a path specification and a tunnel profile are known by.
struct NameAndSource {
   Fathom::String name;
   RsvpLerTunnelSource source = RsvpLerTunnelSource::unknown;

   NameAndSource() noexcept = default;
   NameAndSource(Fathom::String name_, RsvpLerTunnelSource source_) noexcept
         : name(std::move(name_)), source(source_) {}

   std::uint32_t hash(std::uint32_t seed) const noexcept {
      return Impl::mixField(Impl::mixField(seed, name.hash()), static_cast<std::uint8_t>(source));
   }
   bool isSame(NameAndSource const& other) const noexcept { return source == other.source && name.isSame(other.name); }
   friend bool operator==(NameAndSource const& a, NameAndSource const& b) noexcept {
      return a.source == b.source && a.name == b.name;
   }
   friend std::strong_ordering operator<=>(NameAndSource const&, NameAndSource const&) noexcept = default;
};

// Tunnels of one name and different sources are different tunnels. Text form: <name='tun1'>_<source='1'>.
struct RsvpLerTunnelSpecId : NameAndSource {
   using NameAndSource::NameAndSource;
   static bool isEq(RsvpLerTunnelSpecId const& a, RsvpLerTunnelSpecId const& b) noexcept { return a == b; }
   friend bool operator==(RsvpLerTunnelSpecId const&, RsvpLerTunnelSpecId const&) noexcept = default;
   friend std::strong_ordering operator<=>(RsvpLerTunnelSpecId const&, RsvpLerTunnelSpecId const&) noexcept = default;
};

// Text form as that of a tunnel.
struct RsvpLerPathSpecId : NameAndSource {
   using NameAndSource::NameAndSource;
   static bool isEq(RsvpLerPathSpecId const& a, RsvpLerPathSpecId const& b) noexcept { return a == b; }
   friend bool operator==(RsvpLerPathSpecId const&, RsvpLerPathSpecId const&) noexcept = default;
   friend std::strong_ordering operator<=>(RsvpLerPathSpecId const&, RsvpLerPathSpecId const&) noexcept = default;
};

// The profile that a tunnel asks for. No table is keyed by it.
struct RsvpLerTunnelProfileId : NameAndSource {
   using NameAndSource::NameAndSource;
   static bool isEq(RsvpLerTunnelProfileId const& a, RsvpLerTunnelProfileId const& b) noexcept { return a == b; }
   friend bool operator==(RsvpLerTunnelProfileId const&, RsvpLerTunnelProfileId const&) noexcept = default;
};

// Text form: <the tunnel's>_<subTunnelId=1>.
struct RsvpLerSubTunnelConfigId {
   [[no_unique_address]] RsvpLerTunnelSpecId tunnelSpecId;
   std::uint32_t subTunnelId = 0;

   // The one sub-tunnel that a tunnel runs on while it isn't split; its subTunnelId is 0.
   static RsvpLerSubTunnelConfigId makeNonSplitSubTunnelConfigId(RsvpLerTunnelSpecId const& tunnelSpecId);
   // Whether this names a sub-tunnel of a split tunnel.
   bool isSplit() const noexcept { return subTunnelId != 0; }
   // The name shown for a sub-tunnel: the decimal subTunnelId.
   Brindle::String subTunnelName() const;

   static bool isEq(RsvpLerSubTunnelConfigId const& a, RsvpLerSubTunnelConfigId const& b) noexcept { return a == b; }
   std::uint32_t hash(std::uint32_t seed) const noexcept {
      return Impl::mixField(tunnelSpecId.hash(seed), subTunnelId);
   }
   bool isSame(RsvpLerSubTunnelConfigId const& other) const noexcept {
      return subTunnelId == other.subTunnelId && tunnelSpecId.isSame(other.tunnelSpecId);
   }
   friend bool operator==(RsvpLerSubTunnelConfigId const& a, RsvpLerSubTunnelConfigId const& b) noexcept {
      return a.subTunnelId == b.subTunnelId && a.tunnelSpecId == b.tunnelSpecId;
   }
   friend std::strong_ordering operator<=>(RsvpLerSubTunnelConfigId const&,
                                           RsvpLerSubTunnelConfigId const&) noexcept = default;
};

// Text form: <the sub-tunnel's>_<epoch=1>.
struct RsvpLerMbbTunnelConfigId {
   [[no_unique_address]] RsvpLerSubTunnelConfigId subTunnelConfigId;
   std::uint32_t epoch = 0;

   // Whether any field differs from the default.
   explicit operator bool() const noexcept { return *this != RsvpLerMbbTunnelConfigId(); }

   static bool isEq(RsvpLerMbbTunnelConfigId const& a, RsvpLerMbbTunnelConfigId const& b) noexcept { return a == b; }
   std::uint32_t hash(std::uint32_t seed) const noexcept { return Impl::mixField(subTunnelConfigId.hash(seed), epoch); }
   friend bool operator==(RsvpLerMbbTunnelConfigId const& a, RsvpLerMbbTunnelConfigId const& b) noexcept {
      return a.epoch == b.epoch && a.subTunnelConfigId == b.subTunnelConfigId;
   }
   friend std::strong_ordering operator<=>(RsvpLerMbbTunnelConfigId const&,
                                           RsvpLerMbbTunnelConfigId const&) noexcept = default;
};

// Text form: <the instance's>_<groupId=0>.
struct RsvpLerLspGroupId {
   [[no_unique_address]] RsvpLerMbbTunnelConfigId mbbTunnelConfigId;
   std::uint8_t groupId = 0;

   static bool isEq(RsvpLerLspGroupId const& a, RsvpLerLspGroupId const& b) noexcept { return a == b; }
   std::uint32_t hash(std::uint32_t seed) const noexcept {
      return Impl::mixField(mbbTunnelConfigId.hash(seed), groupId);
   }
   friend bool operator==(RsvpLerLspGroupId const& a, RsvpLerLspGroupId const& b) noexcept {
      return a.groupId == b.groupId && a.mbbTunnelConfigId == b.mbbTunnelConfigId;
   }
   friend std::strong_ordering operator<=>(RsvpLerLspGroupId const&, RsvpLerLspGroupId const&) noexcept = default;
};

// Text form: <the group's>_<configId=1>.
struct RsvpLerLspRequestConfigId {
   [[no_unique_address]] RsvpLerLspGroupId lspGroupId;
   std::uint32_t configId = 0;

   // Whether any field differs from the default.
   explicit operator bool() const noexcept { return *this != RsvpLerLspRequestConfigId(); }

   static bool isEq(RsvpLerLspRequestConfigId const& a, RsvpLerLspRequestConfigId const& b) noexcept { return a == b; }
   std::uint32_t hash(std::uint32_t seed) const noexcept { return Impl::mixField(lspGroupId.hash(seed), configId); }
   friend bool operator==(RsvpLerLspRequestConfigId const& a, RsvpLerLspRequestConfigId const& b) noexcept {
      return a.configId == b.configId && a.lspGroupId == b.lspGroupId;
   }
   friend std::strong_ordering operator<=>(RsvpLerLspRequestConfigId const&,
                                           RsvpLerLspRequestConfigId const&) noexcept = default;
};

// Each writes the key's text form.
std::ostream& operator<<(std::ostream& out, RsvpLerTunnelSpecId const& id);
std::ostream& operator<<(std::ostream& out, RsvpLerPathSpecId const& id);
std::ostream& operator<<(std::ostream& out, RsvpLerSubTunnelConfigId const& id);
std::ostream& operator<<(std::ostream& out, RsvpLerMbbTunnelConfigId const& id);
std::ostream& operator<<(std::ostream& out, RsvpLerLspGroupId const& id);
std::ostream& operator<<(std::ostream& out, RsvpLerLspRequestConfigId const& id);

} // namespace Rsvp
