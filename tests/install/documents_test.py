"""The manual page and the completion know the whole command line.  usage: documents_test.py PATH_OF_LERSHOW"""

import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

LERSHOW = os.path.abspath(sys.argv.pop())
HOST = Path(__file__).resolve().parents[2] / "host"
PAGE = HOST / "man/lershow.1"
COMPLETION = HOST / "completion/lershow.bash"


def output(*words, env=None):
    done = subprocess.run([str(word) for word in words], stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=60,
                          env=os.environ | (env or {}))
    if done.returncode != 0:
        raise AssertionError(f"{words}: exit status {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout + done.stderr


def command_line(*command):
    """The subcommands below a command with their options, as --help tells them: {("state", "synth"): {"--seed", ...}}."""
    text = output(LERSHOW, *command, "--help")
    found = {command: set(re.findall(r"^ +(--[a-z-]+)", text, re.MULTILINE))}
    below = text.partition("Subcommands:\n")[2]
    for name in re.findall(r"^  ([a-z]+) ", below, re.MULTILINE):
        found |= command_line(*command, name)
    return found


def completions(*words, program=LERSHOW):
    """What is offered for the last of the words behind the name of the program."""
    script = ('source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _lershow 2>/dev/null; '
              'printf "%s\\n" "${COMPREPLY[@]}"')
    return output("bash", "-c", script, "bash", COMPLETION, program, *words).split("\n")[:-1]


class ManualPage(unittest.TestCase):
    def test_lint(self):
        self.assertEqual(output("mandoc", "-T", "lint", PAGE), "")

    def test_every_command_and_option_is_there(self):
        text = output("mandoc", "-T", "utf8", "-O", "width=200", PAGE)
        text = re.sub(".\b", "", text)
        commands = command_line()
        self.assertIn("--summary", commands[("tunnel",)])
        self.assertIn("--seed", commands[("state", "synth")])
        for command, options in commands.items():
            self.assertIn(" ".join(("lershow", *command)), text)
            for option in options:
                self.assertRegex(text, rf"(?m)^ +(lershow [a-z ]+)?{option}\b", command)

    def test_every_exit_status_is_there(self):
        text = PAGE.read_text().partition(".SH EXIT STATUS\n")[2].partition(".SH")[0]
        statuses = re.findall(r"= (\d+)", (HOST / "ExitStatus.h").read_text())
        self.assertEqual(re.findall(r"^\.B (\d+)$", text, re.MULTILINE), statuses)


class Completion(unittest.TestCase):
    def test_every_command_and_option_is_offered(self):
        for command, options in command_line().items():
            if options:
                offered = completions(*command, "--")
                self.assertEqual(options - set(offered), set(), command)
            if command:
                self.assertIn(command[-1], completions(*command), command)

    def test_words_are_completed(self):
        for words, expected in ((["tu"], ["tunnel"]), (["tunnel", "--su"], ["--summary", "--sub-tunnel"]),
                                (["state", "s"], ["sample", "synth"]), (["tunnel", "--format", "j"], ["json"]),
                                (["schema", "st"], ["status"]), (["trace", ""], ["dump", "--help"]),
                                (["state", "synth", "--tunnels", "1"], [""]), (["nonsense", "--"], [""]), (["--trace", "file", "sta"], ["status", "state"]),
                                (["--trace-text", "status", "--j"], ["--json"])):
            with self.subTest(words):
                self.assertEqual(sorted(completions(*words)), sorted(expected))

    def test_tunnels_of_the_sample(self):
        self.assertEqual(completions("tunnel", "den-nyc"), ["den-nyc-2", "den-nyc-10"])

    def test_tunnels_of_the_state_file_with_any_name(self):
        with tempfile.TemporaryDirectory() as directory:
            names = ["plain", "$(touch ran)", "`touch ran`", "a b"]
            rows = ",".join(f'{{"tunnelSpecId":{{"name":"{name}"}}}}' for name in names)
            (Path(directory) / "state.json").write_text(
                '{"rsvpLerFathomStatus":{"superTunnelConfigColl":[' + rows + '],"autoBwConfig":[]},'
                '"rsvpLerStatus":{"superTunnelStatusColl":[' + rows + '],"subTunnelStatusCollTable":[],'
                '"tunnelSpecColl":[],"bwSamplingStatusColl":[],"tunnelIndexMap":[],"autoBwStats":[]}}')
            script = ('cd "$2"; source "$1"; COMP_WORDS=("$3" tunnel "" --state state.json); COMP_CWORD=2; _lershow; '
                      'printf "%s\\n" "${COMPREPLY[@]}"')
            offered = output("bash", "-c", script, "bash", COMPLETION, directory, LERSHOW).splitlines()
            self.assertEqual(sorted(offered), sorted(["plain", r"\$\(touch\ ran\)", r"\`touch\ ran\`", r"a\ b"]))
            self.assertEqual(os.listdir(directory), ["state.json"])

    def test_standard_input_is_left_alone(self):
        script = ('source "$1"; COMP_WORDS=("$2" tunnel --state - ""); COMP_CWORD=4; _lershow; echo "${COMPREPLY[@]}"; cat')
        done = subprocess.run(["bash", "-c", script, "bash", COMPLETION, LERSHOW], input="typed", capture_output=True,
                              text=True, timeout=60)
        self.assertTrue(done.stdout.endswith("\ntyped"), done.stdout)


if __name__ == "__main__":
    unittest.main()
