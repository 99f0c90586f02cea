"""Drives the desktop program under Wine on a virtual display: real keys and clicks in, control texts and pictures out.

A display and a Wine prefix of its own for each script that runs. Everything that is started here is ended here, by its own
process id, or ends with the script, however that ends: programs lose their display. Nothing waits for a fixed time: every
wait looks for what it waits for, up to a limit.
"""

import fcntl
import json
import os
import pathlib
import re
import shutil
import subprocess
import time
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ.get("TORVANE_BUILD", SOURCE / "build" / "windows"))
NATIVE_CLI = pathlib.Path(os.environ.get("TORVANE_NATIVE_CLI", SOURCE / "build" / "native" / "torvane-cli"))
SCREENSHOTS = SOURCE / "build" / "screenshots"
LANES = 16
LIMIT = 60.0  # s; far beyond what a quiet machine needs
ENDS_WITH_US = ["setpriv", "--pdeathsig", "TERM"]  # in front of a program

UPPER, LOWER, STATUS = 202, 201, 203
OK, CANCEL = 1, 2
MAXIMISED = 0x01000000  # style of a window


def free_lane():
    """A folder for the Wine prefix and the home of this script alone, kept for the next ones: scripts that run at the
    same time do not meet. The open file holds the lane as long as the script runs."""
    for number in range(LANES):
        folder = BUILD / f"lane{number}"
        folder.mkdir(parents=True, exist_ok=True)
        lock = open(folder / "lock", "w")
        try:
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
            return folder, lock
        except BlockingIOError:
            lock.close()
    raise AssertionError("too many scripts at once")


LANE, LOCK = free_lane()
PREFIX = LANE / "wine-prefix"
HOME = LANE / "home"  # what Wine, printing and the rest keep in a home folder; Wine's server its sockets as well
PLACE = LANE / "programs"  # a folder in it for each program that is tested


def environment(display=None):
    HOME.mkdir(parents=True, exist_ok=True)
    env = {name: value for name, value in os.environ.items() if not name.startswith(("XDG_", "DISPLAY", "WAYLAND_"))}
    env.update(HOME=str(HOME), TMPDIR=str(HOME), WINEPREFIX=str(PREFIX), WINEDEBUG="-all",
               WINEDLLOVERRIDES="mscoree,mshtml=", LC_ALL="C.UTF-8")
    if display:
        env["DISPLAY"] = display
    return env


def wait_for(look, what, limit=LIMIT):
    """Calls look until it gives something true, and returns that."""
    end = time.monotonic() + limit
    while True:
        found = look()
        if found:
            return found
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain for {what}")
        time.sleep(0.05)


def windows_path(path):
    """The path of a file as Wine's programs name it."""
    return "Z:" + str(pathlib.Path(path).resolve()).replace("/", "\\")


def make_read_only(folder):
    """Nobody may write there any more: for root, who may do all, by a mount of the folder over itself."""
    folder.chmod(0o555)
    if not os.access(folder, os.W_OK):
        return True
    bound = subprocess.run(["mount", "--bind", folder, folder], capture_output=True).returncode == 0
    return bound and subprocess.run(["mount", "-o", "remount,ro,bind", folder], capture_output=True).returncode == 0


def make_writable(folder):
    subprocess.run(["umount", folder], capture_output=True)
    folder.chmod(0o755)


def make_prefix():
    """A fresh Wine prefix whose programs live on one virtual desktop, so that Wine itself manages their windows. Nothing
    runs in it, whatever a script that was broken off has left; half made by such a one, it is made anew."""
    end_wine()
    made = PREFIX / "made"
    if not made.exists():
        shutil.rmtree(PREFIX, ignore_errors=True)
    subprocess.run([SOURCE / "tools" / "wine-fonts", PREFIX], check=True)
    if made.exists():
        return
    with Display() as display:
        env = environment(display.name)
        subprocess.run(["wineboot", "-i"], env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
        for key, value, data in (
            (r"HKCU\Software\Wine\Explorer", "Desktop", "tests"),
            (r"HKCU\Software\Wine\Explorer\Desktops", "tests", "1280x1024"),
        ):
            subprocess.run(
                ["wine", "reg", "add", key, "/v", value, "/d", data, "/f"],
                env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True,
            )
        end_wine()
    made.touch()


def settle_display(dots, screen):
    """Sets the resolution and the size of the virtual desktop, in the registry of a prefix that nothing runs in."""
    path = PREFIX / "user.reg"
    text = re.sub(r'"LogPixels"=dword:\w+\n', "", path.read_text(errors="surrogateescape"))
    text = re.sub(r"(\[Control Panel\\\\Desktop\].*\n)", rf'\g<1>"LogPixels"=dword:{dots:08x}\n', text)
    text = re.sub(r'"tests"="\d+x\d+"', f'"tests"="{screen}"', text)
    path.write_text(text, errors="surrogateescape")


def end_wine():
    """Ends what runs in the prefix of these tests, and nothing else."""
    subprocess.run(["wineserver", "-k"], env=environment(), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    subprocess.run(["wineserver", "-w"], env=environment(), timeout=LIMIT)


class Display:
    """A virtual screen. Its keys do not repeat: on a busy machine one may seem to be held for long."""

    def __enter__(self):
        read, write = os.pipe()
        self.process = subprocess.Popen(
            [*ENDS_WITH_US, "Xvfb", "-r", "-displayfd", str(write), "-screen", "0", "1280x1024x24", "-nolisten", "tcp"],
            pass_fds=[write], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        )
        os.close(write)
        with os.fdopen(read) as pipe:
            self.name = ":" + pipe.readline().strip()
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()


class Desktop:
    """The program in a folder of its own, with the probe beside it."""

    def __init__(self, folder, parameters=None, awaits_start=True, unpacked=False, dots=96, screen="1280x1024"):
        self.folder = pathlib.Path(folder)
        self.dots, self.screen = dots, screen
        if not unpacked:
            self.make_folder(parameters)
        self.program = None
        self.awaits_start = awaits_start

    def make_folder(self, parameters):
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir(parents=True)
        shutil.copy(BUILD / "Torvane.exe", self.folder)
        if parameters is not None:
            (self.folder / "Torvane.par").write_bytes(parameters)

    def __enter__(self):
        make_prefix()
        settle_display(self.dots, self.screen)
        self.display = Display().__enter__()
        self.env = environment(self.display.name)
        self.probe = subprocess.Popen(
            ["wine", str(BUILD / "probe.exe")], env=self.env, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL, text=True, encoding="utf-8", bufsize=1,
        )
        self.ask("windows")
        self.launch()
        if self.awaits_start:
            self.await_start()
        return self

    def __exit__(self, *_):
        end_wine()
        for process in (self.probe, self.program):
            process.wait(timeout=LIMIT)
        self.probe.stdin.close()
        self.probe.stdout.close()
        self.display.__exit__()

    def launch(self):
        self.program = subprocess.Popen(
            ["wine", "Torvane.exe"], cwd=self.folder, env=self.env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL
        )

    def await_start(self):
        self.main = wait_for(lambda: self.find("Torvane", "Torvane"), "the main window")["handle"]
        wait_for(lambda: self.pane(UPPER), "the report at start")
        self.click_window(self.main)

    # What is on the screen

    def ask(self, *words):
        self.probe.stdin.write(" ".join(str(word) for word in words) + "\n")
        line = self.probe.stdout.readline()
        if not line:
            raise AssertionError("the probe has ended")
        return json.loads(line)

    def windows(self):
        return self.ask("windows")

    def find(self, title, kind=None):
        for window in self.windows():
            if window["text"] == title and (kind is None or window["class"] == kind):
                return window
        return None

    def find_menu(self):
        """An open menu."""
        return next((w for w in self.windows() if w["class"] == "#32768"), None)

    def dialog(self, title):
        """Waits until a dialog, sheet or message box is there and has the keyboard, and returns its handle."""
        handle = wait_for(lambda: self.find(title, "#32770"), f"dialog '{title}'")["handle"]
        wait_for(lambda: self.ask("front") == handle, f"the keyboard in dialog '{title}'")
        return handle

    def gone(self, handle):
        wait_for(lambda: all(w["handle"] != handle for w in self.windows()), "a window to go")

    def clipboard(self):
        """Its text and its picture, once nobody else has it open."""
        return wait_for(lambda: self.ask("clipboard"), "the clipboard")

    def control(self, window, number):
        for child in self.ask("children", window):
            if child["id"] == number and child["visible"]:
                return child
        raise AssertionError(f"no control {number}")

    def controls(self, window):
        return {child["id"]: child for child in self.ask("children", window) if child["visible"]}

    def pane(self, number):
        """Text of a pane, its lines ending as the console's do."""
        # A pane that is cleared of a long text is another window afterwards.
        child = wait_for(
            lambda: next((c for c in self.ask("children", self.main) if c["id"] == number), None), f"pane {number}"
        )
        return self.ask("text", child["handle"]).replace("\r\n", "\n").replace("\r", "\n")

    def status(self):
        return self.control(self.main, STATUS)["text"]

    def box(self, title, button="Return"):
        """Answers a message box, and returns its text."""
        handle = self.dialog(title)
        text = "".join(c["text"] for c in self.ask("children", handle) if c["class"] == "Static" and c["text"])
        self.press(button)
        self.gone(handle)
        return text

    # What a user does

    def xdotool(self, *words):
        subprocess.run(["xdotool", *map(str, words)], env=self.env, check=True)

    def await_keyboard(self):
        """Waits until the display sends keys to the window in front. What has gone leaves them to nobody, until Wine has
        named its next one; and the display lets nobody have them who asks late, as Wine does on a busy machine."""
        late = time.monotonic() + 1.0

        def arrived():
            front = self.ask("screen", self.ask("front"))
            there = subprocess.run(["xdotool", "getwindowfocus", "-f"], env=self.env, capture_output=True).stdout
            if front and front != int(there or 0) and time.monotonic() > late:
                self.xdotool("windowfocus", front)
            return front and front == int(there or 0)

        wait_for(arrived, "the keyboard")

    def press(self, *keys):
        self.await_keyboard()
        self.xdotool("key", "--delay", "20", *keys)

    def tab(self):
        """Goes on to the next control of a dialog, and returns it."""
        before = self.ask("focus")["handle"]
        self.press("Tab")

        def moved():
            focus = self.ask("focus")
            return focus if focus["handle"] not in (0, before) else None

        return wait_for(moved, "the next control")

    def write(self, text):
        self.await_keyboard()
        self.xdotool("type", "--delay", "8", "--", text)

    def click(self, x, y, button=1, times=1):
        # At once: on a busy machine a click that takes its time is a long press, or two clicks instead of a double one.
        self.xdotool("mousemove", x, y, *["mousedown", button, "mouseup", button] * times)

    def click_window(self, handle):
        """On its title bar, which changes nothing but the focus."""
        window = next(w for w in self.windows() if w["handle"] == handle)
        left, top, right, _ = window["rect"]
        if window["style"] & MAXIMISED:
            self.click((left + right) // 2, top + 12)
            return
        self.xdotool("mousemove", (left + right) // 2, top + 12, "mousedown", 1)
        wait_for(lambda: self.ask("moving"), "the window to follow the mouse")
        self.release()

    def release(self):
        """Lets go of the button that a window follows. A command that came before would open its dialog within, and the
        window would follow, and take all keys, for ever."""
        self.xdotool("mouseup", 1)
        wait_for(lambda: not self.ask("moving"), "the window to follow no more")

    def click_control(self, window, number, where=0.5):
        left, top, right, bottom = self.control(window, number)["rect"]
        self.click(int(left + (right - left) * where), (top + bottom) // 2)

    def drag(self, x, y, right, down, look, what):
        """Holds the button from a place on, until what it drags has come along: a busy program sees the button late."""
        self.xdotool("mousemove", x, y, "mousedown", 1)

        def came():
            self.xdotool("mousemove", x + right - 1, y + down - 1, "mousemove", x + right, y + down)
            return look()

        try:
            return wait_for(came, what)
        finally:
            self.release()

    def drag_title(self, right, down):
        """Moves the main window by its title bar."""
        place = self.find("Torvane", "Torvane")["rect"]
        self.drag(place[0] + 300, place[1] + 12, right, down,
                  lambda: self.find("Torvane", "Torvane")["rect"] != place, "the window to move")

    def double_click_title(self):
        left, top, _, _ = self.find("Torvane", "Torvane")["rect"]
        self.click(left + 300, top + 12, times=2)

    def check(self, window, number, wanted=True):
        if bool(self.control(window, number)["checked"]) != wanted:
            self.click_control(window, number, 0.1)
            wait_for(lambda: bool(self.control(window, number)["checked"]) == wanted, f"check box {number}")

    def fill(self, window, number, text):
        """Types over what an edit box holds; again where a busy machine has lost a key."""
        handle = self.control(window, number)["handle"]
        for attempts_left in (2, 1, 0):
            self.ask("next", handle)
            self.press("Home", "shift+End", "Delete")
            self.write(text)
            try:
                return wait_for(lambda: self.control(window, number)["text"] == text,
                                f"'{text}' in edit box {number}", LIMIT / 3)
            except AssertionError:
                if not attempts_left:
                    raise

    def select(self, window, number, entry):
        """Chooses an entry of a combo box by its keys."""
        child = self.control(window, number)
        target = self.ask("items", child["handle"]).index(entry)
        self.ask("next", child["handle"])
        self.press("Home", *["Down"] * target)
        wait_for(lambda: self.control(window, number)["selected"] == target, f"entry '{entry}'")

    def open(self, key, title):
        self.press(key)
        return self.dialog(title)

    def leave(self, window, key="Escape"):
        self.press(key)
        self.gone(window)

    def confirm(self, window):
        self.click_control(window, OK)

    def accept(self, window):
        self.confirm(window)
        self.gone(window)

    def clear(self):
        """Empties the lower pane."""
        self.command(309)
        wait_for(lambda: not self.pane(LOWER), "an empty pane")

    def command(self, number):
        """A command as its menu entry sends it."""
        self.ask("command", self.main, number)

    def run(self, key, dialog=None, fields=()):
        """A long command by its key: the dialog filled and confirmed, and the report awaited."""
        self.clear()
        self.press(key)
        if dialog:
            window = self.dialog(dialog)
            for number, value in fields:
                if isinstance(value, bool):
                    self.check(window, number, value)
                elif self.control(window, number)["class"] == "ComboBox":
                    self.select(window, number, value)
                else:
                    self.fill(window, number, value)
            self.screenshot(dialog)
            self.accept(window)
        return self.report()

    def report(self):
        """The text of the lower pane, once it is there and grows no more."""
        wait_for(lambda: self.pane(LOWER), "a report")
        last = None
        while last != (last := self.pane(LOWER)):
            time.sleep(0.3)
        return last

    def choose_file(self, title, path, *answer):
        """Behind a prompt; keys answer what it may ask."""
        window = self.dialog(title)
        self.press("alt+n", "Home", "shift+End")
        self.write(windows_path(path))
        self.press("Return")
        if answer:
            wait_for(lambda: self.ask("front") != window, "the question")
            self.press(*answer)
        self.gone(window)

    def menu(self, x, y, *keys):
        """An entry of the menu of the right button."""
        self.click(x, y, button=3)
        wait_for(self.find_menu, "the menu")
        self.press(*keys)
        wait_for(lambda: not self.find_menu(), "the menu to go")

    def screenshot(self, name):
        SCREENSHOTS.mkdir(parents=True, exist_ok=True)
        path = SCREENSHOTS / (re.sub(r"[^a-z0-9]+", "-", name.lower()) + ".png")
        subprocess.run(["import", "-window", "root", str(path)], env=self.env, check=True)

    def processor_time(self):
        """Seconds that the program itself has computed; other work on the machine does not count."""
        fields = pathlib.Path(f"/proc/{self.program.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def close(self):
        self.ask("close", self.main)
        self.program.wait(timeout=LIMIT)


def console(*arguments):
    """What the native console program answers to the same command: its texts by name."""
    done = subprocess.run([str(NATIVE_CLI), "--json", *map(str, arguments)], capture_output=True, timeout=LIMIT)
    return json.loads(done.stdout)


def main():
    """Runs the tests of the calling file; without what they need they count as skipped."""
    missing = [name for name in ("wine", "Xvfb", "xdotool", "import") if shutil.which(name) is None]
    missing += [str(path) for path in (NATIVE_CLI, BUILD / "Torvane.exe") if not path.exists()]
    if missing:
        print("skipped: not found: " + ", ".join(missing))
        raise SystemExit(77)
    unittest.main(module="__main__", verbosity=2, catchbreak=True)  # Ctrl-C: what was begun is cleared away


class DesktopTest(unittest.TestCase):
    """A test case with one running program for all of its tests."""

    parameters = None
    folder = None  # of the program; none: named after the class

    @classmethod
    def setUpClass(cls):
        cls.desktop = Desktop(PLACE / (cls.folder or cls.__name__), cls.parameters)
        cls.desktop.__enter__()
        cls.addClassCleanup(cls.desktop.__exit__)

    def tearDown(self):
        told = self._outcome.result
        if any(test.id().startswith(self.id()) for test, _ in (*told.failures, *told.errors)):
            self.desktop.screenshot("failed " + self.id())
