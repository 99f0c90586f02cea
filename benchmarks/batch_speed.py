#!/usr/bin/env python3
"""Rides a second of a batch: `at-one-stroke` over made rides of an hour, on one job and on more, and the peak of memory.

    benchmarks/batch_speed.py [RIDES] [--jobs 1,2]      10,000 rides unless given

The processor's time stands beside the clock's: other work on the machine moves it less. Needs build/native/torvane-cli
and room for RIDES times 90 kB."""

import argparse
import os
import pathlib
import shutil
import sys
import tempfile
import time

import batch_rides

ROOT = pathlib.Path(__file__).resolve().parents[1]
CLI = os.environ.get("TORVANE_CLI", str(ROOT / "build" / "native" / "torvane-cli"))


def run(arguments, answers):
    """Seconds by the clock, seconds of the processor, peak in MB."""
    begun = time.monotonic()
    child = os.posix_spawn(CLI, [CLI, *arguments], os.environ,
                           file_actions=[(os.POSIX_SPAWN_OPEN, 1, answers, os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o600)])
    _, status, used = os.wait4(child, 0)
    if status != 0:
        sys.exit("the batch failed")
    return time.monotonic() - begun, used.ru_utime + used.ru_stime, used.ru_maxrss / 1024


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("rides", nargs="?", type=int, default=10_000)
    parser.add_argument("--jobs", default="1,2")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as made:
        folder = pathlib.Path(made)
        batch_rides.fill(folder / "in", options.rides)
        print("| rides | jobs | rides a second | rides a second of the processor | peak MB |\n|---|---|---|---|---|")
        for count in sorted({max(options.rides // 10, 1), options.rides}):
            names = folder / "names"
            names.write_text("".join(f"{folder}/in/ride-{number:06}.fit\n" for number in range(count)))
            for jobs in options.jobs.split(","):
                (folder / "out").mkdir()
                clock, cpu, peak = run(["--json", "--jobs", jobs, "--files-from", str(names), "--into", str(folder / "out"),
                                        "at-one-stroke"], str(folder / "answers"))
                print(f"| {count} | {jobs} | {count / clock:.0f} | {count / cpu:.0f} | {peak:.0f} |", flush=True)
                shutil.rmtree(folder / "out")


main()
