#pragma once

#include "brindle/Exception.h"
#include "brindle/MemberDeclaration.h"
#include "brindle/TypeData.h"
#include "brindle/ValueText.h"
#include "vane/EnumType.h"

#include <cstdint>

// The function tables of the three kinds of types, made from the declarations of their members.

namespace Brindle {

namespace Impl {

// The value of type T that is held; throws Exception when it is of another type.
template<class T>
decltype(auto) require(GenericValue const& value) {
   if (!value.holds<T>())
      throw Exception("a value of another type was given");
   return value.get<T>();
}

template<class T>
bool areEqual(GenericValue const& a, GenericValue const& b) {
   return a.holds<T>() && b.holds<T>() && a.get<T>() == b.get<T>();
}

// What can be asked of a whole value: whether it holds something, and whether it equals another.
template<class T>
InspectStatus inspectWhole(GenericValue& result, GenericValue const& object, InspectOpcode opcode,
                           Arguments arguments) {
   bool done = false;
   if (opcode == InspectOpcode::boolean)
      done = callWith<>(result, arguments, [&] { return static_cast<bool>(object.get<T>()); });
   else if (opcode == InspectOpcode::equal)
      done = callWith<T const&>(result, arguments, [&](T const& other) { return object.get<T>() == other; });
   return done ? InspectStatus::success : InspectStatus::refused;
}

template<class T, auto const& members>
struct ValueFunctions {
   static InspectStatus construct(GenericValue& result, GenericValue const* original) {
      if (original != nullptr && !original->holds<T>())
         return InspectStatus::refused;
      result = original == nullptr ? GenericValue(T()) : *original;
      return InspectStatus::success;
   }

   static InspectStatus constructFromArguments(GenericValue& result, Arguments arguments) {
      if (arguments.size() > 1)
         return InspectStatus::refused;
      return construct(result, arguments.empty() ? nullptr : arguments.data());
   }

   static InspectStatus operate(GenericValue& result, GenericValue& object, MemberDescriptor const* member,
                                InspectOpcode opcode, Arguments arguments) {
      if (!object.holds<T>())
         return InspectStatus::refused;
      if (member == nullptr)
         return inspectWhole<T>(result, object, opcode, arguments);
      return inspectMember(members, result, object, *member, opcode, arguments);
   }

   static String encode(GenericValue const& value) {
      require<T>(value);
      GenericValue object = value;
      GenericValue attribute;
      String text;
      for (MemberDeclaration const& member : members) {
         if (member.kind == MemberKind::storedAttribute && member.read(attribute, object, {}))
            appendAttribute(text, member.name, attribute);
      }
      return text;
   }

   static std::uint32_t hash(GenericValue const& value) {
      require<T>(value);
      throw Exception("the type is not hashable");
   }
};

template<class Enum, auto const& enumType, auto const& members>
struct EnumerationFunctions {
   static InspectStatus construct(GenericValue& result, GenericValue const* original) {
      if (original != nullptr && !original->holds<Enum>())
         return InspectStatus::refused;
      result = original == nullptr ? GenericValue(Enum()) : *original;
      return InspectStatus::success;
   }

   // From an enumerator, its number or its name.
   static InspectStatus constructFromArguments(GenericValue& result, Arguments arguments) {
      if (arguments.size() != 1)
         return InspectStatus::refused;
      GenericValue const& from = arguments[0];
      if (from.holds<std::uint8_t>() && enumType.hasNumber(from.get<std::uint8_t>())) {
         result = static_cast<Enum>(from.get<std::uint8_t>());
         return InspectStatus::success;
      }
      if (from.holds<String>() && enumType.numberOf(from.get<String>())) {
         result = static_cast<Enum>(*enumType.numberOf(from.get<String>()));
         return InspectStatus::success;
      }
      return construct(result, &from);
   }

   static InspectStatus operate(GenericValue& result, GenericValue& object, MemberDescriptor const* member,
                                InspectOpcode opcode, Arguments arguments) {
      if (!object.holds<Enum>())
         return InspectStatus::refused;
      if (member == nullptr)
         return inspectWhole<Enum>(result, object, opcode, arguments);
      return inspectMember(members, result, object, *member, opcode, arguments);
   }

   static String encode(GenericValue const& value) {
      return enumType.stringValue(static_cast<std::uint8_t>(require<Enum>(value)));
   }
   static void decode(GenericValue& result, Vane::CharRange text) {
      result = static_cast<Enum>(enumType.requireName(text.rest()));
   }
   static std::uint32_t hash(GenericValue const& value) { return static_cast<std::uint32_t>(require<Enum>(value)); }
};

template<class T, auto const& members, auto factory>
struct ClassFunctions;

template<class T, auto const& members, class... Parameter, Ptr<T> (*factory)(Parameter...)>
struct ClassFunctions<T, members, factory> {
   static InspectStatus constructFromArguments(GenericValue& result, Arguments arguments) {
      return callWith<Parameter...>(result, arguments, factory) ? InspectStatus::success : InspectStatus::refused;
   }

   static InspectStatus operate(GenericValue& result, GenericValue& object, MemberDescriptor const* member,
                                InspectOpcode opcode, Arguments arguments) {
      if (object.object<T const>() == nullptr)
         return InspectStatus::refused;
      if (member == nullptr)
         return InspectStatus::unknownMember;
      return inspectMember(members, result, object, *member, opcode, arguments);
   }
};

} // namespace Impl

// Of an enumeration over U8: made from an enumerator, its number or its name, encoded as its name, hashed as its
// number.
template<class Enum, auto const& enumType, auto const& members>
consteval FunctionTable enumerationFunctions() {
   using Functions = Impl::EnumerationFunctions<Enum, enumType, members>;
   return {.genericIfConstructFromCtorArgs = &Functions::constructFromArguments,
           .inspectConstruct = &Functions::construct,
           .inspectOperation = &Functions::operate,
           .inspectEncodeToString = &Functions::encode,
           .inspectDecodeFromString = &Functions::decode,
           .inspectGetHash = &Functions::hash,
           .isEq = &Impl::areEqual<Enum>};
}

// Of a value type without a hash: made from nothing or a copy, encoded as its stored attributes. `decode` reads that
// form.
template<class T, auto const& members>
consteval FunctionTable valueFunctions(void (*decode)(GenericValue& result, Vane::CharRange text)) {
   using Functions = Impl::ValueFunctions<T, members>;
   return {.genericIfConstructFromCtorArgs = &Functions::constructFromArguments,
           .inspectConstruct = &Functions::construct,
           .inspectOperation = &Functions::operate,
           .inspectEncodeToString = &Functions::encode,
           .inspectDecodeFromString = decode,
           .inspectGetHash = &Functions::hash,
           .isEq = &Impl::areEqual<T>};
}

// Of a class whose objects `factory` makes from the arguments of the constructor.
template<class T, auto const& members, auto factory>
consteval FunctionTable classFunctions() {
   using Functions = Impl::ClassFunctions<T, members, factory>;
   return {.genericIfConstructFromCtorArgs = &Functions::constructFromArguments,
           .inspectOperation = &Functions::operate};
}

} // namespace Brindle
