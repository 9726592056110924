#!/usr/bin/env python3
"""Compares what lershow prints of a state with the expected files beside it, byte for byte.

    run.py --lershow PROGRAM CASE...            compares; exit status 1 when anything differs
    run.py --bless --lershow PROGRAM CASE...    rewrites the expected files that exist

A case is a directory with a state.json and one expected file for each view and format. The file is named for the words of
the command line: tunnel-history-detail.txt is `tunnel --history --detail` in text, tunnel-detail@den-nyc-2.json is
`tunnel den-nyc-2 --detail` in JSON. A byte of a tunnel name that no file name can hold is written as %XX. Standard error
must be empty, or what stands in the file of the same stem that ends in .err. JSON is stored as it is printed, in one line.
"""

import argparse
import difflib
import json
import os
import subprocess
import sys
from pathlib import Path
from urllib.parse import unquote_to_bytes

VIEWS = {
    "tunnel": ["tunnel"],
    "tunnel-summary": ["tunnel", "--summary"],
    "tunnel-lsp": ["tunnel", "--lsp"],
    "tunnel-detail": ["tunnel", "--detail"],
    "tunnel-history": ["tunnel", "--history"],
    "tunnel-history-detail": ["tunnel", "--history", "--detail"],
}
VIEWS |= {f"{stem}-sub-tunnel": [*words, "--sub-tunnel"] for stem, words in VIEWS.items()}
VIEWS["status"] = ["status"]

FORMATS = {".txt": "text", ".json": "json"}
SECONDS_ALLOWED = 60


class Mismatch(Exception):
    """One view that isn't as expected, or a case that can't be run; the text says how."""


def commandLine(stem):
    """The arguments that a file stem stands for, or None when it names no view."""
    view, at, name = stem.partition("@")
    words = VIEWS.get(view)
    if words is None or (at and (words[0] != "tunnel" or not name)):
        return None
    return [*words, "--", unquote_to_bytes(name)] if at else words


def expectedFiles(case):
    """The expected outputs of a case in the order of their names."""
    if not (case / "state.json").is_file():
        raise Mismatch("there is no state.json")
    outputs, messages = [], []
    for path in sorted(case.iterdir()):
        if path.name == "state.json":
            continue
        if path.suffix == ".err" and commandLine(path.stem) is not None:
            messages.append(path)
        elif path.suffix in FORMATS and commandLine(path.stem) is not None:
            outputs.append(path)
        else:
            raise Mismatch(f"{path.name} is the name of no view")
    for path in messages:
        if not any(output.stem == path.stem for output in outputs):
            raise Mismatch(f"{path.name} has no expected output beside it")
    if not outputs:
        raise Mismatch("there is no expected file")
    return outputs


def show(lershow, case, path):
    """Runs the command of an expected file in its case directory and gives what it wrote on the two outputs."""
    view, *rest = commandLine(path.stem)
    arguments = [lershow, view, "--state", "state.json", "--format", FORMATS[path.suffix], *rest]
    environment = {**os.environ, "TZ": "UTC", "LC_ALL": "C"}
    try:
        done = subprocess.run(arguments, cwd=case, env=environment, stdin=subprocess.DEVNULL, capture_output=True,
                              timeout=SECONDS_ALLOWED)
    except subprocess.TimeoutExpired:
        raise Mismatch(f"{path.name}: not done after {SECONDS_ALLOWED} seconds") from None
    except OSError as error:
        raise Mismatch(f"{path.name}: {lershow} can't be run: {error.strerror}") from None
    if done.returncode != 0:
        raise Mismatch(f"{path.name}: exit status {done.returncode}\n{done.stderr.decode(errors='replace')}")
    return done.stdout, done.stderr


def visible(data):
    """The lines of an output, with what a terminal wouldn't show made visible."""
    lines = data.decode("utf-8", errors="backslashreplace").split("\n")
    last = lines.pop()
    lines = [line.rstrip(" ") + "\u2423" * (len(line) - len(line.rstrip(" "))) for line in lines]
    return [*lines, f"{last}  (no line feed at the end)"] if last else lines


def pretty(data):
    """A JSON document in many lines, members in the order in which they stand; None when it doesn't parse."""
    try:
        return json.dumps(json.loads(data), indent=2, ensure_ascii=False).split("\n")
    except ValueError:
        return None


def difference(path, expected, actual):
    """A unified diff of two outputs that differ."""
    before, after = visible(expected), visible(actual)
    if path.suffix == ".json":
        readable = pretty(expected), pretty(actual)
        if None not in readable and readable[0] != readable[1]:
            before, after = readable
    at = len(os.path.commonprefix([expected, actual]))
    lines = difflib.unified_diff(before, after, f"{path.name} expected", f"{path.name} printed", lineterm="")
    return "\n".join([f"{path.name}: differs from byte {at} on", *lines])


def compare(lershow, case, path):
    stdout, stderr = show(lershow, case, path)
    expected = path.read_bytes()
    if path.suffix == ".json" and pretty(expected) is None:
        raise Mismatch(f"{path.name}: the expected file is not JSON")
    if stdout != expected:
        raise Mismatch(difference(path, expected, stdout))
    messages = path.with_suffix(".err")
    message = messages.read_bytes() if messages.exists() else b""
    if stderr != message:
        raise Mismatch(difference(messages, message, stderr))


def bless(lershow, case, path):
    stdout, stderr = show(lershow, case, path)
    written = {path: stdout}
    messages = path.with_suffix(".err")
    if messages.exists():
        written[messages] = stderr
    elif stderr:
        raise Mismatch(f"{path.name}: wrote on standard error:\n{stderr.decode(errors='replace')}")
    for target, data in written.items():
        if target.read_bytes() != data:
            target.write_bytes(data)
            print(f"{case.name}/{target.name}: rewritten")


def main(arguments):
    parser = argparse.ArgumentParser(description="Golden views of lershow.")
    parser.add_argument("--lershow", required=True, type=os.path.abspath, help="the program to run")
    parser.add_argument("--bless", action="store_true", help="rewrite the expected files that exist")
    parser.add_argument("cases", nargs="+", type=Path, help="directories of cases")
    options = parser.parse_args(arguments)
    if options.bless and os.environ.get("CI"):
        print("run.py: --bless refused, since CI is set: expected files are written and read by people", file=sys.stderr)
        return 2

    failed = False
    for case in options.cases:
        try:
            paths = expectedFiles(case)
        except Mismatch as mismatch:
            print(f"{case.name}: {mismatch}")
            failed = True
            continue
        for path in paths:
            try:
                (bless if options.bless else compare)(options.lershow, case, path)
            except Mismatch as mismatch:
                print(f"{case.name}/{mismatch}")
                failed = True
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
