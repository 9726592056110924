#include "RsvpLer/lsp/PathHops.h"

#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/Lines.h"
#include "RsvpLer/text/EnumText.h"

// The path of a P2P group.
//
//       Path (explicit):                         "specType":"explicit",
//          10.1.1.2                              "hops":["10.1.1.2",
//          10.0.0.9                                      "10.0.0.9"]

namespace Rsvp::Cli {

char const* pathSpecTypeWord(Handle<RsvpLerPathSpecConfig> const& pathSpecConfig) {
   return pathSpecTypeToString(pathSpecConfig ? pathSpecConfig->pathSpecType : RsvpLerPathSpecType::unknown);
}

void renderP2pHops(scrivo::RendererV2* renderer, Handle<RsvpLerTree> const& tree, bool text) {
   RSVP_LER_TRACE();
   RsvpPathWithVersion const path = tree ? tree->p2pPath() : RsvpPathWithVersion(0);
   for (Lattice::IpGenAddr const& hop : path.hops) {
      addLine(renderer, text, "         ", hop);
      renderer->addJsonKeyValuePair("", hop);
   }
}

void ShowRsvpLerTunnel::renderLspGroupHops(scrivo::RendererV2* renderer,
                                           Handle<RsvpLerPathSpecConfig> const& pathSpecConfig,
                                           Handle<RsvpLerLspGroupStatus> const& group, bool text) const {
   RSVP_LER_TRACE();
   char const* const typeWord = pathSpecTypeWord(pathSpecConfig);
   renderer->addJsonKeyValuePair("specType", typeWord);
   renderer->startJsonList("hops");
   if (group) {
      if (text) {
         renderer->addText("      Path (", typeWord);
         renderer->addFrill("):\n");
      }
      // The path of a pending request isn't shown here.
      if (auto const request = getLspRequestConfig(group->activeLspRequestConfigId))
         renderP2pHops(renderer, request->tree, text);
   }
   renderer->endJsonList();
}

} // namespace Rsvp::Cli
