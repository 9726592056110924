#pragma once

#include "RsvpLer/state/FeatureConfig.h"
#include "ambit/FeatureConfigDir.h"
#include "host/state/JsonReader.h"

// The configuration of the feature as a whole: one object each.

namespace Host {

void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpCliConfig& target);
void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpLerCliConfig& target);
void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpLerConfig& target);
void decode(JsonReader& in, JsonValue& value, Ambit::Tally::FeatureConfigDir& target);

} // namespace Host
