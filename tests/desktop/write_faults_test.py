"""What stands at a path when the console program for Windows writes to difficult places: the old file or the new one,
whole, and nothing beside it that the program could have taken away."""

import pathlib
import subprocess
import tempfile
import unittest

import desktop
import fit_file

TOOL = ["increase-timestamp"]
SHIFT = ["minutes=5"]
LONG = "/".join(letter * 90 for letter in "abc")  # with the folder before it and the name behind, 300 characters

# Source, destination, and the files that are there afterwards beside the source.
WRITTEN = (
    ("ride.fit", "out.fit", ["out.fit"]),
    ("ride.fit", "out", ["out.fit"]),
    ("ride.fit", "old.fit", ["old.fit"]),
    ("ride.fit", LONG + "/out.fit", [LONG + "/out.fit"]),
    (LONG + "/ride.fit", "out.fit", [LONG + "/ride.fit", "out.fit"]),
    ("走行 記録.fit", "出力 ファイル.fit", ["走行 記録.fit", "出力 ファイル.fit"]),
    ("Поездка.fit", "Вывод.fit", ["Поездка.fit", "Вывод.fit"]),
    ("🚴 ride.fit", "🏁.fit", ["🚴 ride.fit", "🏁.fit"]),
    ("with  two blanks.fit", "a b.c d.fit", ["with  two blanks.fit", "a b.c d.fit"]),
)

# Spellings of one file: the tool does not write over its own source.
ITSELF = "a longer ride.fit"
SAME_FILE = (ITSELF, ITSELF.upper(), "./" + ITSELF, ".\\A Longer ride.fit", "folder/../" + ITSELF, "{absolute}", "{short}")


def shifted(source):
    """The file that the tool makes, by the native program."""
    with tempfile.TemporaryDirectory() as folder:
        (pathlib.Path(folder) / "in.fit").write_bytes(source)
        subprocess.run([str(desktop.NATIVE_CLI), *TOOL, "in.fit", "out.fit", *SHIFT], cwd=folder, check=True,
                       capture_output=True)
        return (pathlib.Path(folder) / "out.fit").read_bytes()


def tool(source, destination):
    return ["wine", str(desktop.BUILD / "torvane-cli.exe"), *TOOL, source, destination, *SHIFT]


def short_name(folder, name):
    """The name of eight and three characters that goes with a longer one."""
    listed = subprocess.run(["wine", "cmd", "/c", "dir", "/x"], cwd=folder, env=desktop.environment(),
                            capture_output=True, text=True).stdout
    return next(line for line in listed.splitlines() if line.endswith(name)).removesuffix(name).split()[-1]


def mount(folder, options):
    """A disk of its own over a folder, or over it again with other options; false where that is not allowed."""
    return subprocess.run(["mount", "-t", "tmpfs", "-o", options, "tmpfs", str(folder)], capture_output=True).returncode == 0


class WriteFaultsTest(unittest.TestCase):
    def setUp(self):
        desktop.make_prefix()
        self.addCleanup(desktop.end_wine)
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = pathlib.Path(temporary.name)
        self.source = fit_file.ride(60)
        self.old = fit_file.ride(30)
        self.new = shifted(self.source)

    def run_tool(self, source, destination):
        return subprocess.run(tool(source, destination), cwd=self.folder, env=desktop.environment(),
                              capture_output=True).returncode

    def files(self):
        return {str(path.relative_to(self.folder)): path.read_bytes() for path in self.folder.rglob("*") if path.is_file()}

    def make(self, name, content):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        return path

    def test_written_wherever_it_is(self):
        self.assertGreater(len(str(self.folder / LONG / "out.fit")), 290)
        for source, destination, expected in WRITTEN:
            with self.subTest(f"{source} to {destination}"):
                for name in self.files():
                    (self.folder / name).unlink()
                self.make("ride.fit", self.source)
                self.make("old.fit", self.old)
                (self.folder / LONG).mkdir(parents=True, exist_ok=True)
                self.make(source, self.source)
                self.assertEqual(self.run_tool(source, destination), 0)
                after = {"ride.fit": self.source, "old.fit": self.old, source: self.source}
                after[expected[-1]] = self.new
                self.assertEqual(self.files(), after)

    def test_never_over_its_own_source(self):
        (self.folder / "folder").mkdir()
        path = self.make(ITSELF, self.source)
        names = {"absolute": desktop.windows_path(path).upper(), "short": short_name(self.folder, ITSELF)}
        self.assertIn("~", names["short"])
        for spelling in SAME_FILE:
            with self.subTest(spelling):
                self.assertEqual(self.run_tool(ITSELF, spelling.format(**names)), 2)
                self.assertEqual(list(self.files().values()), [self.source])

    def test_refused_places(self):
        self.make("ride.fit", self.source)
        self.make("read-only.fit", self.old).chmod(0o444)
        (self.folder / "folder.fit").mkdir()
        before = self.files()
        for destination in ("read-only.fit", "folder.fit", "nowhere/out.fit", "ride.fit/out.fit", "a|b?.fit", "Q:\\out.fit"):
            with self.subTest(destination):
                self.assertNotEqual(self.run_tool("ride.fit", destination), 0)
                self.assertEqual(self.files(), before)

    def test_disk_without_room_or_right(self):
        disk = self.folder / "disk"
        disk.mkdir()
        if not mount(disk, "size=16k"):
            self.skipTest("mounting a small disk needs root")
        self.addCleanup(subprocess.run, ["umount", str(disk)], check=True)
        self.source = fit_file.ride(2000)
        self.make("ride.fit", self.source)
        self.make("disk/out.fit", self.old)
        before = self.files()
        for fault, options in (("full", None), ("read-only", "remount,ro")):
            with self.subTest(fault):
                self.assertTrue(options is None or mount(disk, options))
                for destination in ("disk/out.fit", "disk/new.fit"):
                    self.assertNotEqual(self.run_tool("ride.fit", destination), 0)
                    self.assertEqual(self.files(), before)


if __name__ == "__main__":
    desktop.main()
