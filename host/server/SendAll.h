#pragma once

#include <sys/types.h>

#include <chrono>
#include <string_view>

namespace Host {

// Sends what the peer takes at once, and never raises a signal: the number of bytes, or -1 with errno set.
ssize_t sendSome(int descriptor, std::string_view text) noexcept;

// Sends the whole text; false when the peer has gone or hasn't taken a byte for the timeout.
bool sendAll(int descriptor, std::string_view text, std::chrono::milliseconds timeout) noexcept;

// Forgets what has come in and nobody asked for. The system would otherwise tell the peer, when the socket is closed,
// that the connection broke.
void dropInput(int descriptor) noexcept;

} // namespace Host
