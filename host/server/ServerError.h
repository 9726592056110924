#pragma once

#include <exception>
#include <string>
#include <utility>

namespace Host {

// A server can't be started or reached, or refuses. what() is one line that says why.
class ServerError : public std::exception {
public:
   explicit ServerError(std::string message) : message_(std::move(message)) {}
   char const* what() const noexcept override { return message_.c_str(); }

private:
   std::string message_;
};

} // namespace Host
