#pragma once

#include <exception>
#include <string>
#include <utility>

namespace Host {

// A state file that can't be loaded. what() is one line without a line feed, fit for a terminal whatever the file
// holds.
class StateError : public std::exception {
public:
   explicit StateError(std::string message) : message_(std::move(message)) {}
   char const* what() const noexcept override { return message_.c_str(); }

private:
   std::string message_;
};

} // namespace Host
