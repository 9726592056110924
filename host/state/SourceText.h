#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// What an error message needs to know of the text that it is about. All positions are byte offsets into the text.

namespace Host {

// The part as it can stand in one line on a terminal: printable ASCII as it is, any other byte as \xNN, cut with "..."
// behind `limit` bytes.
std::string printable(std::string_view part, std::size_t limit = 60);

// The text with its control characters as \xNN.
std::string inOneLine(std::string_view text);

// A file's name as it stands in a message: "standard input" for "-", control characters as \xNN.
std::string shownFileName(std::string_view name);

// "<line>:<column>" of the position, both from 1, the column in bytes. A position at the end of the text is allowed.
std::string lineAndColumn(std::string_view text, std::size_t position);

// What stands at the position, for the end of an error message: "an object", "an array", "the end of the file", or a
// number, string, word or single byte as it is written.
std::string describeToken(std::string_view text, std::size_t position);

// Something that no JSON text may hold, whatever its structure.
struct TextDefect {
   std::size_t position;
   std::string_view expected;
};
// The first byte that isn't UTF-8, control character inside a string, or string without an end.
std::optional<TextDefect> findTextDefect(std::string_view text) noexcept;

} // namespace Host
