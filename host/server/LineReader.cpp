#include "host/server/LineReader.h"

#include <simdjson.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace Host {

namespace {

constexpr std::size_t padding = simdjson::SIMDJSON_PADDING;
constexpr std::size_t usualSize = 65536;

} // namespace

std::optional<Line> LineReader::take() noexcept {
   if (scanned_ == end_)
      return std::nullopt;
   char const* const first = bytes_.get() + begin_;
   auto const* const lineFeed = static_cast<char const*>(std::memchr(bytes_.get() + scanned_, '\n', end_ - scanned_));
   if (lineFeed == nullptr) {
      scanned_ = end_;
      return std::nullopt;
   }
   auto const size = static_cast<std::size_t>(lineFeed - first);
   Line const line{{first, size}, capacity_ - begin_};
   begin_ += size + 1;
   scanned_ = begin_;
   return line;
}

LineReader::Fill LineReader::fill() {
   makeRoom();
   ssize_t const got = recv(descriptor_, bytes_.get() + end_, capacity_ - padding - end_, MSG_DONTWAIT);
   if (got > 0) {
      end_ += static_cast<std::size_t>(got);
      return Fill::more;
   }
   bool const later = got < 0 && (errno == EINTR || errno == EAGAIN || errno == EWOULDBLOCK);
   return later ? Fill::nothing : Fill::end;
}

// A buffer that a long line has needed is given back with the next one.
void LineReader::makeRoom() {
   std::size_t const held = end_ - begin_;
   if (held == 0)
      begin_ = scanned_ = end_ = 0;
   std::size_t const wanted = held < usualSize ? 2 * usualSize : 2 * held;
   bool const full = end_ + padding == capacity_;
   if (!full && capacity_ <= std::max(4 * held, 4 * usualSize) && capacity_ != 0)
      return;
   auto bytes = std::make_unique_for_overwrite<char[]>(wanted + padding);
   std::copy_n(bytes_.get() + begin_, held, bytes.get());
   std::fill_n(bytes.get() + held, padding, '\0');
   bytes_ = std::move(bytes);
   capacity_ = wanted + padding;
   scanned_ -= begin_;
   end_ = held;
   begin_ = 0;
}

} // namespace Host
