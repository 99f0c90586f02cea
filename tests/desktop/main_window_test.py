"""The main window: its start, its panes, its menu's keys, a second start, its end."""

import shutil
import struct
import subprocess
import unittest

import desktop
import fit_file
from desktop import CANCEL, LIMIT, LOWER, MAXIMISED, OK, STATUS, UPPER, Desktop, DesktopTest, wait_for

ABOUT_TEXT, READ_OUT = 111, 7
WINDOW_RECT = 0x24  # in the parameter file: left, top, right, bottom
WINDOW_SIZE = 0x44
RIDE_TARGET = 0xF4
PROFILE_HEADER = 20
CRANK_LENGTH = 0x98  # in the body of a profile


class StartTest(DesktopTest):
    def places(self):
        return {c["id"]: c["rect"] for c in self.desktop.ask("children", self.desktop.main) if c["id"]}

    def test_profile_is_reported(self):
        desktop_ = self.desktop
        self.assertEqual(desktop_.pane(UPPER), desktop.console("all-profile")["upper"])
        self.assertEqual(desktop_.pane(LOWER), "")
        self.assertEqual(desktop_.status().strip(), "status :")
        self.assertEqual(desktop_.ask("focus")["id"], UPPER)
        desktop_.screenshot("start")

    def test_panes_share_the_window(self):
        before = self.places()
        _, _, right, bottom = next(w for w in self.desktop.windows() if w["class"] == "Torvane")["rect"]

        def grown():
            now = self.places()
            wider, higher = now[LOWER][2] - before[LOWER][2], now[STATUS][3] - before[STATUS][3]
            return now if (wider, higher) == (60, 100) else None

        after = self.desktop.drag(right - 2, bottom - 2, 60, 100, grown, "a new layout")
        for place in (before, after):
            upper, lower, status = place[UPPER], place[LOWER], place[STATUS]
            self.assertEqual(upper[3] - upper[1], 150)
            self.assertEqual(lower[1], upper[3])
            self.assertEqual(lower[3] - lower[1], status[3] - upper[1] - 168, "client height less 168")
            self.assertEqual(upper[2] - upper[0], lower[2] - lower[0])

    def test_reports_by_key(self):
        for key, command in (("ctrl+shift+h", "human"), ("ctrl+shift+l", "power-loss"), ("ctrl+shift+c", "condition")):
            self.desktop.press(key)
            expected = desktop.console(command)["upper"]
            wait_for(lambda: self.desktop.pane(UPPER) == expected, f"the report of {command}")
            self.assertEqual(self.desktop.ask("focus")["id"], UPPER)

    def test_greyed_commands_do_nothing(self):
        self.desktop.press("ctrl+e", "ctrl+t", "ctrl+f", "ctrl+q")
        about = self.desktop.dialog("about")
        self.assertEqual(len([w for w in self.desktop.windows() if w["class"] == "#32770"]), 1)
        self.assertEqual(self.desktop.control(about, ABOUT_TEXT)["text"], "Torvane ver.1.21.00")
        self.desktop.screenshot("about")
        self.desktop.leave(about, "Return")

    def test_menu_is_whole(self):
        for number, key in enumerate(("f", "p", "s", "g", "o", "t", "h")):
            self.desktop.press(f"alt+{key}")
            wait_for(lambda: self.desktop.find_menu(), f"menu {key}")
            self.desktop.press("Up")
            wait_for(lambda: self.desktop.status().strip() not in ("", "status :"), "the meaning of an entry")
            self.desktop.screenshot(f"menu {number}")
            self.desktop.press("Escape", "Escape")
            wait_for(lambda: self.desktop.status().strip() == "status :", "the menu to close")

    def test_exit_can_be_cancelled(self):
        question = self.desktop.open("ctrl+x", "confirmation")
        labels = {number: c["text"] for number, c in self.desktop.controls(question).items()}
        self.assertEqual((labels[OK], labels[CANCEL]), ("okay", "cancel"))
        self.desktop.leave(question)
        self.assertIsNone(self.desktop.program.poll())

    def test_close_is_ignored_beneath_a_dialog(self):
        about = self.desktop.open("ctrl+q", "about")
        self.desktop.ask("close", self.desktop.main)
        self.desktop.leave(about, "Return")
        self.assertIsNotNone(self.desktop.find("Torvane", "Torvane"))

    def test_second_start_ends_silently(self):
        second = subprocess.run(["wine", "Torvane.exe"], cwd=self.desktop.folder, env=self.desktop.env, timeout=LIMIT)
        self.assertEqual(second.returncode, 0)
        self.assertEqual(len([w for w in self.desktop.windows() if w["class"] == "Torvane"]), 1)
        self.assertFalse([w for w in self.desktop.windows() if w["class"] == "#32770"])


class DisplayTest(unittest.TestCase):
    def test_heights_follow_the_display(self):
        for dots, upper_height in ((144, 225), (192, 300)):
            with self.subTest(dots), Desktop(desktop.PLACE / "DisplayTest", dots=dots) as program:
                places = {number: program.control(program.main, number)["rect"] for number in (UPPER, LOWER, STATUS)}
                program.screenshot(f"start {dots}")
                self.assertEqual(places[UPPER][3] - places[UPPER][1], upper_height)
                self.assertEqual(places[LOWER][1], places[UPPER][3])
                self.assertEqual(places[LOWER][3] - places[STATUS][1], dots // 48, "no more than the border is covered")
                program.press("ctrl+i")  # and all by keys: the pointer stays on the main window, which the graph covers
                program.dialog("inclination and velocity")
                program.press("Return")
                program.report()
                program.screenshot(f"graph {dots}")
                graph = self.in_front_of_main(program)
                program.press("ctrl+shift+h")
                wait_for(lambda: program.ask("focus")["id"] == UPPER, "a report")
                self.in_front_of_main(program)
                left, top, right, bottom = graph["rect"]
                self.assertEqual((right - left, bottom - top), (640 * dots // 96, 480 * dots // 96))
                first_list = program.control(graph["handle"], 2)["rect"][0] - left
                self.assertAlmostEqual(first_list, 60 * dots // 96, delta=12, msg="controls in units of the display")
                read_out = lambda: program.control(graph["handle"], READ_OUT)["text"]
                program.xdotool("mousemove", left + (right - left) * 7 // 10, (top + bottom) // 2)
                read = wait_for(read_out, "the read-out under the mouse")
                program.xdotool("mousemove", left + (right - left) * 8 // 10, (top + bottom) // 2)
                wait_for(lambda: read_out() not in (read, ""), "another point at another place")

    def in_front_of_main(self, program):
        """The graph. The order is the one on the screen once a pointer moves over it."""
        program.xdotool("mousemove_relative", 1, 0, "mousemove_relative", "--", -1, 0)
        first = lambda: next(w for w in program.windows() if w["class"] in ("graph", "Torvane"))
        wait_for(lambda: first()["class"] == "graph", "the graph before the main window")
        return first()


class EndTest(unittest.TestCase):
    def test_window_metrics_are_kept(self):
        with Desktop(desktop.PLACE / "EndTest") as program:
            rect = program.find("Torvane", "Torvane")["rect"]
            self.assertEqual((rect[2] - rect[0], rect[3] - rect[1]), (800, 480))
            self.assertEqual(rect[0], (1280 - 800) // 2, "centred at the first start")
            program.drag_title(33, 44)
            _, _, right, bottom = before = program.find("Torvane", "Torvane")["rect"]
            program.drag(right - 2, bottom - 2, 60, 40, lambda: program.find("Torvane", "Torvane")["rect"] != before, "a new size")
            program.press("ctrl+x")
            program.dialog("confirmation")
            # Where it lies now is what counts: Wine may follow the mouse a second time after the button is up.
            moved = program.find("Torvane", "Torvane")["rect"]
            size = moved[2] - moved[0], moved[3] - moved[1]
            self.assertTrue(size[0] > 800 and size[1] > 480, size)
            program.press("Return")
            self.assertEqual(program.program.wait(timeout=LIMIT), 0)
            block = (program.folder / "Torvane.par").read_bytes()
            self.assertEqual(len(block), 2416)
            self.assertEqual(list(struct.unpack_from("<4i", block, WINDOW_RECT)), moved)
            self.assertEqual(struct.unpack_from("<2i", block, WINDOW_SIZE), size)

            program.launch()
            program.await_start()
            self.assertEqual(program.find("Torvane", "Torvane")["rect"], moved)

            self.turn(program, MAXIMISED)
            program.close()
            program.launch()
            program.await_start()
            self.turn(program, 0)
            self.assertEqual(program.find("Torvane", "Torvane")["rect"], moved)
            program.close()
            for stored in (3000, 200, 3800, 680), (200, -700, 1000, -220):
                struct.pack_into("<4i", block := bytearray(block), WINDOW_RECT, *stored)
                struct.pack_into("<2i", block, WINDOW_SIZE, 800, 480)
                (program.folder / "Torvane.par").write_bytes(block)
                program.launch()
                program.await_start()
                self.assertEqual(program.find("Torvane", "Torvane")["rect"], [240, 272, 1040, 752], "centred anew")
                program.close()

    def turn(self, program, wanted):
        """From maximised to its place, or the other way."""
        self.assertEqual(self.maximised(program), MAXIMISED - wanted)
        program.double_click_title()
        wait_for(lambda: self.maximised(program) == wanted, "the window to change")

    def maximised(self, program):
        return program.find("Torvane", "Torvane")["style"] & MAXIMISED

    def test_a_folder_that_cannot_be_written_leaves_the_parameters_to_the_user(self):
        folder = desktop.PLACE / "Lesegerät 日本 read only"
        if folder.exists():  # a run that was broken off may have left it so
            desktop.make_writable(folder)
        program = Desktop(folder)
        self.addCleanup(desktop.make_writable, folder)
        if not desktop.make_read_only(folder):
            self.skipTest("a folder that cannot be written needs root, or no root")
        with program:
            own, = desktop.PREFIX.glob("drive_c/users/*/AppData/Roaming/Torvane/Torvane.par")
            self.addCleanup(shutil.rmtree, own.parent)
            self.assertRegex(program.status(), r"^status : defaults are kept in 'C:.*\\AppData\\Roaming\\Torvane\\Torvane.par'$")
            program.close()
            self.assertEqual(struct.unpack_from("<4i", own.read_bytes(), WINDOW_RECT), (240, 272, 1040, 752))
            self.assertEqual(sorted(path.name for path in folder.iterdir()), ["Torvane.exe"])
            program.launch()
            program.await_start()
            self.assertEqual(program.status().strip(), "status :", "told once")

    def test_unusable_parameter_file_is_told_and_kept(self):
        folder = desktop.PLACE / "UnusableTest"
        # The count of chainrings, far outside its table.
        block = bytearray(2416)
        with Desktop(folder) as program:
            program.close()
            block[:] = (folder / "Torvane.par").read_bytes()
        count = block.index(struct.pack("<5i", 2, 11, 51, 42, 33))
        struct.pack_into("<i", block, count, 1000)
        with Desktop(folder, bytes(block), awaits_start=False) as program:
            text = program.box("alert")
            self.assertIn("Torvane.par", text)
            program.await_start()
            self.assertEqual(program.pane(UPPER), desktop.console("all-profile")["upper"])
            kept = [p for p in folder.iterdir() if p.name.startswith("Torvane.par") and p.read_bytes() == bytes(block)]
            self.assertEqual(len(kept), 1)

    def test_what_is_no_parameter_file_is_told_and_stays(self):
        folder = desktop.PLACE / "ForeignTest"
        parameters = folder / "Torvane.par"
        ride = fit_file.ride(60)
        for place, told in ((lambda: parameters.write_bytes(ride), "found a FIT file in place of parameters"),
                            (parameters.mkdir, "found a folder in place of parameters")):
            program = Desktop(folder, awaits_start=False)
            place()
            with self.subTest(told), program:
                self.assertIn(told, program.box("alert"))
                program.await_start()
                self.assertEqual(program.pane(UPPER), desktop.console("all-profile")["upper"])
                program.run("ctrl+v", "power and velocity", [(3031, True)])
                program.close()
                self.assertEqual([p.name for p in folder.glob("*.par*")], ["Torvane.par"])
                self.assertTrue(parameters.is_dir() or parameters.read_bytes() == ride)

    def test_a_kept_target_and_a_kept_profile_come_back(self):
        folder = desktop.PLACE / "KeptTest"
        with Desktop(folder) as program:
            # A run without an answer, which leaves figures that are no numbers.
            program.run("ctrl+a", "acceleration", [(5211, "sector time"), (5243, "140"), (3032, True)])
            for key, title, told in (("ctrl+s", "Save As", "success to save"), ("ctrl+o", "Open", "success to load")):
                program.press(key)
                program.choose_file(title, folder / "rider.pro")
                wait_for(lambda: told in program.status(), told)
            profile = bytearray((folder / "rider.pro").read_bytes())
            struct.pack_into("<d", profile, PROFILE_HEADER + CRANK_LENGTH, 0.0)
            (folder / "crankless.pro").write_bytes(profile)
            program.press("ctrl+o")
            program.choose_file("Open", folder / "crankless.pro")
            wait_for(lambda: program.status() == "status : failed to read a file 'crankless.pro'", "a refusal")
            program.close()
            self.assertEqual(struct.unpack_from("<i", (folder / "Torvane.par").read_bytes(), RIDE_TARGET)[0], 4)
            program.launch()
            program.await_start()
            window = program.open("ctrl+v", "power and velocity")
            self.assertEqual(program.control(window, 5111)["selected"], 0, "a list of two takes the fifth as the first")
            program.leave(window)
            self.assertEqual([p.name for p in folder.glob("*.par*")], ["Torvane.par"])


if __name__ == "__main__":
    desktop.main()
