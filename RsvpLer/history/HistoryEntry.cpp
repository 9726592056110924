#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/history/EventSentence.h"
#include "RsvpLer/output/RendererV2.h"
#include "RsvpLer/text/TimeText.h"

// One event of a log.
//
//    Wed 2023-04-05 06:07:08.250 CSPF reply for primary path, path found      {"timestamp":1680674828.250000,
//       Path:                                                                  "event":"CSPF reply for ...",
//          10.1.1.2                                                            "hops":["10.1.1.2"]}

namespace Rsvp::Cli {

namespace {

void renderReplyPath(scrivo::RendererV2* renderer, RsvpLerTunnelHistoryEntry const& entry,
                     Brindle::String const& indent) {
   renderer->addText(indent, "   Path:");
   renderer->eol();
   renderer->startJsonList("hops");
   for (Lattice::IpGenAddr const& hop : entry.hops) {
      renderer->addFrill(indent);
      renderer->addText("      ", hop);
      renderer->eol();
      renderer->addJsonKeyValuePair("", hop);
   }
   renderer->endJsonList();
}

} // namespace

void ShowRsvpLerTunnel::renderTunnelHistoryEntry(scrivo::RendererV2* renderer, RsvpLerTunnelHistoryEntry const& entry,
                                                 bool isSubTunnel, RsvpSessionType sessionType,
                                                 Brindle::String const& indent) const {
   RSVP_LER_TRACE();
   Sentence sentence;
   writeEventSentence(sentence, entry, isSubTunnel, sessionType);

   renderer->startJsonDict();
   if (!std::holds_alternative<LerUnknownHistoryData>(entry.data)) {
      renderer->addText(indent, timestampText(entry.timestamp).view());
      renderer->addText(" ", sentence.view());
      renderer->eol();
   }
   renderer->addJsonKeyValuePair("timestamp", entry.timestamp);
   renderer->addJsonKeyValuePair("event", sentence.view());
   if (std::holds_alternative<LerCspfReplyHistoryData>(entry.data) && !entry.hops.empty())
      renderReplyPath(renderer, entry, indent);
   renderer->endJsonDict();
}

} // namespace Rsvp::Cli
