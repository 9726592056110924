#pragma once

#include "RsvpLer/RsvpLerCliCapi.h"
#include "host/state/RouterState.h"

#include <array>
#include <string>
#include <string_view>

// Whole answers of the show commands, as a client gets them.

namespace Tests {

// A tunnel view: the flags of the command.
struct View {
   char const* name;
   bool summary, lspDetails, detail, history, subTunnel;
};

inline constexpr auto tunnelViews = std::to_array<View>({
      {"plain", false, false, false, false, false},
      {"detail", false, false, true, false, false},
      {"lsp", false, true, false, false, false},
      {"summary", true, false, false, false, false},
      {"history", false, false, false, true, false},
      {"history detail", false, false, true, true, false},
      {"sub-tunnel plain", false, false, false, false, true},
      {"sub-tunnel detail", false, false, true, false, true},
      {"sub-tunnel lsp", false, true, false, false, true},
      {"sub-tunnel summary", true, false, false, false, true},
      {"sub-tunnel history", false, false, false, true, true},
      {"sub-tunnel history detail", false, false, true, true, true},
});

enum class Form : std::uint32_t { text = 1, json = 2 };
inline constexpr std::array forms = {Form::text, Form::json};

Brindle::Ptr<Rsvp::Cli::ShowRsvpLerTunnel> tunnelCommand(Host::RouterState const& state);
Brindle::Ptr<Rsvp::Cli::ShowRsvpLer> statusCommand(Host::RouterState const& state);

// What the command writes to its descriptor; of the tunnels of that name, or of all when it is empty.
std::string answer(Rsvp::Cli::ShowRsvpLerTunnel& command, View const& view, Form form, std::string_view name = {});
std::string answer(Rsvp::Cli::ShowRsvpLer& command, Form form);

} // namespace Tests
