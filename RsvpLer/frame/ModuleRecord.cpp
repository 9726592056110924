#include "RsvpLer/frame/ModuleRecord.h"

#include "RsvpLer/frame/Members.h"
#include "brindle/ModuleTables.h"
#include "brindle/TypeFunctions.h"

namespace Rsvp::Cli {

namespace {

void decodeFilter(Brindle::GenericValue& result, Vane::CharRange text) {
   ShowRsvpLerTunnelFilter filter;
   filter.tunnelName = Brindle::readTextAttribute(text, "tunnelName");
   Brindle::requireConsumed(text);
   result = std::move(filter);
}

constexpr auto types = std::to_array<Brindle::TypeDeclaration>({
      {showTunnelVariantType.name(), Brindle::TypeKind::enumeration, showTunnelVariantMembers,
       Brindle::enumerationFunctions<ShowTunnelVariant, showTunnelVariantType, showTunnelVariantMembers>()},
      {"Rsvp::Cli::ShowRsvpLerTunnelFilter", Brindle::TypeKind::value, showRsvpLerTunnelFilterMembers,
       Brindle::valueFunctions<ShowRsvpLerTunnelFilter, showRsvpLerTunnelFilterMembers>(&decodeFilter)},
      {"Rsvp::Cli::ShowRsvpLerTunnel", Brindle::TypeKind::objectClass, showRsvpLerTunnelMembers,
       Brindle::classFunctions<ShowRsvpLerTunnel, showRsvpLerTunnelMembers, &ShowRsvpLerTunnel::ShowRsvpLerTunnelIs>()},
      {"Rsvp::Cli::ShowRsvpLer", Brindle::TypeKind::objectClass, showRsvpLerMembers,
       Brindle::classFunctions<ShowRsvpLer, showRsvpLerMembers, &ShowRsvpLer::ShowRsvpLerIs>()},
});

constexpr auto tables = Brindle::moduleTables<types>(_RsvpLerCliCapi_35b5d92e19a7383a_vaneModule);
constexpr auto references = Brindle::typeReferences<ModuleTypes>();

Brindle::ModuleRegistration const registration(_RsvpLerCliCapi_35b5d92e19a7383a_vaneModule);

} // namespace

Brindle::TypeData const* showRsvpLerTunnelTypeData() noexcept {
   return &tables.types[2];
}

Brindle::TypeData const* showRsvpLerTypeData() noexcept {
   return &tables.types[3];
}

} // namespace Rsvp::Cli

// No part of it is made while the program runs, so it is whole before the registration announces it.
constinit Brindle::ModuleInspectData const _RsvpLerCliCapi_35b5d92e19a7383a_vaneModule = {
      .types = Rsvp::Cli::tables.types,
      .members = Rsvp::Cli::tables.members,
      .signatures = Rsvp::Cli::tables.signatures,
      .typeNames = Rsvp::Cli::tables.typeNames,
      .memberNames = Rsvp::Cli::tables.memberNames,
      .functionTables = Rsvp::Cli::tables.functionTables,
      .typeReferences = Rsvp::Cli::references,
      .name = "RsvpLerCliCapi",
      .dependencies = Rsvp::Cli::ModuleTypes::dependencies,
};
