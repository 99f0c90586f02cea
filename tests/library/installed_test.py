"""Installs the library into a folder of its own and uses it from there as others would: the examples, built by CMake
and by pkg-config, must answer what the console answers."""

import os
import pathlib
import re
import shlex
import shutil
import subprocess
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ.get("TORVANE_BUILD", ROOT / "build" / "native"))
CLI = BUILD / "torvane-cli"
PLACE = BUILD / "installed library"
PREFIX = PLACE / "usr"
PROFILE = ROOT / "samples" / "profiles" / "road.pro"
RIDES = ROOT / "samples" / "rides"


def run(*words, **options):
    done = subprocess.run([str(word) for word in words], capture_output=True, text=True, timeout=300, **options)
    assert done.returncode == 0, f"{words}\n{done.stdout}{done.stderr}"
    return done.stdout


def plain(text):
    return re.sub(r"\s+", "", text)


def console_line(name, *words):
    """The first line of an answer that begins with a name."""
    printed = subprocess.run([CLI, "--profile", PROFILE, *words], capture_output=True, text=True, timeout=60).stdout
    return plain(next((line for line in printed.splitlines() if line.strip().startswith(name)), ""))


class InstalledTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        shutil.rmtree(PLACE, ignore_errors=True)
        run("cmake", "--install", BUILD, "--prefix", PREFIX, "--component", "development")
        launcher = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
        run("cmake", "-S", ROOT / "examples", "-B", PLACE / "examples", "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={PREFIX}",
            "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Wshadow -Werror", *launcher)
        run("cmake", "--build", PLACE / "examples")

    def check_climb(self, program):
        lines = run(program, "250", "9", PROFILE).splitlines()
        self.assertEqual(len(lines), 4)
        for line in lines:
            teeth = line.split()[0]
            words = ["--set", "sprocketCount=11", "--set", f"sprocket[10]={teeth}", "power-and-velocity",
                     "rideTarget=velocity", "ridePower=250", "rideInclination=9"]
            wanted = f"{teeth}teeth:{console_line('velocity', *words)},{console_line('cadence', *words)}"
            self.assertEqual(plain(line), wanted)
            self.assertIn("rpmgeared", wanted)

    def test_public_headers_know_no_others(self):
        headers = sorted(path.name for path in (PREFIX / "include").rglob("*"))
        self.assertEqual(headers, sorted(["torvane"] + [path.name for path in (ROOT / "include/torvane").iterdir()]))
        for header in (PREFIX / "include/torvane").iterdir():
            for name in re.findall(r'#include "(.*)"', header.read_text(encoding="utf-8")):
                self.assertTrue((PREFIX / "include" / name).exists(), name)

    def test_climb_answers_as_the_console(self):
        self.check_climb(PLACE / "examples" / "climb")

    def test_folder_answers_as_the_console_for_each_ride(self):
        lines = run(PLACE / "examples" / "folder-power", RIDES, PROFILE).splitlines()
        self.assertEqual([line.split(":")[0] for line in lines], sorted(path.name for path in RIDES.glob("*.fit")))
        powers = 0
        for line in lines:
            name, _, told = line.partition(":")
            wanted = console_line("pedaling power", "analyse", RIDES / name)
            powers += wanted != ""
            refused = any(words in told for words in ("no need to analyse", "can not analyse", "invalid CRC"))
            self.assertTrue(plain(told) == wanted or (wanted == "" and refused), line)
        self.assertGreater(powers, 2)

    def test_pkg_config_finds_the_same(self):
        env = {**os.environ, "PKG_CONFIG_PATH": str(PREFIX / "lib" / "pkgconfig")}
        self.assertEqual(run("pkg-config", "--modversion", "torvane", env=env).strip(), run(CLI, "--version").split()[1])
        flags = shlex.split(run("pkg-config", "--cflags", "--libs", "torvane", env=env))
        program = PLACE / "climb"
        run("c++", "-std=c++20", ROOT / "examples" / "climb.cpp", "-o", program, *flags)
        self.check_climb(program)


if __name__ == "__main__":
    unittest.main()
