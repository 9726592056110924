#pragma once

#include "brindle/Ptr.h"
#include "vane/Epoch.h"

#include <utility>

namespace Vane {

// How a collection keeps a value where readers may be: as one pointer, so that it can be exchanged under them. A handle
// is kept as its object, with a use of the collection's own; any other value in a box.
template<class Value>
struct Stored {
   using Object = Value const;

   // Throws std::bad_alloc.
   static Object* put(Value value) { return new Value(std::move(value)); }
   static Value get(Object* object) { return *object; }
   static Object* peek(Value const& value) noexcept { return &value; }
   static void drop(Object* object) noexcept { delete object; }
   static void retire(Object* object) noexcept { retireObject(object); }

   // A value as it is shown in place, for as long as a pin.
   class Shown {
   public:
      void show(Object* object) noexcept { object_ = object; }
      Value const& value() const noexcept { return *object_; }

   private:
      Object* object_ = nullptr;
   };
};

template<class T>
struct Stored<Brindle::Ptr<T>> {
   using Object = T;

   static Object* put(Brindle::Ptr<T> value) noexcept { return value.release(); }
   static Brindle::Ptr<T> get(Object* object) noexcept { return Brindle::Ptr<T>::share(object); }
   static Object* peek(Brindle::Ptr<T> const& value) noexcept { return value.get(); }
   static void drop(Object* object) noexcept { Brindle::Ptr<T>::adopt(object); }
   static void retire(Object* object) noexcept {
      if (object != nullptr)
         Vane::retire(object, [](void const* dead) noexcept { static_cast<T const*>(dead)->dropUser(); });
   }

   // The handle has no use of its own.
   class Shown {
   public:
      Shown() noexcept = default;
      Shown(Shown const&) = delete;
      Shown& operator=(Shown const&) = delete;
      ~Shown() { static_cast<void>(value_.release()); }
      void show(Object* object) noexcept {
         static_cast<void>(value_.release());
         value_ = Brindle::Ptr<T>::adopt(object);
      }
      Brindle::Ptr<T> const& value() const noexcept { return value_; }

   private:
      Brindle::Ptr<T> value_;
   };
};

} // namespace Vane
