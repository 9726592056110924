#pragma once

#include "brindle/String.h"

#include <exception>
#include <utility>

namespace Brindle {

// The base of the platform's exceptions.
class Exception : public std::exception {
public:
   explicit Exception(String message) : message_(std::move(message)) {}
   char const* what() const noexcept override { return message_.c_str(); }

private:
   String message_;
};

// A store has found a value whose integrity check fails.
class CorruptionDetectedException : public Exception {
public:
   using Exception::Exception;
};

} // namespace Brindle
