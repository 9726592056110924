#pragma once

#include "brindle/Ptr.h"
#include "brindle/String.h"

#include <concepts>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <variant>

namespace Brindle {

// What a type handles, when it is a handle.
template<class T>
struct HandleTarget {};
template<class T>
struct HandleTarget<Ptr<T>> {
   using Type = T;
};

template<class T>
concept HandleType = requires {
   typename HandleTarget<T>::Type;
};

// The types that stand for themselves and belong to no module.
template<class T>
concept PlainType = std::same_as<T, bool> || std::same_as<T, std::uint8_t> || std::same_as<T, std::uint16_t> ||
      std::same_as<T, std::uint32_t> || std::same_as<T, std::uint64_t> || std::same_as<T, String>;

class GenericValue;

// What a generic value can hold. A text is held as a String and as nothing else.
template<class T>
concept GenericType = PlainType<T> || std::is_enum_v<T> ||
      (std::is_class_v<T> && !std::same_as<T, GenericValue> && std::copyable<T> &&
       !std::convertible_to<T, std::string_view>);

// A value of a type that is known only while the program runs: nothing, a plain value, an enumerator, a counted handle
// (possibly empty) or a value of a class. It owns what it holds; copying it copies a value and takes a use of a handle.
//
// The type is the exact static type of what was put in: a number is never widened and a handle on a base class is
// another type than one on the class; only a handle on a changeable object serves also as one on a const object.
// Enumerators, handles and values whose class is part of a module must be gone before that module is unloaded.
class GenericValue {
public:
   // Holds nothing.
   GenericValue() noexcept;
   GenericValue(GenericValue const& other);
   GenericValue(GenericValue&& other) noexcept;
   GenericValue& operator=(GenericValue const& other);
   GenericValue& operator=(GenericValue&& other) noexcept;
   ~GenericValue();
   template<GenericType T>
   GenericValue(T value) : content_(contentOf(std::move(value))) {}

   bool empty() const noexcept { return std::holds_alternative<std::monostate>(content_); }

   // Whether get<T>() can be called.
   template<class T>
   bool holds() const noexcept;

   // What is held: a reference to a plain value or a value of a class, an enumerator or a handle of the caller's own.
   // The process ends when something else is held.
   template<class T>
   decltype(auto) get() const;

   // The object that is held by value or by handle. nullptr for an object of another class, an empty handle, and a
   // handle on a const object when T isn't const. The object remains this value's.
   template<class T>
   T* object() noexcept;
   template<class T>
   requires std::is_const_v<T> T* object() const noexcept { return const_cast<GenericValue*>(this)->object<T>(); }

private:
   struct Enumeration {
      std::type_info const* type;
      std::uint64_t number;
   };

   struct Handle {
      std::type_info const* type; // of the object, without const
      bool toConst;
      Ptr<Node const> node;
   };

   class Box {
   public:
      virtual ~Box() = default;
      virtual std::unique_ptr<Box> clone() const = 0;
      virtual std::type_info const& type() const noexcept = 0;
      virtual void* object() noexcept = 0;
   };

   template<class T>
   class BoxOf final : public Box {
   public:
      explicit BoxOf(T value) : value_(std::move(value)) {}
      std::unique_ptr<Box> clone() const override { return std::make_unique<BoxOf>(value_); }
      std::type_info const& type() const noexcept override { return typeid(T); }
      void* object() noexcept override { return &value_; }

   private:
      T value_;
   };

   struct Boxed {
      explicit Boxed(std::unique_ptr<Box> box_) noexcept : box(std::move(box_)) {}
      Boxed(Boxed const& other) : box(other.box->clone()) {}
      Boxed(Boxed&&) noexcept = default;
      Boxed& operator=(Boxed other) noexcept {
         box = std::move(other.box);
         return *this;
      }
      ~Boxed() = default;

      std::unique_ptr<Box> box;
   };

   using Content = std::variant<std::monostate, bool, std::uint8_t, std::uint16_t, std::uint32_t, std::uint64_t, String,
                                Enumeration, Handle, Boxed>;

   template<class T>
   static Content contentOf(T value) {
      if constexpr (PlainType<T>) {
         return Content(std::in_place_type<T>, std::move(value));
      } else if constexpr (std::is_enum_v<T>) {
         return Content(Enumeration{&typeid(T), static_cast<std::uint64_t>(value)});
      } else if constexpr (HandleType<T>) {
         using Target = typename HandleTarget<T>::Type;
         return Content(Handle{&typeid(Target), std::is_const_v<Target>, std::move(value)});
      } else {
         return Content(std::in_place_type<Boxed>, std::make_unique<BoxOf<T>>(std::move(value)));
      }
   }

   template<class T>
   Handle const* handleOn() const noexcept {
      auto const* const handle = std::get_if<Handle>(&content_);
      bool const fits = handle != nullptr && *handle->type == typeid(T) && (std::is_const_v<T> || !handle->toConst);
      return fits ? handle : nullptr;
   }

   template<class T>
   static T* targetOf(Handle const& handle) noexcept {
      return static_cast<T*>(const_cast<Node*>(handle.node.get()));
   }

   Content content_;
};

// The arguments of a call, in declared order.
using Arguments = std::span<GenericValue const>;

template<class T>
bool GenericValue::holds() const noexcept {
   if constexpr (PlainType<T>) {
      return std::holds_alternative<T>(content_);
   } else if constexpr (std::is_enum_v<T>) {
      auto const* const enumeration = std::get_if<Enumeration>(&content_);
      return enumeration != nullptr && *enumeration->type == typeid(T);
   } else if constexpr (HandleType<T>) {
      return handleOn<typename HandleTarget<T>::Type>() != nullptr;
   } else {
      auto const* const boxed = std::get_if<Boxed>(&content_);
      return boxed != nullptr && boxed->box->type() == typeid(T);
   }
}

template<class T>
decltype(auto) GenericValue::get() const {
   BRINDLE_ASSERT_TEXT(holds<T>(), "a generic value holds another type");
   if constexpr (PlainType<T>) {
      return static_cast<T const&>(*std::get_if<T>(&content_));
   } else if constexpr (std::is_enum_v<T>) {
      return static_cast<T>(std::get_if<Enumeration>(&content_)->number);
   } else if constexpr (HandleType<T>) {
      using Target = typename HandleTarget<T>::Type;
      return T::share(targetOf<Target>(*std::get_if<Handle>(&content_)));
   } else {
      return static_cast<T const&>(*object<T const>());
   }
}

template<class T>
T* GenericValue::object() noexcept {
   if constexpr (std::derived_from<T, Node>) {
      auto const* const handle = handleOn<T>();
      return handle == nullptr ? nullptr : targetOf<T>(*handle);
   } else {
      return holds<std::remove_const_t<T>>() ? static_cast<T*>(std::get_if<Boxed>(&content_)->box->object()) : nullptr;
   }
}

} // namespace Brindle
