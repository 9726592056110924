#include "host/CommandLine.h"
#include "host/CommandModule.h"
#include "host/ExitStatus.h"
#include "host/Show.h"
#include "host/Watch.h"
#include "host/sample/Sample.h"
#include "host/server/Client.h"
#include "host/server/Serve.h"
#include "host/server/ServerError.h"
#include "host/server/ViewRequest.h"
#include "host/state/LoadState.h"
#include "host/state/SourceText.h"
#include "host/state/StateError.h"
#include "host/state/StateSummary.h"
#include "host/synth/Synth.h"
#include "host/trace/Dump.h"
#include "host/trace/Tracing.h"
#include "skein/TraceError.h"
#include "vane/Interrupt.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>
#include <system_error>

namespace Host {

namespace {

void complain(std::string_view message) {
   std::fprintf(stderr, "lershow: %s\n", inOneLine(message).c_str());
}

ExitStatus writeFailed(int error) {
   complain(std::string("cannot write to standard output: ") + std::strerror(error));
   return ExitStatus::failed;
}

// Whether everything that was written to standard output has arrived there. To be called when errno still is what a
// failed write left.
ExitStatus flushed() {
   int const errorBefore = std::ferror(stdout) != 0 ? errno : 0;
   if (std::fflush(stdout) != 0)
      return writeFailed(errno);
   return std::ferror(stdout) != 0 ? writeFailed(errorBefore) : ExitStatus::shown;
}

ExitStatus print(std::string_view text) {
   std::fwrite(text.data(), 1, text.size(), stdout);
   return flushed();
}

void warnOfMissingTables(std::string const& fileName, RouterState const& state) {
   std::string names;
   for (std::string_view const name : missingTables(state))
      names.append(names.empty() ? "" : ", ").append(name);
   if (!names.empty())
      complain(fileName + ": warning: no tunnel can be shown without " + names);
}

RouterState load(std::string const& fileName) {
   RouterState state = loadState(fileName, StateText::read(fileName));
   warnOfMissingTables(shownFileName(fileName), state);
   return state;
}

RouterState loadOrSample(std::string const& fileName) {
   return fileName.empty() ? loadState("sample.json", StateText(sampleState())) : load(fileName);
}

// From here on the user's interrupt ends the answer and not the process; calls that wait return.
void catchInterrupt() {
   struct sigaction action = {};
   action.sa_handler = [](int) { Vane::Interrupt::request(); };
   sigemptyset(&action.sa_mask);
   sigaction(SIGINT, &action, nullptr);
}

ExitStatus afterShow() {
   ExitStatus const status = Vane::Interrupt::pending() ? ExitStatus::interrupted : ExitStatus::shown;
   return status == ExitStatus::shown ? flushed() : status;
}

void show(ShowTunnelRequest const& request, RouterState const& state) {
   showTunnels(request, state, STDOUT_FILENO);
}

void show(ShowStatusRequest const& request, RouterState const& state) {
   showStatus(request, state, STDOUT_FILENO);
}

template<class ViewRequest>
ExitStatus askAndShow(ViewRequest const& request) {
   std::string const line = requestLine(request);
   catchInterrupt();
   return watch(request.source.watchInterval,
                [&] { return askServer(request.source.socketPath, line, request.format, mayBeEmpty(request)); });
}

// A file is read again each time that it is shown.
template<class ViewRequest>
ExitStatus loadAndShow(ViewRequest const& request) {
   std::string const& fileName = request.source.stateFile;
   RouterState state = loadOrSample(fileName);
   Tracing const tracing(request.trace);
   CommandModule const module;
   catchInterrupt();
   bool isCurrent = true;
   return watch(request.source.watchInterval, [&] {
      if (!isCurrent)
         state = load(fileName);
      isCurrent = fileName.empty() || fileName == "-";
      setClocks(state);
      show(request, state);
      return afterShow();
   });
}

ExitStatus run(ShowTunnelRequest const& request) {
   return request.source.socketPath.empty() ? loadAndShow(request) : askAndShow(request);
}

ExitStatus run(ShowStatusRequest const& request) {
   return request.source.socketPath.empty() ? loadAndShow(request) : askAndShow(request);
}

ExitStatus run(ServeRequest const& request) {
   serve(request, loadOrSample(request.stateFile));
   return ExitStatus::shown;
}

ExitStatus run(SampleRequest const&) {
   return print(sampleState());
}

ExitStatus run(SynthRequest const& request) {
   int const error = writeSynth(stdout, {request.tunnels, request.seed, request.damage});
   return error == 0 ? ExitStatus::shown : writeFailed(error);
}

ExitStatus run(CheckRequest const& request) {
   RouterState const state = load(request.stateFile);
   return print(shownFileName(request.stateFile) + ": " + summaryText(state) + '\n');
}

ExitStatus run(DumpRequest const& request) {
   std::uint64_t const skipped = dumpTrace(request.traceFile, stdout);
   ExitStatus const status = flushed();
   if (skipped != 0)
      complain(request.traceFile + ": warning: " + std::to_string(skipped) + " calls found no room in the trace");
   return status;
}

ExitStatus run(PrintRequest const& request) {
   return print(request.text);
}

ExitStatus runWords(std::vector<std::string> const& words) {
   try {
      Request const request = parseCommandLine(words);
      // Without it the state file would be opened in its place.
      if (fcntl(STDOUT_FILENO, F_GETFD) < 0)
         return writeFailed(errno);
      return std::visit([](auto const& one) { return run(one); }, request);
   } catch (UsageError const& error) {
      complain(error.what());
      return ExitStatus::usage;
   } catch (StateError const& error) {
      complain(error.what());
   } catch (ModuleError const& error) {
      complain(error.what());
   } catch (Skein::TraceError const& error) {
      complain(error.what());
   } catch (ServerError const& error) {
      complain(error.what());
   } catch (std::system_error const& error) {
      return writeFailed(error.code().value());
   } catch (std::bad_alloc const&) {
      complain("not enough memory for this state");
   }
   return ExitStatus::failed;
}

} // namespace

} // namespace Host

// Read by jemalloc: pages that are free go back to the system at once, and don't stay with the thread of the answer
// that they were for.
extern "C" {
char const* malloc_conf = "dirty_decay_ms:0";
}

int main(int argc, char** argv) {
   std::signal(SIGPIPE, SIG_IGN);
   return static_cast<int>(Host::runWords({argv + (argc > 0 ? 1 : 0), argv + argc}));
}
