#include "RsvpLer/frame/ModuleRecord.h"
#include "brindle/Exception.h"
#include "tests/support/Router.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// The enumeration and the value type, through their entries in the module's record.

using namespace Brindle;
using namespace Tests;
using Rsvp::Cli::ShowRsvpLerTunnelFilter;
using Rsvp::Cli::ShowTunnelVariant;
using std::string_literals::operator""s;

namespace {

using Values = std::vector<GenericValue>;

FunctionTable const& variantType = _RsvpLerCliCapi_35b5d92e19a7383a_vaneModule.functionTables[0];
FunctionTable const& filterType = _RsvpLerCliCapi_35b5d92e19a7383a_vaneModule.functionTables[1];

ShowRsvpLerTunnelFilter decoded(std::string const& text) {
   GenericValue result;
   filterType.inspectDecodeFromString(result, std::string_view(text));
   return result.get<ShowRsvpLerTunnelFilter>();
}

std::string decodeFailure(FunctionTable const& type, std::string const& text) {
   GenericValue result = String("untouched");
   try {
      type.inspectDecodeFromString(result, std::string_view(text));
   } catch (Exception const& exception) {
      EXPECT_EQ(result.get<String>(), "untouched");
      return exception.what();
   }
   return "none";
}

InspectStatus inspect(FunctionTable const& type, GenericValue& result, GenericValue& object, int member, int opcode,
                      Values const& arguments = {}) {
   MemberDescriptor const descriptor{static_cast<std::uint16_t>(member)};
   return type.inspectOperation(result, object, &descriptor, static_cast<InspectOpcode>(opcode), arguments);
}

InspectStatus inspectWhole(FunctionTable const& type, GenericValue& result, GenericValue object, int opcode,
                           Values const& arguments = {}) {
   return type.inspectOperation(result, object, nullptr, static_cast<InspectOpcode>(opcode), arguments);
}

} // namespace

TEST(ReflectedVariant, namesBothWays) {
   EXPECT_EQ(variantType.inspectEncodeToString(ShowTunnelVariant::showTunnelSubTunnelSummaryP2p),
             "showTunnelSubTunnelSummaryP2p");
   EXPECT_EQ(variantType.inspectEncodeToString(static_cast<ShowTunnelVariant>(200)), "200");
   GenericValue result;
   variantType.inspectDecodeFromString(result, std::string_view("showTunnelSubTunnelSummaryP2p"));
   EXPECT_EQ(static_cast<int>(result.get<ShowTunnelVariant>()), 4);
   EXPECT_EQ(decodeFailure(variantType, "showTunnelP2p "),
             "no Rsvp::Cli::ShowTunnelVariant has the name showTunnelP2p ");
   EXPECT_EQ(decodeFailure(variantType, ""), "no Rsvp::Cli::ShowTunnelVariant has the name ");
   EXPECT_THROW(variantType.inspectEncodeToString(std::uint8_t{4}), Exception);
}

TEST(ReflectedVariant, isMadeFromItsNumberNameOrACopy) {
   struct Row {
      GenericValue from;
      int expected; // -1: refused
   };
   Row const rows[] = {
         {std::uint8_t{4}, 4},
         {String("showTunnelHistoryDetailP2mp"), 12},
         {ShowTunnelVariant::showTunnelP2mp, 7},
         {std::uint8_t{13}, -1},
         {std::uint32_t{4}, -1},
         {String("showTunnel"), -1},
         {Rsvp::RsvpSessionType::p2mp, -1},
         {GenericValue(), -1},
   };
   for (Row const& row : rows) {
      GenericValue result;
      InspectStatus const status = variantType.genericIfConstructFromCtorArgs(result, {&row.from, 1});
      EXPECT_EQ(status, row.expected < 0 ? InspectStatus::refused : InspectStatus::success);
      EXPECT_EQ(result.holds<ShowTunnelVariant>() ? static_cast<int>(result.get<ShowTunnelVariant>()) : -1,
                row.expected);
   }
   GenericValue result;
   EXPECT_EQ(variantType.genericIfConstructFromCtorArgs(result, {}), InspectStatus::refused);
   EXPECT_EQ(variantType.inspectConstruct(result, nullptr), InspectStatus::success);
   EXPECT_EQ(result.get<ShowTunnelVariant>(), ShowTunnelVariant::showTunnelP2p);
}

TEST(ReflectedVariant, enumerators) {
   GenericValue object = ShowTunnelVariant::showTunnelP2p;
   for (int number = 0; number < 13; ++number) {
      for (int code = 0; code < 256; ++code) {
         GenericValue result;
         InspectStatus const status = inspect(variantType, result, object, number, code);
         EXPECT_EQ(status, code == 0 ? InspectStatus::success : InspectStatus::refused);
         if (code == 0) {
            EXPECT_EQ(static_cast<int>(result.get<ShowTunnelVariant>()), number);
         }
      }
   }
   GenericValue result;
   EXPECT_EQ(inspect(variantType, result, object, 13, 0), InspectStatus::unknownMember);
   GenericValue number = std::uint8_t{0};
   EXPECT_EQ(inspect(variantType, result, number, 0, 0), InspectStatus::refused);
}

TEST(ReflectedVariant, hashAndEquality) {
   EXPECT_EQ(variantType.inspectGetHash(ShowTunnelVariant::showTunnelP2mp), 7u);
   EXPECT_TRUE(variantType.isEq(ShowTunnelVariant::showTunnelP2mp, ShowTunnelVariant::showTunnelP2mp));
   EXPECT_FALSE(variantType.isEq(ShowTunnelVariant::showTunnelP2mp, ShowTunnelVariant::showTunnelP2p));
   EXPECT_FALSE(variantType.isEq(ShowTunnelVariant::showTunnelP2mp, std::uint8_t{7}));
}

TEST(ReflectedVariant, asAWhole) {
   GenericValue const first = ShowTunnelVariant::showTunnelP2p;
   GenericValue const other = ShowTunnelVariant::showTunnelP2mp;
   GenericValue result;
   ASSERT_EQ(inspectWhole(variantType, result, other, 11), InspectStatus::success);
   EXPECT_TRUE(result.get<bool>());
   ASSERT_EQ(inspectWhole(variantType, result, first, 11), InspectStatus::success);
   EXPECT_FALSE(result.get<bool>());
   ASSERT_EQ(inspectWhole(variantType, result, other, 12, {other}), InspectStatus::success);
   EXPECT_TRUE(result.get<bool>());
   ASSERT_EQ(inspectWhole(variantType, result, other, 12, {first}), InspectStatus::success);
   EXPECT_FALSE(result.get<bool>());
   EXPECT_EQ(inspectWhole(variantType, result, other, 12, {std::uint8_t{7}}), InspectStatus::refused);
   EXPECT_EQ(inspectWhole(variantType, result, std::uint8_t{7}, 11), InspectStatus::refused);
   EXPECT_EQ(inspectWhole(variantType, result, other, 0), InspectStatus::refused);
}

TEST(ReflectedFilter, construction) {
   GenericValue const original = ShowRsvpLerTunnelFilter{"t"};
   GenericValue const other = String("t");
   GenericValue result;
   ASSERT_EQ(filterType.inspectConstruct(result, nullptr), InspectStatus::success);
   EXPECT_EQ(result.get<ShowRsvpLerTunnelFilter>().tunnelName, "");
   ASSERT_EQ(filterType.inspectConstruct(result, &original), InspectStatus::success);
   EXPECT_EQ(result.get<ShowRsvpLerTunnelFilter>().tunnelName, "t");
   ASSERT_EQ(filterType.genericIfConstructFromCtorArgs(result, {}), InspectStatus::success);
   EXPECT_EQ(result.get<ShowRsvpLerTunnelFilter>().tunnelName, "");
   ASSERT_EQ(filterType.genericIfConstructFromCtorArgs(result, {&original, 1}), InspectStatus::success);
   EXPECT_EQ(result.get<ShowRsvpLerTunnelFilter>().tunnelName, "t");
   EXPECT_EQ(filterType.inspectConstruct(result, &other), InspectStatus::refused);
   EXPECT_EQ(filterType.genericIfConstructFromCtorArgs(result, {&other, 1}), InspectStatus::refused);
   Values const two = {original, original};
   EXPECT_EQ(filterType.genericIfConstructFromCtorArgs(result, two), InspectStatus::refused);
   EXPECT_EQ(result.get<ShowRsvpLerTunnelFilter>().tunnelName, "t");
}

TEST(ReflectedFilter, tunnelNameIsReadAndWritten) {
   GenericValue filter = ShowRsvpLerTunnelFilter{};
   GenericValue const copy = filter;
   GenericValue result;
   ASSERT_EQ(inspect(filterType, result, filter, 2, 1, {String("t")}), InspectStatus::success);
   ASSERT_EQ(inspect(filterType, result, filter, 2, 0), InspectStatus::success);
   EXPECT_EQ(result.get<String>(), "t");
   EXPECT_EQ(copy.get<ShowRsvpLerTunnelFilter>().tunnelName, "");
   EXPECT_EQ(inspect(filterType, result, filter, 2, 1, {std::uint8_t{1}}), InspectStatus::refused);
   EXPECT_EQ(inspect(filterType, result, filter, 2, 10), InspectStatus::refused);
   EXPECT_EQ(inspect(filterType, result, filter, 2, 11), InspectStatus::refused);
   EXPECT_EQ(inspect(filterType, result, filter, 1, 0), InspectStatus::unknownMember);
   EXPECT_EQ(inspect(filterType, result, filter, 4, 0), InspectStatus::unknownMember);
   GenericValue name = String("t");
   EXPECT_EQ(inspect(filterType, result, name, 2, 0), InspectStatus::refused);
}

TEST(ReflectedFilter, match) {
   Router const router;
   GenericValue filter = ShowRsvpLerTunnelFilter{"t"};
   GenericValue result;
   Rsvp::Handle<Rsvp::RsvpLerStatehubStatus> const none;
   ASSERT_EQ(inspect(filterType, result, filter, 3, 10, {tunnelId("t"), router.status}), InspectStatus::success);
   EXPECT_TRUE(result.get<bool>());
   ASSERT_EQ(inspect(filterType, result, filter, 3, 10, {tunnelId("T"), none}), InspectStatus::success);
   EXPECT_FALSE(result.get<bool>());
   EXPECT_EQ(inspect(filterType, result, filter, 3, 10, {tunnelId("t")}), InspectStatus::refused);
   EXPECT_EQ(inspect(filterType, result, filter, 3, 10, {tunnelId("t"), router.fathomStatus}), InspectStatus::refused);
   EXPECT_EQ(inspect(filterType, result, filter, 3, 0), InspectStatus::refused);
   EXPECT_EQ(inspect(filterType, result, filter, 3, 1, {tunnelId("t"), none}), InspectStatus::refused);
}

TEST(ReflectedFilter, asAWhole) {
   GenericValue const named = ShowRsvpLerTunnelFilter{"t"};
   GenericValue const other = ShowRsvpLerTunnelFilter{"u"};
   GenericValue const open = ShowRsvpLerTunnelFilter{};
   GenericValue result;
   ASSERT_EQ(inspectWhole(filterType, result, named, 11), InspectStatus::success);
   EXPECT_TRUE(result.get<bool>());
   ASSERT_EQ(inspectWhole(filterType, result, open, 11), InspectStatus::success);
   EXPECT_FALSE(result.get<bool>());
   ASSERT_EQ(inspectWhole(filterType, result, named, 12, {ShowRsvpLerTunnelFilter{"t"}}), InspectStatus::success);
   EXPECT_TRUE(result.get<bool>());
   ASSERT_EQ(inspectWhole(filterType, result, named, 12, {other}), InspectStatus::success);
   EXPECT_FALSE(result.get<bool>());
   EXPECT_EQ(inspectWhole(filterType, result, named, 11, {other}), InspectStatus::refused);
   EXPECT_EQ(inspectWhole(filterType, result, named, 12), InspectStatus::refused);
   EXPECT_EQ(inspectWhole(filterType, result, named, 12, {String("t")}), InspectStatus::refused);
   EXPECT_EQ(inspectWhole(filterType, result, String("t"), 11), InspectStatus::refused);
   for (int const code : {0, 1, 2, 10, 13, 255})
      EXPECT_EQ(inspectWhole(filterType, result, named, code), InspectStatus::refused) << code;
   EXPECT_TRUE(filterType.isEq(named, ShowRsvpLerTunnelFilter{"t"}));
   EXPECT_FALSE(filterType.isEq(named, open));
   EXPECT_FALSE(filterType.isEq(named, String("t")));
}

TEST(ReflectedFilter, isNotHashable) {
   try {
      filterType.inspectGetHash(ShowRsvpLerTunnelFilter{"t"});
      ADD_FAILURE() << "a hash was given";
   } catch (Exception const& exception) {
      EXPECT_STREQ(exception.what(), "the type is not hashable");
   }
}

TEST(ReflectedFilter, textForm) {
   std::pair<std::string, std::string> const rows[] = {
         {"", "<tunnelName=''>"},           {"den-nyc 2", "<tunnelName='den-nyc 2'>"},
         {"it's", "<tunnelName='it\\'s'>"}, {"back\\slash", "<tunnelName='back\\\\slash'>"},
         {"'>", "<tunnelName='\\'>'>"},     {"a\0b\n"s, "<tunnelName='a\0b\n'>"s},
   };
   for (auto const& [name, text] : rows) {
      EXPECT_EQ(filterType.inspectEncodeToString(ShowRsvpLerTunnelFilter{name}), text);
      EXPECT_EQ(decoded(text).tunnelName, name);
   }
   std::string everyByte;
   for (int byte = 0; byte < 256; ++byte)
      everyByte += static_cast<char>(byte);
   EXPECT_EQ(decoded(filterType.inspectEncodeToString(ShowRsvpLerTunnelFilter{everyByte})).tunnelName, everyByte);
   EXPECT_THROW(filterType.inspectEncodeToString(String("t")), Exception);
}

TEST(ReflectedFilter, textsThatAreNone) {
   std::pair<char const*, char const*> const rows[] = {
         {"", "expected <tunnelName='...'> at character 1"},
         {"t", "expected <tunnelName='...'> at character 1"},
         {"<tunnelname='t'>", "expected <tunnelName='...'> at character 2"},
         {"<tunnelName=t>", "expected <tunnelName='...'> at character 12"},
         {"<tunnelName='t", "the text ends before its closing quote at character 15"},
         {"<tunnelName='t\\", "the text ends before its closing quote at character 16"},
         {"<tunnelName='t\\'>", "the text ends before its closing quote at character 18"},
         {"<tunnelName='t'", "expected > behind tunnelName at character 16"},
         {"<tunnelName='t'> ", "unexpected text behind the value at character 17"},
         {"<tunnelName='t'><tunnelName='t'>", "unexpected text behind the value at character 17"},
   };
   for (auto const& [text, expected] : rows)
      EXPECT_EQ(decodeFailure(filterType, text), expected) << text;
}
