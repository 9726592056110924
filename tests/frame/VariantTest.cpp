#include "brindle/Exception.h"
#include "tests/frame/VariantNames.h"
#include "tests/support/Answer.h"
#include "tests/support/Router.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <tuple>

using namespace Rsvp;
using namespace Tests;
using Cli::ShowTunnelVariant;

TEST(Variant, namesBothWays) {
   for (std::uint8_t number = 0; number < std::size(variantNames); ++number) {
      auto const variant = static_cast<ShowTunnelVariant>(number);
      EXPECT_EQ(Cli::stringValue(variant), variantNames[number]);
      std::ostringstream out;
      out << variant;
      EXPECT_EQ(out.str(), variantNames[number]);
      EXPECT_EQ(Cli::sequenceToValue(variantNames[number]), variant);
      EXPECT_EQ(Cli::ShowTunnelVariantInstance(number).value(), variant);
      EXPECT_EQ(Cli::ShowTunnelVariantInstance(std::string_view(variantNames[number])).value(), variant);
   }
}

TEST(Variant, namesThatAreNone) {
   EXPECT_EQ(Cli::stringValue(static_cast<ShowTunnelVariant>(13)), "13");
   for (char const* name : {"", "showTunnel", "showTunnelP2p ", "ShowTunnelP2p", "0"}) {
      EXPECT_FALSE(Cli::sequenceToValue(name)) << name;
      EXPECT_THROW(Cli::ShowTunnelVariantInstance{std::string_view(name)}, Brindle::Exception) << name;
   }
   EXPECT_THROW(Cli::ShowTunnelVariantInstance(std::uint8_t{13}), Brindle::Exception);
}

TEST(Variant, everyCombinationOfFlags) {
   // summary, lspDetails, detail, history, subTunnel -> the P2P and the P2MP variant. What isn't here is a fault.
   using Combination = std::tuple<bool, bool, bool, bool, bool>;
   std::map<Combination, std::pair<int, int>> const allowed = {
         {{0, 0, 0, 0, 0}, {0, 7}},  {{0, 0, 0, 0, 1}, {0, 7}},  {{0, 0, 1, 0, 0}, {1, 8}},  {{0, 0, 1, 0, 1}, {1, 8}},
         {{0, 1, 0, 0, 0}, {2, 9}},  {{0, 1, 0, 0, 1}, {2, 9}},  {{1, 0, 0, 0, 0}, {3, 10}}, {{1, 0, 0, 0, 1}, {4, 10}},
         {{0, 0, 0, 1, 0}, {5, 11}}, {{0, 0, 0, 1, 1}, {5, 11}}, {{0, 0, 1, 1, 0}, {6, 12}}, {{0, 0, 1, 1, 1}, {6, 12}},
   };
   auto const command = Router().tunnelCommand();
   for (unsigned bits = 0; bits < 32; ++bits) {
      Combination const flags(bits & 16, bits & 8, bits & 4, bits & 2, bits & 1);
      auto const variant = [&](std::uint8_t sessionType) {
         return static_cast<int>(command->getShowTunnelVariantEnum(
               static_cast<RsvpSessionType>(sessionType), std::get<0>(flags), std::get<1>(flags), std::get<2>(flags),
               std::get<3>(flags), std::get<4>(flags)));
      };
      auto const row = allowed.find(flags);
      if (row == allowed.end()) {
         EXPECT_DEATH(variant(0), "One show command should be enabled") << bits;
         EXPECT_DEATH(variant(1), "One show command should be enabled") << bits;
         continue;
      }
      EXPECT_EQ(variant(0), row->second.first) << bits;
      EXPECT_EQ(variant(1), row->second.second) << bits;
      EXPECT_EQ(variant(255), row->second.second) << bits;
   }
}
