"""Times the desktop program under Wine: from its start to its first report, and the table of 15,000 rows into the lower
pane. Uses the driver of the desktop tests; what it waits for it looks at every few milliseconds."""

import json
import pathlib
import statistics
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tests" / "desktop"))
import desktop  # noqa: E402
import fit_file  # noqa: E402

ROWS = 15_000
RUNS = 3


def look_for(look, limit=120.0):
    end = time.monotonic() + limit
    while not look():
        if time.monotonic() > end:
            raise AssertionError("waited in vain")
        time.sleep(0.005)


def start_time(program):
    """Of one more instance, ended again."""
    program.close()
    begun = time.monotonic()
    program.program = desktop.subprocess.Popen(
        ["wine", "Torvane.exe"], cwd=program.folder, env=program.env,
        stdout=desktop.subprocess.DEVNULL, stderr=desktop.subprocess.DEVNULL,
    )

    def reported():
        window = program.find("Torvane", "Torvane")
        if window:
            program.main = window["handle"]
        return window and program.pane(desktop.UPPER)

    look_for(reported)
    return time.monotonic() - begun


def fill_time(program, ride):
    """From the press of the dialog's button to the last row in the lower pane: by the clock, and the program's share of it."""
    program.click_window(program.main)
    program.press("ctrl+l")
    program.choose_file("open file selected", ride)
    program.report()
    program.press("ctrl+e")
    window = program.dialog("express source data")
    begun, used = time.monotonic(), program.processor_time()
    program.confirm(window)
    look_for(lambda: "express remarkable fields data" in program.status())
    taken, used = time.monotonic() - begun, program.processor_time() - used
    rows = program.pane(desktop.LOWER).count("\n")
    if rows < ROWS:
        raise AssertionError(f"only {rows} rows")
    return taken, used


def main(result_path):
    folder = desktop.BUILD / "desktop-speed"
    with desktop.Desktop(folder) as program:
        ride = folder / "ride.fit"
        ride.write_bytes(fit_file.ride(ROWS))
        starts = [start_time(program) for _ in range(RUNS)]
        fill, used = fill_time(program, ride)
    results = {
        "start to first report, s": statistics.median(starts),
        f"fill with {ROWS} rows, s": fill,
        f"fill with {ROWS} rows, processor, s": used,
    }
    pathlib.Path(result_path).write_text(json.dumps(results, indent=1) + "\n")
    for name, value in results.items():
        print(f"desktop/{name[:-3]:<40} {value * 1000:8.0f} ms")


main(sys.argv[1])
