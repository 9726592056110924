"""An example that doesn't print what stands beside it fails, and so does one that can't be checked."""

import contextlib
import io
import tempfile
import unittest
from pathlib import Path

import examples

# Prints its arguments, one in a line.
PROGRAM = """#!/bin/sh
[ "$1" = fail ] && exit 1
[ "$1" = warn ] && echo "lershow: f.json: warning: w" >&2
[ "$1" = read ] && cat && exit 0
if [ "$1" = wrong ]; then
   echo "lershow: f.json: wrong" >&2
   exit 1
fi
printf '%s\\n' "$@"
"""


class ExamplesTest(unittest.TestCase):
    def check(self, *lines):
        """The exit status for a document with one block of these lines."""
        with tempfile.TemporaryDirectory(prefix="a path ") as directory:
            program = Path(directory) / "lershow"
            program.write_text(PROGRAM)
            program.chmod(0o755)
            document = Path(directory) / "README.md"
            document.write_text("Text.\n\n```console\n" + "".join(line + "\n" for line in lines) + "```\n\n"
                                "```sh\n$ ./scripts/run fail\n```\n")
            with contextlib.redirect_stdout(io.StringIO()):
                return examples.main(["--lershow", str(program), str(document)])

    def test_documents(self):
        rows = [
            ("as it stands there", 0, ["$ ./scripts/run status", "status"]),
            ("two in a block", 0, ["$ ./scripts/run a b", "a", "b", "$ ./scripts/run c", "c"]),
            ("without arguments the tunnels are shown", 0, ["$ ./scripts/run", "tunnel"]),
            ("in a pipeline", 0, ["$ ./scripts/run b a | sort", "a", "b"]),
            ("with a command that isn't run", 0, ["$ ./scripts/test", "$ ./scripts/run a", "a"]),
            ("a line less", 1, ["$ ./scripts/run a b", "a"]),
            ("a line more", 1, ["$ ./scripts/run a", "a", "b"]),
            ("a blank more", 1, ["$ ./scripts/run a", "a "]),
            ("the second one differs", 1, ["$ ./scripts/run a", "a", "$ ./scripts/run b", "c"]),
            ("output that can't be checked", 1, ["$ ./scripts/run a", "a", "$ ./scripts/test", "passed"]),
            ("a command that fails", 1, ["$ ./scripts/run a", "a", "$ ./scripts/run fail"]),
            ("a command that fails in a pipeline", 1, ["$ ./scripts/run a", "a", "$ ./scripts/run fail | cat"]),
            ("continued", 0, ["$ ./scripts/run read <<'END'", "> one", "> two", "> END", "one", "two"]),
            ("continued wrongly", 1, ["$ ./scripts/run read <<'END'", "> one", "> END", "two"]),
            ("what looks continued is output", 0, ["$ ./scripts/run a '> b'", "a", "> b"]),
            ("a command that warns", 1, ["$ ./scripts/run warn", "warn"]),
            ("a warning that stands there", 0, ["$ ./scripts/run warn", "lershow: f.json: warning: w", "warn"]),
            ("a warning that doesn't come", 1, ["$ ./scripts/run a", "lershow: f.json: warning: w", "a"]),
            ("a failure that stands there", 0, ["$ ./scripts/run wrong", "lershow: f.json: wrong"]),
            ("a failure with another message", 1, ["$ ./scripts/run wrong", "lershow: f.json: right"]),
            ("a message on standard output", 1, ["$ ./scripts/run 'lershow: a'", "lershow: a"]),
            ("a message without a failure", 1, ["$ ./scripts/run 'lershow: a' >&2", "lershow: a"]),
            ("a failure behind a warning", 1,
             ["$ ./scripts/run warn >&2; exit 1", "lershow: f.json: warning: w", "warn"]),
            ("no output at all", 1, ["$ ./scripts/test"]),
        ]
        for what, status, lines in rows:
            with self.subTest(what):
                self.assertEqual(self.check(*lines), status)

    def test_a_document_without_examples(self):
        with tempfile.TemporaryDirectory() as directory:
            document = Path(directory) / "page.md"
            document.write_text("Text.\n")
            for options, status in ([], 1), (["--without-examples"], 0):
                with self.subTest(options), contextlib.redirect_stdout(io.StringIO()):
                    self.assertEqual(examples.main(["--lershow", "lershow", *options, str(document)]), status)

    def test_a_block_must_begin_with_a_command(self):
        with self.assertRaises(ValueError):
            self.check("output", "$ ./scripts/run a")


if __name__ == "__main__":
    unittest.main()
