"""Runs show commands with a trace and reads it back.  usage: trace_test.py PATH_OF_LERSHOW [--sanitized]"""

import os
import pathlib
import random
import re
import subprocess
import sys
import tempfile
import unittest

from program import LERSHOW, SANITIZED

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "frame"))
import probes_test  # noqa: E402

VIEWS = [["tunnel", *view, *sub_tunnel, *form]
         for view in ([], ["--summary"], ["--lsp"], ["--detail"], ["--history"], ["--history", "--detail"])
         for sub_tunnel in ([], ["--sub-tunnel"]) for form in ([], ["--json"])] + [["status"], ["status", "--json"]]
SOME_VIEWS = VIEWS[::5] if SANITIZED else VIEWS
LINE = re.compile(r" *\d+\.\d{6} +\d+ \[(\d+)\] (\w+)(?: (.*))? \((?:(\d+\.\d{3}) us|-)\)")


def lershow(*words, **options):
    """(exit status, standard output, standard error) of one run."""
    done = subprocess.run([LERSHOW, *words], stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=120, **options)
    return done.returncode, done.stdout, done.stderr.decode()


class Trace(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = pathlib.Path(directory.name)
        self.file = str(self.directory / "trace")

    def dump(self):
        """The calls of the trace: (depth, function, arguments, microseconds or None)."""
        status, out, err = lershow("trace", "dump", self.file)
        self.assertEqual((status, err), (0, ""))
        calls = []
        for line in out.decode().splitlines():
            match = LINE.fullmatch(line)
            self.assertIsNotNone(match, line)
            depth, function, arguments, duration = match.groups()
            calls.append((int(depth), function, arguments or "", None if duration is None else float(duration)))
        return calls

    def fault(self, *words):
        """The one line of complaint of a run that fails."""
        status, out, err = lershow(*words)
        self.assertEqual((status, out), (1, b""))
        self.assertEqual(err.count("\n"), 1)
        return err.removeprefix("lershow: ").rstrip("\n")


class Writing(Trace):
    def test_the_answer_stays_the_same(self):
        for words in SOME_VIEWS:
            with self.subTest(words):
                plain = lershow(*words)
                self.assertEqual(lershow(*words, "--trace", self.file), plain)
                status, out, err = lershow(*words, "--trace-text")
                self.assertEqual((status, out), plain[:2])
                self.assertNotEqual(err, "")

    def test_depths_and_durations_nest(self):
        for words in SOME_VIEWS:
            with self.subTest(words):
                self.assertEqual(lershow(*words, "--trace", self.file)[0], 0)
                calls = self.dump()
                self.assertEqual(calls[0][:3], (1, "render", "format=2" if "--json" in words else "format=1"))
                open_calls = []
                for depth, function, _, duration in calls:
                    self.assertIsNotNone(duration, function)
                    self.assertLessEqual(depth, len(open_calls) + 1, function)
                    del open_calls[depth - 1:]
                    if open_calls:
                        self.assertLessEqual(duration, open_calls[-1], function)
                    open_calls.append(duration)

    def test_text_tells_the_same(self):
        for words in SOME_VIEWS:
            with self.subTest(words):
                status, _, err = lershow(*words, "--trace-text", "--trace", self.file)
                self.assertEqual(status, 0)
                self.assertEqual(err.splitlines(),
                                 [f"[{depth}] {function} {arguments}" for depth, function, arguments, _ in self.dump()])

    def test_the_calls_of_a_small_view(self):
        tunnel = "<name='den-snv-new'>_<source='1'>"
        sub_tunnel = tunnel + "_<subTunnelId=0>"
        status, _, err = lershow("tunnel", "den-snv-new", "--summary", "--json", "--trace-text")
        self.assertEqual(status, 0)
        lines = err.splitlines()
        self.assertEqual(lines[:2], ["[1] render format=2", f"[2] renderTunnel {tunnel}"])
        self.assertIn(f"[3] renderShowTunnelSummaryP2p {tunnel}", lines)
        self.assertIn("[4] renderTunnelSrc ", lines)
        self.assertIn(f"[4] renderP2pTunnelSummary {tunnel}", lines)
        self.assertFalse([line for line in lines if sub_tunnel in line and "renderSubTunnel" in line])

    def test_every_display_function_is_traced(self):
        traced = set()
        for words in VIEWS:
            traced |= {line.split()[1] for line in lershow(*words, "--trace-text")[2].splitlines()}
        there_are = {function.name for _, function in probes_test.display_functions()}
        # The trees of the sample all have their specifications.
        self.assertEqual(there_are - traced, {"renderTreeSpecNameNoPathSpecConfig"})
        self.assertEqual(traced - there_are, set())

    def test_the_options_may_stand_before_the_command(self):
        self.assertEqual(lershow("--trace", self.file, "status")[0], 0)
        self.assertEqual(self.dump()[0][1], "render")
        self.assertEqual(lershow("--trace-text", "status")[2].splitlines()[0], "[1] render format=1")

    def test_a_ring_that_runs_over_keeps_the_newest(self):
        state = self.directory / "state.json"
        state.write_bytes(lershow("state", "synth", "--tunnels", "400")[1])
        status, out, _ = lershow("tunnel", "--detail", "--json", "--state", str(state), "--trace", self.file)
        self.assertEqual(status, 0)
        self.assertEqual(out, lershow("tunnel", "--detail", "--json", "--state", str(state))[1])
        calls = self.dump()
        self.assertEqual(len(calls), 16384)
        self.assertNotIn("render", [function for _, function, _, _ in calls])

    def test_long_and_strange_names(self):
        state = lershow("state", "sample")[1]
        for name, shown in (("n" * 400, None), ("two\\nlines", "two?lines"), ("{}{x}", "{}{x}")):
            with self.subTest(name[:9]):
                file = self.directory / "state.json"
                file.write_bytes(state.replace(b'"den-atl-1"', f'"{name}"'.encode()))
                words = ["tunnel", "--json", "--state", str(file)]
                status, out, err = lershow(*words, "--trace", self.file)
                self.assertEqual((status, out, err), lershow(*words))
                status, dumped, err = lershow("trace", "dump", self.file)
                self.assertEqual(status, 0)
                self.assertNotIn(b"den-atl-1", dumped)
                if shown:
                    self.assertIn(f"renderTunnel <name='{shown}'>_<source='1'>", dumped.decode())
                    self.assertEqual(err, "")
                else:
                    self.assertRegex(err, r"\Alershow: .*/trace: warning: \d+ calls found no room in the trace\n\Z")

    def test_an_older_trace_is_replaced(self):
        for _ in range(2):
            self.assertEqual(lershow("status", "--trace", self.file)[0], 0)
            self.assertEqual(len([call for call in self.dump() if call[1] == "render"]), 1)
        self.assertEqual([path.name for path in self.directory.iterdir()], ["trace"])


class Faults(Trace):
    def test_a_file_that_cannot_be_made(self):
        missing = str(self.directory / "no" / "trace")
        self.assertEqual(self.fault("status", "--trace", missing),
                         f"cannot write the trace file {missing}: No such file or directory")
        self.assertEqual(self.fault("tunnel", "--trace", "/no/such\n/file"),
                         "cannot write the trace file /no/such\\x0a/file: No such file or directory")
        self.assertEqual(self.fault("tunnel", "--trace", str(self.directory)),
                         f"cannot write the trace file {self.directory}: it is not a regular file")
        self.assertEqual(self.fault("tunnel", "--trace", "/dev/null"),
                         "cannot write the trace file /dev/null: it is not a regular file")

    def test_a_file_of_another_kind_is_kept(self):
        pathlib.Path(self.file).write_text("precious")
        self.assertEqual(self.fault("status", "--trace", self.file),
                         f"cannot write the trace file {self.file}: there is a file of another kind; give another name")
        self.assertEqual(pathlib.Path(self.file).read_text(), "precious")

    def test_a_full_disk(self):
        # A limit on the size of files stands for it.
        import resource
        import signal

        def limit():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (1000000, 1000000))
        status, out, err = lershow("status", "--trace", self.file, preexec_fn=limit)
        self.assertEqual((status, out, err), (1, b"", f"lershow: cannot write the trace file {self.file}: "
                                                      "File too large\n"))
        self.assertEqual(list(self.directory.iterdir()), [])

    def test_usage(self):
        beside = "--trace and --trace-text go with tunnel and status"
        for words, message, command in (
                (["status", "--trace"], "--trace: 1 required FILE missing", "lershow status"),
                (["status", "--trace", ""], "--trace takes the name of a file", "lershow status"),
                (["--trace", self.file, "state", "sample"], beside, "lershow state sample"),
                (["--trace-text", "trace", "dump", self.file], beside, "lershow trace dump"),
                (["--trace", self.file], "give a command: tunnel, status, serve, state, trace or schema", "lershow"),
                (["--trace", self.file, "show"],
                 "there is no command 'show', only tunnel, status, serve, state, trace and schema", "lershow"),
                (["trace"], "trace takes dump", "lershow trace"),
                (["trace", "show"], "trace takes dump", "lershow trace"),
                (["trace", "dump"], "FILE is required", "lershow trace dump"),
                (["trace", "dump", ""], "FILE takes the name of a file", "lershow trace dump"),
        ):
            with self.subTest(words):
                self.assertEqual(lershow(*words), (2, b"", f"lershow: {message}; see {command} --help\n"))
        self.assertEqual(list(self.directory.iterdir()), [])

    def test_a_file_that_cannot_be_read(self):
        self.assertEqual(self.fault("trace", "dump", self.file),
                         f"cannot read the trace file {self.file}: No such file or directory")
        self.assertEqual(self.fault("trace", "dump", str(self.directory)),
                         f"cannot read the trace file {self.directory}: Is a directory")
        for text in (b"", b"{}", b"SKEIN", os.urandom(10000)):
            pathlib.Path(self.file).write_bytes(text)
            self.assertEqual(self.fault("trace", "dump", self.file),
                             f"cannot read the trace file {self.file}: it is not a trace file")

    def test_a_damaged_file(self):
        self.assertEqual(lershow("tunnel", "--trace", self.file)[0], 0)
        sound = pathlib.Path(self.file).read_bytes()
        for size in (8, 39, 40, 5000, 180000, len(sound) - 1):
            pathlib.Path(self.file).write_bytes(sound[:size])
            self.assertEqual(self.fault("trace", "dump", self.file),
                             f"cannot read the trace file {self.file}: it is cut short")
        numbers = random.Random(5)
        outcomes = set()
        for _ in range(15 if SANITIZED else 60):
            damaged = bytearray(sound)
            for _ in range(numbers.choice((1, 20, 2000))):
                damaged[numbers.randrange(numbers.choice((40, 40000, 300000)))] = numbers.randrange(256)
            pathlib.Path(self.file).write_bytes(damaged)
            status, out, err = lershow("trace", "dump", self.file)
            self.assertIn(status, (0, 1))
            self.assertLessEqual(err.count("\n"), 1)
            self.assertEqual([byte for byte in out if byte < 0x20 and byte != 0x0a], [])
            outcomes.add((status, bool(out)))
        self.assertLessEqual({(0, True), (1, False)}, outcomes)

    def test_nobody_reads_the_dump(self):
        self.assertEqual(lershow("tunnel", "--trace", self.file)[0], 0)
        with open("/dev/full", "wb") as full:
            done = subprocess.run([LERSHOW, "trace", "dump", self.file], stdout=full, stderr=subprocess.PIPE, timeout=60)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr, b"lershow: cannot write to standard output: No space left on device\n")


if __name__ == "__main__":
    unittest.main()
