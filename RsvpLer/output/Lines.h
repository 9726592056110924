#pragma once

#include "RsvpLer/output/RendererV2.h"

#include <string_view>

namespace scrivo {

// One whole line of text: the prefix, the value and a line feed. Nothing is written when `showText` is false or the
// format isn't text.
template<class T>
void addLine(RendererV2* renderer, bool showText, std::string_view prefix, T const& value) {
   if (!showText)
      return;
   renderer->addText(prefix, value);
   renderer->eol();
}

} // namespace scrivo
