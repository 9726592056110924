"""How the tests of what is installed run other programs."""

import subprocess


def run(*words, **options):
    """The standard output of a command that must succeed."""
    done = subprocess.run([str(word) for word in words], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                          timeout=300, **options)
    if done.returncode != 0:
        raise AssertionError(f"{words}: exit status {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout
