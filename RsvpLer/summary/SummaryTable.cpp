#include "RsvpLer/summary/SummaryTable.h"

#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/text/RsvpShowUtils.h"

namespace Rsvp::Cli {

void raiseNameWidth(std::uint8_t& width, std::string_view name) noexcept {
   raiseWidth(width, std::min<std::size_t>(name.size(), ShowRsvpLerTunnel::tunnelNameMaxWidth));
}

void raiseBwWidth(std::uint8_t& width, bool& bw1000, std::uint64_t bandwidth) noexcept {
   bw1000 = bw1000 || bandwidth > 1000;
   raiseWidth(width, RsvpShowUtils::bandwidthText(bandwidth, bw1000).size());
}

std::size_t digitCount(std::uint32_t number) noexcept {
   std::size_t digits = 1;
   for (; number >= 10; number /= 10)
      ++digits;
   return digits;
}

void addLeft(scrivo::RendererV2* renderer, std::uint64_t width, std::string_view text) {
   renderer->writeString(Kerf::JustifyLeft<std::string_view>{width, text});
}

void addRight(scrivo::RendererV2* renderer, std::uint64_t width, std::string_view text) {
   renderer->writeString(Kerf::JustifyRight<std::string_view>{width, text});
}

void addRight(scrivo::RendererV2* renderer, std::uint64_t width, std::uint32_t number) {
   renderer->writeString(Kerf::JustifyRight<std::uint32_t>{width, number});
}

void addRule(scrivo::RendererV2* renderer, std::uint64_t width) {
   // The blank is the text and the dashes are the fill, which leaves the gap between two rules.
   renderer->writeString(Kerf::JustifyRight<std::string_view>{width + 1, " ", '-'});
}

void addLastRule(scrivo::RendererV2* renderer, std::uint64_t width) {
   renderer->writeString(Kerf::JustifyRight<std::string_view>{width, "", '-'});
}

void addName(scrivo::RendererV2* renderer, std::uint8_t width, std::string_view name) {
   constexpr std::string_view cut = "... ";
   if (name.size() <= width) {
      renderer->addFrillLeft(std::size_t{width} + 1, name, ' ');
      return;
   }
   std::size_t const shown = width < cut.size() - 1 ? 0 : width - (cut.size() - 1);
   renderer->addFrill(name.substr(0, shown));
   renderer->addFrill(cut);
}

void addIndex(scrivo::RendererV2* renderer, std::uint8_t width, std::uint32_t index) {
   if (index != 0)
      addRight(renderer, width, index);
   else
      addRight(renderer, width, "-");
}

} // namespace Rsvp::Cli
