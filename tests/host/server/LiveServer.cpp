#include "tests/host/server/LiveServer.h"

#include "host/server/ListeningSocket.h"
#include "host/server/SendAll.h"
#include "host/state/LoadState.h"
#include "host/synth/Synth.h"
#include "vane/Interrupt.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace Host::Test {

namespace {

constexpr std::chrono::seconds patience(20);

std::string newDirectory() {
   char name[] = "/tmp/lershow-test-XXXXXX";
   if (mkdtemp(name) == nullptr)
      throw std::runtime_error("no directory for the socket");
   return name;
}

ServerOptions at(std::string const& path, ServerOptions options) {
   options.socketPath = path;
   return options;
}

} // namespace

LiveServer::LiveServer(RouterState state, ServerOptions options)
      : directory_(newDirectory()), path_(directory_ + "/socket"),
        server_(std::make_unique<Server>(at(path_, std::move(options)), std::move(state))),
        thread_([this] { server_->run(); }) {
}

LiveServer::~LiveServer() {
   server_->stop();
   join();
   server_.reset();
   std::filesystem::remove_all(directory_);
   Vane::Interrupt::clear();
}

void LiveServer::join() {
   if (thread_.joinable())
      thread_.join();
}

Peer::Peer(std::string const& path) : descriptor_(connectTo(path)) {
}

bool Peer::send(std::string_view text) {
   return sendAll(descriptor_.get(), text, patience);
}

std::string Peer::receive(std::size_t limit) {
   if (!kept_.empty()) {
      std::string const part = kept_.substr(0, limit);
      kept_.erase(0, part.size());
      return part;
   }
   pollfd state{descriptor_.get(), POLLIN, 0};
   if (poll(&state, 1, static_cast<int>(std::chrono::milliseconds(patience).count())) != 1) {
      ADD_FAILURE() << "the server says nothing";
      return {};
   }
   std::string part(limit, '\0');
   ssize_t const got = recv(descriptor_.get(), part.data(), part.size(), 0);
   part.resize(static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
   return part;
}

std::string Peer::receiveAll() {
   std::string all;
   for (std::string part = receive(); !part.empty(); part = receive())
      all += part;
   return all;
}

std::string Peer::receiveLines(std::size_t count) {
   std::string lines;
   for (auto left = static_cast<std::ptrdiff_t>(count); left > 0;) {
      std::string const part = receive();
      if (part.empty()) {
         ADD_FAILURE() << "the connection ended " << left << " lines before";
         break;
      }
      std::size_t used = 0;
      while (used < part.size() && left > 0)
         left -= part[used++] == '\n';
      lines += part.substr(0, used);
      kept_ = part.substr(used) + kept_;
   }
   return lines;
}

void Peer::endInput() {
   shutdown(descriptor_.get(), SHUT_WR);
}

std::string ask(std::string const& path, std::string_view line) {
   Peer peer(path);
   peer.send(std::string(line) + '\n');
   return peer.receiveAll();
}

std::string feed(std::string const& path, std::string_view lines) {
   Peer peer(path);
   peer.send("feed\n");
   peer.send(lines);
   peer.endInput();
   return peer.receiveAll();
}

std::string synthText(std::uint64_t tunnels, std::uint64_t seed) {
   char* text = nullptr;
   std::size_t size = 0;
   std::FILE* const file = open_memstream(&text, &size);
   writeSynth(file, {tunnels, seed});
   std::fclose(file);
   std::string const result(text, size);
   std::free(text);
   return result;
}

RouterState synthState(std::uint64_t tunnels) {
   return loadState("synth", StateText(synthText(tunnels)));
}

std::size_t openDescriptors() {
   auto const all = std::filesystem::directory_iterator("/proc/self/fd");
   return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

} // namespace Host::Test
