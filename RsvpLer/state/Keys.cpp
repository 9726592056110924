#include "RsvpLer/state/Keys.h"

#include <ostream>
#include <string>

namespace Rsvp {

namespace {

std::ostream& writeNameAndSource(std::ostream& out, NameAndSource const& id) {
   return out << "<name='" << id.name.view() << "'>_<source='" << unsigned{static_cast<std::uint8_t>(id.source)}
              << "'>";
}

} // namespace

RsvpLerSubTunnelConfigId
RsvpLerSubTunnelConfigId::makeNonSplitSubTunnelConfigId(RsvpLerTunnelSpecId const& tunnelSpecId) {
   return {tunnelSpecId, 0};
}

Brindle::String RsvpLerSubTunnelConfigId::subTunnelName() const {
   return std::to_string(subTunnelId);
}

std::ostream& operator<<(std::ostream& out, RsvpLerTunnelSpecId const& id) {
   return writeNameAndSource(out, id);
}

std::ostream& operator<<(std::ostream& out, RsvpLerPathSpecId const& id) {
   return writeNameAndSource(out, id);
}

std::ostream& operator<<(std::ostream& out, RsvpLerSubTunnelConfigId const& id) {
   return out << id.tunnelSpecId << "_<subTunnelId=" << id.subTunnelId << '>';
}

std::ostream& operator<<(std::ostream& out, RsvpLerMbbTunnelConfigId const& id) {
   return out << id.subTunnelConfigId << "_<epoch=" << id.epoch << '>';
}

std::ostream& operator<<(std::ostream& out, RsvpLerLspGroupId const& id) {
   return out << id.mbbTunnelConfigId << "_<groupId=" << unsigned{id.groupId} << '>';
}

std::ostream& operator<<(std::ostream& out, RsvpLerLspRequestConfigId const& id) {
   return out << id.lspGroupId << "_<configId=" << id.configId << '>';
}

} // namespace Rsvp
