#include "RsvpLer/text/EnumText.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdint>

using namespace Rsvp;
using namespace Rsvp::Cli;

namespace {

// One function over one enumeration, its argument given as a number.
using Words = char const* (*)(unsigned);

char const* tunnelState(unsigned value) {
   return tunnelStateToString(static_cast<RsvpLerTunnelState>(value));
}
char const* tunnelSource(unsigned value) {
   return tunnelSourceToString(static_cast<RsvpLerTunnelSource>(value));
}
char const* tunnelSourceEnum(unsigned value) {
   return tunnelSourceToEnumString(static_cast<RsvpLerTunnelSource>(value));
}
char const* frrMode(unsigned value) {
   return frrModeToString(static_cast<FrrMode>(value), false);
}
char const* frrModeJson(unsigned value) {
   return frrModeToString(static_cast<FrrMode>(value), true);
}
char const* lspGroupState(unsigned value) {
   return lspGroupStateToString(static_cast<RsvpLerLspGroupState>(value));
}
char const* lerLspState(unsigned value) {
   return lerLspStateToString(static_cast<RsvpLerLspState>(value), false);
}
char const* lerLspStateJson(unsigned value) {
   return lerLspStateToString(static_cast<RsvpLerLspState>(value), true);
}
char const* lspState(unsigned value) {
   return lspStateToString(static_cast<RsvpLspState>(value));
}
char const* pathSpecType(unsigned value) {
   return pathSpecTypeToString(static_cast<RsvpLerPathSpecType>(value));
}
char const* pathChangeType(unsigned value) {
   return pathChangeTypeToString(static_cast<RsvpLerP2mpPathChangeType>(value));
}
char const* pathChangeTypeEnum(unsigned value) {
   return pathChangeTypeToEnumString(static_cast<RsvpLerP2mpPathChangeType>(value));
}
char const* profileState(unsigned value) {
   return profileStateToEnumString(static_cast<RsvpLerTunnelProfileState>(value));
}

struct WordRow {
   char const* function;
   Words words;
   unsigned value;
   char const* word;
};

WordRow const wordRows[] = {
      {"tunnelState", tunnelState, 0, "unknown"},
      {"tunnelState", tunnelState, 1, "down"},
      {"tunnelState", tunnelState, 2, "up"},
      {"tunnelSource", tunnelSource, 0, "unknown"},
      {"tunnelSource", tunnelSource, 1, "CLI"},
      {"tunnelSource", tunnelSource, 2, "MVPN"},
      {"tunnelSource", tunnelSource, 3, "FRR Bypass"},
      {"tunnelSource", tunnelSource, 4, "default"},
      {"tunnelSourceEnum", tunnelSourceEnum, 0, "unknown"},
      {"tunnelSourceEnum", tunnelSourceEnum, 1, "cli"},
      {"tunnelSourceEnum", tunnelSourceEnum, 2, "mvpn"},
      {"tunnelSourceEnum", tunnelSourceEnum, 3, "frrBypass"},
      {"tunnelSourceEnum", tunnelSourceEnum, 4, "default"},
      {"frrMode", frrMode, 0, "none"},
      {"frrMode", frrMode, 1, "link protection"},
      {"frrMode", frrMode, 2, "node protection"},
      {"frrModeJson", frrModeJson, 0, "none"},
      {"frrModeJson", frrModeJson, 1, "linkProtection"},
      {"frrModeJson", frrModeJson, 2, "nodeProtection"},
      {"lspGroupState", lspGroupState, 0, "unknown"},
      {"lspGroupState", lspGroupState, 1, "establishing"},
      {"lspGroupState", lspGroupState, 2, "up"},
      {"lspGroupState", lspGroupState, 3, "up"},
      {"lspGroupState", lspGroupState, 4, "down"},
      {"lerLspState", lerLspState, 0, "unknown"},
      {"lerLspState", lerLspState, 1, "establishing"},
      {"lerLspState", lerLspState, 2, "establishing (waiting for self-ping)"},
      {"lerLspState", lerLspState, 3, "up"},
      {"lerLspState", lerLspState, 4, "up"},
      {"lerLspState", lerLspState, 5, "down"},
      {"lerLspStateJson", lerLspStateJson, 0, "unknown"},
      {"lerLspStateJson", lerLspStateJson, 1, "establishing"},
      {"lerLspStateJson", lerLspStateJson, 2, "unverified"},
      {"lerLspStateJson", lerLspStateJson, 3, "up"},
      {"lerLspStateJson", lerLspStateJson, 4, "up"},
      {"lerLspStateJson", lerLspStateJson, 5, "down"},
      {"lspState", lspState, 0, "unknown"},
      {"lspState", lspState, 1, "up"},
      {"lspState", lspState, 2, "down"},
      {"pathSpecType", pathSpecType, 0, "unknown"},
      {"pathSpecType", pathSpecType, 1, "explicit"},
      {"pathSpecType", pathSpecType, 2, "dynamic"},
      {"pathChangeType", pathChangeType, 0, "path changed"},
      {"pathChangeType", pathChangeType, 1, "new path"},
      {"pathChangeType", pathChangeType, 2, "path changed"},
      {"pathChangeType", pathChangeType, 3, "path removed"},
      {"pathChangeType", pathChangeType, 4, "path not found"},
      {"pathChangeTypeEnum", pathChangeTypeEnum, 0, "changed"},
      {"pathChangeTypeEnum", pathChangeTypeEnum, 1, "new"},
      {"pathChangeTypeEnum", pathChangeTypeEnum, 2, "changed"},
      {"pathChangeTypeEnum", pathChangeTypeEnum, 3, "removed"},
      {"pathChangeTypeEnum", pathChangeTypeEnum, 4, "notFound"},
      {"profileState", profileState, 0, "notSpecified"},
      {"profileState", profileState, 1, "notFound"},
      {"profileState", profileState, 2, "wrongType"},
      {"profileState", profileState, 3, "applied"},
};

TEST(EnumText, givesTheWordOfEachValue) {
   for (WordRow const& row : wordRows)
      EXPECT_STREQ(row.words(row.value), row.word) << row.function << " of " << row.value;
}

TEST(EnumText, onlyTheLowByteOfAnArgumentDecides) {
   for (WordRow const& row : wordRows)
      for (unsigned const high : {0x100U, 0x7f00U, 0xffffff00U})
         EXPECT_STREQ(row.words(high + row.value), row.word) << row.function << " of " << high + row.value;
}

TEST(EnumText, everyUnknownPathChangeReadsAsChanged) {
   for (unsigned value = 5; value < 256; ++value) {
      EXPECT_STREQ(pathChangeType(value), "path changed") << value;
      EXPECT_STREQ(pathChangeTypeEnum(value), "changed") << value;
   }
}

struct OutsideRow {
   char const* function;
   Words words;
   unsigned firstOutside;
};

TEST(EnumTextDeathTest, aByteOutsideTheEnumerationEndsTheProcess) {
   OutsideRow const rows[] = {
         {"tunnelState", tunnelState, 3},
         {"tunnelSource", tunnelSource, 5},
         {"tunnelSourceEnum", tunnelSourceEnum, 5},
         {"frrMode", frrMode, 3},
         {"frrModeJson", frrModeJson, 3},
         {"lspGroupState", lspGroupState, 5},
         {"lerLspState", lerLspState, 6},
         {"lerLspStateJson", lerLspStateJson, 6},
         {"lspState", lspState, 3},
         {"pathSpecType", pathSpecType, 3},
         {"profileState", profileState, 4},
   };
   for (OutsideRow const& row : rows)
      for (unsigned const value : {row.firstOutside, 255U})
         EXPECT_EXIT(row.words(value), testing::KilledBySignal(SIGABRT),
                     "^[^\n]*EnumText\\.cpp:[0-9]+: assertion failed: This should be unreachable\n$")
               << row.function << " of " << value;
}

struct PathTypeRow {
   unsigned state;
   std::uint8_t groupId;
   char const* text;
};

TEST(EnumText, pathTypeOfATunnelStandsOnlyBehindUp) {
   PathTypeRow const rows[] = {
         {2, 0, " using primary path"},
         {2, 1, " using secondary path"},
         {0, 0, ""},
         {0, 1, ""},
         {1, 0, ""},
         {1, 1, ""},
         {1, 7, ""},
         {3, 7, ""},
         {255, 255, ""},
   };
   for (PathTypeRow const& row : rows)
      EXPECT_STREQ(pathTypeForTunnelState(static_cast<RsvpLerTunnelState>(row.state), row.groupId), row.text)
            << "state " << row.state << ", group " << int{row.groupId};
}

TEST(EnumTextDeathTest, aThirdGroupOfATunnelThatIsUpEndsTheProcess) {
   for (unsigned const groupId : {2U, 7U, 255U})
      EXPECT_EXIT(pathTypeForTunnelState(RsvpLerTunnelState::up, static_cast<std::uint8_t>(groupId)),
                  testing::KilledBySignal(SIGABRT), "^[^\n]*EnumText\\.cpp:[0-9]+: assertion failed: groupId == 1\n$")
            << groupId;
}

RsvpLerLspGroupId groupOf(char const* name, unsigned source, std::uint32_t subTunnelId, std::uint32_t epoch,
                          std::uint8_t groupId) {
   RsvpLerLspGroupId id;
   auto& subTunnel = id.mbbTunnelConfigId.subTunnelConfigId;
   subTunnel.tunnelSpecId = RsvpLerTunnelSpecId(name, static_cast<RsvpLerTunnelSource>(source));
   subTunnel.subTunnelId = subTunnelId;
   id.mbbTunnelConfigId.epoch = epoch;
   id.groupId = groupId;
   return id;
}

TEST(EnumText, activePathOfASubTunnelIsToldByItsGroup) {
   EXPECT_STREQ(getSubTunnelActivePathType(RsvpLerLspGroupId()), "unknown");
   EXPECT_STREQ(getSubTunnelActivePathType(groupOf("t", 1, 1, 1, 0)), "primary");
   EXPECT_STREQ(getSubTunnelActivePathType(groupOf("t", 1, 1, 1, 1)), "secondary");
   EXPECT_STREQ(getSubTunnelActivePathType(groupOf("t", 1, 1, 1, 2)), "secondary");
   EXPECT_STREQ(getSubTunnelActivePathType(groupOf("t", 1, 1, 1, 255)), "secondary");
}

TEST(EnumText, oneFieldThatDiffersMakesAGroupOfADefaultKey) {
   EXPECT_STREQ(getSubTunnelActivePathType(groupOf("t", 0, 0, 0, 0)), "primary");
   EXPECT_STREQ(getSubTunnelActivePathType(groupOf("", 1, 0, 0, 0)), "primary");
   EXPECT_STREQ(getSubTunnelActivePathType(groupOf("", 0, 1, 0, 0)), "primary");
   EXPECT_STREQ(getSubTunnelActivePathType(groupOf("", 0, 0, 1, 0)), "primary");
   EXPECT_STREQ(getSubTunnelActivePathType(groupOf("", 0, 0, 0, 1)), "secondary");
}

} // namespace
