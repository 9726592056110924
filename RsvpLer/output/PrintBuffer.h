#pragma once

#include "RsvpLer/output/DynamicBufferInterface.h"

#include <cstddef>

namespace scrivo {

// Where a renderer writes to: a buffer of characters, and a place that they go to when it is full or flushed.
class PrintBuffer {
public:
   virtual ~PrintBuffer() = default;

   // The characters. A renderer stores straight behind chars.writePtr.
   class Chars final : public Kerf::DynamicBufferInterface {
   public:
      explicit Chars(PrintBuffer& owner) noexcept : owner_(owner) {}
      void allocateSpace(std::size_t required) override { owner_.allocateSpace(required); }

   private:
      PrintBuffer& owner_;
   };
   Chars chars{*this};

   // Sends everything that has been written on its way. May throw SigIntException.
   virtual void ioflush() = 0;

protected:
   PrintBuffer() noexcept = default;
   // The reserve operation of `chars`. May throw SigIntException.
   virtual void allocateSpace(std::size_t required) = 0;
};

} // namespace scrivo
