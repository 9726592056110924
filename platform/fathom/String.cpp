#include "fathom/String.h"

#include <cstring>
#include <new>

namespace Fathom {

namespace {

// FNV-1a, with a last mixing step since tables use the low bits.
std::uint32_t hashBytes(std::string_view text) noexcept {
   std::uint64_t hash = 0xcbf29ce484222325;
   for (char c : text)
      hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
   return static_cast<std::uint32_t>(hash ^ hash >> 32);
}

} // namespace

String::String(std::string_view text) {
   if (text.empty())
      return;
   void* storage = ::operator new(sizeof(Rep) + text.size() + 1);
   rep_ = new (storage) Rep{1, hashBytes(text), text.size()};
   std::memcpy(rep_->text(), text.data(), text.size());
   rep_->text()[text.size()] = '\0';
}

void String::free(Rep* rep) noexcept {
   rep->~Rep();
   ::operator delete(rep);
}

} // namespace Fathom
