"""What the commands in scripts/ promise, with stand-ins for the build tools that note each call.

Each test works in a copy of scripts/, so it neither builds the project nor touches its build directories.
"""

import json
import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

SCRIPTS = Path(__file__).resolve().parents[2] / "scripts"

# Each stand-in adds a line to the file $CALLS. `dpkg-query` knows the packages that the file $INSTALLED names, all of them
# when there is no such file.
STANDINS = {
    "dpkg-query": r"""
shift 3
for package in "$@"; do
   if [ ! -f "$INSTALLED" ] || grep -qx "$package" "$INSTALLED"; then echo "installed $package"; fi
done""",
    "apt-get": r"""
echo "apt-get $*" >> "$CALLS"
echo "apt says this"
[ "$1" = install ] && rm -f "$INSTALLED" || true""",
    "sudo": r"""
echo sudo >> "$CALLS"
exec "$@" """,
    "id": "echo 1000",
    "cmake": r"""
echo cmake >> "$CALLS"
touch "$2/build/$4/build.ninja"
echo "cmake says this" """,
    "ninja": r"""
if [ "$3" = -n ]; then
   if [ -f "$2/current" ]; then echo "ninja: no work to do."; else echo "[1/1] something"; fi
   exit 0
fi
echo "ninja $3" >> "$CALLS"
echo "ninja says this"
[ -f "$2/broken" ] && { echo "error: broken"; exit 1; }
[ -f "$INSTALLED" ] && { echo "error: no compiler"; exit 1; }
mkdir -p "$2/host"
printf '#!/bin/sh\nprintf "<%%s>" "$@"; echo; pwd; exit 7\n' > "$2/host/lershow"
chmod +x "$2/host/lershow"
touch "$2/current" """,
}


PACKAGES = {"g++", "cmake", "ninja-build", "libgtest-dev", "libgmock-dev", "libsimdjson-dev", "libcli11-dev",
            "libjemalloc-dev", "nlohmann-json3-dev", "python3", "python3-jsonschema", "clang-format", "pkgconf",
            "dpkg-dev", "mandoc", "socat"}


class Sandbox(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.top = Path(directory.name).resolve()
        self.root = self.top / "a checkout"
        shutil.copytree(SCRIPTS, self.root / "scripts")
        self.build = self.root / "build/release"
        self.calls = self.top / "calls"
        self.calls.touch()
        tools = self.top / "tools"
        tools.mkdir()
        for name, body in STANDINS.items():
            (tools / name).write_text("#!/bin/bash\n" + body + "\n")
            (tools / name).chmod(0o755)
        self.environment = {**os.environ, "PATH": f"{tools}:{os.environ['PATH']}", "CALLS": str(self.calls),
                            "INSTALLED": str(self.top / "installed")}
        self.environment.pop("CI", None)

    def install(self, packages):
        """Has only these packages on the machine; without it there are all."""
        (self.top / "installed").write_text("".join(package + "\n" for package in packages))

    def run_script(self, name, *arguments, cwd=None):
        """Exit status, standard output and standard error of a script, and the calls of the tools."""
        self.calls.write_text("")
        path = name if isinstance(name, Path) else self.root / "scripts" / name
        done = subprocess.run([path, *arguments], cwd=cwd or self.top, env=self.environment, capture_output=True,
                              text=True, timeout=60)
        return done.returncode, done.stdout, done.stderr, self.calls.read_text().splitlines()


class BuildAndRunTest(Sandbox):
    def test_the_first_run_configures_builds_and_shows_the_tunnels(self):
        self.assertEqual(self.run_script("run"), (7, f"<tunnel>\n{self.top}\n", "build: building build/release\n",
                                                  ["cmake", "ninja lershow"]))

    def test_a_run_of_a_current_build_calls_nothing_and_says_nothing(self):
        self.run_script("run")
        self.assertEqual(self.run_script("run", "status"), (7, f"<status>\n{self.top}\n", "", []))

    def test_a_run_after_a_change_builds_without_configuring(self):
        self.run_script("run")
        (self.build / "current").unlink()
        self.assertEqual(self.run_script("run", "status")[3], ["ninja lershow"])

    def test_arguments_and_the_working_directory_arrive_unchanged(self):
        elsewhere = self.top / "else where"
        elsewhere.mkdir()
        self.assertEqual(self.run_script("run", "tunnel", "a b", "", "*", cwd=elsewhere)[1],
                         f"<tunnel><a b><><*>\n{elsewhere}\n")

    def test_run_works_through_symbolic_links(self):
        link = self.top / "link"
        link.symlink_to(self.root / "scripts/run")
        again = self.top / "again"
        again.symlink_to("link")
        self.assertEqual(self.run_script(again, "status")[1], f"<status>\n{self.top}\n")

    def test_a_failing_build_shows_its_log_and_runs_nothing(self):
        self.run_script("run")
        (self.build / "current").unlink()
        (self.build / "broken").touch()
        self.assertEqual(self.run_script("run", "status"),
                         (1, "", "build: building build/release\nninja says this\nerror: broken\n", ["ninja lershow"]))

    def test_a_build_without_quiet_shows_its_log_on_standard_error(self):
        status, out, err, _ = self.run_script("build", "release")
        self.assertEqual((status, out), (0, ""))
        self.assertEqual(err, "build: building build/release\ncmake says this\nninja says this\n")

    def test_every_preset_can_be_built(self):
        presets = json.loads((SCRIPTS.parent / "CMakePresets.json").read_text())["configurePresets"]
        for preset in (preset["name"] for preset in presets if not preset.get("hidden")):
            with self.subTest(preset):
                self.assertEqual(self.run_script("build", preset)[0], 0)
                self.assertTrue((self.root / "build" / preset / "current").exists())

    def test_a_preset_that_is_not_there_is_refused_and_leaves_nothing(self):
        for preset in ("nosuch", "--help"):
            with self.subTest(preset):
                self.assertEqual(self.run_script("build", preset),
                                 (2, "", f"build: there is no preset {preset}; CMakePresets.json has them\n", []))
                self.assertFalse((self.root / "build" / preset).exists())

    def test_a_tool_that_went_missing_is_installed_and_the_build_tried_again(self):
        self.run_script("run")
        (self.build / "current").unlink()
        (self.top / "installed").write_text("cmake\n")
        status, out, _, calls = self.run_script("run", "status")
        self.assertEqual((status, out), (7, f"<status>\n{self.top}\n"))
        self.assertEqual([call.split(" -")[0] for call in calls if call != "sudo"],
                         ["ninja lershow", "apt-get update", "apt-get install", "cmake", "ninja lershow"])

    def test_setup_is_silent_when_nothing_is_missing(self):
        self.assertEqual(self.run_script("setup"), (0, "", "", []))
        self.assertEqual(self.run_script("setup", "--check"), (0, "", "", []))

    def test_setup_installs_what_is_missing_and_no_more(self):
        self.install(PACKAGES - {"cmake", "clang-format"})
        status, out, err, calls = self.run_script("setup")
        self.assertEqual((status, out), (0, ""))
        self.assertEqual(err.splitlines()[0], "setup: installing cmake clang-format")
        self.assertEqual(calls, ["sudo", "apt-get update -q", "sudo",
                                 "apt-get install -q -y --no-install-recommends cmake clang-format"])

    def test_setup_check_installs_nothing(self):
        (self.top / "installed").write_text("cmake\n")
        self.assertEqual(self.run_script("setup", "--check"), (1, "", "", []))

    def test_setup_adds_the_second_compiler_for_the_presets_that_use_it(self):
        self.install(PACKAGES)
        self.assertEqual(self.run_script("setup", "--check")[0], 0)
        self.assertEqual(self.run_script("setup", "--clang", "--check")[0], 1)
        err = self.run_script("build", "asan")[2]
        self.assertEqual(err.splitlines()[:2],
                         ["build: building build/asan", "setup: installing clang libclang-rt-14-dev"])

    def test_setup_refuses_an_option_that_it_does_not_know(self):
        self.assertEqual(self.run_script("setup", "--all"),
                         (2, "", "setup: unknown option --all; the options are --clang, --ci, --coverage, --bench and "
                                 "--check\n", []))

    def test_package_prints_the_file_that_it_made(self):
        cpack = self.top / "tools/cpack"
        cpack.write_text("#!/bin/bash\necho \"cpack $2\" >> \"$CALLS\"\necho packing\ntouch \"$4/made_1_amd64.deb\"\n")
        cpack.chmod(0o755)
        made = self.root / "build/package/made_1_amd64.deb"
        status, out, err, calls = self.run_script("package")
        self.assertEqual((status, out), (0, f"{made}\n"))
        self.assertIn("packing\n", err)
        self.assertEqual(calls, ["cmake", "ninja lershow", f"cpack {self.build}/CPackConfig.cmake"])
        self.assertTrue(made.exists())
        self.assertEqual(self.run_script("package", "elsewhere")[1], f"{self.top}/elsewhere/made_1_amd64.deb\n")

    def test_package_of_a_build_that_fails_is_not_made(self):
        self.run_script("build", "release")
        (self.build / "current").unlink()
        (self.build / "broken").touch()
        self.assertEqual(self.run_script("package")[::3], (1, ["ninja lershow"]))

    def test_bless_of_a_case_that_is_not_there(self):
        for case in ("nosuch", "--help"):
            with self.subTest(case):
                self.assertEqual(self.run_script("bless", case),
                                 (2, "", f"bless: there is no case {case} in tests/golden\n", []))

    def test_bless_is_refused_in_ci(self):
        self.environment["CI"] = "1"
        self.assertEqual(self.run_script("bless"),
                         (2, "", "bless: refused, since CI is set: expected files are written and read by people\n", []))


class TestScriptTest(Sandbox):
    """scripts/test, with a ctest that prints the closing line it is told to."""

    def setUp(self):
        super().setUp()
        ctest = self.top / "tools/ctest"
        ctest.write_text("#!/bin/bash\necho \"ctest $2\" >> \"$CALLS\"\ncat \"$CALLS.$2\"\n"
                         "! grep -qE ' [1-9][0-9]* tests failed|crashed' \"$CALLS.$2\"\n")
        ctest.chmod(0o755)

    def closing(self, **lines):
        for preset, line in lines.items():
            Path(f"{self.calls}.{preset}").write_text(line + "\n")

    def last_line(self, *arguments):
        status, out, _, calls = self.run_script("test", *arguments)
        return status, out.splitlines()[-1], [call for call in calls if call.startswith(("ctest", "ninja"))]

    def test_every_preset_is_built_run_and_counted(self):
        self.closing(release="100% tests passed, 0 tests failed out of 40", asan="100% tests passed, 0 tests failed out of 41",
                     tsan="100% tests passed, 0 tests failed out of 2")
        self.assertEqual(self.last_line(), (0, "100% tests passed, 0 tests failed out of 83 (release 40, asan 41, tsan 2)", [
            "ninja ", "ctest release", "ninja ", "ctest asan", "ninja concurrent_tests", "ctest tsan"]))

    def test_one_preset_alone(self):
        self.closing(release="100% tests passed, 0 tests failed out of 40")
        self.assertEqual(self.last_line("release"), (0, "100% tests passed, 0 tests failed out of 40 (release 40)",
                                                     ["ninja ", "ctest release"]))

    def test_failures_in_any_preset_fail_and_are_counted(self):
        self.closing(release="95% tests passed, 2 tests failed out of 40", asan="98% tests passed, 1 tests failed out of 41",
                     tsan="100% tests passed, 0 tests failed out of 2")
        self.assertEqual(self.last_line()[:2], (1, "3 tests failed out of 83 (release 40, asan 41, tsan 2)"))

    def test_a_ctest_that_runs_nothing_fails(self):
        self.closing(release="No tests were found!!!")
        self.assertEqual(self.run_script("test", "release")[0], 1)

    def test_a_ctest_that_fails_without_a_failed_test_fails(self):
        self.closing(release="crashed\n100% tests passed, 0 tests failed out of 40")
        self.assertEqual(self.run_script("test", "release")[0], 1)


class FuzzTest(Sandbox):
    """With two targets; a program leaves its arguments behind and fails when the file `broken` names it."""

    def setUp(self):
        super().setUp()
        for target in ("Loader", "Order"):
            (self.root / "tests/fuzz/corpus" / target).mkdir(parents=True)
        programs = self.root / "build/asan/tests/fuzz"
        programs.mkdir(parents=True)
        (self.root / "build/asan/build.ninja").touch()
        (self.root / "build/asan/current").touch()
        self.broken = self.top / "broken"
        self.broken.touch()
        for target in ("Loader", "Order"):
            program = programs / f"fuzz_{target}"
            program.write_text(f"#!/bin/sh\necho {target} $1 >> '{self.calls}'\n"
                               f"echo stat::number_of_executed_units: 17\necho the log of {target}\n"
                               f"! grep -qx {target} '{self.broken}'\n")
            program.chmod(0o755)

    def test_the_targets_share_the_seconds(self):
        status, out, _, calls = self.run_script("fuzz", "60")
        self.assertEqual((status, out.splitlines()[-1]), (0, "no target broke"))
        self.assertEqual(calls, ["Loader -max_total_time=30", "Order -max_total_time=30"])

    def test_one_target_has_them_all(self):
        self.assertEqual(self.run_script("fuzz", "60", "Order")[3], ["Order -max_total_time=60"])

    def test_a_target_that_breaks_shows_its_log_and_the_next_one_runs(self):
        self.broken.write_text("Loader\n")
        status, out, err, calls = self.run_script("fuzz", "60")
        self.assertEqual((status, len(calls)), (1, 2))
        self.assertIn("the log of Loader", out)
        self.assertEqual(err, "fuzz: Loader broke; the inputs are in build/asan/findings\n")

    def test_wrong_usage_says_what_to_do(self):
        self.assertEqual(self.run_script("fuzz"),
                         (2, "", "fuzz: give the number of seconds that the targets share\n", []))
        self.assertEqual(self.run_script("fuzz", "60", "Elsewhere"),
                         (2, "", "fuzz: there is no target Elsewhere; the targets are Loader Order\n", []))


if __name__ == "__main__":
    unittest.main()
