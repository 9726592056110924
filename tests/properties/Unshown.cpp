#include "tests/properties/Unshown.h"

#include "tests/properties/TextReader.h"

#include <string>

namespace Tests {

namespace {

bool always(Json const&) {
   return true;
}

bool isTrue(Json const& object, std::string_view name) {
   Json const* const found = object.find(name);
   return found != nullptr && found->flag;
}

bool isText(Json const& object, std::string_view name, std::string_view text) {
   Json const* const found = object.find(name);
   return found != nullptr && found->text == text;
}

bool isP2mp(Json const& tunnel) {
   return tunnel.find("subTunnels") == nullptr;
}
bool isP2mpOrUnknown(Json const& tunnel) {
   return isP2mp(tunnel) || isText(tunnel, "activePathType", "unknown");
}
bool isUnknownPath(Json const& subTunnel) {
   return isText(subTunnel, "activePathType", "unknown");
}
bool isP2mpOrNotSplit(Json const& tunnel) {
   return isP2mp(tunnel) || !isTrue(tunnel, "splitTunnel");
}
bool isNotSignalled(Json const& tunnel) {
   return !isTrue(tunnel, "signalBandwidth");
}
bool hasQuantum(Json const& split) {
   return split.find("quantum")->whole != 0;
}
bool hasLimits(Json const& split) {
   return !hasQuantum(split);
}
bool isColdStandby(Json const& path) {
   return isText(path, "state", "coldStandby");
}
bool isUnknownEvent(Json const& entry) {
   return isText(entry, "event", "");
}

// Where JSON has a value that no text shows.
struct Row {
   std::string_view object; // the member whose object, or list of objects, it stands in
   std::string_view member;
   bool (*condition)(Json const& object);
};

constexpr Row rows[] = {
      {"tunnels", "destination", isP2mp},
      {"tunnels", "splitTunnel", isP2mpOrNotSplit},
      {"tunnels", "currentBandwidth", isNotSignalled},
      {"tunnels", "requestedBandwidth", isNotSignalled},
      {"tunnels", "activePathType", isP2mpOrUnknown},
      {"subTunnels", "activePathType", isUnknownPath},
      {"splitTunnelParams", "minBandwidth", hasQuantum},
      {"splitTunnelParams", "maxBandwidth", hasQuantum},
      {"splitTunnelParams", "reductionDelay", hasQuantum},
      {"splitTunnelParams", "quantum", hasLimits},
      {"secondaryPaths", "preSignaled", always},
      {"secondaryPaths", "mbb", isColdStandby},
      {"secondaryPaths", "inUse", isColdStandby},
      {"secondaryPaths", "specType", isColdStandby},
      {"history", "timestamp", isUnknownEvent},
};

bool mayBeUnshown(std::string_view object, std::string_view member, Json const& parent) {
   for (Row const& row : rows)
      if (row.object == object && row.member == member && row.condition(parent))
         return true;
   return false;
}

// `object` is the name of what the values stand in.
void requireMembersShown(std::string_view object, Json const& json) {
   for (Json const& element : json.elements) {
      if (element.kind == Json::Kind::object)
         requireMembersShown(object, element);
      else if (!element.shown)
         throw Disagreement("no text shows an element of " + std::string(object));
   }
   for (auto const& [member, value] : json.members) {
      if (member == "tunnels" || member == "subTunnels")
         for (auto const& [name, tunnel] : value.members)
            requireMembersShown(member, tunnel);
      else if (value.kind == Json::Kind::object || value.kind == Json::Kind::list)
         requireMembersShown(member, value);
      else if (!value.shown && !mayBeUnshown(object, member, json))
         throw Disagreement("no text shows " + std::string(object) + ": " + member);
   }
}

} // namespace

void requireShown(Json const& document) {
   requireMembersShown("document", document);
}

} // namespace Tests
