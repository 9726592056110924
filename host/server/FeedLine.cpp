#include "host/server/FeedLine.h"

#include "host/server/FeedTables.h"
#include "host/state/LoadState.h"
#include "host/state/Schema.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace Host {

namespace {

constexpr std::string_view memberNames[] = {"set", "row", "delete", "key", "load"};
enum MemberIndex : std::size_t { setMember, rowMember, deleteMember, keyMember, loadMember };

// What kind of line it is, which has to be known before a row can be read, wherever the members stand.
struct Outline {
   bool has[std::size(memberNames)] = {};
   FeedTable const* table = nullptr;
   std::string firstOfKey; // the first member of the key, when the key is an object

   bool is(MemberIndex first, MemberIndex second) const { return has[first] && has[second] && count() == 2; }
   bool is(MemberIndex only) const { return has[only] && count() == 1; }
   std::ptrdiff_t count() const { return std::count(std::begin(has), std::end(has), true); }
};

FeedTable const& tableNamed(JsonReader& in, JsonValue& value) {
   if (FeedTable const* const table = findFeedTable(in.text(value)))
      return *table;
   in.fail(value, "the name of a table of the state file");
}

std::string firstMemberOf(JsonReader& in, JsonValue& key) {
   std::string first;
   if (in.isObject(key))
      in.forEachMember(key, [&in, &first](JsonName name, JsonValue&) {
         std::string_view const member = in.text(name);
         if (first.empty())
            first = member;
      });
   return first;
}

Outline readOutline(JsonReader& in) {
   Outline outline;
   MemberTracker tracker(std::size(memberNames));
   auto const nameOf = [](std::size_t index) { return memberNames[index]; };
   in.forEachDocumentMember([&](JsonName name, JsonValue& value) {
      std::size_t const index = tracker.enter(in, name, nameOf);
      outline.has[index] = true;
      if (index == setMember || index == deleteMember)
         outline.table = &tableNamed(in, value);
      else if (index == keyMember)
         outline.firstOfKey = firstMemberOf(in, value);
   });
   if (outline.is(setMember))
      throw StateError("row: expected the row to set, found none");
   if (outline.is(deleteMember))
      throw StateError("key: expected the key of the row to delete, found none");
   if (!outline.is(setMember, rowMember) && !outline.is(deleteMember, keyMember) && !outline.is(loadMember))
      throw StateError("expected the members set and row, delete and key, or load alone");
   return outline;
}

// The key stands as it does in a row: as the value of its member, or as that member.
Change readErase(JsonReader& in, JsonValue& value, Outline const& outline) {
   FeedTable const& table = *outline.table;
   if (outline.firstOfKey != table.keyName)
      return table.erase(in, value);
   Change change;
   MemberTracker tracker(1);
   in.forEachMember(value, [&](JsonName name, JsonValue& key) {
      tracker.enter(in, name, [&table](std::size_t) { return table.keyName; });
      change = table.erase(in, key);
   });
   return change;
}

Change replaceBy(RouterState loaded) {
   return [loaded = std::move(loaded)](RouterState& state) { state = loaded; };
}

} // namespace

Change readChange(Line const& line) {
   JsonReader in("", simdjson::padded_string_view(line.text, line.capacity));
   Outline const outline = readOutline(in);
   in.rewind();
   Change change;
   in.forEachDocumentMember([&](JsonName name, JsonValue& value) {
      std::string_view const member = in.text(name);
      if (member == "row")
         change = outline.table->set(in, value);
      else if (member == "key")
         change = readErase(in, value, outline);
      else if (member == "load")
         change = replaceBy(readState(in, value));
   });
   return change;
}

} // namespace Host
