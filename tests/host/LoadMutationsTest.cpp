#include "host/sample/Sample.h"
#include "host/state/LoadState.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

// States with damage anywhere: whatever comes of one is a state or one line of complaint.

namespace {

// True for a state. Anything but a StateError ends the test.
bool loads(std::string_view text) {
   try {
      Host::loadState("f", Host::StateText(text));
      return true;
   } catch (Host::StateError const& error) {
      std::string_view const message = error.what();
      EXPECT_TRUE(message.starts_with("f:")) << message;
      EXPECT_NE(message.find(": expected "), std::string_view::npos) << message;
      EXPECT_NE(message.find(", found "), std::string_view::npos) << message;
      for (char const c : message)
         EXPECT_TRUE(c >= 0x20 && c < 0x7f) << message;
      return false;
   }
}

// The bytes that mean something in JSON, and some that mean nothing.
constexpr std::string_view telling = "{}[],:\"\\ \n0123456789.-+eEtfnu\x01\x7f\x80\xc3\xed\xff";

void damage(std::string& text, Tests::Random& random) {
   auto const place = random.below(static_cast<std::uint32_t>(text.size()));
   char const byte = telling[random.below(static_cast<std::uint32_t>(telling.size()))];
   switch (random.below(5)) {
   case 0:
      text.erase(place, 1);
      break;
   case 1:
      text.insert(place, 1, byte);
      break;
   case 2:
      text.resize(place + 1);
      break;
   case 3: // some part of it, once more
      text.insert(place, text.substr(random.below(static_cast<std::uint32_t>(text.size())), 1 + random.below(300)));
      break;
   default:
      text[place] = byte;
   }
}

TEST(LoadMutations, ofTheSample) {
   ASSERT_TRUE(loads(Host::sampleState()));
   Tests::Random random(1);
   int refused = 0;
   for (int i = 0; i < 400; ++i) {
      std::string text(Host::sampleState());
      damage(text, random);
      refused += loads(text) ? 0 : 1;
   }
   EXPECT_GT(refused, 200);
}

// Many more of a small state, so that every byte of it is hit in many ways.
TEST(LoadMutations, ofASmallState) {
   std::string const whole = R"({"clock": {"utcTime": 17.5e1}, "tallyFeatureConfigDir": {"feature": {"47": 1}},
 "rsvpLerStatus": {"tunnelIndexMap": [{"tunnelSpecId": {"name": "a\u00e4\n", "source": "cli"}, "tunnelIndex": 7}, {"tunnelSpecId": {}}],
  "superTunnelStatusColl": [{"tunnelSpecId": {}, "isP2mp": false, "color": null, "subLspState": {"10.0.0.1": "up", "::1": 2}}],
  "lspRequestConfigCollTable": [{"lspGroupId": {"groupId": 1}, "lspRequestConfigColl": [{"lspRequestConfigId": {"configId": 3},
    "tree": {"paths": {"10.0.0.9": {"version": 1, "hops": ["10.1.1.2", ""]}}}}]}]},
 "rsvpLerFathomStatus": {"superTunnelConfigColl": null, "rsvpLerTunnelHistory": [{"entries": [{"entryIndex": 0, "timestamp": 1,
    "event": {"lspId": 4, "kind": "lspState", "state": "up"}}, {"entryIndex": 1}], "tunnelIndex": 4}]}})";
   ASSERT_TRUE(loads(whole));
   Tests::Random random(2);
   int refused = 0;
   for (int i = 0; i < 20000; ++i) {
      std::string text = whole;
      for (std::uint32_t more = random.below(3); !text.empty(); --more) {
         damage(text, random);
         if (more == 0)
            break;
      }
      refused += loads(text) ? 0 : 1;
   }
   EXPECT_GT(refused, 10000);
}

} // namespace
