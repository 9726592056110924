#include "host/server/ListeningSocket.h"

#include "host/state/SourceText.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <cerrno>
#include <cstring>

namespace Host {

namespace {

[[noreturn]] void fail(std::string const& what, std::string const& path, std::string const& why) {
   throw ServerError(what + ' ' + shownFileName(path) + ": " + why);
}

sockaddr_un addressOf(std::string const& path) {
   sockaddr_un address{};
   address.sun_family = AF_UNIX;
   if (path.empty() || path.size() >= sizeof address.sun_path || path.find('\0') != std::string::npos)
      fail("cannot use the socket", path,
           "its name has to have 1 to " + std::to_string(sizeof address.sun_path - 1) + " bytes");
   std::memcpy(address.sun_path, path.data(), path.size());
   return address;
}

Descriptor openSocket(int flags) {
   Descriptor result(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | flags, 0));
   if (!result)
      throw ServerError(std::string("cannot make a socket: ") + std::strerror(errno));
   return result;
}

bool connectsTo(Descriptor const& descriptor, sockaddr_un const& address) noexcept {
   return connect(descriptor.get(), reinterpret_cast<sockaddr const*>(&address), sizeof address) == 0;
}

// Held while one process decides what to do with a socket file, so that two that start at once don't both replace it.
// It leaves no file behind. Without it only that protection is missing.
Descriptor lockDirectoryOf(std::string const& path) {
   std::size_t const slash = path.rfind('/');
   std::string const directory = slash == std::string::npos ? "." : path.substr(0, slash + 1);
   Descriptor result(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
   for (int attempt = 0; attempt < 100 && flock(result.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
        ++attempt)
      usleep(20'000);
   return result;
}

void removeStale(std::string const& path, sockaddr_un const& address) {
   struct stat status;
   if (lstat(path.c_str(), &status) != 0)
      return;
   if (!S_ISSOCK(status.st_mode))
      fail("cannot serve at", path, "there is a file of this name that is no socket");
   if (connectsTo(openSocket(SOCK_NONBLOCK), address) || errno == EAGAIN)
      fail("cannot serve at", path, "another server answers there");
   if (errno != ECONNREFUSED || unlink(path.c_str()) != 0)
      fail("cannot replace the socket", path, std::strerror(errno));
}

} // namespace

ListeningSocket::ListeningSocket(std::string path, mode_t mode)
      : path_(std::move(path)), descriptor_(openSocket(SOCK_NONBLOCK)) {
   sockaddr_un const address = addressOf(path_);
   Descriptor const lock = lockDirectoryOf(path_);
   removeStale(path_, address);
   // The file has its permissions from the moment it is there.
   mode_t const before = umask(0777 & ~mode);
   bool const bound = bind(descriptor_.get(), reinterpret_cast<sockaddr const*>(&address), sizeof address) == 0;
   umask(before);
   if (!bound)
      fail("cannot serve at", path_, std::strerror(errno));
   struct stat status {};
   if (stat(path_.c_str(), &status) == 0) {
      device_ = status.st_dev;
      inode_ = status.st_ino;
   }
   if (listen(descriptor_.get(), SOMAXCONN) != 0)
      fail("cannot serve at", path_, std::strerror(errno));
}

ListeningSocket::~ListeningSocket() {
   struct stat status;
   if (stat(path_.c_str(), &status) == 0 && status.st_dev == device_ && status.st_ino == inode_)
      unlink(path_.c_str());
}

Descriptor ListeningSocket::accept() const noexcept {
   return Descriptor(accept4(descriptor_.get(), nullptr, nullptr, SOCK_CLOEXEC));
}

Descriptor connectTo(std::string const& path) {
   sockaddr_un const address = addressOf(path);
   Descriptor descriptor = openSocket(0);
   if (!connectsTo(descriptor, address))
      fail("cannot reach a server at", path, std::strerror(errno));
   return descriptor;
}

} // namespace Host
