"""What the console program writes for programs, read by other programs: every answer by jq and by Python's json, every
table by Python's csv, and one of each kind by a spreadsheet. TORVANE_RIDES may name a folder of more rides."""

import csv
import io
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
CLI = pathlib.Path(os.environ.get("TORVANE_CLI", ROOT / "build" / "native" / "torvane-cli"))
SAMPLES = ROOT / "samples"
HOSTILE = b"\xff\"\\\n\x1b[31m\xe2\x80\xae=1,2"


def run(*arguments):
    return subprocess.run([CLI, *arguments], capture_output=True, timeout=600)


def rides():
    more = os.environ.get("TORVANE_RIDES")
    found = list((SAMPLES / "rides").glob("*.fit"))
    return found + (sorted(path for path in pathlib.Path(more).rglob("*") if path.is_file()) if more else [])


class AnswersTest(unittest.TestCase):
    def check_json(self, *arguments):
        done = run("--json", *arguments)
        with self.subTest(arguments):
            lines = done.stdout.splitlines()
            self.assertEqual(len(lines), 1)
            answer = json.loads(lines[0])
            self.assertEqual("error" in answer, done.returncode != 0)
            jq = subprocess.run(["jq", "-c", "."], input=done.stdout, capture_output=True)
            self.assertEqual(jq.returncode, 0, jq.stderr)
            for name, value in answer.get("figures", {}).items():
                self.assertIsNotNone(value, name)
            return answer

    def entries(self):
        for command in json.loads(run("help", "--json").stdout)["commands"]:
            if "files" not in command and command["forms"]:
                for form in command["forms"]:
                    for entry in form["entries"]:
                        yield command["name"], entry

    def test_json_over_defaults_limits_choices_and_refusals(self):
        for command, entry in self.entries():
            values = entry.get("choices") or [entry[end] for end in ("least", "most", "default") if end in entry]
            if "most" in entry:
                values.append(entry["most"] * 2 + 1)
            for value in [*values, "no such value"]:
                self.check_json(command, f"{entry['name']}={value}")

    def test_json_over_hostile_names(self):
        for arguments in [(HOSTILE,), ("load", HOSTILE), ("801", b"rideVelocity=" + HOSTILE), ("801", b"a=" + HOSTILE),
                          ("--par", HOSTILE, "801"), ("--profile", HOSTILE, "801"), (b"--" + HOSTILE,), ("help", HOSTILE)]:
            self.assertIn("error", self.check_json(*arguments))
        with tempfile.TemporaryDirectory() as folder:
            ride = os.path.join(os.fsencode(folder), HOSTILE + b".fit")
            shutil.copy(SAMPLES / "rides" / "valley.fit", ride)
            self.assertNotIn("error", self.check_json("load", ride))
            self.check_json("--graph", ride + b".svg", "802")

    def test_rides_as_json_and_rows(self):
        for ride in rides():
            self.check_json("load", ride)
            for command in ("analyse", "express"):
                self.check_json(command, ride)
                done = run("--rows", "-", command, ride)
                if done.returncode == 0:
                    self.check_rows(done.stdout.decode(), ride)

    def check_rows(self, text, place):
        rows = list(csv.reader(io.StringIO(text)))
        with self.subTest(place):
            self.assertEqual({len(row) for row in rows}, {17})
            for row in rows[1:]:
                for cell in row[2:-1]:
                    self.assertTrue(cell == "" or float(cell) is not None)

    def test_a_spreadsheet_reads_the_rows(self):
        with tempfile.TemporaryDirectory() as folder:
            for command in (["analyse", SAMPLES / "rides" / "valley.fit"], ["802"], ["804", "rideTarget=3"]):
                table = pathlib.Path(folder) / "table.csv"
                self.assertEqual(run("--rows", table, "--force", *command).returncode, 0)
                before = table.read_text()
                subprocess.run(["soffice", "--headless", "--convert-to", "ods", "--outdir", folder, table], check=True,
                               capture_output=True)
                subprocess.run(["soffice", "--headless", "--convert-to", "tsv:Text - txt - csv (StarCalc):9,34,76",
                                "--outdir", folder, table.with_suffix(".ods")], check=True, capture_output=True)
                after = table.with_suffix(".tsv").read_text()
                self.assertEqual(before.count("\n"), after.count("\n"))


if __name__ == "__main__":
    sys.exit(unittest.main())
