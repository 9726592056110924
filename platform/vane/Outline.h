#pragma once

#include <atomic>
#include <utility>

namespace Vane::Impl {

template<class Object>
concept Outlined = requires(Object const& object) {
   object.outline();
};

// What a collection keeps of an object beside the pointer to it: what the object's outline() says, some bits that most
// of those who walk over it are content with. Nothing of an object that has none.
template<class Object>
class KeptOutline {
   static_assert(sizeof(Object) != 0, "it is declared in full, so that every file says the same of its outline");

public:
   explicit KeptOutline(Object const*) noexcept {}
   void set(Object const*) noexcept {}
};

template<Outlined Object>
class KeptOutline<Object> {
public:
   using Outline = decltype(std::declval<Object const&>().outline());

   // Of no object, it is the default.
   explicit KeptOutline(Object const* object) noexcept : outline_(of(object)) {}
   KeptOutline(KeptOutline const& other) noexcept : outline_(other.get()) {}
   KeptOutline& operator=(KeptOutline const&) = delete;
   void set(Object const* object) noexcept { outline_.store(of(object), std::memory_order_relaxed); }
   Outline get() const noexcept { return outline_.load(std::memory_order_relaxed); }

private:
   static Outline of(Object const* object) noexcept { return object != nullptr ? object->outline() : Outline(); }

   static_assert(sizeof(Outline) == 1, "it has room where a key leaves some");

   std::atomic<Outline> outline_;
};

} // namespace Vane::Impl
