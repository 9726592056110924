#pragma once

#include "RsvpLer/output/PrintBuffer.h"
#include "brindle/Node.h"

#include <cstdint>

namespace scrivo {

// A value other than these two is possible, since the number comes from the client: then neither the text
// operations nor the JSON operations of a renderer write.
enum class OutputFormat_t : std::uint32_t { text = 1, json = 2 };

// The base of renderers: a format and the buffer that the output goes to. A renderer stands on the stack of
// the command that it serves and is used by that command's thread alone.
class Renderer : public Brindle::Node {
public:
   // The buffer stays its caller's and must outlive the renderer. The last argument is true in every command
   // and selects nothing.
   Renderer(OutputFormat_t format, PrintBuffer* buffer, [[maybe_unused]] bool always) noexcept
         : format_(format), buffer_(buffer) {}

   OutputFormat_t outputFormat() const noexcept { return format_; }
   // Sends everything that has been written on its way. Throws what the print buffer throws.
   void ioflush() { buffer_->ioflush(); }

   // True when the next JSON entry needs no comma in front of it. The JSON operations keep it; a routine that
   // writes an entry byte by byte reads and sets it itself.
   bool atContainerStart = true;

protected:
   Kerf::DynamicBufferInterface& chars() const noexcept { return buffer_->chars; }

private:
   OutputFormat_t format_;
   PrintBuffer* buffer_;
};

} // namespace scrivo
