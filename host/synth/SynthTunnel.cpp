#include "host/synth/SynthTunnel.h"

#include "host/synth/Random.h"

namespace Host::Synth {
namespace {

constexpr std::uint32_t headEndOf(std::uint64_t seed) noexcept {
   return static_cast<std::uint32_t>(1 + seed % edgeRouterCount);
}

// The edge routers other than the head end, counted from 0 around a circle.
constexpr std::uint32_t peer(std::uint32_t headEnd, std::uint64_t position) noexcept {
   auto const edge = static_cast<std::uint32_t>(1 + position % (edgeRouterCount - 1));
   return edge < headEnd ? edge : edge + 1;
}

constexpr Kind kindOf(std::uint64_t draw) noexcept {
   std::uint32_t const twentieth = Random(draw).below(20);
   return twentieth == 0 ? Kind::p2mp : twentieth <= 2 ? Kind::split : Kind::plain;
}

// pe12-pe340-7 and, for a tree, pe12-tree-4711: no two tunnels of a state have the same.
KeyText keyOf(Kind kind, std::uint64_t draw, std::uint32_t headEnd, std::uint32_t destination,
              std::uint64_t number) noexcept {
   KeyText key;
   key.append("{\"name\":\"pe").append(headEnd);
   if (kind == Kind::p2mp) {
      key.append("-tree-").append(number + 1);
   } else {
      key.append("-pe").append(destination).append("-").append(1 + number / (edgeRouterCount - 1));
   }
   bool const fromMvpn = kind == Kind::p2mp && draw % 2 == 0;
   return key.append(fromMvpn ? "\",\"source\":\"mvpn\"" : "\",\"source\":\"cli\"");
}

std::uint64_t drawBandwidth(Random& random) noexcept {
   constexpr std::array<std::uint32_t, 8> megabits = {0, 10, 25, 50, 100, 250, 400, 1000};
   return megabits[random.below(8)] * megabit;
}

Health drawHealth(Random& random, bool hasSecondary) noexcept {
   std::uint32_t const percent = random.below(100);
   if (percent < 4) {
      return Health::down;
   }
   if (percent < 9 && hasSecondary) {
      return Health::onSecondary;
   }
   if (percent < 14) {
      return Health::newInstance;
   }
   return percent < 19 ? Health::newRequest : Health::steady;
}

} // namespace

SynthTunnel::SynthTunnel(std::uint64_t seed, std::uint64_t number) noexcept
      : kind(kindOf(mixed(mixed(seed) + number))), index(static_cast<std::uint32_t>(number + 1)),
        headEnd(headEndOf(seed)), destination(peer(headEnd, number)), draw(mixed(mixed(seed) + number)),
        key(keyOf(kind, draw, headEnd, destination, number)) {
   Random random(mixed(draw));
   configuredOnly = random.oneIn(100);
   hasSecondary = !p2mp() && !random.oneIn(5);
   preSignaled = hasSecondary && !split() && !random.oneIn(4);
   autoBandwidth = !p2mp() && random.oneIn(5);
   explicitPath = random.oneIn(2);
   profile = random.oneIn(4);
   metricFromIgp = random.oneIn(3);
   colored = random.oneIn(2);
   drawSubTunnels(random.next());
   if (p2mp()) {
      drawLeaves(random.next());
   }
   flapping = random.oneIn(10) && kind == Kind::plain && !hasSecondary && subTunnels[0].health == Health::steady;
   if (flapping) {
      subTunnels[0].replacements = 0;
   }
   up = false;
   for (SubTunnel const& subTunnel : *this) {
      up = up || subTunnel.up();
      bandwidth += subTunnel.heldBandwidth();
   }
}

void SynthTunnel::drawSubTunnels(std::uint64_t start) noexcept {
   Random random(start);
   subTunnelCount = split() ? 2 + random.below(5) : 1;
   for (std::uint32_t i = 0; i < subTunnelCount; i++) {
      SubTunnel& subTunnel = subTunnels[i];
      subTunnel.id = split() ? i + 1 : 0;
      subTunnel.index = index * 8 + i;
      subTunnel.health = drawHealth(random, hasSecondary);
      subTunnel.secondaryGroup = preSignaled || subTunnel.health == Health::onSecondary;
      subTunnel.replacements = random.below(3);
      subTunnel.bandwidth = drawBandwidth(random);
      subTunnel.nextBandwidth = subTunnel.bandwidth + 5 * megabit;
      subTunnel.draw = random.next();
   }
}

void SynthTunnel::drawLeaves(std::uint64_t start) noexcept {
   Random random(start);
   leafCount = 2 + random.below(11);
   for (std::uint32_t i = 0; i < leafCount; i++) {
      // A step that has no divisor in common with the number of peers meets each of them once.
      leaves[i].edge = peer(headEnd, destination + i * 83u);
      leaves[i].up = subTunnels[0].up() && !random.oneIn(20);
   }
   leaves[leafCount - 1].removing = random.oneIn(10);
   leaves[0].withoutPath = random.oneIn(10);
   if (leaves[0].withoutPath) {
      leaves[0].up = false;
   }
}

Path SynthTunnel::path(SubTunnel const& subTunnel, std::uint32_t group, std::uint32_t version) const noexcept {
   return pathBetween(headEnd, destination, group, mixed(subTunnel.draw + group * 1000003u + version));
}

} // namespace Host::Synth
