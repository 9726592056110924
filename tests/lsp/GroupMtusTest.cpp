#include "tests/lsp/LspState.h"

#include <gtest/gtest.h>

#include <vector>

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

using Mtu = Vane::Optional<std::uint32_t>;
Mtu const absent;

struct NextHop {
   char const* address;
   char const* intf;
   Mtu mtu;
};

struct MtuRow {
   char const* name;
   Mtu pathMtu;
   std::vector<NextHop> nextHops;
   char const* text;
   char const* json;
};

Brindle::Ptr<RsvpLerLspGroupStatus> groupOf(MtuRow const& row) {
   auto group = Brindle::makeNode<RsvpLerLspGroupStatus>();
   group->pathMtu = row.pathMtu;
   for (auto const& nextHop : row.nextHops)
      group->nextHop.insert(address(nextHop.address), RsvpNextHopInfo{Lattice::IntfId(nextHop.intf), nextHop.mtu});
   return group;
}

using Section = void (ShowRsvpLerTunnel::*)(scrivo::RendererV2*, Handle<RsvpLerLspGroupStatus> const&, bool) const;

Shown shownMtus(Router const& router, Section section, Handle<RsvpLerLspGroupStatus> const& group, bool text) {
   return shown(router, [&](ShowRsvpLerTunnel const& command, scrivo::RendererV2* renderer) {
      (command.*section)(renderer, group, text);
   });
}

void expectRows(Section section, std::vector<MtuRow> const& rows) {
   Router signalling;
   signalling.cliConfig->mtuSignalingEnabled = true;
   Router const silent;
   Router unconfigured;
   unconfigured.cliConfig = nullptr;
   Shown const nothing;
   for (auto const& row : rows) {
      SCOPED_TRACE(row.name);
      auto const group = groupOf(row);
      EXPECT_EQ(shownMtus(signalling, section, group, true), (Shown{row.text, row.json}));
      EXPECT_EQ(shownMtus(signalling, section, group, false), (Shown{"", row.json}));
      EXPECT_EQ(shownMtus(silent, section, group, true), nothing);
      EXPECT_EQ(shownMtus(unconfigured, section, group, true), nothing);
   }
   EXPECT_EQ(shownMtus(signalling, section, nullptr, true), nothing);
}

TEST(GroupMtus, OfAPath) {
   expectRows(
         &ShowRsvpLerTunnel::renderLspGroupMtuInfo,
         {
               {"equal",
                1500,
                {{"10.1.1.2", "eth1", 1500}},
                "      Path MTU: 1500 bytes\n      Interface MTU: 1500 bytes\n",
                R"("pathMtu":1500,"intfMtu":1500)"},
               {"different",
                1500,
                {{"10.1.1.2", "eth1", 9000}},
                "      Path MTU: 1500 bytes (not matching interface MTU)\n      Interface MTU: 9000 bytes\n",
                R"("pathMtu":1500,"intfMtu":9000)"},
               {"no interface MTU",
                1500,
                {{"10.1.1.2", "eth1", absent}},
                "      Path MTU: 1500 bytes\n      Interface MTU: ?\n",
                R"("pathMtu":1500)"},
               {"no next hop", 1500, {}, "      Path MTU: 1500 bytes\n      Interface MTU: ?\n", R"("pathMtu":1500)"},
               {"no path MTU",
                absent,
                {{"10.1.1.2", "eth1", 1500}},
                "      Path MTU: -\n      Interface MTU: 1500 bytes\n",
                R"("intfMtu":1500)"},
               {"none", absent, {}, "      Path MTU: -\n      Interface MTU: ?\n", ""},
               {"neither", absent, {{"10.1.1.2", "eth1", absent}}, "      Path MTU: -\n      Interface MTU: ?\n", ""},
               {"0 is a value",
                0,
                {{"10.1.1.2", "eth1", 4294967295}},
                "      Path MTU: 0 bytes (not matching interface MTU)\n      Interface MTU: 4294967295 bytes\n",
                R"("pathMtu":0,"intfMtu":4294967295)"},
               {"of the first next hop alone",
                1500,
                {{"10.1.1.10", "eth1", 9000}, {"10.1.1.9", "eth2", absent}},
                "      Path MTU: 1500 bytes\n      Interface MTU: ?\n",
                R"("pathMtu":1500)"},
         });
}

TEST(GroupMtus, OfATree) {
   expectRows(&ShowRsvpLerTunnel::renderP2mpLspGroupPathMtus,
              {
                    {"none", absent, {}, "", ""},
                    {"only the path's", 1500, {}, "      Path MTU: 1500 bytes\n", R"("pathMtu":1500)"},
                    {"equal",
                     1500,
                     {{"10.1.1.2", "eth1", 1500}},
                     "      Path MTU: 1500 bytes\n      Interface MTU:\n         eth1: 1500 bytes\n",
                     R"("pathMtu":1500,"intfMtus":{"eth1":1500})"},
                    {"one matches, one doesn't, one is unknown",
                     1500,
                     {{"10.1.1.2", "eth3", absent}, {"10.1.2.2", "eth2", 9000}, {"10.1.3.2", "eth1", 1500}},
                     "      Path MTU: 1500 bytes\n"
                     "      Interface MTU:\n"
                     "         eth1: 1500 bytes\n"
                     "         eth2: 9000 bytes (not matching path MTU)\n"
                     "         eth3: -\n",
                     R"("pathMtu":1500,"intfMtus":{"eth2":9000,"eth1":1500})"},
                    {"no path MTU",
                     absent,
                     {{"10.1.1.2", "eth1", 1500}},
                     "      Interface MTU:\n         eth1: 1500 bytes\n",
                     R"("intfMtus":{"eth1":1500})"},
                    {"none is known",
                     absent,
                     {{"10.1.1.2", "eth1", absent}},
                     "      Interface MTU:\n         eth1: -\n",
                     R"("intfMtus":{})"},
                    {"plain string order",
                     absent,
                     {{"10.1.1.2", "eth2", 1},
                      {"10.1.2.2", "eth10", 2},
                      {"10.1.3.2", "Eth3", 3},
                      {"10.1.4.2", "\xc3\xa9th", 4}},
                     "      Interface MTU:\n"
                     "         Eth3: 3 bytes\n"
                     "         eth10: 2 bytes\n"
                     "         eth2: 1 bytes\n"
                     "         \xc3\xa9th: 4 bytes\n",
                     "\"intfMtus\":{\"eth2\":1,\"eth10\":2,\"Eth3\":3,\"\xc3\xa9th\":4}"},
                    {"an interface met twice",
                     1500,
                     {{"10.1.1.2", "eth1", 9000}, {"10.1.2.2", "eth1", 1500}},
                     "      Path MTU: 1500 bytes\n      Interface MTU:\n         eth1: 1500 bytes\n",
                     R"("pathMtu":1500,"intfMtus":{"eth1":9000,"eth1":1500})"},
                    {"met twice, unknown at last",
                     1500,
                     {{"10.1.1.2", "eth1", 9000}, {"10.1.2.2", "eth1", absent}},
                     "      Path MTU: 1500 bytes\n      Interface MTU:\n         eth1: -\n",
                     R"("pathMtu":1500,"intfMtus":{"eth1":9000})"},
                    {"an interface without a name",
                     1500,
                     {{"10.1.1.2", "", 9000}, {"10.1.2.2", "eth1", 1500}},
                     "      Path MTU: 1500 bytes\n"
                     "      Interface MTU:\n"
                     "         : 9000 bytes (not matching path MTU)\n"
                     "         eth1: 1500 bytes\n",
                     R"("pathMtu":1500,"intfMtus":{"eth1":1500})"},
                    {"a name that JSON escapes",
                     absent,
                     {{"10.1.1.2", "e\"1", 1500}},
                     "      Interface MTU:\n         e\"1: 1500 bytes\n",
                     R"("intfMtus":{"e\"1":1500})"},
              });
}

} // namespace
