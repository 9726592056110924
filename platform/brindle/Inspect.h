#pragma once

#include "brindle/TypeData.h"

#include <initializer_list>
#include <string_view>

// What a caller does who knows types and members by their names. All throw Exception, with the name of the type and the
// member in it, when there is no such type or member and when the request is refused; what an operation itself throws
// passes through.

namespace Brindle {

// The type that a loaded module has announced under its full name.
TypeData const& typeNamed(std::string_view name);

// A new object or value from the arguments of its constructor.
GenericValue construct(TypeData const& type, std::initializer_list<GenericValue> arguments);

GenericValue read(TypeData const& type, GenericValue& object, std::string_view member);
void write(TypeData const& type, GenericValue& object, std::string_view member, GenericValue const& value);
// The result holds nothing when the operation has none.
GenericValue call(TypeData const& type, GenericValue& object, std::string_view operation,
                  std::initializer_list<GenericValue> arguments);

} // namespace Brindle
