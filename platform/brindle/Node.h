#pragma once

#include <atomic>
#include <cstdint>

namespace Brindle {

struct TypeData;

// The base of reference-counted objects. A new object has a use count of 1, which belongs to whoever made it (makeNode
// hands it to a Ptr). The count may be changed by any thread; the object itself is as safe as its class says.
class Node {
public:
   Node() noexcept = default;
   Node(Node const&) = delete;
   Node& operator=(Node const&) = delete;
   virtual ~Node() = default;

   // Called when the last user has gone; the object is deleted unless a class overrides this.
   virtual void lastUserGone() const noexcept { delete this; }
   // The object that publishes changes of this one; nullptr when nothing does.
   virtual Node const* publisher() const noexcept { return nullptr; }
   // What the type system knows of the object's class; nullptr when the class isn't published.
   virtual TypeData const* typeData() const noexcept { return nullptr; }

   void addUser() const noexcept { users_.fetch_add(1, std::memory_order_relaxed); }
   void dropUser() const noexcept {
      if (users_.fetch_sub(1, std::memory_order_acq_rel) == 1)
         lastUserGone();
   }
   std::uint32_t userCount() const noexcept { return users_.load(std::memory_order_relaxed); }

private:
   mutable std::atomic<std::uint32_t> users_ = 1;
};

} // namespace Brindle
