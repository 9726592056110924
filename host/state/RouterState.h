#pragma once

#include "RsvpLer/state/FeatureConfig.h"
#include "RsvpLer/state/Roots.h"
#include "ambit/FeatureConfigDir.h"
#include "brindle/Duration.h"
#include "brindle/Ptr.h"

#include <optional>
#include <string_view>
#include <vector>

namespace Host {

// The two clocks at one moment.
struct ClockMoment {
   Brindle::Duration currentTime; // internal clock
   Brindle::Duration utcTime;     // seconds since the start of 1970
};

// What the show commands are made from: the state of one router. The roots can be written through these handles, by one
// writer at a time; the small records are replaced whole.
struct RouterState {
   std::optional<ClockMoment> clock; // the moment at which the state was taken, when it is told
   Brindle::Ptr<Rsvp::RsvpCliConfig const> rsvpCliConfig;
   Brindle::Ptr<Rsvp::RsvpLerCliConfig const> rsvpLerCliConfig;
   Brindle::Ptr<Rsvp::RsvpLerConfig const> rsvpLerConfig;
   Brindle::Ptr<Ambit::Tally::FeatureConfigDir const> tallyFeatureConfigDir;
   Brindle::Ptr<Rsvp::RsvpLerStatehubStatus> rsvpLerStatus;
   Brindle::Ptr<Rsvp::RsvpLerFathomStatus> rsvpLerFathomStatus;
};

// The names of those of the eight tables that every tunnel view needs which the state lacks; without one of them, the
// tunnel views show no tunnel.
std::vector<std::string_view> missingTables(RouterState const& state);

} // namespace Host
