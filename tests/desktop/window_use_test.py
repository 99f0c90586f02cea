"""The window in use: a ride looked at, texts and pictures taken elsewhere, files that come again, the keyboard's ways
between windows, the manual by F1, and that nothing is left behind by opening and closing."""

import os
import pathlib
import re
import shutil
import subprocess
import unittest

import desktop
import fit_file
from desktop import LOWER, UPPER, Desktop, DesktopTest, wait_for

READ_OUT = 7
FIRST_RECENT_RIDE, FIRST_RECENT_PROFILE = 0x5000, 0x5020
SPLITTER, STOP, PAGE = 204, 205, 320
CLEAR_UPPER = 308
LOOP = desktop.SOURCE / "samples" / "rides" / "loop.fit"
MEMORY_LIMIT = 8 * 1024  # KiB that Wine's own caches may take
ROAD = desktop.SOURCE / "samples" / "profiles" / "road.pro"


class UseTest(DesktopTest):
    def drop(self, path):
        self.desktop.ask("drop", self.desktop.main, desktop.windows_path(path))

    def look_at_ride(self):
        self.desktop.clear()
        self.drop(LOOP)
        graph = wait_for(lambda: self.desktop.find("graph", "graph"), "the graph")["handle"]
        self.desktop.report()
        return graph

    def middle(self, window):
        left, top, right, bottom = next(w for w in self.desktop.windows() if w["handle"] == window)["rect"]
        return (left + right) // 2, (top + bottom) // 2

    def close_graph(self):
        self.desktop.press("Escape")
        wait_for(lambda: not self.desktop.find("graph", "graph"), "the graph to close")

    def test_a_ride_is_looked_at(self):
        self.load()
        graph = self.look_at_ride()
        lists = [self.desktop.ask("items", self.desktop.control(graph, number)["handle"]) for number in (2, 3)]
        self.assertEqual(lists[0], lists[1])
        self.assertEqual(lists[0][:4], ["altitude(m)", "velocity(kph)", "predicted power(W)", "measured power(W)"])
        read_out = lambda: self.desktop.control(graph, READ_OUT)["text"]
        x, y = self.middle(graph)
        self.desktop.xdotool("mousemove", x - 100, y)
        shown = wait_for(read_out, "the read-out under the mouse")
        self.assertRegex(shown, r"^distance\(km\) [\d.]+   altitude\(m\) [\d.]+   velocity\(kph\) [\d.]+$")
        self.desktop.screenshot("graph ride")
        self.desktop.menu(x - 100, y, "Up", "Return")
        wait_for(lambda: read_out().startswith("time(min)"), "the time along")
        self.desktop.click_window(graph)
        self.desktop.press("Home")
        wait_for(lambda: read_out().startswith("time(min) 0 "), "the first point")
        minutes = lambda: float(read_out().split()[1])
        self.desktop.press("Right")
        later = wait_for(minutes, "a later point")
        self.desktop.press("Left")
        wait_for(lambda: minutes() < later, "a point before it")
        self.desktop.press("Next")
        wait_for(lambda: minutes() > later, "a point far behind it")
        self.desktop.press("ctrl+Insert")
        size = wait_for(lambda: self.desktop.clipboard().get("picture"), "the picture on the clipboard")
        left, top, right, bottom = next(w for w in self.desktop.windows() if w["handle"] == graph)["rect"]
        self.assertTrue(0 < right - left - size[0] < 20 and 0 < bottom - top - size[1] < 50, size)
        path = self.desktop.folder / "ride.svg"
        self.desktop.menu(x, y, "p")
        self.desktop.choose_file("Save As", path)
        wait_for(path.exists, "the picture")
        self.assertIn("time(min)", path.read_text())
        self.desktop.press("Tab")
        wait_for(lambda: self.desktop.ask("focus")["id"] == 2, "the first list")
        self.desktop.screenshot("graph ride over time")
        self.close_graph()
        page, expected = self.desktop.folder / "ride.html", self.desktop.folder / "expected.html"
        self.desktop.command(PAGE)
        self.desktop.choose_file("Save As", page)
        wait_for(page.exists, "the page")
        desktop.console("--page", expected, "ride", LOOP)
        self.assertEqual(page.read_bytes(), expected.read_bytes())
        self.desktop.press("ctrl+l")
        self.desktop.dialog("open file selected")
        self.desktop.write("valley.fit")  # in the folder of the last ride, wherever the page went
        self.desktop.press("Return")
        wait_for(lambda: "from 'valley.fit'" in self.desktop.status(), "a ride of the same folder")

    def test_a_pane_is_copied_and_edited_only_where_wanted(self):
        self.desktop.command(CLEAR_UPPER)
        wait_for(lambda: not self.desktop.pane(UPPER), "an empty pane")
        self.desktop.press("ctrl+shift+h")
        expected = desktop.console("human")["upper"]
        wait_for(lambda: self.desktop.pane(UPPER) == expected, "the report")
        self.desktop.write("x")
        rect = next(c for c in self.desktop.ask("children", self.desktop.main) if c["id"] == UPPER)["rect"]
        x, y = (rect[0] + rect[2]) // 2, (rect[1] + rect[3]) // 2
        self.desktop.menu(x, y, "a")
        copied = wait_for(lambda: self.desktop.clipboard()["text"], "the text on the clipboard")
        self.assertEqual(copied.replace("\r\n", "\n").replace("\r", "\n").rstrip(), expected.rstrip())
        self.assertEqual(self.desktop.pane(UPPER), expected)
        self.desktop.menu(x, y, "e")
        self.desktop.press("ctrl+Home")
        self.desktop.write("x")
        wait_for(lambda: self.desktop.pane(UPPER) == "x" + expected, "an edited text")
        self.desktop.menu(x, y, "l")
        self.desktop.menu(x, y, "c")
        wait_for(lambda: self.desktop.clipboard()["text"].startswith("x"), "the edited text on the clipboard")
        self.desktop.press("ctrl+Home", "shift+Right", "ctrl+Insert")
        wait_for(lambda: self.desktop.clipboard()["text"] == "x", "what is selected alone")
        self.desktop.screenshot("pane edited")
        self.desktop.press("ctrl+shift+h")
        wait_for(lambda: self.desktop.pane(UPPER) == expected, "the report again")
        self.desktop.write("x")
        self.assertEqual(self.desktop.pane(UPPER), expected)

    def test_files_come_again(self):
        profile = self.desktop.folder / "a & b.pro"
        profile.write_bytes(ROAD.read_bytes())
        self.drop(profile)
        wait_for(lambda: "success to load" in self.desktop.status(), "the dropped profile")
        self.look_at_ride()
        report = self.desktop.pane(LOWER)
        self.desktop.clear()
        self.desktop.command(FIRST_RECENT_RIDE)
        self.assertEqual(self.desktop.report(), report)
        self.desktop.press("ctrl+shift+h")
        self.desktop.press("alt+p", *["Down"] * 3)
        self.desktop.screenshot("recent profiles")
        self.desktop.press("Escape", "Escape", "Escape")
        self.desktop.command(FIRST_RECENT_PROFILE)
        wait_for(lambda: "success to load" in self.desktop.status(), "the recent profile")

    def test_dropped_parameters_ask_first(self):
        other = self.desktop.folder / "other.par"
        desktop.console("--par", other, "--save", "profile", "humanHeight=191")
        before = self.desktop.pane(UPPER)
        window = self.desktop.open("ctrl+v", "power and velocity")
        self.drop(other)
        wait_for(lambda: "can be dropped when" in self.desktop.status(), "the refusal")
        self.desktop.press("Escape")
        wait_for(lambda: "can be dropped when" not in self.desktop.status(), "the status again")
        self.drop(other)
        self.assertIn("other.par", self.desktop.box("attention", "Escape"))
        self.assertEqual(self.desktop.pane(UPPER), before)
        self.drop(other)
        self.desktop.box("attention")
        wait_for(lambda: "191.0 cm" in self.desktop.pane(UPPER), "the other rider")

    def test_keyboard_goes_round(self):
        graph = self.look_at_ride()
        wait_for(lambda: self.desktop.ask("focus")["id"] == LOWER, "the lower pane")
        for key, place in (("F6", graph), ("F6", UPPER), ("ctrl+Tab", LOWER), ("shift+F6", UPPER)):
            self.desktop.press(key)
            wait_for(lambda: place in (self.desktop.ask("focus")["id"], self.desktop.ask("front")), f"{key}")
        window = self.desktop.open("ctrl+v", "power and velocity")
        self.desktop.press("F6")
        wait_for(lambda: self.desktop.ask("front") == graph, "the graph beside a dialog")
        self.desktop.press("F6")
        wait_for(lambda: self.desktop.ask("front") == window, "the dialog again")
        self.desktop.leave(window)
        wait_for(lambda: self.desktop.press("F6") or self.desktop.ask("front") == graph, "the graph by the keyboard")
        self.close_graph()

    def use_dialog(self):
        window = self.desktop.open("ctrl+v", "power and velocity")
        self.desktop.leave(window)

    def use_graph(self):
        graph = self.look_at_ride()
        self.desktop.click_window(graph)
        self.close_graph()

    def load(self, ride=LOOP):
        self.desktop.clear()
        self.desktop.press("ctrl+l")
        self.desktop.choose_file("open file selected", ride)
        self.desktop.report()

    def left_behind(self):
        """Pens, brushes, fonts, bitmaps and windows that are alive, and private memory in KiB."""
        status = pathlib.Path(f"/proc/{self.desktop.program.pid}/status").read_text()
        return self.desktop.ask("counts", self.desktop.main), int(re.search(r"RssAnon:\s+(\d+)", status)[1])

    def test_a_long_run_is_stopped(self):
        long = self.desktop.folder / "long.fit"
        long.write_bytes(fit_file.ride(60000))
        self.load(long)
        for stop in (lambda: self.desktop.press("Escape"), lambda: self.desktop.click_control(self.desktop.main, STOP)):
            self.desktop.press("ctrl+t")
            self.desktop.confirm(self.desktop.dialog("analyse and predict"))
            wait_for(lambda: STOP in self.desktop.controls(self.desktop.main), "the button beside the progress")
            self.desktop.screenshot("stop")
            self.drop(LOOP)
            wait_for(lambda: "can be dropped when" in self.desktop.status(), "the refusal of another ride")
            stop()
            wait_for(lambda: self.desktop.status() == "status : stopped", "the end of the run")
            self.assertIsNone(self.desktop.find("graph", "graph"))
            self.assertNotIn(STOP, self.desktop.controls(self.desktop.main))

    def test_nothing_is_left_behind(self):
        long = "TORVANE_EXTRA" in os.environ
        for use, often in ((self.use_dialog, 500), (self.use_graph, 200), (self.load, 50)):
            with self.subTest(use.__name__):
                for _ in range(10 if long else 1):
                    use()
                before, memory = self.left_behind()
                self.assertEqual(len(before), 5)
                self.assertGreater(before[4], 5, "windows are counted")
                for _ in range(often if long else 3):
                    use()
                after, memory_after = self.left_behind()
                self.assertEqual(after, before)
                self.assertLess(memory_after - memory, MEMORY_LIMIT)


class KeptTest(unittest.TestCase):
    def test_splitter_and_manual(self):
        with Desktop(desktop.PLACE / "Kept é日本 Test") as program:
            self.reads_manual(program)
            heights = lambda: {c["id"]: c["rect"] for c in program.ask("children", program.main) if c["id"]}
            left, top, right, bottom = heights()[SPLITTER]
            middle = (top + bottom) // 2
            program.drag((left + right) // 2, middle, 0, 61, lambda: heights()[UPPER][3] == middle + 61, "the panes to move")
            moved = heights()
            self.assertEqual(moved[LOWER][1], moved[UPPER][3])
            program.screenshot("splitter")
            program.close()
            program.launch()
            program.await_start()
            self.assertEqual({n: r[3] - r[1] for n, r in heights().items()}, {n: r[3] - r[1] for n, r in moved.items()})

    def reads_manual(self, program):
        program.press("F1")
        self.assertIn("manual", program.box("alert"))
        (program.folder / "manual").mkdir()
        (program.folder / "manual" / "manual.html").write_text("<h2 id=power-and-velocity>x</h2>")
        browser = f'"{desktop.windows_path(shutil.copy(desktop.BUILD / "probe.exe", desktop.LANE))}" "%1"'
        subprocess.run(["wine", "reg", "add", r"HKCR\http\shell\open\command", "/ve", "/d", browser, "/f"],
                       env=program.env, capture_output=True, check=True)
        opened = desktop.LANE / "opened.txt"
        window = program.open("ctrl+v", "power and velocity")
        for key, anchor in (("F1", "power-and-velocity"),):
            opened.unlink(missing_ok=True)
            program.press(key)
            wait_for(lambda: opened.exists() and opened.read_text(errors="replace"), "the manual")
            self.assertRegex(opened.read_text(errors="replace"), r"^file:///.*manual/manual.html#" + anchor)
        program.leave(window)


if __name__ == "__main__":
    desktop.main()
