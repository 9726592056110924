#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/history/EventSentence.h"
#include "RsvpLer/output/RendererV2.h"
#include "RsvpLer/text/EnumText.h"
#include "RsvpLer/text/TimeText.h"

// The CSPF replies of one tree computation, one entry per leaf, folded into one block.
//
//    Wed 2023-04-05 06:07:08.250 CSPF reply, tree found               {"timestamp":1680674828.250000,
//       3 leaves in total; changes:                                    "tree":{
//       Leaf 10.0.0.1: new path                                          "10.0.0.1":{"changeType":"new",
//          10.1.1.1        10.1.1.2        10.1.1.3                                   "hops":["10.1.1.1",...]},
//          10.1.1.4
//       Leaf 10.0.0.2: path removed                                      "10.0.0.2":{"changeType":"removed"}},
//                                                                      "event":"CSPF reply, tree found; 3 leaves in
//                                                                      total"}

namespace Rsvp::Cli {

namespace {

// Ends in a bad variant access for an entry that is no reply.
LerCspfReplyHistoryData const& replyOf(RsvpLerTunnelHistoryEntry const& entry) {
   return std::get<LerCspfReplyHistoryData>(entry.data);
}

bool hasHops(RsvpLerP2mpPathChangeType changeType) {
   return changeType == RsvpLerP2mpPathChangeType::added || changeType == RsvpLerP2mpPathChangeType::changed;
}

// Three hops a row, the last one padded like the others.
void renderLeafHops(scrivo::RendererV2* renderer, RsvpLerTunnelHistoryEntry const& entry,
                    Brindle::String const& indent) {
   renderer->startJsonList("hops");
   std::size_t column = 0;
   for (Lattice::IpGenAddr const& hop : entry.hops) {
      char buffer[Lattice::IpGenAddr::textSize];
      std::string_view const text(buffer, hop.printToBuffer(buffer, sizeof buffer));
      renderer->addJsonKeyValuePair("", text);
      if (column % 3 == 0)
         renderer->addFrill(indent);
      renderer->addFrillLeft(16, text, ' ');
      if (column % 3 == 2)
         renderer->eol();
      ++column;
   }
   renderer->endJsonList();
   if (column % 3 != 0)
      renderer->eol();
}

void renderLeaf(scrivo::RendererV2* renderer, RsvpLerTunnelHistoryEntry const& entry, Brindle::String const& indent) {
   LerCspfReplyHistoryData const& reply = replyOf(entry);
   char buffer[Lattice::IpGenAddr::textSize];
   std::string_view const leaf(buffer, reply.destination.printToBuffer(buffer, sizeof buffer));
   renderer->startJsonDict(leaf);
   renderer->addFrill(indent);
   renderer->addText("Leaf ", leaf);
   renderer->addText(": ", pathChangeTypeToString(reply.changeType));
   renderer->eol();
   renderer->addJsonKeyValuePair("changeType", pathChangeTypeToEnumString(reply.changeType));
   // An unchanged leaf among changed ones reads as changed and yet has no hops.
   if (hasHops(reply.changeType))
      renderLeafHops(renderer, entry, indent + "   ");
   renderer->endJsonDict();
}

} // namespace

void ShowRsvpLerTunnel::renderP2mpCspfReplyHistoryEntry(scrivo::RendererV2* renderer,
                                                        std::vector<RsvpLerTunnelHistoryEntry> const& replies,
                                                        Brindle::String const& indent) const {
   RSVP_LER_TRACE();
   Brindle::Duration const timestamp = replies.front().timestamp;
   LerCspfReplyHistoryData const& first = replyOf(replies.front());
   // The lowest leaf decides for the whole group, whatever the other entries say.
   bool const unchanged = first.changeType == RsvpLerP2mpPathChangeType::none;
   Brindle::String const leafIndent = indent + "   ";

   Sentence sentence;
   sentence.add(first.totalLeaves != 0 ? "CSPF reply, tree found" : "CSPF reply, tree not found");
   if (unchanged && first.count > 1) {
      sentence.add(" (");
      sentence.add(first.count);
      sentence.add(" times)");
   }

   renderer->startJsonDict();
   renderer->addText(indent, timestampText(timestamp).view());
   renderer->addText(" ", sentence.view());
   renderer->eol();
   renderer->addText(leafIndent, first.totalLeaves);
   renderer->addFrill(" leaves in total; ");
   sentence.add("; ");
   sentence.add(first.totalLeaves);
   sentence.add(" leaves in total");
   renderer->addJsonKeyValuePair("timestamp", timestamp);
   if (unchanged) {
      renderer->addFrill("no changes");
      renderer->eol();
      sentence.add("; no changes");
   } else {
      renderer->addFrill("changes:");
      renderer->eol();
      renderer->startJsonDict("tree");
      for (RsvpLerTunnelHistoryEntry const& entry : replies)
         renderLeaf(renderer, entry, leafIndent);
      renderer->endJsonDict();
   }
   renderer->addJsonKeyValuePair("event", sentence.view());
   renderer->endJsonDict();
}

} // namespace Rsvp::Cli
