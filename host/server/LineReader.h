#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

namespace Host {

// A line of a connection, without its line feed. At least `padding` bytes may be read behind it.
struct Line {
   std::string_view text;
   std::size_t capacity; // the bytes of the text and those that may be read behind it
};

// Cuts what comes in over a socket into lines. It never waits.
class LineReader {
public:
   enum class Fill { more, nothing, end };

   // A line may have `limit` bytes. The descriptor stays the caller's.
   LineReader(int descriptor, std::size_t limit) noexcept : descriptor_(descriptor), limit_(limit) {}

   // The next whole line of those that have come in, good until the next call of fill().
   std::optional<Line> take() noexcept;
   // Takes in what has come: more bytes, nothing yet, or the end of the connection. Throws std::bad_alloc when a line
   // has no room in memory.
   Fill fill();
   // The bytes of the line that has not yet come in whole; at the end of the connection a last line without line feed.
   Line rest() const noexcept { return {{bytes_.get() + begin_, end_ - begin_}, capacity_ - begin_}; }
   // Forgets it, without giving its bytes up before the next fill().
   void drop() noexcept { begin_ = scanned_ = end_; }
   // Whether the line that is coming in is longer than allowed.
   bool tooLong() const noexcept { return end_ - begin_ > limit_; }

private:
   void makeRoom();

   int descriptor_;
   std::size_t limit_;
   std::unique_ptr<char[]> bytes_;
   std::size_t capacity_ = 0;
   std::size_t begin_ = 0;   // of the line that comes next
   std::size_t scanned_ = 0; // no line feed stands between begin_ and here
   std::size_t end_ = 0;
};

} // namespace Host
