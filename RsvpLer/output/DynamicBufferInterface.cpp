#include "RsvpLer/output/DynamicBufferInterface.h"

#include "brindle/Assert.h"

#include <cstring>

namespace Kerf {

void DynamicBufferInterface::add(std::string_view text) {
   char* const start = getBuffer(text.size() + 1);
   if (!text.empty())
      std::memcpy(start, text.data(), text.size());
   writePtr = start + text.size();
   *writePtr = '\0';
}

void DynamicBufferInterface::makeRoom(std::size_t required) {
   allocateSpace(required);
   BRINDLE_ASSERT_TEXT(static_cast<std::size_t>(endPtr - writePtr) >= required,
                       "endPtr - writePtr >= ptrdiff_t( required )");
}

} // namespace Kerf
