"""Two workers at a time convert the same files to the same outputs, and some of them are killed on the way.

Each round launches a run for each worker. In every second round one of the workers is killed at a random moment and
another one goes on in its place. Then all runs have ended, nothing is checked out, each output has one new version for
each run, and the vault is sound.
"""

import json
import os
import signal
import time

from ground import BIN, SOURCE, Ground, Outcome

FEW = 2
FULL = 200
WORKERS = 2


class Plant(Ground):
    def __init__(self):
        super().__init__()
        self.must("arkin", "vault", "create", "Plant", "--root", self.folder / "V")
        self.must("arkin", "addin", "register", BIN / "libZNTaskAddIn.so")
        self.must("zentrel", "register")
        self.must("arkin", "add", SOURCE / "samples/Bracket.zenprt", "--to", self.folder / "V")
        self.must("arkin", "task", "create", "C", "--kind", "convert", "--set", "FileFormat=STL (*.stl)", "--set",
                  "OutputPath=<VaultPath>\\Out\\<Filename>_<Configuration>", "--set", "PromptOutput=no", "--set",
                  "SourceRefs=2", "--set", "OutputConfs=2", "--set", "OutputSheets=2", "--set", "ReplaceOutput=no")
        self.runs = 0

    def launch(self):
        self.must("arkin", "task", "launch", "C", self.folder / "V/Bracket.zenprt")
        self.runs += 1

    def states(self):
        listed = json.loads(self.must("arkin", "task", "status", "--json"))
        return [run["state"] for run in listed if run["run"] > self.runs - WORKERS]

    def round(self, chance, kill):
        """What is wrong after a round, or nothing."""
        for _ in range(WORKERS):
            self.launch()
        workers = [self.start("arkin", "worker", "--once") for _ in range(WORKERS)]
        if kill:
            time.sleep(chance.uniform(0, 2))
            os.killpg(workers[0].pid, signal.SIGKILL)
            workers.append(self.start("arkin", "worker", "--once"))
        said = [worker.communicate(timeout=300)[0].decode(errors="replace") for worker in workers]
        # A worker that was killed behind the last look of the others leaves its run to the next one.
        said.append(self.run("arkin", "worker", "--once")[1])
        problem = self.problem()
        return problem + "".join(said) if problem else ""

    def problem(self):
        if bad := [state for state in self.states() if state != "finished"]:
            return f"runs are {', '.join(bad)}: "
        listed = json.loads(self.must("arkin", "ls", self.folder / "V/Out", "--json"))
        files = {entry["name"]: entry for entry in listed if entry["name"].endswith(".stl")}
        if len(files) != 3:
            return f"{len(files)} outputs: "
        for name, entry in files.items():
            if entry.get("checkedOutBy"):
                return f"{name} is checked out: "
            if entry["version"] != self.runs:
                return f"{name} has version {entry['version']} after {self.runs} runs: "
        code, text = self.run("arkin", "vault", "check")
        return "" if code == 0 else text


def run(count, chance):
    outcome = Outcome("rounds")
    with Plant() as plant:
        for number in range(count):
            outcome.attacks += 1
            if problem := plant.round(chance, number % 2 == 1):
                outcome.failures.append(f"round {number + 1}: {problem} ({plant.keep()})")
                break
        outcome.more = f"{plant.runs} runs"
    return outcome
