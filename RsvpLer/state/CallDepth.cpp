#include "RsvpLer/state/CallDepth.h"

namespace Rsvp {

constinit thread_local std::uint16_t callDepth = 0;

} // namespace Rsvp
