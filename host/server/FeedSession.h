#pragma once

#include "host/server/LineReader.h"
#include "host/server/LiveState.h"

#include <chrono>
#include <string>

namespace Host {

// A line of a feed may have this many bytes; what comes in longer ends the connection.
constexpr std::size_t maxFeedLine = std::size_t{1} << 30;

// An agent's connection: reads its lines, applies each and acknowledges it by a line "ok" or "error: ...". The agent
// may send on before it reads what is acknowledged, up to a million bytes of it.
class FeedSession {
public:
   // The reader has the lines that came in behind the word "feed"; both the descriptor and the state stay the caller's.
   FeedSession(int descriptor, LineReader& lines, LiveState& state, std::chrono::milliseconds timeout)
         : descriptor_(descriptor), lines_(lines), state_(state), timeout_(timeout) {}

   // Returns when the agent has ended the connection and has been sent every acknowledgement; or when it hasn't read
   // one byte of them, or sent one of a line that it had begun, for the timeout.
   void run();

private:
   bool wait();
   bool applyLines();
   void refuseTooLong();
   void applyLine(Line const& line);
   bool flush();

   int descriptor_;
   LineReader& lines_;
   LiveState& state_;
   std::chrono::milliseconds timeout_;
   std::string answers_; // not yet sent
   bool atEnd_ = false;  // nothing more comes in
};

} // namespace Host
