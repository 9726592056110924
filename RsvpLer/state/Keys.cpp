#include "RsvpLer/state/Keys.h"

#include <ostream>
#include <string>

namespace Rsvp {

namespace {

// One round of mixing per field; the tables finish with a mix of their own.
constexpr std::uint32_t mix(std::uint32_t hash, std::uint32_t field) noexcept {
   std::uint64_t const product = (std::uint64_t{hash} ^ field) * 0x9e3779b97f4a7c15 + field;
   return static_cast<std::uint32_t>(product ^ product >> 32);
}

std::ostream& writeNameAndSource(std::ostream& out, NameAndSource const& id) {
   return out << "<name='" << id.name.view() << "'>_<source='" << unsigned{static_cast<std::uint8_t>(id.source)}
              << "'>";
}

} // namespace

std::uint32_t NameAndSource::hash(std::uint32_t seed) const noexcept {
   return mix(mix(seed, name.hash()), static_cast<std::uint8_t>(source));
}

RsvpLerSubTunnelConfigId
RsvpLerSubTunnelConfigId::makeNonSplitSubTunnelConfigId(RsvpLerTunnelSpecId const& tunnelSpecId) {
   return {tunnelSpecId, 0};
}

Brindle::String RsvpLerSubTunnelConfigId::subTunnelName() const {
   return std::to_string(subTunnelId);
}

std::uint32_t RsvpLerSubTunnelConfigId::hash(std::uint32_t seed) const noexcept {
   return mix(tunnelSpecId.hash(seed), subTunnelId);
}

RsvpLerMbbTunnelConfigId::operator bool() const noexcept {
   return *this != RsvpLerMbbTunnelConfigId();
}

std::uint32_t RsvpLerMbbTunnelConfigId::hash(std::uint32_t seed) const noexcept {
   return mix(subTunnelConfigId.hash(seed), epoch);
}

std::uint32_t RsvpLerLspGroupId::hash(std::uint32_t seed) const noexcept {
   return mix(mbbTunnelConfigId.hash(seed), groupId);
}

RsvpLerLspRequestConfigId::operator bool() const noexcept {
   return *this != RsvpLerLspRequestConfigId();
}

std::uint32_t RsvpLerLspRequestConfigId::hash(std::uint32_t seed) const noexcept {
   return mix(lspGroupId.hash(seed), configId);
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
