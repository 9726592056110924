#include "host/state/TableRow.h"

namespace Host {

void failRepeatedKey(JsonReader const& in, JsonValue& row) {
   in.fail(row, "a key that stands once in its table", "the key of an earlier row");
}

} // namespace Host
