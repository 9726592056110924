#pragma once

#include "brindle/GenericValue.h"
#include "brindle/String.h"
#include "vane/CharRange.h"

#include <string_view>

// The text form of reflected values: each attribute as <name='text'>, or <name=1> for a number, one behind the other
// with "_" between them. A quote and a backslash in a text have a backslash before them; every other byte stands as it
// is, so that a value has one form.

namespace Brindle {

// Adds an attribute to a text form. Throws Exception for a value that is neither a text, a number nor a bool (0 or 1).
void appendAttribute(String& text, std::string_view name, GenericValue const& value);

// Reads the attribute of that name, which has to be a text and to come next. Throws Exception when it doesn't.
String readTextAttribute(Vane::CharRange& text, std::string_view name);

// Throws Exception when characters are left.
void requireConsumed(Vane::CharRange const& text);

} // namespace Brindle
