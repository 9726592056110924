#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <utility>
#include <variant>
#include <vector>

// What a command line asks for. Reading one has no effect but its result.

namespace Host {

// The numbers are those that the show commands' render takes.
enum class Format : std::uint32_t { text = 1, json = 2 };

// What is written of the calls of a show command, besides its answer.
struct TraceRequest {
   std::string file;  // a ring of records; empty: none
   bool text = false; // lines on standard error
};

// Where the state that is shown comes from, and how often it is shown.
struct ShowSource {
   std::string stateFile;                      // "-": standard input
   std::string socketPath;                     // of the server to ask; with neither the sample network is shown
   std::chrono::milliseconds watchInterval{0}; // 0: shown once
};

// lershow tunnel. At most one of summary, lsp and the pair of detail and history is asked for.
struct ShowTunnelRequest {
   std::string tunnelName; // empty: all tunnels
   bool summary = false;
   bool lsp = false;
   bool detail = false;
   bool history = false;
   bool subTunnel = false;
   Format format = Format::text;
   ShowSource source;
   TraceRequest trace;
};

// lershow status
struct ShowStatusRequest {
   Format format = Format::text;
   ShowSource source;
   TraceRequest trace;
};

// lershow serve
struct ServeRequest {
   std::string socketPath;
   std::string stateFile; // empty: the sample network; "-": standard input
   std::uint32_t mode = 0600;
   std::chrono::milliseconds clientTimeout = std::chrono::seconds(30);
   std::size_t maxClients = 64;
};

// lershow state sample
struct SampleRequest {};

// lershow state synth
struct SynthRequest {
   std::uint64_t tunnels = 0;
   std::uint64_t seed = 0;
   double damage = 0; // from 0 to 1
};

// lershow state check
struct CheckRequest {
   std::string stateFile; // "-": standard input
};

// lershow trace dump
struct DumpRequest {
   std::string traceFile;
};

// --help, --version and lershow schema
struct PrintRequest {
   std::string text;
};

using Request = std::variant<ShowTunnelRequest, ShowStatusRequest, ServeRequest, SampleRequest, SynthRequest,
                             CheckRequest, DumpRequest, PrintRequest>;

// A command line that asks for nothing that there is. what() is one line that says what to do.
class UsageError : public std::exception {
public:
   explicit UsageError(std::string message) : message_(std::move(message)) {}
   char const* what() const noexcept override { return message_.c_str(); }

private:
   std::string message_;
};

// Reads the words behind the name of the program. Throws UsageError.
Request parseCommandLine(std::vector<std::string> const& words);

} // namespace Host
