"""The console program for Windows prints the same bytes as the native one."""

import gzip
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

    def run_both(self, arguments, folder):
        native = subprocess.run([str(desktop.NATIVE_CLI), *arguments], cwd=folder, capture_output=True)
        under_wine = subprocess.run(
            ["wine", str(WINDOWS_CLI), *arguments], cwd=folder, env=self.desktop.env, capture_output=True
        )
        return native, under_wine

    def test_same_bytes(self):
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / "ride.fit").write_bytes(fit_file.ride(400))
            for name, track in TRACKS.items():
                (pathlib.Path(folder) / name).write_bytes(track)
            for arguments in COMMANDS:
                with self.subTest(" ".join(arguments)):
                    native, under_wine = self.run_both(arguments, folder)
                    self.assertEqual(under_wine.stdout, native.stdout)
                    # A path stands there as its system writes it.
                    seen = under_wine.stderr.replace(f"Z:{folder}/".replace("/", "\\").encode(), f"{folder}/".encode())
                    self.assertEqual(seen, native.stderr)
                    self.assertEqual(under_wine.returncode, native.returncode)

    def test_same_files(self):
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / "ride.fit").write_bytes(fit_file.ride(400))
            made = {}
            for number, name in enumerate(("native", "wine")):
                target = f"{name}.fit"
                program = [str(desktop.NATIVE_CLI)] if number == 0 else ["wine", str(WINDOWS_CLI)]
                subprocess.run([*program, "create", "ride.fit", target], cwd=folder, env=self.desktop.env,
                               capture_output=True)
                made[name] = (pathlib.Path(folder) / target).read_bytes()
            self.assertEqual(made["native"], made["wine"])


if __name__ == "__main__":
    desktop.main()
