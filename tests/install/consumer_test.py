"""A project that has only the installed tree builds, fills tables and shows them.  usage: consumer_test.py BUILD COMPILER"""

import os
import shutil
import sys
import tempfile
import unittest
from pathlib import Path

import commands

COMPILER = sys.argv.pop()
BUILD = Path(sys.argv.pop())
ROOT = Path(__file__).resolve().parents[2]
CONSUMER = ROOT / "tests/consumer"
WARNINGS = ["-Wall", "-Wextra", "-Werror"]
# What a build may not hold, so that nothing but the installed tree serves it.
BARE = {name: value for name, value in os.environ.items()
        if name not in ("LD_LIBRARY_PATH", "CPATH", "LIBRARY_PATH", "CMAKE_PREFIX_PATH", "PKG_CONFIG_PATH")}

LIBRARIES = ("RsvpLerCliCapi", "RsvpLerPlatform", "RsvpLerState")


def run(*words, env=None):
    return commands.run(*words, env=BARE | (env or {}))


def setUpModule():
    global top, prefix
    top = Path(tempfile.mkdtemp(dir=BUILD, prefix="stage "))
    unittest.addModuleCleanup(shutil.rmtree, top)
    prefix = top / "staged"
    run("cmake", "--install", BUILD, "--prefix", prefix)
    # What is found only where it was put first is not found any more.
    prefix = prefix.rename(top / "moved")


class InstalledTree(unittest.TestCase):
    def files(self, directory):
        return {str(path.relative_to(directory)) for path in directory.rglob("*") if not path.is_dir()}

    def test_everything_is_in_its_place(self):
        files = self.files(prefix)
        headers = {name for name in files if name.startswith("include/rsvp-ler/")}
        self.assertIn("include/rsvp-ler/RsvpLer/RsvpLerCliCapi.h", headers)
        self.assertIn("include/rsvp-ler/vane/Epoch.h", headers)
        expected = {"bin/lershow", "lib/pkgconfig/RsvpLerCliCapi.pc", "share/man/man1/lershow.1",
                    "share/bash-completion/completions/lershow", "share/rsvp-show/schema/tunnel.schema.json",
                    "share/rsvp-show/schema/status.schema.json"}
        expected |= {f"lib/cmake/RsvpLerCliCapi/RsvpLerCliCapi{part}.cmake"
                     for part in ("Config", "ConfigVersion", "Targets")}
        self.assertEqual({name for name in files - headers if not name.startswith(("lib/lib", "lib/cmake/RsvpLerCliCapi/"
                                                                                    "RsvpLerCliCapiTargets-"))}, expected)

    def test_libraries_carry_their_version(self):
        for library in LIBRARIES:
            file = prefix / f"lib/lib{library}.so"
            self.assertRegex(str(file.resolve()), r"\.so\.\d+\.\d+\.\d+$")
            self.assertRegex(run("readelf", "-d", file), rf"SONAME.*\[lib{library}\.so\.\d+\.\d+\]")

    def test_no_file_names_the_build_or_the_source(self):
        for path in prefix.rglob("*"):
            if path.is_file() and not path.is_symlink() and "lib/lib" not in str(path) and path.name != "lershow":
                text = path.read_bytes()
                for directory in (BUILD, ROOT, top):
                    self.assertNotIn(str(directory).encode(), text, path)

    def test_headers_need_no_others(self):
        include = prefix / "include/rsvp-ler"
        headers = sorted(self.files(include))
        every = top / "every.cpp"
        for order in (headers, headers[::-1]):
            every.write_text("".join(f'#include "{name}"\n' for name in order))
            run(COMPILER, "-std=c++20", *WARNINGS, "-fsyntax-only", f"-I{include}", every)


class Program(unittest.TestCase):
    def test_shows_what_the_one_in_the_build_tree_shows(self):
        for words in (["status"], ["tunnel", "--detail", "--json"]):
            self.assertEqual(run(prefix / "bin/lershow", *words), run(BUILD / "host/lershow", *words))

    def test_uses_the_libraries_of_its_own_tree(self):
        libraries = [line.split("=> ")[1] for line in run("ldd", prefix / "bin/lershow").splitlines() if "RsvpLer" in line]
        self.assertEqual(len(libraries), 2)
        for library in libraries:
            self.assertTrue(library.startswith(str(prefix)), library)

    def test_loads_the_module_without_the_link_that_is_for_linking(self):
        shutil.copytree(prefix, top / "run time", symlinks=True)
        for library in LIBRARIES:
            (top / f"run time/lib/lib{library}.so").unlink()
        self.assertEqual(run(top / "run time/bin/lershow", "status"), run(BUILD / "host/lershow", "status"))


class Consumer(unittest.TestCase):
    EXPECTED = (CONSUMER / "expected.txt").read_text()

    def configure(self, name, source, *words):
        run("cmake", "-S", source, "-B", top / name, "-G", "Ninja", f"-DCMAKE_CXX_COMPILER={COMPILER}",
            f"-DCMAKE_PREFIX_PATH={prefix}", *words)

    def test_through_cmake(self):
        self.configure("cmake", CONSUMER, "-DCMAKE_CXX_FLAGS=" + " ".join(WARNINGS))
        run("cmake", "--build", top / "cmake")
        self.assertEqual(run(top / "cmake/consumer"), self.EXPECTED)

    def test_flags_of_this_project_do_not_reach_it(self):
        self.configure("flags", CONSUMER, "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON")
        commands = (top / "flags/compile_commands.json").read_text()
        self.assertIn("main.cpp", commands)
        for flag in ("-Werror", "-Wall", "-fno-semantic-interposition", str(ROOT / "platform")):
            self.assertNotIn(flag, commands)

    def test_a_version_with_another_interface_is_refused(self):
        project = top / "version"
        project.mkdir()
        (project / "CMakeLists.txt").write_text("cmake_minimum_required(VERSION 3.23)\nproject(V LANGUAGES CXX)\n"
                                                "find_package(RsvpLerCliCapi ${WANTED} REQUIRED)\n")
        self.configure("accepted", project, "-DWANTED=0.1.0")
        with self.assertRaisesRegex(AssertionError, "RsvpLerCliCapi"):
            self.configure("refused", project, "-DWANTED=0.2")

    def test_through_pkg_config(self):
        env = {"PKG_CONFIG_PATH": str(prefix / "lib/pkgconfig")}
        self.assertRegex(run("pkg-config", "--modversion", "RsvpLerCliCapi", env=env), r"^\d+\.\d+\.\d+\n$")
        build = (f"{COMPILER} -std=c++20 {' '.join(WARNINGS)} '{CONSUMER}/main.cpp' -o '{top}/by-pkg-config' "
                 "$(pkg-config --cflags --libs RsvpLerCliCapi)")
        run("bash", "-c", f"eval \"{build}\"", env=env)
        self.assertEqual(run(top / "by-pkg-config", env={"LD_LIBRARY_PATH": str(prefix / "lib")}), self.EXPECTED)


if __name__ == "__main__":
    unittest.main()
