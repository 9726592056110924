#include "tests/soak/Views.h"

#include <simdjson.h>

#include <algorithm>
#include <functional>
#include <stdexcept>

namespace Soak {

namespace {

using simdjson::dom::element;

constexpr char const* options[] = {"",
                                   " --detail",
                                   " --lsp",
                                   " --summary",
                                   " --history",
                                   " --history --detail",
                                   " --sub-tunnel",
                                   " --sub-tunnel --detail",
                                   " --sub-tunnel --lsp",
                                   " --sub-tunnel --summary",
                                   " --sub-tunnel --history"};

// Blanks in a row become one, and rules none, so that widths don't count.
std::string withoutWidths(std::string const& text) {
   std::string result;
   for (char const c : text) {
      if (c != '-' && (c != ' ' || (!result.empty() && result.back() != ' ')))
         result += c;
   }
   return result;
}

// The names of an answer's tunnels that stay, in its order.
std::vector<std::string> stayersOf(std::string const& jsonAnswer, bool (*stays)(std::string_view)) {
   simdjson::dom::parser parser;
   simdjson::dom::object const tunnels = parser.parse(simdjson::padded_string(jsonAnswer))["tunnels"];
   std::vector<std::string> names;
   for (auto const& tunnel : tunnels) {
      if (stays(tunnel.key))
         names.emplace_back(tunnel.key);
   }
   return names;
}

// Takes the parts of an answer out, in its order.
class Parts {
public:
   explicit Parts(std::string answer) : answer_(std::move(answer)) {}

   // From `begin` to the next `end` behind it, or to the end of the answer. Empty when there is no such part: some
   // views have nothing to say of some tunnels.
   std::string upTo(std::string const& begin, std::string_view end) {
      std::size_t const first = answer_.find(begin, at_);
      if (first == std::string::npos)
         return "";
      std::size_t const next = answer_.find(end, first + begin.size());
      at_ = next == std::string::npos ? answer_.size() : next;
      std::string part = answer_.substr(first, at_ + 1 - first);
      // Empty lines may be those of the next tunnels, which have no log.
      while (part.ends_with("\n\n"))
         part.pop_back();
      return part;
   }
   // From the quoted name to the brace that closes the tunnel.
   std::string jsonMember(std::string const& name) {
      std::string const begin = '"' + name + "\":{";
      std::size_t const first = answer_.find(begin, at_);
      if (first == std::string::npos)
         throw std::runtime_error("no " + name);
      at_ = first + begin.size();
      for (int depth = 1; depth > 0; ++at_) {
         if (answer_[at_] == '"')
            at_ = answer_.find('"', at_ + 1); // names and words of made-up tunnels have no escapes
         else
            depth += (answer_[at_] == '{') - (answer_[at_] == '}');
      }
      return answer_.substr(first, at_ - first);
   }

private:
   std::string answer_;
   std::size_t at_ = 0; // what is before has been taken or passed
};

View makeView(std::string const& option, bool json, std::string (*ask)(std::string const&),
              bool (*stays)(std::string_view)) {
   View view;
   view.request = "tunnel" + option + (json ? " --json" : "");
   view.isJson = json;
   view.inColumns = !json && option.find("--summary") != std::string::npos;
   std::string const answer = ask(view.request);
   Parts parts(view.inColumns ? withoutWidths(answer) : answer);
   for (std::string const& name : stayersOf(ask("tunnel" + option + " --json"), stays)) {
      std::string part = json             ? parts.jsonMember(name)
                         : view.inColumns ? parts.upTo('\n' + withoutWidths(name) + ' ', "\n")
                                          : parts.upTo("Tunnel " + name + '\n', "\nTunnel ");
      if (!part.empty())
         view.stayers.push_back(std::move(part));
   }
   return view;
}

std::string whatIsWrongWithJson(std::string const& answer) {
   if (!answer.ends_with("}\n"))
      return "it doesn't end in a brace and a line feed";
   thread_local simdjson::dom::parser parser;
   element document;
   if (parser.parse(simdjson::padded_string(answer)).get(document) != simdjson::SUCCESS)
      return "it can't be parsed";
   return "";
}

} // namespace

std::vector<View> makeViews(std::string (*ask)(std::string const&), bool (*stays)(std::string_view)) {
   std::vector<View> views;
   for (char const* option : options) {
      views.push_back(makeView(option, true, ask, stays));
      views.push_back(makeView(option, false, ask, stays));
   }
   views.push_back({"status --json", true, false, {}});
   views.push_back({"status", false, false, {"\nP2P\n   Number of tunnels: ", "\n\nP2MP\n   Number of tunnels: "}});
   return views;
}

std::string whatIsWrong(View const& view, std::string const& answer) {
   if (view.isJson) {
      if (std::string wrong = whatIsWrongWithJson(answer); !wrong.empty())
         return wrong;
   } else if (!answer.ends_with('\n')) {
      return "it doesn't end in a line feed";
   }
   std::string const squeezed = view.inColumns ? withoutWidths(answer) : "";
   std::string const& compared = view.inColumns ? squeezed : answer;
   auto at = compared.begin();
   for (std::string const& part : view.stayers) {
      at = std::search(at, compared.end(), std::boyer_moore_horspool_searcher(part.begin(), part.end()));
      if (at == compared.end())
         return "it lacks, or shows otherwise: " + part.substr(0, 300);
      at += static_cast<std::ptrdiff_t>(part.size()) - 1; // a row's line feed is the next one's too
   }
   return "";
}

} // namespace Soak
