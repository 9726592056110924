#include "host/synth/Damage.h"

#include "host/synth/Random.h"
#include "host/synth/StateMembers.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <initializer_list>
#include <map>
#include <string>
#include <utility>

namespace Host::Synth {
namespace {

using Json = nlohmann::ordered_json;

class Damager {
public:
   Damager(double rate, std::uint64_t seed) noexcept
         : random_(mixed(seed)), limit_(static_cast<std::uint32_t>(rate * scale)) {}

   void damageObject(Json& object, std::span<Member const> members);
   void renameTunnels(Json& state);

private:
   static constexpr std::uint32_t scale = 1u << 30;

   bool strikes() noexcept { return random_.below(scale) < limit_; }
   template<class Value>
   Value oneOf(std::initializer_list<Value> values) noexcept {
      return values.begin()[random_.below(static_cast<std::uint32_t>(values.size()))];
   }

   bool leavesOut(Json const& value, Member const& member) noexcept;
   void damageInside(Json& value, Member const& member);
   void damageRows(Json& rows, Member const& member);
   void damageEvent(Json& event);

   Json drawn(Member const& member, Json const& object);
   std::uint64_t number(std::uint64_t highest) noexcept;
   double seconds() noexcept;
   double utcSeconds() noexcept;
   std::string text();
   std::string address();
   Json addresses(bool distinct);
   Json leafStates(std::uint64_t highest);
   Json errors();
   Json event();
   Json reference(Json const& object);
   Json newObject(std::span<Member const> members);

   Random random_;
   std::uint32_t limit_;
};

// 0 and the largest value, their neighbours, what a double can't hold, and anything.
std::uint64_t Damager::number(std::uint64_t highest) noexcept {
   std::uint64_t const any = random_.next();
   std::uint64_t const value = oneOf<std::uint64_t>({0, 1, 2, any % 10, any % 1000000, highest, highest - 1,
                                                     std::uint64_t{1} << 32, (std::uint64_t{1} << 53) + 1, any});
   return highest == ~std::uint64_t{0} ? value : value % (highest + 1);
}

double Damager::seconds() noexcept {
   double const any = static_cast<double>(random_.below(4000000)) + 0.125 * random_.below(8);
   return oneOf({0.0, -1.5, 0.001, 59.9996, 3599.5, 86400.0, any, any, -any, 1e9, 1e15, -1e15});
}

double Damager::utcSeconds() noexcept {
   double const any = 1731576400.0 - 0.001 * random_.below(100000000);
   return oneOf({0.0, -0.5, any, any, any, any, 1731576400.999999, 4102444800.0, 1e12, 1e18, -1e18});
}

std::string Damager::text() {
   return oneOf<std::string>({"", "x", "quote\" and back\\slash", "tab\tline\nfeed\x01\x7f",
                              "\u00fcber-\u03c0\U0001f309", "Ethernet7", "-", "007", std::string(70, 'w'),
                              "</script>"});
}

std::string Damager::address() {
   std::uint32_t const low = random_.below(256);
   return oneOf<std::string>({"", "0.0.0.0", "255.255.255.255", "10.0.0." + std::to_string(low),
                              "10.1." + std::to_string(low) + ".2", "::", "2001:db8::" + std::to_string(low % 10),
                              "::ffff:10.0.0.1", "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff"});
}

Json Damager::addresses(bool distinct) {
   Json list = Json::array();
   for (std::uint32_t count = random_.below(6); count > 0; --count) {
      std::string next = address();
      if (!distinct || std::find(list.begin(), list.end(), next) == list.end())
         list.push_back(std::move(next));
   }
   return list;
}

Json Damager::leafStates(std::uint64_t highest) {
   Json states = Json::object();
   for (Json const& leaf : addresses(true))
      states[leaf.get<std::string>()] = random_.below(static_cast<std::uint32_t>(highest) + 1);
   return states;
}

Json Damager::errors() {
   Json list = Json::array();
   for (std::uint32_t count = random_.below(4); count > 0; --count) {
      std::uint64_t const code = oneOf<std::uint64_t>({0, 1, 24, 25, random_.below(40), number(0xffffffff)});
      list.push_back(
            {{"code", code}, {"value", random_.oneIn(3) ? number(0xffff) : random_.below(30)}, {"node", address()}});
   }
   return list;
}

Json Damager::newObject(std::span<Member const> members) {
   Json object = Json::object();
   for (Member const& member : members) {
      if (!random_.oneIn(8))
         object[std::string(member.name)] = drawn(member, object);
   }
   return object;
}

Json Damager::event() {
   EventMembers const& kind = eventMembers()[random_.below(static_cast<std::uint32_t>(eventMembers().size()))];
   Json event = {{"kind", kind.kind}};
   event.update(newObject(kind.members));
   return event;
}

// A key that the object holds, with another number at its end, or of a tunnel that there isn't; or none.
Json Damager::reference(Json const& object) {
   Json key = Json::object();
   for (Json const& value : object) {
      if (value.is_object() && value.contains("name") && value.size() > key.size())
         key = value;
   }
   if (key.empty() || random_.oneIn(4))
      return Json::object();
   if (random_.oneIn(4))
      key["name"] = "elsewhere";
   else
      key.back() = key.back().is_number() ? Json(random_.below(4)) : key.back();
   return key;
}

Json Damager::drawn(Member const& member, Json const& object) {
   switch (member.draw) {
   case Draw::flag:
      return random_.oneIn(2);
   case Draw::number:
      return number(member.highest);
   case Draw::optionalNumber:
      return random_.oneIn(4) ? Json() : Json(number(member.highest));
   case Draw::seconds:
      return seconds();
   case Draw::optionalSeconds:
      return random_.oneIn(4) ? Json() : Json(seconds());
   case Draw::utcSeconds:
      return utcSeconds();
   case Draw::text:
      return text();
   case Draw::address:
      return address();
   case Draw::ipv4Address:
      return "10.0." + std::to_string(random_.below(256)) + ".1";
   case Draw::addressList:
      return addresses(true);
   case Draw::hops:
      return addresses(false);
   case Draw::leafStates:
      return leafStates(member.highest);
   case Draw::pathSpecKey:
      return oneOf<Json>({Json::object(), {{"name", "via-1"}, {"source", "cli"}}, {{"name", text()}, {"source", 4}}});
   case Draw::profileKey:
      return oneOf<Json>({Json::object(), {{"name", "gold"}, {"source", random_.below(5)}}, {{"name", text()}}});
   case Draw::reference:
      return reference(object);
   case Draw::errors:
      return errors();
   case Draw::event:
      return event();
   case Draw::object:
      return newObject(member.inside);
   case Draw::objectByLeaf: {
      Json leaves = Json::object();
      for (Json const& leaf : addresses(true))
         leaves[leaf.get<std::string>()] = newObject(member.inside);
      return leaves;
   }
   case Draw::rows:
      return Json::array();
   }
   return {};
}

bool Damager::leavesOut(Json const& value, Member const& member) noexcept {
   bool const table = member.draw == Draw::rows || (member.draw == Draw::object && value.size() > 2);
   return strikes() && (!table || random_.oneIn(8));
}

void Damager::damageObject(Json& object, std::span<Member const> members) {
   for (Member const& member : members) {
      std::string const name(member.name);
      auto const found = object.find(name);
      bool const inner = member.draw == Draw::rows || member.draw == Draw::object;
      if (found == object.end()) {
         if (strikes())
            object[name] = drawn(member, object);
      } else if (leavesOut(*found, member)) {
         object.erase(found);
      } else if (!inner && strikes()) {
         *found = drawn(member, object);
      } else {
         damageInside(*found, member);
      }
   }
}

void Damager::damageInside(Json& value, Member const& member) {
   if (member.draw == Draw::rows) {
      damageRows(value, member);
   } else if (member.draw == Draw::object) {
      damageObject(value, member.inside);
   } else if (member.draw == Draw::objectByLeaf) {
      for (Json& one : value)
         damageObject(one, member.inside);
   } else if (member.draw == Draw::event) {
      damageEvent(value);
   }
}

void Damager::damageRows(Json& rows, Member const& member) {
   Json left = Json::array();
   for (Json& row : rows) {
      if (strikes())
         continue;
      damageObject(row, member.inside);
      left.push_back(std::move(row));
   }
   rows = std::move(left);
}

void Damager::damageEvent(Json& event) {
   for (EventMembers const& kind : eventMembers()) {
      if (kind.kind == event["kind"])
         damageObject(event, kind.members);
   }
}

using Names = std::map<std::string, std::string>;

void collectTunnelNames(Json const& value, Names& names) {
   if (value.is_object() && value.contains("tunnelSpecId"))
      names.emplace(value["tunnelSpecId"].value("name", ""), "");
   for (Json const& inside : value) {
      if (inside.is_structured())
         collectTunnelNames(inside, names);
   }
}

void replaceNames(Json& value, Names const& names) {
   for (auto const& [member, inside] : value.items()) {
      if (inside.is_structured()) {
         replaceNames(inside, names);
      } else if (member == "name") {
         auto const found = names.find(inside.template get<std::string>());
         if (found != names.end())
            inside = found->second;
      }
   }
}

// Every key of a tunnel, wherever it stands, changes in the same way.
void Damager::renameTunnels(Json& state) {
   Names names;
   collectTunnelNames(state, names);
   for (auto& [name, other] : names)
      other = strikes() ? text() + name : name;
   replaceNames(state, names);
}

} // namespace

void damage(Json& state, double rate, std::uint64_t seed) {
   Damager damager(rate, seed);
   damager.damageObject(state, stateMembers());
   damager.renameTunnels(state);
}

} // namespace Host::Synth
