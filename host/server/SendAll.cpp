#include "host/server/SendAll.h"

#include <poll.h>
#include <sys/socket.h>

#include <cerrno>

namespace Host {

ssize_t sendSome(int descriptor, std::string_view text) noexcept {
   for (;;) {
      ssize_t const sent = send(descriptor, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
      if (sent >= 0 || errno != EINTR)
         return sent;
   }
}

bool sendAll(int descriptor, std::string_view text, std::chrono::milliseconds timeout) noexcept {
   auto deadline = std::chrono::steady_clock::now() + timeout;
   while (!text.empty()) {
      ssize_t const sent = sendSome(descriptor, text);
      if (sent > 0) {
         text.remove_prefix(static_cast<std::size_t>(sent));
         deadline = std::chrono::steady_clock::now() + timeout;
         continue;
      }
      auto const left = std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
      if ((sent < 0 && errno != EAGAIN && errno != EWOULDBLOCK) || left.count() <= 0)
         return false;
      pollfd state{descriptor, POLLOUT, 0};
      poll(&state, 1, static_cast<int>(left.count()));
   }
   return true;
}

void dropInput(int descriptor) noexcept {
   char bytes[4096];
   for (int i = 0; i < 64 && recv(descriptor, bytes, sizeof bytes, MSG_DONTWAIT) > 0; ++i)
      ;
}

} // namespace Host
