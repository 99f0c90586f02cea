"""Makes the packages, and uses them as whoever gets them would: the ZIP unpacked into a path with blanks and run under
Wine, the Debian packages installed into a clean root."""

import os
import pathlib
import shutil
import subprocess
import sys
import unittest
import zipfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "desktop"))

from desktop import BUILD, Desktop, environment, make_prefix  # noqa: E402

PACKAGES = ROOT / "build" / "packages"
POWER_AND_VELOCITY = 801
QUESTION = ["power-and-velocity", "rideTarget=power", "rideVelocity=40"]


def run(*words, **options):
    return subprocess.run([str(word) for word in words], check=True, capture_output=True, text=True, timeout=300,
                          **options).stdout


def the_package(pattern):
    found = list(PACKAGES.glob(pattern))
    assert len(found) == 1, found
    return found[0]


class ZipTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        place = BUILD / "package test" / "a folder with blanks"
        shutil.rmtree(place, ignore_errors=True)
        with zipfile.ZipFile(the_package("*.zip")) as archive:
            archive.extractall(place)
        (cls.folder,) = place.iterdir()
        make_prefix()

    def test_console_program_answers_with_a_sample_profile(self):
        words = ["--profile", "samples\\profiles\\road.pro", *QUESTION]
        printed = run("wine", "torvane-cli.exe", *words, cwd=self.folder, env=environment())
        self.assertIn("369.157 W", printed)

    def test_desktop_program_runs_and_keeps_its_parameter_file_beside_itself(self):
        parameters = self.folder / "Torvane.par"
        self.assertFalse(parameters.exists())
        with Desktop(self.folder, unpacked=True) as desktop:
            desktop.command(POWER_AND_VELOCITY)
            desktop.confirm(desktop.dialog("power and velocity"))
            self.assertIn("velocity\t\t\t:   40.000 kph", desktop.report())
            desktop.close()
        self.assertEqual(parameters.stat().st_size, 2416)

    def test_manual_shows_all_its_pictures_and_links(self):
        for page in (self.folder / "manual").glob("*.html"):
            text = page.read_text(encoding="utf-8")
            targets = [part.split('"')[0] for mark in ('src="', 'href="') for part in text.split(mark)[1:]]
            for target in targets:
                name, _, anchor = target.partition("#")
                with self.subTest(f"{page.name} to {target}"):
                    self.assertTrue((page.parent / name).exists() if name else f'id="{anchor}"' in text)


class DebTest(unittest.TestCase):
    """A root of its own, whose list of packages names only what the package asks for."""

    @classmethod
    def setUpClass(cls):
        cls.root = BUILD / "package-root"
        shutil.rmtree(cls.root, ignore_errors=True)
        records = cls.root / "var" / "lib" / "dpkg"
        for folder in ("info", "updates", "triggers"):
            (records / folder).mkdir(parents=True)
        needed = ["libc6", "libexpat1", "libexpat1-dev", "libgcc-s1", "libstdc++6", "zlib1g", "zlib1g-dev"]
        status = run("dpkg-query", "-W", "-f", "Package: ${Package}\nStatus: ${Status}\nVersion: ${Version}\n"
                     "Architecture: ${Architecture}\nMaintainer: nobody\nDescription: -\n\n", *needed)
        (records / "status").write_text(status)
        dpkg = ["dpkg", "--force-not-root", "--force-script-chrootless", "--log=/dev/null"]
        if os.geteuid() != 0:
            dpkg.insert(0, "fakeroot")
        run(*dpkg, f"--root={cls.root}", "--install", the_package("torvane-cli_*.deb"),
            the_package("libtorvane-dev_*.deb"))

    def installed(self, path):
        return self.root / "usr" / path

    def test_program_answers(self):
        profile = self.installed("share/torvane/samples/profiles/road.pro")
        printed = run(self.installed("bin/torvane-cli"), "--profile", profile, *QUESTION)
        self.assertIn("369.157 W", printed)

    def test_library_builds_a_program(self):
        env = {**os.environ, "PKG_CONFIG_PATH": str(self.installed("lib/pkgconfig"))}
        flags = run("pkg-config", "--cflags", "--libs", "torvane", env=env).split()
        source = self.installed("share/doc/libtorvane-dev/examples/climb.cpp")
        run("c++", "-std=c++20", source, "-o", self.root / "climb", *flags)
        printed = run(self.root / "climb", "250", "9", self.installed("share/torvane/samples/profiles/road.pro"))
        self.assertIn("36 teeth: velocity", printed)
        self.assertTrue(self.installed("lib/cmake/Torvane/TorvaneConfig.cmake").exists())

    def test_manual_page_reads_without_complaint_and_names_the_version(self):
        source = run("zcat", self.installed("share/man/man1/torvane-cli.1.gz"))
        page = subprocess.run(["groff", "-man", "-Tascii", "-ww", "-P-cbou"], input=source, capture_output=True, text=True)
        self.assertEqual(page.stderr, "")
        version = run(self.installed("bin/torvane-cli"), "--version").split()[1]
        self.assertIn(f"Torvane {version}", page.stdout)

    def complete(self, *words):
        script = (
            'source "$0"; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _torvane_cli; printf "%s\\n" "${COMPREPLY[@]}"'
        )
        path = f"{self.installed('bin')}:{os.environ['PATH']}"
        completion = self.installed("share/bash-completion/completions/torvane-cli")
        return run("bash", "-c", script, completion, *words, env={**os.environ, "PATH": path}).split()

    def test_completion_knows_commands_entries_and_options(self):
        self.assertEqual(self.complete("torvane-cli", "pattern"), ["pattern-braking"])
        self.assertEqual(self.complete("torvane-cli", "--pro"), ["--profile"])
        self.assertEqual(self.complete("torvane-cli", "--set", "windS"), ["windSpeed="])
        self.assertEqual(self.complete("torvane-cli", "--json", "critical-cornering", "corn"), ["corneringRadius="])
        self.assertEqual(self.complete("torvane-cli", "help", "cond"), ["condition"])


def setUpModule():
    subprocess.run([ROOT / "package"], check=True, stdout=subprocess.DEVNULL)


if __name__ == "__main__":
    unittest.main()
