#pragma once

#include "brindle/Assert.h"
#include "brindle/Node.h"

#include <cstddef>
#include <type_traits>
#include <utility>

namespace Brindle {

// Counted handle on a Node, usually to const. An empty handle is an ordinary value; following one ends the process
// through an assertion. A handle is a plain value: two threads may each hold one on the same object, but must not
// share one handle.
template<class T>
class Ptr {
public:
   constexpr Ptr() noexcept = default;
   constexpr Ptr(std::nullptr_t) noexcept {}
   Ptr(Ptr const& other) noexcept : node_(other.node_) { addUser(); }
   Ptr(Ptr&& other) noexcept : node_(std::exchange(other.node_, nullptr)) {}
   template<class U>
   requires std::is_convertible_v<U*, T*> Ptr(Ptr<U> const& other)
   noexcept : node_(other.get()) { addUser(); }
   template<class U>
   requires std::is_convertible_v<U*, T*> Ptr(Ptr<U>&& other)
   noexcept : node_(other.release()) {}
   ~Ptr() {
      if (node_ != nullptr)
         node_->dropUser();
   }
   Ptr& operator=(Ptr other) noexcept {
      std::swap(node_, other.node_);
      return *this;
   }

   // Takes over a use that the caller holds, such as the first one of a new object.
   static Ptr adopt(T* node) noexcept {
      Ptr ptr;
      ptr.node_ = node;
      return ptr;
   }
   // Adds a use of its own.
   static Ptr share(T* node) noexcept {
      Ptr ptr = adopt(node);
      ptr.addUser();
      return ptr;
   }

   T* get() const noexcept { return node_; }
   // Gives the use away: the caller now has to drop it.
   [[nodiscard]] T* release() noexcept { return std::exchange(node_, nullptr); }
   explicit operator bool() const noexcept { return node_ != nullptr; }

   T* operator->() const noexcept {
      BRINDLE_ASSERT_TEXT(node_ != nullptr, "an empty handle was followed");
      return node_;
   }
   T& operator*() const noexcept { return *operator->(); }

   template<class U>
   friend bool operator==(Ptr const& a, Ptr<U> const& b) noexcept {
      return a.get() == b.get();
   }
   friend bool operator==(Ptr const& a, std::nullptr_t) noexcept { return a.node_ == nullptr; }

private:
   void addUser() const noexcept {
      if (node_ != nullptr)
         node_->addUser();
   }

   T* node_ = nullptr;
};

// Makes an object and the handle that owns it.
template<class T, class... Args>
Ptr<T> makeNode(Args&&... args) {
   return Ptr<T>::adopt(new T(std::forward<Args>(args)...));
}

} // namespace Brindle
