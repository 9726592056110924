#include "host/CommandModule.h"

#include "RsvpLer/state/Lookups.h"
#include "brindle/ModuleInspectData.h"

#include <dlfcn.h>

namespace Host {

namespace {

constexpr char const* recordName = "_RsvpLerCliCapi_35b5d92e19a7383a_vaneModule";

// In the build tree and where they are installed, the module stands in the directory of the library with the records.
std::string fileBesideRecords() {
   Dl_info records = {};
   dladdr(reinterpret_cast<void*>(&Rsvp::findLspGroupStatus), &records);
   std::string const file = records.dli_fname == nullptr ? "" : records.dli_fname;
   return file.substr(0, file.rfind('/') + 1) + LER_MODULE_NAME;
}

[[noreturn]] void fail(std::string const& reason) {
   throw ModuleError("cannot load the show commands: " + reason);
}

// Why the registry turned the module away.
std::string loadErrors() {
   std::string all;
   for (Brindle::String const& error : Brindle::ModuleInspectData::takeLoadErrors())
      all.append(all.empty() ? "" : "; ").append(error);
   return all;
}

} // namespace

CommandModule::CommandModule() : CommandModule(fileBesideRecords()) {
}

CommandModule::CommandModule(std::string const& fileName) : library_(dlopen(fileName.c_str(), RTLD_NOW | RTLD_LOCAL)) {
   if (!library_)
      fail(dlerror());
   auto const* const record = static_cast<Brindle::ModuleInspectData const*>(dlsym(library_.get(), recordName));
   if (record == nullptr)
      fail(fileName + " is not the library of the show commands");
   if (Brindle::ModuleInspectData::findModule(record->name) != record)
      fail(fileName + ": " + loadErrors());
}

void CommandModule::Unload::operator()(void* library) const noexcept {
   dlclose(library);
}

} // namespace Host
