#pragma once

#include "brindle/TypeData.h"

#include <span>
#include <string_view>
#include <vector>

namespace Brindle {

// What a module publishes of itself: constant tables, valid from its load to its unload.
struct ModuleInspectData {
   std::span<TypeData const> types;
   std::span<MemberData const> members; // those of each type together, in the order of the types
   std::span<OperationSignature const> signatures;
   std::span<std::string_view const> typeNames;   // by the number of the type
   std::span<std::string_view const> memberNames; // in the order of the members
   std::span<FunctionTable const> functionTables; // by the number of the type
   std::span<TypeReference const> typeReferences;

   std::string_view name;
   std::span<std::string_view const> dependencies; // the names of the modules it needs

   // Announces a module: from then on its types can be found. Returns false, and records why for takeLoadErrors(), when
   // the module, one of its name or a type of one of its names is already there; nothing of it can be found then.
   static bool loaded(ModuleInspectData const& module) noexcept;
   // Withdraws a module that was announced, before its tables go. One that isn't there is ignored. Whoever unloads a
   // module sees to it that no object and no generic value of its types is left.
   static void unloaded(ModuleInspectData const& module) noexcept;

   // Why modules couldn't be announced since the last call, one line each.
   static std::vector<String> takeLoadErrors();

   // The module or type of that full name, nullptr when no module has announced one. Any thread may call these; what
   // they return is valid as long as the module stays loaded.
   static ModuleInspectData const* findModule(std::string_view moduleName) noexcept;
   static TypeData const* findType(std::string_view typeName) noexcept;
};

// A module holds one of these as a static object: it announces the module when the library is loaded and withdraws it
// when it is unloaded.
class ModuleRegistration {
public:
   explicit ModuleRegistration(ModuleInspectData const& module) noexcept
         : module_(ModuleInspectData::loaded(module) ? &module : nullptr) {}
   ModuleRegistration(ModuleRegistration const&) = delete;
   ModuleRegistration& operator=(ModuleRegistration const&) = delete;
   ~ModuleRegistration() {
      if (module_ != nullptr)
         ModuleInspectData::unloaded(*module_);
   }

private:
   ModuleInspectData const* module_; // nullptr when the module was turned away
};

} // namespace Brindle
