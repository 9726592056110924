#pragma once

#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/output/RendererV2.h"
#include "tests/support/MemoryBuffer.h"

#include <functional>
#include <string>
#include <utility>

namespace Tests {

// Keys of tests: short to write, one field more each.
inline Rsvp::RsvpLerTunnelSpecId tunnelId(std::string_view name,
                                          Rsvp::RsvpLerTunnelSource source = Rsvp::RsvpLerTunnelSource::cli) {
   return {Fathom::String(name), source};
}
inline Rsvp::RsvpLerSubTunnelConfigId subTunnelId(std::string_view name, std::uint32_t subTunnel = 0) {
   return {tunnelId(name), subTunnel};
}
inline Rsvp::RsvpLerMbbTunnelConfigId mbbId(std::string_view name, std::uint32_t epoch = 1,
                                            std::uint32_t subTunnel = 0) {
   return {subTunnelId(name, subTunnel), epoch};
}
inline Rsvp::RsvpLerLspGroupId groupId(std::string_view name, std::uint8_t group = 0, std::uint32_t epoch = 1,
                                       std::uint32_t subTunnel = 0) {
   return {mbbId(name, epoch, subTunnel), group};
}
inline Rsvp::RsvpLerLspRequestConfigId requestId(std::string_view name, std::uint32_t config = 1,
                                                 std::uint8_t group = 0, std::uint32_t epoch = 1,
                                                 std::uint32_t subTunnel = 0) {
   return {groupId(name, group, epoch, subTunnel), config};
}
inline Rsvp::RsvpLerPathSpecId pathSpecId(std::string_view name) {
   return {Fathom::String(name), Rsvp::RsvpLerTunnelSource::cli};
}
// Ends the test program for a text that is no address.
inline Lattice::IpGenAddr address(std::string_view text) {
   return Lattice::IpGenAddr::parse(text).value();
}
inline Fathom::Vector<Lattice::IpGenAddr> hops(std::initializer_list<std::string_view> texts) {
   std::vector<Lattice::IpGenAddr> addresses;
   for (std::string_view text : texts)
      addresses.push_back(address(text));
   return Fathom::Vector<Lattice::IpGenAddr>(addresses);
}

// What a test makes of a new record.
template<class Record>
using Edit = std::function<void(Record&)>;

// A router's state, in which every table exists and is empty until a test puts something in. Each operation that is
// named for a record stores a new record under the key, with the key field filled in and whatever `edit` does to it.
struct Router {
   Router();
   Router(Router&&) noexcept;
   ~Router();

   void superTunnelConfig(Rsvp::RsvpLerTunnelSpecId const& id, Edit<Rsvp::RsvpLerSuperTunnelConfig> const& edit);
   void superTunnelConfig(Rsvp::RsvpLerTunnelSpecId const& id);
   void superTunnelStatus(Rsvp::RsvpLerTunnelSpecId const& id, Edit<Rsvp::RsvpLerSuperTunnelStatus> const& edit);
   void tunnelSpec(Rsvp::RsvpLerTunnelSpecId const& id, Edit<Rsvp::RsvpLerTunnelSpec> const& edit);
   void subTunnelConfig(Rsvp::RsvpLerSubTunnelConfigId const& id, Edit<Rsvp::RsvpLerSubTunnelConfig> const& edit);
   void subTunnelStatus(Rsvp::RsvpLerSubTunnelConfigId const& id, Edit<Rsvp::RsvpLerSubTunnelStatus> const& edit);
   void mbbTunnelConfig(Rsvp::RsvpLerMbbTunnelConfigId const& id, std::uint64_t requestedBandwidth);
   void mbbTunnelStatus(Rsvp::RsvpLerMbbTunnelConfigId const& id, Rsvp::RsvpLerLspGroupId const& activeLspGroupId);
   void lspGroupStatus(Rsvp::RsvpLerLspGroupId const& id, Edit<Rsvp::RsvpLerLspGroupStatus> const& edit);
   void lspRequestConfig(Rsvp::RsvpLerLspRequestConfigId const& id, Edit<Rsvp::RsvpLerLspRequestConfig> const& edit);
   void lspRequestStatus(Rsvp::RsvpLerLspRequestConfigId const& id, Edit<Rsvp::RsvpLerLspRequestStatus> const& edit);
   void pathSpecConfig(Rsvp::RsvpLerPathSpecId const& id, Rsvp::RsvpLerPathSpecType type);
   void cspfPathKey(Rsvp::RsvpLerLspGroupId const& id, Edit<Rsvp::RsvpLerCspfPathKey> const& edit);
   void bwSamplingStats(Rsvp::RsvpLerTunnelSpecId const& id, Edit<Rsvp::RsvpLerBwSamplingStats> const& edit);
   void bwSamplingStatus(Rsvp::RsvpLerTunnelSpecId const& id, Edit<Rsvp::RsvpLerBwSamplingStatus> const& edit);
   void autoBwConfig(Rsvp::RsvpLerTunnelSpecId const& id, Edit<Rsvp::RsvpLerTunnelAutoBwConfig> const& edit);
   void tunnelIndex(Rsvp::RsvpLerTunnelSpecId const& id, std::uint32_t index);
   void subTunnelIndex(Rsvp::RsvpLerSubTunnelConfigId const& id, std::uint32_t index);
   // The log of that index, made when it is first asked for.
   Brindle::Ptr<Rsvp::RsvpLerTunnelHistoryEntryColl> tunnelLog(std::uint32_t index);
   Brindle::Ptr<Rsvp::RsvpLerTunnelHistoryEntryColl> subTunnelLog(std::uint32_t index);

   // Command objects on this state. It goes on changing under them.
   Brindle::Ptr<Rsvp::Cli::ShowRsvpLerTunnel> tunnelCommand() const;
   Brindle::Ptr<Rsvp::Cli::ShowRsvpLer> statusCommand() const;

   Brindle::Ptr<Rsvp::RsvpCliConfig> cliConfig;
   Brindle::Ptr<Rsvp::RsvpLerCliConfig> lerCliConfig;
   Brindle::Ptr<Rsvp::RsvpLerConfig> lerConfig;
   Brindle::Ptr<Rsvp::RsvpLerStatehubStatus> status;
   Brindle::Ptr<Rsvp::RsvpLerFathomStatus> fathomStatus;
   Brindle::Ptr<Ambit::Tally::FeatureConfigDir> featureConfigDir;
};

inline constexpr std::uint32_t textFormat = 1;
inline constexpr std::uint32_t jsonFormat = 2;

// What body(renderer) writes in the format.
template<class Body>
std::string rendered(std::uint32_t format, Body&& body) {
   MemoryBuffer buffer;
   scrivo::RendererV2 renderer(static_cast<scrivo::OutputFormat_t>(format), &buffer, true);
   body(&renderer);
   return std::string(buffer.text());
}

} // namespace Tests
