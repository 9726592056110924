#include "RsvpLer/output/DescriptorWriter.h"

#include "RsvpLer/output/SigIntException.h"
#include "brindle/Assert.h"
#include "vane/Epoch.h"
#include "vane/Interrupt.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstring>
#include <ctime>

namespace scrivo {

namespace {

// Keeps SIGPIPE and SIGXFSZ from the thread, and takes back those that its writes have raised meanwhile. One
// that was already pending stays so.
class WriteSignalsHeld {
public:
   WriteSignalsHeld() noexcept {
      sigset_t pendingBefore;
      sigpending(&pendingBefore);
      sigset_t held;
      sigemptyset(&held);
      sigemptyset(&ours_);
      for (int signal : {SIGPIPE, SIGXFSZ}) {
         sigaddset(&held, signal);
         if (sigismember(&pendingBefore, signal) == 0)
            sigaddset(&ours_, signal);
      }
      pthread_sigmask(SIG_BLOCK, &held, &maskBefore_);
   }
   WriteSignalsHeld(WriteSignalsHeld const&) = delete;
   WriteSignalsHeld& operator=(WriteSignalsHeld const&) = delete;
   ~WriteSignalsHeld() {
      timespec const noWait{};
      while (sigtimedwait(&ours_, nullptr, &noWait) > 0 || errno == EINTR)
         ;
      pthread_sigmask(SIG_SETMASK, &maskBefore_, nullptr);
   }

private:
   sigset_t ours_;
   sigset_t maskBefore_;
};

void throwIfInterrupted() {
   if (Vane::Interrupt::pending())
      throw SigIntException("interrupted");
}

} // namespace

DescriptorCalls const DescriptorCalls::system{&::write, &::send, &::poll};

DescriptorWriter::DescriptorWriter(int descriptor, DescriptorCalls const& calls) noexcept
      : descriptor_(descriptor), calls_(calls) {
   struct stat status;
   if (fstat(descriptor, &status) != 0)
      return; // the first write will tell
   if (S_ISSOCK(status.st_mode))
      kind_ = Kind::socket;
   else if (S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode))
      kind_ = Kind::stream;
   if (isatty(descriptor) == 1)
      openTerminalAgain();
}

DescriptorWriter::~DescriptorWriter() {
   if (ownDescriptor_ >= 0)
      close(ownDescriptor_);
}

// A terminal reports room for less than a write may need, and a blocking write of the rest then waits in the system.
// O_NONBLOCK on the given descriptor would reach every process that shares it.
void DescriptorWriter::openTerminalAgain() {
   char path[32] = "/proc/self/fd/";
   char* const end = std::to_chars(path + std::strlen(path), path + sizeof path - 1, descriptor_).ptr;
   *end = '\0';
   ownDescriptor_ = open(path, O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
   if (ownDescriptor_ < 0)
      return;
   descriptor_ = ownDescriptor_;
   kind_ = Kind::plain;
}

void DescriptorWriter::writeAll(char const* data, std::size_t size) const {
   WriteSignalsHeld const held;
   // A client may take as long as it likes; what agents replace meanwhile is still disposed of.
   Vane::PinRest const rest;
   bool hungUp = false;
   while (size != 0) {
      if (kind_ == Kind::stream)
         hungUp = awaitRoom();
      ssize_t const written = writeSome(data, size);
      if (written > 0) {
         data += written;
         size -= static_cast<std::size_t>(written);
         hungUp = false;
      } else if (written < 0 && errno == EINTR) {
         throwIfInterrupted();
      } else if (written < 0 && (errno == EAGAIN || errno == EWOULDBLOCK) && !hungUp) {
         throwIfInterrupted();
         hungUp = awaitRoom();
      } else {
         throw SigIntException("client gone");
      }
   }
}

ssize_t DescriptorWriter::writeSome(char const* data, std::size_t size) const {
   switch (kind_) {
   case Kind::socket:
      return calls_.send(descriptor_, data, size, MSG_NOSIGNAL | MSG_DONTWAIT);
   case Kind::plain:
      return calls_.write(descriptor_, data, size);
   case Kind::stream:
      // A pipe that reports room takes this much without waiting.
      return calls_.write(descriptor_, data, std::min<std::size_t>(size, PIPE_BUF));
   }
   BRINDLE_UNREACHABLE();
}

// Waits until the descriptor takes bytes. Returns whether it reported a hang-up too: the next write then has
// to succeed.
bool DescriptorWriter::awaitRoom() const {
   for (int timeoutMs = 0;; timeoutMs = 200) {
      pollfd state{descriptor_, POLLOUT, 0};
      int const ready = calls_.poll(&state, 1, timeoutMs);
      if (ready > 0) {
         if ((state.revents & POLLOUT) == 0)
            throw SigIntException("client gone");
         return (state.revents & (POLLERR | POLLHUP | POLLNVAL)) != 0;
      }
      if (ready < 0 && errno != EINTR)
         throw SigIntException("client gone");
      throwIfInterrupted();
   }
}

} // namespace scrivo
