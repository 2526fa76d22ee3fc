"""A vault with a part of three configurations and a task that converts it, for campaigns on runs and workers."""

import json

from ground import BIN, SOURCE, Ground


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

    def launch(self, what="V/Bracket.zenprt"):
        self.must("arkin", "task", "launch", "C", self.folder / what)
        self.runs += 1

    def ended(self):
        """Whether the last run has ended. Raises if it didn't end well."""
        state = json.loads(self.must("arkin", "task", "status", self.runs, "--json"))["state"]
        if state not in ("finished", "queued", "running"):
            raise RuntimeError(f"Run {self.runs} is {state}.")
        return state == "finished"

    def problem(self, last=1):
        """What is wrong after the last runs have ended, or nothing: each output has one new version for each run."""
        listed = json.loads(self.must("arkin", "task", "status", "--json"))
        ended = {run["run"]: run["state"] for run in listed}
        if bad := [f"{run} {ended[run]}" for run in range(self.runs - last + 1, self.runs + 1) if ended[run] != "finished"]:
            return f"run {', '.join(bad)}: "
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
