#pragma once

#include "brindle/Assert.h"
#include "brindle/String.h"

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

namespace Lattice {

// An IPv4 address, first octet first.
class IpAddr {
public:
   constexpr IpAddr() noexcept = default;
   constexpr explicit IpAddr(std::array<std::uint8_t, 4> octets) noexcept : octets_(octets) {}
   constexpr IpAddr(std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d) noexcept : octets_{a, b, c, d} {}

   constexpr std::array<std::uint8_t, 4> const& octets() const noexcept { return octets_; }
   // The four octets as a number, first octet highest.
   constexpr std::uint32_t number() const noexcept {
      return std::uint32_t{octets_[0]} << 24 | std::uint32_t{octets_[1]} << 16 | std::uint32_t{octets_[2]} << 8 |
             octets_[3];
   }

   friend constexpr auto operator<=>(IpAddr const&, IpAddr const&) noexcept = default;

private:
   std::array<std::uint8_t, 4> octets_{};
};

// An IPv6 address, or the sixteen bytes of any family that isn't IPv4.
class Ip6Addr {
public:
   constexpr Ip6Addr() noexcept = default;
   constexpr explicit Ip6Addr(std::array<std::uint8_t, 16> bytes) noexcept : bytes_(bytes) {}

   constexpr std::array<std::uint8_t, 16> const& bytes() const noexcept { return bytes_; }
   // Writes the text of inet_ntop for AF_INET6, at most size - 1 characters and a NUL (nothing when size is 0), and
   // returns the length of the whole text, at most 45.
   std::size_t printToBuffer(char* buffer, std::size_t size) const noexcept;

   friend constexpr auto operator<=>(Ip6Addr const&, Ip6Addr const&) noexcept = default;

private:
   std::array<std::uint8_t, 16> bytes_{};
};

// An address of either family. Ordered by family, then by bytes. The default address has family 0 and reads "::".
class IpGenAddr {
public:
   static constexpr std::uint8_t familyNone = 0;
   static constexpr std::uint8_t familyV4 = 1;
   static constexpr std::uint8_t familyV6 = 2;
   // Room for the text of any address with its NUL.
   static constexpr std::size_t textSize = 46;

   constexpr IpGenAddr() noexcept = default;
   constexpr IpGenAddr(IpAddr const& v4) noexcept : family_(familyV4) {
      for (std::size_t i = 0; i < 4; ++i)
         bytes_[i] = v4.octets()[i];
   }
   constexpr IpGenAddr(Ip6Addr const& v6) noexcept : family_(familyV6), bytes_(v6.bytes()) {}

   // Dotted decimal, the usual IPv6 text, or "" for the default address; nothing for any other text.
   static std::optional<IpGenAddr> parse(std::string_view text) noexcept;

   constexpr std::uint8_t family() const noexcept { return family_; }
   constexpr bool isV4() const noexcept { return family_ == familyV4; }
   constexpr IpAddr v4Addr() const noexcept { return {bytes_[0], bytes_[1], bytes_[2], bytes_[3]}; }
   constexpr Ip6Addr v6Addr() const noexcept { return Ip6Addr(bytes_); }

   // Dotted decimal for IPv4, else as Ip6Addr::printToBuffer writes it.
   Brindle::String stringValue() const;
   // The same text without a string, under the contract of Ip6Addr::printToBuffer.
   std::size_t printToBuffer(char* buffer, std::size_t size) const noexcept;

   constexpr bool isEq(IpGenAddr const& other) const noexcept { return *this == other; }
   friend constexpr auto operator<=>(IpGenAddr const&, IpGenAddr const&) noexcept = default;

private:
   std::uint8_t family_ = familyNone;
   std::array<std::uint8_t, 16> bytes_{};
};

// The digits of an octet with a point behind them.
struct OctetText {
   std::array<char, 4> text;
   std::uint8_t size; // with the point
};
constexpr std::array<OctetText, 256> makeOctetTexts() noexcept {
   std::array<OctetText, 256> texts{};
   for (unsigned octet = 0; octet < texts.size(); ++octet) {
      OctetText& entry = texts[octet];
      for (unsigned unit : {100U, 10U, 1U}) {
         if (octet >= unit || unit == 1)
            entry.text[entry.size++] = static_cast<char>('0' + octet / unit % 10);
      }
      entry.text[entry.size++] = '.';
   }
   return texts;
}
inline constexpr std::array<OctetText, 256> octetTexts = makeOctetTexts();

// Writes dotted decimal at `at`, where 16 bytes must be free though the text has at most 15, and returns its end.
inline char* putIpAddr(char* at, IpAddr const& address) noexcept {
   for (std::uint8_t octet : address.octets()) {
      std::memcpy(at, octetTexts[octet].text.data(), 4);
      at += octetTexts[octet].size;
   }
   return at - 1;
}

// Writes dotted decimal under the contract of Ip6Addr::printToBuffer; the length is at most 15.
std::size_t printIpAddr(IpAddr const& address, char* buffer, std::size_t size) noexcept;

} // namespace Lattice
