"""Runs the tests that can see a mutant, those of its floor first and then the quick ones, until one is red."""

import json
import os
import re
import resource
import shutil
import signal
import subprocess

QUICK = (20, 300, float("inf"))  # ms of a test, of the processor: one run of the program for each of these
MEMORY = 6 << 30  # bytes


class Tests:
    def __init__(self, folder, quick):
        self.folder = folder / "room"
        self.bounds = QUICK[:-1] if quick else QUICK
        self.floors = {}  # the folder of a test

    def run(self, program, seconds, chosen=(), without=(), **environment):
        """The exit code (None: took too long) and what it printed, in an empty folder of its own."""
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir(parents=True)
        room = str(self.folder)
        command = ["nice", str(program), "--gtest_brief=1", "--gtest_fail_fast"]
        command.append("--gtest_filter=" + (":".join(chosen) or "*") + "-" + ":".join(without))
        process = subprocess.Popen(command, cwd=room, env=os.environ | {"HOME": room, "TMPDIR": room} | environment,
                                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT, start_new_session=True,
                                   preexec_fn=limit)
        try:
            output = process.communicate(timeout=seconds)[0]
            return process.returncode, output.decode(errors="replace")
        except subprocess.TimeoutExpired:
            return None, ""
        finally:
            end_group(process)

    def map(self, program):
        """For each test its milliseconds and the mutants it comes by; every test has to be green."""
        path, times = self.folder.with_name("map"), self.folder.with_name("times")
        known = json.loads(times.read_text()) if times.exists() else {}
        slow = [name for name, time in known.items() if time >= self.bounds[-1]]
        code, output = self.run(program, 3600, without=slow, MUTANT_MAP=str(path))
        if code != 0:
            raise SystemExit("The tests are red without any mutant:\n" + output[output.find("Failure") - 200:][:2000])
        seen = {}
        for line in path.read_text().splitlines():
            name, milliseconds, self.floors[name], *numbers = line.split()
            seen[name] = int(milliseconds), {int(number) for number in numbers}
        times.write_text(json.dumps(known | {name: time for name, (time, _) in seen.items()}))
        return seen

    def killer(self, program, number, times, floor, first=None):
        """The test that notices this mutant of a floor, or None. `times` are the tests that can see it."""
        near = [name for name, time in times.items() if time < QUICK[1] and self.floors.get(name) == floor]
        groups = [[first]] if first in times else []
        groups.append([name for name in near if name != first])
        done = {first, *near}
        for most in self.bounds:
            groups.append([name for name, time in times.items() if time < most and name not in done])
            done.update(groups[-1])
        for group in filter(None, groups):
            limit_seconds = 20 + 10 * sum(times[name] for name in group) / 1000
            code, output = self.run(program, limit_seconds, group, MUTANT=str(number))
            if code is None:  # the machine may have been busy
                code, output = self.run(program, 3 * limit_seconds, group, MUTANT=str(number))
            if code != 0:
                return red_test(output, code, group)
        return None


def red_test(output, code, group):
    if found := re.search(r"\[  FAILED  \] (\S+?)[,\s]", output):
        return found.group(1)
    reason = "took too long" if code is None else f"ended with {code}"
    return group[0] if len(group) == 1 else f"{reason}: one of {len(group)} tests"


def limit():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def end_group(process):
    """What a mutant left running ends with it."""
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()
