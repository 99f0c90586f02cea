"""The console program for Windows prints the same bytes as the native one."""

import gzip
import itertools
import pathlib
import subprocess
import tempfile

import desktop
import fit_file

WINDOWS_CLI = desktop.BUILD / "torvane-cli.exe"

COMMANDS = (
    ["all-profile"],
    ["condition"],
    ["--set", "motorLocation=hub", "--set", "assistRangeMode[0]=constant", "all-profile"],
    ["cadence-theory", "theoryTarget=power", "theoryCadence=85"],
    ["pedaling-dynamics"],
    ["gear-combination"],
    ["power-and-velocity", "rideTarget=power", "rideVelocity=40"],
    ["power-and-velocity", "rideTarget=velocity", "ridePower=250", "rideInclination=3"],
    ["acceleration", "rideTarget=sector-time", "rideLegTime=12", "rideEndVelocity=36"],
    ["deceleration"],
    ["pattern-braking", "rideTarget=1"],
    ["inclination-and-velocity"],
    ["critical-cornering"],
    ["--json", "acceleration"],
    ["power-and-velocity", "rideVelocity=201"],
    ["load", "ride.fit"],
    ["express", "ride.fit"],
    ["analyse", "ride.fit"],
    ["create", "ride.fit", "analysed.fit"],
    ["prepare", "ride.gpx", "from-track.fit"],
    ["prepare", "latin.gpx.gz", "from-track.fit"],
    ["prepare", "bomb.gpx", "none.fit"],
    ["load", "missing.fit"],
    ["nonsense"],
)

POINTS = "".join(f"<trkpt lat='{47 + i / 1e4:.4f}' lon='8'><ele>{i}</ele><time>2024-06-15T07:{i // 60:02}:{i % 60:02}Z"
                 "</time><extensions><t:hr>120</t:hr></extensions></trkpt>" for i in range(120))
TRACK = f"<gpx xmlns:t='urn:t'><trk><name>F\xfcr</name><type>bike</type><trkseg>{POINTS}</trkseg></trk></gpx>"
TRACKS = {
    "ride.gpx": TRACK.encode(),
    "latin.gpx.gz": gzip.compress(("<?xml version='1.0' encoding='ISO-8859-1'?>" + TRACK).encode("latin-1")),
    "bomb.gpx": ("<!DOCTYPE gpx [<!ENTITY a 'aaaa'>]>" + TRACK).encode(),
}


class ConsoleTest(desktop.DesktopTest):
    """Beside the desktop program: it keeps Wine's own services running, which else write their faults on the standard
    error of the console call that happens to start them."""

    def answers(self, program, files):
        """What each command prints, its exit code, and what then is in the folder."""
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            for file, content in files.items():
                (folder / file).write_bytes(content)
            for arguments in COMMANDS:
                done = subprocess.run([*program, *arguments], cwd=folder, env=self.desktop.env, capture_output=True)
                # A path stands there as its system writes it.
                told = done.stderr.replace(f"Z:{name}/".replace("/", "\\").encode(), b"").replace(f"{name}/".encode(), b"")
                yield [done.stdout, told, done.returncode, *((path.name, path.read_bytes()) for path in sorted(folder.iterdir()))]

    def test_same_bytes_and_files(self):
        files = TRACKS | {"ride.fit": fit_file.ride(400)}
        native = self.answers([str(desktop.NATIVE_CLI)], files)
        under_wine = self.answers(["wine", str(WINDOWS_CLI)], files)
        for arguments, wanted, told in zip(COMMANDS, native, under_wine):
            for one, other in itertools.zip_longest(wanted, told):
                with self.subTest(" ".join(arguments)):
                    self.assertTrue(one == other, f"{one!r:.1000} and {other!r:.1000}")


if __name__ == "__main__":
    desktop.main()
