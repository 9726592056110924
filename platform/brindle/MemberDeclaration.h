#pragma once

#include "brindle/TypeData.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

// A module declares each reflected member once, by its pointer, number and name:
//
//    using Declare = Brindle::Declare<ModuleTypes>;
//    constexpr auto members = std::to_array<Brindle::MemberDeclaration>({
//          Declare::attribute<&Command::width>(130, "width"),
//          Declare::operation<&Command::render>(131, "render", {"socket", "format"}),
//    });
//
// Its kind, result, arguments and the functions that operate on it follow from the pointer while the module is
// compiled.
//
// ModuleTypes tells which types belong to modules: `Own`, a TypeList of the module's own types by number;
// `dependencies`, an array of the names of other modules; `foreign`, a tuple of a ForeignType for each type of those.

namespace Brindle {

template<class... T>
struct TypeList {};

template<class T>
struct ForeignType {
   using Type = T;
   std::string_view module;
   std::uint16_t index; // number of the type in that module
};

// Operates on one member of an object. False, with nothing changed, when it is refused.
using MemberFunction = bool (*)(GenericValue& result, GenericValue& object, Arguments arguments);

struct MemberDeclaration {
   std::uint16_t number;
   MemberKind kind;
   std::string_view name;
   TypeUse result;
   OperationSignature signature = {}; // of an operation
   // nullptr for what the member always refuses.
   MemberFunction read = nullptr;
   MemberFunction write = nullptr;
   MemberFunction call = nullptr;
};

// Operates on the member of that number among the declared ones.
InspectStatus inspectMember(std::span<MemberDeclaration const> members, GenericValue& result, GenericValue& object,
                            MemberDescriptor const& member, InspectOpcode opcode, Arguments arguments);

namespace Impl {

// The place of T among the types, or their number when it isn't one of them.
template<class T, class... Type>
consteval std::size_t placeAmong() {
   std::size_t place = 0;
   static_cast<void>(((std::is_same_v<T, Type> || (++place, false)) || ...));
   return place;
}

template<class T, class... Own, class... Foreign>
consteval TypeUse typeUseOf(TypeForm form, TypeList<Own...>, std::tuple<Foreign...> const&) {
   constexpr std::size_t own = placeAmong<T, Own...>();
   constexpr std::size_t foreign = placeAmong<T, typename Foreign::Type...>();
   static_assert(own < sizeof...(Own) || foreign < sizeof...(Foreign), "a member uses a type of no module");
   bool const ofThisModule = own < sizeof...(Own);
   return {form, ofThisModule, static_cast<std::uint16_t>(ofThisModule ? own : foreign)};
}

// How a member with a result or argument of type T uses that type.
template<class Module, class T>
consteval TypeUse typeUse() {
   using Plain = std::remove_cvref_t<T>;
   if constexpr (std::is_void_v<Plain>) {
      return {TypeForm::none};
   } else if constexpr (PlainType<Plain>) {
      constexpr TypeForm forms[] = {TypeForm::boolean, TypeForm::u8,  TypeForm::u16,
                                    TypeForm::u32,     TypeForm::u64, TypeForm::string};
      return {forms[placeAmong<Plain, bool, std::uint8_t, std::uint16_t, std::uint32_t, std::uint64_t, String>()]};
   } else if constexpr (HandleType<Plain>) {
      using Target = typename HandleTarget<Plain>::Type;
      TypeForm const form = std::is_const_v<Target> ? TypeForm::handleToConst : TypeForm::handle;
      return typeUseOf<std::remove_const_t<Target>>(form, typename Module::Own{}, Module::foreign);
   } else {
      TypeForm const form = std::is_enum_v<Plain> ? TypeForm::enumeration : TypeForm::value;
      return typeUseOf<Plain>(form, typename Module::Own{}, Module::foreign);
   }
}

// Calls `function` with the arguments as the parameter types want them and sets the result. False without a call when
// their count or the type of one is wrong.
template<class... Parameter, class Function>
bool callWith(GenericValue& result, Arguments arguments, Function&& function) {
   if (arguments.size() != sizeof...(Parameter))
      return false;
   return [&]<std::size_t... i>(std::index_sequence<i...>) {
      if (!(arguments[i].template holds<std::remove_cvref_t<Parameter>>() && ...))
         return false;
      using Result = std::invoke_result_t<Function, Parameter...>;
      if constexpr (std::is_void_v<Result>) {
         function(arguments[i].template get<std::remove_cvref_t<Parameter>>()...);
         result = GenericValue();
      } else {
         result = GenericValue(function(arguments[i].template get<std::remove_cvref_t<Parameter>>()...));
      }
      return true;
   }
   (std::index_sequence_for<Parameter...>{});
}

template<auto member>
struct MemberAccess;

template<class Class, class Field, Field Class::*field>
requires(!std::is_function_v<Field>) struct MemberAccess<field> {
   using Result = Field;
   static constexpr MemberKind kind = MemberKind::storedAttribute;

   static bool read(GenericValue& result, GenericValue& object, Arguments arguments) {
      auto const* const self = object.object<Class const>();
      return self != nullptr && callWith<>(result, arguments, [self] { return self->*field; });
   }
   static bool write(GenericValue& result, GenericValue& object, Arguments arguments) {
      auto* const self = object.object<Class>();
      return self != nullptr &&
             callWith<Field const&>(result, arguments, [self](Field const& value) { self->*field = value; });
   }
};

template<class Field, Field const* constant>
struct MemberAccess<constant> {
   using Result = Field;
   static constexpr MemberKind kind = MemberKind::computedAttribute;

   static bool read(GenericValue& result, GenericValue&, Arguments arguments) {
      return callWith<>(result, arguments, [] { return *constant; });
   }
};

template<auto member, class Self, class Return, class... Parameter>
struct FunctionAccess {
   using Result = Return;
   static constexpr MemberKind kind = sizeof...(Parameter) == 0 ? MemberKind::computedAttribute : MemberKind::operation;

   template<class Module>
   static consteval std::array<TypeUse, sizeof...(Parameter)> argumentTypes() {
      return {typeUse<Module, Parameter>()...};
   }
   using ArgumentNames = std::array<std::string_view, sizeof...(Parameter)>;

   static bool call(GenericValue& result, GenericValue& object, Arguments arguments) {
      auto* const self = object.object<Self>();
      return self != nullptr && callWith<Parameter...>(result, arguments, [self](Parameter... argument) -> Return {
                return (self->*member)(argument...);
             });
   }
};

template<class Class, class Return, class... Parameter, Return (Class::*member)(Parameter...)>
struct MemberAccess<member> : FunctionAccess<member, Class, Return, Parameter...> {};

template<class Class, class Return, class... Parameter, Return (Class::*member)(Parameter...) const>
struct MemberAccess<member> : FunctionAccess<member, Class const, Return, Parameter...> {};

template<class Enum, std::uint8_t number>
bool readEnumerator(GenericValue& result, GenericValue&, Arguments arguments) {
   return callWith<>(result, arguments, [] { return static_cast<Enum>(number); });
}

} // namespace Impl

template<class Module>
struct Declare {
   // A field, a constant of the class, or a const member function without arguments. A field that isn't a handle can be
   // written; handles are fixed when their object is made.
   template<auto member>
   static consteval MemberDeclaration attribute(std::uint16_t number, std::string_view name) {
      using Access = Impl::MemberAccess<member>;
      static_assert(Access::kind != MemberKind::operation, "an attribute takes no arguments");
      MemberDeclaration declaration{number, Access::kind, name, Impl::typeUse<Module, typename Access::Result>()};
      if constexpr (requires { &Access::call; })
         declaration.read = &Access::call;
      else
         declaration.read = &Access::read;
      if constexpr (Access::kind == MemberKind::storedAttribute && !HandleType<typename Access::Result>)
         declaration.write = &Access::write;
      return declaration;
   }

   // A member function with arguments, whose names are given in their order.
   template<auto member>
   static consteval MemberDeclaration operation(std::uint16_t number, std::string_view name,
                                                typename Impl::MemberAccess<member>::ArgumentNames argumentNames) {
      using Access = Impl::MemberAccess<member>;
      static_assert(Access::kind == MemberKind::operation, "an operation takes arguments");
      MemberDeclaration declaration{number, Access::kind, name, Impl::typeUse<Module, typename Access::Result>()};
      auto const types = Access::template argumentTypes<Module>();
      static_assert(types.size() <= OperationSignature::maxArguments);
      for (std::string_view const argumentName : argumentNames) {
         if (argumentName.empty())
            throw "an argument has no name";
         std::size_t const place = declaration.signature.count++;
         declaration.signature.list[place] = {argumentName, types[place]};
      }
      declaration.call = &Access::call;
      return declaration;
   }

   // The enumerators of an enumeration of the module as its members, numbered by their values.
   template<class Enum, auto const& enumerators>
   static consteval auto enumeratorMembers() {
      return []<std::size_t... i>(std::index_sequence<i...>) {
         return std::array{enumeratorMember<Enum, enumerators[i].number>(enumerators[i].name)...};
      }
      (std::make_index_sequence<std::size(enumerators)>{});
   }

private:
   template<class Enum, std::uint8_t number>
   static consteval MemberDeclaration enumeratorMember(std::string_view name) {
      MemberDeclaration declaration{number, MemberKind::enumerator, name, Impl::typeUse<Module, Enum>()};
      declaration.read = &Impl::readEnumerator<Enum, number>;
      return declaration;
   }
};

} // namespace Brindle
