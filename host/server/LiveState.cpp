#include "host/server/LiveState.h"

#include "host/Show.h"

#include <utility>

namespace Host {

LiveState::LiveState(RouterState state) : state_(std::move(state)) {
   setClocks(state_);
}

RouterState LiveState::current() const {
   std::lock_guard const lock(handles_);
   return state_;
}

void LiveState::apply(Change const& change) {
   // Ends up with the former handles, and outlives the lock: what only they hold may take long to be given back.
   RouterState state;
   std::lock_guard const writing(changing_);
   state = current();
   bool const hadClock = state.clock.has_value();
   change(state);
   if (hadClock || state.clock)
      setClocks(state);
   std::lock_guard const lock(handles_);
   std::swap(state, state_);
}

} // namespace Host
