#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Soak {

// One view, and what every answer must show of the tunnels that nobody touches.
struct View {
   std::string request;
   bool isJson = false;
   bool inColumns = false;           // rows whose column widths depend on other rows
   std::vector<std::string> stayers; // the parts of the answer, in their order
};

// All views. `ask(request)` gives the answer of a router that nobody changes; `stays(name)` tells the tunnels that are
// never touched.
std::vector<View> makeViews(std::string (*ask)(std::string const& request), bool (*stays)(std::string_view name));

// What is wrong with an answer that was given while the other tunnels changed; empty when nothing is.
std::string whatIsWrong(View const& view, std::string const& answer);

} // namespace Soak
