#include "tests/support/Answer.h"
#include "tests/support/Router.h"

#include <gtest/gtest.h>

using namespace Rsvp;
using namespace Tests;

namespace {

std::string nameOf(int tunnel) {
   return "t" + std::to_string(tunnel);
}

// A tunnel with one request. The higher its number modulo 4, the more there is of that: no configuration, one without a
// tree, a tree without paths, a path.
void addTunnel(Router& router, int number) {
   std::string const name = nameOf(number);
   router.superTunnelConfig(tunnelId(name));
   router.subTunnelConfig(subTunnelId(name), [](auto&) {});
   router.subTunnelStatus(subTunnelId(name), [&](auto& record) { record.activeMbbTunnelConfigId = mbbId(name); });
   router.mbbTunnelConfig(mbbId(name), 125);
   router.mbbTunnelStatus(mbbId(name), groupId(name));
   router.lspGroupStatus(groupId(name), [&](auto& record) { record.activeLspRequestConfigId = requestId(name); });
   router.lspRequestStatus(requestId(name), [](auto& record) { record.lspId = std::uint16_t{7}; });
   int const parts = number % 4;
   if (parts == 0)
      return;
   auto const tree = Brindle::makeNode<RsvpLerTree>();
   if (parts == 3) {
      RsvpPathWithVersion path(0);
      path.hops = hops({"10.1.0.1", "10.1.0.2"});
      tree->paths.insert(RsvpDstId{address("10.1.0.2")}, path);
   }
   router.lspRequestConfig(requestId(name), [&](auto& record) {
      if (parts > 1)
         record.tree = tree;
   });
}

} // namespace

// Records are asked for ahead of their tunnels: what is missing there changes no block.
TEST(Lookahead, aLongListingShowsEachTunnelAsAloneWhateverIsMissing) {
   using Take = void (*)(Router&);
   struct {
      char const* name;
      Take take;
   } const rows[] = {
         {"nothing", [](Router&) {}},
         {"subTunnelConfigCollTable", [](Router& r) { r.status->subTunnelConfigCollTable.set({}); }},
         {"mbbTunnelConfigCollTable", [](Router& r) { r.status->mbbTunnelConfigCollTable.set({}); }},
         {"mbbTunnelStatusCollTable", [](Router& r) { r.status->mbbTunnelStatusCollTable.set({}); }},
         {"lspGroupStatusCollTable", [](Router& r) { r.status->lspGroupStatusCollTable.set({}); }},
         {"lspRequestConfigCollTable", [](Router& r) { r.status->lspRequestConfigCollTable.set({}); }},
         {"lspRequestStatusCollTable", [](Router& r) { r.status->lspRequestStatusCollTable.set({}); }},
         {"cspfPathKeyMapping", [](Router& r) { r.status->cspfPathKeyMapping.set({}); }},
   };
   for (auto const& row : rows) {
      Router router;
      for (int i = 0; i < 40; ++i)
         addTunnel(router, i);
      row.take(router);
      std::string blocks;
      for (int i = 0; i < 40; ++i)
         blocks += tunnelAnswer(*router.tunnelCommand(), textFormat, {.detail = true}, nameOf(i));
      EXPECT_EQ(tunnelAnswer(*router.tunnelCommand(), textFormat, {.detail = true}), blocks) << row.name;
   }
}
