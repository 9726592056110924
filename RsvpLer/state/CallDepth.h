#pragma once

#include <cstdint>

namespace Rsvp {

// How many traced calls the thread is in, shared by all modules of the feature. A command runs on one thread from its
// start to its end, so each thread has a depth of its own: one that several commands at once shared would be that of
// none. The storage class makes an access one instruction, in a shared library too.
extern constinit thread_local std::uint16_t callDepth __attribute__((tls_model("initial-exec")));

} // namespace Rsvp
