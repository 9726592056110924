#include "brindle/ModuleInspectData.h"

#include <algorithm>
#include <mutex>
#include <new>
#include <shared_mutex>
#include <utility>

namespace Brindle {

namespace {

struct Registry {
   std::shared_mutex mutex;
   std::vector<ModuleInspectData const*> modules;
   std::vector<String> loadErrors;
};

// Never destroyed: modules withdraw themselves while the process ends.
Registry& registry() {
   static Registry& instance = *new Registry;
   return instance;
}

ModuleInspectData const* moduleNamed(Registry const& all, std::string_view name) noexcept {
   auto const found = std::ranges::find(all.modules, name, &ModuleInspectData::name);
   return found == all.modules.end() ? nullptr : *found;
}

TypeData const* typeNamed(Registry const& all, std::string_view name) noexcept {
   for (ModuleInspectData const* const module : all.modules) {
      auto const found = std::ranges::find(module->typeNames, name);
      if (found != module->typeNames.end())
         return &module->types[static_cast<std::size_t>(found - module->typeNames.begin())];
   }
   return nullptr;
}

// Empty when nothing stands against the module.
String reasonAgainst(Registry const& all, ModuleInspectData const& module) {
   String const name(module.name);
   if (ModuleInspectData const* const present = moduleNamed(all, module.name))
      return present == &module ? "module " + name + " was announced twice"
                                : "another module of the name " + name + " is already loaded";
   for (std::string_view const typeName : module.typeNames) {
      if (TypeData const* const present = typeNamed(all, typeName))
         return "module " + name + ": module " + String(present->module->name) + " already has a type " +
                String(typeName);
   }
   return {};
}

} // namespace

bool ModuleInspectData::loaded(ModuleInspectData const& module) noexcept {
   try {
      Registry& all = registry();
      std::lock_guard const lock(all.mutex);
      String reason = reasonAgainst(all, module);
      bool const accepted = reason.empty();
      if (accepted)
         all.modules.push_back(&module);
      else
         all.loadErrors.push_back(std::move(reason));
      return accepted;
   } catch (std::bad_alloc const&) {
      return false;
   }
}

void ModuleInspectData::unloaded(ModuleInspectData const& module) noexcept {
   Registry& all = registry();
   std::lock_guard const lock(all.mutex);
   std::erase(all.modules, &module);
}

std::vector<String> ModuleInspectData::takeLoadErrors() {
   Registry& all = registry();
   std::lock_guard const lock(all.mutex);
   return std::exchange(all.loadErrors, {});
}

ModuleInspectData const* ModuleInspectData::findModule(std::string_view moduleName) noexcept {
   Registry& all = registry();
   std::shared_lock const lock(all.mutex);
   return moduleNamed(all, moduleName);
}

TypeData const* ModuleInspectData::findType(std::string_view typeName) noexcept {
   Registry& all = registry();
   std::shared_lock const lock(all.mutex);
   return typeNamed(all, typeName);
}

} // namespace Brindle
