#pragma once

#include "host/state/Decode.h"
#include "host/state/JsonReader.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// The members that an object of the file may have, as data: one line a field.
//
//    constexpr Member<RsvpCliConfig> members[] = {field<&RsvpCliConfig::mtuSignalingEnabled>("mtuSignalingEnabled")};

namespace Host {

// One member: its name, and how its value gets into the target.
template<class Target>
struct Member {
   std::string_view name;
   void (*decode)(JsonReader& in, JsonValue& value, Target& target);
};

template<class Target>
using Members = std::span<Member<Target> const>;

// The member that is read into this field, in the manner of the field's type.
template<auto Field>
struct FieldOf;
template<class Target, class Type, Type Target::*Field>
struct FieldOf<Field> {
   static void read(JsonReader& in, JsonValue& value, Target& target) { decode(in, value, target.*Field); }
   static constexpr Member<Target> member(std::string_view name) { return {name, &read}; }
};
template<auto Field>
constexpr auto field(std::string_view name) {
   return FieldOf<Field>::member(name);
}

// Tells the members of one object apart, each of which may come once.
class MemberTracker {
public:
   // There may be `count` members, 64 at most.
   explicit MemberTracker(std::size_t count) noexcept : count_(count) {}

   // The index of the member `name`, which the reader is in; nameOf(index) gives the names. The reader fails when there
   // is none of this name or it has come before. Members that come in their own order cost one comparison each.
   template<class NameOf>
   std::size_t enter(JsonReader& in, JsonName name, NameOf const& nameOf) {
      std::size_t index = next_;
      while (index < count_ && !name.isWrittenAs(nameOf(index)))
         ++index;
      if (index == count_)
         index = find(in, name, nameOf);
      if (has(index))
         in.failName("each member once");
      take(index);
      return index;
   }
   // Takes note of a member that has been met in another way.
   void take(std::size_t index) noexcept {
      seen_ |= std::uint64_t{1} << index;
      next_ = index + 1;
   }
   bool has(std::size_t index) const noexcept { return (seen_ >> index & 1) != 0; }

private:
   template<class NameOf>
   std::size_t find(JsonReader& in, JsonName name, NameOf const& nameOf) const {
      std::string_view const text = in.text(name);
      for (std::size_t index = 0; index < count_; ++index) {
         if (nameOf(index) == text)
            return index;
      }
      in.failName(expected(nameOf));
   }
   template<class NameOf>
   std::string expected(NameOf const& nameOf) const {
      std::string result = count_ == 0 ? "no member" : count_ == 1 ? "only the member" : "one of the members";
      for (std::size_t index = 0; index < count_; ++index)
         result.append(index == 0 ? " " : ", ").append(nameOf(index));
      return result;
   }

   std::size_t count_;
   std::size_t next_ = 0; // the member that is likely to come
   std::uint64_t seen_ = 0;
};

// Reads an object whose members may all be left out.
template<class Target>
void decodeMembers(JsonReader& in, JsonValue& value, Members<Target> members, Target& target) {
   auto const nameOf = [members](std::size_t index) { return members[index].name; };
   MemberTracker tracker(members.size());
   in.forEachMember(value, [&](JsonName name, JsonValue& member) {
      members[tracker.enter(in, name, nameOf)].decode(in, member, target);
   });
}

// A keyed record in a row of a table: the member that is its key, which is required, and its other ones.
template<class Record>
struct RowSchema {
   std::string_view keyName;
   Members<Record> members;
};

// Reads one row. The record is one that has its defaults.
template<class Key, class Record>
void decodeRow(JsonReader& in, JsonValue& value, RowSchema<Record> const& schema, Key& key, Record& record) {
   auto const nameOf = [&schema](std::size_t index) {
      return index == 0 ? schema.keyName : schema.members[index - 1].name;
   };
   MemberTracker tracker(schema.members.size() + 1);
   in.forEachMember(value, [&](JsonName name, JsonValue& member) {
      std::size_t const index = tracker.enter(in, name, nameOf);
      if (index == 0)
         decode(in, member, key);
      else
         schema.members[index - 1].decode(in, member, record);
   });
   if (!tracker.has(0))
      in.failMissing(value, schema.keyName);
}

} // namespace Host
