"""Every theory and ride command by its key: its dialog filled with real keys, its report the console's to the
character, its graph on screen. And what the dialogs do on screen while they are filled."""

import pathlib
import subprocess
import tempfile
import unittest

import desktop
import fit_file
from desktop import LOWER, OK, DesktopTest, wait_for

DIVIDE = 908

# key, dialog, command, entries on screen, the same entries for the console, kind of its graph (None: no graph)
COMMANDS = (
    ("ctrl+shift+g", "gear combination", 703, [], [], None),  # the lists show the teeth that are calculated
    ("ctrl+shift+t", "cadence theory", 701, [(4111, "power"), (4121, "85")],
     ["theoryTarget=power", "theoryCadence=85"], None),
    ("ctrl+shift+d", "pedaling dynamics", 702, [(4211, "power"), (4223, "35")],
     ["theoryTarget=power", "theoryTorque=35"], None),
    ("ctrl+shift+g", "gear combination", 703, [(4311, "velocity"), (4321, "95"), (4351, "51"), (4352, "17")],
     ["theoryTarget=velocity", "theoryCadence=95", "frontTooth=51", "rearTooth=17"], None),
    ("ctrl+v", "power and velocity", 801, [(5111, "velocity"), (5131, "250"), (5133, "3.5")],
     ["rideTarget=velocity", "ridePower=250", "rideInclination=3.5"], 3),
    ("ctrl+a", "acceleration", 802, [(5211, "sector time"), (5241, "12"), (5243, "36")],
     ["rideTarget=sector-time", "rideLegTime=12", "rideEndVelocity=36"], 3),
    ("ctrl+d", "deceleration", 803, [(5311, "distance"), (5341, "150")],
     ["rideTarget=distance", "rideDistance=150"], 3),
    ("ctrl+b", "pattern braking", 804, [(5411, "critical full braking"), (5432, "55"), (5436, "-4")],
     ["rideTarget=1", "rideStartVelocity=55", "brakingInclination=-4"], 3),
    ("ctrl+i", "inclination and velocity", 805, [(5511, "inclination"), (5531, "45")],
     ["rideTarget=inclination", "rideVelocity=45"], 3),
    ("ctrl+c", "critical cornering", 806, [(5611, "line radius"), (5621, "42")],
     ["rideTarget=line-radius", "rideVelocity=42"], 1),
)


def parameters_with(*settings):
    """A parameter file whose defaults are these."""
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "Torvane.par"
        desktop.console("--par", path, "--save", "preference", *settings)
        return path.read_bytes()


class CommandTest(DesktopTest):
    @classmethod
    def setUpClass(cls):
        cls.parameters = parameters_with("bandGraphPowerVelocity=1", "bandGraphCornering=1")
        super().setUpClass()

    def test_report_and_graph(self):
        for key, dialog, command, fields, arguments, kind in COMMANDS:
            with self.subTest(dialog):
                text = self.desktop.run(key, dialog, fields)
                expected = desktop.console(command, *arguments)
                self.assertEqual(text, expected["lower"])
                self.assertEqual(self.desktop.status(), expected["status"])
                wait_for(lambda: self.desktop.ask("focus")["id"] == LOWER, "the focus on the lower pane")
                self.desktop.screenshot(f"result {dialog}")
                self.await_front("graph" if kind is not None else "Torvane")
                graph = self.desktop.find("graph", "graph")
                self.assertEqual(graph is not None, kind is not None)
                if kind == 3:
                    self.change_curves(graph["handle"], dialog)

    def await_front(self, wanted):
        """Waits until the one, graph or main window, lies above the other."""
        first = lambda: next(w["class"] for w in self.desktop.windows() if w["class"] in ("graph", "Torvane"))
        wait_for(lambda: first() == wanted, f"{wanted} in front")

    def test_graph_lies_where_it_was_left_and_under_what_is_clicked(self):
        self.desktop.run("ctrl+c", "critical cornering")
        self.await_front("graph")
        left, top, _, _ = place = self.desktop.find("graph", "graph")["rect"]
        self.desktop.drag(left + 300, top + 12, 60, 90, lambda: self.desktop.find("graph", "graph")["rect"] != place, "a move")
        self.desktop.click_window(self.desktop.main)
        self.await_front("Torvane")
        moved = self.desktop.find("graph", "graph")["rect"]
        self.desktop.run("ctrl+c", "critical cornering")
        self.await_front("graph")
        self.assertEqual(self.desktop.find("graph", "graph")["rect"], moved)

    def change_curves(self, graph, dialog):
        before = self.picture(graph)
        combo = self.desktop.control(graph, 2)
        entries = self.desktop.ask("items", combo["handle"])
        self.assertGreater(len(entries), 2)
        self.desktop.click_control(graph, 2)
        self.desktop.press("Down", "Down", "Return")
        wait_for(lambda: self.desktop.control(graph, 2)["selected"] == 2, "another series")
        wait_for(lambda: self.picture(graph) != before, "other curves")
        self.desktop.screenshot(f"graph {dialog}")

    def test_graph_saves_its_picture(self):
        self.desktop.run("ctrl+c", "critical cornering")
        graph = wait_for(lambda: self.desktop.find("graph", "graph"), "the graph")
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "corner.png"
            self.save_picture(graph, path)
            wait_for(path.exists, "the picture")
            wait_for(lambda: self.saved(path) == self.shown(graph, path), "the picture as it is shown")
            path.write_bytes(b"old")
            path.chmod(0o444)
            self.save_picture(graph, path, "alt+y")
            self.assertEqual(self.desktop.box("error"), f"failed to write a file '{desktop.windows_path(path)}'")
            self.assertEqual([file.read_bytes() for file in pathlib.Path(folder).iterdir()], [b"old"])

    def save_picture(self, graph, path, *answer):
        left, top, right, bottom = graph["rect"]
        self.desktop.menu((left + right) // 2, (top + bottom) // 2, "p")
        self.desktop.choose_file("Save As", path, *answer)

    def pixels(self, *source):
        done = subprocess.run([*source, "-depth", "8", "rgb:-"], env=self.desktop.env, capture_output=True, check=True)
        return done.stdout

    def saved(self, path):
        """Its lower part, in which no control stands."""
        return self.pixels("convert", str(path), "-chop", "0x80")

    def shown(self, graph, path):
        """The same part on the screen, without what the pointer reads out."""
        self.desktop.xdotool("mousemove", 1, 1)
        width, height = map(int, subprocess.check_output(["identify", "-format", "%w %h", str(path)]).split())
        left, _, right, bottom = graph["rect"]
        frame = (right - left - width) // 2
        area = f"{width}x{height - 80}+{left + frame}+{bottom - frame - height + 80}"
        return self.pixels("import", "-window", "root", "-crop", area)

    def picture(self, graph):
        left, top, right, bottom = next(w for w in self.desktop.windows() if w["handle"] == graph)["rect"]
        area = f"{right - left}x{bottom - top - 90}+{left}+{top + 80}"
        return self.pixels("import", "-window", "root", "-crop", area)


class DialogTest(DesktopTest):
    def open(self, key, title):
        window = self.desktop.open(key, title)
        self.addCleanup(self.desktop.leave, window)
        return window

    def enabled(self, window, *numbers):
        controls = self.desktop.controls(window)
        return [number for number in numbers if controls[number]["enabled"]]

    def test_a_resting_pointer_tells_what_an_entry_means(self):
        window = self.open("ctrl+a", "acceleration")
        for number, meaning in ((5243, "to this velocity"), (5211, "what is known of the effort: the reference factor")):
            left, top, right, bottom = self.desktop.control(window, number)["rect"]
            self.desktop.xdotool("mousemove", left + 4, top + 4, "mousemove", left + 9, (top + bottom) // 2)
            wait_for(lambda: self.desktop.find(meaning, "tooltips_class32"), meaning)

    def test_target_disables_its_own_field(self):
        window = self.open("ctrl+v", "power and velocity")
        fields = (5112, 5131, 5132, 5141, 5142)
        self.assertEqual(self.enabled(window, *fields), [5132, 5142])
        self.desktop.select(window, 5111, "velocity")
        self.assertEqual(self.enabled(window, *fields), [5112, 5131, 5141])
        self.desktop.click_control(window, 5122, 0.2)
        wait_for(lambda: self.desktop.control(window, 5153)["text"] == "km", "the other units")
        self.assertEqual(self.desktop.control(window, 5151)["text"], "distance based")

    def test_up_down_steps_and_stops(self):
        window = self.open("ctrl+a", "acceleration")
        left, top, right, bottom = self.desktop.control(window, 5255)["rect"]
        self.desktop.click((left + right) // 2, top + 3)
        wait_for(lambda: self.desktop.control(window, 5245)["text"].strip() == "0.1", "a step up")
        self.desktop.click((left + right) // 2, bottom - 4)
        self.desktop.click((left + right) // 2, bottom - 4)
        wait_for(lambda: self.desktop.control(window, 5245)["text"].strip() == "-0.1", "two steps down")
        self.desktop.fill(window, 5245, "100")
        self.desktop.press("Up", "Down")
        wait_for(lambda: self.desktop.control(window, 5245)["text"].strip() == "99.9", "a step down from the limit")

    def test_up_down_leads_back_from_beyond_a_limit(self):
        window = self.open("ctrl+shift+i", "increase timestamp")
        for number, text, key, stepped in ((9131, "400", "Down", "399"), (9132, "-5", "Up", "-4")):
            self.desktop.fill(window, number, text)
            self.desktop.press(key)
            wait_for(lambda: self.desktop.control(window, number)["text"] == stepped, f"{stepped}")

    def test_parts_without_records_are_told(self):
        source = self.desktop.folder / "halves.fit"
        source.write_bytes(fit_file.ride(60, fit_file.definition(1, 20, fit_file.RECORD)))
        self.desktop.command(DIVIDE)
        window = self.desktop.dialog("divide a fit file")
        for number, path in ((8421, source), (8422, source.with_name("part.fit"))):
            self.desktop.fill(window, number, desktop.windows_path(path))
        self.desktop.confirm(window)
        self.assertEqual(self.desktop.box("warning"), "1 of 2 divided files have no record message: 001")
        wait_for(lambda: "'part_000.fit, part_001.fit'" in self.desktop.status(), "the names of the parts")

    def test_tab_order_follows_the_page(self):
        for key, title in (("ctrl+shift+t", "cadence theory"), ("ctrl+v", "power and velocity"),
                           ("ctrl+b", "pattern braking"), ("ctrl+m", "combine fit files"),
                           ("ctrl+shift+i", "increase timestamp")):
            with self.subTest(title):
                window = self.desktop.open(key, title)
                visited = []
                focus = self.desktop.ask("focus")
                while focus["handle"] not in [f["handle"] for f in visited]:
                    visited.append(focus)
                    focus = self.desktop.tab()
                lines = [(f["rect"][1] // 10, f["rect"][0]) for f in visited if f["id"] not in (OK, desktop.CANCEL)]
                self.assertGreater(len(lines), 3)
                self.assertEqual([line for line, _ in lines], sorted(line for line, _ in lines))
                self.desktop.leave(window)


if __name__ == "__main__":
    desktop.main()
