#include "host/synth/Sink.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace Host::Synth {
namespace {

constexpr std::size_t bufferSize = 256 * 1024;

} // namespace

Sink::Sink(std::FILE* file)
      : file_(file), buffer_(std::make_unique_for_overwrite<char[]>(bufferSize)), end_(buffer_.get()),
        limit_(buffer_.get() + bufferSize) {
}

int Sink::finish() noexcept {
   drain();
   if (error_ == 0 && std::fflush(file_) != 0) {
      error_ = errno != 0 ? errno : EIO;
   }
   return error_;
}

void Sink::appendText(std::string_view text) {
   while (!text.empty()) {
      reserve(1);
      std::size_t const size = std::min(text.size(), static_cast<std::size_t>(limit_ - end_));
      std::memcpy(end_, text.data(), size);
      end_ += size;
      text.remove_prefix(size);
   }
}

void Sink::appendAddress(Ipv4 address) {
   reserve(17);
   *end_++ = '"';
   for (int shift = 24; shift >= 0; shift -= 8) {
      end_ = std::to_chars(end_, limit_, (address.bits >> shift) & 255u).ptr;
      *end_++ = shift != 0 ? '.' : '"';
   }
}

void Sink::appendTime(Milliseconds time) {
   appendNumber(time.count / 1000);
   auto const fraction = static_cast<std::uint32_t>(time.count % 1000);
   append('.');
   append(static_cast<char>('0' + fraction / 100));
   append(static_cast<char>('0' + fraction / 10 % 10));
   append(static_cast<char>('0' + fraction % 10));
}

void Sink::drain() noexcept {
   auto const size = static_cast<std::size_t>(end_ - buffer_.get());
   end_ = buffer_.get();
   if (error_ != 0) {
      return;
   }
   errno = 0;
   if (std::fwrite(buffer_.get(), 1, size, file_) != size) {
      error_ = errno != 0 ? errno : EIO;
   }
}

} // namespace Host::Synth
