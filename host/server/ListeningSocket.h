#pragma once

#include "host/server/Descriptor.h"
#include "host/server/ServerError.h"

#include <sys/types.h>

#include <string>

namespace Host {

// A Unix stream socket that takes connections under a file name. The file is removed with it, unless another one has
// taken its place.
class ListeningSocket {
public:
   // Makes the socket file with exactly these permissions. A socket file that nobody listens on any more is replaced;
   // throws ServerError when somebody does, when the file is something else, or when the system refuses.
   ListeningSocket(std::string path, mode_t mode);
   ListeningSocket(ListeningSocket const&) = delete;
   ListeningSocket& operator=(ListeningSocket const&) = delete;
   ~ListeningSocket();

   int descriptor() const noexcept { return descriptor_.get(); }
   // A connection that has come in, blocking and close-on-exec; none, with errno set, when there is none or it failed.
   Descriptor accept() const noexcept;

private:
   std::string path_;
   Descriptor descriptor_;
   dev_t device_ = 0;
   ino_t inode_ = 0;
};

// A connection to the server at that path; throws ServerError when none answers there.
Descriptor connectTo(std::string const& path);

} // namespace Host
