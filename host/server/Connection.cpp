#include "host/server/Connection.h"

#include "host/Show.h"
#include "host/server/FeedSession.h"
#include "host/server/SendAll.h"

#include <linux/sockios.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <csignal>
#include <exception>
#include <new>
#include <string>

namespace Host {

namespace {

// Signals are for the thread that owns the connections.
class SignalsHeld {
public:
   SignalsHeld() noexcept {
      sigset_t all;
      sigfillset(&all);
      pthread_sigmask(SIG_SETMASK, &all, &before_);
   }
   ~SignalsHeld() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

private:
   sigset_t before_;
};

} // namespace

Connection::Connection(Descriptor client, LiveState& state, WakeUp const& owner, std::chrono::milliseconds timeout)
      : client_(std::move(client)), state_(state), owner_(owner), timeout_(timeout) {
}

Connection::~Connection() {
   if (thread_.joinable())
      thread_.join();
}

void Connection::start() {
   SignalsHeld const held; // a thread begins with the mask of its maker
   thread_ = std::thread([this] { serve(); });
}

void Connection::look(Clock::time_point now) noexcept {
   int queued = 0;
   bool const known = ioctl(client_.get(), SIOCOUTQ, &queued) == 0;
   if (!isAnswering() || hadRoom_ || !known || queued == 0 || queued != lastQueued_)
      lastProgress_ = now;
   hadRoom_ = false;
   lastQueued_ = queued;
   if (now - lastProgress_ >= timeout_)
      cutOff();
}

void Connection::endInput() noexcept {
   shutdown(client_.get(), SHUT_RD);
}

void Connection::cutOff() noexcept {
   cutOff_ = true;
   shutdown(client_.get(), SHUT_RDWR);
}

void Connection::serve() noexcept {
   try {
      serveRequest();
   } catch (std::bad_alloc const&) {
      sendError("not enough memory for this answer");
   } catch (std::exception const& error) {
      sendError(error.what());
   }
   dropInput(client_.get());
   // In this order: a client that has seen the end no longer counts as one.
   ended_.store(true);
   shutdown(client_.get(), SHUT_RDWR);
   owner_.call();
}

void Connection::serveRequest() {
   LineReader lines(client_.get(), maxFeedLine);
   Line line{};
   if (!readRequest(lines, line))
      return;
   if (line.text == "feed" || line.text == "feed\r")
      FeedSession(client_.get(), lines, state_, timeout_).run();
   else
      answer(line.text);
}

// Reads the first line. False when none comes, or it is too long, which the client is told.
bool Connection::readRequest(LineReader& lines, Line& line) {
   auto const deadline = Clock::now() + timeout_;
   for (;;) {
      std::optional<Line> const whole = lines.take();
      line = whole ? *whole : lines.rest();
      if (line.text.size() > maxRequest) {
         sendError("a request may have " + std::to_string(maxRequest) + " bytes");
         return false;
      }
      if (whole)
         return true;
      auto const left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
      pollfd state{client_.get(), POLLIN, 0};
      if (left.count() <= 0) {
         sendError("no request came in time");
         return false;
      }
      if (poll(&state, 1, static_cast<int>(left.count())) > 0 && lines.fill() == LineReader::Fill::end) {
         line = lines.rest();
         return !line.text.empty();
      }
   }
}

void Connection::answer(std::string_view line) {
   try {
      ViewRequest const request = parseViewRequest(line);
      answering_.store(true);
      render(request);
   } catch (UsageError const& error) {
      sendError(error.what());
   }
   answering_.store(false);
}

void Connection::render(ViewRequest const& request) {
   RouterState const state = state_.current();
   if (auto const* const tunnel = std::get_if<ShowTunnelRequest>(&request))
      showTunnels(*tunnel, state, client_.get());
   else
      showStatus(std::get<ShowStatusRequest>(request), state, client_.get());
}

void Connection::sendError(std::string_view message) noexcept {
   try {
      sendAll(client_.get(), "error: " + std::string(message) + '\n', timeout_);
   } catch (std::bad_alloc const&) {
      // The end of the connection has to say it.
   }
}

} // namespace Host
