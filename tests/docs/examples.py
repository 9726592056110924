#!/usr/bin/env python3
"""Runs the examples of a document and compares what they print, byte for byte, with what stands there.

    examples.py --lershow PROGRAM DOCUMENT...

An example is a fenced block marked `console`. A line that begins with "$ " is a command, the lines down to the next one
are its output. `./scripts/run ARGUMENTS` stands for lershow; a command of any other kind isn't run, and so must have no
output beside it. The commands run in the root of the project, by the shell.
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
            else:
                found[-1][1].append(line)
    return [(command, "".join(output)) for command, output in found]


def failure(lershow, command, expected):
    """What is wrong with one example, or None."""
    if not RUN.match(command):
        return "is no call of ./scripts/run, so the output beside it can't be checked" if expected else None
    if command == "./scripts/run":
        command += " tunnel"
    done = subprocess.run(["bash", "-o", "pipefail", "-c", RUN.sub(shlex.quote(lershow), command)], cwd=ROOT,
                          env={**os.environ, "TZ": "UTC", "LC_ALL": "C"}, stdin=subprocess.DEVNULL,
                          capture_output=True, timeout=60)
    if done.returncode != 0 or done.stderr:
        return f"exit status {done.returncode}\n{done.stderr.decode(errors='replace')}"
    if done.stdout == expected.encode():
        return None
    return "\n" + "\n".join(difflib.unified_diff(expected.split("\n"), done.stdout.decode(errors="replace").split("\n"),
                                                 "in the document", "printed", lineterm=""))


def main(arguments):
    parser = argparse.ArgumentParser(description="Examples of a document.")
    parser.add_argument("--lershow", required=True, type=os.path.abspath)
    parser.add_argument("documents", nargs="+", type=Path)
    options = parser.parse_args(arguments)
    failed = False
    for document in options.documents:
        checked = 0
        for command, expected in examples(document.read_text()):
            wrong = failure(options.lershow, command, expected)
            if wrong:
                print(f"{document}: $ {command}: {wrong}")
                failed = True
            elif expected:
                checked += 1
        print(f"{document}: {checked} outputs are as they stand there")
        failed = failed or checked == 0
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
