#include "host/state/FeatureRecords.h"

#include "host/state/Schema.h"

#include <charconv>
#include <optional>

// "rsvpCliConfig": {"mtuSignalingEnabled": true},
// "rsvpLerCliConfig": {"localIntf": "lo0"},
// "rsvpLerConfig": {"localIntf": "lo0", "localIntfIp": "10.0.0.1", "optimizationInterval": 3600},
// "tallyFeatureConfigDir": {"feature": {"47": 1}}

namespace Host {

using namespace Rsvp;
using Ambit::Tally::ConfigState;
using Ambit::Tally::FeatureConfigDir;
using Tallies::FeatureId;

namespace {

constexpr Member<RsvpCliConfig> rsvpCliConfigMembers[] = {
      field<&RsvpCliConfig::mtuSignalingEnabled>("mtuSignalingEnabled"),
};

constexpr Member<RsvpLerCliConfig> rsvpLerCliConfigMembers[] = {
      field<&RsvpLerCliConfig::localIntf>("localIntf"),
};

constexpr Member<RsvpLerConfig> rsvpLerConfigMembers[] = {
      field<&RsvpLerConfig::localIntf>("localIntf"),
      field<&RsvpLerConfig::localIntfIp>("localIntfIp"),
      field<&RsvpLerConfig::optimizationInterval>("optimizationInterval"),
};

// Decimal, as numbers are written in JSON.
std::optional<FeatureId> featureId(std::string_view text) noexcept {
   std::uint32_t number = 0;
   auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
   bool const leadingZero = text.size() > 1 && text.front() == '0';
   if (error != std::errc() || end != text.data() + text.size() || leadingZero)
      return std::nullopt;
   return FeatureId{number};
}

void readFeatures(JsonReader& in, JsonValue& value, FeatureConfigDir& target) {
   in.forEachMember(value, [&](JsonName name, JsonValue& member) {
      auto const id = featureId(in.text(name));
      if (!id)
         in.failName("a whole number from 0 to 4294967295");
      std::uint32_t state = 0;
      decode(in, member, state);
      if (!target.feature.set(*id, ConfigState{state}))
         in.failName("each feature once");
   });
}

constexpr Member<FeatureConfigDir> featureConfigDirMembers[] = {{"feature", readFeatures}};

} // namespace

void decode(JsonReader& in, JsonValue& value, RsvpCliConfig& target) {
   decodeMembers<RsvpCliConfig>(in, value, rsvpCliConfigMembers, target);
}

void decode(JsonReader& in, JsonValue& value, RsvpLerCliConfig& target) {
   decodeMembers<RsvpLerCliConfig>(in, value, rsvpLerCliConfigMembers, target);
}

void decode(JsonReader& in, JsonValue& value, RsvpLerConfig& target) {
   decodeMembers<RsvpLerConfig>(in, value, rsvpLerConfigMembers, target);
}

void decode(JsonReader& in, JsonValue& value, FeatureConfigDir& target) {
   decodeMembers<FeatureConfigDir>(in, value, featureConfigDirMembers, target);
}

} // namespace Host
