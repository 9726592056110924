#pragma once

#include "RsvpLer/RsvpLerCliCapi.h"

#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Tests {

// What body(descriptor) writes into a file.
template<class Body>
std::string answerOf(Body&& body) {
   std::FILE* const file = std::tmpfile();
   if (file == nullptr)
      throw std::runtime_error("no temporary file");
   body(static_cast<std::uint32_t>(fileno(file)));
   std::string answer;
   std::rewind(file);
   char chunk[4096];
   while (std::size_t const count = std::fread(chunk, 1, sizeof chunk, file))
      answer.append(chunk, count);
   std::fclose(file);
   return answer;
}

// The five flags of a tunnel view.
struct Flags {
   bool summary = false;
   bool lspDetails = false;
   bool detail = false;
   bool history = false;
   bool subTunnel = false;
};

inline std::string tunnelAnswer(Rsvp::Cli::ShowRsvpLerTunnel& command, std::uint32_t format, Flags const& flags = {},
                                std::string_view name = {}) {
   return answerOf([&](std::uint32_t socket) {
      command.render(socket, format, {std::string(name)}, flags.summary, flags.lspDetails, flags.detail, flags.history,
                     flags.subTunnel);
   });
}

} // namespace Tests
