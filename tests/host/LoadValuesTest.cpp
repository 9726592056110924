#include "host/state/LoadState.h"
#include "host/state/StateError.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

// The values that each field takes and refuses. A value is put into a document in the place of a % and the message
// starts behind the path: "expected ..., found ...". An empty message: it is taken.

namespace {

std::string refusal(std::string const& document, std::string const& value) {
   std::string text = document;
   text.replace(text.find('%'), 1, value);
   try {
      Host::loadState("f", Host::StateText(text));
      return {};
   } catch (Host::StateError const& error) {
      std::string_view const message = error.what();
      return std::string(message.substr(message.find(": expected") + 2));
   }
}

struct Row {
   std::string value;
   std::string message;
};

void expectRefusals(std::string const& document, std::vector<Row> const& rows) {
   for (Row const& row : rows)
      EXPECT_EQ(refusal(document, row.value), row.message) << document << "   " << row.value;
}

std::string const configRow = R"({"rsvpLerFathomStatus":{"superTunnelConfigColl":[{"tunnelSpecId":{},)";
std::string const configEnd = "}]}}";
std::string const eventRow =
      R"({"rsvpLerFathomStatus":{"rsvpLerTunnelHistory":[{"tunnelIndex":0,"entries":[{"entryIndex":0,"event":)";
std::string const eventEnd = "}]}]}}";
std::string const groupRow =
      R"({"rsvpLerStatus":{"lspGroupStatusCollTable":[{"mbbTunnelConfigId":{},"lspGroupStatusColl":[{"lspGroupId":{},)";
std::string const requestStatusRow =
      R"({"rsvpLerStatus":{"lspRequestStatusCollTable":[{"lspGroupId":{},"lspRequestStatusColl":[{"lspRequestConfigId":{},)";
std::string const collEnd = "}]}]}}";

TEST(LoadValues, booleans) {
   std::string const expected = "expected true or false, found ";
   expectRefusals(R"({"rsvpCliConfig":{"mtuSignalingEnabled":%}})", {
                                                                          {"true", ""},
                                                                          {"false", ""},
                                                                          {"1", expected + "1"},
                                                                          {"\"true\"", expected + "\"true\""},
                                                                          {"null", expected + "null"},
                                                                          {"truex", expected + "truex"},
                                                                          {"tru", expected + "tru"},
                                                                          {"True", expected + "True"},
                                                                          {"{}", expected + "an object"},
                                                                          {"[]", expected + "an array"},
                                                                    });
}

TEST(LoadValues, wholeNumbers) {
   std::string const upTo = "expected a whole number from 0 to ";
   expectRefusals(configRow + "\"setupPriority\":%" + configEnd, {
                                                                       {"0", ""},
                                                                       {"255", ""},
                                                                       {"256", upTo + "255, found 256"},
                                                                       {"-1", upTo + "255, found -1"},
                                                                       {"-0", upTo + "255, found -0"},
                                                                       {"1.0", upTo + "255, found 1.0"},
                                                                       {"1e1", upTo + "255, found 1e1"},
                                                                       {"01", upTo + "255, found 01"},
                                                                       {"+1", upTo + "255, found +1"},
                                                                       {"1x", upTo + "255, found 1x"},
                                                                       {"\"1\"", upTo + "255, found \"1\""},
                                                                       {"null", upTo + "255, found null"},
                                                                       {"true", upTo + "255, found true"},
                                                                       {"[1]", upTo + "255, found an array"},
                                                                 });
   expectRefusals(eventRow + R"({"kind":"tunnelState","subTunnelCount":%})" + eventEnd,
                  {{"65535", ""}, {"65536", upTo + "65535, found 65536"}});
   expectRefusals(configRow + "\"metric\":%" + configEnd,
                  {{"4294967295", ""}, {"4294967296", upTo + "4294967295, found 4294967296"}});
   expectRefusals(configRow + "\"quantum\":%" + configEnd,
                  {
                        {"18446744073709551615", ""},
                        {"18446744073709551616", upTo + "18446744073709551615, found 18446744073709551616"},
                        {"99999999999999999999999", upTo + "18446744073709551615, found 99999999999999999999999"},
                        {"9007199254740993.0", upTo + "18446744073709551615, found 9007199254740993.0"},
                  });
}

TEST(LoadValues, durations) {
   std::string const expected = "expected a finite number, found ";
   expectRefusals(R"({"clock":{"utcTime":%}})", {
                                                      {"0", ""},
                                                      {"1700000000.25", ""},
                                                      {"-1.5e-3", ""},
                                                      {"18446744073709551616", ""},
                                                      {"1e308", ""},
                                                      {"1e309", expected + "1e309"},
                                                      {"-1e400", expected + "-1e400"},
                                                      {"NaN", expected + "NaN"},
                                                      {"Infinity", expected + "Infinity"},
                                                      {".5", expected + ".5"},
                                                      {"5.", expected + "5."},
                                                      {"\"5\"", expected + "\"5\""},
                                                      {"null", expected + "null"},
                                                });
}

TEST(LoadValues, addresses) {
   std::string const expected = "expected an IPv4 or IPv6 address, found ";
   std::vector<Row> const rows = {
         {"\"\"", ""},
         {"\"0.0.0.0\"", ""},
         {"\"255.255.255.255\"", ""},
         {"\"::\"", ""},
         {"\"2001:DB8::1\"", ""},
         {"\"::ffff:10.0.0.1\"", ""},
         {"\"10.0.0.256\"", expected + "\"10.0.0.256\""},
         {"\"10.0.0\"", expected + "\"10.0.0\""},
         {"\"10.0.0.1 \"", expected + "\"10.0.0.1 \""},
         {"\"10.0.0.1\\u0000\"", expected + "\"10.0.0.1\\u0000\""},
         {"\"1::2::3\"", expected + "\"1::2::3\""},
         {"\"router\"", expected + "\"router\""},
         {"10", "expected a string, found 10"},
         {"null", "expected a string, found null"},
   };
   expectRefusals(configRow + "\"source\":%" + configEnd, rows);
   expectRefusals(configRow + "\"destination\":[\"10.0.0.1\",%]" + configEnd, rows);
   expectRefusals(configRow + "\"aliasTeps\":[%]" + configEnd, rows);
   expectRefusals(eventRow + "{},\"hops\":[%]" + eventEnd, rows);
   expectRefusals(configRow + "\"destination\":%" + configEnd,
                  {{"[]", ""},
                   {"null", "expected an array, found null"},
                   {"\"10.0.0.1\"", "expected an array, found \"10.0.0.1\""},
                   {"{}", "expected an array, found an object"}});
   // As the names of members.
   expectRefusals(requestStatusRow + "\"subLspState\":{%:1}" + collEnd, {{"\"\"", ""},
                                                                         {"\"::1\"", ""},
                                                                         {"\"10.0.0.1\"", ""},
                                                                         {"\"10.0.0.1.\"", expected + "\"10.0.0.1.\""},
                                                                         {"\"leaf\"", expected + "\"leaf\""}});
   // Where only IPv4 is possible.
   expectRefusals(R"({"rsvpLerConfig":{"localIntfIp":%}})", {{"\"\"", ""},
                                                             {"\"10.0.0.1\"", ""},
                                                             {"\"::1\"", "expected an IPv4 address, found \"::1\""},
                                                             {"\"x\"", "expected an IPv4 address, found \"x\""},
                                                             {"0", "expected a string, found 0"}});
}

struct EnumRow {
   std::string document; // with its % in the place of the value
   int highest;
   std::vector<std::string> words; // each once
};

TEST(LoadValues, enumerations) {
   std::vector<std::string> const sources{"unknown", "cli", "mvpn", "frrBypass", "default"};
   std::vector<std::string> const lspStates{"unknown", "up", "down"};
   std::vector<EnumRow> const rows{
         {configRow + "\"sessionType\":%" + configEnd, 255, {"p2p", "p2mp"}},
         {configRow + "\"frrMode\":%" + configEnd, 2, {"none", "linkProtection", "nodeProtection"}},
         {configRow + "\"profileState\":%" + configEnd, 3, {"notSpecified", "notFound", "wrongType", "applied"}},
         {configRow + "\"primaryPathSpecId\":{\"source\":%}" + configEnd, 4, sources},
         {R"({"rsvpLerStatus":{"tunnelIndexMap":[{"tunnelSpecId":{"source":%}}]}})", 4, sources},
         {R"({"rsvpLerStatus":{"subTunnelIndexMap":[{"subTunnelConfigId":{"source":%}}]}})", 4, sources},
         {R"({"rsvpLerStatus":{"tunnelSpecColl":[{"tunnelSpecId":{},"profile":{"source":%}}]}})", 4, sources},
         {R"({"rsvpLerStatus":{"superTunnelStatusColl":[{"tunnelSpecId":{},"state":%}]}})",
          2,
          {"unknown", "down", "up"}},
         {groupRow + "\"lspGroupState\":%" + collEnd, 4, {"unknown", "establishing", "up", "down"}},
         {requestStatusRow + "\"lspState\":%" + collEnd, 5, {"unknown", "establishing", "unverified", "up", "down"}},
         {requestStatusRow + "\"subLspState\":{\"::1\":%}" + collEnd, 2, lspStates},
         {R"({"rsvpLerStatus":{"pathSpecConfigColl":[{"pathSpecId":{},"pathSpecType":%}]}})",
          2,
          {"unknown", "explicit", "dynamic"}},
         {eventRow + R"({"kind":"cspfReply","changeType":%})" + eventEnd,
          255,
          {"none", "new", "changed", "removed", "notFound"}},
         {eventRow + R"({"kind":"tunnelState","state":%})" + eventEnd, 2, {"unknown", "down", "up"}},
         {eventRow + R"({"kind":"lspState","state":%})" + eventEnd,
          5,
          {"unknown", "establishing", "unverified", "up", "down"}},
         {eventRow + R"({"kind":"p2mpLeafState","state":%})" + eventEnd, 2, lspStates},
   };
   for (EnumRow const& row : rows) {
      std::string expected =
            "expected a whole number from 0 to " + std::to_string(row.highest) + " or one of the words ";
      for (std::size_t i = 0; i < row.words.size(); ++i)
         expected.append(i == 0 ? "" : ", ").append(row.words[i]);
      expected += ", found ";
      for (std::string const& word : row.words)
         EXPECT_EQ(refusal(row.document, '"' + word + '"'), "") << row.document;
      expectRefusals(row.document, {{"0", ""},
                                    {std::to_string(row.highest), ""},
                                    {std::to_string(row.highest + 1), expected + std::to_string(row.highest + 1)},
                                    {"-1", expected + "-1"},
                                    {"1.0", expected + "1.0"},
                                    {"\"upp\"", expected + "\"upp\""},
                                    {"\"Up\"", expected + "\"Up\""},
                                    {"\"\"", expected + "\"\""},
                                    {"\"1\"", expected + "\"1\""},
                                    {"null", expected + "null"}});
   }
}

TEST(LoadValues, numbersThatLookLikeEnumerations) {
   std::string const upTo = "expected a whole number from 0 to ";
   expectRefusals(R"({"rsvpLerStatus":{"cspfPathKeyMapping":[{"lspGroupId":{"groupId":%}}]}})",
                  {{"255", ""}, {"256", upTo + "255, found 256"}, {"\"up\"", upTo + "255, found \"up\""}});
   expectRefusals(R"({"rsvpLerStatus":{"cspfPathKeyMapping":[{"lspGroupId":{},"kind":%}]}})",
                  {{"255", ""}, {"256", upTo + "255, found 256"}});
   expectRefusals(eventRow + R"({"kind":"tunnelState","groupId":%})" + eventEnd,
                  {{"1", ""}, {"2", upTo + "1, found 2"}});
   expectRefusals(eventRow + R"({"kind":"cspfQuery","groupId":%})" + eventEnd,
                  {{"255", ""}, {"256", upTo + "255, found 256"}});
   expectRefusals(eventRow + R"({"kind":"cspfReply","groupId":%})" + eventEnd,
                  {{"255", ""}, {"256", upTo + "255, found 256"}});
   expectRefusals(R"({"tallyFeatureConfigDir":{"feature":{"47":%}}})",
                  {{"0", ""}, {"4294967295", ""}, {"4294967296", upTo + "4294967295, found 4294967296"}});
   expectRefusals(R"({"tallyFeatureConfigDir":{"feature":{%:1}}})",
                  {{"\"0\"", ""},
                   {"\"4294967295\"", ""},
                   {"\"4294967296\"", upTo + "4294967295, found \"4294967296\""},
                   {"\"047\"", upTo + "4294967295, found \"047\""},
                   {"\"\"", upTo + "4294967295, found \"\""},
                   {"\"-1\"", upTo + "4294967295, found \"-1\""},
                   {"\"autoBw\"", upTo + "4294967295, found \"autoBw\""}});
}

// null stands for what may be missing as a whole, and for nothing else.
TEST(LoadValues, null) {
   for (char const* document : {
              R"({"clock":%})",
              R"({"rsvpCliConfig":%})",
              R"({"rsvpLerCliConfig":%})",
              R"({"rsvpLerConfig":%})",
              R"({"tallyFeatureConfigDir":%})",
              R"({"rsvpLerStatus":%})",
              R"({"rsvpLerFathomStatus":%})",
              R"({"rsvpLerStatus":{"tunnelIndexMap":%}})",
              R"({"rsvpLerFathomStatus":{"rsvpLerTunnelHistory":%}})",
              R"({"rsvpLerStatus":{"subTunnelStatusCollTable":[{"tunnelSpecId":{},"subTunnelStatusColl":%}]}})",
              R"({"rsvpLerStatus":{"lspGroupStatusCollTable":[{"mbbTunnelConfigId":{},"lspGroupStatusColl":%}]}})",
              R"({"rsvpLerFathomStatus":{"rsvpLerTunnelHistory":[{"tunnelIndex":1,"entries":%}]}})",
              R"({"rsvpLerStatus":{"superTunnelStatusColl":[{"tunnelSpecId":{},"color":%}]}})",
              R"({"rsvpLerStatus":{"autoBwStats":[{"tunnelSpecId":{},"nextAdjustmentTime":%}]}})",
        })
      EXPECT_EQ(refusal(document, "null"), "") << document;
   EXPECT_EQ(refusal(groupRow + "\"pathMtu\":%" + collEnd, "null"), "");
   EXPECT_EQ(refusal(requestStatusRow + "\"lspId\":%" + collEnd, "null"), "");
   EXPECT_EQ(refusal(groupRow + R"("nextHop":[{"address":"","intfMtu":%}])" + collEnd, "null"), "");
   EXPECT_EQ(refusal(eventRow + R"({"kind":"lspAdd","lspId":null,"replacedLspId":%})" + eventEnd, "null"), "");
   for (std::string const& document : std::vector<std::string>{
              R"({"rsvpLerStatus":{"tunnelIndexMap":[%]}})",
              R"({"rsvpLerStatus":{"tunnelIndexMap":[{"tunnelSpecId":%}]}})",
              R"({"rsvpLerStatus":{"superTunnelStatusColl":[{"tunnelSpecId":{},"sessionId":%}]}})",
              R"({"rsvpLerStatus":{"superTunnelStatusColl":[{"tunnelSpecId":{},"subLspState":%}]}})",
              R"({"tallyFeatureConfigDir":{"feature":%}})",
              configRow + "\"primaryPathSpecId\":%" + configEnd,
              eventRow + "%" + eventEnd,
        })
      EXPECT_EQ(refusal(document, "null"), "expected an object, found null") << document;
   for (std::string const& document : std::vector<std::string>{
              groupRow + "\"nextHop\":%" + collEnd,
              requestStatusRow + "\"errors\":%" + collEnd,
              R"({"rsvpLerStatus":{"autoBwStats":[{"tunnelSpecId":{},"subTunnelBwSamplingStats":%}]}})",
        })
      EXPECT_EQ(refusal(document, "null"), "expected an array, found null") << document;
   EXPECT_EQ(refusal(R"({"clock":%})", "nul"), "expected an object, found nul");
   EXPECT_EQ(refusal(requestStatusRow + "\"lspId\":%" + collEnd, "nulll"),
             "expected a whole number from 0 to 65535, found nulll");
}

// Each kind of event takes its own members, wherever `kind` stands, and no others.
TEST(LoadValues, eventMembers) {
   struct Kind {
      std::string name;
      std::vector<std::string> members;
   };
   std::vector<Kind> const kinds{
         {"unknown", {}},
         {"agentRestart", {}},
         {"creation", {}},
         {"tunnelState", {"state", "groupId", "subTunnelCount", "splitBw"}},
         {"bandwidth", {"bandwidth"}},
         {"bandwidthConfig", {"bandwidth", "autoBw"}},
         {"lspAdd", {"lspId", "replacedLspId"}},
         {"lspDel", {"lspId"}},
         {"lspInUse", {"lspId", "replacedLspId"}},
         {"lspNoLongerInUse", {"lspId"}},
         {"lspState", {"lspId", "state"}},
         {"lspError", {"lspId", "error"}},
         {"cspfQuery", {"count", "groupId"}},
         {"cspfReply", {"count", "totalLeaves", "groupId", "destination", "changeType"}},
         {"p2mpDestinationAdded", {"destination"}},
         {"p2mpDestinationRemoved", {"destination"}},
         {"p2mpLeafState", {"destination", "state"}},
   };
   std::vector<Row> const values{{"state", "1"},      {"groupId", "1"},       {"subTunnelCount", "1"},
                                 {"splitBw", "true"}, {"bandwidth", "1"},     {"autoBw", "true"},
                                 {"lspId", "1"},      {"replacedLspId", "1"}, {"error", "{}"},
                                 {"count", "1"},      {"totalLeaves", "1"},   {"destination", "\"::1\""},
                                 {"changeType", "1"}};
   std::string names;
   for (Kind const& kind : kinds) {
      names.append(names.empty() ? "" : ", ").append(kind.name);
      std::string list = kind.members.empty() ? "only the member kind" : "one of the members kind";
      for (std::string const& member : kind.members)
         list += ", " + member;
      for (Row const& value : values) {
         bool const own = std::find(kind.members.begin(), kind.members.end(), value.value) != kind.members.end();
         std::string const message = own ? "" : "expected " + list + ", found \"" + value.value + "\"";
         std::string const member = '"' + value.value + "\":" + value.message;
         EXPECT_EQ(refusal(eventRow + "{\"kind\":%," + member + "}" + eventEnd, '"' + kind.name + '"'), message);
         EXPECT_EQ(refusal(eventRow + "{" + member + ",\"kind\":%}" + eventEnd, '"' + kind.name + '"'), message);
      }
      EXPECT_EQ(refusal(eventRow + "{\"kind\":\"" + kind.name + "\",\"kind\":%}" + eventEnd, "1"),
                "expected each member once, found \"kind\"");
   }
   expectRefusals(eventRow + "{\"kind\":%}" + eventEnd,
                  {{"\"lspUp\"", "expected one of the words " + names + ", found \"lspUp\""},
                   {"\"\"", "expected one of the words " + names + ", found \"\""},
                   {"3", "expected a string, found 3"},
                   {"null", "expected a string, found null"}});
   expectRefusals(eventRow + "%" + eventEnd, {{"{}", ""}, {"[]", "expected an object, found an array"}});
   expectRefusals(eventRow + "{\"count\":%}" + eventEnd, {{"1", "expected only the member kind, found \"count\""}});
   expectRefusals(eventRow + R"({"kind":"lspError","error":{"code":%}})" + eventEnd,
                  {{"4294967295", ""}, {"-1", "expected a whole number from 0 to 4294967295, found -1"}});
}

} // namespace
