#include "tests/properties/Block.h"

#include <cmath>
#include <cstdio>
#include <ctime>
#include <iterator>

namespace Tests {

namespace {

struct Words {
   std::string_view member;
   std::string_view json;
   std::string_view text;
};

constexpr Words words[] = {
      {"configSource", "unknown", "unknown"},
      {"configSource", "cli", "CLI"},
      {"configSource", "mvpn", "MVPN"},
      {"configSource", "frrBypass", "FRR Bypass"},
      {"configSource", "default", "default"},
      {"profileState", "notSpecified", ""},
      {"profileState", "applied", ""},
      {"profileState", "notFound", " (error: not found)"},
      {"profileState", "wrongType", " (error: wrong tunnel profile type)"},
      {"metricMode", "static", ""},
      {"metricMode", "dynamic", " (from IGP)"},
      {"frrMode", "none", "none"},
      {"frrMode", "linkProtection", "link protection"},
      {"frrMode", "nodeProtection", "node protection"},
      {"changeType", "new", "new path"},
      {"changeType", "changed", "path changed"},
      {"changeType", "removed", "path removed"},
      {"changeType", "notFound", "path not found"},
      // of an LSP
      {"state", "unknown", "unknown"},
      {"state", "establishing", "establishing"},
      {"state", "unverified", "establishing (waiting for self-ping)"},
      {"state", "up", "up"},
      {"state", "down", "down"},
};

} // namespace

std::string otherWord(Block const& block, std::string_view name) {
   std::string const& json = block.text(name);
   for (Words const& row : words)
      if (row.member == name && row.json == json)
         return std::string(row.text);
   throw Disagreement("JSON has a word that no text has: " + std::string(name) + ' ' + json);
}

std::string bandwidthWords(std::uint64_t bitsPerSecond, bool twoDecimals) {
   if (bitsPerSecond < 1000 && !twoDecimals)
      return std::to_string(bitsPerSecond) + " bps";
   // Hundredths of the unit, rounded half up without leaving 64 bits.
   auto const hundredths = [bitsPerSecond](std::uint64_t unit) {
      std::uint64_t const step = unit / 100;
      return bitsPerSecond / step + (bitsPerSecond % step * 2 >= step ? 1 : 0);
   };
   constexpr char prefixes[] = {'K', 'M', 'G', 'T', 'P', 'E'};
   std::uint64_t unit = 1000;
   std::size_t place = 0;
   for (; hundredths(unit) >= 100000; ++place)
      unit *= 1000;
   char buffer[40];
   std::snprintf(buffer, sizeof buffer, "%llu.%02llu %cbps", static_cast<unsigned long long>(hundredths(unit) / 100),
                 static_cast<unsigned long long>(hundredths(unit) % 100), prefixes[place]);
   return buffer;
}

std::string intervalWords(std::uint64_t seconds) {
   struct Part {
      std::uint64_t length;
      char const* name;
   };
   constexpr Part parts[] = {{86400, " day"}, {3600, " hour"}, {60, " minute"}, {1, " second"}};
   std::string text;
   for (Part const& part : parts) {
      std::uint64_t const count = seconds / part.length;
      seconds %= part.length;
      if (count == 0)
         continue;
      text.append(text.empty() ? "" : " ").append(std::to_string(count));
      text.append(part.name).append(count == 1 ? "" : "s");
   }
   return text.empty() ? "0 seconds" : text;
}

std::string timestampWords(double utcSeconds) {
   constexpr double farthest = 4e12; // beyond the year 99999
   if (!(std::abs(utcSeconds) < farthest))
      return "";
   constexpr char const* days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
   auto const whole = static_cast<std::time_t>(utcSeconds);
   std::tm calendar{};
   gmtime_r(&whole, &calendar);
   if (calendar.tm_year + 1900 > 99999)
      return "";
   char buffer[80];
   std::snprintf(buffer, sizeof buffer, "%s %d-%02d-%02d %02d:%02d:%02d.%03d", days[calendar.tm_wday],
                 calendar.tm_year + 1900, calendar.tm_mon + 1, calendar.tm_mday, calendar.tm_hour, calendar.tm_min,
                 calendar.tm_sec, static_cast<int>((utcSeconds - std::floor(utcSeconds)) * 1000));
   return buffer;
}

} // namespace Tests
