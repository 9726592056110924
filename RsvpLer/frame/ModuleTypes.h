#pragma once

#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/state/RsvpErrorWithNode.h"
#include "brindle/MemberDeclaration.h"

#include <array>
#include <string_view>
#include <tuple>

namespace Rsvp::Cli {

// The types that the reflected members use, by the modules they belong to.
struct ModuleTypes {
   // By their numbers.
   using Own = Brindle::TypeList<ShowTunnelVariant, ShowRsvpLerTunnelFilter, ShowRsvpLerTunnel, ShowRsvpLer>;

   static constexpr auto dependencies = std::to_array<std::string_view>({
         "RsvpCliConfig",
         "RsvpLerCliConfig",
         "RsvpLerConfig",
         "RsvpLerAutoBw",
         "RsvpLerAutoBwConfig",
         "RsvpLerCspfPathKeyMapping",
         "RsvpLerHistory",
         "RsvpLerLspGroupStatus",
         "RsvpLerLspRequestConfig",
         "RsvpLerLspRequestStatus",
         "RsvpLerMbbTunnelConfig",
         "RsvpLerMbbTunnelStatus",
         "RsvpLerPathSpecConfig",
         "RsvpLerFathomStatus",
         "RsvpLerStatehubStatus",
         "RsvpLerSubTunnelConfig",
         "RsvpLerSubTunnelIndexMap",
         "RsvpLerSubTunnelStatus",
         "RsvpLerSuperTunnelConfig",
         "RsvpLerSuperTunnelStatus",
         "RsvpLerTunnelIndexMap",
         "RsvpLerTunnelSpec",
         "RsvpLerTunnelSpecId",
         "AmbitTallyFeature",
   });

   // Within a module the keys and enumerations come first, then the records, then the tables.
   static constexpr std::tuple foreign = {
         Brindle::ForeignType<RsvpCliConfig>{"RsvpCliConfig", 0},
         Brindle::ForeignType<RsvpLerCliConfig>{"RsvpLerCliConfig", 0},
         Brindle::ForeignType<RsvpLerConfig>{"RsvpLerConfig", 0},
         Brindle::ForeignType<RsvpLerBwSamplingStatusColl>{"RsvpLerAutoBw", 0},
         Brindle::ForeignType<RsvpLerAutoBwStats>{"RsvpLerAutoBw", 1},
         Brindle::ForeignType<RsvpLerAutoBwConfig>{"RsvpLerAutoBwConfig", 0},
         Brindle::ForeignType<RsvpLerCspfPathKeyMapping>{"RsvpLerCspfPathKeyMapping", 0},
         Brindle::ForeignType<RsvpLerTunnelHistory>{"RsvpLerHistory", 0},
         Brindle::ForeignType<RsvpLerSubTunnelHistory>{"RsvpLerHistory", 1},
         Brindle::ForeignType<RsvpLerLspGroupId>{"RsvpLerLspGroupStatus", 0},
         Brindle::ForeignType<RsvpLerLspGroupStatus>{"RsvpLerLspGroupStatus", 1},
         Brindle::ForeignType<RsvpLerLspGroupStatusCollTable>{"RsvpLerLspGroupStatus", 2},
         Brindle::ForeignType<RsvpLerLspRequestConfigId>{"RsvpLerLspRequestConfig", 0},
         Brindle::ForeignType<RsvpLerLspRequestConfig>{"RsvpLerLspRequestConfig", 1},
         Brindle::ForeignType<RsvpLerLspRequestConfigCollTable>{"RsvpLerLspRequestConfig", 2},
         Brindle::ForeignType<RsvpLerLspRequestStatus>{"RsvpLerLspRequestStatus", 0},
         Brindle::ForeignType<RsvpErrorWithNodeOrderedSet>{"RsvpLerLspRequestStatus", 1},
         Brindle::ForeignType<RsvpLerLspRequestStatusCollTable>{"RsvpLerLspRequestStatus", 2},
         Brindle::ForeignType<RsvpLerMbbTunnelConfigId>{"RsvpLerMbbTunnelConfig", 0},
         Brindle::ForeignType<RsvpLerMbbTunnelConfig>{"RsvpLerMbbTunnelConfig", 1},
         Brindle::ForeignType<RsvpLerMbbTunnelConfigCollTable>{"RsvpLerMbbTunnelConfig", 2},
         Brindle::ForeignType<RsvpLerMbbTunnelStatus>{"RsvpLerMbbTunnelStatus", 0},
         Brindle::ForeignType<RsvpLerMbbTunnelStatusCollTable>{"RsvpLerMbbTunnelStatus", 1},
         Brindle::ForeignType<RsvpLerPathSpecConfigColl>{"RsvpLerPathSpecConfig", 0},
         Brindle::ForeignType<RsvpLerFathomStatus>{"RsvpLerFathomStatus", 0},
         Brindle::ForeignType<RsvpLerStatehubStatus>{"RsvpLerStatehubStatus", 0},
         Brindle::ForeignType<RsvpLerSubTunnelConfigId>{"RsvpLerSubTunnelConfig", 0},
         Brindle::ForeignType<RsvpLerSubTunnelConfigCollTable>{"RsvpLerSubTunnelConfig", 1},
         Brindle::ForeignType<RsvpLerSubTunnelIndexMap>{"RsvpLerSubTunnelIndexMap", 0},
         Brindle::ForeignType<RsvpLerSubTunnelStatusColl>{"RsvpLerSubTunnelStatus", 0},
         Brindle::ForeignType<RsvpLerSubTunnelStatusCollTable>{"RsvpLerSubTunnelStatus", 1},
         Brindle::ForeignType<RsvpSessionType>{"RsvpLerSuperTunnelConfig", 0},
         Brindle::ForeignType<RsvpLerSuperTunnelConfigColl>{"RsvpLerSuperTunnelConfig", 1},
         Brindle::ForeignType<RsvpLerSuperTunnelStatusColl>{"RsvpLerSuperTunnelStatus", 0},
         Brindle::ForeignType<RsvpLerTunnelIndexMap>{"RsvpLerTunnelIndexMap", 0},
         Brindle::ForeignType<RsvpLerTunnelSpecPtrConstColl>{"RsvpLerTunnelSpec", 0},
         Brindle::ForeignType<RsvpLerTunnelSpecId>{"RsvpLerTunnelSpecId", 0},
         Brindle::ForeignType<Ambit::Tally::FeatureConfigDir>{"AmbitTallyFeature", 0},
   };
};

} // namespace Rsvp::Cli
