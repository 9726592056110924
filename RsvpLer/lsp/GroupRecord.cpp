#include "RsvpLer/lsp/GroupRecord.h"

namespace Rsvp::Cli {

Handle<RsvpLerLspGroupStatus> findGroupRecord(Handle<RsvpLerLspGroupStatusCollTable> const& lspGroupStatusCollTable,
                                              RsvpLerLspGroupId const& lspGroupId) {
   if (!lspGroupStatusCollTable)
      return {};
   auto const groups = lspGroupStatusCollTable->lspGroupStatusColl(lspGroupId.mbbTunnelConfigId);
   return groups ? groups->find(lspGroupId) : nullptr;
}

} // namespace Rsvp::Cli
