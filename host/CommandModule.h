#pragma once

#include "brindle/Exception.h"

#include <memory>
#include <string>

namespace Host {

// The show commands can't be loaded. what() is one line without a line feed.
class ModuleError : public Brindle::Exception {
public:
   using Exception::Exception;
};

// The library with the show commands, loaded for as long as this object lives. The program isn't linked with it: its
// types are found by name (brindle/Inspect.h). Whatever was made of them must be gone when this object goes.
class CommandModule {
public:
   // Loads the library that stands beside that of the records. Throws ModuleError.
   CommandModule();
   // Loads the library of that file name; throws ModuleError when it can't be loaded, is no module, or is a module
   // whose name or types are already taken.
   explicit CommandModule(std::string const& fileName);

private:
   struct Unload {
      void operator()(void* library) const noexcept;
   };

   std::unique_ptr<void, Unload> library_;
};

} // namespace Host
