#pragma once

#include <cstddef>
#include <cstdint>

// How memory that readers may still look at is given back. A reader pins while it follows pointers of a
// table; a writer unlinks what it takes out and retires it; it is disposed of once no pin is left that is
// older than the retirement.

namespace Vane {

namespace Impl {

struct ThreadRecord;

// What each thread keeps. The storage class makes an access one instruction, in a shared library too.
struct ThreadState {
   std::uint32_t depth;  // pins that the thread holds
   bool collecting;      // the thread runs disposers at this moment
   bool exiting;         // the thread's record is given back when the last pin goes
   ThreadRecord* record; // made at the first pin
};
extern constinit thread_local ThreadState threadState __attribute__((tls_model("initial-exec")));

void publishPin() noexcept;
void withdrawPin() noexcept;

} // namespace Impl

// While a thread has a pin, nothing that it can reach from then on is disposed of. Pins nest; all but the
// outermost cost a count. Taking a pin never waits. A pin belongs to the thread that took it and must be
// dropped by it.
class Pin {
public:
   Pin() noexcept {
      if (Impl::threadState.depth++ == 0)
         Impl::publishPin();
   }
   Pin(Pin const&) noexcept : Pin() {}
   Pin& operator=(Pin const&) noexcept { return *this; }
   ~Pin() {
      if (--Impl::threadState.depth == 0)
         Impl::withdrawPin();
   }
};

// Frees the object it is given.
using Disposer = void (*)(void const* object) noexcept;

// Hands over an object that no new reader can reach any more; `dispose` is called with it once no pin is
// older. Any thread may call it; readers never wait for it. Each time the backlog has grown by a fixed number
// of objects the caller disposes of what has come free, on its own thread. Ends the process when memory for
// the backlog runs out.
void retire(void const* object, Disposer dispose) noexcept;

// Retires an object that came from `new`.
template<class T>
void retireObject(T const* object) noexcept {
   retire(object, [](void const* dead) noexcept { delete static_cast<T const*>(dead); });
}

// Disposes now of everything that no pin holds back. Returns the number of objects; 0 inside a disposer. What
// is still retired when the process ends is disposed of then.
std::size_t collectRetired() noexcept;

// The number of objects that wait for their disposal.
std::size_t retiredCount() noexcept;

} // namespace Vane
