#pragma once

#include "host/server/Descriptor.h"
#include "host/server/LineReader.h"
#include "host/server/LiveState.h"
#include "host/server/ViewRequest.h"
#include "host/server/WakeUp.h"

#include <atomic>
#include <chrono>
#include <thread>

namespace Host {

// A request may have this many bytes.
constexpr std::size_t maxRequest = 65536;

// One connection and the thread that serves it. Its other members are for the thread that owns it.
class Connection {
public:
   using Clock = std::chrono::steady_clock;

   // The state and the wake-up have to outlive it; the owner is woken when the connection has ended. A request has to
   // come in within the timeout.
   Connection(Descriptor client, LiveState& state, WakeUp const& owner, std::chrono::milliseconds timeout);
   Connection(Connection const&) = delete;
   Connection& operator=(Connection const&) = delete;
   // Waits for the thread, which has to be about to end.
   ~Connection();

   // Begins to serve. Throws std::system_error when there is no thread to be had.
   void start();

   bool hasEnded() const noexcept { return ended_.load(); }
   // Whether a view is being rendered into the socket.
   bool isAnswering() const noexcept { return answering_.load() && !cutOff_; }
   int descriptor() const noexcept { return client_.get(); }

   // Whether it is worth knowing when the client makes room in the socket: it hasn't since the last look.
   bool awaitsRoom() const noexcept { return isAnswering() && !hadRoom_; }
   void noteRoom() noexcept { hadRoom_ = true; }
   // Cuts the client off that has taken nothing of its answer since `timeout`. To be called many times in that time.
   void look(Clock::time_point now) noexcept;

   // Takes in nothing more; what has come in is still answered.
   void endInput() noexcept;
   // The client gets nothing more.
   void cutOff() noexcept;

private:
   void serve() noexcept;
   void serveRequest();
   bool readRequest(LineReader& lines, Line& line);
   void answer(std::string_view line);
   void render(ViewRequest const& request);
   void sendError(std::string_view message) noexcept;

   Descriptor client_;
   LiveState& state_;
   WakeUp const& owner_;
   std::chrono::milliseconds timeout_;
   std::atomic<bool> answering_ = false;
   std::atomic<bool> ended_ = false;

   bool cutOff_ = false;
   bool hadRoom_ = false;
   int lastQueued_ = 0; // bytes in the socket at the last look
   Clock::time_point lastProgress_ = Clock::now();

   std::thread thread_;
};

} // namespace Host
