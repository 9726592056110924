#pragma once

#include <atomic>
#include <compare>
#include <cstdint>
#include <string_view>
#include <utility>

namespace Fathom {

// A string of the shared state: immutable, counted, terminated by a NUL, and carrying the hash of its bytes. Copying
// one copies a pointer; comparing two that share their text is one comparison of pointers. The default string is empty.
class String {
public:
   constexpr String() noexcept = default;
   // Copies the text; any byte is allowed in it.
   String(std::string_view text);
   String(char const* text) : String(std::string_view(text)) {}
   String(String const& other) noexcept : rep_(other.rep_) {
      if (rep_ != nullptr)
         rep_->users.fetch_add(1, std::memory_order_relaxed);
   }
   String(String&& other) noexcept : rep_(std::exchange(other.rep_, nullptr)) {}
   ~String() { drop(); }
   String& operator=(String other) noexcept {
      std::swap(rep_, other.rep_);
      return *this;
   }

   // The text, with a NUL behind its end.
   char const* c_str() const noexcept { return rep_ == nullptr ? "" : rep_->text(); }
   std::size_t size() const noexcept { return rep_ == nullptr ? 0 : rep_->length; }
   bool empty() const noexcept { return rep_ == nullptr; }
   std::string_view view() const noexcept { return {c_str(), size()}; }
   operator std::string_view() const noexcept { return view(); }
   // Equal strings have equal hashes; the empty string has 0.
   std::uint32_t hash() const noexcept { return rep_ == nullptr ? 0 : rep_->hash; }

   // Whether both share their text, which is told without a look at it. Equal strings need not.
   bool isSame(String const& other) const noexcept { return rep_ == other.rep_; }
   friend bool operator==(String const& a, String const& b) noexcept {
      if (a.rep_ == nullptr || b.rep_ == nullptr)
         return a.rep_ == b.rep_; // without looking at the other's text
      return a.rep_ == b.rep_ || (a.hash() == b.hash() && a.view() == b.view());
   }
   // Byte order.
   friend std::strong_ordering operator<=>(String const& a, String const& b) noexcept {
      return a.rep_ == b.rep_ ? std::strong_ordering::equal : a.view() <=> b.view();
   }

private:
   struct Rep {
      std::atomic<std::uint32_t> users;
      std::uint32_t hash;
      std::size_t length;
      char* text() noexcept { return reinterpret_cast<char*>(this + 1); }
   };

   void drop() noexcept {
      if (rep_ != nullptr && rep_->users.fetch_sub(1, std::memory_order_acq_rel) == 1)
         free(rep_);
   }
   static void free(Rep* rep) noexcept;

   Rep* rep_ = nullptr; // nullptr is the empty string
};

} // namespace Fathom
