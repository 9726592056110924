#include "RsvpLer/output/ScrivoBuffer.h"
#include "tests/support/Answer.h"
#include "tests/support/Router.h"
#include "vane/Interrupt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>

using namespace Rsvp;
using namespace Tests;

namespace {

constexpr char const* p2pHeading = "P2P\n"
                                   "Tunnel Name Destination Color Index Active Path Reserved BW LSPs State\n"
                                   "----------- ----------- ----- ----- ----------- ----------- ---- -----\n";
constexpr char const* p2mpHeading = "\n"
                                    "P2MP\n"
                                    "Tunnel Name P2MP ID Index Reserved BW LSPs State Leaves\n"
                                    "----------- ------- ----- ----------- ---- ----- ------\n";

// The names of the listed tunnels, in the order in which their members stand.
std::vector<std::string> listedNames(std::string const& answer) {
   std::vector<std::string> names;
   auto const document = nlohmann::ordered_json::parse(answer);
   for (auto const& [name, tunnel] : document.at("tunnels").items())
      names.push_back(name);
   return names;
}

using Names = std::vector<std::string>;

void addP2mp(Router& router, std::string_view name) {
   router.superTunnelConfig(tunnelId(name), [](auto& config) { config.sessionType = RsvpSessionType::p2mp; });
}

} // namespace

TEST(Listing, withoutTunnels) {
   Router router;
   auto const command = router.tunnelCommand();
   EXPECT_EQ(tunnelAnswer(*command, jsonFormat), "{\"tunnels\":{}}\n");
   EXPECT_EQ(tunnelAnswer(*command, jsonFormat, {.summary = true}), "{\"tunnels\":{}}\n");
   EXPECT_EQ(tunnelAnswer(*command, textFormat), "");
   EXPECT_EQ(tunnelAnswer(*command, textFormat, {.history = true}), "");
   EXPECT_EQ(tunnelAnswer(*command, textFormat, {.summary = true}), std::string(p2pHeading) + p2mpHeading);
   EXPECT_EQ(tunnelAnswer(*command, textFormat, {.summary = true, .subTunnel = true}), "");
}

TEST(Listing, withoutItsTableOrRoot) {
   Router router;
   router.superTunnelConfig(tunnelId("t"));
   router.fathomStatus->superTunnelConfigColl.set({});
   EXPECT_EQ(tunnelAnswer(*router.tunnelCommand(), jsonFormat), "{\"tunnels\":{}}\n");
   router.fathomStatus = nullptr;
   EXPECT_EQ(tunnelAnswer(*router.tunnelCommand(), jsonFormat), "{\"tunnels\":{}}\n");
   auto const empty = Cli::showRsvpLerTunnelFactory({}, {}, {}, {});
   EXPECT_EQ(tunnelAnswer(*empty, textFormat, {.summary = true}), std::string(p2pHeading) + p2mpHeading);
}

TEST(Listing, otherFormatsWriteNothing) {
   Router router;
   router.superTunnelConfig(tunnelId("t"));
   addP2mp(router, "tree");
   for (std::uint32_t format : {0u, 3u, 4294967295u}) {
      EXPECT_EQ(tunnelAnswer(*router.tunnelCommand(), format, {.summary = true}), "") << format;
      EXPECT_EQ(tunnelAnswer(*router.tunnelCommand(), format, {.detail = true}), "") << format;
   }
}

TEST(Listing, p2pFirstEachInNaturalOrder) {
   Router router;
   for (char const* name : {"tun10", "tun2", "Tun1", "a"})
      router.superTunnelConfig(tunnelId(name));
   for (char const* name : {"tree10", "tree9", "1"})
      addP2mp(router, name);
   auto const command = router.tunnelCommand();
   EXPECT_EQ(listedNames(tunnelAnswer(*command, jsonFormat)),
             (Names{"a", "Tun1", "tun2", "tun10", "1", "tree9", "tree10"}));
}

TEST(Listing, oneNameByRisingSource) {
   Router router;
   for (auto source : {RsvpLerTunnelSource::defaultSource, RsvpLerTunnelSource::cli, RsvpLerTunnelSource::mvpn})
      router.superTunnelConfig(tunnelId("t", source));
   std::string const answer = tunnelAnswer(*router.tunnelCommand(), jsonFormat);
   std::size_t const cli = answer.find("\"configSource\":\"cli\"");
   std::size_t const mvpn = answer.find("\"configSource\":\"mvpn\"");
   std::size_t const other = answer.find("\"configSource\":\"default\"");
   EXPECT_LT(cli, mvpn);
   EXPECT_LT(mvpn, other);
   EXPECT_NE(other, std::string::npos);
}

TEST(Listing, aFilterIsOneExactName) {
   Router router;
   for (char const* name : {"tun1", "Tun1", "tun10"})
      router.superTunnelConfig(tunnelId(name));
   router.superTunnelConfig(tunnelId("tun1", RsvpLerTunnelSource::mvpn));
   auto const command = router.tunnelCommand();
   EXPECT_EQ(listedNames(tunnelAnswer(*command, jsonFormat, {}, "Tun1")), Names{"Tun1"});
   EXPECT_EQ(listedNames(tunnelAnswer(*command, jsonFormat, {}, "TUN1")), Names{});
   EXPECT_EQ(listedNames(tunnelAnswer(*command, jsonFormat, {}, "tun")), Names{});
   // Both tunnels of the name; the parser keeps one member of two that have the same key.
   std::string const both = tunnelAnswer(*command, jsonFormat, {}, "tun1");
   EXPECT_NE(both.find("\"configSource\":\"cli\""), std::string::npos);
   EXPECT_NE(both.find("\"configSource\":\"mvpn\""), std::string::npos);
}

TEST(Listing, aFilterThatNamesAP2mpTunnelKeepsTheP2pHeading) {
   Router router;
   router.superTunnelConfig(tunnelId("tun1"));
   addP2mp(router, "tree1");
   EXPECT_EQ(tunnelAnswer(*router.tunnelCommand(), textFormat, {.summary = true}, "tree1"),
             std::string(p2pHeading) + "\n"
                                       "P2MP\n"
                                       "Tunnel Name P2MP ID Index Reserved BW LSPs State   Leaves\n"
                                       "----------- ------- ----- ----------- ---- ------- ------\n"
                                       "tree1             ?     -       0 bps    0 unknown 0/0 up\n");
}

TEST(Listing, widthsStayRaisedFromOneListingToTheNext) {
   Router router;
   router.superTunnelConfig(tunnelId("a-name-of-18-bytes"));
   auto const command = router.tunnelCommand();
   EXPECT_EQ(tunnelAnswer(*command, textFormat, {.summary = true}, "none"), std::string(p2pHeading) + p2mpHeading);
   tunnelAnswer(*command, jsonFormat, {.summary = true});
   EXPECT_EQ(command->tunnelNameWidth, 11); // JSON computes no widths
   tunnelAnswer(*command, textFormat, {.summary = true});
   EXPECT_EQ(command->tunnelNameWidth, 18);
   EXPECT_THAT(tunnelAnswer(*command, textFormat, {.summary = true}, "none"),
               testing::StartsWith("P2P\nTunnel Name        Destination Color"));
}

TEST(Listing, aNameIsAKeyOfAnyBytes) {
   Router router;
   std::string const name("q\"b\\n\n\0z\x7f", 9);
   router.superTunnelConfig(tunnelId(name));
   auto const command = router.tunnelCommand();
   std::string const answer = tunnelAnswer(*command, jsonFormat);
   EXPECT_THAT(answer, testing::StartsWith("{\"tunnels\":{\"q\\\"b\\\\n\\n\\u0000z\x7f\":{\"source\":\"::\","));
   EXPECT_EQ(listedNames(answer), Names{name});
}

TEST(Listing, selectedByConfigurationAlone) {
   Router router;
   router.superTunnelStatus(tunnelId("status-only"), [](auto&) {});
   router.superTunnelConfig(tunnelId("config-only"));
   EXPECT_EQ(listedNames(tunnelAnswer(*router.tunnelCommand(), jsonFormat)), Names{"config-only"});
}

TEST(Listing, aMissingTableSilencesEveryTunnelAndKeepsTheFrame) {
   using Take = void (*)(Router&);
   struct {
      char const* name;
      Take take;
      bool sized; // the summary's columns are as wide as the row would want them, whose state is "unknown"
   } const rows[] = {
         {"rsvpLerStatus", [](Router& r) { r.status = nullptr; }, false},
         {"superTunnelStatusColl", [](Router& r) { r.status->superTunnelStatusColl.set({}); }, false},
         {"subTunnelStatusCollTable", [](Router& r) { r.status->subTunnelStatusCollTable.set({}); }, false},
         {"tunnelSpecColl", [](Router& r) { r.status->tunnelSpecColl.set({}); }, true},
         {"bwSamplingStatusColl", [](Router& r) { r.status->bwSamplingStatusColl.set({}); }, true},
         {"tunnelIndexMap", [](Router& r) { r.status->tunnelIndexMap.set({}); }, true},
         {"autoBwConfig", [](Router& r) { r.fathomStatus->autoBwConfig.set({}); }, true},
         {"autoBwStats", [](Router& r) { r.status->autoBwStats.set({}); }, true},
   };
   for (auto const& test : rows) {
      Router router;
      router.superTunnelConfig(tunnelId("t"));
      ASSERT_EQ(listedNames(tunnelAnswer(*router.tunnelCommand(), jsonFormat)), Names{"t"});
      test.take(router);
      EXPECT_EQ(tunnelAnswer(*router.tunnelCommand(), jsonFormat), "{\"tunnels\":{}}\n") << test.name;
      EXPECT_EQ(tunnelAnswer(*router.tunnelCommand(), textFormat), "") << test.name;
      std::string heading(p2pHeading);
      if (test.sized)
         heading.insert(heading.rfind("-----"), "--");
      EXPECT_EQ(tunnelAnswer(*router.tunnelCommand(), textFormat, {.summary = true}), heading + p2mpHeading)
            << test.name;
   }
   // The index map of sub-tunnels is not among them.
   Router router;
   router.superTunnelConfig(tunnelId("t"));
   router.status->subTunnelIndexMap.set({});
   EXPECT_EQ(listedNames(tunnelAnswer(*router.tunnelCommand(), jsonFormat)), Names{"t"});
}

TEST(Listing, subTunnelShowsSplitTunnelsAlone) {
   Router router;
   for (char const* name : {"split", "whole", "no-status"})
      router.superTunnelConfig(tunnelId(name));
   router.superTunnelStatus(tunnelId("split"), [](auto& status) { status.split = true; });
   router.superTunnelStatus(tunnelId("whole"), [](auto&) {});
   auto const command = router.tunnelCommand();
   for (Flags flags : {Flags{.subTunnel = true}, Flags{.summary = true, .subTunnel = true},
                       Flags{.lspDetails = true, .subTunnel = true}, Flags{.detail = true, .subTunnel = true},
                       Flags{.history = true, .subTunnel = true}})
      EXPECT_EQ(listedNames(tunnelAnswer(*command, jsonFormat, flags)), Names{"split"});
}

TEST(Listing, aSplitP2mpTunnelInASubTunnelSummaryIsARowWithoutHeading) {
   Router router;
   addP2mp(router, "tree1");
   router.superTunnelStatus(tunnelId("tree1"), [](auto& status) {
      status.split = true;
      status.state = RsvpLerTunnelState::unknown;
   });
   EXPECT_EQ(tunnelAnswer(*router.tunnelCommand(), textFormat, {.summary = true, .subTunnel = true}),
             "tree1             ?     -       0 bps    0 unknown 0/0 up\n");
}

TEST(Listing, replacementFlagOfATunnel) {
   // Which of the four identifiers are set, and whether that is a replacement.
   struct {
      bool activeInstance, pendingInstance, activeRequest, pendingRequest, mbb;
   } const rows[] = {
         {true, false, true, false, false}, {true, true, false, false, true},  {false, true, false, false, false},
         {true, false, true, true, true},   {true, false, false, true, false}, {false, false, true, true, false},
   };
   for (auto const& test : rows) {
      Router router;
      router.superTunnelConfig(tunnelId("t"));
      router.subTunnelStatus(subTunnelId("t"), [&](auto& status) {
         if (test.activeInstance)
            status.activeMbbTunnelConfigId = mbbId("t", 1);
         if (test.pendingInstance)
            status.pendingMbbTunnelConfigId = mbbId("t", 2);
      });
      router.mbbTunnelStatus(mbbId("t", 1), groupId("t"));
      // The pending instance's group takes no part, whatever its requests are.
      router.mbbTunnelStatus(mbbId("t", 2), groupId("t", 0, 2));
      for (std::uint32_t epoch : {1u, 2u})
         router.lspGroupStatus(groupId("t", 0, epoch), [&](auto& group) {
            if (test.activeRequest || epoch == 2)
               group.activeLspRequestConfigId = requestId("t", 1, 0, epoch);
            if (test.pendingRequest || epoch == 2)
               group.pendingLspRequestConfigId = requestId("t", 2, 0, epoch);
         });
      auto const answer = nlohmann::json::parse(tunnelAnswer(*router.tunnelCommand(), jsonFormat));
      EXPECT_EQ(answer["tunnels"]["t"]["mbb"], test.mbb);
   }
}

TEST(Listing, anInterruptEndsTheCommandWithOneLine) {
   Router router;
   // More than the 1 MiB that the buffer holds, so that it has to drain.
   for (unsigned i = 0; i < 3000; ++i)
      router.superTunnelConfig(tunnelId(std::string(400, 'n') + std::to_string(i)));
   auto const command = router.tunnelCommand();
   Vane::Interrupt::request();
   testing::internal::CaptureStdout();
   std::string const answer = tunnelAnswer(*command, jsonFormat);
   EXPECT_EQ(testing::internal::GetCapturedStdout(), "exiting interrupted\n");
   Vane::Interrupt::clear();
   // The document stays open: nothing of the closing is written.
   EXPECT_TRUE(answer.empty() || answer.back() != '\n');
   EXPECT_EQ(listedNames(tunnelAnswer(*command, jsonFormat)).size(), 3000u);
}

TEST(Listing, aClientThatHasGoneEndsTheCommandWithOneLine) {
   Router router;
   router.superTunnelConfig(tunnelId("t"));
   int ends[2];
   ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
   close(ends[1]);
   testing::internal::CaptureStdout();
   router.tunnelCommand()->render(static_cast<std::uint32_t>(ends[0]), jsonFormat, {}, false, false, false, false,
                                  false);
   EXPECT_EQ(testing::internal::GetCapturedStdout(), "exiting client gone\n");
   close(ends[0]);
}

TEST(Filter, matchesByNameAlone) {
   Cli::ShowRsvpLerTunnelFilter const all;
   Cli::ShowRsvpLerTunnelFilter const one{"tun1"};
   EXPECT_FALSE(all);
   EXPECT_TRUE(one);
   EXPECT_TRUE(all.match(tunnelId("tun1"), {}));
   EXPECT_TRUE(all.match(tunnelId(""), {}));
   EXPECT_TRUE(one.match(tunnelId("tun1"), {}));
   EXPECT_TRUE(one.match(tunnelId("tun1", RsvpLerTunnelSource::mvpn), {}));
   EXPECT_FALSE(one.match(tunnelId("tun"), {}));
   EXPECT_FALSE(one.match(tunnelId("tun10"), {}));
   EXPECT_FALSE(one.match(tunnelId("TUN1"), {}));
   EXPECT_FALSE(one.match(tunnelId(std::string_view("tun1\0", 5)), {}));
   EXPECT_TRUE(Cli::ShowRsvpLerTunnelFilter::isEq(one, {"tun1"}));
   EXPECT_FALSE(Cli::ShowRsvpLerTunnelFilter::isEq(one, all));
}
