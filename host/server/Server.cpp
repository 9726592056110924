#include "host/server/Server.h"

#include "host/server/SendAll.h"
#include "vane/Interrupt.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <vector>

namespace Host {

namespace {

void refuse(int client, std::string_view message) noexcept {
   sendSome(client, message);
   dropInput(client);
}

constexpr std::chrono::milliseconds retryAfter(100);

} // namespace

Server::Server(ServerOptions options, RouterState state)
      : options_(std::move(options)), state_(std::move(state)),
        socket_(std::make_unique<ListeningSocket>(options_.socketPath, options_.mode)),
        lookEvery_(std::clamp<std::chrono::milliseconds>(options_.clientTimeout / 10, std::chrono::milliseconds(10),
                                                         std::chrono::seconds(1))) {
}

void Server::run() {
   while (socket_ || !connections_.empty()) {
      wait();
      obeyStops();
      reap();
      letIn();
      lookAtClients();
   }
}

void Server::stop() noexcept {
   stops_.fetch_add(1);
   wakeUp_.call();
}

// Until a client comes or goes, is to be looked at, or somebody stops the server.
void Server::wait() {
   Clock::time_point const now = Clock::now();
   bool const lets = socket_ && now >= nextLetIn_;
   std::vector<pollfd> states{{wakeUp_.descriptor(), POLLIN, 0}, {lets ? socket_->descriptor() : -1, POLLIN, 0}};
   std::vector<Connection*> awaited;
   for (Connection& connection : connections_) {
      if (connection.awaitsRoom()) {
         states.push_back({connection.descriptor(), POLLOUT, 0});
         awaited.push_back(&connection);
      }
   }
   Clock::time_point until = connections_.empty() ? Clock::time_point::max() : nextLook_;
   if (socket_ && !lets)
      until = std::min(until, nextLetIn_);
   auto const left = std::chrono::ceil<std::chrono::milliseconds>(std::max(until - now, Clock::duration()));
   poll(states.data(), states.size(), until == Clock::time_point::max() ? -1 : static_cast<int>(left.count()));
   for (std::size_t i = 0; i < awaited.size(); ++i) {
      if (states[i + 2].revents != 0)
         awaited[i]->noteRoom();
   }
   wakeUp_.takeBack();
}

void Server::obeyStops() {
   int const stops = std::min(stops_.load(), 2);
   if (obeyed_ < 1 && stops >= 1) {
      socket_.reset();
      for (Connection& connection : connections_)
         connection.endInput();
   }
   if (obeyed_ < 2 && stops >= 2) {
      Vane::Interrupt::request();
      for (Connection& connection : connections_)
         connection.cutOff();
   }
   obeyed_ = stops;
}

void Server::reap() {
   std::erase_if(connections_, [](Connection const& connection) { return connection.hasEnded(); });
}

void Server::letIn() {
   while (socket_ && Clock::now() >= nextLetIn_) {
      Descriptor client = socket_->accept();
      if (client)
         serve(std::move(client));
      else if (errno == EAGAIN || errno == EWOULDBLOCK)
         return;
      else if (errno != EINTR && errno != ECONNABORTED)
         nextLetIn_ = Clock::now() + retryAfter;
   }
}

void Server::serve(Descriptor client) {
   // One that has been told its end may already be back.
   reap();
   if (connections_.size() >= options_.maxClients) {
      refuse(client.get(), "error: there are as many clients as the server takes; try again later\n");
      return;
   }
   Connection& connection = connections_.emplace_back(std::move(client), state_, wakeUp_, options_.clientTimeout);
   try {
      connection.start();
   } catch (std::system_error const&) {
      refuse(connection.descriptor(), "error: the server has no thread left; try again later\n");
      connections_.pop_back();
   }
}

void Server::lookAtClients() {
   Clock::time_point const now = Clock::now();
   if (now < nextLook_)
      return;
   nextLook_ = now + lookEvery_;
   for (Connection& connection : connections_)
      connection.look(now);
}

} // namespace Host
