#!/usr/bin/env python3
"""Runs the examples of a document and compares what they print, byte for byte, with what stands there.

    examples.py --lershow PROGRAM DOCUMENT...

An example is a fenced block marked `console`. A line that begins with "$ " is a command, which lines that begin with "> "
right behind it continue; the lines down to the next one are its output. `./scripts/run ARGUMENTS` stands for lershow; a
command of any other kind isn't run, and so must have no output beside it. The commands run in the root of the project, by
the shell.

Lines that begin with "lershow: " are what goes to standard error. A command must succeed unless the last one of these is no
warning: then it must fail.
"""

import argparse
import difflib
import os
import re
import shlex
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BLOCK = re.compile(r"^```console\n(.*?)^```$", re.MULTILINE | re.DOTALL)
RUN = re.compile(r"\./scripts/run(?=\s|$)")


def examples(text):
    """The commands of a document, each with the output that stands beside it."""
    found = []
    for block in BLOCK.findall(text):
        if not block.startswith("$ "):
            raise ValueError(f"an example begins without a command: {block!r}")
        for line in block.splitlines(keepends=True):
            if line.startswith("$ "):
                found.append((line[2:].rstrip("\n"), []))
            elif line.startswith("> ") and not found[-1][1]:
                found[-1] = (found[-1][0] + "\n" + line[2:].rstrip("\n"), [])
            else:
                found[-1][1].append(line)
    return [(command, "".join(output)) for command, output in found]


def split_messages(output):
    """The lines of standard output, and those of standard error."""
    lines = output.splitlines(keepends=True)
    return ("".join(line for line in lines if not line.startswith("lershow: ")),
            "".join(line for line in lines if line.startswith("lershow: ")))


def difference(expected, printed):
    return "\n" + "\n".join(difflib.unified_diff(expected.split("\n"), printed.split("\n"), "in the document", "printed",
                                                 lineterm=""))


def failure(lershow, command, expected):
    """What is wrong with one example, or None."""
    if not RUN.match(command):
        return "is no call of ./scripts/run, so the output beside it can't be checked" if expected else None
    if command == "./scripts/run":
        command += " tunnel"
    done = subprocess.run(["bash", "-o", "pipefail", "-c", RUN.sub(shlex.quote(lershow), command)], cwd=ROOT,
                          env={**os.environ, "TZ": "UTC", "LC_ALL": "C"}, stdin=subprocess.DEVNULL,
                          capture_output=True, timeout=60)
    answer, messages = split_messages(expected)
    for wanted, printed in ((messages, done.stderr), (answer, done.stdout)):
        if printed != wanted.encode():
            return difference(wanted, printed.decode(errors="replace"))
    fails = bool(messages) and ": warning: " not in messages.splitlines()[-1]
    return None if fails == (done.returncode != 0) else f"exit status {done.returncode}"


def main(arguments):
    parser = argparse.ArgumentParser(description="Examples of a document.")
    parser.add_argument("--lershow", required=True, type=os.path.abspath)
    parser.add_argument("--without-examples", action="store_true", help="a document may have no example at all")
    parser.add_argument("documents", nargs="+", type=Path)
    options = parser.parse_args(arguments)
    failed = False
    for document in options.documents:
        checked = 0
        found = examples(document.read_text())
        for command, expected in found:
            wrong = failure(options.lershow, command, expected)
            if wrong:
                print(f"{document}: $ {command}: {wrong}")
                failed = True
            elif expected:
                checked += 1
        print(f"{document}: {checked} outputs are as they stand there")
        failed = failed or (checked == 0 and (bool(found) or not options.without_examples))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
