"""A vault of a benchmark's own in a temporary folder, driven by the command line."""

import json
import os
import re
import subprocess
import sys
import tempfile
import time
from pathlib import Path

SOURCE = Path(__file__).resolve().parent.parent
BIN = SOURCE / "build" / "bench" / "bin"


class BenchVault:
    def __init__(self):
        self.folder = tempfile.TemporaryDirectory(prefix="zn-bench-")
        self.path = Path(self.folder.name)
        self.root = self.path / "Bench"
        self.environment = dict(os.environ, ARKIN_HOME=str(self.path / "home"))
        self.run("zentrel", "register")
        self.run("arkin", "addin", "register", BIN / "libZNTaskAddIn.so")
        self.run("arkin", "vault", "create", "Bench", "--root", self.root)

    def run(self, program, *arguments):
        result = subprocess.run([str(BIN / program), *map(str, arguments)], env=self.environment, text=True,
                                stdout=subprocess.PIPE, check=False)
        if result.returncode != 0:
            sys.exit(f"'{program} {' '.join(map(str, arguments))}' ended with {result.returncode}")
        return result.stdout

    def ask(self, *arguments):
        return json.loads(self.run("arkin", *arguments, "--json"))

    def timed_run(self, task, *files):
        """Runs a task and returns the moments of its start, of "Adding files to vault..." and of its end."""
        identifier = self.ask("task", "launch", task, *files, "--defaults")["run"]
        worker = subprocess.Popen([str(BIN / "arkin"), "task", "run", str(identifier)], env=self.environment,
                                  text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        begin = adding = None
        lines = []
        for line in worker.stdout:
            lines.append(line)
            if begin is None and re.match(r"\[0/", line):
                begin = time.monotonic()
            if adding is None and "Adding files to vault" in line:
                adding = time.monotonic()
        end = time.monotonic()
        if worker.wait() != 0 or begin is None or adding is None:
            sys.exit("The run failed:\n" + "".join(lines[-5:]))
        return begin, adding, end
