#include "RsvpLer/detail/TunnelAttributes.h"
#include "tests/detail/SectionCheck.h"

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

using Config = RsvpLerSuperTunnelConfig;
using ConfigRow = SectionRow<Config>;
using StatusRow = SectionRow<RsvpLerSuperTunnelStatus>;
using SubTunnelRow = SectionRow<RsvpLerSubTunnelStatus>;

// The text operations that have no flag.
template<class Section>
void expectHeading(Section&& section, std::string_view line) {
   EXPECT_EQ(rendered(textFormat, section), line);
   EXPECT_EQ(rendered(jsonFormat, section), "");
}

TEST(TunnelIdentity, headings) {
   expectHeading([](auto* renderer) { renderTunnelNameHeading(renderer, tunnelId("tun1")); }, "Tunnel tun1\n");
   expectHeading([](auto* renderer) { renderTunnelNameHeading(renderer, tunnelId("")); }, "Tunnel \n");
   expectHeading([](auto* renderer) { renderTunnelNameHeading(renderer, tunnelId("a \"b\"")); }, "Tunnel a \"b\"\n");
   expectHeading([](auto* renderer) { renderSubTunnelId(renderer, subTunnelId("tun1", 2)); }, "Sub tunnel 2\n");
   expectHeading([](auto* renderer) { renderSubTunnelId(renderer, subTunnelId("tun1", 4294967295)); },
                 "Sub tunnel 4294967295\n");
}

TEST(TunnelIdentity, source) {
   ConfigRow const rows[] = {
         {nullptr, "   Source address: ::\n", R"("source":"::")"},
         {[](Config&) {}, "   Source address: ::\n", R"("source":"::")"},
         {[](Config& config) { config.source = address("10.0.0.1"); }, "   Source address: 10.0.0.1\n",
          R"("source":"10.0.0.1")"},
         {[](Config& config) { config.source = address("2001:db8::1"); }, "   Source address: 2001:db8::1\n",
          R"("source":"2001:db8::1")"},
   };
   expectRows<Config>(renderTunnelSrc, rows);
}

TEST(TunnelIdentity, destination) {
   ConfigRow const rows[] = {
         {nullptr, "   Destination address: ::\n", R"("destination":"::")"},
         {[](Config&) {}, "   Destination address: ::\n", R"("destination":"::")"},
         {[](Config& config) { config.destination.insert(address("10.0.0.9")); }, "   Destination address: 10.0.0.9\n",
          R"("destination":"10.0.0.9")"},
         {[](Config& config) {
             config.destination = {address("2001:db8::9"), address("10.0.0.20"), address("10.0.0.3")};
          },
          "   Destination address: 10.0.0.3\n", R"("destination":"10.0.0.3")"},
         // Exactly type 1 has no single destination.
         {[](Config& config) {
             config.sessionType = RsvpSessionType::p2mp;
             config.destination.insert(address("10.0.0.9"));
          },
          "", R"("destination":"::")"},
         {[](Config& config) {
             config.sessionType = static_cast<RsvpSessionType>(2);
             config.destination.insert(address("10.0.0.9"));
          },
          "   Destination address: 10.0.0.9\n", R"("destination":"10.0.0.9")"},
   };
   expectRows<Config>(renderTunnelDst, rows);
}

TEST(TunnelIdentity, configSource) {
   struct Row {
      RsvpLerTunnelSource source;
      std::string_view line;
      std::string_view member;
   };
   Row const rows[] = {
         {RsvpLerTunnelSource::unknown, "   Config source: unknown\n", R"("configSource":"unknown")"},
         {RsvpLerTunnelSource::cli, "   Config source: CLI\n", R"("configSource":"cli")"},
         {RsvpLerTunnelSource::mvpn, "   Config source: MVPN\n", R"("configSource":"mvpn")"},
         {RsvpLerTunnelSource::frrBypass, "   Config source: FRR Bypass\n", R"("configSource":"frrBypass")"},
         {RsvpLerTunnelSource::defaultSource, "   Config source: default\n", R"("configSource":"default")"},
   };
   for (Row const& row : rows)
      expectSection([&](auto* renderer,
                        bool showText) { renderTunnelConfigSource(renderer, tunnelId("tun1", row.source), showText); },
                    row.line, row.member);
}

TEST(TunnelIdentity, profile) {
   struct Row {
      void (*editSpec)(RsvpLerTunnelSpec&);
      void (*editConfig)(Config&);
      std::string_view line;
      std::string_view members;
   };
   auto const gold = [](RsvpLerTunnelSpec& spec) { spec.profile = {"gold", RsvpLerTunnelSource::cli}; };
   Row const rows[] = {
         {nullptr, [](Config& config) { config.profileState = RsvpLerTunnelProfileState::notFound; }, "", ""},
         {[](RsvpLerTunnelSpec&) {}, [](Config&) {}, "", ""},
         {gold, nullptr, "   Profile: gold\n", R"("profile":"gold","profileState":"notSpecified")"},
         {gold, [](Config&) {}, "   Profile: gold\n", R"("profile":"gold","profileState":"notSpecified")"},
         {gold, [](Config& config) { config.profileState = RsvpLerTunnelProfileState::notFound; },
          "   Profile: gold (error: not found)\n", R"("profile":"gold","profileState":"notFound")"},
         {gold, [](Config& config) { config.profileState = RsvpLerTunnelProfileState::wrongType; },
          "   Profile: gold (error: wrong tunnel profile type)\n", R"("profile":"gold","profileState":"wrongType")"},
         {gold, [](Config& config) { config.profileState = RsvpLerTunnelProfileState::applied; }, "   Profile: gold\n",
          R"("profile":"gold","profileState":"applied")"},
         // Both fields tell the profile from none.
         {[](RsvpLerTunnelSpec& spec) { spec.profile.source = RsvpLerTunnelSource::cli; }, [](Config&) {},
          "   Profile: \n", R"("profile":"","profileState":"notSpecified")"},
   };
   for (Row const& row : rows) {
      auto const spec = recordOf(row.editSpec);
      auto const config = recordOf(row.editConfig);
      expectSection([&](auto* renderer, bool showText) { renderTunnelProfileId(renderer, spec, config, showText); },
                    row.line, row.members);
   }
}

TEST(TunnelIdentity, endpoints) {
   ConfigRow const rows[] = {
         {nullptr, "", ""},
         {[](Config&) {}, "", ""},
         {[](Config& config) { config.aliasTeps.insert(address("10.0.0.11")); },
          "   Additional endpoints:\n      10.0.0.11\n", R"("aliasTeps":["10.0.0.11"])"},
         {[](Config& config) {
             for (char const* text : {"2001:db8::1", "10.0.0.19", "9.0.0.1", "10.0.0.2"})
                config.aliasTeps.insert(address(text));
          },
          "   Additional endpoints:\n      9.0.0.1\n      10.0.0.2\n      10.0.0.19\n      2001:db8::1\n",
          R"("aliasTeps":["9.0.0.1","10.0.0.2","10.0.0.19","2001:db8::1"])"},
   };
   expectRows<Config>(renderTunnelTeps, rows);
}

TEST(TunnelIdentity, p2mpId) {
   StatusRow const rows[] = {
         {nullptr, "   P2MP ID: ?\n", ""},
         {[](RsvpLerSuperTunnelStatus&) {}, "   P2MP ID: ?\n", ""},
         {[](RsvpLerSuperTunnelStatus& status) { status.sessionId.type = 1; }, "   P2MP ID: 0\n", R"("p2mpId":0)"},
         {[](RsvpLerSuperTunnelStatus& status) {
             status.sessionId = {1, address("10.0.0.9"), 100, address("10.0.0.1")};
          },
          "   P2MP ID: 167772169\n", R"("p2mpId":167772169)"},
         {[](RsvpLerSuperTunnelStatus& status) {
             status.sessionId = {1, address("255.255.255.255"), 0, {}};
          },
          "   P2MP ID: 4294967295\n", R"("p2mpId":4294967295)"},
         {[](RsvpLerSuperTunnelStatus& status) {
             status.sessionId = {1, address("2001:db8::1"), 0, {}};
          },
          "   P2MP ID: 0\n", R"("p2mpId":0)"},
         // Another type is no P2MP session, whatever the rest says.
         {[](RsvpLerSuperTunnelStatus& status) {
             status.sessionId = {0, address("10.0.0.9"), 100, {}};
          },
          "   P2MP ID: ?\n", ""},
         {[](RsvpLerSuperTunnelStatus& status) {
             status.sessionId = {2, address("10.0.0.9"), 100, {}};
          },
          "   P2MP ID: ?\n", ""},
   };
   expectRows<RsvpLerSuperTunnelStatus>(renderTunnelP2mpId, rows);
}

TEST(TunnelIdentity, tunnelIndex) {
   auto const map = Brindle::makeNode<RsvpLerTunnelIndexMap>();
   map->set(tunnelId("seven"), 7);
   map->set(tunnelId("zero"), 0);
   auto const expectIndex = [](RsvpLerTunnelSpecId const& id, Handle<RsvpLerTunnelIndexMap> const& indexMap,
                               std::string_view line, std::string_view member) {
      expectSection([&](auto* renderer, bool showText) { renderTunnelIndex(renderer, id, indexMap, showText); }, line,
                    member);
   };
   expectIndex(tunnelId("seven"), map, "   Tunnel index: 7\n", R"("tunnelIndex":7)");
   expectIndex(tunnelId("zero"), map, "   Tunnel index: 0\n", R"("tunnelIndex":0)");
   expectIndex(tunnelId("seven", RsvpLerTunnelSource::mvpn), map, "", "");
   expectIndex(tunnelId("none"), map, "", "");
   expectIndex(tunnelId("seven"), nullptr, "", "");
}

TEST(TunnelIdentity, subTunnelIndex) {
   auto const map = Brindle::makeNode<RsvpLerSubTunnelIndexMap>();
   map->set(subTunnelId("tun1", 1), 3);
   map->set(subTunnelId("tun1", 2), 0);
   auto const expectIndex = [](std::uint32_t number, Handle<RsvpLerSubTunnelIndexMap> const& indexMap,
                               std::string_view line, std::string_view member) {
      expectSection(
            [&](auto* renderer, bool showText) {
               renderSubTunnelIndex(renderer, subTunnelId("tun1", number), indexMap, showText);
            },
            line, member);
   };
   expectIndex(1, map, "   Tunnel index: 3\n", R"("tunnelIndex":3)");
   expectIndex(2, map, "", ""); // unlike that of a tunnel
   expectIndex(3, map, "", "");
   expectIndex(1, nullptr, "", "");
}

TEST(TunnelIdentity, sessionNumber) {
   SubTunnelRow const rows[] = {
         {nullptr, "", ""},
         {[](RsvpLerSubTunnelStatus&) {}, "", ""},
         {[](RsvpLerSubTunnelStatus& status) { status.sessionCliId = 1000000; }, "", ""},
         {[](RsvpLerSubTunnelStatus& status) { status.sessionCliId = 0; }, "   Session #0\n", R"("sessionId":0)"},
         {[](RsvpLerSubTunnelStatus& status) { status.sessionCliId = 12; }, "   Session #12\n", R"("sessionId":12)"},
         {[](RsvpLerSubTunnelStatus& status) { status.sessionCliId = 999999; }, "   Session #999999\n",
          R"("sessionId":999999)"},
         {[](RsvpLerSubTunnelStatus& status) { status.sessionCliId = 1000001; }, "   Session #1000001\n",
          R"("sessionId":1000001)"},
   };
   expectRows<RsvpLerSubTunnelStatus>(renderTunnelSessionCliId, rows);
   expectRows<RsvpLerSubTunnelStatus>(renderSubTunnelSessionId, rows);
}

} // namespace
