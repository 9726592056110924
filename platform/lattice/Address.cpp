#include "lattice/Address.h"

#include <arpa/inet.h>

#include <algorithm>

namespace Lattice {

namespace {

// Copies as much of the text as fits, always terminated, and gives back the whole length.
std::size_t copyBounded(std::string_view text, char* buffer, std::size_t size) noexcept {
   if (size != 0) {
      std::size_t const length = std::min(text.size(), size - 1);
      std::memcpy(buffer, text.data(), length);
      buffer[length] = '\0';
   }
   return text.size();
}

// Four octets without leading zeros, with points between them.
std::optional<IpAddr> parseIpAddr(std::string_view text) noexcept {
   std::array<std::uint8_t, 4> octets;
   char const* at = text.data();
   char const* const end = at + text.size();
   for (std::size_t i = 0; i < octets.size(); ++i) {
      if (i > 0 && (at == end || *at++ != '.'))
         return std::nullopt;
      char const* const first = at;
      unsigned octet = 0;
      while (at != end && *at >= '0' && *at <= '9' && octet <= 255)
         octet = 10 * octet + static_cast<unsigned>(*at++ - '0');
      if (at == first || octet > 255 || (*first == '0' && at - first > 1))
         return std::nullopt;
      octets[i] = static_cast<std::uint8_t>(octet);
   }
   return at == end ? std::optional(IpAddr(octets)) : std::nullopt;
}

} // namespace

std::size_t printIpAddr(IpAddr const& address, char* buffer, std::size_t size) noexcept {
   char text[16];
   char* const end = putIpAddr(text, address);
   return copyBounded({text, end}, buffer, size);
}

std::size_t Ip6Addr::printToBuffer(char* buffer, std::size_t size) const noexcept {
   char text[INET6_ADDRSTRLEN];
   // Sixteen bytes and room for the longest text: inet_ntop has no reason to fail.
   BRINDLE_ASSERT(inet_ntop(AF_INET6, bytes_.data(), text, sizeof text) != nullptr);
   return copyBounded(text, buffer, size);
}

std::size_t IpGenAddr::printToBuffer(char* buffer, std::size_t size) const noexcept {
   return isV4() ? printIpAddr(v4Addr(), buffer, size) : v6Addr().printToBuffer(buffer, size);
}

Brindle::String IpGenAddr::stringValue() const {
   char text[textSize];
   return {text, printToBuffer(text, sizeof text)};
}

std::optional<IpGenAddr> IpGenAddr::parse(std::string_view text) noexcept {
   if (text.empty())
      return IpGenAddr();
   if (auto const v4 = parseIpAddr(text))
      return IpGenAddr(*v4);
   char terminated[textSize];
   if (text.size() >= sizeof terminated || text.find('\0') != std::string_view::npos)
      return std::nullopt;
   std::memcpy(terminated, text.data(), text.size());
   terminated[text.size()] = '\0';
   std::array<std::uint8_t, 16> bytes;
   if (inet_pton(AF_INET6, terminated, bytes.data()) == 1)
      return IpGenAddr(Ip6Addr(bytes));
   return std::nullopt;
}

} // namespace Lattice
