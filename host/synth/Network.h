#pragma once

#include <array>
#include <cstdint>

// The network of a synthetic state: 1000 edge routers, numbered from 1, around a core of 64, numbered from 0, in which
// every two are linked. An edge router has two uplinks, 0 and 1, to two different core routers.

namespace Host::Synth {

struct Ipv4 {
   std::uint32_t bits;
};

inline constexpr std::uint32_t edgeRouterCount = 1000;
inline constexpr std::uint32_t coreRouterCount = 64;

// The loopback of an edge router: 10.(0 to 3).x.1.
Ipv4 edgeLoopback(std::uint32_t edge) noexcept;
// The loopback of a core router: 10.127.x.1.
Ipv4 coreLoopback(std::uint32_t core) noexcept;

// The hops of a path: the address at which it enters each router, and the loopback of the last.
struct Path {
   std::array<Ipv4, 7> hops;
   std::array<std::uint32_t, 5> cores; // the core routers on the way
   std::uint32_t hopCount = 0;
   std::uint32_t coreCount = 0;

   Ipv4 const* begin() const noexcept { return hops.data(); }
   Ipv4 const* end() const noexcept { return hops.data() + hopCount; }
};

// A path of 3 to 7 hops that leaves `from` and enters `to` on the uplink (0 or 1); `draw` chooses among many.
Path pathBetween(std::uint32_t from, std::uint32_t to, std::uint32_t uplink, std::uint64_t draw) noexcept;

// The path of a leaf, of 3 to 5 hops, on uplink 0. All paths from one router form a tree.
Path leafPath(std::uint32_t from, std::uint32_t to) noexcept;

} // namespace Host::Synth
