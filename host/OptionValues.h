#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

// What stands behind an option, as a value. Each throws UsageError for what isn't one.

namespace Host {

// Throws UsageError with the message in one line.
[[noreturn]] void failUsage(std::string const& message);

// Empty only when none is named.
std::string readFileName(char const* option, std::optional<std::string> const& name);
std::uint64_t readNumber(std::string const& option, std::string const& text, std::uint64_t lowest,
                         std::uint64_t highest);
// From 0 to 1.
double readShare(std::string const& option, std::string const& text);
// Seconds with a fraction, from a tenth of one to a day.
std::chrono::milliseconds readSeconds(std::string const& option, std::string const& text);
// Permissions in octal.
std::uint32_t readMode(std::string const& option, std::string const& text);

} // namespace Host
