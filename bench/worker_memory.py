#!/usr/bin/env python3
"""Memory of the worker over a run of 1,000 files: its resident size after the first hundred and at the end.

Build first: scripts/build bench. Usage: bench/worker_memory.py [COUNT]
"""

import json
import re
import shutil
import subprocess
import sys
from pathlib import Path

from bench_vault import BIN, SOURCE, BenchVault


def resident_kib(process):
    return int(re.search(r"VmRSS:\s+(\d+)", Path(f"/proc/{process.pid}/status").read_text())[1])


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 1000
    vault = BenchVault()
    parts = vault.path / "Parts"
    parts.mkdir()
    for number in range(count):
        shutil.copy(SOURCE / "samples" / "Bracket.zenprt", parts / f"part{number:05}.zenprt")
    vault.run("arkin", "add", parts)
    vault.run("arkin", "task", "create", "STL", "--kind", "convert", "--set", "FileFormat=STL (*.stl)",
              "--set", r"OutputPath=<VaultPath>\Out\<Filename>", "--set", "OutputConfs=4", "--set", "FileConfs=4")
    identifier = vault.ask("task", "launch", "STL", vault.root / "Parts", "--defaults")["run"]
    worker = subprocess.Popen([str(BIN / "arkin"), "task", "run", str(identifier)], env=vault.environment, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    early = late = None
    for line in worker.stdout:
        place = re.match(r"\[(\d+)/", line)
        if place and early is None and int(place[1]) >= min(100, count // 2):
            early = resident_kib(worker)
        elif place and int(place[1]) < count:
            late = resident_kib(worker)
    if worker.wait() != 0 or early is None or late is None:
        sys.exit("The run failed: " + json.dumps(vault.ask("task", "status", str(identifier))))
    print(f"{count} files: {early / 1024:.1f} MiB early, {late / 1024:.1f} MiB at the end, "
          f"growth {(late - early) / 1024:.1f} MiB (wanted: below 20 MiB)")


main()
