"""Runs the program and compares what it says and how it ends.  usage: cli.py PATH_OF_LERSHOW"""

import os
import pty
import shutil
import subprocess
import tempfile
import time
import unittest

from program import LERSHOW, interrupted, lershow

EIGHT = ("superTunnelConfigColl, superTunnelStatusColl, subTunnelStatusCollTable, tunnelSpecColl, "
         "bwSamplingStatusColl, tunnelIndexMap, autoBwConfig, autoBwStats")


class StateFile:
    """A temporary file with this text; its name is the value of the with statement."""

    def __init__(self, text):
        self.text = text if isinstance(text, bytes) else text.encode()

    def __enter__(self):
        self.file = tempfile.NamedTemporaryFile(suffix=".json")
        self.file.write(self.text)
        self.file.flush()
        return self.file.name

    def __exit__(self, *_):
        self.file.close()


class CommandLine(unittest.TestCase):
    def test_version(self):
        status, out, err = lershow("--version")
        self.assertEqual((status, err), (0, ""))
        self.assertRegex(out, r"\Alershow \d+\.\d+\.\d+\n\Z")

    def test_help(self):
        for words in (["--help"], ["tunnel", "--help"], ["state", "synth", "--help"]):
            status, out, err = lershow(*words)
            self.assertEqual((status, err), (0, ""))
            self.assertIn("Usage: lershow", out)

    def test_usage_errors(self):
        for words, message, command in (
                ([], "give a command: tunnel, status, serve, state, trace or schema", "lershow"),
                (["show"], "there is no command 'show', only tunnel, status, serve, state, trace and schema", "lershow"),
                (["tunnel", "--summary", "--history"],
                 "give one view instead of --summary, --history (only --detail goes with --history)", "lershow tunnel"),
                (["tunnel", "a", "b"], "the following argument was not expected: b", "lershow tunnel"),
                (["status", "--format", "yaml"], "--format takes text or json, not 'yaml'", "lershow status"),
                (["state", "check"], "FILE is required", "lershow state check"),
                (["schema"], "schema takes tunnel or status", "lershow schema"),
                (["schema", "state"], "schema takes tunnel or status", "lershow schema"),
        ):
            with self.subTest(words):
                self.assertEqual(lershow(*words), (2, "", f"lershow: {message}; see {command} --help\n"))

    def test_usage_is_judged_before_the_state_is_read(self):
        self.assertEqual(lershow("tunnel", "--lsp", "--detail", "--state", "/nonexistent")[0], 2)


class Loading(unittest.TestCase):
    def test_unreadable_files(self):
        with tempfile.TemporaryDirectory() as directory:
            for name, reason in ((directory + "/none.json", "No such file or directory"), (directory, "Is a directory")):
                for words in (["tunnel", "--state", name], ["status", "--state", name], ["state", "check", name]):
                    with self.subTest(words):
                        self.assertEqual(lershow(*words), (1, "", f"lershow: cannot read {name}: {reason}\n"))

    def test_malformed_files_show_nothing(self):
        cases = {
            b"": "1:1: expected an object, found the end of the file",
            b"\0\0": "1:1: expected an object, found \\x00",
            b"\xef\xbb\xbf{}": "1:1: expected an object, found a byte order mark",
            b"{\"rsvpLerStatus\":\n{\"tunnelIndexMap\": [{\"tunnelSpecId\": {}, \"tunnelIndex\": -1}]}}":
                "2:57: rsvpLerStatus.tunnelIndexMap[0].tunnelIndex: expected a whole number from 0 to 4294967295, "
                "found -1",
            b"{\"rsvpLerStatus\":" + 10000 * b"[" + 10000 * b"]" + b"}":
                "1:18: rsvpLerStatus: expected an object, found an array",
            b"{\"rsvpCliConfig\": {\"mtuSignalingEnabled\": true}":
                "1:48: expected the next member or the end of the object, found the end of the file",
            b"{\"\xff\": 1}": "1:3: expected UTF-8 text, found \\xff",
            b"{\"clock\": {}} trailing {}": "1:15: expected the end of the file, found trailing",
        }
        for text, message in cases.items():
            with self.subTest(text[:60]), StateFile(text) as name:
                for words in (["tunnel", "--state", name], ["status", "--json", "--state", name],
                              ["state", "check", name]):
                    self.assertEqual(lershow(*words), (1, "", f"lershow: {name}:{message}\n"))
                self.assertEqual(lershow("state", "check", "-", stdin=text),
                                 (1, "", f"lershow: standard input:{message}\n"))

    def test_every_prefix_of_the_sample(self):
        sample = lershow("state", "sample")[1].encode()
        end = len(sample.rstrip())
        for length in list(range(0, end, end // 40)) + [end - 1]:
            status, out, err = lershow("state", "check", "-", stdin=sample[:length])
            self.assertEqual((status, out), (1, ""), length)
            self.assertRegex(err, r"\Alershow: standard input:\d+:\d+: [ -~]+\n\Z")

    def test_warning(self):
        with StateFile("{}") as name:
            warning = f"lershow: {name}: warning: no tunnel can be shown without {EIGHT}\n"
            self.assertEqual(lershow("tunnel", "--state", name), (0, "", warning))
            self.assertEqual(lershow("tunnel", "--json", "--state", name), (0, '{"tunnels":{}}\n', warning))
            self.assertEqual(lershow("status", "--state", name)[::2], (0, warning))
            self.assertEqual(lershow("state", "check", name)[::2], (0, warning))
        with StateFile('{"rsvpLerFathomStatus": {"superTunnelConfigColl": []}, "rsvpLerStatus": {"superTunnelStatusColl": [],'
                       '"subTunnelStatusCollTable": [], "tunnelSpecColl": [], "bwSamplingStatusColl": [],'
                       '"tunnelIndexMap": [], "autoBwStats": []}}') as name:
            self.assertEqual(lershow("tunnel", "--state", name),
                             (0, "", f"lershow: {name}: warning: no tunnel can be shown without autoBwConfig\n"))

    def test_check(self):
        status, sample, err = lershow("state", "sample")
        self.assertEqual((status, err), (0, ""))
        with StateFile(sample) as name:
            status, out, err = lershow("state", "check", name)
            self.assertEqual((status, err), (0, ""))
            self.assertEqual(out.count("\n"), 1)
            self.assertTrue(out.startswith(name + ": 13 tunnels (11 P2P, 2 P2MP; "), out)

    def test_synthetic_state_loads(self):
        status, text, err = lershow("state", "synth", "--tunnels", "50", "--seed", "3")
        self.assertEqual((status, err), (0, ""))
        status, out, err = lershow("state", "check", "-", stdin=text.encode())
        self.assertEqual((status, err), (0, ""))
        self.assertTrue(out.startswith("standard input: 50 tunnels ("), out)


class Showing(unittest.TestCase):
    def test_the_sample_is_the_default(self):
        sample = lershow("state", "sample")[1]
        for words in (["tunnel"], ["tunnel", "--summary"], ["tunnel", "--detail", "--history", "--json"], ["status"]):
            with self.subTest(words):
                shown = lershow(*words)
                self.assertEqual((shown[0], shown[2]), (0, ""))
                self.assertNotEqual(shown[1], "")
                self.assertEqual(lershow(*words, "--state", "-", stdin=sample.encode()), shown)

    def test_the_clock_of_a_file_stands_still(self):
        shown = lershow("tunnel", "--detail")
        time.sleep(1.1)
        self.assertEqual(lershow("tunnel", "--detail"), shown)

    def test_filter(self):
        everything = lershow("tunnel", "--json")[1]
        self.assertEqual(lershow("tunnel", "", "--json"), (0, everything, ""))
        one = lershow("tunnel", "den-nyc-2", "--json")[1]
        self.assertTrue(one.startswith('{"tunnels":{"den-nyc-2":{'), one[:60])
        self.assertEqual(one.count('"configSource"'), 1)
        for absent in ("DEN-NYC-2", "den-nyc", "status", "{}"):
            self.assertEqual(lershow("tunnel", absent, "--json"), (0, '{"tunnels":{}}\n', ""))


class WithoutShowCommands(unittest.TestCase):
    """The library of the show commands is looked for beside that of the records."""

    def setUp(self):
        self.directory = tempfile.TemporaryDirectory()
        self.addCleanup(self.directory.cleanup)
        listing = subprocess.run(["ldd", LERSHOW], stdout=subprocess.PIPE, check=True).stdout.decode()
        self.libraries = {}
        for name in ("libRsvpLerState", "libm"):
            line = next(line for line in listing.splitlines() if line.strip().startswith(name + ".so"))
            self.libraries[name] = line.split("=> ")[1].split(" (")[0]
        records = self.libraries["libRsvpLerState"]
        shutil.copy(records, os.path.join(self.directory.name, os.path.basename(records)))
        module = os.path.basename(records).replace("libRsvpLerState", "libRsvpLerCliCapi")  # of one version
        self.module = os.path.join(self.directory.name, module)

    def run_command(self, *words):
        return lershow(*words, env=os.environ | {"LD_LIBRARY_PATH": self.directory.name})

    def test_no_library(self):
        expected = (f"lershow: cannot load the show commands: {self.module}: cannot open shared object file: "
                    "No such file or directory\n")
        for command in ("tunnel", "status"):
            self.assertEqual(self.run_command(command), (1, "", expected))

    def test_no_shared_object(self):
        with open(self.module, "w") as file:
            file.write("text")
        self.assertEqual(self.run_command("status"),
                         (1, "", f"lershow: cannot load the show commands: {self.module}: file too short\n"))

    def test_another_library(self):
        shutil.copy(self.libraries["libm"], self.module)
        self.assertEqual(self.run_command("status"),
                         (1, "", f"lershow: cannot load the show commands: {self.module} is not the library of the "
                                 "show commands\n"))

    def test_what_shows_nothing_needs_none(self):
        self.assertEqual(self.run_command("state", "sample")[0], 0)


class Output(unittest.TestCase):
    COMMANDS = (["tunnel"], ["status", "--json"], ["state", "sample"], ["state", "synth", "--tunnels", "9"], ["--help"],
                ["state", "check", "-"], ["schema", "tunnel"])

    def test_nobody_reads(self):
        for words in self.COMMANDS:
            with self.subTest(words):
                reader, writer = os.pipe()
                os.close(reader)
                done = subprocess.run([LERSHOW, *words], input=b"{}", stdout=writer, stderr=subprocess.PIPE, timeout=60)
                os.close(writer)
                self.assertEqual(done.returncode, 1)
                self.assertEqual(done.stderr.splitlines()[-1], b"lershow: cannot write to standard output: Broken pipe")

    def test_full_disk(self):
        for words in self.COMMANDS:
            with self.subTest(words), open("/dev/full", "wb") as full:
                done = subprocess.run([LERSHOW, *words], input=b"{}", stdout=full, stderr=subprocess.PIPE, timeout=60)
                self.assertEqual(done.returncode, 1)
                self.assertEqual(done.stderr.splitlines()[-1],
                                 b"lershow: cannot write to standard output: No space left on device")

    def test_closed_standard_output(self):
        for words in self.COMMANDS:
            with self.subTest(words):
                done = subprocess.run([LERSHOW, *words], input=b"{}", stderr=subprocess.PIPE, timeout=60,
                                      preexec_fn=lambda: os.close(1))
                self.assertEqual(done.returncode, 1)
                self.assertEqual(done.stderr, b"lershow: cannot write to standard output: Bad file descriptor\n")

    def test_interrupt(self):
        state = lershow("state", "synth", "--tunnels", "400")[1]
        with StateFile(state) as name:
            answer = interrupted(self, "tunnel", "--detail", "--json", "--state", name)
            self.assertTrue(answer.startswith(b'{"tunnels":{'))
            self.assertTrue(answer.endswith(b"exiting interrupted\n"))

    def test_terminal(self):
        master, slave = pty.openpty()
        running = subprocess.Popen([LERSHOW, "tunnel", "none", "--json"], stdout=slave, stderr=subprocess.PIPE)
        os.close(slave)
        self.assertEqual(os.read(master, 100), b'{"tunnels":{}}\r\n')
        self.assertEqual(running.wait(timeout=60), 0)
        running.stderr.close()
        os.close(master)


if __name__ == "__main__":
    unittest.main()
