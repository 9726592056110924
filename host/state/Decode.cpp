#include "host/state/Decode.h"

#include "host/state/Schema.h"
#include "vane/ShortVector.h"

#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace Host {

namespace {

template<class Unsigned>
void decodeWhole(JsonReader& in, JsonValue& value, Unsigned& target) {
   target = static_cast<Unsigned>(in.wholeNumber(value, std::numeric_limits<Unsigned>::max()));
}

constexpr Member<Rsvp::NameAndSource> nameAndSourceMembers[] = {
      field<&Rsvp::NameAndSource::name>("name"),
      field<&Rsvp::NameAndSource::source>("source"),
};

// The members of all keys of tunnels and below: each kind of key takes them up to its own last one.
struct KeyMembers {
   Fathom::String name;
   Rsvp::RsvpLerTunnelSource source = Rsvp::RsvpLerTunnelSource::unknown;
   std::uint32_t subTunnelId = 0;
   std::uint32_t epoch = 0;
   std::uint8_t groupId = 0;
   std::uint32_t configId = 0;
};

void readTunnelName(JsonReader& in, JsonValue& value, KeyMembers& target) {
   target.name = in.tunnelName(value);
}

constexpr Member<KeyMembers> keyMembers[] = {
      {"name", readTunnelName},
      field<&KeyMembers::source>("source"),
      field<&KeyMembers::subTunnelId>("subTunnelId"),
      field<&KeyMembers::epoch>("epoch"),
      field<&KeyMembers::groupId>("groupId"),
      field<&KeyMembers::configId>("configId"),
};

KeyMembers readKey(JsonReader& in, JsonValue& value, std::size_t count) {
   KeyMembers key;
   decodeMembers(in, value, Members<KeyMembers>(keyMembers).first(count), key);
   return key;
}

Rsvp::RsvpLerSubTunnelConfigId subTunnelConfigId(KeyMembers&& key) {
   return {{std::move(key.name), key.source}, key.subTunnelId};
}
Rsvp::RsvpLerMbbTunnelConfigId mbbTunnelConfigId(KeyMembers&& key) {
   return {subTunnelConfigId(std::move(key)), key.epoch};
}
Rsvp::RsvpLerLspGroupId lspGroupId(KeyMembers&& key) {
   return {mbbTunnelConfigId(std::move(key)), key.groupId};
}

constexpr Member<Rsvp::RsvpErrorWithNode> errorMembers[] = {
      field<&Rsvp::RsvpErrorWithNode::errorCode>("code"),
      field<&Rsvp::RsvpErrorWithNode::errorValue>("value"),
      field<&Rsvp::RsvpErrorWithNode::node>("node"),
};

using Addresses = Vane::ShortVector<Lattice::IpGenAddr, 8>;

Addresses decodeAddresses(JsonReader& in, JsonValue& value) {
   Addresses addresses;
   in.forEachElement(value, [&](JsonValue& element) {
      Lattice::IpGenAddr address;
      decode(in, element, address);
      addresses.push_back(address);
   });
   return addresses;
}

std::string expectedWords(EnumWords const& words) {
   std::string expected = "a whole number from 0 to " + std::to_string(words.highest) + " or one of the words";
   char const* separator = " ";
   for (std::size_t i = 0; i < words.words.size(); ++i) {
      // Of a word that stands for two values.
      if (i > 0 && words.words[i] == words.words[i - 1])
         continue;
      expected.append(separator).append(words.words[i]);
      separator = ", ";
   }
   return expected;
}

} // namespace

void decode(JsonReader& in, JsonValue& value, bool& target) {
   target = in.boolean(value);
}

void decode(JsonReader& in, JsonValue& value, std::uint8_t& target) {
   decodeWhole(in, value, target);
}
void decode(JsonReader& in, JsonValue& value, std::uint16_t& target) {
   decodeWhole(in, value, target);
}
void decode(JsonReader& in, JsonValue& value, std::uint32_t& target) {
   decodeWhole(in, value, target);
}
void decode(JsonReader& in, JsonValue& value, std::uint64_t& target) {
   decodeWhole(in, value, target);
}

void decode(JsonReader& in, JsonValue& value, Brindle::Duration& target) {
   target = Brindle::Duration(in.number(value));
}

void decode(JsonReader& in, JsonValue& value, Fathom::String& target) {
   target = in.name(value);
}

void decode(JsonReader& in, JsonValue& value, Lattice::IntfId& target) {
   target = Lattice::IntfId(in.name(value));
}

void decode(JsonReader& in, JsonValue& value, Lattice::IpGenAddr& target) {
   auto const address = Lattice::IpGenAddr::parse(in.text(value));
   if (!address)
      in.fail(value, "an IPv4 or IPv6 address");
   target = *address;
}

void decode(JsonReader& in, JsonValue& value, Lattice::IpAddr& target) {
   auto const address = Lattice::IpGenAddr::parse(in.text(value));
   if (!address || address->family() == Lattice::IpGenAddr::familyV6)
      in.fail(value, "an IPv4 address");
   target = address->v4Addr();
}

void decode(JsonReader& in, JsonValue& value, Cask::TristateU32& target) {
   Vane::Optional<std::uint32_t> number;
   decode(in, value, number);
   if (number.hasValue())
      target = Cask::TristateU32(number.value());
}

void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpLerTunnelSpecId& target) {
   KeyMembers key = readKey(in, value, 2);
   target = {std::move(key.name), key.source};
}
void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpLerPathSpecId& target) {
   decodeMembers<Rsvp::NameAndSource>(in, value, nameAndSourceMembers, target);
}
void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpLerTunnelProfileId& target) {
   decodeMembers<Rsvp::NameAndSource>(in, value, nameAndSourceMembers, target);
}
void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpLerSubTunnelConfigId& target) {
   target = subTunnelConfigId(readKey(in, value, 3));
}
void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpLerMbbTunnelConfigId& target) {
   target = mbbTunnelConfigId(readKey(in, value, 4));
}
void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpLerLspGroupId& target) {
   target = lspGroupId(readKey(in, value, 5));
}
void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpLerLspRequestConfigId& target) {
   KeyMembers key = readKey(in, value, 6);
   std::uint32_t const configId = key.configId;
   target = {lspGroupId(std::move(key)), configId};
}

void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpErrorWithNode& target) {
   decodeMembers<Rsvp::RsvpErrorWithNode>(in, value, errorMembers, target);
}

void decode(JsonReader& in, JsonValue& value, Rsvp::RsvpErrors& target) {
   in.forEachElement(value, [&](JsonValue& element) {
      Rsvp::RsvpErrorWithNode error;
      decode(in, element, error);
      target.set(error, {});
   });
}

void decode(JsonReader& in, JsonValue& value, Vane::FlatSet<Lattice::IpGenAddr>& target) {
   Addresses const addresses = decodeAddresses(in, value);
   target = Vane::FlatSet<Lattice::IpGenAddr>(std::vector(addresses.begin(), addresses.end()));
}

void decode(JsonReader& in, JsonValue& value, Fathom::Vector<Lattice::IpGenAddr>& target) {
   Addresses const addresses = decodeAddresses(in, value);
   target = Fathom::Vector<Lattice::IpGenAddr>(addresses.begin(), addresses.size());
}

std::uint8_t decodeEnum(JsonReader& in, JsonValue& value, EnumWords const& words) {
   if (!in.isText(value)) {
      std::uint64_t number = 0;
      if (!in.tryWholeNumber(value, words.highest, number))
         in.fail(value, expectedWords(words));
      return static_cast<std::uint8_t>(number);
   }
   std::string_view const word = in.text(value);
   for (std::size_t i = 0; i < words.words.size(); ++i) {
      if (words.words[i] == word)
         return static_cast<std::uint8_t>(i);
   }
   in.fail(value, expectedWords(words));
}

} // namespace Host
