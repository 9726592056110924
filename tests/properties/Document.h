#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A JSON document as a parser that isn't ours has read it.

namespace Tests {

// A value. Members keep their order, and those that stand twice are there twice.
struct Json {
   enum class Kind { flag, whole, real, text, object, list };
   struct Member;

   Kind kind = Kind::object;
   bool flag = false;
   std::uint64_t whole = 0;
   double real = 0;
   std::string text;
   std::vector<Member> members;
   std::vector<Json> elements;
   mutable bool shown = false; // something in a text has been held against it

   // The first member of that name, or nullptr.
   Json const* find(std::string_view name) const noexcept;
};

struct Json::Member {
   std::string name;
   Json value;
};

// Throws std::runtime_error for a text that is no JSON document; a null or a negative whole number, which no view
// writes, counts as one.
Json parsed(std::string_view document);

// The path of the first member that stands twice in its object, such as "tunnels.a.state"; empty when there is none.
// Those members are passed over that may well stand twice, since the state does: a tunnel's name with two sources, an
// interface with two next hops, a leaf with two replies at one instant, the leaf of the default address beside that of
// IPv6's "::", which reads the same.
std::string repeatedMember(Json const& document);

} // namespace Tests
