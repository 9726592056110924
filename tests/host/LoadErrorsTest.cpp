#include "host/state/LoadState.h"
#include "host/state/StateError.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

// What is refused, and the line that says so. The file's name in all of them is "f".

namespace {

using Host::StateError;
using Host::StateText;

// The message of the error that loading ends in; empty when the text is a state.
std::string errorOf(std::string_view text) {
   try {
      Host::loadState("f", StateText(text));
      return {};
   } catch (StateError const& error) {
      return error.what();
   }
}

struct Row {
   std::string text;
   std::string message;
};

void expectErrors(std::vector<Row> const& rows) {
   for (Row const& row : rows)
      EXPECT_EQ(errorOf(row.text), row.message) << row.text.substr(0, 200);
}

// A document with one row in a table of a root.
std::string statusRow(std::string const& table, std::string const& row) {
   return R"({"rsvpLerStatus":{")" + table + "\":[" + row + "]}}";
}

TEST(LoadErrors, whatIsNoJsonDocument) {
   expectErrors({
         {"", "f:1:1: expected an object, found the end of the file"},
         {" \n ", "f:2:2: expected an object, found the end of the file"},
         {"[]", "f:1:1: expected an object, found an array"},
         {"5", "f:1:1: expected an object, found 5"},
         {"null", "f:1:1: expected an object, found null"},
         {R"("{}")", R"(f:1:1: expected an object, found "{}")"},
         {"\xef\xbb\xbf{}", "f:1:1: expected an object, found a byte order mark"},
         {"{} {}", "f:1:4: expected the end of the file, found an object"},
         {"{}}", "f:1:3: expected the end of the file, found }"},
         {"{}\n\n{}", "f:3:1: expected the end of the file, found an object"},
         {"{} x", "f:1:4: expected the end of the file, found x"},
         {"{}]", "f:1:3: expected the end of the file, found ]"},
         {R"({"clock":{"utcTime":1}},)", "f:1:24: expected the end of the file, found ,"},
         {R"({"rsvpLerCliConfig":{"localIntf":"}}"}])", "f:1:39: expected a closing brace, found ]"},
         {"{", "f:1:2: expected a closing brace before the end of the file, found the end of the file"},
         {"}", "f:1:1: expected an object, found }"},
         {R"({"clock": {})", "f:1:13: expected the next member or the end of the object, found the end of the file"},
         {R"({"clock": {"utcTime": 1}, )",
          "f:1:27: expected a closing brace before the end of the file, found the end of the file"},
         {R"({"clock" {}})", "f:1:10: expected the next member or the end of the object, found an object"},
         {R"({"clock": {},})", "f:1:14: expected the next member or the end of the object, found }"},
         {R"({"clock": {} "rsvpLerStatus": {}})",
          R"(f:1:14: expected the next member or the end of the object, found "rsvpLerStatus")"},
         {R"({clock: {}})", "f:1:2: expected the next member or the end of the object, found clock"},
         {R"({"clock": })", "f:1:11: clock: expected an object, found }"},
         {R"({"rsvpLerStatus": {"tunnelIndexMap": [}})",
          "f:1:39: rsvpLerStatus.tunnelIndexMap[0]: expected an object, found }"},
         {R"({"rsvpLerStatus": {"tunnelIndexMap": [}]}})",
          "f:1:39: rsvpLerStatus.tunnelIndexMap[0]: expected an object, found }"},
         {R"({"rsvpLerStatus": {"tunnelIndexMap": [{"tunnelSpecId": {}},]}})",
          "f:1:60: rsvpLerStatus.tunnelIndexMap[1]: expected an object, found ]"},
         {R"({"rsvpLerStatus": {"tunnelIndexMap": [{"tunnelSpecId": {}} {}]}})",
          "f:1:60: rsvpLerStatus.tunnelIndexMap: expected the next element or the end of the array, found an object"},
         {R"({"rsvpLerFathomStatus": {"rsvpLerTunnelHistory": [{"tunnelIndex": 1, )"
          R"("entries": [{"entryIndex": 0, "event": {"kind": "tunnelState": 2}, "state": "up"}}]}]}})",
          "f:1:131: rsvpLerFathomStatus.rsvpLerTunnelHistory[0].entries[0].event: "
          "expected the next member or the end of the object, found :"},
         {R"({"rsvpLerFathomStatus": {"rsvpLerTunnelHistory": [{"tunnelIndex": 1, )"
          R"("entries": [{"entryIndex": 0, "event": {"state": "up", "kind": "tunnelState": 2}, "groupId": 0}}]}]}})",
          "f:1:146: rsvpLerFathomStatus.rsvpLerTunnelHistory[0].entries[0].event: "
          "expected the next member or the end of the object, found :"},
         {std::string("{\0}", 3), "f:1:2: expected the next member or the end of the object, found \\x00"},
         {"{} // state}", "f:1:4: expected the end of the file, found //"},
   });
}

TEST(LoadErrors, whatIsNoText) {
   expectErrors({
         {"{\"clock\": \xff}", "f:1:11: expected UTF-8 text, found \\xff"},
         {"{\"a\xc0\x80\": 1}", "f:1:4: expected UTF-8 text, found \\xc0"},
         {"{\"a\xed\xa0\x80\": 1}", "f:1:4: expected UTF-8 text, found \\xed"},
         {"{\"a\xf4\x90\x80\x80\": 1}", "f:1:4: expected UTF-8 text, found \\xf4"},
         {"{\"a\xe2\x82\": 1}", "f:1:4: expected UTF-8 text, found \\xe2"},
         {"{\"a\nb\": 1}", "f:1:4: expected no control character in a string, found \\x0a"},
         {std::string("{\"a\0b\": 1}", 10), "f:1:4: expected no control character in a string, found \\x00"},
         {"{\n \"a\\\": 1}", "f:2:2: expected a string with a closing quote, found \"a\\\": 1}"},
         {R"({"rsvpLerConfig": {"localIntf": "\ud800"}})",
          R"(f:1:33: rsvpLerConfig.localIntf: expected a string with valid escapes, found "\ud800")"},
         {R"({"rsvpLerConfig": {"localIntf": "\ud800\u0041"}})",
          R"(f:1:33: rsvpLerConfig.localIntf: expected a string with valid escapes, found "\ud800\u0041")"},
         {R"({"rsvpLerConfig": {"localIntf": "a\udc00"}})",
          R"(f:1:33: rsvpLerConfig.localIntf: expected a string with valid escapes, found "a\udc00")"},
         {R"({"rsvpLerConfig": {"localIntf": "\ud800\ud800"}})",
          R"(f:1:33: rsvpLerConfig.localIntf: expected a string with valid escapes, found "\ud800\ud800")"},
         {R"({"rsvpLerConfig": {"localIntf": "\x"}})",
          R"(f:1:33: rsvpLerConfig.localIntf: expected a string with valid escapes, found "\x")"},
         {R"({"rsvpLerConfig": {"localIntf": "\u12g4"}})",
          R"(f:1:33: rsvpLerConfig.localIntf: expected a string with valid escapes, found "\u12g4")"},
         {R"({"rsvpLerConfig": {"\udfff": 1}})",
          R"(f:1:20: rsvpLerConfig["\udfff"]: expected a string with valid escapes, found "\udfff")"},
   });
}

TEST(LoadErrors, members) {
   expectErrors({
         {R"({"rsvpLerstatus": {}})",
          "f:1:2: rsvpLerstatus: expected one of the members clock, rsvpCliConfig, rsvpLerCliConfig, rsvpLerConfig, "
          R"(tallyFeatureConfigDir, rsvpLerStatus, rsvpLerFathomStatus, found "rsvpLerstatus")"},
         {R"({"": 1})",
          "f:1:2: [\"\"]: expected one of the members clock, rsvpCliConfig, rsvpLerCliConfig, rsvpLerConfig, "
          R"(tallyFeatureConfigDir, rsvpLerStatus, rsvpLerFathomStatus, found "")"},
         {R"({"clock": {"utcTim": 1}})",
          R"(f:1:12: clock.utcTim: expected one of the members currentTime, utcTime, found "utcTim")"},
         {R"({"clock": {"utcTime ": 1}})",
          R"(f:1:12: clock["utcTime "]: expected one of the members currentTime, utcTime, found "utcTime ")"},
         {"{\"clock\": {\"\x1b[2J\": 1}}", "f:1:13: expected no control character in a string, found \\x1b"},
         {R"({"clock": {"\u001b[2J": 1}})",
          R"(f:1:12: clock["\u001b[2J"]: expected one of the members currentTime, utcTime, found "\u001b[2J")"},
         {"{\"clock\": {\"\xc3\xa4\": 1}}",
          R"(f:1:12: clock["\xc3\xa4"]: expected one of the members currentTime, utcTime, found "\xc3\xa4")"},
         {R"({"clock": {}, "clock": {}})", R"(f:1:15: clock: expected each member once, found "clock")"},
         {R"({"clock": {}, "\u0063lock": {}})",
          R"(f:1:15: ["\u0063lock"]: expected each member once, found "\u0063lock")"},
         {R"({"clock": {"utcTime": 1, "utcTime": 1}})",
          R"(f:1:26: clock.utcTime: expected each member once, found "utcTime")"},
         {R"({"rsvpLerStatus": {"tunnelSpecColl": null, "tunnelSpecColl": []}})",
          R"(f:1:44: rsvpLerStatus.tunnelSpecColl: expected each member once, found "tunnelSpecColl")"},
         {R"({"rsvpCliConfig": {"x": 1}})",
          R"(f:1:20: rsvpCliConfig.x: expected only the member mtuSignalingEnabled, found "x")"},
         {statusRow("tunnelIndexMap", R"({"tunnelSpecId":{"name":"a"},"tunnelSpecId":{"name":"a"}})"),
          R"(f:1:66: rsvpLerStatus.tunnelIndexMap[0].tunnelSpecId: expected each member once, found "tunnelSpecId")"},
         {statusRow("tunnelIndexMap", R"({"tunnelSpecId":{"subTunnelId":1}})"),
          "f:1:54: rsvpLerStatus.tunnelIndexMap[0].tunnelSpecId.subTunnelId: expected one of the members name, source, "
          R"(found "subTunnelId")"},
         {statusRow("tunnelIndexMap", R"({"tunnelIndex":7})"),
          "f:1:37: rsvpLerStatus.tunnelIndexMap[0]: expected the member tunnelSpecId, found an object without it"},
         {statusRow("tunnelIndexMap", "{}"),
          "f:1:37: rsvpLerStatus.tunnelIndexMap[0]: expected the member tunnelSpecId, found an object without it"},
   });
}

TEST(LoadErrors, missingKeys) {
   struct TableRow {
      char const* root;
      char const* table;
      char const* key;
   };
   for (TableRow const& row : std::vector<TableRow>{
              {"rsvpLerStatus", "pathSpecConfigColl", "pathSpecId"},
              {"rsvpLerStatus", "tunnelSpecColl", "tunnelSpecId"},
              {"rsvpLerStatus", "autoBwStats", "tunnelSpecId"},
              {"rsvpLerStatus", "bwSamplingStatusColl", "tunnelSpecId"},
              {"rsvpLerStatus", "tunnelIndexMap", "tunnelSpecId"},
              {"rsvpLerStatus", "subTunnelIndexMap", "subTunnelConfigId"},
              {"rsvpLerStatus", "superTunnelStatusColl", "tunnelSpecId"},
              {"rsvpLerStatus", "subTunnelConfigCollTable", "tunnelSpecId"},
              {"rsvpLerStatus", "subTunnelStatusCollTable", "tunnelSpecId"},
              {"rsvpLerStatus", "mbbTunnelConfigCollTable", "subTunnelConfigId"},
              {"rsvpLerStatus", "mbbTunnelStatusCollTable", "subTunnelConfigId"},
              {"rsvpLerStatus", "lspGroupStatusCollTable", "mbbTunnelConfigId"},
              {"rsvpLerStatus", "lspRequestConfigCollTable", "lspGroupId"},
              {"rsvpLerStatus", "lspRequestStatusCollTable", "lspGroupId"},
              {"rsvpLerStatus", "cspfPathKeyMapping", "lspGroupId"},
              {"rsvpLerFathomStatus", "superTunnelConfigColl", "tunnelSpecId"},
              {"rsvpLerFathomStatus", "autoBwConfig", "tunnelSpecId"},
              {"rsvpLerFathomStatus", "rsvpLerTunnelHistory", "tunnelIndex"},
              {"rsvpLerFathomStatus", "rsvpLerSubTunnelHistory", "tunnelIndex"},
        }) {
      std::string const before = std::string("{\"") + row.root + "\":{\"" + row.table + "\":[";
      EXPECT_EQ(errorOf(before + "{}]}}"), "f:1:" + std::to_string(before.size() + 1) + ": " + row.root + "." +
                                                 row.table + "[0]: expected the member " + row.key +
                                                 ", found an object without it");
      // The same row twice: the key is what counts.
      std::string const empty =
            std::string("{\"") + row.key + "\":" + (std::string_view(row.key) == "tunnelIndex" ? "0" : "{}") + "}";
      EXPECT_EQ(errorOf(before + empty + "]}}"), "");
      EXPECT_EQ(errorOf(before + empty + "," + empty + "]}}"),
                "f:1:" + std::to_string(before.size() + empty.size() + 2) + ": " + row.root + "." + row.table +
                      "[1]: expected a key that stands once in its table, found the key of an earlier row");
   }
}

TEST(LoadErrors, missingKeysOfInnerRows) {
   expectErrors({
         {statusRow("subTunnelConfigCollTable", R"({"tunnelSpecId":{},"subTunnelConfigColl":[{}]})"),
          "f:1:89: rsvpLerStatus.subTunnelConfigCollTable[0].subTunnelConfigColl[0]: expected the member "
          "subTunnelConfigId, found an object without it"},
         {statusRow("subTunnelStatusCollTable", R"({"tunnelSpecId":{},"subTunnelStatusColl":[{}]})"),
          "f:1:89: rsvpLerStatus.subTunnelStatusCollTable[0].subTunnelStatusColl[0]: expected the member "
          "subTunnelConfigId, found an object without it"},
         {statusRow("mbbTunnelConfigCollTable", R"({"subTunnelConfigId":{},"mbbTunnelConfigColl":[{}]})"),
          "f:1:94: rsvpLerStatus.mbbTunnelConfigCollTable[0].mbbTunnelConfigColl[0]: expected the member "
          "mbbTunnelConfigId, found an object without it"},
         {statusRow("mbbTunnelStatusCollTable", R"({"subTunnelConfigId":{},"mbbTunnelStatusColl":[{}]})"),
          "f:1:94: rsvpLerStatus.mbbTunnelStatusCollTable[0].mbbTunnelStatusColl[0]: expected the member "
          "mbbTunnelConfigId, found an object without it"},
         {statusRow("lspGroupStatusCollTable", R"({"mbbTunnelConfigId":{},"lspGroupStatusColl":[{}]})"),
          "f:1:92: rsvpLerStatus.lspGroupStatusCollTable[0].lspGroupStatusColl[0]: expected the member lspGroupId, "
          "found an object without it"},
         {statusRow("lspRequestConfigCollTable", R"({"lspGroupId":{},"lspRequestConfigColl":[{}]})"),
          "f:1:89: rsvpLerStatus.lspRequestConfigCollTable[0].lspRequestConfigColl[0]: expected the member "
          "lspRequestConfigId, found an object without it"},
         {statusRow("lspRequestStatusCollTable", R"({"lspGroupId":{},"lspRequestStatusColl":[{}]})"),
          "f:1:89: rsvpLerStatus.lspRequestStatusCollTable[0].lspRequestStatusColl[0]: expected the member "
          "lspRequestConfigId, found an object without it"},
         {statusRow("autoBwStats", R"({"tunnelSpecId":{},"subTunnelBwSamplingStats":[{}]})"),
          "f:1:81: rsvpLerStatus.autoBwStats[0].subTunnelBwSamplingStats[0]: expected the member subTunnelConfigId, "
          "found an object without it"},
         {statusRow("bwSamplingStatusColl", R"({"tunnelSpecId":{},"subTunnelBwSamplingStatus":[{}]})"),
          "f:1:91: rsvpLerStatus.bwSamplingStatusColl[0].subTunnelBwSamplingStatus[0]: expected the member "
          "subTunnelConfigId, found an object without it"},
         {R"({"rsvpLerFathomStatus":{"rsvpLerTunnelHistory":[{"tunnelIndex":7,"entries":[{}]}]}})",
          "f:1:77: rsvpLerFathomStatus.rsvpLerTunnelHistory[0].entries[0]: expected the member entryIndex, found an "
          "object without it"},
   });
}

TEST(LoadErrors, repeatedKeys) {
   std::string const again = ": expected a key that stands once in its table, found the key of an earlier row";
   expectErrors({
         // Alike but for nothing that counts.
         {statusRow("tunnelIndexMap", R"({"tunnelSpecId":{"name":"a","source":"cli"}},
{"tunnelSpecId":{"name":"a","source":1},"tunnelIndex":2})"),
          "f:2:1: rsvpLerStatus.tunnelIndexMap[1]" + again},
         {statusRow("tunnelIndexMap", R"({"tunnelSpecId":{"name":"a"}},
{"tunnelSpecId":{"name":"\u0061"}})"),
          "f:2:1: rsvpLerStatus.tunnelIndexMap[1]" + again},
         // A row that adds nothing counts, before and after one that does.
         {statusRow("subTunnelStatusCollTable", R"({"tunnelSpecId":{}},
{"tunnelSpecId":{},"subTunnelStatusColl":[]})"),
          "f:2:1: rsvpLerStatus.subTunnelStatusCollTable[1]" + again},
         {statusRow("subTunnelStatusCollTable", R"({"tunnelSpecId":{},"subTunnelStatusColl":[]},
{"tunnelSpecId":{},"subTunnelStatusColl":null})"),
          "f:2:1: rsvpLerStatus.subTunnelStatusCollTable[1]" + again},
         {statusRow("subTunnelStatusCollTable", R"({"tunnelSpecId":{},"subTunnelStatusColl":null},
{"tunnelSpecId":{},"subTunnelStatusColl":null})"),
          "f:2:1: rsvpLerStatus.subTunnelStatusCollTable[1]" + again},
         {R"({"rsvpLerFathomStatus":{"rsvpLerSubTunnelHistory":[{"tunnelIndex":1},
{"tunnelIndex":1,"entries":[]}]}})",
          "f:2:1: rsvpLerFathomStatus.rsvpLerSubTunnelHistory[1]" + again},
         // Inside the collections and records.
         {statusRow("lspGroupStatusCollTable",
                    R"({"mbbTunnelConfigId":{},"lspGroupStatusColl":[{"lspGroupId":{"groupId":1}},
{"lspGroupId":{"groupId":0}},
{"lspGroupId":{"groupId":1}}]})"),
          "f:3:1: rsvpLerStatus.lspGroupStatusCollTable[0].lspGroupStatusColl[2]" + again},
         {statusRow("lspGroupStatusCollTable",
                    R"({"mbbTunnelConfigId":{},"lspGroupStatusColl":[{"lspGroupId":{},"nextHop":[
{"address":"10.0.0.2"},{"address":"10.0.0.1"},
{"address":"10.0.0.2"}]}]})"),
          "f:3:1: rsvpLerStatus.lspGroupStatusCollTable[0].lspGroupStatusColl[0].nextHop[2]" + again},
         {statusRow("autoBwStats", R"({"tunnelSpecId":{},"subTunnelBwSamplingStats":[{"subTunnelConfigId":{}},
{"subTunnelConfigId":{}}]})"),
          "f:2:1: rsvpLerStatus.autoBwStats[0].subTunnelBwSamplingStats[1]" + again},
         {statusRow("bwSamplingStatusColl", R"({"tunnelSpecId":{},"subTunnelBwSamplingStatus":[{"subTunnelConfigId":{}},
{"subTunnelConfigId":{}}]})"),
          "f:2:1: rsvpLerStatus.bwSamplingStatusColl[0].subTunnelBwSamplingStatus[1]" + again},
         {R"({"rsvpLerFathomStatus":{"rsvpLerTunnelHistory":[{"entries":[{"entryIndex":3},
{"entryIndex":3}],"tunnelIndex":7}]}})",
          "f:2:1: rsvpLerFathomStatus.rsvpLerTunnelHistory[0].entries[1]" + again},
         // Maps by address, where one address has many spellings.
         {statusRow("superTunnelStatusColl", R"({"tunnelSpecId":{},"subLspState":{"2001:db8::1":1,
"2001:db8:0::1":1}})"),
          R"(f:2:1: rsvpLerStatus.superTunnelStatusColl[0].subLspState["2001:db8:0::1"]: expected each address once, )"
          R"(found "2001:db8:0::1")"},
         {statusRow("lspRequestStatusCollTable",
                    R"({"lspGroupId":{},"lspRequestStatusColl":[{"lspRequestConfigId":{},"subLspState":{"10.0.0.2":1,
"10.0.0.1":1,"10.0.0.2":1}}]})"),
          R"(f:2:14: rsvpLerStatus.lspRequestStatusCollTable[0].lspRequestStatusColl[0].subLspState["10.0.0.2"]: )"
          R"(expected each address once, found "10.0.0.2")"},
         {statusRow("lspRequestConfigCollTable",
                    R"({"lspGroupId":{},"lspRequestConfigColl":[{"lspRequestConfigId":{},"tree":{"paths":{"":{},
"":{}}}}]})"),
          R"(f:2:1: rsvpLerStatus.lspRequestConfigCollTable[0].lspRequestConfigColl[0].tree.paths[""]: )"
          R"(expected each address once, found "")"},
         {R"({"tallyFeatureConfigDir":{"feature":{"47":1,"47":1}}})",
          R"(f:1:45: tallyFeatureConfigDir.feature.47: expected each feature once, found "47")"},
   });
}

TEST(LoadErrors, deepNestingAndTruncation) {
   std::string const deepArrays(10000, '[');
   std::string const deepEnd(10000, ']');
   EXPECT_EQ(errorOf(deepArrays + deepEnd), "f:1:1: expected an object, found an array");
   EXPECT_EQ(errorOf(R"({"rsvpLerStatus":)" + deepArrays + deepEnd + "}"),
             "f:1:18: rsvpLerStatus: expected an object, found an array");
   std::string deepObjects;
   for (int i = 0; i < 10000; ++i)
      deepObjects += R"({"x":)";
   EXPECT_EQ(errorOf(R"({"rsvpLerStatus":)" + deepObjects + "1" + std::string(10001, '}')),
             "f:1:19: rsvpLerStatus.x: expected one of the members pathSpecConfigColl, tunnelSpecColl, autoBwStats, "
             "bwSamplingStatusColl, tunnelIndexMap, subTunnelIndexMap, superTunnelStatusColl, "
             "subTunnelConfigCollTable, subTunnelStatusCollTable, mbbTunnelConfigCollTable, mbbTunnelStatusCollTable, "
             "lspGroupStatusCollTable, lspRequestConfigCollTable, lspRequestStatusCollTable, cspfPathKeyMapping, "
             R"(found "x")");
   EXPECT_EQ(errorOf(R"({"rsvpLerFathomStatus":{"rsvpLerTunnelHistory":[{"tunnelIndex":1,"entries":[{"entryIndex":1,)"
                     R"("event":{"x":)" +
                     deepArrays + deepEnd + "}}]}]}}"),
             "f:1:102: rsvpLerFathomStatus.rsvpLerTunnelHistory[0].entries[0].event.x: expected only the member kind, "
             R"(found "x")");
   std::string const whole =
         statusRow("tunnelIndexMap", R"({"tunnelSpecId":{"name":"a\n","source":"cli"},"tunnelIndex":7})");
   ASSERT_EQ(errorOf(whole), "");
   for (std::size_t length = 0; length < whole.size(); ++length) {
      std::string const message = errorOf(whole.substr(0, length));
      EXPECT_TRUE(message.starts_with("f:1:")) << length << message;
      EXPECT_EQ(message.find('\n'), std::string::npos) << length;
   }
}

TEST(LoadErrors, eachErrorIsOneLineThatFitsATerminal) {
   std::string const value = "\"" + std::string(5000, 'x') + "\"";
   EXPECT_EQ(errorOf(R"({"clock":{"utcTime":)" + value + "}}"),
             "f:1:21: clock.utcTime: expected a finite number, found \"" + std::string(59, 'x') + "...");
   try {
      Host::loadState("a\nb\x1b"
                      "c",
                      StateText("5"));
      FAIL();
   } catch (StateError const& error) {
      EXPECT_STREQ(error.what(), "a\\x0ab\\x1bc:1:1: expected an object, found 5");
   }
   try {
      Host::loadState("-", StateText("5"));
      FAIL();
   } catch (StateError const& error) {
      EXPECT_STREQ(error.what(), "standard input:1:1: expected an object, found 5");
   }
}

} // namespace
