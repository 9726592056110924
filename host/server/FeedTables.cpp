#include "host/server/FeedTables.h"

#include "host/state/Rows.h"

#include <algorithm>

namespace Host {

using namespace Rsvp;

namespace {

template<class Root>
Root& made(Brindle::Ptr<Root>& root);

// The histories are there wherever their root is.
template<>
RsvpLerFathomStatus& made(Brindle::Ptr<RsvpLerFathomStatus>& root) {
   if (!root) {
      root = Brindle::makeNode<RsvpLerFathomStatus>();
      root->rsvpLerTunnelHistory.set(Brindle::makeNode<RsvpLerTunnelHistory>());
      root->rsvpLerSubTunnelHistory.set(Brindle::makeNode<RsvpLerSubTunnelHistory>());
   }
   return *root;
}
template<>
RsvpLerStatehubStatus& made(Brindle::Ptr<RsvpLerStatehubStatus>& root) {
   if (!root)
      root = Brindle::makeNode<RsvpLerStatehubStatus>();
   return *root;
}

// Whether the row says that there is none.
template<class Value>
bool isAbsent(Value const& value) {
   if constexpr (Impl::isColl<Value>)
      return !value;
   return false;
}

template<auto Root, auto Field>
struct Access;

template<class RootType, Brindle::Ptr<RootType> RouterState::*Root, class Table, Vane::Slot<Table> RootType::*Field>
struct Access<Root, Field> {
   using Row = RowOf<Table>;

   static Change set(JsonReader& in, JsonValue& value) {
      Row row = readRow<Table>(in, value);
      if (isAbsent(row.value))
         return erased(std::move(row.key));
      return [row = std::move(row)](RouterState& state) { insert(state, row); };
   }
   static Change erase(JsonReader& in, JsonValue& value) {
      typename Row::Key key{};
      decode(in, value, key);
      return erased(std::move(key));
   }

private:
   static void insert(RouterState& state, Row const& row) {
      Vane::Slot<Table>& slot = made(state.*Root).*Field;
      Brindle::Ptr<Table> table = slot.get();
      if (table) {
         table->set(row.key, row.value);
         return;
      }
      table = Brindle::makeNode<Table>();
      table->set(row.key, row.value);
      slot.set(std::move(table));
   }
   static Change erased(typename Row::Key key) {
      return [key = std::move(key)](RouterState& state) {
         auto const table = state.*Root ? ((*(state.*Root)).*Field).get() : nullptr;
         if (table)
            table->erase(key);
      };
   }
};

template<auto Root, auto Field>
constexpr FeedTable table(std::string_view name, std::string_view keyName) {
   return {name, keyName, &Access<Root, Field>::set, &Access<Root, Field>::erase};
}
template<auto Field>
constexpr FeedTable status(std::string_view name, std::string_view keyName) {
   return table<&RouterState::rsvpLerStatus, Field>(name, keyName);
}
template<auto Field>
constexpr FeedTable fathom(std::string_view name, std::string_view keyName) {
   return table<&RouterState::rsvpLerFathomStatus, Field>(name, keyName);
}

constexpr FeedTable tables[] = {
      status<&RsvpLerStatehubStatus::pathSpecConfigColl>("pathSpecConfigColl", "pathSpecId"),
      status<&RsvpLerStatehubStatus::tunnelSpecColl>("tunnelSpecColl", "tunnelSpecId"),
      status<&RsvpLerStatehubStatus::autoBwStats>("autoBwStats", "tunnelSpecId"),
      status<&RsvpLerStatehubStatus::bwSamplingStatusColl>("bwSamplingStatusColl", "tunnelSpecId"),
      status<&RsvpLerStatehubStatus::tunnelIndexMap>("tunnelIndexMap", "tunnelSpecId"),
      status<&RsvpLerStatehubStatus::subTunnelIndexMap>("subTunnelIndexMap", "subTunnelConfigId"),
      status<&RsvpLerStatehubStatus::superTunnelStatusColl>("superTunnelStatusColl", "tunnelSpecId"),
      status<&RsvpLerStatehubStatus::subTunnelConfigCollTable>("subTunnelConfigCollTable", "tunnelSpecId"),
      status<&RsvpLerStatehubStatus::subTunnelStatusCollTable>("subTunnelStatusCollTable", "tunnelSpecId"),
      status<&RsvpLerStatehubStatus::mbbTunnelConfigCollTable>("mbbTunnelConfigCollTable", "subTunnelConfigId"),
      status<&RsvpLerStatehubStatus::mbbTunnelStatusCollTable>("mbbTunnelStatusCollTable", "subTunnelConfigId"),
      status<&RsvpLerStatehubStatus::lspGroupStatusCollTable>("lspGroupStatusCollTable", "mbbTunnelConfigId"),
      status<&RsvpLerStatehubStatus::lspRequestConfigCollTable>("lspRequestConfigCollTable", "lspGroupId"),
      status<&RsvpLerStatehubStatus::lspRequestStatusCollTable>("lspRequestStatusCollTable", "lspGroupId"),
      status<&RsvpLerStatehubStatus::cspfPathKeyMapping>("cspfPathKeyMapping", "lspGroupId"),
      fathom<&RsvpLerFathomStatus::superTunnelConfigColl>("superTunnelConfigColl", "tunnelSpecId"),
      fathom<&RsvpLerFathomStatus::autoBwConfig>("autoBwConfig", "tunnelSpecId"),
      fathom<&RsvpLerFathomStatus::rsvpLerTunnelHistory>("rsvpLerTunnelHistory", "tunnelIndex"),
      fathom<&RsvpLerFathomStatus::rsvpLerSubTunnelHistory>("rsvpLerSubTunnelHistory", "tunnelIndex"),
};

} // namespace

FeedTable const* findFeedTable(std::string_view name) noexcept {
   auto const* const found = std::ranges::find(tables, name, &FeedTable::name);
   return found == std::end(tables) ? nullptr : found;
}

} // namespace Host
