#include "host/server/Serve.h"

#include "host/CommandModule.h"
#include "host/server/Server.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <utility>

namespace Host {

namespace {

std::atomic<Server*> stoppable = nullptr;

// From here on SIGTERM and SIGINT stop the server.
class StopSignals {
public:
   explicit StopSignals(Server& server) {
      stoppable.store(&server);
      struct sigaction action = {};
      action.sa_handler = [](int) { stoppable.load()->stop(); };
      sigemptyset(&action.sa_mask);
      sigaction(SIGTERM, &action, &beforeTerm_);
      sigaction(SIGINT, &action, &beforeInt_);
   }
   StopSignals(StopSignals const&) = delete;
   StopSignals& operator=(StopSignals const&) = delete;
   ~StopSignals() {
      sigaction(SIGTERM, &beforeTerm_, nullptr);
      sigaction(SIGINT, &beforeInt_, nullptr);
   }

private:
   struct sigaction beforeTerm_;
   struct sigaction beforeInt_;
};

// The show commands say on standard output when a client has gone. A pipe or terminal that nobody reads would make
// them wait.
void keepStandardOutputFromBlocking() {
   struct stat status;
   if (fstat(STDOUT_FILENO, &status) != 0 || !(S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode)))
      return;
   Descriptor const again(open("/proc/self/fd/1", O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
   if (again)
      dup2(again.get(), STDOUT_FILENO);
}

} // namespace

void serve(ServeRequest const& request, RouterState state) {
   CommandModule const module;
   keepStandardOutputFromBlocking();
   Server server({request.socketPath, static_cast<mode_t>(request.mode), request.clientTimeout, request.maxClients},
                 std::move(state));
   StopSignals const signals(server);
   server.run();
}

} // namespace Host
