#include "RsvpLer/state/Keys.h"

#include "tests/support/Router.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

using namespace Rsvp;
using namespace Tests;

namespace {

template<class Key>
std::string textForm(Key const& key) {
   std::ostringstream out;
   out << key;
   return out.str();
}

} // namespace

TEST(Keys, textForms) {
   EXPECT_EQ(textForm(RsvpLerTunnelSpecId()), "<name=''>_<source='0'>");
   EXPECT_EQ(textForm(tunnelId("tun1", RsvpLerTunnelSource::defaultSource)), "<name='tun1'>_<source='4'>");
   EXPECT_EQ(textForm(pathSpecId("via-north")), "<name='via-north'>_<source='1'>");
   EXPECT_EQ(textForm(subTunnelId("t", 4294967295)), "<name='t'>_<source='1'>_<subTunnelId=4294967295>");
   EXPECT_EQ(textForm(mbbId("t", 2, 3)), "<name='t'>_<source='1'>_<subTunnelId=3>_<epoch=2>");
   EXPECT_EQ(textForm(groupId("t", 255, 2, 3)), "<name='t'>_<source='1'>_<subTunnelId=3>_<epoch=2>_<groupId=255>");
   EXPECT_EQ(textForm(requestId("t", 5, 1, 2, 3)),
             "<name='t'>_<source='1'>_<subTunnelId=3>_<epoch=2>_<groupId=1>_<configId=5>");
}

// Keys that differ from the first in one field each.
std::vector<RsvpLerLspRequestConfigId> requestsThatDifferInOneField() {
   RsvpLerLspRequestConfigId const base = requestId("t", 5, 1, 2, 3);
   std::vector<RsvpLerLspRequestConfigId> keys(7, base);
   auto& tunnel = [](RsvpLerLspRequestConfigId& key) -> RsvpLerTunnelSpecId& {
      return key.lspGroupId.mbbTunnelConfigId.subTunnelConfigId.tunnelSpecId;
   }(keys[1]);
   tunnel.name = "u";
   keys[2].lspGroupId.mbbTunnelConfigId.subTunnelConfigId.tunnelSpecId.source = RsvpLerTunnelSource::mvpn;
   keys[3].lspGroupId.mbbTunnelConfigId.subTunnelConfigId.subTunnelId = 4;
   keys[4].lspGroupId.mbbTunnelConfigId.epoch = 4;
   keys[5].lspGroupId.groupId = 2;
   keys[6].configId = 6;
   return keys;
}

TEST(Keys, everyFieldCountsInEqualityHashAndOrder) {
   auto const keys = requestsThatDifferInOneField();
   for (std::size_t i = 0; i < keys.size(); ++i)
      for (std::size_t j = 0; j < keys.size(); ++j) {
         EXPECT_EQ(RsvpLerLspRequestConfigId::isEq(keys[i], keys[j]), i == j) << i << ' ' << j;
         EXPECT_EQ(keys[i].hash(17) == keys[j].hash(17), i == j) << i << ' ' << j;
         EXPECT_EQ((keys[i] <=> keys[j]) == 0, i == j) << i << ' ' << j;
      }
   // Every one is greater than the base, and the earlier the field the more it counts.
   for (std::size_t i = 1; i + 1 < keys.size(); ++i) {
      EXPECT_LT(keys[0], keys[i + 1]);
      EXPECT_GT(keys[i], keys[i + 1]);
   }
}

TEST(Keys, numbersOrderByValue) {
   EXPECT_LT(subTunnelId("t", 2), subTunnelId("t", 10));
   EXPECT_LT(groupId("t", 0), groupId("t", 1));
   EXPECT_LT(tunnelId("a", RsvpLerTunnelSource::defaultSource), tunnelId("b", RsvpLerTunnelSource::cli));
}

TEST(Keys, equalKeysOfDifferentStringsAreEqualAndHashAlike) {
   std::string const name = "tun1";
   RsvpLerTunnelSpecId const a(Fathom::String(name), RsvpLerTunnelSource::cli);
   RsvpLerTunnelSpecId const b(Fathom::String(name), RsvpLerTunnelSource::cli);
   EXPECT_NE(a.name.c_str(), b.name.c_str());
   EXPECT_TRUE(RsvpLerTunnelSpecId::isEq(a, b));
   EXPECT_EQ(a.hash(1), b.hash(1));
   EXPECT_NE(a.hash(1), a.hash(2));
   EXPECT_FALSE(a.isSame(b)) << "they don't share their text";
}

TEST(Keys, sameKeysShareTheirNameAndEachField) {
   RsvpLerTunnelSpecId const a = tunnelId("tun1", RsvpLerTunnelSource::cli);
   RsvpLerTunnelSpecId const otherSource(a.name, RsvpLerTunnelSource::mvpn);
   RsvpLerTunnelSpecId const otherName = tunnelId("tun2", RsvpLerTunnelSource::cli);
   EXPECT_TRUE(a.isSame(RsvpLerTunnelSpecId(a)));
   EXPECT_FALSE(a.isSame(otherSource));
   EXPECT_FALSE(a.isSame(otherName));
   RsvpLerSubTunnelConfigId const sub{a, 1};
   EXPECT_TRUE(sub.isSame({a, 1}));
   EXPECT_FALSE(sub.isSame({a, 2}));
   EXPECT_FALSE(sub.isSame({otherSource, 1}));
   EXPECT_FALSE(sub.isSame({otherName, 1}));
}

// The tables of a million tunnels hold some thirty million of them.
static_assert(sizeof(RsvpLerTunnelSpecId) == 16 && sizeof(RsvpLerSubTunnelConfigId) == 16 &&
              sizeof(RsvpLerMbbTunnelConfigId) == 24 && sizeof(RsvpLerLspGroupId) == 24 &&
              sizeof(RsvpLerLspRequestConfigId) == 32);

TEST(Keys, oneNameFromTwoSourcesIsTwoTunnels) {
   Router router;
   auto const cli = tunnelId("t", RsvpLerTunnelSource::cli);
   auto const mvpn = tunnelId("t", RsvpLerTunnelSource::mvpn);
   router.superTunnelConfig(cli, [](auto& config) { config.metric = 1; });
   router.superTunnelConfig(mvpn, [](auto& config) { config.metric = 2; });
   auto const configs = router.fathomStatus->superTunnelConfigColl.get();
   EXPECT_NE(cli, mvpn);
   EXPECT_EQ(configs->superTunnelConfig(cli)->metric, 1u);
   EXPECT_EQ(configs->superTunnelConfig(mvpn)->metric, 2u);
}

TEST(Keys, aKeyIsSetWhenAnyFieldDiffersFromTheDefault) {
   EXPECT_FALSE(RsvpLerMbbTunnelConfigId());
   EXPECT_TRUE((RsvpLerMbbTunnelConfigId{{}, 1}));
   EXPECT_TRUE((RsvpLerMbbTunnelConfigId{{{}, 1}, 0}));
   EXPECT_TRUE((RsvpLerMbbTunnelConfigId{{{"t", RsvpLerTunnelSource::unknown}, 0}, 0}));
   EXPECT_TRUE((RsvpLerMbbTunnelConfigId{{{"", RsvpLerTunnelSource::cli}, 0}, 0}));
   EXPECT_FALSE(RsvpLerLspRequestConfigId());
   EXPECT_TRUE((RsvpLerLspRequestConfigId{{}, 1}));
   EXPECT_TRUE((RsvpLerLspRequestConfigId{{{}, 1}, 0}));
}

TEST(Keys, subTunnels) {
   auto const own = RsvpLerSubTunnelConfigId::makeNonSplitSubTunnelConfigId(tunnelId("t"));
   EXPECT_EQ(own, subTunnelId("t", 0));
   EXPECT_FALSE(own.isSplit());
   EXPECT_TRUE(subTunnelId("t", 1).isSplit());
   EXPECT_EQ(subTunnelId("t", 4294967295).subTunnelName(), "4294967295");
}
