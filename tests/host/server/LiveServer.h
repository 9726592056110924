#pragma once

#include "host/CommandModule.h"
#include "host/server/Descriptor.h"
#include "host/server/Server.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace Host::Test {

// A server in this process, with a socket of its own in a directory of its own.
class LiveServer {
public:
   // The options name no socket.
   explicit LiveServer(RouterState state, ServerOptions options = {});
   LiveServer(LiveServer const&) = delete;
   LiveServer& operator=(LiveServer const&) = delete;
   // Stops it, unless it has been, and waits for its end.
   ~LiveServer();

   std::string const& path() const noexcept { return path_; }
   Server& server() noexcept { return *server_; }
   // Waits until run() has returned.
   void join();

private:
   std::string directory_;
   std::string path_;
   CommandModule module_;
   std::unique_ptr<Server> server_;
   std::thread thread_;
};

// A client's end of a connection. Everything that takes longer than 20 seconds fails the test.
class Peer {
public:
   explicit Peer(std::string const& path);

   // False when the server doesn't take it.
   bool send(std::string_view text);
   // Up to `limit` bytes more; none at the end.
   std::string receive(std::size_t limit = 65536);
   // All that comes until the end.
   std::string receiveAll();
   // So many lines of what comes, with their line feeds.
   std::string receiveLines(std::size_t count);
   void endInput();
   void close() { descriptor_ = Descriptor(); }
   int descriptor() const noexcept { return descriptor_.get(); }

private:
   Descriptor descriptor_;
   std::string kept_; // received, and not yet asked for
};

// The answer to one request.
std::string ask(std::string const& path, std::string_view line);
// What is acknowledged of these lines.
std::string feed(std::string const& path, std::string_view lines);

// The state with that many made-up tunnels.
RouterState synthState(std::uint64_t tunnels);
std::string synthText(std::uint64_t tunnels, std::uint64_t seed = 0);

// The number of open descriptors of this process.
std::size_t openDescriptors();

} // namespace Host::Test
