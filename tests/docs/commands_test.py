"""Runs the commands that the documents show, and looks for the answers that they quote.

A block marked `sh` is run line by line and must succeed; one marked `sh refused` must be refused; one marked `sh extra`
wants programs that a build has no need for, and is run with TORVANE_EXTRA set. Each line of a
`text` block behind it must stand in what the commands printed, blanks and tabs aside; a line of three points stands
for anything.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
CLI = pathlib.Path(os.environ.get("TORVANE_CLI", ROOT / "build" / "native" / "torvane-cli"))

# What builds or runs everything, this test included: ./test runs it, the test of the packages runs ./package.
NOT_HERE = {"./test", "./package", "docs/make-pictures", "tools/screenshots"}

REFUSED = 2
EXTRA = "TORVANE_EXTRA" in os.environ


def blocks(path):
    """Fenced blocks of a document as (line number, mark, text)."""
    mark, start, lines = None, 0, []
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if mark is None and line.lstrip().startswith("```"):
            mark, start, lines = line.lstrip()[3:].strip(), number, []
        elif line.strip() == "```":
            yield start, mark, "\n".join(lines)
            mark = None
        elif mark is not None:
            lines.append(line)


def commands(text):
    joined = text.replace("\\\n", " ")
    return [line for line in joined.splitlines() if line.strip() and not line.startswith("#")]


def plain(text):
    return re.sub(r"\s+", " ", text).strip()


class DocumentTest(unittest.TestCase):
    def run_command(self, command, folder):
        # The system's own Python comes first: it is the one that has the packages that the recipes name.
        env = {**os.environ, "PATH": f"{CLI.parent}:/usr/bin:{os.environ['PATH']}", "LC_ALL": "C.UTF-8"}
        env.pop("DISPLAY", None)
        env.pop("WAYLAND_DISPLAY", None)
        return subprocess.run(["bash", "-c", command], cwd=folder, env=env, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, text=True, timeout=600)

    def run_block(self, text, mark, place, folder):
        printed = ""
        for command in commands(text):
            if command.split()[0] in NOT_HERE:
                continue
            done = self.run_command(command, folder)
            wanted = REFUSED if mark == "sh refused" else 0
            self.assertEqual(done.returncode, wanted, f"{place}: {command}\n{done.stdout}")
            printed += done.stdout
        return printed

    def check_quotes(self, text, printed, place):
        have = plain(printed)
        for line in text.splitlines():
            if line.strip() not in ("", "..."):
                self.assertIn(plain(line), have, place)

    def check_document(self, path, folder):
        printed, ran = "", 0
        for number, mark, text in blocks(path):
            place = f"{path.name}:{number}"
            with self.subTest(place):
                if mark == "sh extra" and not EXTRA:
                    printed = None
                elif mark in ("sh", "sh refused", "sh extra"):
                    printed = self.run_block(text, mark, place, folder)
                    ran += 1
                elif mark == "text":
                    if printed is not None:
                        self.check_quotes(text, printed, place)
                else:
                    self.fail(f"{place}: a block is marked sh, sh refused, sh extra or text")
        self.assertGreater(ran, 0, f"{path} shows no command")

    def test_readme(self):
        self.check_document(ROOT / "README.md", ROOT)

    def test_manual(self):
        with tempfile.TemporaryDirectory() as folder:
            shutil.copytree(ROOT / "samples", pathlib.Path(folder) / "samples")
            self.check_document(ROOT / "docs" / "manual.md", folder)

    def test_what_is_made_from_the_tables_is_up_to_date(self):
        done = subprocess.run([ROOT / "tools" / "make_reference", "--check"], stderr=subprocess.PIPE, text=True,
                              env={**os.environ, "TORVANE_CLI": str(CLI)})
        self.assertEqual(done.returncode, 0, done.stderr)

    def test_links_and_pictures_lead_somewhere(self):
        for path in [*ROOT.glob("*.md"), *(ROOT / "docs").glob("*.md")]:
            text = path.read_text(encoding="utf-8")
            anchors = {re.sub(r"[^\w\- ]", "", title.lower()).replace(" ", "-")
                       for title in re.findall(r"^#+ (.*)$", text, re.MULTILINE)}
            for target in re.findall(r"\]\(([^)]+)\)", text):
                with self.subTest(f"{path.name} to {target}"):
                    if target.startswith("#"):
                        self.assertIn(target[1:], anchors)
                    elif not target.startswith("http"):
                        self.assertTrue((path.parent / target.split("#")[0]).exists())


if __name__ == "__main__":
    sys.exit(unittest.main())
