"""The program under test, whose path is the first argument of a test, and how tests run it.

With --sanitized as another argument each run of it starts slowly.
"""

import os
import signal
import subprocess
import sys
import time

LERSHOW = sys.argv.pop(1) if len(sys.argv) > 1 else "lershow"
SANITIZED = "--sanitized" in sys.argv
if SANITIZED:
    sys.argv.remove("--sanitized")


def lershow(*words, stdin=b"", **options):
    """(exit status, standard output, standard error) of one run."""
    done = subprocess.run([LERSHOW, *words], input=stdin, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                          timeout=120, **options)
    return done.returncode, done.stdout.decode(), done.stderr.decode()


def interrupted(test, *words):
    """What a command has written that is interrupted while it writes more than a pipe holds."""
    reader, writer = os.pipe()
    running = subprocess.Popen([LERSHOW, *words], stdout=writer, stderr=subprocess.PIPE)
    os.close(writer)
    answer = os.read(reader, 1)  # it is writing
    running.send_signal(signal.SIGINT)
    time.sleep(2)  # it notices while the pipe has no room; to a quick reader it would deliver all that is left
    while part := os.read(reader, 65536):
        answer += part
    os.close(reader)
    test.assertEqual(running.wait(timeout=60), 130)
    test.assertEqual(running.stderr.read(), b"")
    running.stderr.close()
    return answer
