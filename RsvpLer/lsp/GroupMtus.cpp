#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/RendererV2.h"

#include <map>
#include <string_view>

// The MTUs of a group, in bytes; none where the feature doesn't signal MTUs. A P2P path has one interface, a tree
// several:
//
//       Path MTU: 1500 bytes (not matching interface MTU)       "pathMtu":1500,
//       Interface MTU: 9000 bytes                               "intfMtu":9000
//
//       Path MTU: 1500 bytes                                    "pathMtu":1500,
//       Interface MTU:                                          "intfMtus":{"eth1":9000,
//          eth1: 9000 bytes (not matching path MTU)                         "eth2":1500}
//          eth2: 1500 bytes
//          eth3: -

namespace Rsvp::Cli {

namespace {

using Mtu = Vane::Optional<std::uint32_t>;
using NextHops = Vane::FlatMap<Lattice::IpGenAddr, RsvpNextHopInfo>;

bool signalsMtu(Handle<RsvpCliConfig> const& config) {
   return config && config->mtuSignalingEnabled;
}

// One MTU without a line end: the prefix, and then the value with its unit or what stands for a missing one.
void renderMtu(scrivo::RendererV2* renderer, std::string_view prefix, Mtu mtu, char const* missing) {
   if (mtu.hasValue()) {
      renderer->addText(prefix, mtu.value());
      renderer->addFrill(" bytes");
   } else {
      renderer->addText(prefix, missing);
   }
}

bool areDifferent(Mtu a, Mtu b) {
   return a.hasValue() && b.hasValue() && a != b;
}

void renderMtuPairText(scrivo::RendererV2* renderer, Mtu pathMtu, Mtu intfMtu) {
   renderMtu(renderer, "      Path MTU: ", pathMtu, "-");
   if (areDifferent(pathMtu, intfMtu))
      renderer->addFrill(" (not matching interface MTU)");
   renderer->eol();
   // The two missing values look different, and are meant to.
   renderMtu(renderer, "      Interface MTU: ", intfMtu, "?");
   renderer->eol();
}

// Every interface once, in plain string order of the names; of one that stands at several next hops the last MTU.
void renderIntfMtusText(scrivo::RendererV2* renderer, NextHops const& nextHops, Mtu pathMtu) {
   std::map<std::string_view, Mtu> mtuOfIntf;
   for (auto const& [address, info] : nextHops)
      mtuOfIntf[info.intfId.name().view()] = info.intfMtu;
   renderer->addFrill("      Interface MTU:\n");
   for (auto const& [name, mtu] : mtuOfIntf) {
      renderer->addText("         ", name);
      renderMtu(renderer, ": ", mtu, "-");
      if (areDifferent(pathMtu, mtu))
         renderer->addFrill(" (not matching path MTU)");
      renderer->eol();
   }
}

// Only what is known, one member for each next hop.
void renderIntfMtusJson(scrivo::RendererV2* renderer, NextHops const& nextHops) {
   renderer->startJsonDict("intfMtus");
   for (auto const& [address, info] : nextHops) {
      if (info.intfMtu.hasValue() && !info.intfId.name().empty())
         renderer->addJsonKeyValuePair(info.intfId.name(), info.intfMtu.value());
   }
   renderer->endJsonDict();
}

} // namespace

void ShowRsvpLerTunnel::renderLspGroupMtuInfo(scrivo::RendererV2* renderer, Handle<RsvpLerLspGroupStatus> const& group,
                                              bool text) const {
   RSVP_LER_TRACE();
   if (!group || !signalsMtu(rsvpCliConfig))
      return;
   Mtu const pathMtu = group->pathMtu;
   Mtu const intfMtu = group->nextHop.empty() ? Mtu() : group->nextHop.begin()->value.intfMtu;
   if (pathMtu.hasValue())
      renderer->addJsonKeyValuePair("pathMtu", pathMtu.value());
   if (intfMtu.hasValue())
      renderer->addJsonKeyValuePair("intfMtu", intfMtu.value());
   if (text)
      renderMtuPairText(renderer, pathMtu, intfMtu);
}

void ShowRsvpLerTunnel::renderP2mpLspGroupPathMtus(scrivo::RendererV2* renderer,
                                                   Handle<RsvpLerLspGroupStatus> const& group, bool text) const {
   RSVP_LER_TRACE();
   if (!group || !signalsMtu(rsvpCliConfig))
      return;
   if (group->pathMtu.hasValue()) {
      renderer->addJsonKeyValuePair("pathMtu", group->pathMtu.value());
      if (text) {
         renderMtu(renderer, "      Path MTU: ", group->pathMtu, "-");
         renderer->eol();
      }
   }
   if (group->nextHop.empty())
      return;
   renderIntfMtusJson(renderer, group->nextHop);
   // The sort is of use to the text format alone.
   if (text && renderer->isText())
      renderIntfMtusText(renderer, group->nextHop, group->pathMtu);
}

} // namespace Rsvp::Cli
