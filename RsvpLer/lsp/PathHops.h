#pragma once

#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/RendererV2.h"
#include "RsvpLer/state/Lookups.h"
#include "lattice/Address.h"

#include <cstddef>
#include <string_view>

namespace Rsvp::Cli {

// How the path is found: "explicit", "dynamic", or "unknown", also with an empty handle.
char const* pathSpecTypeWord(Handle<RsvpLerPathSpecConfig> const& pathSpecConfig);

// The hops of the single path of a P2P request, one to a line at nine blanks; in JSON elements of the list that the
// caller has opened. Nothing with an empty handle.
void renderP2pHops(scrivo::RendererV2* renderer, Handle<RsvpLerTree> const& tree, bool text);

// The hops of one leaf in columns of sixteen, three to a line, the first line behind `firstPrefix` and every other one
// behind `nextPrefix`; the last hop of a line is padded like the others, and a longer hop is written whole. Nothing is
// written in text when there are no hops. In JSON the list "hops", with none too.
//
//          Path: 10.1.0.2        10.2.0.2        10.3.0.2
//                10.0.0.9                                    "hops":["10.1.0.2","10.2.0.2","10.3.0.2","10.0.0.9"]
template<class Hops>
void renderP2mpLeafHops(scrivo::RendererV2* renderer, Hops const& hops, std::string_view firstPrefix,
                        std::string_view nextPrefix, bool text) {
   RSVP_LER_TRACE();
   renderer->startJsonList("hops");
   std::size_t column = 0;
   for (Lattice::IpGenAddr const& hop : hops) {
      renderer->addJsonKeyValuePair("", hop);
      if (!text)
         continue;
      if (column % 3 == 0)
         renderer->addFrill(column == 0 ? firstPrefix : nextPrefix);
      char buffer[Lattice::IpGenAddr::textSize];
      renderer->addFrillLeft(16, {buffer, hop.printToBuffer(buffer, sizeof buffer)}, ' ');
      if (column % 3 == 2)
         renderer->eol();
      ++column;
   }
   renderer->endJsonList();
   if (text && column % 3 != 0)
      renderer->eol();
}

} // namespace Rsvp::Cli
