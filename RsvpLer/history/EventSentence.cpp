#include "RsvpLer/history/EventSentence.h"

#include "RsvpLer/text/EnumText.h"
#include "RsvpLer/text/Rates.h"
#include "RsvpLer/text/RsvpShowUtils.h"

namespace Rsvp::Cli {

namespace {

// One overload for each kind of event, in the order of the alternatives.
class SentenceWriter {
public:
   SentenceWriter(Sentence& sentence, RsvpLerTunnelHistoryEntry const& entry, bool isSubTunnel,
                  RsvpSessionType sessionType)
         : sentence_(sentence), entry_(entry), isSubTunnel_(isSubTunnel), isP2p_(sessionType == RsvpSessionType::p2p) {}

   void operator()(LerUnknownHistoryData const&) const {}

   void operator()(LerAgentRestartHistoryData const&) const {
      add("=== RsvpTunnel agent restarted; history logging resumed ===");
   }

   void operator()(LerCreationHistoryData const&) const {
      add(isSubTunnel_ ? "Sub tunnel" : "Tunnel");
      add(" created");
   }

   void operator()(LerTunnelStateHistoryData const& event) const {
      add("State change: ");
      add(tunnelStateToString(event.state));
      if (event.splitBw)
         addSubTunnelsInUse(event);
      else if (isP2p_)
         add(pathTypeForTunnelState(event.state, event.groupId));
   }

   void operator()(LerBandwidthHistoryData const& event) const {
      add("Bandwidth change: ");
      addBandwidth(event.bandwidth);
   }

   void operator()(LerBandwidthConfigHistoryData const& event) const {
      add(event.autoBw ? "Auto bandwidth change: " : "Bandwidth configuration change: ");
      addBandwidth(event.bandwidth);
   }

   void operator()(LerLspAddHistoryData const& event) const {
      addLsp(event.lspId);
      add(" added");
      if (event.replacedLspId.hasValue()) {
         add(" (MBB, replacing LSP ID ");
         sentence_.add(event.replacedLspId.value());
         add(")");
      }
   }

   void operator()(LerLspDelHistoryData const& event) const {
      addLsp(event.lspId);
      add(" removed");
   }

   void operator()(LerLspInUseHistoryData const& event) const {
      addLsp(event.lspId);
      add(" in use");
      if (event.replacedLspId.hasValue()) {
         add(", replaced LSP ID ");
         sentence_.add(event.replacedLspId.value());
      }
   }

   void operator()(LerLspNoLongerInUseHistoryData const& event) const {
      addLsp(event.lspId);
      add(" no longer in use");
   }

   void operator()(LerLspStateHistoryData const& event) const {
      addLsp(event.lspId);
      add(" state change: ");
      add(lerLspStateToString(event.state, false));
   }

   void operator()(LerLspErrorHistoryData const& event) const {
      addLsp(event.lspId);
      add(" error: ");
      add(event.error.errorStr(false, false));
   }

   void operator()(LerCspfQueryHistoryData const& event) const {
      add("CSPF query");
      if (isP2p_) {
         add(" on ");
         addPath(event.groupId);
      }
      addTimes(event.count);
   }

   void operator()(LerCspfReplyHistoryData const& event) const {
      add("CSPF reply for ");
      addPath(event.groupId);
      add(entry_.hops.empty() ? ", path not found" : ", path found");
      addTimes(event.count);
   }

   void operator()(LerP2mpDestinationAddedHistoryData const& event) const {
      add("Destination added: ");
      addAddress(event.destination);
   }

   void operator()(LerP2mpDestinationRemovedHistoryData const& event) const {
      add("Destination removed: ");
      addAddress(event.destination);
   }

   void operator()(LerP2mpLeafStateHistoryData const& event) const {
      add("Leaf ");
      addAddress(event.destination);
      add(" state changed: ");
      add(lspStateToString(event.state));
   }

private:
   void add(std::string_view text) const { sentence_.add(text); }

   // Looks at the state and not at the kind of session.
   void addSubTunnelsInUse(LerTunnelStateHistoryData const& event) const {
      if (event.state != RsvpLerTunnelState::up)
         return;
      add(" using ");
      sentence_.add(event.subTunnelCount);
      add(event.subTunnelCount == 1 ? " sub tunnel" : " sub tunnels");
   }

   // An LSP without an id reads as 0.
   void addLsp(OptionalLspId lspId) const {
      add("LSP ID ");
      sentence_.add(lspId.valueOr(0));
   }

   void addPath(std::uint8_t groupId) const { add(groupId == 0 ? "primary path" : "secondary path"); }

   void addTimes(std::uint32_t count) const {
      if (count <= 1)
         return;
      add(" (");
      sentence_.add(count);
      add(" times)");
   }

   void addBandwidth(std::uint64_t bytesPerSecond) const {
      add(RsvpShowUtils::bandwidthText(bitsPerSecond(bytesPerSecond), false).view());
   }

   void addAddress(Lattice::IpGenAddr const& address) const {
      char text[Lattice::IpGenAddr::textSize];
      add({text, address.printToBuffer(text, sizeof text)});
   }

   Sentence& sentence_;
   RsvpLerTunnelHistoryEntry const& entry_;
   bool isSubTunnel_;
   bool isP2p_;
};

} // namespace

void writeEventSentence(Sentence& sentence, RsvpLerTunnelHistoryEntry const& entry, bool isSubTunnel,
                        RsvpSessionType sessionType) {
   if (!entry.data.valueless_by_exception())
      std::visit(SentenceWriter(sentence, entry, isSubTunnel, sessionType), entry.data);
}

} // namespace Rsvp::Cli
