#pragma once

#include <cstdint>
#include <type_traits>

// What the tables ask of a key and of the body of a walk.

namespace Vane {

// Spreads a hash so that the low bits, which choose the place in a table, depend on all bits.
constexpr std::uint32_t mixHash(std::uint64_t hash) noexcept {
   hash = (hash ^ hash >> 32) * 0x9e3779b97f4a7c15;
   return static_cast<std::uint32_t>(hash ^ hash >> 32);
}

// The mixed hash of a key: of its `hash(seed)`, else of its `hash()`, else of the integer that it is.
template<class Key>
constexpr std::uint32_t hashOf(Key const& key) noexcept {
   if constexpr (requires { key.hash(std::uint32_t(0)); })
      return mixHash(key.hash(std::uint32_t(0)));
   else if constexpr (requires { key.hash(); })
      return mixHash(key.hash());
   else
      return mixHash(static_cast<std::uint64_t>(key));
}

// Equality of two keys: `Key::isEq(a, b)` where the class has it, else ==.
template<class Key>
constexpr bool keysEqual(Key const& a, Key const& b) noexcept {
   if constexpr (requires { Key::isEq(a, b); })
      return Key::isEq(a, b);
   else
      return a == b;
}

// The value of a collection that holds keys alone.
struct NoValue {
   friend constexpr bool operator==(NoValue, NoValue) noexcept { return true; }
};

// Calls the body of a walk. Returns false when the body asks to stop; a body that returns nothing never does.
template<class Body, class... Args>
bool goesOn(Body& body, Args const&... args) {
   if constexpr (std::is_void_v<std::invoke_result_t<Body&, Args const&...>>) {
      body(args...);
      return true;
   } else {
      return static_cast<bool>(body(args...));
   }
}

} // namespace Vane
