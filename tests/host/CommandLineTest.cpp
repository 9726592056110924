#include "host/CommandLine.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

using namespace Host;
using Words = std::vector<std::string>;

ShowTunnelRequest tunnel(Words words) {
   words.insert(words.begin(), "tunnel");
   return std::get<ShowTunnelRequest>(parseCommandLine(words));
}

std::string usageError(Words const& words) {
   try {
      parseCommandLine(words);
      return {};
   } catch (UsageError const& error) {
      return error.what();
   }
}

struct ViewRow {
   Words words;
   bool summary, lsp, detail, history, subTunnel;
};

TEST(CommandLine, views) {
   for (ViewRow const& row : std::vector<ViewRow>{
              {{}, false, false, false, false, false},
              {{"--summary"}, true, false, false, false, false},
              {{"--lsp"}, false, true, false, false, false},
              {{"--detail"}, false, false, true, false, false},
              {{"--history"}, false, false, false, true, false},
              {{"--detail", "--history"}, false, false, true, true, false},
              {{"--history", "--detail"}, false, false, true, true, false},
              {{"--sub-tunnel"}, false, false, false, false, true},
              {{"--summary", "--sub-tunnel"}, true, false, false, false, true},
              {{"--sub-tunnel", "--lsp"}, false, true, false, false, true},
              {{"--sub-tunnel", "--detail", "--history"}, false, false, true, true, true},
        }) {
      ShowTunnelRequest const request = tunnel(row.words);
      EXPECT_EQ(request.summary, row.summary);
      EXPECT_EQ(request.lsp, row.lsp);
      EXPECT_EQ(request.detail, row.detail);
      EXPECT_EQ(request.history, row.history);
      EXPECT_EQ(request.subTunnel, row.subTunnel);
      EXPECT_EQ(request.format, Format::text);
      EXPECT_EQ(request.tunnelName, "");
      EXPECT_EQ(request.source.stateFile, "");
   }
}

TEST(CommandLine, viewsThatExcludeEachOther) {
   Words const options{"--summary", "--lsp", "--detail", "--history"};
   for (unsigned mask = 0; mask < 16; ++mask) {
      Words words{"tunnel"};
      std::string list;
      for (unsigned i = 0; i < 4; ++i) {
         if ((mask >> i & 1) == 0)
            continue;
         words.push_back(options[i]);
         list += (list.empty() ? "" : ", ") + options[i];
      }
      bool const allowed = words.size() <= 2 || mask == 0b1100;
      std::string const error =
            "give one view instead of " + list + " (only --detail goes with --history); see lershow tunnel --help";
      EXPECT_EQ(usageError(words), allowed ? "" : error);
      words.push_back("--sub-tunnel");
      EXPECT_EQ(usageError(words), allowed ? "" : error);
   }
}

TEST(CommandLine, names) {
   for (std::string const name : {"tun1", "", " ", "status", "tunnel", "state", "sample", "{}", "[a,b]", "%%", "a=b",
                                  "-", "\"quoted\"", "a b", "grün", "a\nb", "/x", "help"})
      EXPECT_EQ(tunnel({name, "--json"}).tunnelName, name);
   EXPECT_EQ(tunnel({"--summary", "tun1"}).tunnelName, "tun1");
   EXPECT_EQ(tunnel({"--", "-x"}).tunnelName, "-x");
   EXPECT_EQ(tunnel({"--json", "--", "--help"}).tunnelName, "--help");
}

TEST(CommandLine, formats) {
   EXPECT_EQ(tunnel({"--json"}).format, Format::json);
   EXPECT_EQ(tunnel({"--format", "json"}).format, Format::json);
   EXPECT_EQ(tunnel({"--format=text"}).format, Format::text);
   EXPECT_EQ(tunnel({"--json", "--format", "json"}).format, Format::json);
   EXPECT_EQ(static_cast<std::uint32_t>(Format::text), 1u);
   EXPECT_EQ(static_cast<std::uint32_t>(Format::json), 2u);
   auto const status = std::get<ShowStatusRequest>(parseCommandLine({"status", "--json", "--state", "f.json"}));
   EXPECT_EQ(status.format, Format::json);
   EXPECT_EQ(status.source.stateFile, "f.json");
   EXPECT_EQ(std::get<ShowStatusRequest>(parseCommandLine({"status"})).format, Format::text);
}

TEST(CommandLine, stateFiles) {
   EXPECT_EQ(tunnel({"--state", "f.json"}).source.stateFile, "f.json");
   EXPECT_EQ(tunnel({"--state=f.json", "tun1"}).source.stateFile, "f.json");
   EXPECT_EQ(tunnel({"--state", "-"}).source.stateFile, "-");
   EXPECT_EQ(std::get<CheckRequest>(parseCommandLine({"state", "check", "f.json"})).stateFile, "f.json");
   EXPECT_EQ(std::get<CheckRequest>(parseCommandLine({"state", "check", "-"})).stateFile, "-");
}

TEST(CommandLine, traces) {
   EXPECT_EQ(tunnel({}).trace.file, "");
   EXPECT_FALSE(tunnel({}).trace.text);
   EXPECT_EQ(tunnel({"--trace", "t", "tun1"}).trace.file, "t");
   EXPECT_TRUE(tunnel({"--trace-text"}).trace.text);
   for (Words const& words : std::vector<Words>{{"--trace", "t", "--trace-text", "status"},
                                                {"status", "--trace=t", "--trace-text"},
                                                {"--trace-text", "status", "--trace", "t"},
                                                {"--trace", "s", "status", "--trace", "t", "--trace-text"}}) {
      TraceRequest const trace = std::get<ShowStatusRequest>(parseCommandLine(words)).trace;
      EXPECT_EQ(trace.file, "t");
      EXPECT_TRUE(trace.text);
   }
   EXPECT_EQ(std::get<DumpRequest>(parseCommandLine({"trace", "dump", "t"})).traceFile, "t");
}

TEST(CommandLine, servers) {
   auto const plain = std::get<ServeRequest>(parseCommandLine({"serve", "--socket", "s"}));
   EXPECT_EQ(plain.socketPath, "s");
   EXPECT_EQ(plain.stateFile, "");
   EXPECT_EQ(plain.mode, 0600u);
   EXPECT_EQ(plain.clientTimeout, std::chrono::seconds(30));
   EXPECT_EQ(plain.maxClients, 64u);
   auto const full = std::get<ServeRequest>(parseCommandLine(
         {"serve", "--socket=s", "--state", "f", "--mode", "660", "--client-timeout", "0.25", "--max-clients", "3"}));
   EXPECT_EQ(full.stateFile, "f");
   EXPECT_EQ(full.mode, 0660u);
   EXPECT_EQ(full.clientTimeout, std::chrono::milliseconds(250));
   EXPECT_EQ(full.maxClients, 3u);
   ShowTunnelRequest const asked = tunnel({"--connect", "s", "--watch", "1.5"});
   EXPECT_EQ(asked.source.socketPath, "s");
   EXPECT_EQ(asked.source.watchInterval, std::chrono::milliseconds(1500));
   EXPECT_EQ(tunnel({}).source.watchInterval, std::chrono::milliseconds(0));
}

TEST(CommandLine, writingStates) {
   EXPECT_TRUE(std::holds_alternative<SampleRequest>(parseCommandLine({"state", "sample"})));
   auto const synth = std::get<SynthRequest>(parseCommandLine({"state", "synth", "--tunnels", "010"}));
   EXPECT_EQ(synth.tunnels, 10u);
   EXPECT_EQ(synth.seed, 0u);
   auto const seeded = std::get<SynthRequest>(
         parseCommandLine({"state", "synth", "--seed", "18446744073709551615", "--tunnels=100000000"}));
   EXPECT_EQ(seeded.tunnels, 100000000u);
   EXPECT_EQ(seeded.seed, 18446744073709551615u);
}

TEST(CommandLine, helpAndVersion) {
   EXPECT_EQ(std::get<PrintRequest>(parseCommandLine({"--version"})).text, "lershow " LER_VERSION "\n");
   for (Words const& words : std::vector<Words>{{"--help"}, {"tunnel", "--help"}, {"state", "check", "--help"}})
      EXPECT_NE(std::get<PrintRequest>(parseCommandLine(words)).text.find("Usage: lershow"), std::string::npos);
   std::string const help = std::get<PrintRequest>(parseCommandLine({"tunnel", "--help"})).text;
   for (char const* option : {"NAME", "--summary", "--lsp", "--detail", "--history", "--sub-tunnel", "--format",
                              "--json", "--state FILE", "--connect PATH", "--watch SECONDS"})
      EXPECT_NE(help.find(option), std::string::npos) << option;
}

// The program and the command that the words lead to, whose help a complaint names.
std::string commandOf(Words const& words) {
   std::set<std::string> const commands{
         "lershow tunnel",      "lershow status",       "lershow serve",  "lershow state", "lershow state check",
         "lershow state synth", "lershow state sample", "lershow schema", "lershow trace", "lershow trace dump"};
   std::string command = "lershow";
   for (std::string const& word : words)
      command += commands.contains(command + ' ' + word) ? ' ' + word : "";
   return command;
}

struct ErrorRow {
   Words words;
   std::string message; // without its end
};

TEST(CommandLine, errors) {
   for (ErrorRow const& row : std::vector<ErrorRow>{
              {{}, "give a command: tunnel, status, serve, state, trace or schema"},
              {{"bogus"}, "there is no command 'bogus', only tunnel, status, serve, state, trace and schema"},
              {{"bo\ngus"}, "there is no command 'bo gus', only tunnel, status, serve, state, trace and schema"},
              {{""}, "there is no command '', only tunnel, status, serve, state, trace and schema"},
              {{"Tunnel"}, "there is no command 'Tunnel', only tunnel, status, serve, state, trace and schema"},
              {{"state"}, "state takes sample, synth or check"},
              {{"state", "bogus"}, "state takes sample, synth or check"},
              {{"tunnel", "a", "b"}, "the following argument was not expected: b"},
              {{"tunnel", "--nope"}, "the following argument was not expected: --nope"},
              {{"status", "tun1"}, "the following argument was not expected: tun1"},
              {{"status", "--summary"}, "the following argument was not expected: --summary"},
              {{"tunnel", "--format", "xml"}, "--format takes text or json, not 'xml'"},
              {{"tunnel", "--format", ""}, "--format takes text or json, not ''"},
              {{"status", "--format", "JSON"}, "--format takes text or json, not 'JSON'"},
              {{"tunnel", "--json", "--format", "text"},
               "--json and --format text exclude each other; give one of them"},
              {{"tunnel", "--state"}, "--state: 1 required FILE missing"},
              {{"tunnel", "--state", ""}, "--state takes the name of a file"},
              {{"state", "check"}, "FILE is required"},
              {{"state", "check", ""}, "FILE takes the name of a file"},
              {{"state", "synth"}, "--tunnels is required"},
              {{"state", "synth", "--tunnels", "-1"}, "--tunnels takes a whole number from 0 to 100000000, not '-1'"},
              {{"state", "synth", "--tunnels", "100000001"},
               "--tunnels takes a whole number from 0 to 100000000, not '100000001'"},
              {{"state", "synth", "--tunnels", "1e3"}, "--tunnels takes a whole number from 0 to 100000000, not '1e3'"},
              {{"state", "synth", "--tunnels", "1", "--seed", "x"},
               "--seed takes a whole number from 0 to 18446744073709551615, not 'x'"},
              {{"schema"}, "schema takes tunnel or status"},
              {{"tunnel", "--connect", "s", "--trace", "t"}, "--trace and --trace-text don't go with --connect"},
              {{"status", "--trace-text", "--connect", "s"}, "--trace and --trace-text don't go with --connect"},
              {{"trace"}, "trace takes dump"},
              {{"trace", "bogus"}, "trace takes dump"},
              {{"trace", "dump"}, "FILE is required"},
              {{"--trace", "t", "bogus"},
               "there is no command 'bogus', only tunnel, status, serve, state, trace and schema"},
              {{"--trace-text"}, "give a command: tunnel, status, serve, state, trace or schema"},
              {{"--trace", "t", "state", "sample"}, "--trace and --trace-text go with tunnel and status"},
              {{"tunnel", "--connect", ""}, "--connect takes the name of a file"},
              {{"tunnel", "--connect", "s", "--state", "f"},
               "--state and --connect exclude each other; give one of them"},
              {{"tunnel", "--watch"}, "--watch: 1 required SECONDS missing"},
              {{"status", "--watch", ""}, "--watch takes seconds from 0.1 to 86400, not ''"},
              {{"status", "--watch", "0"}, "--watch takes seconds from 0.1 to 86400, not '0'"},
              {{"tunnel", "--watch", "-1"}, "--watch takes seconds from 0.1 to 86400, not '-1'"},
              {{"tunnel", "--watch", "nan"}, "--watch takes seconds from 0.1 to 86400, not 'nan'"},
              {{"tunnel", "--watch", "5s"}, "--watch takes seconds from 0.1 to 86400, not '5s'"},
              {{"serve"}, "--socket is required"},
              {{"serve", "--socket", ""}, "--socket takes the name of a file"},
              {{"serve", "--socket", "s", "--mode", "8"}, "--mode takes permissions from 0 to 0777, not '8'"},
              {{"serve", "--socket", "s", "--mode", "1000"}, "--mode takes permissions from 0 to 0777, not '1000'"},
              {{"serve", "--socket", "s", "--max-clients", "0"},
               "--max-clients takes a whole number from 1 to 10000, not '0'"},
              {{"serve", "--socket", "s", "--max-clients", "10001"},
               "--max-clients takes a whole number from 1 to 10000, not '10001'"},
              {{"serve", "--socket", "s", "--max-clients", "x"},
               "--max-clients takes a whole number from 1 to 10000, not 'x'"},
              {{"serve", "--socket", "s", "--client-timeout", "0"},
               "--client-timeout takes seconds from 0.1 to 86400, not '0'"},
              {{"serve", "--socket", "s", "--json"}, "the following argument was not expected: --json"},
        })
      EXPECT_EQ(usageError(row.words), row.message + "; see " + commandOf(row.words) + " --help");
}

} // namespace
