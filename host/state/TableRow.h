#pragma once

#include "RsvpLer/state/Roots.h"
#include "host/state/JsonReader.h"
#include "host/state/MapBuilder.h"
#include "host/state/Schema.h"
#include "vane/Slot.h"

#include <concepts>
#include <set>
#include <string_view>
#include <type_traits>
#include <utility>

// Tables as arrays of rows. A row is read whole before anything of it goes into its table, so that one row can also
// come on its own.

namespace Host {

template<class K, class V>
struct TableRow {
   using Key = K;
   using Value = V;
   Key key;
   Value value{};
};

namespace Impl {

template<class Key, class Value>
TableRow<Key, Value> rowOf(Vane::HashMap2018<Key, Value> const*);
template<class Key, class Value>
TableRow<Key, Value> rowOf(Vane::OrderedColl<Key, Value> const*);
template<class Key, class Value>
TableRow<Key, Value> rowOf(Fathom::FathomValueMap<Key, Value> const*);
template<class Key, class Value>
TableRow<Key, Value> rowOf(Vane::FlatMap<Key, Value> const*);

} // namespace Impl

// The row of a table, ordered collection, value map or sorted map of a record.
template<class Table>
using RowOf = decltype(Impl::rowOf(static_cast<Table const*>(nullptr)));

// Reads the row of one table. There is one for each table and each collection inside a table of tables.
template<class Table>
RowOf<Table> readRow(JsonReader& in, JsonValue& value);

// The row of a table whose records stand behind handles. A record that keeps its key has it in `OwnKey`.
template<class Table, class Record, auto OwnKey = nullptr>
RowOf<Table> readRecordRow(JsonReader& in, JsonValue& value, RowSchema<Record> const& schema) {
   typename RowOf<Table>::Key key;
   auto record = Brindle::makeNode<Record>();
   decodeRow(in, value, schema, key, *record);
   if constexpr (!std::is_null_pointer_v<decltype(OwnKey)>)
      (*record).*OwnKey = key;
   return {std::move(key), std::move(record)};
}

// The row of a table of tables; its collection is the member `collName`. An empty handle when that is left out.
template<class Table>
RowOf<Table> readCollRow(JsonReader& in, JsonValue& value, std::string_view keyName, std::string_view collName) {
   using Coll = typename RowOf<Table>::Value;
   static constexpr auto read = [](JsonReader& reader, JsonValue& member, Coll& coll) { decode(reader, member, coll); };
   Member<Coll> const members[] = {{collName, read}};
   RowOf<Table> row;
   decodeRow(in, value, RowSchema<Coll>{keyName, members}, row.key, row.value);
   return row;
}

[[noreturn]] void failRepeatedKey(JsonReader const& in, JsonValue& row);

// An array of rows, each of which goes into the table.
template<class Table>
void decodeRows(JsonReader& in, JsonValue& value, Table& table) {
   in.forEachElement(value, [&](JsonValue& element) {
      RowOf<Table> row = readRow<Table>(in, element);
      if (!table.set(std::move(row.key), std::move(row.value)))
         failRepeatedKey(in, element);
   });
}

// The same for a table of tables. A row whose collection is left out adds nothing, but its key still counts as one that
// stands there.
template<class Table>
void decodeCollRows(JsonReader& in, JsonValue& value, Table& table) {
   std::set<typename RowOf<Table>::Key> without;
   in.forEachElement(value, [&](JsonValue& element) {
      RowOf<Table> row = readRow<Table>(in, element);
      bool isNew = !without.contains(row.key);
      if (row.value)
         isNew = isNew && table.set(std::move(row.key), std::move(row.value));
      else
         isNew = isNew && !table.contains(row.key) && without.insert(std::move(row.key)).second;
      if (!isNew)
         failRepeatedKey(in, element);
   });
}

namespace Impl {

// The collections of a table of tables are handles that their writer may write through.
template<class Value>
inline constexpr bool isColl = false;
template<class Coll>
inline constexpr bool isColl<Brindle::Ptr<Coll>> = !std::is_const_v<Coll>;

} // namespace Impl

template<class Table>
requires std::derived_from<Table, Brindle::Node> && requires {
   typename RowOf<Table>;
}
void decode(JsonReader& in, JsonValue& value, Table& target) {
   if constexpr (Impl::isColl<typename RowOf<Table>::Value>)
      decodeCollRows(in, value, target);
   else
      decodeRows(in, value, target);
}

// The field of a root: a table, or null for none.
template<class Table>
void decode(JsonReader& in, JsonValue& value, Vane::Slot<Table>& target) {
   Brindle::Ptr<Table> table;
   decode(in, value, table);
   target.set(std::move(table));
}

// A map inside a record, as an array of rows.
template<class Key, class Value>
void decode(JsonReader& in, JsonValue& value, Vane::FlatMap<Key, Value>& target) {
   MapBuilder<Key, Value> items;
   in.forEachElement(value, [&](JsonValue& element) {
      auto row = readRow<Vane::FlatMap<Key, Value>>(in, element);
      if (!items.add(std::move(row.key), std::move(row.value)))
         failRepeatedKey(in, element);
   });
   target = items.take();
}

// A map by the addresses of leaves, as an object whose member names they are.
template<class Value>
void decode(JsonReader& in, JsonValue& value, Vane::FlatMap<Rsvp::RsvpDstId, Value>& target) {
   MapBuilder<Rsvp::RsvpDstId, Value> items;
   in.forEachMember(value, [&](JsonName name, JsonValue& member) {
      auto const address = Lattice::IpGenAddr::parse(in.text(name));
      if (!address)
         in.failName("an IPv4 or IPv6 address");
      Value item{};
      decode(in, member, item);
      if (!items.add({*address}, std::move(item)))
         in.failName("each address once");
   });
   target = items.take();
}

} // namespace Host
