#include "RsvpLer/RsvpLerCliCapi.h"
#include "RsvpLer/frame/Trace.h"
#include "RsvpLer/output/Lines.h"

// What the path computation knows a group by.
//
//       CSPF Path ID: 5                          "cspfPathKeyId":5
//       CSPF Tree ID: 9                          "cspfTreeId":9

namespace Rsvp::Cli {

namespace {

// One of the two kinds of id: the field that holds it, and how it is shown.
struct CspfIdForm {
   std::uint8_t kind;
   std::uint32_t RsvpLerCspfPathKey::*id;
   char const* prefix;
   scrivo::JsonKey key;
};

constexpr CspfIdForm pathIdForm{RsvpLerCspfPathKey::kindPath, &RsvpLerCspfPathKey::pathId,
                                "      CSPF Path ID: ", "cspfPathKeyId"};
constexpr CspfIdForm treeIdForm{RsvpLerCspfPathKey::kindTree, &RsvpLerCspfPathKey::treeId,
                                "      CSPF Tree ID: ", "cspfTreeId"};

void renderCspfId(scrivo::RendererV2* renderer, Handle<RsvpLerCspfPathKeyMapping> const& mapping,
                  RsvpLerLspGroupId const& lspGroupId, CspfIdForm const& form, bool text) {
   auto const pathKey = mapping ? mapping->pathKeyForLspGroupId(lspGroupId) : nullptr;
   if (!pathKey || pathKey->kind != form.kind)
      return;
   std::uint32_t const id = (*pathKey).*form.id;
   addLine(renderer, text, form.prefix, id);
   renderer->addJsonKeyValuePair(form.key, id);
}

} // namespace

void ShowRsvpLerTunnel::renderLspGroupCspfPathKey(scrivo::RendererV2* renderer, RsvpLerLspGroupId const& lspGroupId,
                                                  bool text) const {
   RSVP_LER_TRACE(lspGroupId);
   renderCspfId(renderer, cspfPathKeyMapping(), lspGroupId, pathIdForm, text);
}

void ShowRsvpLerTunnel::renderLspGroupCspfTreeId(scrivo::RendererV2* renderer, RsvpLerLspGroupId const& lspGroupId,
                                                 bool text) const {
   RSVP_LER_TRACE(lspGroupId);
   renderCspfId(renderer, cspfPathKeyMapping(), lspGroupId, treeIdForm, text);
}

} // namespace Rsvp::Cli
