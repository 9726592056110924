#include "host/server/Client.h"

#include "host/server/ListeningSocket.h"
#include "host/server/SendAll.h"
#include "host/state/SourceText.h"
#include "vane/Interrupt.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <string_view>
#include <system_error>

namespace Host {

namespace {

constexpr std::string_view errorMark = "error: ";
constexpr std::size_t longestRefusal = 4096;
constexpr std::chrono::seconds requestTimeout(30);

// The user's interrupt, which ends the copying wherever it is.
struct Interrupted {};

// Waits until the descriptor can be read or written without waiting.
void await(int descriptor, short events) {
   for (;;) {
      if (Vane::Interrupt::pending())
         throw Interrupted();
      pollfd state{descriptor, events, 0};
      if (poll(&state, 1, 200) > 0)
         return;
   }
}

void writeOut(std::string_view bytes) {
   while (!bytes.empty()) {
      await(STDOUT_FILENO, POLLOUT);
      // A pipe that has room takes this much at once.
      ssize_t const written = write(STDOUT_FILENO, bytes.data(), std::min<std::size_t>(bytes.size(), PIPE_BUF));
      if (written > 0)
         bytes.remove_prefix(static_cast<std::size_t>(written));
      else if (written < 0 && errno != EINTR && errno != EAGAIN && errno != EWOULDBLOCK)
         throw std::system_error(errno, std::generic_category());
   }
}

// The next bytes of the answer, none at its end.
std::string_view receive(int server, char (&buffer)[65536]) {
   for (;;) {
      await(server, POLLIN);
      ssize_t const got = recv(server, buffer, sizeof buffer, 0);
      if (got >= 0 || errno != EINTR)
         return {buffer, static_cast<std::size_t>(std::max<ssize_t>(got, 0))};
   }
}

// Copies an answer to standard output, unless its first bytes say that it is none.
class AnswerCopy {
public:
   void add(std::string_view bytes) {
      if (!copying_) {
         std::string_view const head = bytes.substr(0, longestRefusal - std::min(longestRefusal, head_.size()));
         head_ += head;
         if (head_.size() < errorMark.size() || isRefusal())
            return;
         start();
         bytes.remove_prefix(head.size());
      }
      copy(bytes);
   }
   void end(std::string_view lastBytes, bool mayBeEmpty) {
      if (!copying_ && isRefusal())
         throw ServerError(
               printable(head_.substr(errorMark.size(), head_.find('\n') - errorMark.size()), longestRefusal));
      if (!copying_)
         start();
      if (tail_.empty() ? !mayBeEmpty : !tail_.ends_with(lastBytes))
         throw ServerError("the server broke its answer off");
   }

private:
   bool isRefusal() const { return head_.starts_with(errorMark); }
   void start() {
      copying_ = true;
      copy(head_);
   }
   void copy(std::string_view bytes) {
      writeOut(bytes);
      tail_ += bytes.substr(bytes.size() - std::min<std::size_t>(bytes.size(), 2));
      tail_.erase(0, tail_.size() - std::min<std::size_t>(tail_.size(), 2));
   }

   bool copying_ = false;
   std::string head_; // what has come before copying began
   std::string tail_; // the last two bytes copied
};

} // namespace

ExitStatus askServer(std::string const& socketPath, std::string const& line, Format format, bool mayBeEmpty) {
   Descriptor const server = connectTo(socketPath);
   // A server that refuses may not even take the request; what it says is read all the same.
   sendAll(server.get(), line + '\n', requestTimeout);
   try {
      char buffer[65536];
      AnswerCopy answer;
      for (;;) {
         std::string_view const bytes = receive(server.get(), buffer);
         if (bytes.empty())
            break;
         answer.add(bytes);
      }
      answer.end(format == Format::json ? "}\n" : "\n", mayBeEmpty);
   } catch (Interrupted const&) {
      return ExitStatus::interrupted;
   }
   return ExitStatus::shown;
}

} // namespace Host
