#include "host/server/ViewRequest.h"

#include "host/state/SourceText.h"

#include <algorithm>

namespace Host {

namespace {

bool isBlank(char c) noexcept {
   return c == ' ' || c == '\t' || c == '\r';
}

// Whether a backslash between double quotes is left out before the character.
bool isEscaped(char c) noexcept {
   return c == '"' || c == '\\' || c == '$' || c == '`';
}

// Reads one line word by word.
class WordReader {
public:
   explicit WordReader(std::string_view line) : rest_(line) {}

   std::vector<std::string> words() {
      std::vector<std::string> result;
      for (skipBlanks(); !rest_.empty(); skipBlanks())
         result.push_back(word());
      return result;
   }

private:
   void skipBlanks() {
      while (!rest_.empty() && isBlank(rest_.front()))
         rest_.remove_prefix(1);
   }
   char next() {
      char const c = rest_.front();
      rest_.remove_prefix(1);
      return c;
   }
   std::string word() {
      std::string result;
      while (!rest_.empty() && !isBlank(rest_.front())) {
         char const c = next();
         if (c == '\'' || c == '"')
            appendQuoted(result, c);
         else if (c == '\\' && !rest_.empty())
            result += next();
         else
            result += c;
      }
      return result;
   }
   void appendQuoted(std::string& word, char quote) {
      for (;;) {
         if (rest_.empty())
            throw UsageError(std::string("a word begins with ") + quote + " and has no " + quote + " at its end");
         char c = next();
         if (c == quote)
            return;
         if (quote == '"' && c == '\\' && !rest_.empty() && isEscaped(rest_.front()))
            c = next();
         word += c;
      }
   }

   std::string_view rest_;
};

// What a request may say. The other options of the same commands concern the process that is asked by a shell.
void checkOptions(std::vector<std::string> const& words) {
   static constexpr std::string_view allowed[] = {"--summary",    "--lsp",    "--detail", "--history",
                                                  "--sub-tunnel", "--format", "--json"};
   for (std::string const& word : words) {
      if (word == "--")
         return;
      std::string_view const option = std::string_view(word).substr(0, word.find('='));
      if (option.starts_with('-') && std::ranges::find(allowed, option) == std::end(allowed))
         throw UsageError("a request takes no option " + printable(option) +
                          "; it takes those that select the view, and --format and --json");
   }
}

std::string quoted(std::string const& word) {
   if (word.find('\n') != std::string::npos)
      throw UsageError("a server can't be asked for a tunnel whose name has a line feed in it");
   std::string result = "'";
   for (char const c : word)
      result.append(c == '\'' ? "'\\''" : std::string(1, c));
   return result + '\'';
}

std::string formatOption(Format format) {
   return format == Format::json ? " --json" : "";
}

} // namespace

std::vector<std::string> splitWords(std::string_view line) {
   return WordReader(line).words();
}

ViewRequest parseViewRequest(std::string_view line) {
   std::vector<std::string> const words = splitWords(line);
   if (words.empty() || (words.front() != "tunnel" && words.front() != "status"))
      throw UsageError("a request is the command line of a view: tunnel or status, and what follows it");
   checkOptions(words);
   Request request = parseCommandLine(words);
   if (auto* const tunnel = std::get_if<ShowTunnelRequest>(&request))
      return std::move(*tunnel);
   return std::get<ShowStatusRequest>(request);
}

std::string requestLine(ShowTunnelRequest const& request) {
   std::string line = "tunnel";
   line += request.summary ? " --summary" : "";
   line += request.lsp ? " --lsp" : "";
   line += request.detail ? " --detail" : "";
   line += request.history ? " --history" : "";
   line += request.subTunnel ? " --sub-tunnel" : "";
   line += formatOption(request.format);
   return request.tunnelName.empty() ? line : line + " -- " + quoted(request.tunnelName);
}

std::string requestLine(ShowStatusRequest const& request) {
   return "status" + formatOption(request.format);
}

bool mayBeEmpty(ShowTunnelRequest const& request) noexcept {
   return request.format == Format::text && !request.summary;
}

bool mayBeEmpty(ShowStatusRequest const&) noexcept {
   return false;
}

} // namespace Host
