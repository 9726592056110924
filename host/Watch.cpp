#include "host/Watch.h"

#include "vane/Interrupt.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <thread>

namespace Host {

namespace {

using Clock = std::chrono::steady_clock;

void clearTerminal() {
   if (isatty(STDOUT_FILENO) == 0)
      return;
   std::fputs("\033[H\033[2J", stdout);
   std::fflush(stdout);
}

// False when the user interrupts.
bool sleepUntil(Clock::time_point end) {
   for (Clock::time_point now = Clock::now(); now < end; now = Clock::now()) {
      if (Vane::Interrupt::pending())
         return false;
      std::this_thread::sleep_for(std::min<Clock::duration>(end - now, std::chrono::milliseconds(100)));
   }
   return !Vane::Interrupt::pending();
}

} // namespace

ExitStatus watch(std::chrono::milliseconds interval, std::function<ExitStatus()> const& show) {
   if (interval == interval.zero())
      return show();
   for (;;) {
      Clock::time_point const begin = Clock::now();
      clearTerminal();
      ExitStatus const status = show();
      if (status != ExitStatus::shown)
         return status;
      if (!sleepUntil(begin + interval))
         return ExitStatus::interrupted;
   }
}

} // namespace Host
