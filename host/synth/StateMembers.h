#pragma once

#include <cstdint>
#include <span>
#include <string_view>

// What the members of a state file may hold, so that values can be drawn for them. The loader has its own account of
// the members, which reads them; a test holds the two against each other.

namespace Host::Synth {

enum class Draw : std::uint8_t {
   flag,
   number,          // from 0 to Member::highest
   optionalNumber,  // the same, or null
   seconds,         // of the internal clock
   optionalSeconds, // the same, or null
   utcSeconds,
   text,
   address,      // of either family
   ipv4Address,  // of IPv4
   addressList,  // each address once
   hops,         // a list in which an address may come again
   leafStates,   // an object of addresses and numbers from 0 to Member::highest
   pathSpecKey,  // of a path specification that the state has, or none
   profileKey,   // of a profile, or none
   reference,    // a key below the row's own key: it leads to the record, to another or to none
   errors,       // a list of errors
   event,        // of a log
   object,       // its members are Member::inside
   objectByLeaf, // an object of addresses and such objects
   rows,         // a list of rows with a key and the members Member::inside
};

struct Member {
   std::string_view name;
   Draw draw;
   std::uint64_t highest = 0;
   std::span<Member const> inside = {};
};

// The members of the whole document, but the keys of the rows.
std::span<Member const> stateMembers() noexcept;

// The members of an event of this kind, but the kind; of no kind that there is, none.
struct EventMembers {
   std::string_view kind;
   std::span<Member const> members;
};
std::span<EventMembers const> eventMembers() noexcept;

} // namespace Host::Synth
