"""The property sheets: a value changed on each of the 17 pages, accepted with "save as default", and found in the
parameter file; what cancel and a refused value leave; the wheel page's prediction."""

import re
import struct
import unittest

import desktop
from desktop import CANCEL, OK, UPPER, Desktop, DesktopTest, wait_for

SHEETS = {"profile": "ctrl+p", "condition": "ctrl+r", "preference": "ctrl+k"}

# sheet, page, control, what is entered (text, or True for a click), offset in the parameter file, value there
PAGES = (
    ("profile", 0, 1112, "72.5", 0x208, 72.5),
    ("profile", 1, 1241, "7.25", 0x260, 7.25),
    ("profile", 2, 1312, "175", 0x298, 175.0),
    ("profile", 3, 1423, "650", 0x2F0, 650.0),
    ("profile", 4, 1511, "25", 0x360, 25.0),
    ("profile", 5, 1641, "410", 0x3B8, 410.0),
    ("profile", 6, 1712, "60", 0x400, 60.0),
    ("profile", 7, 1812, True, 0x420, 1),
    ("condition", 0, 1923, "28.5", 0x488, 28.5),
    ("condition", 1, 11942, True, 0x4A0, 1),
    ("preference", 0, 2121, "0.25", 0x4C8, 0.25),
    ("preference", 1, 2212, True, 0x4D0, 1),
    ("preference", 2, 2312, "0.9", 0x4F0, 0.9),
    ("preference", 3, 2413, "0.35", 0x510, 0.35),
    ("preference", 4, 3012, True, 0x51C, 1),
    ("preference", 5, 2612, True, 0x524, 1),
    ("preference", 6, 2721, "7.5", 0x868, 7.5),
)

# What the same pages show with fewer digits, and nobody changed: still the defaults.
UNTOUCHED = ((0x380, 0.004), (0x388, 0.003), (0x390, 0.85), (0x398, 0.75), (0x490, 1013.25))

SAVE_BOXES = {"profile": [1001 + i for i in range(8)], "condition": [1011, 1012],
              "preference": [2001 + i for i in range(7)]}


class PagesTest(unittest.TestCase):
    def test_every_page_reaches_the_parameter_file(self):
        with Desktop(desktop.PLACE / "PagesTest") as program:
            for sheet, key in SHEETS.items():
                window = program.open(key, sheet)
                for number, (_, page, control, entered, _, _) in enumerate(p for p in PAGES if p[0] == sheet):
                    program.ask("page", window, page)
                    wait_for(lambda: control in program.controls(window), f"page {page} of {sheet}")
                    program.screenshot(f"page {sheet} {page}")
                    if entered is True:
                        program.click_control(window, control, 0.1)
                        wait_for(lambda: program.control(window, control)["checked"], "the choice")
                    else:
                        program.fill(window, control, entered)
                    program.check(window, SAVE_BOXES[sheet][number])
                program.accept(window)
            reported = program.pane(UPPER)
            self.assertIn("28.5", reported, "the condition's report follows its sheet")
            program.close()
            block = (program.folder / "Torvane.par").read_bytes()
            for offset, value in [row[4:] for row in PAGES] + list(UNTOUCHED):
                with self.subTest(offset=hex(offset)):
                    kind = "<d" if isinstance(value, float) else "<i"
                    self.assertEqual(struct.unpack_from(kind, block, offset)[0], value)


class SheetTest(DesktopTest):
    folder = "Übung мост"  # beyond any one code page, for the parameter and profile files

    def open_profile(self, page, control):
        window = self.desktop.open("ctrl+p", "profile")
        self.turn(window, page, control)
        return window

    def turn(self, window, page, control):
        self.desktop.ask("page", window, page)
        wait_for(lambda: control in self.desktop.controls(window), f"page {page}")

    def reported(self, text):
        wait_for(lambda: text in self.desktop.pane(UPPER), f"'{text}' in the report")

    def test_cancel_leaves_everything(self):
        answer = self.desktop.run("ctrl+v", "power and velocity")
        before = self.desktop.pane(UPPER)
        for key, sheet in (("ctrl+r", "condition"), ("ctrl+k", "preference")):
            window = self.desktop.open(key, sheet)
            self.desktop.leave(window)
        window = self.open_profile(0, 1111)
        self.desktop.fill(window, 1111, "199")
        self.desktop.leave(window)
        self.assertEqual(self.desktop.pane(UPPER), before)
        window = self.open_profile(0, 1111)
        self.assertNotIn("199", self.desktop.control(window, 1111)["text"])
        self.desktop.click_control(window, CANCEL)
        self.desktop.gone(window)
        self.assertEqual(self.desktop.run("ctrl+v", "power and velocity"), answer)
        self.assertEqual(self.desktop.pane(UPPER), before)

    def test_sheet_opens_again_on_a_refused_page_with_all_that_was_entered(self):
        window = self.open_profile(1, 1241)
        self.desktop.fill(window, 1241, "-7")
        self.turn(window, 0, 1111)
        self.desktop.fill(window, 1111, "251")
        self.desktop.fill(window, 1112, "71.5")
        self.turn(window, 2, 1312)
        self.desktop.fill(window, 1312, "165.5")
        self.desktop.press("Return")
        self.assertEqual(self.desktop.box("warning"), "found too large value of a human height")
        second = self.desktop.box("warning")
        self.desktop.gone(window)
        window = self.desktop.dialog("profile")
        wait_for(lambda: self.desktop.ask("focus")["id"] == 1111, "the page and entry that were refused")
        self.assertEqual([self.desktop.control(window, n)["text"] for n in (1111, 1112)], ["251", "71.5"])
        self.desktop.write("171")
        self.desktop.press("Return")
        # The page that nobody turned to was entered as well.
        self.assertEqual(self.desktop.box("warning"), second)
        self.desktop.gone(window)
        window = self.desktop.dialog("profile")
        wait_for(lambda: self.desktop.ask("focus")["id"] == 1241, "the other page")
        self.desktop.write("7")
        self.desktop.leave(window, "Return")
        for text in ("171.0 cm", "71.5 kg", "165.5"):
            self.reported(text)

    def test_wheel_prediction(self):
        window = self.open_profile(3, 1411)
        before = self.desktop.control(window, 1424)["text"]
        self.desktop.click_control(window, 1411)
        predict = self.desktop.dialog("predict wheel resist")
        self.desktop.fill(predict, 1451, "9")
        self.desktop.confirm(predict)
        self.assertEqual(self.desktop.box("warning"), "found too small value of a rim depth")
        wait_for(lambda: self.desktop.ask("focus")["id"] == 1451, "the refused entry to have the keyboard")
        self.desktop.write("80")
        self.desktop.screenshot("predict wheel resist")
        self.desktop.accept(predict)
        wait_for(lambda: self.desktop.control(window, 1424)["text"] != before, "a predicted resist")
        self.desktop.leave(window)

    def test_profile_goes_to_a_file_and_back(self):
        path = desktop.PLACE / "present.pro"
        path.unlink(missing_ok=True)
        self.desktop.press("ctrl+s")
        self.desktop.choose_file("Save As", path)
        saved = f"status : success to save current profile to '{path.name}'"
        wait_for(lambda: self.desktop.status() == saved, "a save")
        self.assertEqual(path.stat().st_size, 20 + 856)
        self.assertTrue((self.desktop.folder / "Torvane.par").exists())
        crank = re.search(r"crank length.*", self.desktop.pane(UPPER)).group()
        window = self.open_profile(2, 1312)
        self.desktop.fill(window, 1312, "181.5")
        self.desktop.leave(window, "Return")
        self.reported("181.5")
        self.desktop.press("ctrl+o")
        self.desktop.choose_file("Open", path)
        wait_for(lambda: "success to load" in self.desktop.status(), "a load")
        self.reported(crank)
        self.assertIn(f": {path.name}", self.desktop.pane(UPPER))

    def test_apply_is_offered_after_a_change(self):
        window = self.open_profile(6, 1711)
        apply = next(c for c in self.desktop.ask("children", window) if "pply" in c["text"])
        self.assertFalse(apply["enabled"])
        self.desktop.fill(window, 1711, "4.5")
        apply = next(c for c in self.desktop.ask("children", window) if "pply" in c["text"])
        self.assertTrue(apply["enabled"])
        self.desktop.fill(window, 1711, "15.1")
        self.turn(window, 2, 1312)
        self.desktop.ask("next", apply["handle"])
        self.desktop.press("space")
        self.assertEqual(self.desktop.box("warning"), "found too large value of loss of a shell")
        wait_for(lambda: self.desktop.ask("focus")["id"] == 1711, "the page and entry that were refused")
        self.desktop.write("4.5")
        self.desktop.click_control(window, OK)
        self.desktop.gone(window)
        self.reported("4.5")


if __name__ == "__main__":
    desktop.main()
