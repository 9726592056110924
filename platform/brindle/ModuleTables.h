#pragma once

#include "brindle/MemberDeclaration.h"
#include "brindle/ModuleInspectData.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <tuple>

// Lays the declarations of a module's types out as the tables of its record, while the module is compiled.

namespace Brindle {

struct TypeDeclaration {
   std::string_view name;
   TypeKind kind;
   std::span<MemberDeclaration const> members;
   FunctionTable functions;
};

template<std::size_t types_, std::size_t members_, std::size_t operations>
struct ModuleTables {
   std::array<TypeData, types_> types{};
   std::array<MemberData, members_> members{};
   std::array<OperationSignature, operations> signatures{};
   std::array<std::string_view, types_> typeNames{};
   std::array<std::string_view, members_> memberNames{};
   std::array<FunctionTable, types_> functionTables{};
};

namespace Impl {

consteval std::size_t memberCount(std::span<TypeDeclaration const> types) {
   std::size_t count = 0;
   for (TypeDeclaration const& type : types)
      count += type.members.size();
   return count;
}

consteval std::size_t operationCount(std::span<TypeDeclaration const> types) {
   std::size_t count = 0;
   for (TypeDeclaration const& type : types) {
      for (MemberDeclaration const& member : type.members)
         count += member.kind == MemberKind::operation;
   }
   return count;
}

constexpr std::uint16_t placeOfModule(std::span<std::string_view const> modules, std::string_view name) {
   for (std::size_t place = 0; place < modules.size(); ++place) {
      if (modules[place] == name)
         return static_cast<std::uint16_t>(place);
   }
   throw "a type belongs to a module that is no dependency";
}

} // namespace Impl

// The tables of `types`, an array of TypeDeclaration in the order of their numbers. `module` is the record that will
// hold them.
template<auto const& types>
consteval auto moduleTables(ModuleInspectData const& module) {
   ModuleTables<types.size(), Impl::memberCount(types), Impl::operationCount(types)> tables;
   std::uint16_t place = 0;
   std::uint16_t signature = 0;
   for (std::uint16_t number = 0; number < types.size(); ++number) {
      TypeDeclaration const& type = types[number];
      tables.types[number] = {number, type.kind, place, static_cast<std::uint16_t>(type.members.size()), &module};
      tables.typeNames[number] = type.name;
      tables.functionTables[number] = type.functions;
      for (MemberDeclaration const& member : type.members) {
         tables.members[place] = {{member.number}, member.kind, place, member.result, 0};
         tables.memberNames[place] = member.name;
         if (member.kind == MemberKind::operation) {
            tables.signatures[signature] = member.signature;
            tables.members[place].signature = signature++;
         }
         ++place;
      }
   }
   return tables;
}

// The references to the foreign types of a module, in their order.
template<class Module>
consteval auto typeReferences() {
   constexpr std::size_t count = std::tuple_size_v<decltype(Module::foreign)>;
   std::array<TypeReference, count> references;
   std::size_t place = 0;
   std::apply(
         [&](auto const&... type) {
            ((references[place++] = {Impl::placeOfModule(Module::dependencies, type.module), type.index}), ...);
         },
         Module::foreign);
   return references;
}

} // namespace Brindle
