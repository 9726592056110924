#pragma once

#include "host/server/Connection.h"
#include "host/server/ListeningSocket.h"
#include "host/server/LiveState.h"

#include <sys/types.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <list>
#include <memory>
#include <string>

namespace Host {

struct ServerOptions {
   std::string socketPath;
   mode_t mode = 0600;
   std::chrono::milliseconds clientTimeout = std::chrono::seconds(30);
   std::size_t maxClients = 64;
};

// A live router on a Unix socket. Each connection has a thread of its own: it asks for one view, which is rendered into
// its socket, or feeds changes. What a client does or leaves undone is felt by that client alone.
//
// The show commands have to be loaded as long as it runs, and SIGPIPE be ignored.
class Server {
public:
   // Takes the socket; connections wait from here on. Throws ServerError.
   Server(ServerOptions options, RouterState state);

   // Serves until it is stopped and every connection has ended.
   void run();

   // Ends run(): the first call lets nobody in any more, removes the socket file and lets the running answers end; the
   // second cuts those off. Safe in a signal handler and from any thread.
   void stop() noexcept;

   // What is served. An agent in this process may change it without a connection.
   LiveState& state() noexcept { return state_; }

private:
   using Clock = std::chrono::steady_clock;

   void wait();
   void obeyStops();
   void reap();
   void letIn();
   void serve(Descriptor client);
   void lookAtClients();

   ServerOptions options_;
   LiveState state_;
   std::unique_ptr<ListeningSocket> socket_; // none while the server drains
   WakeUp wakeUp_;
   std::list<Connection> connections_;
   std::chrono::milliseconds lookEvery_;
   Clock::time_point nextLook_;
   Clock::time_point nextLetIn_; // later than now when the system had no room for another connection
   std::atomic<int> stops_ = 0;
   int obeyed_ = 0;
};

} // namespace Host
