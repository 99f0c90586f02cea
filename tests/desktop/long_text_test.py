"""A pane with more rows than can be laid out in a moment: it is filled while the window answers, the filling can be
stopped, and a new size costs no more than the rows that are seen."""

import subprocess
import unittest

import desktop
from commands_test import parameters_with
from desktop import LOWER, DesktopTest, wait_for

SAVE_LOWER, SAVE_LOWER_AS, OPEN_LOWER = 313, 315, 317
LOOP = desktop.SOURCE / "samples" / "rides" / "loop.fit"
ROWS = 20_000
TEXT = "".join(f"{row:9}" + f"{row * 0.375:14.3f}" * 8 + "\n" for row in range(ROWS))


class LongTextTest(DesktopTest):
    @classmethod
    def setUpClass(cls):
        cls.parameters = parameters_with("expressGraph=0")
        super().setUpClass()
        cls.rows = cls.desktop.folder / "rows.txt"
        cls.rows.write_text(TEXT)
        cls.desktop.command(SAVE_LOWER_AS)
        cls.choose("Save As", cls.desktop.folder / "saved.txt")

    @classmethod
    def choose(cls, title, path):
        cls.desktop.dialog(title)
        cls.desktop.press("alt+t", "Down")
        cls.desktop.choose_file(title, path)

    def open_rows(self):
        self.desktop.command(OPEN_LOWER)
        self.choose("Open", self.rows)
        wait_for(lambda: self.desktop.pane(LOWER), "the first rows")

    def filled(self):
        wait_for(lambda: self.desktop.pane(LOWER).rstrip("\n") == TEXT.rstrip("\n"), "all rows")

    def test_filling_can_be_stopped(self):
        self.open_rows()
        self.desktop.press("Escape")
        told = wait_for(lambda: "stopped" in self.desktop.status() and self.desktop.status(), "the status")
        text = self.desktop.pane(LOWER).rstrip("\n")
        self.assertEqual(told, f"status : stopped, the first {text.count(chr(10)) + 1} lines are shown")
        self.assertLess(len(text), len(TEXT) // 2)
        self.assertTrue(TEXT.startswith(text + "\n"))
        self.open_rows()
        self.filled()

    def test_a_save_while_rows_are_still_to_come_has_them_all(self):
        self.open_rows()
        saved = self.desktop.folder / "whole.txt"
        self.desktop.command(SAVE_LOWER_AS)
        self.choose("Save As", saved)
        wait_for(saved.exists, "the file")
        self.assertEqual(saved.read_text().rstrip("\n"), TEXT.rstrip("\n"))

    def test_a_report_wider_than_the_pane_has_its_scroll_bar(self):
        _, _, right, bottom = before = self.desktop.find("Torvane", "Torvane")["rect"]
        self.desktop.drag(right - 2, bottom - 2, -250, 0,
                          lambda: self.desktop.find("Torvane", "Torvane")["rect"] != before, "a narrow window")
        self.desktop.run("ctrl+a", "acceleration")
        left, _, right, bottom = self.desktop.control(self.desktop.main, LOWER)["rect"]
        bar = ["import", "-window", "root", "-crop", f"{right - left - 40}x1+{left + 10}+{bottom - 10}", "-depth", "8", "rgb:-"]
        shown = subprocess.run(bar, env=self.desktop.env, capture_output=True, check=True).stdout
        self.desktop.screenshot("wide report")
        self.assertGreater(len(set(shown)), 1)
        self.desktop.command(SAVE_LOWER)
        wait_for(lambda: "acceleration" in (self.desktop.folder / "saved.txt").read_text(), "a saved pane, which may be left")

    def test_new_size_and_clearing(self):
        self.open_rows()
        self.filled()
        right = self.desktop.control(self.desktop.main, LOWER)["rect"][2]
        before = self.desktop.processor_time()
        self.desktop.double_click_title()
        # It is another window, and for a moment none.
        panes = lambda: [c for c in self.desktop.ask("children", self.desktop.main) if c["id"] == LOWER]
        wait_for(lambda: any(pane["rect"][2] > right for pane in panes()), "the new size")
        self.assertLess(self.desktop.processor_time() - before, 1.0)
        self.filled()
        self.open_rows()
        self.desktop.ask("drop", self.desktop.main, desktop.windows_path(LOOP))
        expected = desktop.console("ride", LOOP)["lower"]
        wait_for(lambda: self.desktop.pane(LOWER) == expected, "a report in place of rows that are still to come")


if __name__ == "__main__":
    desktop.main()
