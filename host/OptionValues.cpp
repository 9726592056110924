#include "host/OptionValues.h"

#include "host/CommandLine.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace Host {

namespace {

// One line, whatever stood on the command line.
std::string inOneLine(std::string text) {
   std::replace_if(
         text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }, ' ');
   return text;
}

// Whether the whole text is a number.
template<class Number, class... Form>
bool readWhole(std::string const& text, Number& number, Form... form) {
   auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, form...);
   return error == std::errc() && end == text.data() + text.size();
}

} // namespace

void failUsage(std::string const& message) {
   throw UsageError(inOneLine(message));
}

std::string readFileName(char const* option, std::optional<std::string> const& name) {
   if (name && name->empty())
      failUsage(std::string(option) + " takes the name of a file");
   return name.value_or("");
}

std::uint64_t readNumber(std::string const& option, std::string const& text, std::uint64_t lowest,
                         std::uint64_t highest) {
   std::uint64_t number = 0;
   if (!readWhole(text, number) || number < lowest || number > highest)
      failUsage(option + " takes a whole number from " + std::to_string(lowest) + " to " + std::to_string(highest) +
                ", not '" + text + "'");
   return number;
}

double readShare(std::string const& option, std::string const& text) {
   double share = 0;
   if (!readWhole(text, share) || !(share >= 0 && share <= 1))
      failUsage(option + " takes a number from 0 to 1, not '" + text + "'");
   return share;
}

std::chrono::milliseconds readSeconds(std::string const& option, std::string const& text) {
   double seconds = 0;
   if (!readWhole(text, seconds) || !(seconds >= 0.1 && seconds <= 86400))
      failUsage(option + " takes seconds from 0.1 to 86400, not '" + text + "'");
   return std::chrono::milliseconds(std::llround(seconds * 1000));
}

std::uint32_t readMode(std::string const& option, std::string const& text) {
   std::uint32_t mode = 0;
   if (!readWhole(text, mode, 8) || mode > 0777)
      failUsage(option + " takes permissions from 0 to 0777, not '" + text + "'");
   return mode;
}

} // namespace Host
