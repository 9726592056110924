#include "brindle/TypeData.h"

#include "brindle/ModuleInspectData.h"

namespace Brindle {

std::string_view TypeData::name() const noexcept {
   return module->typeNames[number];
}

FunctionTable const& TypeData::functions() const noexcept {
   return module->functionTables[number];
}

std::span<MemberData const> TypeData::members() const noexcept {
   return module->members.subspan(firstMember, memberCount);
}

MemberData const* TypeData::findMember(std::string_view name) const noexcept {
   for (MemberData const& member : members()) {
      if (memberName(member) == name)
         return &member;
   }
   return nullptr;
}

std::string_view TypeData::memberName(MemberData const& member) const noexcept {
   return module->memberNames[member.name];
}

OperationSignature const& TypeData::signature(MemberData const& operation) const noexcept {
   BRINDLE_ASSERT(operation.kind == MemberKind::operation);
   return module->signatures[operation.signature];
}

} // namespace Brindle
