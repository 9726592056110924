#pragma once

#include "RsvpLer/output/NumberText.h"

#include <cstddef>
#include <string_view>

namespace Kerf {

// A buffer that characters are written into. What makes room behind the write position is the business of the
// class that derives from it. A buffer is used by one thread.
class DynamicBufferInterface {
public:
   DynamicBufferInterface(DynamicBufferInterface const&) = delete;
   DynamicBufferInterface& operator=(DynamicBufferInterface const&) = delete;

   // Leaves at least `required` free bytes between writePtr and endPtr. May move the storage, and with it
   // both pointers; may throw what the derived class says, leaving both pointers valid.
   virtual void allocateSpace(std::size_t required) = 0;
   virtual ~DynamicBufferInterface() = default;

   // The write position, with at least `required` bytes free behind it. Doesn't move the write position. An
   // allocateSpace that leaves less ends the process through an assertion.
   char* getBuffer(std::size_t required) {
      if (static_cast<std::size_t>(endPtr - writePtr) < required) [[unlikely]]
         makeRoom(required);
      return writePtr;
   }

   // Appends the text and stores a NUL behind it, which the next add overwrites: the text is always
   // terminated.
   void add(std::string_view text);
   // Appends the decimal digits under the same rule and returns how many there are.
   template<UnsignedNumber T>
   std::size_t add(T value) {
      char* const start = getBuffer(maxDigits<T> + 1);
      writePtr = putNumber(start, value);
      *writePtr = '\0';
      return static_cast<std::size_t>(writePtr - start);
   }

   char* writePtr = nullptr; // the next byte to write
   char* endPtr = nullptr;   // one past the last byte that may be written

protected:
   DynamicBufferInterface() noexcept = default;

private:
   void makeRoom(std::size_t required);
};

} // namespace Kerf
