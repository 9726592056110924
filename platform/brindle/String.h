#pragma once

#include <string>

namespace Brindle {

// A string of the command's own memory.
using String = std::string;

} // namespace Brindle
