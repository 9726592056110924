#pragma once

#include "host/synth/KeyText.h"
#include "host/synth/Network.h"

#include <array>
#include <cstdint>
#include <string_view>

// The facts of one tunnel of a synthetic state, from which the rows of all tables are written. They depend on the seed
// and the tunnel's number alone, so that every table can be written in a pass of its own without remembering anything.

namespace Host::Synth {

// Bytes per second of 1 Mbit/s.
inline constexpr std::uint64_t megabit = 125000;

// The id of the LSP on the primary path after so many replacements. 2 is that of the secondary path.
constexpr std::uint32_t lspIdAfter(std::uint32_t replacements) noexcept {
   return replacements == 0 ? 1 : 2 + replacements;
}

enum class Kind : std::uint8_t { plain, split, p2mp };

enum class Health : std::uint8_t {
   steady,
   down,
   onSecondary, // the primary path is down
   newInstance, // another bandwidth is being set up beside the old one
   newRequest   // another path is being set up beside the old one
};

// A sub-tunnel; of a tunnel that isn't split, the one that it runs on.
struct SubTunnel {
   std::uint32_t id = 0; // 0 unless the tunnel is split
   Health health = Health::steady;
   bool secondaryGroup = false;     // the secondary path has an LSP group
   std::uint32_t replacements = 0;  // that are over
   std::uint64_t bandwidth = 0;     // of the active instance, bytes per second
   std::uint64_t nextBandwidth = 0; // of the instance that replaces it
   std::uint64_t draw = 0;          // what its paths and errors are drawn from
   std::uint32_t index = 0;         // of its log and session

   bool up() const noexcept { return health != Health::down; }
   bool primaryDown() const noexcept { return health == Health::down || health == Health::onSecondary; }
   std::uint64_t heldBandwidth() const noexcept { return up() ? bandwidth : 0; }
   std::uint32_t epoch() const noexcept { return 1 + replacements; }
   std::uint32_t primaryLspId() const noexcept { return lspIdAfter(replacements); }
   std::uint32_t nextLspId() const noexcept { return lspIdAfter(replacements + 1); }
};

struct Leaf {
   std::uint32_t edge = 0; // the edge router
   bool up = true;
   bool removing = false; // it has left the tunnel, and the signalling still knows it
   bool withoutPath = false;
};

struct SynthTunnel {
   SynthTunnel(std::uint64_t seed, std::uint64_t number) noexcept;

   Kind kind = Kind::plain;
   bool configuredOnly = false; // it has no status yet
   bool flapping = false;       // its log is full of ups and downs
   bool hasSecondary = false;
   bool preSignaled = false; // the secondary path
   bool autoBandwidth = false;
   bool explicitPath = false;
   bool profile = false;
   bool metricFromIgp = false;
   bool colored = false;
   bool up = true;

   std::uint32_t index = 0;       // of its log: its number plus 1
   std::uint32_t headEnd = 0;     // edge router
   std::uint32_t destination = 0; // edge router
   std::uint64_t draw = 0;        // for what no field tells
   std::uint64_t bandwidth = 0;   // bytes per second, the sum over the sub-tunnels
   KeyText key;

   // Those of a P2MP tunnel: one sub-tunnel that carries the tree, and leaves.
   std::array<SubTunnel, 6> subTunnels;
   std::uint32_t subTunnelCount = 0;
   std::array<Leaf, 12> leaves;
   std::uint32_t leafCount = 0;

   SubTunnel const* begin() const noexcept { return subTunnels.data(); }
   SubTunnel const* end() const noexcept { return subTunnels.data() + subTunnelCount; }
   bool p2mp() const noexcept { return kind == Kind::p2mp; }
   bool split() const noexcept { return kind == Kind::split; }
   // The path of a group; `version` is 1 for the first path and one more for each that replaced it.
   Path path(SubTunnel const& subTunnel, std::uint32_t group, std::uint32_t version) const noexcept;

private:
   void drawSubTunnels(std::uint64_t start) noexcept;
   void drawLeaves(std::uint64_t start) noexcept;
};

} // namespace Host::Synth
