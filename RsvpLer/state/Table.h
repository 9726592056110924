#pragma once

#include "brindle/Node.h"
#include "brindle/Ptr.h"
#include "vane/HashMap2018.h"

namespace Rsvp {

// The common body of the tables: a reference-counted hash map with unique keys. One writer at a time changes it; any
// number of readers look things up and walk it meanwhile, without a lock. A lookup gives an owned handle, empty when
// the key is absent. A walk shows each key at most once and has no order that means anything.
template<class Key, class Value>
class Table : public Brindle::Node, public Vane::HashMap2018<Key, Value> {};

template<class Key, class Record>
using RecordTable = Table<Key, Brindle::Ptr<Record const>>;

// A table of tables: the outer entry of a parent holds the collection of what stands under that parent.
template<class Key, class Coll>
using CollTable = Table<Key, Brindle::Ptr<Coll>>;

} // namespace Rsvp
