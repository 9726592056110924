#include "RsvpLer/lsp/Leaves.h"

#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/lsp/PathHops.h"
#include "RsvpLer/output/RendererV2.h"
#include "RsvpLer/text/EnumText.h"

#include <algorithm>
#include <cstddef>

// The leaves of a tree: plain, detailed, and in JSON, which is the same for both.
//
//       Leaves (dynamic):
//          10.0.0.9 up
//          10.0.0.10 down, removing
//
//       Leaves (dynamic):
//          10.0.0.9 up
//             Path: 10.1.1.2        10.0.0.9
//          10.0.0.10 down, removing
//             Path: Path not found
//
//    "specType":"dynamic",
//    "treeLeaves":{"10.0.0.9":{"state":"up","hops":["10.1.1.2","10.0.0.9"]},"10.0.0.10":{"state":"down"}}

namespace Rsvp::Cli {

namespace {

// An unknown leaf reads as down too, here alone.
char const* leafStateWord(RsvpDstId const& leaf, RsvpLerLspRequestStatus const& status) {
   RsvpLspState const* const state = status.subLspState.valueOf(leaf);
   bool const known = state != nullptr && *state != RsvpLspState::unknown;
   return lspStateToString(known ? *state : RsvpLspState::down);
}

// The line of the leaf and, in the detailed form, the one that stands in the place of a missing path.
void renderLeafText(scrivo::RendererV2* renderer, RsvpDstId const& leaf, char const* stateWord, bool inTree,
                    bool hasHops, bool detailed) {
   renderer->addText("         ", leaf.address);
   renderer->addText(" ", stateWord);
   if (!inTree)
      renderer->addFrill(", removing");
   else if (!hasHops && !detailed)
      renderer->addFrill(", path not found");
   renderer->eol();
   if (!hasHops && detailed)
      renderer->addFrill("            Path: Path not found\n");
}

void renderLeaf(scrivo::RendererV2* renderer, RsvpDstId const& leaf, Handle<RsvpLerLspRequestStatus> const& status,
                Handle<RsvpLerTree> const& tree, bool detailed, bool text) {
   char const* const stateWord = leafStateWord(leaf, *status);
   RsvpPathWithVersion const* const path = tree->paths.valueOf(leaf);
   bool const hasHops = path != nullptr && !path->hops.empty();

   char leafText[Lattice::IpGenAddr::textSize];
   std::size_t const leafTextSize = leaf.address.printToBuffer(leafText, sizeof leafText);
   renderer->startJsonDict(std::string_view(leafText, leafTextSize));
   renderer->addJsonKeyValuePair("state", stateWord);
   if (text)
      renderLeafText(renderer, leaf, stateWord, path != nullptr, hasHops, detailed);
   if (hasHops)
      renderP2mpLeafHops(renderer, path->hops, "            Path: ", "                  ", detailed && text);
   renderer->endJsonDict();
}

// A missing record counts as one without leaves.
void renderLeafList(ShowRsvpLerTunnel const& command, scrivo::RendererV2* renderer,
                    RsvpLerLspRequestConfigId const& lspRequestConfigId, bool detailed, bool text) {
   auto const config = command.getLspRequestConfig(lspRequestConfigId);
   Handle<RsvpLerTree> tree = config ? config->tree : nullptr;
   if (!tree)
      tree = Brindle::makeNode<RsvpLerTree>();
   auto status = command.getLspRequestStatus(lspRequestConfigId);
   if (!status)
      status = Brindle::makeNode<RsvpLerLspRequestStatus>(lspRequestConfigId, RsvpSessionType::p2mp);

   renderer->startJsonDict("treeLeaves");
   for (RsvpDstId const& leaf : getOrderedLeaves(tree, status)) {
      if (detailed)
         command.renderDetailedLeafEntry(renderer, leaf, status, tree, text);
      else
         command.renderLeafEntry(renderer, leaf, status, tree, text);
   }
   renderer->endJsonDict();
}

void renderLeavesHeading(scrivo::RendererV2* renderer, Handle<RsvpLerPathSpecConfig> const& pathSpecConfig, bool text) {
   char const* const typeWord = pathSpecTypeWord(pathSpecConfig);
   if (text) {
      renderer->addText("      Leaves (", typeWord);
      renderer->addFrill("):\n");
   }
   renderer->addJsonKeyValuePair("specType", typeWord);
}

} // namespace

std::vector<RsvpDstId> getOrderedLeaves(Handle<RsvpLerTree> const& tree,
                                        Handle<RsvpLerLspRequestStatus> const& status) {
   RSVP_LER_TRACE();
   std::vector<RsvpDstId> leaves;
   leaves.reserve(tree->paths.size());
   for (auto const& [leaf, path] : tree->paths)
      leaves.push_back(leaf);
   for (auto const& [leaf, state] : status->subLspState) {
      if (!tree->paths.contains(leaf))
         leaves.push_back(leaf);
   }
   std::sort(leaves.begin(), leaves.end());
   return leaves;
}

void ShowRsvpLerTunnel::renderTreeLeaves(scrivo::RendererV2* renderer,
                                         Handle<RsvpLerPathSpecConfig> const& pathSpecConfig,
                                         RsvpLerLspRequestConfigId const& lspRequestConfigId, bool text) const {
   RSVP_LER_TRACE(lspRequestConfigId);
   renderLeavesHeading(renderer, pathSpecConfig, text);
   renderLeaves(renderer, lspRequestConfigId, text);
}

void ShowRsvpLerTunnel::renderDetailedTreeLeaves(scrivo::RendererV2* renderer,
                                                 Handle<RsvpLerPathSpecConfig> const& pathSpecConfig,
                                                 RsvpLerLspRequestConfigId const& lspRequestConfigId, bool text) const {
   RSVP_LER_TRACE(lspRequestConfigId);
   renderLeavesHeading(renderer, pathSpecConfig, text);
   renderDetailedLeaves(renderer, lspRequestConfigId, text);
}

void ShowRsvpLerTunnel::renderLeaves(scrivo::RendererV2* renderer, RsvpLerLspRequestConfigId const& lspRequestConfigId,
                                     bool text) const {
   RSVP_LER_TRACE(lspRequestConfigId);
   renderLeafList(*this, renderer, lspRequestConfigId, false, text);
}

void ShowRsvpLerTunnel::renderDetailedLeaves(scrivo::RendererV2* renderer,
                                             RsvpLerLspRequestConfigId const& lspRequestConfigId, bool text) const {
   RSVP_LER_TRACE(lspRequestConfigId);
   renderLeafList(*this, renderer, lspRequestConfigId, true, text);
}

void ShowRsvpLerTunnel::renderLeafEntry(scrivo::RendererV2* renderer, RsvpDstId const& leaf,
                                        Handle<RsvpLerLspRequestStatus> const& status, Handle<RsvpLerTree> const& tree,
                                        bool text) const {
   RSVP_LER_TRACE();
   renderLeaf(renderer, leaf, status, tree, false, text);
}

void ShowRsvpLerTunnel::renderDetailedLeafEntry(scrivo::RendererV2* renderer, RsvpDstId const& leaf,
                                                Handle<RsvpLerLspRequestStatus> const& status,
                                                Handle<RsvpLerTree> const& tree, bool text) const {
   RSVP_LER_TRACE();
   renderLeaf(renderer, leaf, status, tree, true, text);
}

} // namespace Rsvp::Cli
