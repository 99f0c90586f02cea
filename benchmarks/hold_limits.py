"""Holds the commands that work on files to their limits, by the figures of the benchmarks: what a file ten times as long
costs, how much memory a command takes, what rows and a long graph cost, and how much faster a batch is with two jobs.
Prints every figure; fails when one is beyond its limit, or when a command was not measured that was asked for."""

import json
import sys

SMALL, LARGE = 10_000, 100_000  # records
MOST_TIMES = 11.0
FIT_TOOLS = ("combine", "convert", "add", "divide", "exclude", "timestamp", "dump")
MORE_THAN_FILES = 16.0  # MB that a tool may take beside its source and destination
# Those that have rows of their own for the records of a ride: MB at 100,000 of them, where 5 are the program's own.
ROW_TOOLS = ("express", "analyse", "analyse with rows", "create", "stroke", "prepare")
ROW_MEMORY = 24.0
LEAST_GAIN = 1.8  # of the second job of a batch, by the clock
ROWS_MORE = {"cpu ms": 60.0, "peak MB": 6.0}  # what the rows of a long ride cost beside its analysis
GRAPH = ("graph as json", 2_110_000)
GRAPH_MEMORY = 200.0  # MB: the points, with room to grow, and nothing of the text
ANALYSES = ("analyse", "analyse with rows")
COMMANDS = ("ride of gpx", "load", "compare", *FIT_TOOLS, *ROW_TOOLS)


def measured(path):
    """Median figures by command and number of records, of a batch by its jobs."""
    with open(path, encoding="utf-8") as file:
        rows = json.load(file)["benchmarks"]
    found = {}
    for row in rows:
        parts = row["name"].split("/")
        if parts[0] == "console" and len(parts) > 2 and ":" in parts[2] and row.get("aggregate_name") == "median":
            found[parts[1], int(parts[2].split(":")[1])] = row
    return found


def memory_limit(command, row):
    if command in FIT_TOOLS:
        return row["files MB"] + MORE_THAN_FILES
    return ROW_MEMORY if command in ROW_TOOLS else None


def batch_faults(figures):
    one, two = figures.get(("batch", 1)), figures.get(("batch", 2))
    if one is None or two is None:
        return ["batch: not measured"]
    gain = one["real_time"] / two["real_time"]
    print(f"batch      two jobs are {gain:5.2f} times as fast as one")
    return [] if gain >= LEAST_GAIN else [f"batch: two jobs are {gain:.2f} times as fast, not {LEAST_GAIN}"]


def held(name, figure, limit, unit):
    print(f"{name}: {figure:.1f} {unit}, at most {limit:.0f}")
    return [] if figure <= limit else [f"{name}: {figure:.1f} {unit}, not at most {limit:.0f}"]


def answer_faults(figures):
    """Of answers for programs: rows and JSON, which go out while they come to be."""
    with_rows, without = (figures.get((command, LARGE)) for command in reversed(ANALYSES))
    graph = figures.get(GRAPH)
    if with_rows is None or without is None or graph is None:
        return ["rows of an analysis, or a long graph: not measured"]
    faults = held("graph as json", graph["peak MB"], GRAPH_MEMORY, "MB")
    for counter, limit in ROWS_MORE.items():
        faults += held("rows of an analysis", with_rows[counter] - without[counter], limit, "more " + counter)
    return faults


def main(path, complete):
    figures = measured(path)
    measured_commands = {command for command, _ in figures}
    wanted = COMMANDS if complete else sorted(measured_commands - {"batch", "sweep", GRAPH[0]})
    faults = batch_faults(figures) if complete or "batch" in measured_commands else []
    faults += answer_faults(figures) if complete else []
    for command in wanted:
        small, large = figures.get((command, SMALL)), figures.get((command, LARGE))
        if small is None or large is None:
            faults.append(f"{command}: not measured")
            continue
        times = large["cpu ms"] / small["cpu ms"]
        limit = memory_limit(command, large)
        shown = f"of {limit:.0f} MB" if limit else "MB"
        print(f"{command:10} ten times as long costs {times:5.2f} times as much, {large['peak MB']:6.1f} {shown}")
        if times > MOST_TIMES:
            faults.append(f"{command}: costs {times:.2f} times as much, not at most {MOST_TIMES:.0f}")
        if limit and large["peak MB"] > limit:
            faults.append(f"{command}: {large['peak MB']:.1f} MB, not at most {limit:.0f}")
    for fault in faults:
        print(fault, file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:] == ["complete"]))
