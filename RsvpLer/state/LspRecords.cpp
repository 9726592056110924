#include "RsvpLer/state/LspRecords.h"

namespace Rsvp {

RsvpPathWithVersion RsvpLerTree::p2pPath() const {
   return paths.empty() ? RsvpPathWithVersion(0) : paths.begin()->value;
}

} // namespace Rsvp
