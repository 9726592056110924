#include "RsvpLer/output/ScrivoBuffer.h"

#include "RsvpLer/output/SigIntException.h"
#include "vane/Interrupt.h"

namespace scrivo {

ScrivoBuffer::ScrivoBuffer(int descriptor, std::size_t capacity, [[maybe_unused]] unsigned flags,
                           DescriptorCalls const& calls)
      : storage_(std::make_unique_for_overwrite<char[]>(capacity)), capacity_(capacity), writer_(descriptor, calls) {
   rewind();
}

void ScrivoBuffer::ioflush() {
   drain();
}

void ScrivoBuffer::allocateSpace(std::size_t required) {
   if (Vane::Interrupt::pending()) {
      rewind();
      throw SigIntException("interrupted");
   }
   drain();
   if (required > capacity_) {
      storage_ = std::make_unique_for_overwrite<char[]>(required);
      capacity_ = required;
      rewind();
   }
}

void ScrivoBuffer::drain() {
   auto const pending = static_cast<std::size_t>(chars.writePtr - storage_.get());
   // Before the write, so that a throw leaves nothing pending.
   rewind();
   if (pending != 0)
      writer_.writeAll(storage_.get(), pending);
}

void ScrivoBuffer::rewind() noexcept {
   chars.writePtr = storage_.get();
   chars.endPtr = storage_.get() + capacity_;
}

} // namespace scrivo
