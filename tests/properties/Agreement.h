#pragma once

#include "tests/properties/Document.h"
#include "tests/properties/Lines.h"

#include <set>
#include <string_view>

namespace Tests {

// Reads a text view against the JSON of the same state, value by value and to the last byte, and throws Disagreement at
// the first place that doesn't follow from it. Requires of the views that show everything that they do. Adds to `seen`
// the lines that it met.
void requireAgreement(View const& view, std::string_view text, Json const& document, std::set<Line const*>& seen);

// The same for the status view.
void requireStatusAgreement(std::string_view text, Json const& document);

} // namespace Tests
