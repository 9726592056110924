#include "brindle/MemberDeclaration.h"

#include <algorithm>

namespace Brindle {

namespace {

// nullptr when the member refuses the operation.
MemberFunction functionFor(MemberDeclaration const& member, InspectOpcode opcode) noexcept {
   switch (opcode) {
   case InspectOpcode::read:
      return member.read;
   case InspectOpcode::write:
      return member.write;
   case InspectOpcode::call:
      return member.call;
   case InspectOpcode::boolean:
   case InspectOpcode::equal:
      return nullptr;
   }
   // A byte that is no operation code.
   return nullptr;
}

} // namespace

InspectStatus inspectMember(std::span<MemberDeclaration const> members, GenericValue& result, GenericValue& object,
                            MemberDescriptor const& member, InspectOpcode opcode, Arguments arguments) {
   auto const found = std::ranges::find(members, member.number, &MemberDeclaration::number);
   if (found == members.end())
      return InspectStatus::unknownMember;
   MemberFunction const function = functionFor(*found, opcode);
   bool const done = function != nullptr && function(result, object, arguments);
   return done ? InspectStatus::success : InspectStatus::refused;
}

} // namespace Brindle
