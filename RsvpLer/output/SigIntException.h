#pragma once

#include "brindle/Exception.h"

namespace scrivo {

// The answer ends here: what() is "interrupted" when the user asked for it, and "client gone" when it can't
// be delivered any more.
class SigIntException : public Brindle::Exception {
public:
   using Exception::Exception;
};

} // namespace scrivo
