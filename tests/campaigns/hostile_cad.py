"""CAD processes fail a worker in each way that one can: silent, slow, endless, lying, dead, forked away.

The worker is the real one, the CAD process a script (programs/cad.py); some runs are cancelled, or their worker gets a
Ctrl-C, at a random moment. Time runs 60 times as fast for both. The worker comes back within its deadlines, the run
ends with a sentence, no process and no file of theirs is left, and the same home's next run with the real CAD
application is as good as ever.
"""

import importlib.util
import json
import os
import queue
import shutil
import signal
import subprocess
import threading
import time

from ground import BIN, SOURCE, Ground, Outcome

FEW = 6
FULL = 1000
LANES = 3
QUICK = 60
LONGEST = 40  # seconds of all clocks: three attempts of two minutes each, and all that stands around them
CAD = SOURCE / "tests" / "campaigns" / "programs" / "cad.py"
# Runs of these need not fail: what is wrong comes behind the last file's work, or is nobody's business.
HARMLESS = ("ExitApp:", "forks_away_and_stays", "is_published_by_a_child")

_spec = importlib.util.spec_from_file_location("cad", CAD)
_cad = importlib.util.module_from_spec(_spec)
_spec.loader.exec_module(_cad)
MODES = _cad.ALL


class Plant(Ground):
    """A vault with two files and a script task, whose CAD application is the script."""

    def __init__(self):
        super().__init__()
        self.must("zentrel", "register", "--executable", self.install())
        self.must("arkin", "addin", "register", BIN / "libZNTaskAddIn.so")
        self.must("arkin", "vault", "create", "Plant", "--root", self.folder / "vault")
        for name in ("a.zenprt", "b.zenprt"):
            shutil.copy(SOURCE / "samples" / "Bracket.zenprt", self.folder / name)
            self.must("arkin", "add", self.folder / name)
        (self.folder / "nothing.bas").write_text("Sub main()\nEnd Sub\n")
        (self.folder / "task.json").write_text('{"script": "nothing.bas", "fileLimit": "2m"}')
        self.must("arkin", "task", "create", "Script", "--kind", "script", "--from", "task.json")
        self.environment["TMPDIR"] = str(self.folder / "tmp")
        (self.folder / "tmp").mkdir()

    def install(self):
        folder = self.folder / "cad"
        folder.mkdir()
        shutil.copy(CAD, folder / "ZENTREL.EXE")
        (folder / "real").write_text(str(BIN / "ZENTREL.EXE"))
        return folder / "ZENTREL.EXE"

    def processes(self):
        """What still runs in this home, by name."""
        mark = f"ARKIN_HOME={self.home}".encode()
        found = []
        for entry in os.listdir("/proc"):
            try:
                with open(f"/proc/{entry}/environ", "rb") as environment:
                    if entry.isdigit() and mark in environment.read().split(b"\0"):
                        with open(f"/proc/{entry}/cmdline", "rb") as line:
                            found.append(line.read().replace(b"\0", b" ").decode(errors="replace")[:60])
            except OSError:
                continue
        return found

    def leftovers(self):
        return [str(path) for place in (self.home / "run", self.folder / "tmp") for path in place.iterdir()
                if path.name.endswith((".sock", ".znb", ".tmp"))]

    def work(self, mode, disturbance, moment):
        """The worker's exit code and what it said; None when it didn't come back."""
        (self.folder / "cad" / "mode").write_text(mode)
        number = self.must("arkin", "task", "launch", "Script", self.folder / "vault").strip().splitlines()[-1]
        environment = dict(self.environment)
        if mode != "good":
            environment.update(LD_PRELOAD=str(BIN / "libquick_time.so"), QUICK_TIME=str(QUICK))
        worker = subprocess.Popen([BIN / "arkin", "worker", "--once"], cwd=self.folder, env=environment, text=True,
                                  stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                  errors="replace", start_new_session=True)
        if disturbance:
            time.sleep(moment)
            if disturbance == "interrupt":
                worker.send_signal(signal.SIGINT)
            else:
                self.run("arkin", "task", "cancel", number)
        try:
            said = worker.communicate(timeout=LONGEST)[0]
        except subprocess.TimeoutExpired:
            worker.kill()
            worker.communicate()
            return number, None, ""
        return number, worker.returncode, said

    def attack(self, mode, disturbance, moment):
        """What is wrong after an attack, or nothing."""
        number, code, said = self.work(mode, disturbance, moment)
        if code is None:
            return f"the worker hung for {LONGEST} s"
        run = json.loads(self.must("arkin", "--json", "task", "status", number))
        if code == -signal.SIGINT and not said:
            return ""  # the Ctrl-C came before the program was up: there was no work yet
        if code not in (0, 1) or run["stateNumber"] not in (7, 8, 9):
            return f"the worker ended with {code}, the run is {run['state']}: {said.strip()[-300:]}"
        if not run["text"] and not run["messages"] and not mode.startswith(HARMLESS):
            return f"the run is {run['state']} without a sentence"
        if left := self.processes():
            return f"there are still {left}"
        number, code, said = self.work("good", "", 0)
        if code != 0:
            return f"the next run failed: {said.strip()[-300:]}"
        if left := self.processes() + self.leftovers():
            return f"the next run left {left}"
        return ""


def lane(attacks, outcome, guard):
    plant = Plant()
    while True:
        try:
            mode, disturbance, moment = attacks.get_nowait()
        except queue.Empty:
            break
        begun = time.monotonic()
        problem = plant.attack(mode, disturbance, moment)
        with guard:
            outcome.attacks += 1
            outcome.slowest = max(outcome.slowest, (time.monotonic() - begun, mode))
            if problem:
                outcome.failures.append(f"{mode} {disturbance}: {problem} ({plant.keep()})")
        if problem:
            plant = Plant()
    plant.__exit__()


def run(count, chance):
    outcome = Outcome("hostile CAD processes")
    outcome.slowest = (0.0, "")
    attacks = queue.Queue()
    first = chance.randrange(len(MODES))
    for index in range(count):
        disturbance = chance.choice(["", "", "cancel", "interrupt"])
        attacks.put((MODES[(first + index) % len(MODES)], disturbance, chance.uniform(0.1, 2.0)))
    guard = threading.Lock()
    lanes = [threading.Thread(target=lane, args=(attacks, outcome, guard)) for _ in range(min(LANES, count))]
    for each in lanes:
        each.start()
    for each in lanes:
        each.join()
    outcome.more = f"{len(MODES)} modes, the slowest took {outcome.slowest[0]:.0f} s ({outcome.slowest[1]})"
    return outcome
