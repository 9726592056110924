#include "RsvpLer/output/ToString.h"

#include "RsvpLer/output/FixedPoint.h"
#include "RsvpLer/output/NumberText.h"

#include <algorithm>
#include <cstring>

namespace Kerf {

namespace {

std::size_t printBounded(char* buffer, std::size_t size, std::string_view text) noexcept {
   if (size != 0) {
      std::size_t const length = std::min(text.size(), size - 1);
      if (length != 0)
         std::memcpy(buffer, text.data(), length);
      buffer[length] = '\0';
   }
   return text.size();
}

} // namespace

std::size_t to_stringb(char* buffer, std::size_t size, Lattice::IpAddr const& value) noexcept {
   return Lattice::printIpAddr(value, buffer, size);
}

std::size_t to_stringb(char* buffer, std::size_t size, Lattice::IpGenAddr const& value) noexcept {
   return value.printToBuffer(buffer, size);
}

std::size_t to_stringb(char* buffer, std::size_t size, Lattice::IntfId const& value) noexcept {
   return printBounded(buffer, size, value.name());
}

std::size_t to_stringb(char* buffer, std::size_t size, Brindle::Duration value) noexcept {
   char text[maxFixedPointLength];
   return printBounded(buffer, size, {text, putFixedPoint(text, value.seconds())});
}

std::size_t to_stringb(char* buffer, std::size_t size, JustifyLeft<std::string_view> const& value) noexcept {
   std::size_t const length = std::max<std::size_t>(value.width, value.text.size());
   if (size == 0)
      return length;
   std::size_t const written = std::min(length, size - 1);
   std::size_t const textLength = std::min(value.text.size(), written);
   if (textLength != 0)
      std::memcpy(buffer, value.text.data(), textLength);
   std::memset(buffer + textLength, value.fill, written - textLength);
   buffer[written] = '\0';
   return length;
}

std::size_t to_stringb(char* buffer, std::size_t size, JustifyRight<std::string_view> const& value) noexcept {
   std::size_t const length = std::max<std::size_t>(value.width, value.text.size());
   if (size == 0)
      return length;
   std::size_t const fill = std::min(length - value.text.size(), size - 1);
   std::memset(buffer, value.fill, fill);
   printBounded(buffer + fill, size - fill, value.text);
   return length;
}

std::size_t to_stringb_aright(char* buffer, std::size_t size, std::uint32_t value, std::size_t width,
                              char fill) noexcept {
   char text[maxDigits<std::uint32_t>];
   std::string_view const digits(text, putNumber(text, value));
   if (digits.size() >= width || digits.size() > size)
      return printBounded(buffer, size, digits);
   std::size_t const filled = std::min(width - digits.size(), size);
   std::memset(buffer, fill, filled);
   printBounded(buffer + filled, size - filled, digits);
   return width;
}

} // namespace Kerf
