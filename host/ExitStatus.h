#pragma once

namespace Host {

// What the program leaves behind for its caller.
enum class ExitStatus : int {
   shown = 0,
   failed = 1,       // the state could not be loaded, or the answer not be written
   usage = 2,        // the command line asks for nothing that there is
   interrupted = 130 // the user ended the command
};

} // namespace Host
