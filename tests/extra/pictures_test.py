"""The pictures of --graph as a browser shows them: every text as wide as the program has measured it, none on another
text, on a line or beyond the edge, at every size and on both grounds."""

import html
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
CLI = pathlib.Path(os.environ.get("TORVANE_CLI", ROOT / "build" / "native" / "torvane-cli"))
SIZES = ("320x240", "640x480", "1280x720", "2400x1600")
RIDES = (("calibrate", "loop.fit"),)
EDGE = 0.5  # px that letters of a browser may be off

MEASURE = """
const boxOf = (svg, item) => {
    const box = item.getBBox(), scale = svg.viewBox.baseVal.width / svg.width.baseVal.value;
    return [box.x, box.y, box.x + box.width, box.y + box.height].map(value => value / scale);
};
const measured = [...document.querySelectorAll("svg")].map(svg => ({
    width: svg.width.baseVal.value, height: svg.height.baseVal.value,
    perPixel: svg.viewBox.baseVal.width / svg.width.baseVal.value,
    texts: [...svg.querySelectorAll("text")].map(text => ({
        text: text.textContent, em: parseFloat(text.getAttribute("font-size")), box: boxOf(svg, text)})),
    lines: [...svg.querySelectorAll("polyline")].map(line => boxOf(svg, line))}));
document.body.innerHTML = "<pre id=measured></pre>";
document.getElementById("measured").textContent = JSON.stringify(measured);
"""


def run(*arguments):
    return subprocess.run([CLI, *arguments], capture_output=True, text=True, timeout=600)


def widths():
    """Of the letters from the blank on, in sizes of the font: the table that the program measures with."""
    source = (ROOT / "src" / "plot" / "text_width.cpp").read_text(encoding="utf-8")
    table = re.sub("//.*", "", re.search(r"widths\[\] = \{(.*?)\};", source, re.S).group(1))
    return [int(number) / 1000 for number in re.findall(r"\d+", table)]


def charts():
    """Calls of every command that draws without a file, once for each of its targets, one with all curves, and those
    of rides."""
    for command in json.loads(run("help", "--json").stdout)["commands"]:
        if not command["graph"] or "files" in command:
            continue
        targets = [entry["choices"] for form in command["forms"] for entry in form["entries"]
                   if entry["name"] == "rideTarget" and entry["kind"] == "choice"]
        for target in targets[0] if targets else [None]:
            yield [command["name"], *([f"rideTarget={target}"] if target else [])]
    yield ["--curves", "velocity,distance,accele,pedalingPower,pedalingTorque,crankCadence", "acceleration"]
    for command, ride in RIDES:
        yield ["--profile", str(ROOT / "samples" / "profiles" / "road.pro"), command, str(ROOT / "samples" / "rides" / ride)]


def measure(pictures, folder):
    page = folder / "page.html"
    page.write_text('<meta charset="utf-8"><body>' + "".join(pictures) + f"<script>{MEASURE}</script>", encoding="utf-8")
    shown = subprocess.run(["chromium", "--headless", "--no-sandbox", "--disable-gpu", f"--user-data-dir={folder}/chromium",
                            "--dump-dom", page.as_uri()], capture_output=True, text=True, check=True, timeout=600)
    return json.loads(html.unescape(re.search(r'<pre id="measured">(.*?)</pre>', shown.stdout, re.S).group(1)))


def touch(one, other):
    return one[0] < other[2] and other[0] < one[2] and one[1] < other[3] and other[1] < one[3]


class PicturesTest(unittest.TestCase):
    def check(self, name, picture, letters):
        texts = picture["texts"]
        self.assertGreater(len(texts), 3, name)
        for i, text in enumerate(texts):
            left, top, right, bottom = text["box"]
            told = sum(letters[ord(c) - 32] for c in text["text"]) * text["em"] / picture["perPixel"]
            self.assertAlmostEqual(right - left, told, delta=EDGE + 0.01 * told, msg=f"{name}: {text}")
            self.assertGreaterEqual(min(left, top), -EDGE, f"{name}: {text}")
            self.assertLessEqual(right, picture["width"] + EDGE, f"{name}: {text}")
            self.assertLessEqual(bottom, picture["height"] + EDGE, f"{name}: {text}")
            for other in texts[:i]:
                self.assertFalse(touch(text["box"], other["box"]), f"{name}: {text} on {other}")
            for line in picture["lines"]:
                self.assertFalse(touch(text["box"], line), f"{name}: {text} on a line at {line}")

    def test_letters_keep_their_places_in_a_browser(self):
        names, pictures = [], []
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / "chart.svg"
            for call in charts():
                for size in SIZES:
                    for ground in ((), ("--dark",)):
                        done = run("--force", "--graph", file, "--size", size, *ground, *call)
                        self.assertEqual(done.returncode, 0, done.stderr)
                        names.append(" ".join([*call, size, *ground]))
                        pictures.append(file.read_text(encoding="utf-8"))
            measured = measure(pictures, pathlib.Path(folder))
        self.assertEqual(len(measured), len(names))
        letters = widths()
        for name, picture in zip(names, measured):
            with self.subTest(name):
                self.check(name, picture, letters)


if __name__ == "__main__":
    sys.exit(unittest.main())
