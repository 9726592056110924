#pragma once

#include "brindle/Ptr.h"
#include "vane/Epoch.h"

#include <atomic>

namespace Vane {

// A field that holds a counted handle, for one writer and any number of readers at once. The default holds an
// empty handle. The slot has a use of its own of the object. No reader may be in a slot that is destroyed.
template<class T>
class Slot {
public:
   Slot() noexcept = default;
   explicit Slot(Brindle::Ptr<T> value) noexcept : node_(value.release()) {}
   Slot(Slot const&) = delete;
   Slot& operator=(Slot const&) = delete;
   ~Slot() { Brindle::Ptr<T>::adopt(node_.load(std::memory_order_relaxed)); }

   // A handle of the caller's own on what the slot holds at this moment. Never waits.
   Brindle::Ptr<T> get() const noexcept {
      Pin const pin;
      return Brindle::Ptr<T>::share(node_.load(std::memory_order_acquire));
   }

   // What the slot holds at this moment, nullptr for nothing; it is good as long as a pin that the caller has taken
   // before.
   T* peek() const noexcept { return node_.load(std::memory_order_acquire); }

   // Replaces what the slot holds. The use of the former object is dropped once no reader is about to take
   // it.
   void set(Brindle::Ptr<T> value) noexcept {
      if (T* const former = node_.exchange(value.release(), std::memory_order_acq_rel))
         retire(former, [](void const* dead) noexcept { static_cast<T const*>(dead)->dropUser(); });
   }

private:
   std::atomic<T*> node_ = nullptr;
};

} // namespace Vane
