#include "tests/properties/Views.h"

#include <sys/mman.h>
#include <unistd.h>

#include <stdexcept>

namespace Tests {

namespace {

// A file in memory, emptied each time.
template<class Render>
std::string writtenBy(Render&& render) {
   static int const file = memfd_create("answer", MFD_CLOEXEC);
   if (file < 0 || ftruncate(file, 0) != 0 || lseek(file, 0, SEEK_SET) != 0)
      throw std::runtime_error("no file in memory");
   render(static_cast<std::uint32_t>(file));
   std::string text(static_cast<std::size_t>(lseek(file, 0, SEEK_END)), ' ');
   if (pread(file, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size()))
      throw std::runtime_error("the answer can't be read");
   return text;
}

} // namespace

Brindle::Ptr<Rsvp::Cli::ShowRsvpLerTunnel> tunnelCommand(Host::RouterState const& state) {
   return Rsvp::Cli::showRsvpLerTunnelFactory(state.rsvpCliConfig, state.rsvpLerCliConfig, state.rsvpLerStatus,
                                              state.rsvpLerFathomStatus);
}

Brindle::Ptr<Rsvp::Cli::ShowRsvpLer> statusCommand(Host::RouterState const& state) {
   return Rsvp::Cli::showRsvpLerFactory(state.rsvpLerConfig, state.rsvpLerCliConfig, state.rsvpLerStatus,
                                        state.rsvpLerFathomStatus, state.tallyFeatureConfigDir);
}

std::string answer(Rsvp::Cli::ShowRsvpLerTunnel& command, View const& view, Form form, std::string_view name) {
   return writtenBy([&](std::uint32_t file) {
      command.render(file, static_cast<std::uint32_t>(form), {std::string(name)}, view.summary, view.lspDetails,
                     view.detail, view.history, view.subTunnel);
   });
}

std::string answer(Rsvp::Cli::ShowRsvpLer& command, Form form) {
   return writtenBy([&](std::uint32_t file) { command.render(file, static_cast<std::uint32_t>(form)); });
}

} // namespace Tests
