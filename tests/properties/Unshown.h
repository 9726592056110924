#pragma once

#include "tests/properties/Document.h"

namespace Tests {

// Throws Disagreement for a value of a tunnel that no line of a detailed view has been held against, but for those that
// JSON alone has.
void requireShown(Json const& document);

} // namespace Tests
