"""Each way in which a golden case can fail does fail, and blessing touches nothing but the files that exist.

The program under the runner is a small script that prints what the case tells it to, so that every output can be had.
"""

import contextlib
import io
import os
import stat
import tempfile
import unittest
from pathlib import Path
from unittest import mock

import run

# Prints the files "out" and "err" of the state directory's neighbour, and its arguments into the file "arguments".
PROGRAM = """#!/bin/sh
printf '%s\\n' "$TZ $LC_ALL" "$@" > ../arguments
cat ../out
cat ../err >&2
exit "$(cat ../status)"
"""


class RunnerTest(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.root = Path(directory.name)
        self.case = self.root / "case"
        self.case.mkdir()
        self.program = self.root / "lershow"
        self.program.write_text(PROGRAM)
        self.program.chmod(self.program.stat().st_mode | stat.S_IXUSR)
        self.given(out=b"", err=b"", status=b"0")
        self.put("state.json", b"{}")
        environment = mock.patch.dict(os.environ)
        environment.start()
        self.addCleanup(environment.stop)
        os.environ.pop("CI", None)

    def given(self, **files):
        for name, data in files.items():
            (self.root / name).write_bytes(data)

    def put(self, name, data):
        (self.case / name).write_bytes(data)

    def run_case(self, *options):
        """The exit status of the runner and what it printed."""
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed), contextlib.redirect_stderr(printed):
            status = run.main(["--lershow", str(self.program), *options, str(self.case)])
        return status, printed.getvalue()

    def test_equal_output_passes_in_silence(self):
        self.put("status.txt", b"P2P\n")
        self.given(out=b"P2P\n")
        self.assertEqual(self.run_case(), (0, ""))

    def test_a_wrong_byte_fails_with_a_diff(self):
        self.put("status.txt", b"one\ntwo\n")
        self.given(out=b"one\ntwx\n")
        self.assertEqual(self.run_case(), (1, "case/status.txt: differs from byte 6 on\n"
                                              "--- status.txt expected\n"
                                              "+++ status.txt printed\n"
                                              "@@ -1,2 +1,2 @@\n one\n-two\n+twx\n"))

    def test_every_kind_of_difference_fails(self):
        rows = [
            ("a byte more", b"a\n", b"a\nb\n"),
            ("a byte less", b"a\nb\n", b"a\n"),
            ("no line feed at the end", b"a\n", b"a"),
            ("a line feed more", b"a\n", b"a\n\n"),
            ("a blank at the end of a line", b"a\n", b"a \n"),
            ("a carriage return", b"a\n", b"a\r\n"),
            ("a byte that isn't UTF-8", b"a\xc3\xa4\n", b"a\xe4\n"),
            ("nothing", b"a\n", b""),
        ]
        for what, expected, printed in rows:
            with self.subTest(what):
                self.put("status.txt", expected)
                self.given(out=printed)
                status, text = self.run_case()
                self.assertEqual(status, 1)
                self.assertNotEqual(*self.sides(text))

    @staticmethod
    def sides(text):
        """The removed and the added lines of a diff."""
        body = text[text.index("@@"):].split("\n")
        return [line[1:] for line in body if line[:1] == "-"], [line[1:] for line in body if line[:1] == "+"]

    def test_json_differences_are_shown_a_member_a_line(self):
        self.put("status.json", b'{"a":1,"b":2}\n')
        self.given(out=b'{"a":1,"b":3}\n')
        status, text = self.run_case()
        self.assertEqual((status, self.sides(text)), (1, (['  "b": 2'], ['  "b": 3'])))

    def test_json_that_differs_in_white_space_alone_fails(self):
        self.put("status.json", b'{"a":1}\n')
        self.given(out=b'{"a": 1}\n')
        status, text = self.run_case()
        self.assertEqual((status, self.sides(text)), (1, (['{"a":1}'], ['{"a": 1}'])))

    def test_json_members_in_another_order_fail(self):
        self.put("status.json", b'{"a":1,"b":2}\n')
        self.given(out=b'{"b":2,"a":1}\n')
        self.assertEqual(self.run_case()[0], 1)

    def test_an_expected_file_that_is_not_json_fails(self):
        self.put("status.json", b"{\n")
        self.given(out=b"{\n")
        self.assertEqual(self.run_case(), (1, "case/status.json: the expected file is not JSON\n"))

    def test_a_case_without_expected_files_fails(self):
        self.assertEqual(self.run_case(), (1, "case: there is no expected file\n"))

    def test_a_case_without_a_state_fails(self):
        self.put("status.txt", b"")
        (self.case / "state.json").unlink()
        self.assertEqual(self.run_case(), (1, "case: there is no state.json\n"))

    def test_a_case_that_does_not_exist_fails(self):
        self.case = self.root / "elsewhere"
        self.assertEqual(self.run_case(), (1, "elsewhere: there is no state.json\n"))

    def test_a_file_that_names_no_view_fails(self):
        for name in ["statu.txt", "tunnel-detail-lsp.txt", "tunnel-sub-tunnel-detail.txt", "status.text", "notes.md",
                     "status@tun1.txt", "tunnel@.txt", "state.json.orig", "tunnel-detail-history.txt"]:
            with self.subTest(name):
                self.put("status.txt", b"")
                self.put(name, b"")
                self.assertEqual(self.run_case(), (1, f"case: {name} is the name of no view\n"))
                (self.case / name).unlink()

    def test_an_exit_status_other_than_0_fails(self):
        self.put("status.txt", b"P2P\n")
        self.given(out=b"P2P\n", status=b"3", err=b"lershow: no\n")
        self.assertEqual(self.run_case(), (1, "case/status.txt: exit status 3\nlershow: no\n\n"))

    def test_a_program_that_is_not_there_fails(self):
        self.put("status.txt", b"")
        self.program.unlink()
        self.assertEqual(self.run_case(), (1, f"case/status.txt: {self.program} can't be run: No such file or directory\n"))

    def test_a_program_that_hangs_fails(self):
        self.put("status.txt", b"")
        self.program.write_text("#!/bin/sh\nexec sleep 60\n")
        with mock.patch.object(run, "SECONDS_ALLOWED", 0.2):
            self.assertEqual(self.run_case(), (1, "case/status.txt: not done after 0.2 seconds\n"))

    def test_standard_error_is_empty_or_as_expected(self):
        self.put("status.txt", b"")
        self.given(err=b"lershow: warning\n")
        self.assertEqual(self.run_case()[0], 1)
        self.put("status.err", b"lershow: warning\n")
        self.assertEqual(self.run_case(), (0, ""))
        self.given(err=b"")
        self.assertEqual(self.run_case()[0], 1)

    def test_expected_messages_without_an_output_fail(self):
        self.put("status.txt", b"")
        self.put("tunnel.err", b"")
        self.assertEqual(self.run_case(), (1, "case: tunnel.err has no expected output beside it\n"))

    def test_one_failing_view_does_not_hide_another(self):
        self.put("status.txt", b"a\n")
        self.put("tunnel.txt", b"b\n")
        status, text = self.run_case()
        self.assertEqual(status, 1)
        self.assertIn("case/status.txt: ", text)
        self.assertIn("case/tunnel.txt: ", text)

    def test_the_stem_is_the_command_line(self):
        rows = [
            ("status.txt", ["status"], "text", []),
            ("tunnel.json", ["tunnel"], "json", []),
            ("tunnel-summary.txt", ["tunnel"], "text", ["--summary"]),
            ("tunnel-history-detail.json", ["tunnel"], "json", ["--history", "--detail"]),
            ("tunnel-lsp-sub-tunnel.txt", ["tunnel"], "text", ["--lsp", "--sub-tunnel"]),
            ("tunnel-sub-tunnel.txt", ["tunnel"], "text", ["--sub-tunnel"]),
            ("tunnel-detail@den-nyc-2.txt", ["tunnel"], "text", ["--detail", "--", "den-nyc-2"]),
            ("tunnel@a-detail@b%2Fc.json", ["tunnel"], "json", ["--", "a-detail@b/c"]),
        ]
        for name, command, form, rest in rows:
            with self.subTest(name):
                self.put(name, b"{}")
                self.given(out=b"{}")
                self.assertEqual(self.run_case(), (0, ""))
                expected = ["UTC C", *command, "--state", "state.json", "--format", form, *rest]
                self.assertEqual((self.root / "arguments").read_text().splitlines(), expected)
                (self.case / name).unlink()

    def test_blessing_rewrites_the_files_that_exist(self):
        self.put("status.txt", b"old\n")
        self.put("status.err", b"old\n")
        self.given(out=b"new\n", err=b"lershow: new\n")
        self.assertEqual(self.run_case("--bless"), (0, "case/status.txt: rewritten\ncase/status.err: rewritten\n"))
        self.assertEqual(sorted(path.name for path in self.case.iterdir()), ["state.json", "status.err", "status.txt"])
        self.assertEqual((self.case / "status.txt").read_bytes(), b"new\n")
        self.assertEqual((self.case / "status.err").read_bytes(), b"lershow: new\n")
        self.assertEqual(self.run_case(), (0, ""))
        self.assertEqual(self.run_case("--bless"), (0, ""))

    def test_blessing_changes_nothing_when_the_program_fails_or_complains(self):
        for given in [dict(status=b"1", err=b""), dict(status=b"0", err=b"lershow: warning\n")]:
            with self.subTest(**given):
                self.put("status.txt", b"old\n")
                self.given(out=b"new\n", **given)
                self.assertEqual(self.run_case("--bless")[0], 1)
                self.assertEqual((self.case / "status.txt").read_bytes(), b"old\n")

    def test_blessing_is_refused_in_ci(self):
        self.put("status.txt", b"old\n")
        self.given(out=b"new\n")
        os.environ["CI"] = "1"
        self.assertEqual(self.run_case("--bless")[0], 2)
        self.assertEqual((self.case / "status.txt").read_bytes(), b"old\n")


if __name__ == "__main__":
    unittest.main()
