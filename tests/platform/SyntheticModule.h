#pragma once

#include "brindle/ModuleInspectData.h"

#include <array>

namespace Tests {

// A module without members, as a test wants it named.
struct SyntheticModule {
   SyntheticModule(std::string_view name, std::string_view firstType, std::string_view secondType)
         : typeNames{firstType, secondType}, types{Brindle::TypeData{.number = 0, .module = &data},
                                                   Brindle::TypeData{.number = 1, .module = &data}} {
      data.types = types;
      data.typeNames = typeNames;
      data.functionTables = functionTables;
      data.name = name;
   }
   SyntheticModule(SyntheticModule const&) = delete;
   SyntheticModule& operator=(SyntheticModule const&) = delete;

   std::array<std::string_view, 2> typeNames;
   std::array<Brindle::TypeData, 2> types;
   std::array<Brindle::FunctionTable, 2> functionTables{};
   Brindle::ModuleInspectData data;
};

} // namespace Tests
