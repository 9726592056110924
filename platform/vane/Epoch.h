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
   bool forCommand;      // the outermost of them is a CommandPin
   bool collecting;      // the thread runs disposers at this moment
   bool exiting;         // the thread's record is given back when the last pin goes
   ThreadRecord* record; // made at the first pin
};
extern constinit thread_local ThreadState threadState __attribute__((tls_model("initial-exec")));

void publishPin() noexcept;
void withdrawPin() noexcept;

} // namespace Impl

// While a thread has a pin, nothing that it can reach from then on is disposed of. Pins nest; all but the
// outermost cost a count. Taking a pin never waits; the first of a thread may need memory, and ends the process where
// there is none. A pin belongs to the thread that took it and must be dropped by it.
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

// A pin around a whole command, under which every lookup is cheap. It protects nothing by itself, since a PinRest may
// let it go at any call: what the command reaches it holds by counted handles or by pins of its own.
class CommandPin {
public:
   CommandPin() noexcept : outermost_(Impl::threadState.depth == 1) {
      if (outermost_)
         Impl::threadState.forCommand = true;
   }
   CommandPin(CommandPin const&) = delete;
   CommandPin& operator=(CommandPin const&) = delete;
   ~CommandPin() {
      if (outermost_)
         Impl::threadState.forCommand = false;
   }

private:
   Pin pin_;
   bool outermost_;
};

// Lets the thread's CommandPin go while it lives, so that a wait holds no disposal back. It has no effect when the
// thread has another pin too, or none at all.
class PinRest {
public:
   PinRest() noexcept : rests_(Impl::threadState.depth == 1 && Impl::threadState.forCommand) {
      if (rests_) {
         Impl::threadState.depth = 0;
         Impl::threadState.forCommand = false;
         Impl::withdrawPin();
      }
   }
   PinRest(PinRest const&) = delete;
   PinRest& operator=(PinRest const&) = delete;
   ~PinRest() {
      if (rests_) {
         Impl::publishPin();
         Impl::threadState.depth = 1;
         Impl::threadState.forCommand = true;
      }
   }

private:
   bool rests_;
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

// Disposes now of everything that no pin holds back. Returns the number of objects; 0 inside a disposer. Ends the
// process when memory for the list of them runs out. What is still retired when the process ends is disposed of then.
std::size_t collectRetired() noexcept;

// The number of objects that wait for their disposal.
std::size_t retiredCount() noexcept;

} // namespace Vane
