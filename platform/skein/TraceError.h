#pragma once

#include "brindle/Exception.h"

namespace Skein {

// A trace file can't be made or read. what() is one line that names the file.
class TraceError : public Brindle::Exception {
public:
   using Exception::Exception;
};

} // namespace Skein
