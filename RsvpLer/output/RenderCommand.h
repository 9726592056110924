#pragma once

#include "RsvpLer/output/RendererV2.h"
#include "RsvpLer/output/ScrivoBuffer.h"
#include "RsvpLer/output/SigIntException.h"

#include <cstdint>
#include <cstdio>

namespace Rsvp::Cli {

// Runs one command: makes the buffer on the descriptor and the renderer for the format, opens the JSON document, calls
// body(renderer), closes the document and delivers everything. When the user interrupts, or the client has gone, the
// command ends with a line on standard output and the document stays as it is. Any other exception passes through.
template<class Body>
void renderCommand(std::uint32_t socket, std::uint32_t format, Body&& body) {
   constexpr std::size_t bufferSize = 1048576;
   try {
      scrivo::ScrivoBuffer buffer(static_cast<int>(socket), bufferSize, 1);
      scrivo::RendererV2 renderer(static_cast<scrivo::OutputFormat_t>(format), &buffer, true);
      if (renderer.isJson())
         renderer.writeChar('{');
      body(&renderer);
      if (renderer.isJson())
         renderer.writeString("}\n");
      renderer.ioflush();
   } catch (scrivo::SigIntException const& interrupt) {
      std::printf("exiting %s\n", interrupt.what());
      std::fflush(stdout);
   }
}

} // namespace Rsvp::Cli
