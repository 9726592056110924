#include "brindle/Inspect.h"

#include "brindle/Exception.h"
#include "brindle/ModuleInspectData.h"

namespace Brindle {

namespace {

String fullName(TypeData const& type, std::string_view member) {
   return String(type.name()) + "::" + String(member);
}

GenericValue operate(TypeData const& type, GenericValue& object, std::string_view memberName, InspectOpcode opcode,
                     Arguments arguments) {
   MemberData const* const member = type.findMember(memberName);
   if (member == nullptr)
      throw Exception("there is no " + fullName(type, memberName));
   GenericValue result;
   if (type.functions().inspectOperation(result, object, member, opcode, arguments) != InspectStatus::success)
      throw Exception(fullName(type, memberName) + " refused the request");
   return result;
}

} // namespace

TypeData const& typeNamed(std::string_view name) {
   TypeData const* const type = ModuleInspectData::findType(name);
   if (type == nullptr)
      throw Exception("no loaded module has a type " + String(name));
   return *type;
}

GenericValue construct(TypeData const& type, std::initializer_list<GenericValue> arguments) {
   GenericValue result;
   if (type.functions().genericIfConstructFromCtorArgs(result, {arguments.begin(), arguments.size()}) !=
       InspectStatus::success)
      throw Exception(String(type.name()) + " can't be made from these arguments");
   return result;
}

GenericValue read(TypeData const& type, GenericValue& object, std::string_view member) {
   return operate(type, object, member, InspectOpcode::read, {});
}

void write(TypeData const& type, GenericValue& object, std::string_view member, GenericValue const& value) {
   operate(type, object, member, InspectOpcode::write, {&value, 1});
}

GenericValue call(TypeData const& type, GenericValue& object, std::string_view operation,
                  std::initializer_list<GenericValue> arguments) {
   return operate(type, object, operation, InspectOpcode::call, {arguments.begin(), arguments.size()});
}

} // namespace Brindle
