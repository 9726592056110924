#include "host/synth/Network.h"

#include "host/synth/Random.h"

#include <algorithm>

namespace Host::Synth {
namespace {

constexpr Ipv4 address(std::uint32_t a, std::uint32_t b, std::uint32_t c) noexcept {
   return {(10u << 24) | (a << 16) | (b << 8) | c};
}

constexpr std::uint32_t uplinkCore(std::uint32_t edge, std::uint32_t uplink) noexcept {
   return (edge * 7 + uplink * 19) % coreRouterCount;
}

constexpr Ipv4 edgeLink(std::uint32_t edge, std::uint32_t uplink, bool coreSide) noexcept {
   return address(192 + (edge >> 8), edge & 255, uplink * 4 + (coreSide ? 1 : 2));
}

constexpr Ipv4 coreLink(std::uint32_t from, std::uint32_t owner) noexcept {
   return address(128 + std::min(from, owner), std::max(from, owner), owner < from ? 1 : 2);
}

void passCore(Path& path, std::uint32_t core) noexcept {
   auto const end = path.cores.begin() + path.coreCount;
   if (std::find(path.cores.begin(), end, core) == end) {
      path.cores[path.coreCount++] = core;
   }
}

void fillHops(Path& path, std::uint32_t from, std::uint32_t to, std::uint32_t uplink) noexcept {
   path.hops[path.hopCount++] = edgeLink(from, uplink, true);
   for (std::uint32_t i = 1; i < path.coreCount; i++) {
      path.hops[path.hopCount++] = coreLink(path.cores[i - 1], path.cores[i]);
   }
   path.hops[path.hopCount++] = edgeLink(to, uplink, false);
   path.hops[path.hopCount++] = edgeLoopback(to);
}

} // namespace

Ipv4 edgeLoopback(std::uint32_t edge) noexcept {
   return address(edge >> 8, edge & 255, 1);
}

Ipv4 coreLoopback(std::uint32_t core) noexcept {
   return address(127, core, 1);
}

Path pathBetween(std::uint32_t from, std::uint32_t to, std::uint32_t uplink, std::uint64_t draw) noexcept {
   Path path;
   Random random(draw);
   std::uint32_t const last = uplinkCore(to, uplink);
   passCore(path, uplinkCore(from, uplink));
   if (path.cores[0] != last) {
      for (std::uint32_t between = random.below(4); between != 0; between--) {
         std::uint32_t const core = random.below(coreRouterCount);
         if (core != last) {
            passCore(path, core);
         }
      }
      passCore(path, last);
   }
   fillHops(path, from, to, uplink);
   return path;
}

Path leafPath(std::uint32_t from, std::uint32_t to) noexcept {
   Path path;
   std::uint32_t const first = uplinkCore(from, 0);
   std::uint32_t const last = uplinkCore(to, 0);
   passCore(path, first);
   if (first != last) {
      // By way of the first core router of the region, 16 routers, in which the last one stands.
      passCore(path, last / 16 * 16);
      passCore(path, last);
   }
   fillHops(path, from, to, 0);
   return path;
}

} // namespace Host::Synth
