"""Adds, check-ins, deletions and moves are killed, or lose their power, at each point of their work.

Points are all writes, syncs, renames, removals and new names of the work, the steps of the database's commits among
them; some interruptions are a kill at a random moment or a full disk. From about 700 on each point is met, by a kill and
by a loss of all that was not synced; half of those beyond lose some of it, as a disk that takes writes in its own order.
Whatever was confirmed is there, whole and once; the step in between is done or not, but not by half.
"""

import shutil
import signal
import subprocess
import time

from ground import BIN, Ground, Outcome

FEW = 20
FULL = 12000


class Work(Ground):
    """The driver's vault, put where it was made before each interruption, since it remembers its folder."""

    def __init__(self):
        super().__init__()
        self.first = self.folder / "first"
        # A sanitizer that opens a log of its own while it starts would call the shim before that is ready.
        self.environment["ASAN_OPTIONS"] = self.environment.get("ASAN_OPTIONS", "") + ":log_path=stderr"
        self.home.mkdir()
        self.must("crash_driver", "setup", self.home)
        shutil.copytree(self.home, self.first, symlinks=True)
        self.points = int(self._work("count").communicate()[1].split()[-1])

    def _work(self, fault):
        environment = dict(self.environment, CRASH_ROOT=str(self.home), CRASH_AT=fault,
                           LD_PRELOAD=str(BIN / "libcrash_shim.so"))
        if fault.startswith("moment"):
            environment = self.environment
        return subprocess.Popen([BIN / "crash_driver", "work", self.home], env=environment, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def interrupt(self, fault):
        """What is wrong after an interruption, or nothing."""
        shutil.rmtree(self.home)
        for kept in self.folder.glob("home.kept*"):
            kept.unlink()
        shutil.copytree(self.first, self.home, symlinks=True)
        work = self._work(fault)
        if fault.startswith("moment:"):
            time.sleep(int(fault.split(":")[1]) / 1000)
            work.send_signal(signal.SIGKILL)
        steps = len(work.communicate()[0].splitlines())
        for arguments in (["verify", self.home, steps], ["finish", self.home]):
            code, text = self.run("crash_driver", *arguments)
            if code != 0:
                return f"{fault} after {steps} confirmed steps: {text.strip()}"
        return ""


def faults(count, points, chance):
    if count >= 2 * points:
        for point in range(1, points + 1):
            yield f"kill:{point}"
            yield f"power:{point}"
        count -= 2 * points
    kinds = ["kill", "reorder", "power", "reorder", "reorder", "kill", "reorder", "power", "reorder", "moment", "reorder",
             "full"]
    for index in range(count):
        kind = kinds[index % len(kinds)]
        reach = {"moment": 400, "full": 1_300_000}.get(kind, points)
        seed = f":{chance.randrange(1 << 30)}" if kind == "reorder" else ""
        yield f"{kind}:{chance.randint(1, reach)}{seed}"


def run(count, chance):
    outcome = Outcome("interruptions")
    with Work() as work:
        if work.points < 100:
            raise RuntimeError(f"The work has only {work.points} points to interrupt.")
        for fault in faults(count, work.points, chance):
            outcome.attacks += 1
            if problem := work.interrupt(fault):
                shutil.move(work.home, work.keep() / f"failed-{fault}")
                work.home.mkdir()
                outcome.failures.append(f"{problem} ({work.folder}/failed-{fault})")
        outcome.more = f"{work.points} points"
    return outcome
