#pragma once

#include "host/state/RouterState.h"

#include <functional>
#include <mutex>

namespace Host {

// A change of a router's state that has been read and can't fail any more but for want of memory. It writes through the
// handles of the state it is given, and replaces those that it has to.
using Change = std::function<void(RouterState&)>;

// The state of a running router. Any thread may look at it and change it: those who look never wait for a change, and
// changes are applied one after the other.
class LiveState {
public:
   // Sets the process-wide clocks as the state says.
   explicit LiveState(RouterState state);

   // Handles on the state of this moment. Its tables go on changing while they are held; a state that is replaced as a
   // whole stays as it was.
   RouterState current() const;
   // Applies a change whole, or, when memory runs out, not at all, and throws std::bad_alloc (but for Vane::retire).
   void apply(Change const& change);

private:
   std::mutex changing_;        // held by who writes
   mutable std::mutex handles_; // held only while handles are copied
   RouterState state_;
};

} // namespace Host
