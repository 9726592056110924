#!/usr/bin/env python3
"""Runs the examples of docs/live-protocol.md against one server, in their order.

    live_protocol.py LERSHOW DOCUMENT

The document's server is started here, at another socket; a command that ends in "&" stands for that.
"""

import difflib
import os
import shlex
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import examples

SOCKET = "/run/lershow.sock"


def main(lershow, document):
    with tempfile.TemporaryDirectory() as directory:
        path = os.path.join(directory, "socket")
        server = subprocess.Popen([lershow, "serve", "--socket", path])
        end = time.monotonic() + 60
        while not os.path.exists(path) and server.poll() is None and time.monotonic() < end:
            time.sleep(0.01)
        checked = 0
        wrong = 0
        for command, expected in examples.examples(Path(document).read_text()):
            if command.endswith("&"):
                continue
            words = examples.RUN.sub(shlex.quote(lershow), command).replace(SOCKET, path)
            done = subprocess.run(["bash", "-o", "pipefail", "-c", words], stdin=subprocess.DEVNULL, capture_output=True,
                                  timeout=60, env={**os.environ, "TZ": "UTC", "LC_ALL": "C"})
            printed = (done.stdout + done.stderr).decode(errors="replace")
            checked += 1
            if printed != expected or done.returncode != 0:
                wrong += 1
                print(f"{document}: $ {command}: exit status {done.returncode}")
                print("\n".join(difflib.unified_diff(expected.split("\n"), printed.split("\n"), "in the document",
                                                     "printed", lineterm="")))
        server.terminate()
        ended = server.wait(timeout=60)
        print(f"{document}: {checked - wrong} of {checked} outputs are as they stand there")
        return 0 if checked > 4 and wrong == 0 and ended == 0 else 1


if __name__ == "__main__":
    sys.exit(main(os.path.abspath(sys.argv[1]), sys.argv[2]))
