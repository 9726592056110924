#pragma once

#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/lsp/LspIds.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

// What a view is made of. Each family of views (P2P tunnels, P2MP tunnels, sub-tunnels) has one table: a row for each
// section, in calling order, and a column for each variant of the family, in the order of ShowTunnelVariant. A display
// function is the walk of its column.

namespace Rsvp::Cli {

// What a variant does with a section: calls it with `showText` true or false, calls it as a section that has no such
// flag, or leaves it out.
enum class Cell : std::uint8_t { T, F, yes, dash };

// `Pass` is what the sections of one display function share.
template<class Pass, std::size_t variants>
struct Section {
   void (*render)(Pass& pass, bool showText);
   std::array<Cell, variants> cells;
   bool (*condition)(Pass const& pass) = nullptr; // called only where it holds; none means always
};

// Calls the sections of one column from top to bottom.
template<class Pass, std::size_t variants>
void renderColumn(std::span<Section<Pass, variants> const> sections, std::size_t column, Pass& pass) {
   for (auto const& section : sections) {
      Cell const cell = section.cells[column];
      if (cell != Cell::dash && (section.condition == nullptr || section.condition(pass)))
         section.render(pass, cell == Cell::T);
   }
}

// A display function of a tunnel in progress.
struct TunnelPass {
   ShowRsvpLerTunnel& command;
   scrivo::RendererV2* renderer;
   TunnelView const& view;
   ShowTunnelVariant variant;
   bool notSplit; // also true for a tunnel without status
   LspIds lspIds; // of the whole tunnel
};

// Gathers what the sections of a tunnel share.
TunnelPass tunnelPass(ShowRsvpLerTunnel& command, scrivo::RendererV2* renderer, TunnelView const& view,
                      ShowTunnelVariant variant);

// A display function of a sub-tunnel in progress.
struct SubTunnelPass {
   ShowRsvpLerTunnel& command;
   scrivo::RendererV2* renderer;
   SubTunnelView const& view;
   ShowTunnelVariant variant; // of the tunnel
   LspIds lspIds;             // of both instances
};

using P2pSection = Section<TunnelPass, 7>;
using P2mpSection = Section<TunnelPass, 6>;
using SubTunnelSection = Section<SubTunnelPass, 7>;

std::span<P2pSection const> p2pSections() noexcept;
std::span<P2mpSection const> p2mpSections() noexcept;
std::span<SubTunnelSection const> subTunnelSections() noexcept;

} // namespace Rsvp::Cli
