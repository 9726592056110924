#pragma once

#include "RsvpLer/output/DescriptorWriter.h"
#include "RsvpLer/output/PrintBuffer.h"

#include <cstddef>
#include <memory>

namespace scrivo {

// The print buffer on a descriptor: the client's socket, or a pipe, terminal or file. It collects up to its
// capacity and drains whole. The descriptor stays its caller's. Destruction drops what has not been flushed;
// it never writes and never throws.
class ScrivoBuffer : public PrintBuffer {
public:
   // `capacity` in bytes; it is exceeded only by a single reservation that is larger, and the memory is given
   // back on destruction. `flags` is 1 in every command and selects nothing. `calls` must outlive the buffer.
   ScrivoBuffer(int descriptor, std::size_t capacity, unsigned flags,
                DescriptorCalls const& calls = DescriptorCalls::system);

   // Writes everything that is pending. Throws SigIntException("client gone") when that is impossible, and
   // SigIntException("interrupted") when it would have to wait while an interrupt is pending. What was
   // pending is then dropped.
   void ioflush() override;

protected:
   // Drains everything, and makes room. Throws as ioflush does, and "interrupted" also without having to
   // wait.
   void allocateSpace(std::size_t required) override;

private:
   void drain();
   void rewind() noexcept;

   std::unique_ptr<char[]> storage_;
   std::size_t capacity_;
   DescriptorWriter writer_;
};

} // namespace scrivo
