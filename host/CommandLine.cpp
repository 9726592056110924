#include "host/CommandLine.h"

#include "host/OptionValues.h"
#include "host/schema/ViewSchema.h"
#include "host/synth/Synth.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <limits>
#include <optional>

namespace Host {

namespace {

// What the options are read into. A number stays text until the whole line has been read.
struct Values {
   ShowTunnelRequest tunnel;
   ShowStatusRequest status;
   std::optional<std::string> format;
   bool json = false;
   std::optional<std::string> stateFile;
   std::optional<std::string> connect;
   std::optional<std::string> watch;
   std::string socket;
   std::string mode = "0600";
   std::string clientTimeout = "30";
   std::string maxClients = "64";
   std::string tunnels;
   std::string seed = "0";
   std::string damage = "0";
   std::optional<std::string> traceFile;
   bool traceText = false;
};

Format readFormat(Values const& values) {
   if (values.format && values.format != "text" && values.format != "json")
      failUsage("--format takes text or json, not '" + *values.format + "'");
   if (values.json && values.format == "text")
      failUsage("--json and --format text exclude each other; give one of them");
   return values.json || values.format == "json" ? Format::json : Format::text;
}

ShowSource readSource(Values const& values) {
   ShowSource source;
   source.stateFile = readFileName("--state", values.stateFile);
   source.socketPath = readFileName("--connect", values.connect);
   if (values.stateFile && values.connect)
      failUsage("--state and --connect exclude each other; give one of them");
   if (values.watch)
      source.watchInterval = readSeconds("--watch", *values.watch);
   return source;
}

ServeRequest readServe(Values const& values) {
   ServeRequest request;
   request.socketPath = readFileName("--socket", values.socket);
   request.stateFile = readFileName("--state", values.stateFile);
   request.mode = readMode("--mode", values.mode);
   request.clientTimeout = readSeconds("--client-timeout", values.clientTimeout);
   request.maxClients = readNumber("--max-clients", values.maxClients, 1, 10000);
   return request;
}

// The history may be asked for in detail; any other two views exclude each other.
void checkViews(ShowTunnelRequest const& request) {
   std::string views;
   int count = 0;
   auto const add = [&](bool asked, char const* option) {
      if (asked)
         views.append(count++ == 0 ? "" : ", ").append(option);
   };
   add(request.summary, "--summary");
   add(request.lsp, "--lsp");
   add(request.detail, "--detail");
   add(request.history, "--history");
   if (count > 2 || (count == 2 && !(request.detail && request.history)))
      failUsage("give one view instead of " + views + " (only --detail goes with --history)");
}

// They may stand before the command too.
void addTraceOptions(CLI::App& command, Values& values) {
   command.add_option("--trace", values.traceFile, "write a trace of the calls of tunnel or status, for trace dump")
         ->type_name("FILE");
   command.add_flag("--trace-text", values.traceText, "write the calls to standard error");
}

void addOutputOptions(CLI::App& command, Values& values) {
   command.add_option("--format", values.format, "text (default) or json")->type_name("FORMAT");
   command.add_flag("--json", values.json, "short for --format json");
   command
         .add_option("--state", values.stateFile, "state to show, - for standard input; without it the sample network")
         ->type_name("FILE");
   addTraceOptions(command, values);
   command.add_option("--connect", values.connect, "ask the server at this socket instead")->type_name("PATH");
   command.add_option("--watch", values.watch, "show it again and again, this many seconds apart")
         ->type_name("SECONDS");
}

CLI::App& addServe(CLI::App& app, Values& values) {
   CLI::App& command = *app.add_subcommand("serve", "Serve the views of a live router, and take changes of its state");
   command.add_option("--socket", values.socket, "the Unix socket to serve at")->required()->type_name("PATH");
   command
         .add_option("--state", values.stateFile,
                     "state to begin with, - for standard input; without it the sample network")
         ->type_name("FILE");
   command.add_option("--mode", values.mode, "permissions of the socket (0600)")->type_name("OCTAL");
   command
         .add_option("--client-timeout", values.clientTimeout,
                     "how long a client may stand still, in a request, an answer or a fed line (30)")
         ->type_name("SECONDS");
   command.add_option("--max-clients", values.maxClients, "connections at once (64)")->type_name("N");
   return command;
}

CLI::App& addTunnel(CLI::App& app, Values& values) {
   CLI::App& command = *app.add_subcommand("tunnel", "Show tunnels");
   ShowTunnelRequest& request = values.tunnel;
   command.add_option("NAME", request.tunnelName, "the tunnel of exactly this name; without it, or empty, all")
         ->type_name("");
   command.add_flag("--summary", request.summary, "one line a tunnel");
   command.add_flag("--lsp", request.lsp, "the LSPs of each tunnel");
   command.add_flag("--detail", request.detail, "everything about each tunnel; goes with --history too");
   command.add_flag("--history", request.history, "the events of each tunnel");
   command.add_flag("--sub-tunnel", request.subTunnel, "split tunnels only, with their sub-tunnels");
   addOutputOptions(command, values);
   return command;
}

CLI::App& addStatus(CLI::App& app, Values& values) {
   CLI::App& command = *app.add_subcommand("status", "Show the router-wide status");
   addOutputOptions(command, values);
   return command;
}

// The words that stand behind a command.
std::string listed(CLI::App const& command, std::string const& conjunction) {
   std::vector<CLI::App const*> const commands = command.get_subcommands([](CLI::App const*) { return true; });
   std::string names = commands.front()->get_name();
   for (std::size_t i = 1; i < commands.size(); ++i)
      names.append(i + 1 == commands.size() ? " " + conjunction + " " : ", ").append(commands[i]->get_name());
   return names;
}

// The command of the line that needs a word behind it and hasn't got it, or null.
CLI::App const* commandInNeed(CLI::App const& app) {
   CLI::App const* command = &app;
   while (!command->get_subcommands().empty())
      command = command->get_subcommands().front();
   return command->get_require_subcommand_min() == 0 ? nullptr : command;
}

[[noreturn]] void failCommand(CLI::App const& app, CLI::App const& command) {
   if (&command != &app)
      failUsage(command.get_name() + " takes " + listed(command, "or"));
   std::vector<std::string> const words = app.remaining();
   if (words.empty())
      failUsage("give a command: " + listed(app, "or"));
   failUsage("there is no command '" + words.front() + "', only " + listed(app, "and"));
}

// The calls of a server are its own.
TraceRequest readTrace(Values const& values) {
   if (values.connect && (values.traceFile || values.traceText))
      failUsage("--trace and --trace-text don't go with --connect");
   return {readFileName("--trace", values.traceFile), values.traceText};
}

std::string inLowerCase(std::string message) {
   if (message.size() > 1 && message[0] >= 'A' && message[0] <= 'Z' && message[1] >= 'a')
      message[0] = static_cast<char>(message[0] - 'A' + 'a');
   return message;
}

std::vector<std::string> reversed(std::vector<std::string> words) {
   std::reverse(words.begin(), words.end());
   return words;
}

// The program and the command that the line has come to: "lershow state check".
std::string commandOf(CLI::App const& app) {
   std::string words = app.get_name();
   for (CLI::App const* command = &app; !command->get_subcommands().empty();) {
      command = command->get_subcommands().front();
      words += ' ' + command->get_name();
   }
   return words;
}

// The complaints are without their end, which tells where help is.
Request readRequest(CLI::App& app, std::vector<std::string> const& words) {
   Values values;
   app.set_help_flag("--help", "Print this and end");
   app.set_version_flag("--version", "lershow " LER_VERSION);
   app.require_subcommand(1);
   CLI::App const& tunnel = addTunnel(app, values);
   CLI::App const& status = addStatus(app, values);
   CLI::App const& serve = addServe(app, values);
   CLI::App& state = *app.add_subcommand("state", "Write or check state files");
   state.require_subcommand(1);
   CLI::App const& sample = *state.add_subcommand("sample", "Write the state of the sample network");
   CLI::App& synth = *state.add_subcommand("synth", "Write a large made-up state");
   synth.add_option("--tunnels", values.tunnels, "how many tunnels")->required()->type_name("N");
   synth.add_option("--seed", values.seed, "another number gives another state (0)")->type_name("S");
   synth.add_option("--damage", values.damage, "leave out and change so much of it, from 0 (nothing) to 1")
         ->type_name("RATE");
   CLI::App& check = *state.add_subcommand("check", "Load a state and say what it holds");
   check.add_option("FILE", values.stateFile, "- for standard input")->required()->type_name("");
   addTraceOptions(app, values);
   CLI::App& trace = *app.add_subcommand("trace", "Show what --trace has written");
   trace.require_subcommand(1);
   CLI::App& dump = *trace.add_subcommand("dump", "Print the traced calls in order");
   dump.add_option("FILE", values.traceFile, "the trace")->required()->type_name("");
   CLI::App& schema = *app.add_subcommand("schema", "Print the JSON Schema of the JSON views");
   schema.require_subcommand(1);
   CLI::App const& schemaOfTunnel = *schema.add_subcommand("tunnel", "That of every tunnel view");
   schema.add_subcommand("status", "That of the status view");

   try {
      app.parse(reversed(words));
   } catch (CLI::CallForHelp const&) {
      return PrintRequest{app.help()};
   } catch (CLI::CallForVersion const& version) {
      return PrintRequest{std::string(version.what()) + '\n'};
   } catch (CLI::RequiredError const& error) {
      if (CLI::App const* const command = commandInNeed(app))
         failCommand(app, *command);
      failUsage(error.what());
   } catch (CLI::ParseError const& error) {
      failUsage(inLowerCase(error.what()));
   }

   if (tunnel.parsed()) {
      values.tunnel.format = readFormat(values);
      values.tunnel.source = readSource(values);
      values.tunnel.trace = readTrace(values);
      checkViews(values.tunnel);
      return values.tunnel;
   }
   if (status.parsed()) {
      values.status.format = readFormat(values);
      values.status.source = readSource(values);
      values.status.trace = readTrace(values);
      return values.status;
   }
   if (app.count("--trace") + app.count("--trace-text") != 0)
      failUsage("--trace and --trace-text go with tunnel and status");
   if (serve.parsed())
      return readServe(values);
   if (dump.parsed())
      return DumpRequest{readFileName("FILE", values.traceFile)};
   if (schema.parsed())
      return PrintRequest{std::string(schemaOfTunnel.parsed() ? tunnelSchema() : statusSchema())};
   if (sample.parsed())
      return SampleRequest();
   if (synth.parsed())
      return SynthRequest{readNumber("--tunnels", values.tunnels, 0, maxSynthTunnels),
                          readNumber("--seed", values.seed, 0, std::numeric_limits<std::uint64_t>::max()),
                          readShare("--damage", values.damage)};
   return CheckRequest{readFileName("FILE", values.stateFile)};
}

} // namespace

Request parseCommandLine(std::vector<std::string> const& words) {
   CLI::App app("Shows the tunnels and the status of an RSVP-TE label edge router from a state file, or from a "
                "router that is served.",
                "lershow");
   try {
      return readRequest(app, words);
   } catch (UsageError const& error) {
      throw UsageError(std::string(error.what()) + "; see " + commandOf(app) + " --help");
   }
}

} // namespace Host
