"""The Debian package: what it holds, and that it runs, installs and goes.  usage: package_test.py BUILD"""

import os
import shutil
import sys
import tempfile
import unittest
from pathlib import Path

from commands import run

BUILD = Path(sys.argv.pop())


def setUpModule():
    global top, package
    top = Path(tempfile.mkdtemp(dir=BUILD, prefix="package "))
    unittest.addModuleCleanup(shutil.rmtree, top)
    run("cpack", "--config", BUILD / "CPackConfig.cmake", "-B", top / "made")
    (package,) = (top / "made").glob("*.deb")


class Package(unittest.TestCase):
    def test_file_name(self):
        architecture = run("dpkg", "--print-architecture").strip()
        self.assertRegex(package.name, rf"^rsvp-show_\d+\.\d+\.\d+_{architecture}\.deb$")

    def test_control(self):
        def field(name):
            return run("dpkg-deb", "-f", package, name).strip()

        self.assertEqual(field("Package"), "rsvp-show")
        depends = field("Depends")
        for library in ("libc6", "libstdc++6", "libsimdjson", "libjemalloc2"):
            self.assertIn(library, depends)
        self.assertNotIn("RsvpLer", depends)

    def test_contents(self):
        lines = [line.split(None, 5) for line in run("dpkg-deb", "-c", package).splitlines()]
        files = {line[5].split(" -> ")[0] for line in lines if not line[5].endswith("/")}
        for file in ("bin/lershow", "lib/libRsvpLerCliCapi.so", "lib/cmake/RsvpLerCliCapi/RsvpLerCliCapiConfig.cmake",
                     "lib/pkgconfig/RsvpLerCliCapi.pc", "include/rsvp-ler/RsvpLer/RsvpLerCliCapi.h",
                     "share/man/man1/lershow.1", "share/bash-completion/completions/lershow",
                     "share/rsvp-show/schema/tunnel.schema.json"):
            self.assertIn("./usr/" + file, files)
        for mode, owner, _, _, _, name in lines:
            self.assertTrue(name.startswith("./usr/"), name)
            self.assertEqual(owner, "root/root", name)
            executable = name.endswith("/") or name == "./usr/bin/lershow"
            self.assertIn(mode[1:], ("rwxrwxrwx",) if mode[0] == "l" else ("rwxr-xr-x",) if executable else ("rw-r--r--",),
                          name)

    def test_runs_where_it_is_unpacked(self):
        root = top / "unpacked"
        run("dpkg-deb", "-x", package, root)
        self.assertEqual(run(root / "usr/bin/lershow", "tunnel", "--detail"), run(BUILD / "host/lershow", "tunnel", "--detail"))


@unittest.skipUnless(os.geteuid() == 0, "dpkg gives files their owners as root alone")
class Installation(unittest.TestCase):
    """Into a directory of its own, with a database of its own and no package that it depends on."""

    def setUp(self):
        self.root = top / "root"
        for directory in ("updates", "info", "triggers"):
            (self.root / "var/lib/dpkg" / directory).mkdir(parents=True)
        (self.root / "var/lib/dpkg/status").touch()
        # The package's scripts call it; the real one would write into the system's cache.
        tools = self.root / "tools"
        tools.mkdir()
        (tools / "ldconfig").write_text(f"#!/bin/sh\necho called >> '{self.root}/ldconfig'\n")
        (tools / "ldconfig").chmod(0o755)
        self.env = os.environ | {"PATH": f"{tools}:{os.environ['PATH']}"}
        self.before = self.files()

    def files(self):
        return {str(path.relative_to(self.root)) for path in self.root.rglob("*")
                if not str(path.relative_to(self.root)).startswith(("var/lib/dpkg", "ldconfig"))}

    def dpkg(self, *words):
        return run("dpkg", f"--root={self.root}", f"--log={self.root}/var/lib/dpkg/log", "--force-depends",
                   "--force-script-chrootless", *words, env=self.env)

    def test_installs_and_goes_without_a_trace(self):
        self.dpkg("-i", package)
        self.assertEqual(run(self.root / "usr/bin/lershow", "status"), run(BUILD / "host/lershow", "status"))
        self.dpkg("-r", "rsvp-show")
        self.assertEqual(self.files(), self.before)
        self.dpkg("-P", "rsvp-show")
        self.assertEqual((self.root / "var/lib/dpkg/status").read_text().strip(), "")
        self.assertEqual((self.root / "ldconfig").read_text(), "called\n" * 2)


if __name__ == "__main__":
    unittest.main()
