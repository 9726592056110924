#pragma once

#include "tests/support/Router.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

// What the tests of paths, trees and LSPs are made of.

namespace Tests {

// What body(command, renderer) writes in both formats. The JSON stands without braces around it.
struct Shown {
   std::string text;
   std::string json;
   friend bool operator==(Shown const&, Shown const&) = default;
   friend std::ostream& operator<<(std::ostream& out, Shown const& shown) {
      return out << "text:\n" << shown.text << "json:\n" << shown.json << '\n';
   }
};

template<class Body>
Shown shown(Router const& router, Body&& body) {
   auto const command = router.tunnelCommand();
   auto const inFormat = [&](std::uint32_t format) {
      return rendered(format, [&](scrivo::RendererV2* renderer) { body(*command, renderer); });
   };
   return {inFormat(textFormat), inFormat(jsonFormat)};
}

// An error that has no words, so that its line is short: "Unknown error (100/5) from 10.0.0.1".
inline Rsvp::RsvpErrorWithNode error(std::uint16_t value, std::string_view node = "10.0.0.1") {
   return {100, value, address(node)};
}

inline Rsvp::RsvpPathWithVersion path(std::initializer_list<std::string_view> hopTexts) {
   Rsvp::RsvpPathWithVersion made(1);
   made.hops = hops(hopTexts);
   return made;
}

// The tree of a P2P request to 10.0.0.9.
inline Rsvp::Handle<Rsvp::RsvpLerTree> p2pTree(std::initializer_list<std::string_view> hopTexts) {
   auto tree = Brindle::makeNode<Rsvp::RsvpLerTree>();
   tree->paths.insert(Rsvp::RsvpDstId{address("10.0.0.9")}, path(hopTexts));
   return tree;
}

// A P2P LSP that is up, with its configuration and its status. Its group isn't made.
inline void addLsp(Router& router, Rsvp::RsvpLerLspRequestConfigId const& id, std::uint16_t lspId,
                   std::initializer_list<std::string_view> hopTexts,
                   std::initializer_list<Rsvp::RsvpErrorWithNode> errors = {}) {
   router.lspRequestConfig(id, [&](auto& record) {
      record.bandwidth = 125000;
      record.tree = p2pTree(hopTexts);
   });
   router.lspRequestStatus(id, [&](auto& record) {
      record.lspState = Rsvp::RsvpLerLspState::up;
      record.lspId = lspId;
      for (auto const& each : errors)
         record.errors.set(each, {});
   });
}

// A group that is up on one request, or on two.
inline void addGroup(Router& router, Rsvp::RsvpLerLspRequestConfigId const& active,
                     Rsvp::RsvpLerLspRequestConfigId const& pending = {}) {
   router.lspGroupStatus(active.lspGroupId, [&](auto& record) {
      record.lspGroupState = Rsvp::RsvpLerLspGroupState::up;
      record.activeLspRequestConfigId = active;
      record.pendingLspRequestConfigId = pending;
   });
}

// The tunnel "t" with an explicit primary path "north" and a dynamic, pre-signalled secondary path "south", and the
// status of its instance 1, whose group 0 is the one in use. It has no group yet.
inline Router twoPathRouter() {
   Router router;
   router.tunnelSpec(tunnelId("t"), [](auto& record) {
      record.primaryPathSpecId = pathSpecId("north");
      record.secondaryPathSpecId = pathSpecId("south");
   });
   router.pathSpecConfig(pathSpecId("north"), Rsvp::RsvpLerPathSpecType::explicitPath);
   router.pathSpecConfig(pathSpecId("south"), Rsvp::RsvpLerPathSpecType::dynamicPath);
   router.subTunnelConfig(subTunnelId("t"), [](auto& record) {
      record.primaryPathSpecId = pathSpecId("north");
      record.secondaryPathSpecId = pathSpecId("south");
      record.secondaryPreSignaled = true;
   });
   router.mbbTunnelStatus(mbbId("t", 1), groupId("t", 0, 1));
   return router;
}

} // namespace Tests
