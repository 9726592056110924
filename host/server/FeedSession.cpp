#include "host/server/FeedSession.h"

#include "host/server/FeedLine.h"
#include "host/server/SendAll.h"
#include "host/state/StateError.h"

#include <poll.h>
#include <sys/socket.h>

#include <cerrno>
#include <new>

namespace Host {

namespace {

constexpr std::size_t maxAnswers = 1'000'000;

} // namespace

void FeedSession::run() {
   for (;;) {
      bool const appliedAll = applyLines();
      if (!flush())
         return;
      if (!appliedAll && answers_.size() < maxAnswers)
         continue;
      if ((atEnd_ && answers_.empty()) || !wait())
         return;
   }
}

// Waits until there is something to do, and takes in what has come. False when the connection is to end.
bool FeedSession::wait() {
   bool const takesMore = !atEnd_ && answers_.size() < maxAnswers;
   bool const isOwed = !answers_.empty() || !lines_.rest().text.empty();
   pollfd state{descriptor_, 0, 0};
   state.events = static_cast<short>((takesMore ? POLLIN : 0) | (answers_.empty() ? 0 : POLLOUT));
   int const ready = poll(&state, 1, isOwed ? static_cast<int>(timeout_.count()) : -1);
   if (ready < 0)
      return errno == EINTR;
   if (ready == 0 || (!takesMore && (state.revents & (POLLERR | POLLHUP)) != 0 && (state.revents & POLLOUT) == 0))
      return false;
   if (takesMore && (state.revents & (POLLIN | POLLHUP | POLLERR)) != 0)
      atEnd_ = lines_.fill() == LineReader::Fill::end;
   return true;
}

// Applies what has come in as long as there is room for the answers. Returns whether that was all.
bool FeedSession::applyLines() {
   while (answers_.size() < maxAnswers) {
      std::optional<Line> line = lines_.take();
      if (!line && atEnd_ && !lines_.rest().text.empty()) {
         line = lines_.rest();
         lines_.drop();
      }
      if (!line) {
         refuseTooLong();
         return true;
      }
      applyLine(*line);
   }
   return false;
}

void FeedSession::refuseTooLong() {
   if (!lines_.tooLong())
      return;
   answers_ += "error: expected lines of at most " + std::to_string(maxFeedLine) + " bytes\n";
   lines_.drop();
   atEnd_ = true;
}

void FeedSession::applyLine(Line const& line) {
   try {
      state_.apply(readChange(line));
      answers_ += "ok\n";
   } catch (StateError const& error) {
      answers_.append("error: ").append(error.what()).append("\n");
   } catch (std::bad_alloc const&) {
      answers_ += "error: not enough memory for this change\n";
   }
}

// Sends what the agent takes without waiting. False when the connection has failed.
bool FeedSession::flush() {
   while (!answers_.empty()) {
      ssize_t const sent = sendSome(descriptor_, answers_);
      if (sent < 0)
         return errno == EAGAIN || errno == EWOULDBLOCK;
      answers_.erase(0, static_cast<std::size_t>(sent));
   }
   return true;
}

} // namespace Host
