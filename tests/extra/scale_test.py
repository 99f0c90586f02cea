"""Many rides on many machines: the recipes of samples/scale, with GNU parallel over two sshd of this test's own, a job
array in a Slurm of its own, and rides through a pipe. Whatever goes wrong on the way, every ride is answered once."""

import collections
import getpass
import json
import os
import pathlib
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
CLI = os.environ.get("TORVANE_CLI", str(ROOT / "build" / "native" / "torvane-cli"))
RECIPES = ROOT / "samples" / "scale"
sys.path.insert(0, str(ROOT / "benchmarks"))
import batch_rides  # noqa: E402

LIMIT = 600  # s for any of the calls


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as free:
        return free.getsockname()[1]


def program(name):
    return shutil.which(name, path="/usr/sbin:/usr/bin")


class Host:
    """An sshd on a port of its own, with keys of its own, for this user alone."""

    def __init__(self, folder, name):
        self.folder = folder / name
        self.folder.mkdir()
        self.port = free_port()
        key = self.folder / "host-key"
        subprocess.run(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", key], check=True)
        (self.folder / "config").write_text(
            f"Port {self.port}\nListenAddress 127.0.0.1\nHostKey {key}\nPidFile none\nUsePAM no\nStrictModes no\n"
            f"AuthorizedKeysFile {folder}/user-key.pub\nPasswordAuthentication no\nPermitRootLogin yes\nMaxStartups 100\n")
        self.process = subprocess.Popen(["timeout", str(LIMIT), program("sshd"), "-D", "-e", "-f",
                                         self.folder / "config"], stderr=subprocess.DEVNULL, start_new_session=True)

    def children(self):
        """Of the daemon, and theirs: each session has a group of its own."""
        parents = {}
        for stat in pathlib.Path("/proc").glob("[0-9]*/stat"):
            try:
                parents[int(stat.parent.name)] = int(stat.read_text().rpartition(")")[2].split()[1])
            except OSError:
                continue
        found = {self.process.pid}
        while more := {child for child, parent in parents.items() if parent in found} - found:
            found |= more
        return found

    def kill(self):
        """At once; but a shell that still reads its user's own start files may put away what it holds there."""
        for process in self.children():
            try:
                name = pathlib.Path(f"/proc/{process}/comm").read_text().strip()
                os.kill(process, signal.SIGKILL if name in ("sshd", "torvane-cli") else signal.SIGTERM)
            except OSError:  # it has ended
                pass
        self.process.wait()


class Slurm:
    """A controller and one machine of two processors, on ports of their own, for this user alone."""

    def __init__(self, folder):
        machine = socket.gethostname().partition(".")[0]
        self.conf = folder / "slurm.conf"
        for name in ("state", "spool"):
            (folder / name).mkdir()
        self.conf.write_text(
            f"ClusterName=rides\nSlurmctldHost={machine}(127.0.0.1)\nSlurmctldPort={free_port()}\nSlurmdPort={free_port()}\n"
            f"AuthType=auth/none\nCredType=cred/none\nSlurmUser={getpass.getuser()}\nSlurmdUser={getpass.getuser()}\n"
            f"StateSaveLocation={folder}/state\nSlurmdSpoolDir={folder}/spool\n"
            f"SlurmctldPidFile={folder}/slurmctld.pid\nSlurmdPidFile={folder}/slurmd.pid\n"
            f"ProctrackType=proctrack/linuxproc\nTaskPlugin=task/none\nSelectType=select/cons_tres\n"
            f"NodeName={machine} NodeAddr=127.0.0.1 CPUs=2 RealMemory=1024\nPartitionName=all Nodes={machine} Default=YES\n")
        self.daemons = [subprocess.Popen(["timeout", str(LIMIT), program(name), "-D", "-f", self.conf],
                                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
                        for name in ("slurmctld", "slurmd")]

    def stop(self):
        for daemon in self.daemons:
            daemon.terminate()
        for daemon in self.daemons:
            daemon.wait()


class ScaleTest(unittest.TestCase):
    def setUp(self):
        made = tempfile.TemporaryDirectory()
        self.addCleanup(made.cleanup)
        self.folder = pathlib.Path(made.name)
        self.env = {**os.environ, "TORVANE_CLI": CLI, "PARALLEL_HOME": str(self.folder)}

    def rides(self, count):
        rides = batch_rides.fill(self.folder / "rides", count, different=5, records=600)
        (self.folder / "list").write_text("".join(f"{ride}\n" for ride in rides))
        return [str(ride) for ride in rides]

    def check(self, lines, rides):
        answers = [json.loads(line) for line in lines]
        counts = collections.Counter(answer["source"] for answer in answers)
        self.assertEqual(counts, collections.Counter(rides))
        self.assertEqual([a for a in answers if "error" in a or a["figures"].get("movingTime", 1) == 0], [])

    def start_hosts(self):
        if os.getuid() == 0:
            os.makedirs("/run/sshd", mode=0o755, exist_ok=True)
        subprocess.run(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", self.folder / "user-key"], check=True)
        hosts = {name: Host(self.folder, name) for name in ("anna", "bert")}
        common = f"User {getpass.getuser()}\nHostName 127.0.0.1\nIdentityFile {self.folder}/user-key\nConnectTimeout 5\n" \
                 f"StrictHostKeyChecking no\nUserKnownHostsFile {self.folder}/known\nLogLevel ERROR\nIdentitiesOnly yes\n"
        (self.folder / "ssh").write_text("".join(f"Host {name}\nPort {host.port}\n{common}" for name, host in hosts.items()))
        (self.folder / "hosts").write_text("".join(f"2/{name}\n" for name in hosts))
        self.env["SSH"] = f"ssh -F {self.folder}/ssh"
        for host in hosts.values():
            self.addCleanup(host.kill)
        for name in hosts:
            self.assertTrue(any(self.answers(name) for _ in range(50)), name)
        return hosts

    def answers(self, name):
        done = subprocess.run([*self.env["SSH"].split(), name, "true"], capture_output=True, timeout=30)
        time.sleep(0.1 if done.returncode else 0)
        return done.returncode == 0

    def many_hosts(self):
        return subprocess.Popen([RECIPES / "many-hosts.sh", self.folder / "hosts", self.folder / "list", self.folder / "out"],
                                env={**self.env, "RIDES_PER_JOB": "50"}, stderr=subprocess.PIPE, text=True)

    def test_a_machine_goes_away(self):
        rides = self.rides(1000)
        hosts = self.start_hosts()
        begun = time.monotonic()
        call = self.many_hosts()
        log = self.folder / "out" / "joblog"
        while call.poll() is None and (not log.exists() or len(log.read_text().splitlines()) < 6):
            self.assertLess(time.monotonic() - begun, LIMIT)
            time.sleep(0.05)
        self.assertIsNone(call.poll(), "it ended before a machine could go away")
        hosts["bert"].kill()
        _, told = call.communicate(timeout=LIMIT)
        if call.returncode != 0:  # a job that has met the dead machine too often: the same call goes on
            again = self.many_hosts()
            _, told = again.communicate(timeout=LIMIT)
            self.assertEqual(again.returncode, 0, told)
        print(f"{1000 / (time.monotonic() - begun):.0f} rides a second over two machines, one of them half the time")
        self.check((self.folder / "out" / "answers.ndjson").read_text().splitlines(), rides)
        ran = collections.Counter(line.split("\t")[1] for line in log.read_text().splitlines()[1:])
        self.assertGreater(ran["anna"], 10, ran)

    def test_a_job_array(self):
        rides = self.rides(100)
        slurm = Slurm(self.folder)
        self.addCleanup(slurm.stop)
        env = {**self.env, "SLURM_CONF": str(slurm.conf)}
        self.assertTrue(any(b"idle" in self.idle(env) for _ in range(100)), "no machine of Slurm's came up")
        array = ["--array=1-4", f"--output={self.folder}/%a.log", RECIPES / "rides.sbatch", self.folder / "list", self.folder / "out"]
        subprocess.run(["sbatch", "--test-only", *array], check=True, env=env, timeout=60)
        subprocess.run(["sbatch", "--wait", *array], check=True, env=env, timeout=LIMIT)
        lines = [line for part in (self.folder / "out").glob("*.ndjson") for line in part.read_text().splitlines()]
        self.check(lines, rides)

    def idle(self, env):
        time.sleep(0.2)
        return subprocess.run(["sinfo", "--noheader", "--states=idle"], env=env, capture_output=True, timeout=60).stdout

    def test_a_pipe(self):
        rides = self.rides(100)
        lines = subprocess.run([RECIPES / "ride-lines"], input="\n".join(rides) + "\n", text=True, capture_output=True,
                               check=True, timeout=LIMIT).stdout
        done = subprocess.run(["parallel", "--pipe", "--block", "500k", CLI, "--json", "--stdin", "ride"], input=lines,
                              text=True, capture_output=True, env=self.env, timeout=LIMIT)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.check(done.stdout.splitlines(), rides)


if __name__ == "__main__":
    unittest.main()
