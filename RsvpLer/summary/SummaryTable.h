#pragma once

#include "RsvpLer/output/RendererV2.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

// What the three summary tables have in common. Each has a sizing pass, which raises the widths of the command object,
// and rows; both take their texts from one producer of cells, so that they can't disagree.

namespace Rsvp::Cli {

// The name at the end of every row: "up", or "up (MBB)" while a replacement runs.
struct StateCell {
   std::string_view word;
   bool mbb = false;

   std::size_t size() const noexcept { return word.size() + (mbb ? mbbMark.size() : 0); }
   void render(scrivo::RendererV2* renderer) const {
      renderer->addFrill(word);
      if (mbb)
         renderer->addFrill(mbbMark);
   }

   static constexpr std::string_view mbbMark = " (MBB)";
};

// A column is never narrower than it was; a width is a byte, so a wider text raises it to 255 and no further.
inline void raiseWidth(std::uint8_t& width, std::size_t length) noexcept {
   constexpr std::size_t widest = std::numeric_limits<std::uint8_t>::max();
   width = static_cast<std::uint8_t>(std::max<std::size_t>(width, std::min(length, widest)));
}

// Raises the column of the names by one name, which counts up to the cap.
void raiseNameWidth(std::uint8_t& width, std::string_view name) noexcept;
// Raises the column of a bandwidth in bits per second. `bw1000` turns true for good above 1000; the text is measured
// with the flag as it stands then, so a row before that may run wider than its column.
void raiseBwWidth(std::uint8_t& width, bool& bw1000, std::uint64_t bandwidth) noexcept;

// The number of decimal digits; 0 has one.
std::size_t digitCount(std::uint32_t number) noexcept;

// Text in a column, without the gap behind it.
void addLeft(scrivo::RendererV2* renderer, std::uint64_t width, std::string_view text);
void addRight(scrivo::RendererV2* renderer, std::uint64_t width, std::string_view text);
void addRight(scrivo::RendererV2* renderer, std::uint64_t width, std::uint32_t number);
// The dashes under a column of that width, and the gap behind them.
void addRule(scrivo::RendererV2* renderer, std::uint64_t width);
// The dashes under the last column, which has no gap.
void addLastRule(scrivo::RendererV2* renderer, std::uint64_t width);

// A name, with the gap behind its column; one that is longer than the column is cut and ends in "... ", gap included.
void addName(scrivo::RendererV2* renderer, std::uint8_t width, std::string_view name);
// The index of a log, or "-" when it is 0.
void addIndex(scrivo::RendererV2* renderer, std::uint8_t width, std::uint32_t index);

} // namespace Rsvp::Cli
