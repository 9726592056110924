#include "host/state/StateText.h"

#include "host/state/SourceText.h"
#include "host/state/StateError.h"

#include <fcntl.h>
#include <simdjson.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <string>

namespace Host {

namespace {

constexpr std::size_t padding = simdjson::SIMDJSON_PADDING;
constexpr std::size_t sizeLimit = 0xffffffff; // the parser counts bytes in 32 bits

// A descriptor that is closed unless it is standard input.
class InputFile {
public:
   explicit InputFile(std::string const& name)
         : descriptor_(name == "-" ? STDIN_FILENO : open(name.c_str(), O_RDONLY | O_CLOEXEC)) {}
   InputFile(InputFile const&) = delete;
   InputFile& operator=(InputFile const&) = delete;
   ~InputFile() {
      if (descriptor_ > STDIN_FILENO)
         close(descriptor_);
   }

   int descriptor() const noexcept { return descriptor_; }
   // The size that a regular file has now; 0 for anything else.
   std::size_t expectedSize() const noexcept {
      struct stat status;
      bool const known = fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode);
      return known ? static_cast<std::size_t>(status.st_size) : 0;
   }

private:
   int descriptor_;
};

[[noreturn]] void failToRead(std::string_view fileName) {
   int const error = errno;
   throw StateError("cannot read " + shownFileName(fileName) + ": " + std::strerror(error));
}

[[noreturn]] void failForSize(std::string_view fileName) {
   throw StateError("cannot read " + shownFileName(fileName) + ": it has 4 GiB or more");
}

} // namespace

StateText::StateText(std::string_view text) {
   reserve(text.size());
   std::copy(text.begin(), text.end(), bytes_.get());
   size_ = text.size();
   zeroRest();
}

StateText StateText::read(std::string_view fileName) {
   InputFile const file{std::string(fileName)};
   if (file.descriptor() < 0)
      failToRead(fileName);
   std::size_t const expected = file.expectedSize();
   if (expected > sizeLimit)
      failForSize(fileName);
   StateText text;
   // One byte more, so that the end of the file shows without growing.
   text.reserve(expected + 1);
   text.append(file.descriptor(), fileName);
   text.zeroRest();
   return text;
}

void StateText::append(int descriptor, std::string_view fileName) {
   for (;;) {
      if (size_ + padding == capacity_)
         reserve(std::max<std::size_t>(2 * size_, 65536));
      ssize_t const got = ::read(descriptor, bytes_.get() + size_, capacity_ - padding - size_);
      if (got == 0)
         return;
      if (got < 0 && errno != EINTR)
         failToRead(fileName);
      size_ += got > 0 ? static_cast<std::size_t>(got) : 0;
      if (size_ > sizeLimit)
         failForSize(fileName);
   }
}

void StateText::reserve(std::size_t size) {
   void* const bytes = std::realloc(bytes_.get(), size + padding);
   if (bytes == nullptr)
      throw std::bad_alloc();
   static_cast<void>(bytes_.release());
   bytes_.reset(static_cast<char*>(bytes));
   capacity_ = size + padding;
}

void StateText::zeroRest() noexcept {
   std::fill(bytes_.get() + size_, bytes_.get() + capacity_, '\0');
}

} // namespace Host
