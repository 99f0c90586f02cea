"""The texts of all dialogs: what the labels say, and that none is cut or covered, measured in the dialogs' own font."""

import json
import subprocess
import unittest
from collections import Counter

import desktop

# dialog, captions: the words by which users and documents know an entry
CAPTIONS = {
    1002: ("aero ratio of shell",),
    1003: ("time loss of shifting",),
    1006: ("rim weight", "rotor weight", "rim depth", "rotor diameter"),
    1008: ("max e-Power",),
    1011: ("altitude + temp", "hecto pascal"),
    1012: ("air drag ratio", "in case of velocity", "rotate top of train"),
    2001: ("use FTP for traning level and score", "energy effiency"),
    2005: ("express graph",),
    2006: ("always default values", "reflect previous input"),
    2007: ("threshold speed", "detect braking", "limit power prediction", "threshold power"),
    2011: ("except cadences set in the profile",),
    2013: ("use current mission profile",),
    2021: ("case for physical intension",),
    2026: ("cornering line radius", "friction safty margin"),
    2052: ("smoothing GPS data, outlier rejection", "unreal inclination", "unreal accele"),
    2053: ("simulates as a flat course", "smoothing GPS data, outlier rejection", "unreal inclination", "unreal accele",
           "wind speed", "average temperature", "wind direction", "predict cadence", "predict power"),
    2060: ("express fields data",),
    2091: ("truncate, AND 0xFFFFFF00",),
}


def overlap(one, other):
    return one[0] < other[2] and other[0] < one[2] and one[1] < other[3] and other[1] < one[3]


def holds(one, other):
    """A group box holds what stands in it."""
    return one[0] < other[0] and one[1] < other[1] and one[2] > other[2] and one[3] > other[3]


class CaptionTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        desktop.make_prefix()
        desktop.settle_display(96, "1280x1024")
        with desktop.Display() as display:
            words = ["wine", "captions.exe"]
            env = desktop.environment(display.name)
            done = subprocess.run(words, cwd=desktop.BUILD, env=env, capture_output=True, timeout=desktop.LIMIT)
            desktop.end_wine()
        cls.font, *told = [json.loads(line) for line in done.stdout.decode().splitlines()]
        cls.texts = [line for line in told if "text" in line]
        cls.names = [line for line in told if "name" in line]

    def test_window_buttons_have_their_symbols(self):
        self.assertEqual(self.font["symbols"], "Marlett")

    def test_captions_are_the_known_words(self):
        for dialog, captions in CAPTIONS.items():
            shown = {text["text"] for text in self.texts if text["dialog"] == dialog}
            self.assertLessEqual(set(captions), shown, dialog)

    def test_every_entry_has_a_name_of_its_own(self):
        self.assertGreater(len(self.names), 200)
        self.assertEqual([entry for entry in self.names if not entry["name"]], [])
        entries = Counter((entry["dialog"], entry["name"]) for entry in self.names)
        self.assertEqual([entry for entry, times in entries.items() if times > 1], [])

    def test_nothing_is_cut(self):
        self.assertGreater(len({text["dialog"] for text in self.texts}), 40)
        cut = [(t["dialog"], t["id"], t["text"], t["needs"], t["has"]) for t in self.texts if t["needs"] > t["has"]]
        self.assertEqual(cut, [])

    def test_all_dialogs_fit_on_a_small_screen(self):
        title, width, height = 30, 640, 480
        beyond = {t["dialog"] for t in self.texts if t["rect"][2] > width or t["rect"][3] > height - title}
        self.assertEqual(beyond, set())

    def test_nothing_is_covered(self):
        for dialog in {text["dialog"] for text in self.texts}:
            rects = {tuple(t["rect"]) for t in self.texts if t["dialog"] == dialog and t["class"] != "msctls_updown32"}
            covered = [(a, b) for a in rects for b in rects if a < b and overlap(a, b) and not holds(a, b)]
            self.assertEqual(covered, [], dialog)


if __name__ == "__main__":
    desktop.main()
