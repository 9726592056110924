#pragma once

#include <poll.h>
#include <sys/types.h>

#include <cstddef>

namespace scrivo {

// The system calls through which an answer leaves the process, with the results and errno of the system's
// own. A test puts others in their place.
struct DescriptorCalls {
   ssize_t (*write)(int descriptor, void const* data, std::size_t size);
   ssize_t (*send)(int descriptor, void const* data, std::size_t size, int flags);
   int (*poll)(pollfd* descriptors, nfds_t count, int timeoutMs);

   static DescriptorCalls const system;
};

// Writes to a descriptor of any kind (socket, pipe, terminal, file), blocking or not, and doesn't own it. Never
// raises SIGPIPE or SIGXFSZ. While it waits for a slow reader it looks for the user's interrupt at least every
// 200 ms. It never waits inside the system where an interrupt would pass unseen, except on a regular file, and on a
// terminal that can't be opened a second time: there the signal itself has to end the wait.
class DescriptorWriter {
public:
   // `calls` must outlive the writer.
   explicit DescriptorWriter(int descriptor, DescriptorCalls const& calls = DescriptorCalls::system) noexcept;
   DescriptorWriter(DescriptorWriter const&) = delete;
   DescriptorWriter& operator=(DescriptorWriter const&) = delete;
   ~DescriptorWriter();

   // Writes all `size` bytes in order. Throws SigIntException("interrupted") when it has to wait, or a call
   // is cut short by a signal, while an interrupt is pending; SigIntException("client gone") when the peer
   // has closed its end or the descriptor takes no more for any other reason. Part of the bytes may then have
   // gone out.
   void writeAll(char const* data, std::size_t size) const;

private:
   // How bytes are written without waiting for room: a socket is told so at each call; a non-blocking descriptor and a
   // file take what they are given; a stream (a pipe, a character device) is asked for room first.
   enum class Kind { socket, plain, stream };

   void openTerminalAgain();
   ssize_t writeSome(char const* data, std::size_t size) const;
   bool awaitRoom() const;

   int descriptor_;
   int ownDescriptor_ = -1; // a terminal opened a second time, not blocking; -1 for none
   Kind kind_ = Kind::plain;
   DescriptorCalls const& calls_;
};

} // namespace scrivo
