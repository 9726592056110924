#include "lattice/Address.h"

#include "tests/support/Random.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

using Lattice::IpAddr;
using Lattice::IpGenAddr;

namespace {

// What the C library takes for the text of an IPv4 address.
std::optional<IpAddr> reference(std::string const& text) {
   std::array<std::uint8_t, 4> octets;
   bool const taken = text.find('\0') == std::string::npos && inet_pton(AF_INET, text.c_str(), octets.data()) == 1;
   return taken ? std::optional(IpAddr(octets)) : std::nullopt;
}

void expectAsReference(std::string const& text) {
   auto const parsed = IpGenAddr::parse(text);
   auto const expected = reference(text);
   ASSERT_EQ(parsed.has_value() && parsed->isV4(), expected.has_value()) << '"' << text << '"';
   if (expected) {
      EXPECT_EQ(parsed->v4Addr(), *expected) << '"' << text << '"';
   }
}

TEST(Address, TakesDottedDecimalWithoutLeadingZeros) {
   struct Row {
      std::string text;
      std::optional<IpAddr> address;
   };
   Row const rows[] = {
         {"10.0.0.9", IpAddr(10, 0, 0, 9)},
         {"0.0.0.0", IpAddr()},
         {"255.255.255.255", IpAddr(255, 255, 255, 255)},
         {"256.0.0.1", {}},
         {"1.2.3.256", {}},
         {"1.2.3.4294967297", {}},
         {"010.0.0.1", {}},
         {"1.2.3.00", {}},
         {"1.2.3", {}},
         {"1.2.3.", {}},
         {"1.2.3.4.", {}},
         {"1.2.3.4.5", {}},
         {".1.2.3.4", {}},
         {"1..2.3", {}},
         {" 1.2.3.4", {}},
         {"1.2.3.4 ", {}},
         {"+1.2.3.4", {}},
         {std::string("1.2.3.4\0", 8), {}},
   };
   for (Row const& row : rows) {
      auto const parsed = IpGenAddr::parse(row.text);
      EXPECT_EQ(parsed.has_value(), row.address.has_value()) << '"' << row.text << '"';
      if (parsed && row.address) {
         EXPECT_EQ(*parsed, IpGenAddr(*row.address)) << '"' << row.text << '"';
      }
      expectAsReference(row.text);
   }
}

// Addresses with one byte changed, left out or added, of which about a third are still addresses.
TEST(Address, TakesTheAddressesThatTheCLibraryTakes) {
   constexpr char bytes[] = "0123456789.. :x";
   Tests::Random random(1);
   auto const below = [&random](std::size_t limit) { return random.below(static_cast<std::uint32_t>(limit)); };
   for (int i = 0; i < 200'000; ++i) {
      std::string text;
      for (int octet = 0; octet < 4; ++octet)
         text += (octet == 0 ? "" : ".") + std::to_string(below(i % 2 == 0 ? 300 : 12));
      std::size_t const place = below(text.size());
      text.replace(place, below(2), below(2), bytes[below(sizeof bytes - 1)]);
      ASSERT_NO_FATAL_FAILURE(expectAsReference(text));
   }
}

} // namespace
